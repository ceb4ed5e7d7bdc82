#include "livro/artigos.h"

#include "base/texto.h"

namespace orvex::livro {

std::string perguntas::existencia(const std::string& Artigo, const std::string& Armazem) {
    return "SELECT * FROM artarm  where artarm.Artigo=" + base::entre_plicas(Artigo) +
           " and Armazem=" + base::entre_plicas(Armazem);
}

std::string perguntas::artigo_activo(const std::string& codigo) {
    return "SELECT * FROM Artigos  where Artigos.CODIGO=" + base::entre_plicas(codigo) +
           " and Artigos.Inactivo<>-1 ";
}

std::string perguntas::preco(const std::string& Artigo) {
    return "SELECT VLREXIST , STDISP , ULTPRCOM  From Artigos WHERE     (CODIGO = " +
           base::entre_plicas(Artigo) + ")";
}

std::optional<base::Variante> existencia(startup::SessaoBD& BD, const std::string& Artigo,
                                         const std::string& Armazem) {
    const auto stock = BD.Consulta(perguntas::existencia(Artigo, Armazem));
    if (stock->fim()) return std::nullopt;
    return stock->valor("Existenc");
}

std::optional<ArtigoActivo> artigo_activo(startup::SessaoBD& BD, const std::string& codigo) {
    const auto artigo = BD.Consulta(perguntas::artigo_activo(codigo));
    if (artigo->fim()) return std::nullopt;
    return ArtigoActivo{artigo->valor("CODIGO").texto(), artigo->valor("Nome").texto()};
}

double preco_movimento(startup::SessaoBD& BD, const std::string& Artigo) {
    const auto artigo = BD.AbreActualizavel(perguntas::preco(Artigo));
    if (artigo->fim()) return 0;
    const double disponivel = artigo->valor("Stdisp").real();
    return disponivel != 0 ? artigo->valor("VLREXIST").real() / disponivel : artigo->valor("UltPrcom").real();
}

double preco_transferencia(startup::SessaoBD& BD, const std::string& Artigo) {
    const auto artigo = BD.Consulta(perguntas::preco(Artigo));
    if (artigo->fim()) return 0;
    const double disponivel = artigo->valor("STDISP").real();
    return disponivel != 0 ? artigo->valor("VLREXIST").real() / disponivel : 0;
}

} // namespace orvex::livro
