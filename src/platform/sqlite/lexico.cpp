#include "platform/sqlite/lexico.h"

#include "base/falha.h"
#include "platform/sqlite/forma.h"
#include "startup/sessao_bd.h"

namespace orvex::platform::sqlite {
namespace {

bool branco(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

std::size_t tamanho_sinal(std::string_view resto) {
    for (const std::string_view duplo : {"<>", "!=", "<=", ">="})
        if (resto.starts_with(duplo)) return 2;
    if (resto.starts_with("--")) instrucao_errada(resto); // a remark would swallow the rest of the statement
    if (std::string_view("(),.*+-=<>").find(resto.front()) == std::string_view::npos) instrucao_errada(resto);
    return 1;
}

} // namespace

std::size_t fim_palavra(std::string_view sql, std::size_t inicio) {
    while (inicio < sql.size() && classe(sql[inicio]) != Classe::outro)
        ++inicio;
    return inicio;
}

std::size_t fim_numero(std::string_view sql, std::size_t inicio) {
    const auto passa_algarismos = [&] {
        while (inicio < sql.size() && algarismo(sql[inicio]))
            ++inicio;
    };
    passa_algarismos();
    if (inicio + 1 < sql.size() && sql[inicio] == '.' && algarismo(sql[inicio + 1])) {
        ++inicio;
        passa_algarismos();
    }
    return inicio;
}

std::size_t fim_entre(std::string_view sql, std::size_t inicio, char fecho) {
    for (std::size_t i = inicio + 1; i < sql.size(); ++i) {
        if (sql[i] != fecho) continue;
        if (i + 1 == sql.size() || sql[i + 1] != fecho) return i + 1;
        ++i; // a doubled sign stands for itself
    }
    instrucao_errada(sql.substr(inicio));
}

bool iguais_sem_caixa(std::string_view texto, std::string_view maiusculo) {
    if (texto.size() != maiusculo.size()) return false;
    for (std::size_t i = 0; i < texto.size(); ++i) {
        const char c = texto[i];
        if ((c >= 'a' && c <= 'z' ? c - 32 : c) != maiusculo[i]) return false;
    }
    return true;
}

void instrucao_errada(std::string_view perto_de) {
    throw base::Falha("A instrução SQL tem um erro junto de «" + std::string(perto_de.substr(0, 40)) + "».",
                      startup::numeros_bd::instrucao_errada);
}

std::vector<Simbolo> le_simbolos(std::string_view chave) {
    std::vector<Simbolo> simbolos;
    for (std::size_t i = 0; i < chave.size();) {
        const char c = chave[i];
        std::size_t fim = i + 1;
        if (branco(c)) {
        } else if (inicia_palavra(c)) {
            fim = fim_palavra(chave, i);
            simbolos.push_back({Categoria::palavra, chave.substr(i, fim - i)});
        } else if (algarismo(c)) {
            fim = fim_numero(chave, i);
            simbolos.push_back({Categoria::numero, chave.substr(i, fim - i)});
        } else if (c == '[' || c == '"') {
            fim = fim_entre(chave, i, c == '[' ? ']' : '"');
            simbolos.push_back({Categoria::nome, chave.substr(i + 1, fim - i - 2)});
        } else if (c == '\'') {
            fim = fim_entre(chave, i, '\'');
            simbolos.push_back({Categoria::texto, chave.substr(i, fim - i)});
        } else if (c == lugar_texto || c == lugar_numero) {
            simbolos.push_back({Categoria::parametro, chave.substr(i, 1)});
        } else {
            fim = i + tamanho_sinal(chave.substr(i));
            simbolos.push_back({Categoria::sinal, chave.substr(i, fim - i)});
        }
        i = fim;
    }
    simbolos.push_back({});
    return simbolos;
}

} // namespace orvex::platform::sqlite
