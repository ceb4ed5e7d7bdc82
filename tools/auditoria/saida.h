// The report for people, and for programs.
#pragma once

#include "auditoria.h"

#include <string>

namespace orvex::auditoria {

std::string texto(const Achado& achado); // one line
std::string texto(const Relatorio& relatorio, const std::string& empresa, const base::DataHora& quando);
std::string json(const Relatorio& relatorio, const std::string& empresa, const base::DataHora& quando);

// By check or by client.
struct Total {
    int erros = 0, avisos = 0, informacoes = 0;
    base::Moeda peso; // of errors and warnings
    void conta(const Achado& achado);
};

} // namespace orvex::auditoria
