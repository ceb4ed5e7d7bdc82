// What the parts of the trial share: the session, what is still to be cancelled, and how a document is looked
// at.
#pragma once

#include "base/moeda.h"
#include "ensaio.h"

#include <optional>
#include <utility>

namespace orvex::conformidade {

// Three decimals, as the ledger keeps them, of which no binary fraction is exact.
inline constexpr base::Moeda quantidade_de_ensaio = base::Moeda::de_decimos_milesimos(1230); // 0.123 t

// What no ERP has.
inline constexpr const char* desconhecido = "ORVEX-NAO-HA";
inline constexpr std::int32_t numero_desconhecido = 2'000'000'000;

struct Ensaio {
    startup::SessaoERP& gERP;
    const Pedido& pedido;
    Relatorio& relatorio;
    std::vector<startup::ChaveDocumento>
        ultimos{}; // of each numbering when the trial began; none without tables
    std::vector<startup::ChaveDocumento> por_anular{}; // of what it made, as it was made
};

// What was answered to a request: a key, or why there is none.
struct Resposta {
    std::optional<startup::ChaveDocumento> chave{};
    std::string recusa{};
};

// Of a document that the ERP says it made. Only a key that can be no other document's is ever cancelled.
void anota(Ensaio& ensaio, const startup::ParametroDocumento& tipo, const startup::ChaveDocumento& chave);
// The answer to a cancellation is true, and so is what the tables show.
bool anula(Ensaio& ensaio, const startup::ChaveDocumento& chave);

// Has to be refused: by an answer with a text, or by raising.
void recusado(Ensaio& ensaio, const std::string& o_que, const std::function<Resposta()>& pede);
// Has to raise.
void falha(Ensaio& ensaio, const std::string& o_que, const std::function<void()>& pede);
// Gives the message of the operation just refused.
std::string mensagem_da_recusa(Ensaio& ensaio, const char* de);

// Notes and returns, through the document objects.
struct Guia {
    bool devolucao = false;
    std::string cliente{};
    std::vector<std::pair<std::string, base::Moeda>> linhas{}; // a line without article has a text alone
};
Resposta pede_comercial(Ensaio& ensaio, const startup::ParametroDocumento& tipo, const Guia& guia);
// Read back by its key, as the program loads a note.
void confere_lido(Ensaio& ensaio, const startup::ChaveDocumento& chave, const Guia& guia);
void confere_anulado(Ensaio& ensaio, const startup::ChaveDocumento& chave);
void recusas_dos_comerciais(Ensaio& ensaio);
void recusas_dos_objectos(Ensaio& ensaio);

// Adjustments and transfers, in one call.
Resposta pede_stock(Ensaio& ensaio, const startup::ParametroDocumento& tipo, const std::string& artigo,
                    base::Moeda quantidade, bool transferencia);
void recusas_do_stock(Ensaio& ensaio);

} // namespace orvex::conformidade
