// The connection text that a SessaoBD opens with: semicolon-separated name=value pairs, every value in
// braces, a closing brace inside a value doubled. So a password may hold any character.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace orvex::startup {

struct ConstrutorLigacao {
    std::string fornecedor = "MSDataShape";
    static constexpr int com_palavra_passe = 1, do_sistema = 2; // the session of whoever works at the machine
    int opcao = com_palavra_passe;                              // kind of log-in
    std::string servidor;
    std::string base;
    std::string utilizador;
    std::string palavra_passe{};
    std::string controlador{}; // ODBC driver; empty for the usual one
    std::string encriptacao{}; // as in the settings; empty for the usual one

    std::string constroi() const;

    // The pairs of a connection text; names are Provider, Option, Server, Database, Uid, Pwd, Driver and
    // Encrypt.
    static std::map<std::string, std::string> le(std::string_view ligacao);
};

} // namespace orvex::startup
