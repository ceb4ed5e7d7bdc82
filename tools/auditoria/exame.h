// One look at everything: the two sides read once, and what does not agree.
#pragma once

#include "achado.h"
#include "leitura.h"
#include "livro/casa.h"
#include "ordenados.h"
#include "platform/diario/gaveta.h"

#include <string>
#include <vector>

namespace orvex::auditoria {

using livro::Casa, livro::Numeracao;

// Checks that could not be made, and why. What was read until then has been told all the same.
struct NaoVisto {
    std::string verificacoes;
    std::string porque;
};

struct Exame {
    Achados achados;
    std::vector<NaoVisto> nao_vistos;
};

// Never throws for what cannot be read. Journals are looked at where it is known where they are.
Exame examina(const Casa& casa, const base::DataHora& hoje, const platform::diario::Gaveta* gaveta,
              Sessoes& sessoes, Progresso& progresso);

// --- Between the parts of a look
// ----------------------------------------------------------------------------

// A transfer to ORVEX, as a row of the ledger or as a line of the ERP's document; in kilograms' tenths, as
// holder rows keep them, and days.
struct Transferencia {
    std::uint64_t artigo = 0;
    std::int64_t quantidade = 0;
    std::int64_t dia = 0;
    bool no_erp = false;
    std::int32_t ano = 0, numero = 0; // of the document, or 0 and the row's Registo
    friend auto operator<=>(const Transferencia&, const Transferencia&) = default;
};

struct Contexto {
    const Casa& casa;
    const base::DataHora& hoje;
    Sessoes& sessoes;
    Progresso& progresso;
    Exame exame{};

    std::vector<std::uint64_t>
        artigos_do_livro{};                    // that ever had a holder row, in order; with `com_historia`
    Ordenados<Transferencia> transferencias{}; // of the ledger, with `com_historia`
    bool com_historia = false;

    void junta(Achado achado) { exame.achados.push_back(std::move(achado)); }
};

void examina_linhas(Contexto& contexto);                          // L1, L2, L5, L7
void examina_historias(Contexto& contexto);                       // L4, L6, L7, E4, E5
void examina_guias(Contexto& contexto, const Numeracao& qual);    // L3, E1-E4, E6: notes, returns
void examina_facturas(Contexto& contexto, const Numeracao& qual); // E1, E2, E3, E6
void examina_ajustes(Contexto& contexto, const Numeracao& qual);  // E1, E2, E3, E4, E6
void examina_transferencias(Contexto& contexto);                  // E1, E2, E3, E6
void examina_diarios(Contexto& contexto, const platform::diario::Gaveta& gaveta); // J1

std::int64_t dia(const base::DataHora& data); // of dates, in order; not of a calendar

} // namespace orvex::auditoria
