#include "livro/consultas/partes.h"

#include "base/texto.h"
#include "livro/linhas_abertas.h"

#include <algorithm>

namespace orvex::livro::consultas {

using base::DataHora;
using base::Variante;

Variante ou_nulo(const std::string& texto) { return texto.empty() ? Variante() : Variante(texto); }
Variante ou_nulo(const std::optional<DataHora>& data) { return data ? Variante(*data) : Variante(); }

std::int64_t inteiro(const Variante& lido) { return lido.nulo() ? 0 : lido.inteiro(); }
Variante peso(const Variante& lido) { return lido.nulo() ? lido : Variante(lido.moeda()); }

Variante dias_desde(const std::optional<DataHora>& desde, int no_dia) {
    return desde ? Variante(no_dia - dia(*desde)) : Variante();
}

std::string perto_de(const char* coluna, const DataHora& de, const DataHora& ate) {
    const auto meia_noite = [](int no_dia) {
        return base::entre_plicas(data_do_dia(no_dia).data_iso() + "T00:00:00");
    };
    const int primeiro = std::max(dia(de) - 1, dia(DataHora{base::primeiro_ano_do_servidor, 1, 1}));
    return std::string(coluna) + ">=" + meia_noite(primeiro) + " and " + coluna + "<" +
           meia_noite(dia(ate) + 1);
}

NomeDeCodigo cliente_no_erp(startup::SessaoBD& BD, const std::string& codigo) {
    const auto cliente =
        BD.Consulta("Select CODIGO, Nome from Clientes where CODIGO=" + base::entre_plicas(codigo));
    if (cliente->fim()) return {codigo, {}, false};
    return {cliente->valor(0).texto(), cliente->valor(1).texto(), true};
}

bool mostra_abertas(const Meios& meios, const char* coluna, const std::string& valor, Destino& destino) {
    destino.quadro({"abertas",
                    "Linhas de factura em aberto agora",
                    {col::documento,
                     col::linha,
                     col::data,
                     col::cliente,
                     col::artigo,
                     col::designacao,
                     {"peso_original", "Da factura (t)", Tipo::peso},
                     {"em_aberto", "Em aberto (t)", Tipo::peso},
                     col::bruto}});
    const auto linhas = meios.BD.Consulta(
        "Select m.Ano, m.TpDoc, m.SerieDoc, m.NumDoc, m.NumLinha, m.Data, m.Cliente, m.Artigo, m.Descritivo, "
        "m.QtdOrig, m.Qtd, m.PesoBruto from xel_ORVEX_Mov m inner join Artigos a on a.CODIGO=m.Artigo where "
        "m." +
        std::string(coluna) + "=" + base::entre_plicas(valor) + " and " + esta_aberta(meios.casa.FACTURAS) +
        " order by m.Ano, m.TpDoc, m.SerieDoc, m.NumDoc, m.NumLinha");
    base::Moeda aberto, com_bruto;
    int quantas = 0;
    for (; !linhas->fim(); linhas->move_seguinte()) {
        const Referencia factura{linhas->valor(0).inteiro(), linhas->valor(1).texto(),
                                 linhas->valor(2).inteiro(), linhas->valor(3).inteiro()};
        Linha esta{factura.texto()};
        for (std::size_t i = 4; i < linhas->colunas(); ++i)
            esta.push_back(i < 9 ? linhas->valor(i) : peso(linhas->valor(i)));
        aberto += linhas->valor(10).moeda();
        if (!linhas->valor(11).nulo()) com_bruto += linhas->valor(11).moeda();
        ++quantas;
        if (!destino.linha(esta)) return false;
    }
    if (quantas > 0) destino.total({"Total", quantas, {}, {}, {}, {}, {}, aberto, com_bruto});
    return true;
}

Referencia Referencia::de(const ChaveLinha& linha) {
    const auto numero = [](const std::string& parte) { return base::le_inteiro(parte).value_or(0); };
    return Referencia{numero(linha.Ano), linha.TpDoc, numero(linha.Serie), numero(linha.NumDoc)}.normal();
}

Referencia Referencia::normal() const { return {Ano, codigo_normal(TpDoc), Serie, Numero}; }

std::string Referencia::texto() const {
    return std::to_string(Ano) + "/" + TpDoc + "/" + std::to_string(Serie) + "/" + std::to_string(Numero);
}

std::optional<DocumentoEscrito> le_documento(std::string_view texto) {
    std::vector<std::string> p = base::divide(base::apara(texto), '/');
    constexpr std::size_t com_ano = 4;
    constexpr std::int64_t maior_serie = 32767, maior_numero = 2147483647;
    const auto retira_numero = [](const std::string& parte,
                                  std::int64_t maior) -> std::optional<std::int64_t> {
        const auto lido = base::le_inteiro(parte);
        return lido && *lido >= 0 && *lido <= maior ? lido : std::nullopt;
    };
    if (p.empty() || p.size() > com_ano) return std::nullopt;
    DocumentoEscrito lido;
    const auto numero = retira_numero(p.back(), maior_numero);
    if (!numero) return std::nullopt;
    lido.Numero = *numero;
    if (p.size() == com_ano) {
        lido.Ano = retira_numero(p.front(), maior_serie);
        if (!lido.Ano) return std::nullopt;
        p.erase(p.begin());
    }
    if (p.size() > 1 && (lido.TpDoc = base::apara(p[0])).empty()) return std::nullopt;
    if (p.size() > 2 && !(lido.Serie = retira_numero(p[1], maior_serie))) return std::nullopt;
    return lido;
}

std::string tipo_em_palavras(const Casa& casa, const std::string& TpDoc, std::int64_t Serie) {
    if (casa.factura(TpDoc, Serie)) return "Factura";
    if (casa.transferencias.e(TpDoc, Serie)) return "Transferência";
    const Especie qual = especie(casa, TpDoc, Serie, 1);
    return qual == Especie::outra ? "Documento " + TpDoc : nome(qual);
}

std::string anos(const Meios& meios) {
    constexpr int quantos = 20;
    std::string todos;
    for (int ano = meios.hoje.ano + 1; ano > meios.hoje.ano + 1 - quantos; --ano)
        todos += (todos.empty() ? "(" : ",") + std::to_string(ano);
    return todos + ")";
}

} // namespace orvex::livro::consultas
