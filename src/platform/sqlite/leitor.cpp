#include "platform/sqlite/leitor.h"

#include <algorithm>
#include <array>

namespace orvex::platform::sqlite {
namespace {

constexpr std::array<std::string_view, 40> reservadas{
    "ADD",    "ALTER",  "AND",    "AS",       "ASC",    "BETWEEN", "BY",     "CASE",  "CONSTRAINT", "CONVERT",
    "CREATE", "DELETE", "DESC",   "DISTINCT", "ELSE",   "END",     "EXISTS", "FROM",  "GROUP",      "HAVING",
    "IN",     "INNER",  "INSERT", "INTO",     "IS",     "JOIN",    "LEFT",   "LIKE",  "NOT",        "NULL",
    "ON",     "OR",     "ORDER",  "OUTER",    "SELECT", "SET",     "TOP",    "UNION", "UPDATE",     "WHERE"};

} // namespace

bool Leitor::e_nome() const {
    if (actual().categoria == Categoria::nome) return true;
    return actual().categoria == Categoria::palavra &&
           std::none_of(reservadas.begin(), reservadas.end(), [this](std::string_view reservada) {
               return iguais_sem_caixa(actual().texto, reservada);
           });
}

std::string Leitor::nome() {
    exige(e_nome() && actual().texto.find(']') == std::string_view::npos);
    return "[" + std::string(retira().texto) + "]";
}

std::string Leitor::tabela() {
    if (iguais_sem_caixa(actual().texto, "DBO") && seguinte().texto == ".") {
        retira();
        retira();
    }
    return nome();
}

std::string Leitor::numero() {
    exige(actual().categoria == Categoria::numero && actual().texto.find('.') == std::string_view::npos);
    return std::string(retira().texto);
}

} // namespace orvex::platform::sqlite
