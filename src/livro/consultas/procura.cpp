// One text, and what it may mean. What an index finds is asked first, and what only a whole table can tell
// last, so that the first answers are there at once.
#include "base/texto.h"
#include "livro/consultas/partes.h"

#include <algorithm>
#include <set>

namespace orvex::livro::consultas {
namespace {

constexpr std::size_t pagina = primeira_pagina;

std::string as_primeiras() { return "Select top " + std::to_string(primeira_pagina) + " "; }

// For LIKE: the text itself, anywhere.
std::string em_qualquer_parte(const std::string& texto) {
    std::string padrao = "%";
    for (const char c : texto) {
        if (c == '%' || c == '_' || c == '[')
            padrao += std::string("[") + c + "]";
        else
            padrao += c;
    }
    return base::entre_plicas(padrao + "%");
}

// Codes that begin with the text, as an index has them: nothing a code holds comes after this many z. What
// does all the same is found anywhere in it, later.
std::string comeca_por(const char* coluna, const std::string& texto) {
    return std::string(coluna) + ">=" + base::entre_plicas(texto) + " and " + coluna +
           "<=" + base::entre_plicas(texto + "zzzzzzzzzzzzzzz");
}

struct Achado {
    std::string codigo, nome;
};

class Lista { // codes found, each once, a page at most
  public:
    void junta(const Meios& meios, const std::string& sql) {
        if (cheia()) return;
        for (const auto linhas = meios.BD.Consulta(sql); !linhas->fim() && !cheia(); linhas->move_seguinte())
            if (vistos_.insert(codigo_normal(linhas->valor(0).texto())).second)
                por_mostrar_.push_back({linhas->valor(0).texto(),
                                        linhas->colunas() > 1 ? linhas->valor(1).texto() : std::string()});
    }
    void ordena() {
        std::stable_sort(por_mostrar_.begin(), por_mostrar_.end(), [](const Achado& a, const Achado& b) {
            return codigo_normal(a.codigo) < codigo_normal(b.codigo);
        });
    }
    bool cheia() const { return vistos_.size() >= pagina; }
    bool mostra(Destino& destino) {
        ordena();
        mostrou_ = mostrou_ || !por_mostrar_.empty();
        for (const Achado& este : por_mostrar_)
            if (!destino.linha({este.codigo, ou_nulo(este.nome)})) return false;
        por_mostrar_.clear();
        return destino.prossegue();
    }
    bool alguma() const { return mostrou_; }

  private:
    std::set<std::string> vistos_;
    std::vector<Achado> por_mostrar_;
    bool mostrou_ = false;
};

bool documentos(const Meios& meios, const DocumentoEscrito& escrito, Destino& destino, bool& ha) {
    const Casa& casa = meios.casa;
    std::vector<Numeracao> nossas = casa.facturas;
    for (const Numeracao* esta :
         {&casa.guias, &casa.devolucoes, &casa.sobras, &casa.quebras, &casa.consumos, &casa.transferencias})
        nossas.push_back(*esta);
    std::string onde = " where NNumDoc=" + std::to_string(escrito.Numero);
    onde += escrito.Ano ? " and Ano=" + std::to_string(*escrito.Ano) : " and Ano in " + anos(meios);
    if (escrito.TpDoc.empty()) {
        std::set<std::string> tipos, series;
        for (const Numeracao& esta : nossas) {
            tipos.insert(base::entre_plicas(esta.TpDoc));
            series.insert(std::to_string(esta.Serie));
        }
        const auto lista = [](const std::set<std::string>& todos) {
            std::string texto;
            for (const std::string& este : todos)
                texto += (texto.empty() ? "(" : ",") + este;
            return texto + ")";
        };
        onde += " and TpDoc in " + lista(tipos) + " and Serie in " + lista(series);
    } else {
        onde += " and TpDoc=" + base::entre_plicas(escrito.TpDoc);
        if (escrito.Serie) onde += " and Serie=" + std::to_string(*escrito.Serie);
    }
    const auto linhas = meios.BD.Consulta("Select Ano, TpDoc, Serie, NNumDoc, Data, Terceiro from DocGcCab" +
                                          onde + " order by Ano desc, TpDoc, Serie");
    std::size_t quantos = 0;
    destino.quadro({"documentos", "Documentos", {col::documento, col::especie, col::data, col::cliente}});
    for (; !linhas->fim() && quantos < pagina; linhas->move_seguinte()) {
        const Referencia qual{linhas->valor(0).inteiro(), linhas->valor(1).texto(),
                              linhas->valor(2).inteiro(), linhas->valor(3).inteiro()};
        const bool nosso = std::any_of(nossas.begin(), nossas.end(),
                                       [&](const Numeracao& esta) { return esta.e(qual.TpDoc, qual.Serie); });
        if (escrito.TpDoc.empty() && !nosso) continue;
        ++quantos;
        if (!destino.linha({qual.texto(), tipo_em_palavras(casa, qual.TpDoc, qual.Serie), linhas->valor(4),
                            linhas->valor(5).vazio() ? base::Variante() : linhas->valor(5)}))
            return false;
    }
    ha = ha || quantos > 0;
    return destino.prossegue();
}

} // namespace

bool procura(const Meios& meios, const std::string& pedido, Destino& destino) {
    const std::string texto(base::apara(pedido));
    destino.vista({"procura", "Procura de «" + texto + "»", {}, false});
    if (texto.empty()) return false;
    const std::vector<Coluna> artigo_e_nome{col::artigo, col::designacao};
    Lista artigos, clientes;
    bool documento = false;
    const std::string pagina_de = as_primeiras(), parte = em_qualquer_parte(texto);

    destino.quadro({"artigos", "Artigos", artigo_e_nome});
    // The ERP first, which has the names; the ledger's rows are not joined to them, since an engine would
    // read them all to leave out repeated codes.
    artigos.junta(meios, pagina_de + "CODIGO, Nome from Artigos where " + comeca_por("CODIGO", texto) +
                             " order by CODIGO");
    artigos.junta(meios, pagina_de + "NumSerie from xel_ORVEX where " + comeca_por("NumSerie", texto) +
                             " group by NumSerie order by NumSerie");
    bool segue = artigos.mostra(destino);
    if (segue) {
        if (const auto escrito = le_documento(texto)) segue = documentos(meios, *escrito, destino, documento);
    }
    if (segue) {
        destino.quadro({"clientes", "Clientes", {col::cliente, col::nome}});
        clientes.junta(meios, pagina_de + "CODIGO, Nome from Clientes where " + comeca_por("CODIGO", texto) +
                                  " order by CODIGO");
        clientes.junta(meios, pagina_de + "CODIGO, Nome from Clientes where Nome like " + parte +
                                  " or CODIGO like " + parte + " order by CODIGO");
        segue = clientes.mostra(destino);
    }
    if (segue && !artigos.cheia()) {
        destino.quadro({"artigos_parte", "Artigos que o têm no código ou na designação", artigo_e_nome});
        artigos.junta(meios, pagina_de + "CODIGO, Nome from Artigos where Nome like " + parte +
                                 " or CODIGO like " + parte + " order by CODIGO");
        if (artigos.mostra(destino) && !artigos.cheia()) {
            artigos.junta(meios, pagina_de + "NumSerie from xel_ORVEX where NumSerie like " + parte +
                                     " group by NumSerie order by NumSerie");
            artigos.mostra(destino);
        }
    }
    return artigos.alguma() || clientes.alguma() || documento;
}

} // namespace orvex::livro::consultas
