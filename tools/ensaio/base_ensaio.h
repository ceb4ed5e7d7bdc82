// A database of the trials' own on a real server: made for one run, marked, and dropped after it. Nothing is
// ever emptied or dropped that does not bear the run's own mark.
//
// The server is named in the environment: ORVEX_SERVIDOR, ORVEX_BASE, ORVEX_UTILIZADOR, ORVEX_PALAVRA_PASSE
// and, if need be, ORVEX_CONTROLADOR and ORVEX_ENCRIPTACAO, as in the settings. ORVEX_ENSAIO has the mark for
// the test programs.
#pragma once

#include "platform/odbc/sessao_odbc.h"

#include <string>

namespace orvex::ensaio {

// What tells the test programs which engine to run on, and that it is that server.
inline constexpr const char *variavel_motor = "ORVEX_TESTE_MOTOR", *motor_servidor = "servidor";

// The connection text to a database of that server. Throws Falha for what is missing.
std::string ligacao_ao_servidor(const std::string& base);
std::string base_do_ensaio(); // its name, of letters, digits and _ alone

// A session in the trial database. Throws Falha when the database does not bear the mark.
void abre_ensaio(platform::odbc::SessaoODBC& BD);

// Throws Falha when the database exists or cannot be made. Leaves the new mark in the environment.
void cria_ensaio();
// Throws Falha, and leaves the database, when it is not the one that was made.
void apaga_ensaio();

} // namespace orvex::ensaio
