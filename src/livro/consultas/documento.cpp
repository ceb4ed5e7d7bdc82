// A document as ledger and ERP have it: its lines, where they came from, and what came back.
#include "base/texto.h"
#include "livro/consultas/partes.h"
#include "startup/sessao_erp.h"

#include <algorithm>

namespace orvex::livro::consultas {
namespace {

using base::Moeda;
using base::Variante;

struct Cabecalho {
    Referencia qual;
    Variante Data;
    std::string Cliente;
    bool no_erp = false, anulado = false;
};

struct LinhaDoc {
    std::int64_t numero = 0;
    std::string artigo, descricao, detentor;
    Variante liquido, bruto, aberto;
    std::optional<ChaveLinha> origem;
};

struct Ligada { // a line of another document that was taken from a line of this one
    std::int64_t linha = 0;
    Referencia qual;
    Variante Data, artigo, peso;
    bool devolucao = false;
};

// "Ano=2019 and TpDoc='GR' and ..." of a table's columns.
std::string de_um(const Referencia& qual, const std::string& TpDoc, const std::string& Serie,
                  const std::string& Numero, const std::string& tabela) {
    return tabela + "Ano=" + std::to_string(qual.Ano) + " and " + tabela + TpDoc + "=" +
           base::entre_plicas(qual.TpDoc) + " and " + tabela + Serie + "=" + std::to_string(qual.Serie) +
           " and " + tabela + Numero + "=" + std::to_string(qual.Numero);
}

bool nossa(const Casa& casa, const Referencia& qual) {
    for (const Numeracao* esta :
         {&casa.guias, &casa.devolucoes, &casa.sobras, &casa.quebras, &casa.consumos, &casa.transferencias})
        if (esta->e(qual.TpDoc, qual.Serie)) return true;
    return casa.factura(qual.TpDoc, qual.Serie);
}

std::string escolhe(const Meios& meios, const DocumentoEscrito& escrito, const std::string& Serie,
                    const std::string& Numero) {
    std::string sql = " where " + Numero + "=" + std::to_string(escrito.Numero) +
                      " and TpDoc=" + base::entre_plicas(escrito.TpDoc);
    if (escrito.Serie) sql += " and " + Serie + "=" + std::to_string(*escrito.Serie);
    sql += escrito.Ano ? " and Ano=" + std::to_string(*escrito.Ano) : " and Ano in " + anos(meios);
    return sql + " order by Ano desc, " + Serie + " desc";
}

// The newest of them, of a year the one of our series, as the ERP has it; what it does not know, as the
// ledger does.
std::optional<Cabecalho> encontra(const Meios& meios, DocumentoEscrito escrito) {
    if (escrito.TpDoc.empty()) {
        escrito.TpDoc = meios.casa.guias.TpDoc;
        escrito.Serie = meios.casa.guias.Serie;
    }
    std::optional<Cabecalho> encontrado;
    const auto melhor = [&](const Referencia& este) {
        if (!encontrado || este.Ano != encontrado->qual.Ano)
            return !encontrado || este.Ano > encontrado->qual.Ano;
        return nossa(meios.casa, este) && !nossa(meios.casa, encontrado->qual);
    };
    const auto le = [&](const std::string& sql, bool no_erp) {
        for (const auto linha = meios.BD.Consulta(sql); !linha->fim(); linha->move_seguinte()) {
            const Referencia este{linha->valor(0).inteiro(), linha->valor(1).texto(),
                                  linha->valor(2).inteiro(), escrito.Numero};
            if (!melhor(este)) continue;
            encontrado = Cabecalho{este, linha->valor(3), linha->valor(4).texto(), no_erp,
                                   no_erp && inteiro(linha->valor(5)) == startup::documento_anulado};
        }
    };
    le("Select Ano, TpDoc, Serie, Data, Terceiro, NVias from DocGcCab" +
           escolhe(meios, escrito, "Serie", "NNumDoc"),
       true);
    le("Select Ano, TpDoc, SerieDoc, Data, Cliente from xel_ORVEX_Mov" +
           escolhe(meios, escrito, "SerieDoc", "NumDoc"),
       false);
    return encontrado;
}

std::vector<LinhaDoc> le_linhas(const Meios& meios, const Referencia& qual) {
    std::map<std::int64_t, LinhaDoc> linhas;
    const auto um_ou = [](const Variante& um, const Variante& outro) { return um.nulo() ? outro : um; };
    // Of the ERP, its lines of text left out.
    const auto no_erp = meios.BD.Consulta(
        "Select l.NumLinha, l.Artigo, l.Descr, l.Quant, u.PesoBruto from DocGcLin l left outer join "
        "U_DocGcLin1 u "
        "on u.Ano=l.Ano and u.TpDocUM=l.TpDocum and u.Serie=l.Serie and u.NNumDoc=l.NNumDoc and "
        "u.NumLinha=l.NumLinha where " +
        de_um(qual, "TpDocum", "Serie", "NNumDoc", "l."));
    for (; !no_erp->fim(); no_erp->move_seguinte()) {
        if (no_erp->valor(1).vazio()) continue;
        const std::int64_t numero = no_erp->valor(0).inteiro();
        linhas[numero] = {numero,
                          no_erp->valor(1).texto(),
                          no_erp->valor(2).texto(),
                          {},
                          peso(no_erp->valor(3)),
                          peso(no_erp->valor(4)),
                          {},
                          {}};
    }
    const auto no_livro = meios.BD.Consulta("Select NumLinha, Artigo, Descritivo, QtdOrig, PesoLiquido, "
                                            "PesoBruto, Qtd, Origem from xel_ORVEX_Mov "
                                            "where " +
                                            de_um(qual, "TpDoc", "SerieDoc", "NumDoc", ""));
    for (; !no_livro->fim(); no_livro->move_seguinte()) {
        const std::int64_t numero = no_livro->valor(0).inteiro();
        LinhaDoc& esta = linhas[numero];
        esta.numero = numero;
        esta.artigo = no_livro->valor(1).texto();
        if (!no_livro->valor(2).vazio()) esta.descricao = no_livro->valor(2).texto();
        const bool factura = meios.casa.factura(qual.TpDoc, qual.Serie);
        // What is open of an invoice is taken from its weights, too.
        esta.liquido = peso(factura ? no_livro->valor(3) : um_ou(no_livro->valor(4), no_livro->valor(3)));
        if (!factura || esta.bruto.nulo()) esta.bruto = um_ou(peso(no_livro->valor(5)), esta.bruto);
        if (factura) esta.aberto = peso(no_livro->valor(6));
        esta.origem = le_chave(no_livro->valor(7).texto());
    }
    // By the articles, since the rows are ordered by them.
    const auto detentores =
        meios.BD.Consulta("Select x.NumLin, x.NumSerie, x.Cliente, x.Quantidade, x.Registo from xel_ORVEX x "
                          "where x.NumSerie in "
                          "(Select Artigo from DocGcLin where " +
                          de_um(qual, "TpDocum", "Serie", "NNumDoc", "") + ") and " +
                          de_um(qual, "TpDoc", "Serie", "NNumDoc", "x.") + " order by x.Registo");
    for (; !detentores->fim(); detentores->move_seguinte())
        for (auto& [numero, linha] : linhas)
            if (mesmo_codigo(linha.artigo, detentores->valor(1).texto()) &&
                (numero == inteiro(detentores->valor(0)) || !linha.origem))
                linha.detentor = detentores->valor(2).texto();
    std::vector<LinhaDoc> todas;
    for (auto& [numero, linha] : linhas)
        todas.push_back(std::move(linha));
    return todas;
}

// Of the series as a number and as the parameters write it, which keys repeat.
std::vector<Ligada> le_ligadas(const Meios& meios, const Referencia& qual) {
    const auto das_linhas = [&](const std::string& serie) {
        const std::string chave =
            std::to_string(qual.Ano) + "/" + qual.TpDoc + "/" + serie + "/" + std::to_string(qual.Numero);
        // "/" comes before the digits, and 0 is the first of them.
        return "(Origem>=" + base::entre_plicas(chave + "/") + " and Origem<" +
               base::entre_plicas(chave + "0") + ")";
    };
    std::string onde = das_linhas(std::to_string(qual.Serie));
    for (const Numeracao* nossa : {&meios.casa.guias, &meios.casa.devolucoes})
        if (nossa->e(qual.TpDoc, qual.Serie) && nossa->SerieEscrita != std::to_string(qual.Serie))
            onde += " or " + das_linhas(nossa->SerieEscrita);
    const auto linhas =
        meios.BD.Consulta("Select Ano, TpDoc, SerieDoc, NumDoc, Data, Artigo, QtdOrig, Origem "
                          "from xel_ORVEX_Mov where " +
                          onde + " order by Origem, Ano, TpDoc, NumDoc");
    std::vector<Ligada> ligadas;
    for (; !linhas->fim(); linhas->move_seguinte()) {
        const auto origem = le_chave(linhas->valor(7).texto());
        if (!origem || Referencia::de(*origem) != qual.normal()) continue;
        const Referencia outra{linhas->valor(0).inteiro(), linhas->valor(1).texto(),
                               linhas->valor(2).inteiro(), linhas->valor(3).inteiro()};
        ligadas.push_back({*base::le_inteiro(origem->NumLinha), outra, linhas->valor(4), linhas->valor(5),
                           peso(linhas->valor(6)), meios.casa.devolve(outra.TpDoc)});
    }
    return ligadas;
}

// The return that brought a line back; null where none did.
const Ligada* volta_de(const std::vector<Ligada>& ligadas, std::int64_t linha) {
    const auto volta = std::find_if(ligadas.begin(), ligadas.end(), [&](const Ligada& ligada) {
        return ligada.devolucao && ligada.linha == linha;
    });
    return volta == ligadas.end() ? nullptr : &*volta;
}

// In the words of the note's screen.
std::string estado(const Cabecalho& cabecalho, bool guia, std::size_t linhas, std::size_t devolvidas) {
    if (cabecalho.anulado) return "Anulada";
    if (!cabecalho.no_erp) return "O ERP não tem este documento";
    if (!guia) return "Em vigor";
    return devolvidas == 0 ? "Emitida" : devolvidas < linhas ? "Devolvida em parte" : "Devolvida";
}

void mostra_linhas(const std::vector<LinhaDoc>& linhas, const std::vector<Ligada>& ligadas,
                   Destino& destino) {
    destino.quadro({"linhas",
                    "Linhas",
                    {col::linha,
                     col::artigo,
                     col::designacao,
                     col::liquido,
                     col::bruto,
                     {"em_aberto", "Em aberto (t)", Tipo::peso},
                     col::detentor,
                     {"origem", "Origem", Tipo::codigo, Ligacao::documento},
                     {"linha_origem", "Da linha", Tipo::inteiro},
                     {"devolvida_com", "Devolvida com", Tipo::codigo, Ligacao::documento}}});
    Moeda somas[2];
    for (const LinhaDoc& esta : linhas) {
        const Ligada* volta = volta_de(ligadas, esta.numero);
        if (!esta.liquido.nulo()) somas[0] += esta.liquido.moeda();
        if (!esta.bruto.nulo()) somas[1] += esta.bruto.moeda();
        if (!destino.linha({esta.numero, esta.artigo, ou_nulo(esta.descricao), esta.liquido, esta.bruto,
                            esta.aberto, ou_nulo(esta.detentor),
                            esta.origem ? Variante(Referencia::de(*esta.origem).texto()) : Variante(),
                            esta.origem ? Variante(*base::le_inteiro(esta.origem->NumLinha)) : Variante(),
                            volta == nullptr ? Variante() : Variante(volta->qual.texto())}))
            return;
    }
    destino.total({"Total", {}, {}, somas[0], somas[1], {}, {}, {}, {}, {}});
}

} // namespace

bool documento(const Meios& meios, const std::string& qual, Destino& destino) {
    const auto escrito = le_documento(qual);
    const auto cabecalho = escrito ? encontra(meios, *escrito) : std::nullopt;
    if (!cabecalho) return false;
    const auto linhas = le_linhas(meios, cabecalho->qual);
    const auto ligadas = le_ligadas(meios, cabecalho->qual);
    const bool guia = meios.casa.guias.e(cabecalho->qual.TpDoc, cabecalho->qual.Serie);
    const auto devolvidas =
        static_cast<std::size_t>(std::count_if(linhas.begin(), linhas.end(), [&](const LinhaDoc& esta) {
            return volta_de(ligadas, esta.numero) != nullptr;
        }));

    destino.vista({"documento", "Documento " + cabecalho->qual.texto(), {}, false});
    destino.quadro({"ficha",
                    "Documento",
                    {col::documento,
                     col::especie,
                     col::data,
                     col::cliente,
                     col::nome,
                     {"estado", "Estado"},
                     {"linhas", "Linhas", Tipo::inteiro}},
                    true});
    if (!destino.linha(
            {cabecalho->qual.texto(),
             tipo_em_palavras(meios.casa, cabecalho->qual.TpDoc, cabecalho->qual.Serie), cabecalho->Data,
             ou_nulo(cabecalho->Cliente), ou_nulo(cliente_no_erp(meios.BD, cabecalho->Cliente).nome),
             estado(*cabecalho, guia, linhas.size(), devolvidas), static_cast<std::int64_t>(linhas.size())}))
        return true;
    mostra_linhas(linhas, ligadas, destino);
    destino.quadro({"ligados",
                    guia ? "O que voltou" : "Documentos que tomaram destas linhas",
                    {col::linha, col::documento, col::data, col::artigo, col::peso}});
    for (const Ligada& esta : ligadas)
        if (!destino.linha({esta.linha, esta.qual.texto(), esta.Data, esta.artigo, esta.peso})) break;
    return true;
}

} // namespace orvex::livro::consultas
