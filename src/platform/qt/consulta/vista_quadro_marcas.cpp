#include "base/falha.h"
#include "platform/qt/consulta/modelo_quadro.h"
#include "platform/qt/consulta/totais_quadro.h"
#include "platform/qt/consulta/vista_quadro.h"
#include "platform/qt/textos.h"
#include "platform/saidas/saidas.h"

#include <QLineEdit>
#include <QLocale>
#include <QScrollBar>
#include <QTableView>

#include <algorithm>
#include <numeric>

namespace orvex::platform::qt::consulta {
namespace {

using livro::consultas::Tipo;

constexpr int marcas_que_ficam = 10'000; // more cost a window too long, but for all of them

// A running balance sums up to nothing.
bool de_somar(const livro::consultas::Coluna& coluna) {
    return coluna.tipo == Tipo::peso && coluna.chave != "saldo";
}

// Marked rows of the model, by their numbers.
struct Marcas {
    std::vector<bool> numeros; // none, where they are not to stay
    int todas = 0;             // so many rows, and all of them marked
};

QItemSelection linhas_de(const ModeloQuadro& modelo, int primeira, int ultima) {
    return {modelo.index(primeira, 0), modelo.index(ultima, modelo.columnCount() - 1)};
}

QItemSelection como_eram(const Marcas& marcas, const ModeloQuadro& modelo) {
    const int linhas = modelo.rowCount();
    if (marcas.todas > 0 && marcas.todas == linhas) return linhas_de(modelo, 0, linhas - 1);
    QItemSelection marcadas;
    if (marcas.numeros.empty()) return marcadas;
    const auto marcada = [&](int i) { return marcas.numeros[static_cast<std::size_t>(modelo.numero(i))]; };
    for (int i = 0; i < linhas; ++i) {
        if (!marcada(i)) continue;
        const int primeira = i;
        while (i + 1 < linhas && marcada(i + 1))
            ++i;
        marcadas += linhas_de(modelo, primeira, i);
    }
    return marcadas;
}

int lugar_de(int numero, const ModeloQuadro& modelo) { // 0 where it is not in sight
    for (int i = 0; i < modelo.rowCount(); ++i)
        if (modelo.numero(i) == numero) return i;
    return 0;
}

} // namespace

void VistaQuadro::muda(const std::function<void()>& trabalho, Mudanca qual) {
    const bool fica = qual == Mudanca::chegada;
    const QModelIndex actual = tabela_->currentIndex();
    const int coluna = std::max(0, actual.column());
    const int era = actual.isValid() ? modelo_->numero(actual.row()) : -1;
    QScrollBar& barra = *tabela_->verticalScrollBar();
    const int topo = barra.value();
    const bool a_vista =
        actual.isValid() && tabela_->viewport()->rect().intersects(tabela_->visualRect(actual));
    Marcas marcas;
    const int quantas = quantas_marcadas();
    // As many behind another filter may be other rows.
    if (qual != Mudanca::filtro && quantas > 1 && quantas == modelo_->rowCount()) marcas.todas = quantas;
    if (quantas > 1 && quantas <= marcas_que_ficam) {
        marcas.numeros.resize(static_cast<std::size_t>(modelo_->lidas()));
        for (const int linha : marcadas())
            marcas.numeros[static_cast<std::size_t>(modelo_->numero(linha))] = true;
    }

    trabalho();

    if (modelo_->rowCount() == 0) return janela_.mudou();
    tabela_->doItemsLayout();
    const int nova = fica ? lugar_de(era, *modelo_) : 0;
    const QItemSelection de_novo = como_eram(marcas, *modelo_);
    QItemSelectionModel& marcador = *tabela_->selectionModel();
    marcador.setCurrentIndex(modelo_->index(nova, coluna), QItemSelectionModel::NoUpdate);
    marcador.select(de_novo.isEmpty() ? linhas_de(*modelo_, nova, nova) : de_novo,
                    QItemSelectionModel::ClearAndSelect);
    if (!fica) tabela_->scrollToTop();
    if (fica) barra.setValue(a_vista ? nova - (actual.row() - topo) : topo);
    janela_.mudou();
}

int VistaQuadro::quantas_marcadas() const {
    int quantas = 0; // ranges never overlap
    for (const QItemSelectionRange& parte : tabela_->selectionModel()->selection())
        if (parte.left() == 0) quantas += parte.height();
    return quantas;
}

std::vector<int> VistaQuadro::marcadas() const {
    std::vector<int> linhas;
    for (const QItemSelectionRange& parte : tabela_->selectionModel()->selection())
        if (parte.left() == 0)
            for (int linha = parte.top(); linha <= parte.bottom(); ++linha)
                linhas.push_back(linha);
    std::sort(linhas.begin(), linhas.end());
    return linhas;
}

base::Moeda VistaQuadro::soma(const std::vector<int>& linhas, int coluna) const {
    base::Moeda soma;
    for (const int linha : linhas) {
        const base::Variante valor = modelo_->valor(linha, coluna);
        if (const auto* peso = std::get_if<base::Moeda>(&valor.valor())) soma += *peso;
    }
    return soma;
}

// Of the columns that the whole table sums up.
std::vector<livro::consultas::Linha> VistaQuadro::total_das_mostradas() const {
    const auto& colunas = modelo_->quadro().colunas;
    std::vector<int> linhas(static_cast<std::size_t>(modelo_->rowCount()));
    std::iota(linhas.begin(), linhas.end(), 0);
    livro::consultas::Linha total(colunas.size());
    bool alguma = false;
    for (std::size_t c = 1; c < colunas.size(); ++c) {
        const auto somada = [c](const auto& de_todas) {
            return c < de_todas.size() && std::holds_alternative<base::Moeda>(de_todas[c].valor());
        };
        const auto todos = totais_->todos();
        if (!de_somar(colunas[c]) || std::none_of(todos.begin(), todos.end(), somada)) continue;
        try {
            total[c] = soma(linhas, static_cast<int>(c));
            alguma = true;
        } catch (const base::Falha&) { // more than any ledger weighs
            return {};
        }
    }
    if (!alguma) return {};
    total.front() = "Total das mostradas";
    return {total};
}

QString VistaQuadro::somas_das_marcadas() const {
    const std::vector<int> linhas = marcadas();
    const auto& colunas = modelo_->quadro().colunas;
    QStringList somas;
    const auto quantas = std::count_if(colunas.begin(), colunas.end(), &de_somar);
    for (int c = 0; c < modelo_->columnCount(); ++c) {
        const auto& coluna = colunas[static_cast<std::size_t>(c)];
        if (!de_somar(coluna)) continue;
        const QString esta = qs(saidas::escrito(coluna, soma(linhas, c))) + " t";
        somas << (quantas > 1 ? qs(coluna.titulo).remove(" (t)") + " " + esta : esta);
    }
    return somas.join("; ");
}

QString VistaQuadro::resumo() const {
    const QLocale locale;
    const int a_vista = modelo_->rowCount();
    const bool so_algumas = modelo_->filtrado() && a_vista < lidas();
    QString texto = so_algumas ? locale.toString(a_vista) + " de " : QString();
    texto += locale.toString(lidas()) + (lidas() == 1 ? " linha" : " linhas");
    const int marcadas = quantas_marcadas();
    if (marcadas < 2) return texto;
    texto += "   " + locale.toString(marcadas) + " marcadas";
    try {
        const QString somas = somas_das_marcadas();
        return somas.isEmpty() ? texto : texto + ": " + somas;
    } catch (const base::Falha&) { // more than any ledger weighs
        return texto;
    }
}

} // namespace orvex::platform::qt::consulta
