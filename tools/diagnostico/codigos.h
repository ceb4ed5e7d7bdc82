// The part of the diagnosis about the codes of the parameters file: whether the ERP knows them.
#pragma once

#include "erp.h"
#include "startup/parametros.h"

namespace orvex::diagnostico {

// Of the emulated ERP everything can be asked. Of another one only the tables that the program itself uses
// are known: a type or warehouse that is in none of them is told as not verified.
void verifica_codigos(const startup::Parametros& parametros,
                      const std::optional<startup::DefinicoesERP>& definicoes, startup::SessaoBD* BD,
                      Resultados& resultados);

} // namespace orvex::diagnostico
