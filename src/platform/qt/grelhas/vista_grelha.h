// The table of one grid: shows its matrix, follows its current cell, and passes on keys, double clicks and
// edits.
//
// An edit starts with a typed letter, F2 or a double click, and ends with Enter, Tab, an arrow up or down, or
// by leaving the grid. An editor in which nothing was typed stores nothing; a refused edit stays open with
// the old text in it. In a grid with a search letters find a row, and F2 or a double click edit.
#pragma once

#include "common/ecra.h"
#include "platform/qt/grelhas/modelo_grelha.h"
#include "platform/qt/grelhas/procura_grelha.h"

#include <QPersistentModelIndex>
#include <QPointer>
#include <QTableView>

#include <functional>

class QLineEdit;

namespace orvex::platform::qt {

class VistaGrelha : public QTableView {
  public:
    VistaGrelha(common::Ecra& ecra, common::Grelha& grelha);

    void mostra();
    void junta(ColunaDaJanela coluna) { modelo_.junta(std::move(coluna)); }
    void acrescenta_a_legenda(const char* chave, const char* palavra) {
        modelo_.acrescenta_a_legenda(chave, palavra);
    }
    // Stores the open edit. False when it was refused; the editor is then still open.
    bool termina_edicao();
    void fecha_editor();           // and lets go of what was typed in it
    bool tecla(QKeyEvent& evento); // true when it was used up
    // What is the window's affair.
    struct Janela {
        std::function<void(int passos)> avanca = [](int) {};
        std::function<bool()> entra = [] { return true; }; // the keyboard, as by a click; false when refused
        std::function<void(const QString& texto)> diz = [](const QString&) {}; // in the status line
        std::function<void()> consulta = [] {};                                // the current row's article
    };
    void define_janela(Janela janela) { janela_ = std::move(janela); }
    bool larga_procura() { return procura_.larga(); } // false when nothing was searched for

    void guarda_larguras() const;
    QString ajuda() const;

  protected:
    void currentChanged(const QModelIndex& actual, const QModelIndex& anterior) override;
    void mousePressEvent(QMouseEvent* evento) override;
    void mouseReleaseEvent(QMouseEvent* evento) override;
    void mouseDoubleClickEvent(QMouseEvent* evento) override;
    void contextMenuEvent(QContextMenuEvent* evento) override;
    QModelIndex moveCursor(CursorAction accao, Qt::KeyboardModifiers modificadores) override;
    void focusOutEvent(QFocusEvent* evento) override;
    void keyboardSearch(const QString&) override {} // letters edit, find by rules of their own or do nothing

  private:
    void dispoe_colunas();
    QString chave_largura(const common::ColunaGrelha& coluna) const;
    int coluna_com_foco(int coluna) const; // the nearest one that takes the keyboard
    void sincroniza_actual();

    void abre_menu(QPoint lugar); // on the screen
    bool tecla_edicao(QKeyEvent& evento);
    bool tecla_de_accao(QKeyEvent& evento);
    void edita(const QString* inicial);
    void poe_no_editor();
    bool celula_seguinte();
    int coluna_da_marca() const; // the tick box that the user may turn over; -1 for none
    bool alterna(int linha);

    void prepara_ordenacao();
    void ordena(int coluna);
    void mostra_ordem();
    bool ordena_pelo_teclado(const QKeyEvent& evento);
    ProcuraGrelha::Vista para_procura();
    void escolhe(int linha, bool de_leitor);

    common::Ecra& ecra_;
    common::Grelha& grelha_;
    ModeloGrelha modelo_;
    Janela janela_;
    ProcuraGrelha procura_;
    QPointer<QLineEdit> editor_;
    QString antes_da_tecla_;        // text of the editor before the key being typed
    QPersistentModelIndex premida_; // the cell the mouse button went down on
    bool escrito_ = false;          // the user changed something in the editor, be it back to what it was
    bool a_sincronizar_ = false;
};

} // namespace orvex::platform::qt
