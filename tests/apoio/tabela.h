// Cases of a table as lines of text: "what goes in => what comes out".
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

namespace orvex::testes {

inline std::vector<std::string> partes(std::string linha, const std::string& separador = " => ") {
    std::vector<std::string> resultado;
    for (std::size_t fim = 0; (fim = linha.find(separador)) != std::string::npos;
         linha.erase(0, fim + separador.size()))
        resultado.push_back(linha.substr(0, fim));
    if (!linha.empty() || !resultado.empty()) resultado.push_back(linha);
    return resultado;
}

inline std::vector<std::vector<std::string>> tabela(std::initializer_list<const char*> linhas) {
    std::vector<std::vector<std::string>> casos;
    for (const char* linha : linhas)
        casos.push_back(partes(linha));
    return casos;
}

// Of many short ones: "in => out | in => out".
inline std::vector<std::vector<std::string>> tabela(const char* linhas) {
    std::vector<std::vector<std::string>> casos;
    for (const std::string& linha : partes(linhas, " | "))
        casos.push_back(partes(linha));
    return casos;
}

} // namespace orvex::testes
