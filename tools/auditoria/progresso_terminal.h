// How far the reading is, on a terminal only: one line that is written over.
#pragma once

#include "leitura.h"

namespace orvex::auditoria {

class ProgressoTerminal : public Progresso {
  public:
    ProgressoTerminal();
    void fase(const std::string& qual) override;
    void linhas(std::int64_t lidas) override;
    void espera(int segundos) override;
    void acaba(); // leaves the line empty

  private:
    void mostra(const std::string& texto);

    bool terminal_;
    std::string fase_;
    std::int64_t lidas_ = 0;
    std::size_t largura_ = 0;
};

} // namespace orvex::auditoria
