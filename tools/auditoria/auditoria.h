// The audit: a look at both sides, and a second one at what the first found, because a confirmation may have
// been under way between one table and the next.
#pragma once

#include "exame.h"

#include <functional>
#include <set>

namespace orvex::auditoria {

// Which findings are asked for; everything is looked at whatever is asked.
struct Filtro {
    std::string cliente{}, artigo{};
    std::optional<base::DataHora> desde{}; // findings without a date are always shown
    bool passa(const Achado& achado) const;
};

// Identities of findings that are known: `Achado::identidade`, a line each; lines that begin with "#" are for
// the reader.
using Aceites = std::set<std::string>;

struct Pedido {
    Casa casa;
    base::DataHora hoje;
    Sessoes::Abre abre;
    // What the company's files look like: read again when it changed; may be none.
    std::function<std::string()> aspecto{};
    std::optional<platform::diario::Gaveta> gaveta{}; // with the journals; may be none
    Filtro filtro{};
    Aceites aceites{};
    int espera = 20; // seconds, before what was found is read again
};

struct Relatorio {
    Achados achados; // the heaviest first
    Achados aceites; // found as well, and accepted
    std::vector<NaoVisto> nao_vistos;

    bool limpo() const; // nothing but information
};

Relatorio audita(const Pedido& pedido, Progresso& progresso);

} // namespace orvex::auditoria
