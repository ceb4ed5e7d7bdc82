// Writing many rows through one prepared statement.
#pragma once

#include "base/moeda.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <concepts>
#include <string>

namespace orvex::demo {

class Insercao {
  public:
    // The statement needs a parameter for each value given to it.
    Insercao(SQLite::Database& bd, const std::string& sql) : comando_(bd, sql) {}

    template <typename... Valores>
    void operator()(const Valores&... valores) {
        comando_.reset();
        int indice = 0;
        (associa(++indice, valores), ...);
        comando_.exec();
    }

  private:
    void associa(int indice, std::integral auto valor) {
        comando_.bind(indice, static_cast<std::int64_t>(valor));
    }
    void associa(int indice, const std::string& valor) { comando_.bindNoCopy(indice, valor); }
    void associa(int indice, const char* valor) { comando_.bindNoCopy(indice, valor); }
    // Four decimals of this size survive the way through a double.
    void associa(int indice, base::Moeda valor) { comando_.bind(indice, valor.real()); }

    SQLite::Statement comando_;
};

} // namespace orvex::demo
