// Walks through the tokens of a statement; what both halves of the translation (data and schema) share.
#pragma once

#include "platform/sqlite/lexico.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvex::platform::sqlite {

class Leitor {
  public:
    explicit Leitor(std::string_view chave) : simbolos_(le_simbolos(chave)) {}

    const Simbolo& actual() const { return simbolos_[posicao_]; }
    const Simbolo& seguinte() const {
        return simbolos_[posicao_ + (actual().categoria == Categoria::fim ? 0 : 1)];
    }
    const Simbolo& retira() {
        return simbolos_[actual().categoria == Categoria::fim ? posicao_ : posicao_++];
    }

    // Words are given in upper case.
    bool e_palavra(std::string_view palavra) const {
        return actual().categoria == Categoria::palavra && iguais_sem_caixa(actual().texto, palavra);
    }
    bool e_sinal(std::string_view sinal) const {
        return actual().categoria == Categoria::sinal && actual().texto == sinal;
    }
    bool aceita_palavra(std::string_view palavra) { return e_palavra(palavra) && avanca(); }
    bool aceita_sinal(std::string_view sinal) { return e_sinal(sinal) && avanca(); }
    void exige_palavra(std::string_view palavra) { exige(aceita_palavra(palavra)); }
    void exige_sinal(std::string_view sinal) { exige(aceita_sinal(sinal)); }
    void exige(bool certo) const {
        if (!certo)
            instrucao_errada(actual().categoria == Categoria::fim ? "fim da instrução" : actual().texto);
    }
    void exige_fim() const { exige(actual().categoria == Categoria::fim); }

    bool e_nome() const;  // a name in brackets, or a word the language does not reserve
    std::string nome();   // in brackets, as the engine takes it
    std::string tabela(); // a name, after the schema's own
    std::string numero(); // a whole number that is part of the shape

  private:
    bool avanca() {
        ++posicao_;
        return true;
    }

    std::vector<Simbolo> simbolos_;
    std::size_t posicao_ = 0;
};

// A column's type as declared to the engine, read after the column's name: "nvarchar(15)", "money", ...
std::string le_tipo(Leitor& leitor);

// CREATE TABLE and ALTER TABLE, from their second word on.
std::string traduz_criacao(Leitor& leitor);
std::vector<std::string> traduz_alteracao(Leitor& leitor);

} // namespace orvex::platform::sqlite
