// Values as the texts of operations show them.
#pragma once

#include "base/variante.h"

#include <string>
#include <vector>

namespace orvex::platform::operacoes {

// Texts in quotes, so that '1' and 1 differ.
inline std::string escrito(const base::Variante& valor) {
    if (valor.nulo()) return "null";
    if (const auto* logico = std::get_if<bool>(&valor.valor())) return *logico ? "True" : "False";
    return std::holds_alternative<std::string>(valor.valor()) ? "'" + valor.texto() + "'" : valor.texto();
}

template <typename Valor>
std::string escrito(const std::vector<Valor>& valores) {
    std::string todos;
    for (const Valor& valor : valores)
        todos += (todos.empty() ? "" : " ") + escrito(base::Variante(valor));
    return "[" + todos + "]";
}

template <typename... Valores>
std::string escritos(const Valores&... valores) {
    std::string todos;
    ((todos += (todos.empty() ? "" : ", ") + escrito(valores)), ...);
    return todos;
}

} // namespace orvex::platform::operacoes
