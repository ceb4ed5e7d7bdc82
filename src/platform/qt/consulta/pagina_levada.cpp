// What of a view is taken along.
#include "platform/qt/consulta/pagina.h"
#include "platform/qt/textos.h"

#include <QItemSelectionModel>
#include <QTableView>

#include <algorithm>
#include <set>

namespace orvex::platform::qt::consulta {

using namespace livro::consultas;

namespace {

// The column of the items, and of their designations; -1 where there is none.
int coluna_do_artigo(const Quadro& quadro) {
    for (std::size_t i = 0; i < quadro.colunas.size(); ++i)
        if (quadro.colunas[i].ligacao == Ligacao::artigo) return static_cast<int>(i);
    return -1;
}

Etiqueta etiqueta(const Quadro& quadro, const Linha& linha) {
    Etiqueta esta;
    for (std::size_t i = 0; i < quadro.colunas.size() && i < linha.size(); ++i) {
        if (quadro.colunas[i].chave == "artigo") esta.codigo = qs(linha[i].texto());
        if (quadro.colunas[i].chave == "designacao") esta.designacao = qs(linha[i].texto());
    }
    return esta;
}

// What is marked, or the current row where no more than one is.
std::set<int> linhas_marcadas(const QTableView& tabela) {
    std::set<int> quais;
    for (const QModelIndex& esta : tabela.selectionModel()->selectedRows())
        quais.insert(esta.row());
    if (quais.empty() && tabela.currentIndex().isValid()) quais.insert(tabela.currentIndex().row());
    return quais;
}

} // namespace

Recolhida Pagina::toda() const {
    Recolhida toda;
    toda.cabecalho = cabecalho_;
    for (const Bloco& este : blocos_)
        toda.partes.push_back(este.tabela ? este.tabela->toda() : este.parte);
    return toda;
}

int Pagina::quantas() const {
    int soma = 0;
    for (const Bloco& este : blocos_)
        soma += este.tabela ? este.tabela->quantas() : static_cast<int>(este.parte.linhas.size());
    return soma;
}

int Pagina::quantas_marcadas() const {
    VistaQuadro* tabela = actual();
    return tabela == nullptr ? 0 : tabela->quantas_leva();
}

Recolhida Pagina::recolhida() const {
    Recolhida toda;
    toda.cabecalho = cabecalho_;
    for (const Bloco& este : blocos_) {
        toda.partes.push_back(este.tabela ? este.tabela->mostrada() : este.parte);
        if (!este.tabela) continue;
        if (const QString filtro = este.tabela->filtro().trimmed(); !filtro.isEmpty())
            toda.cabecalho.filtros.push_back(
                {"Filtro de «" + este.parte.quadro.titulo + "»", filtro.toStdString()});
    }
    return toda;
}

std::optional<Recolhida> Pagina::marcadas() const {
    VistaQuadro* tabela = actual();
    if (tabela == nullptr) return {};
    if (!inteira() && linhas_marcadas(tabela->tabela()).size() < 2) return {};
    Recolhida esta;
    esta.cabecalho = cabecalho_;
    esta.cabecalho.unico = true;
    esta.partes.push_back(tabela->marcada());
    return esta;
}

bool Pagina::tem_artigos() const {
    if (std::holds_alternative<PedidoArtigo>(pedido_)) return !blocos_.empty();
    VistaQuadro* tabela = actual();
    return tabela != nullptr && std::any_of(blocos_.begin(), blocos_.end(), [&](const Bloco& este) {
               return este.tabela == tabela && coluna_do_artigo(este.parte.quadro) >= 0;
           });
}

std::vector<Etiqueta> Pagina::etiquetas() const {
    std::vector<Etiqueta> todas;
    if (std::holds_alternative<PedidoArtigo>(pedido_)) {
        for (const Bloco& este : blocos_)
            if (este.parte.quadro.ficha && !este.parte.linhas.empty())
                todas.push_back(etiqueta(este.parte.quadro, este.parte.linhas.front()));
        return todas;
    }
    VistaQuadro* tabela = actual();
    if (tabela == nullptr) return todas;
    const Parte mostrada = tabela->mostrada();
    std::set<QString> vistos; // an item that moved twice needs one label
    for (const int linha : linhas_marcadas(tabela->tabela())) {
        if (linha >= static_cast<int>(mostrada.linhas.size())) continue;
        Etiqueta esta = etiqueta(mostrada.quadro, mostrada.linhas[static_cast<std::size_t>(linha)]);
        if (!esta.codigo.isEmpty() && vistos.insert(esta.codigo).second) todas.push_back(std::move(esta));
    }
    return todas;
}

} // namespace orvex::platform::qt::consulta
