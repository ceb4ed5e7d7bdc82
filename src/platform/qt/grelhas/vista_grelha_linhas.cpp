// The rows of a grid: how they are sorted, which one is picked by what is typed, and their tick boxes.
#include "platform/qt/grelhas/escolha_linha.h"
#include "platform/qt/grelhas/vista_grelha.h"
#include "platform/qt/textos.h"

#include <QHeaderView>

namespace orvex::platform::qt {

using common::TipoCelula;

void VistaGrelha::prepara_ordenacao() {
    if (!grelha_.ordenavel) return;
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    horizontalHeader()->setSortIndicatorShown(true);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int coluna) { ordena(coluna); });
}

void VistaGrelha::ordena(int coluna) {
    procura_.larga(); // the row that was found will be another
    if (coluna < static_cast<int>(grelha_.colunas().size()) && janela_.entra())
        ecra_.utilizador_ordena(grelha_, coluna);
    mostra_ordem(); // the heading has already turned its sign over
}

void VistaGrelha::mostra_ordem() {
    if (!grelha_.ordenavel) return;
    const auto& ordem = grelha_.ordem();
    horizontalHeader()->setSortIndicator(
        ordem ? ordem->coluna : -1, ordem && ordem->descendente ? Qt::DescendingOrder : Qt::AscendingOrder);
}

// By its place among the columns in sight, which count from 1, as in the pick lists.
bool VistaGrelha::ordena_pelo_teclado(const QKeyEvent& evento) {
    if (!grelha_.ordenavel || evento.modifiers() != Qt::ControlModifier || evento.key() < Qt::Key_1 ||
        evento.key() > Qt::Key_9)
        return false;
    int posicao = evento.key() - Qt::Key_0;
    for (int c = 0; c < modelo_.columnCount(); ++c)
        if (!isColumnHidden(c) && --posicao == 0) ordena(c);
    return true;
}

ProcuraGrelha::Vista VistaGrelha::para_procura() {
    return {[this](int linha) { ecra_.utilizador_celula(grelha_, linha + 1, grelha_.coluna_actual); },
            [this](int linha, bool de_leitor) { escolhe(linha, de_leitor); },
            [this](const std::vector<int>& linhas) {
                return pergunta_linha(*this,
                                      "O artigo " + qs(grelha_.texto(linhas.front(), "Artigo")) +
                                          " está em " + QString::number(linhas.size()) +
                                          " linhas. Qual delas?",
                                      linhas);
            },
            [this](const QString& texto) { janela_.diz(texto); }};
}

// As a double click or a tick does it. A reader goes on with the next code where it was.
void VistaGrelha::escolhe(int linha, bool de_leitor) {
    ecra_.utilizador_celula(grelha_, linha + 1, grelha_.coluna_actual);
    if (grelha_.DblClick) {
        ecra_.utilizador_duplo_clique(grelha_);
        if (de_leitor) ecra_.utilizador_foca(grelha_);
        return;
    }
    const int marca = coluna_da_marca();
    if (marca >= 0 && grelha_.valor(linha, marca).logico())
        janela_.diz("O artigo " + qs(grelha_.texto(linha, "Artigo")) + " já está marcado.");
    else
        alterna(linha);
}

int VistaGrelha::coluna_da_marca() const {
    for (int c = 0; const common::ColunaGrelha& coluna : grelha_.colunas()) {
        if (coluna.tipo == TipoCelula::logico && !coluna.oculta && !coluna.so_leitura && grelha_.Enabled)
            return c;
        ++c;
    }
    return -1;
}

// Turns the tick box of a row over; false when the row has none.
bool VistaGrelha::alterna(int linha) {
    const int marca = coluna_da_marca();
    if (marca < 0 || grelha_.valor(linha, marca).vazio()) return false; // a blank row
    ecra_.utilizador_celula(grelha_, linha + 1, marca);
    ecra_.utilizador_edita_celula(grelha_, grelha_.valor(linha, marca).logico() ? common::Grelha::sem_visto
                                                                                : common::Grelha::com_visto);
    return true;
}

} // namespace orvex::platform::qt
