// The connection text that a SessaoBD opens with: semicolon-separated name=value pairs, every value in
// braces, a closing brace inside a value doubled. So a password may hold any character.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace orvex::startup {

struct ConstrutorLigacao {
    std::string fornecedor = "MSDataShape";
    int opcao = 1; // kind of log-in: 1, user name and password
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
