// What a journal says of one confirmation: its intention, the steps taken, and how it was settled.
//
// One line a step, in the order they were taken: a checksum (CRC-32 of the rest, eight digits), a blank, and
// the step as JSON. The first is the intention.
//
//     5d1f0a3c {"passo":"intencao","versao":1,"empresa":"ORVEX","fluxo":"emite_guia",...}
//     0c77b1e2 {"passo":"chamada","accao":"cria","chave":{"tipo":"GR","serie":1,"numero":0,"ano":2026}}
//     a1b2c3d4 {"passo":"resposta","accao":"cria","desfecho":"feito","chave":{...,"numero":8},...}
//     99e01f27 {"passo":"confirma"}
//     4be2d1c0 {"passo":"fim","resultado":"feita"}
#pragma once

#include "confirmacao/observador.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::platform::diario {

// What is known before BEGIN, beside the intention itself.
struct Cabecalho {
    std::string empresa{};
    std::string utilizador{}; // of the machine
    std::string maquina{};
    base::DataHora hora{};          // of the machine's clock, as the user reads it
    std::int32_t ultimo_numero = 0; // of the year, type and series of the document to be created
    std::int64_t ultimo_registo = 0;
};

struct Chamada {
    confirmacao::PedidoERP pedido{};
    std::optional<confirmacao::RespostaERP> resposta{};
};

// What became of a confirmation that is settled.
enum class Resultado {
    feita,    // ERP and ledger have it whole
    desfeita, // neither has anything of it
    por_ver   // what is left of it was named to the user
};

struct Passos {
    Cabecalho cabecalho{};
    confirmacao::Intencao intencao{};
    std::vector<Chamada> chamadas{};
    bool a_confirmar = false;                            // COMMIT was about to be asked for
    std::optional<startup::ChaveDocumento> encontrado{}; // by whoever settles it: the document that was made
    std::optional<std::chrono::sys_seconds> visto{};     // when it was first found with nothing to settle
    bool fim = false;
    std::optional<Resultado> resultado{}; // of one that is settled; other versions do not say
};

std::string linha_da_intencao(const Cabecalho& cabecalho, const confirmacao::Intencao& intencao);
std::string linha_da_chamada(const confirmacao::PedidoERP& pedido);
std::string linha_da_resposta(const confirmacao::PedidoERP& pedido, const confirmacao::RespostaERP& resposta);
std::string linha_de_confirmar();
std::string linha_do_encontrado(const startup::ChaveDocumento& chave);
std::string linha_do_visto(std::chrono::sys_seconds quando);
std::string linha_do_fim(Resultado resultado);

// The call that was to create the document, and the last that was to cancel one; null when there was none.
const Chamada* criacao(const Passos& passos);
const Chamada* anulacao(const Passos& passos, const startup::ChaveDocumento& chave);

struct Leitura {
    Passos passos{};
    std::size_t bytes = 0; // of the lines that are whole; what follows was being written
};

// Nothing where not even the intention is whole, or where a later version of the program wrote it.
std::optional<Leitura> le_passos(std::string_view texto);

} // namespace orvex::platform::diario
