// What the audit found: one line each, with what it costs and what to do about it.
#pragma once

#include "base/datahora.h"
#include "base/moeda.h"

#include <optional>
#include <string>
#include <vector>

namespace orvex::auditoria {

enum class Gravidade {
    erro,       // weight is lost, doubled or in the wrong place
    aviso,      // looks wrong; other programs' rows and what is older than this program's rules may have it
    informacao, // is so, and need not be wrong: never a reason to end with 2
};

struct Achado {
    Gravidade gravidade = Gravidade::erro;
    std::string verificacao; // L1, ...
    std::string chave;       // 2019/FA/1/123/2, 2019/GR/1/7, "registo 12" or an article
    std::string artigo{};
    std::vector<std::string> artigos{}; // of a document that has several
    std::string cliente{};
    std::string esperado{};
    std::string encontrado{};
    base::Moeda peso{};  // tonnes: by how much it differs, never negative
    std::string desde{}; // since which document
    std::optional<base::DataHora> data{};
    std::string que_fazer{};

    // The very same finding: with another amount it is another one.
    std::string identidade() const;
    // The same place, whatever it differs by: what is read twice while others work may have moved on.
    bool no_mesmo_sitio(const Achado& outro) const {
        return verificacao == outro.verificacao && chave == outro.chave && artigo == outro.artigo;
    }
};
using Achados = std::vector<Achado>;

// The checks, in the order they are told in; their names stay as they are.
struct Verificacao {
    const char* nome;
    const char* titulo;
};
const std::vector<Verificacao>& verificacoes();

const char* nome(Gravidade gravidade);   // erro, aviso, info
std::string toneladas(base::Moeda peso); // "2,5 t"
std::string toneladas(std::optional<base::Moeda> peso);
std::string quilos(base::Moeda peso); // of tonnes: "2500 kg", "0,1 kg"

} // namespace orvex::auditoria
