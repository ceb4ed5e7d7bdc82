#include "valores.h"

#include "livro/leitura.h"
#include "ponto.h"

namespace orvex::auditoria {

namespace D = livro::detentor_lido;
namespace M = livro::movimento_lido;

void Valores::Defeitos::junta(const std::string& qual, Gravidade esta) {
    texto += (texto.empty() ? "" : "; ") + qual;
    if (esta == Gravidade::erro) gravidade = esta;
}

void Valores::data(Defeitos& defeitos, const std::optional<base::DataHora>& data, std::int64_t ano) const {
    constexpr int primeiro_ano = 1990;
    if (!data) return defeitos.junta("sem data", Gravidade::erro);
    if (data->ano < primeiro_ano || (*data > contexto_.hoje && data->a_mais_de_um_ano(contexto_.hoje)))
        defeitos.junta("data " + data->data(), Gravidade::aviso);
    if (ano != 0 && data->ano != ano)
        defeitos.junta("data " + data->data() + " num documento de " + std::to_string(ano), Gravidade::aviso);
}

void Valores::codigo(Defeitos& defeitos, const char* o_que, const std::string& codigo,
                     const std::string& no_erp, Gravidade se_escrito_doutra_maneira) const {
    if (codigo == no_erp && !codigo.empty()) return;
    if (codigo.empty()) return defeitos.junta(std::string("sem ") + o_que, Gravidade::erro);
    if (no_erp.empty())
        return defeitos.junta(std::string(o_que) + " «" + codigo + "» que o ERP não conhece",
                              Gravidade::erro);
    defeitos.junta(std::string(o_que) + " «" + codigo + "» que o ERP escreve «" + no_erp + "»",
                   se_escrito_doutra_maneira);
}

void Valores::confere_movimento(const Leitura& l) {
    const Casa& casa = contexto_.casa;
    const std::string TpDoc = l.texto(M::TpDoc);
    const std::int64_t serie = l.inteiro(M::SerieDoc);
    const bool de_factura = casa.factura(TpDoc, serie);
    if (!de_factura && !casa.guias.e(TpDoc, serie) && !casa.devolucoes.e(TpDoc, serie)) return;
    Defeitos defeitos;
    const auto quando = l.data(M::Data);
    const std::int64_t ano = l.inteiro(M::Ano);
    data(defeitos, quando, ano);
    const std::string artigo = l.texto(M::Artigo), cliente = l.texto(M::Cliente);
    codigo(defeitos, "artigo", artigo, l.texto(M::ArtigoNoERP), Gravidade::aviso);
    codigo(defeitos, "cliente", cliente, l.texto(M::ClienteNoERP), Gravidade::aviso);
    const auto original = l.moeda(M::QtdOrig);
    if (!original || l.valor(M::Qtd).nulo()) defeitos.junta("sem quantidade", Gravidade::erro);
    if (defeitos.texto.empty()) return;
    const Ponto ponto = Ponto::de(ano, TpDoc, serie, l.inteiro(M::NumDoc), l.inteiro(M::NumLinha));
    contexto_.junta({.gravidade = defeitos.gravidade,
                     .verificacao = "L7",
                     .chave = ponto.texto(),
                     .artigo = artigo,
                     .cliente = cliente,
                     .esperado = "uma linha completa, com os códigos do ERP",
                     .encontrado = defeitos.texto,
                     .peso = original.value_or(base::Moeda()).absoluta(),
                     .desde = ponto.documento(),
                     .data = quando,
                     .que_fazer = "peça a correcção desta linha dos movimentos pelo documento em papel; um "
                                  "código que o ERP não conhece pode ter sido lá apagado ou renomeado"});
}

// Of rows that others wrote only what the program goes by: the item and its holder.
void Valores::confere_detentor(const Leitura& l) {
    const Casa& casa = contexto_.casa;
    Defeitos defeitos;
    const std::string artigo = l.texto(D::NumSerie), cliente = l.texto(D::Cliente);
    const std::string TpDoc = l.texto(D::TpDoc);
    const std::int64_t serie = l.inteiro(D::Serie), numero = l.inteiro(D::NNumDoc);
    codigo(defeitos, "artigo", artigo, l.texto(D::ArtigoNoERP), Gravidade::aviso);
    if (casa.e_orvex(cliente))
        codigo(defeitos, "cliente", cliente, casa.lugares.ClienteOrvex, Gravidade::erro);
    else
        codigo(defeitos, "cliente", cliente, l.texto(D::ClienteNoERP), Gravidade::aviso);
    const auto quantidade = l.moeda(D::Quantidade);
    const auto quando = l.data(D::Data);
    const std::int64_t ano = l.inteiro(D::Ano);
    const bool nossa =
        casa.ajuste(TpDoc, serie) || casa.guias.e(TpDoc, serie) || casa.devolucoes.e(TpDoc, serie);
    if (!quantidade) defeitos.junta("sem quantidade", Gravidade::erro);
    for (const auto& [coluna, o_que] : {std::pair{D::Ano, "sem ano"},
                                        {D::TpDoc, "sem tipo de documento"},
                                        {D::Serie, "sem série"},
                                        {D::NNumDoc, "sem número de documento"}})
        if (l.valor(coluna).nulo()) defeitos.junta(o_que, Gravidade::erro);
    // The rows of a transfer are of the year of the machine's clock.
    if (nossa) data(defeitos, quando, numero > 0 ? ano : 0);
    if (defeitos.texto.empty()) return;
    contexto_.junta({.gravidade = defeitos.gravidade,
                     .verificacao = "L7",
                     .chave = "registo " + std::to_string(l.inteiro(D::Registo)),
                     .artigo = artigo,
                     .cliente = cliente,
                     .esperado = "uma linha completa, com os códigos do ERP",
                     .encontrado = defeitos.texto,
                     .peso = quantidade.value_or(base::Moeda()).absoluta(),
                     .desde = TpDoc + "/" + std::to_string(serie) + "/" + std::to_string(numero),
                     .data = quando,
                     .que_fazer = "peça a correcção deste registo dos detentores pelo documento em papel; um "
                                  "código que o ERP não conhece pode ter sido lá apagado ou renomeado"});
}

} // namespace orvex::auditoria
