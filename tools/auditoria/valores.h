// L7: what a row holds in itself: dates, codes, and what is missing.
#pragma once

#include "exame.h"

namespace orvex::auditoria {

class Valores {
  public:
    explicit Valores(Contexto& contexto) : contexto_(contexto) {}

    void confere_movimento(const Leitura& l); // of livro::movimentos
    void confere_detentor(const Leitura& l);  // of livro::historias

  private:
    // What is wrong, for one row: one finding with all of it.
    struct Defeitos {
        std::string texto;
        Gravidade gravidade = Gravidade::aviso;
        void junta(const std::string& qual, Gravidade esta);
    };
    void data(Defeitos& defeitos, const std::optional<base::DataHora>& data, std::int64_t ano) const;
    void codigo(Defeitos& defeitos, const char* o_que, const std::string& codigo, const std::string& no_erp,
                Gravidade se_escrito_doutra_maneira) const;

    Contexto& contexto_;
};

} // namespace orvex::auditoria
