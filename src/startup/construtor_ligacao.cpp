#include "startup/construtor_ligacao.h"

#include "base/falha.h"

namespace orvex::startup {
namespace {

std::string par(std::string_view nome, std::string_view valor) {
    std::string resultado = std::string(nome) + "={";
    for (const char c : valor) {
        if (c == '}') resultado += '}';
        resultado += c;
    }
    return resultado + "};";
}

[[noreturn]] void mal_formada() { throw base::Falha("O texto de ligação à base de dados está mal formado."); }

} // namespace

std::string ConstrutorLigacao::constroi() const {
    return par("Provider", fornecedor) + par("Option", std::to_string(opcao)) + par("Server", servidor) +
           par("Database", base) + par("Uid", utilizador) + par("Pwd", palavra_passe) +
           par("Driver", controlador) + par("Encrypt", encriptacao);
}

std::map<std::string, std::string> ConstrutorLigacao::le(std::string_view ligacao) {
    std::map<std::string, std::string> pares;
    while (!ligacao.empty()) {
        const std::size_t igual = ligacao.find("={");
        if (igual == std::string_view::npos) mal_formada();
        std::string& valor = pares[std::string(ligacao.substr(0, igual))];
        ligacao.remove_prefix(igual + 2);
        for (;;) {
            const std::size_t fecho = ligacao.find('}');
            if (fecho == std::string_view::npos || fecho + 1 >= ligacao.size()) mal_formada();
            valor += ligacao.substr(0, fecho);
            const char seguinte = ligacao[fecho + 1];
            ligacao.remove_prefix(fecho + 2);
            if (seguinte == ';') break;
            if (seguinte != '}') mal_formada();
            valor += '}';
        }
    }
    return pares;
}

} // namespace orvex::startup
