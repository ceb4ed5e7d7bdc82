// The trial of an ERP's session: every operation, one document of each kind made, read back and cancelled,
// and what has to be refused. It writes in the ERP, so it asks first whether it is in the company it was told
// of.
#pragma once

#include "base/datahora.h"
#include "relatorio.h"
#include "startup/parametros.h"
#include "startup/sessao_bd.h"
#include "startup/sessao_erp.h"

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orvex::conformidade {

// What documents are made of.
struct Casa {
    startup::ParametroDocumento guias, devolucoes, sobras, quebras, consumos, transferencias;
    std::string armazem, armazem_orvex; // of the clients' stock, and of ORVEX's own

    // Throws FalhaParametro for a key that is missing or incomplete.
    static Casa le(const startup::Parametros& parametros);
};

struct Pedido {
    std::function<std::unique_ptr<startup::SessaoERP>()> nova_sessao; // not logged in
    std::array<std::string, 5> entrada;
    std::string empresa; // as the user says that the company for trials is called
    Casa casa;
    std::string cliente, artigo;
    base::DataHora agora;
    startup::SessaoBD* BD = nullptr; // shows the ERP's tables; without one, why
    std::string sem_BD{};
};

// Throws Falha, and has made nothing, when the ERP lets nobody in or the company is another one. What could
// not be cancelled comes back.
std::vector<startup::ChaveDocumento> ensaia(const Pedido& pedido, Relatorio& relatorio);

} // namespace orvex::conformidade
