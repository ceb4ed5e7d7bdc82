// What the ERP knows of an article that the ledger's movements are decided on: its stock and its price.
#pragma once

#include "base/variante.h"
#include "startup/sessao_bd.h"

#include <optional>
#include <string>

namespace orvex::livro {

// The stock of an article in a warehouse, tonnes, as the ERP has it: null where it names none, which counts
// as none. Nothing where the article never was. Shown as it is read; asked again under the ledger's lock.
std::optional<base::Variante> existencia(startup::SessaoBD& BD, const std::string& Artigo,
                                         const std::string& Armazem);

// An article in use, by its code in whatever case it is written.
struct ArtigoActivo {
    std::string Codigo; // as the ERP writes it
    std::string Nome;
};
std::optional<ArtigoActivo> artigo_activo(startup::SessaoBD& BD, const std::string& codigo);

// The unit price of an article, euro a tonne, 0 for one that is not known: the average cost of its stock;
// where there is no stock, the last purchase price. A null in what is read throws.
double preco_movimento(startup::SessaoBD& BD, const std::string& Artigo);
// The same for a transfer, where no stock is worth nothing. It asks for rows to read where the other asks for
// rows to write, as the rule of each is laid down.
double preco_transferencia(startup::SessaoBD& BD, const std::string& Artigo);

// What these ask, for a step that announces it.
namespace perguntas {
std::string existencia(const std::string& Artigo, const std::string& Armazem);
std::string artigo_activo(const std::string& codigo);
std::string preco(const std::string& Artigo); // either one
} // namespace perguntas

} // namespace orvex::livro
