// The part of the diagnosis about the ERP: its entry, and whether its documents get to the session's
// database.
#pragma once

#include "definicoes.h"
#include "startup/sessao_bd.h"

#include <memory>

namespace orvex::diagnostico {

// The session may be none.
void verifica_erp(const Definicoes& definicoes, startup::SessaoBD* BD, const std::string& sem_32_bits,
                  Resultados& resultados);

// On the tables of the emulated ERP; none for any other ERP, or when they do not open.
std::unique_ptr<startup::SessaoBD> abre_emulacao(const startup::DefinicoesERP& definicoes);

} // namespace orvex::diagnostico
