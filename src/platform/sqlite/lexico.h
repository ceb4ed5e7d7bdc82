// The words and signs of a statement.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::platform::sqlite {

enum class Categoria { palavra, nome, texto, numero, parametro, sinal, fim };

// `texto` is the token as written, but for a name in brackets or quotation marks, which stands without them.
struct Simbolo {
    Categoria categoria = Categoria::fim;
    std::string_view texto;
};

// Where the run of letters or digits, the number or the quoted text that starts at `inicio` ends. A number
// ends at the first letter: "12and" is a number and a word.
std::size_t fim_palavra(std::string_view sql, std::size_t inicio);
std::size_t fim_numero(std::string_view sql, std::size_t inicio);
std::size_t fim_entre(std::string_view sql, std::size_t inicio, char fecho); // past the closing sign

enum class Classe : unsigned char { outro, letra, digito };
inline constexpr std::array<Classe, 256> classes = [] {
    std::array<Classe, 256> tabela{};
    for (std::size_t c = 0; c < tabela.size(); ++c) {
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '@' || c == '#' || c >= 0x80)
            tabela[c] = Classe::letra;
        if (c >= '0' && c <= '9') tabela[c] = Classe::digito;
    }
    return tabela;
}();
inline Classe classe(char c) { return classes[static_cast<unsigned char>(c)]; }
inline bool algarismo(char c) { return classe(c) == Classe::digito; }
inline bool inicia_palavra(char c) { return classe(c) == Classe::letra; }
bool iguais_sem_caixa(std::string_view texto, std::string_view maiusculo); // ASCII letters only

[[noreturn]] void instrucao_errada(std::string_view perto_de);

// Takes a shape apart. Throws Falha (instrucao_errada) at a sign the language does not have. The tokens see
// the text, which must outlive them.
std::vector<Simbolo> le_simbolos(std::string_view chave);

} // namespace orvex::platform::sqlite
