// What was found, a line each. A line is written as soon as it is known, so that whoever breaks the trial off
// has read of every document that was made by then.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>

namespace orvex::conformidade {

class Relatorio {
  public:
    explicit Relatorio(std::ostream& saida) : saida_(saida) {}

    void certo(const std::string& o_que);
    void errado(const std::string& o_que, const std::string& esperado, const std::string& encontrado);
    void nao_experimentado(const std::string& o_que, const std::string& porque);

    // In order when both are the same; tells which.
    bool compara(const std::string& o_que, const std::string& esperado, const std::string& encontrado);
    // What it throws is the finding: then nothing was in order. Gives whether it came to its end.
    bool experimenta(const std::string& o_que, const std::function<void()>& passos);

    int errados() const { return errados_; }
    int por_experimentar() const { return por_experimentar_; }
    std::string resumo() const;

  private:
    void linha(const char* estado, const std::string& texto);

    std::ostream& saida_;
    int certos_ = 0, errados_ = 0, por_experimentar_ = 0;
};

} // namespace orvex::conformidade
