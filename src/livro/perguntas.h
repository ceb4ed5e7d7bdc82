// The questions that a step announces (SessaoBD::EmPasso): the texts of the functions that ask them, which
// the `perguntas` of their headers give.
#pragma once

#include "livro/chaves.h"

#include <string>
#include <unordered_set>
#include <vector>

namespace orvex::livro {

class Perguntas {
  public:
    // As often as it will be asked, where nothing that the step writes changes the answer.
    void junta(std::string texto) { todas_.push_back(std::move(texto)); }

    // Of a row that is to be written over: once, so that whoever asks again sees what was written.
    void junta_uma_vez(const std::string& texto) { junta_uma_vez(texto, texto); }
    // The same of a movement line. Texts that find the same one ("01" and "1") count as one.
    void junta_linha(const ChaveLinha& linha);

    const std::vector<std::string>& todas() const { return todas_; }

  private:
    void junta_uma_vez(const std::string& texto, const std::string& de_que) {
        if (juntas_.insert(de_que).second) todas_.push_back(texto);
    }

    std::vector<std::string> todas_;
    std::unordered_set<std::string> juntas_; // what each of those that come once is of
};

} // namespace orvex::livro
