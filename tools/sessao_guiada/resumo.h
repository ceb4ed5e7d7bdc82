// What the confirmations wrote, read through a session of its own.
#pragma once

#include "platform/sqlite/sessao_sqlite.h"

#include <filesystem>
#include <sstream>
#include <string>

namespace orvex::demo {

class Resumo {
  public:
    explicit Resumo(const std::filesystem::path& instalacao);

    void estado(const std::string& momento, int guia = 12);
    void devolucao();
    std::string texto() const { return texto_.str(); }

  private:
    void tabela(const std::string& titulo, const std::string& sql);

    platform::sqlite::SessaoSQLite BD_;
    std::ostringstream texto_;
};

} // namespace orvex::demo
