// ERP documents: a header and lines 1..n, numbered per year, type and series, saved and cancelled with their
// stock. What is refused throws Recusa; what writes must run inside BaseErp::executa.
#pragma once

#include "platform/erp/base_erp.h"
#include "platform/erp/esquema_erp.h"
#include "platform/erp/registo.h"
#include "startup/sessao_erp.h"

#include <memory>
#include <vector>

namespace orvex::platform::erp {

std::shared_ptr<Registo> nova_linha();

struct Documento {
    Registo cabecalho{membros_cabecalho, "do documento"};
    std::vector<std::shared_ptr<Registo>> linhas; // shared with the objects the programs hold

    startup::ChaveDocumento chave() const;
};

// `nenhum` for an unknown type too.
MovimentoStock movimento_do_tipo(BaseErp& base, const std::string& tipo);

// The header's own checks: document type and series known, date, client known and active.
void verifica_cabecalho(BaseErp& base, const Documento& documento);
// All that can be told before the document is saved.
void verifica(BaseErp& base, const Documento& documento);

// Fills what the ERP knows of the header's client and the program left empty.
void completa_do_cliente(BaseErp& base, Documento& documento);
// Fills the line with the description, unit and VAT rate of its article; without an article, or with one that
// does not exist, leaves it as it is.
void sugere_do_artigo(BaseErp& base, Registo& linha);

// Checks, numbers and saves the document and moves the stock. The number is then in the header, 1..n in the
// lines.
void grava(BaseErp& base, Documento& documento);

bool le(BaseErp& base, const startup::ChaveDocumento& chave, Documento& documento);

// Marks the document as cancelled and puts the stock back.
void anula(BaseErp& base, const startup::ChaveDocumento& chave);

} // namespace orvex::platform::erp
