// The table of one grid: shows its matrix, follows its current cell, and passes on keys, double clicks and
// edits.
//
// An edit starts with a typed letter, F2 or a double click, and ends with Enter, Tab, an arrow up or down, or
// by leaving the grid. An editor in which nothing was typed stores nothing; a refused edit stays open with
// the old text in it.
#pragma once

#include "common/ecra.h"
#include "platform/qt/modelo_grelha.h"

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
    // Stores the open edit. False when it was refused; the editor is then still open.
    bool termina_edicao();
    void fecha_editor();           // and lets go of what was typed in it
    bool tecla(QKeyEvent& evento); // true when it was used up
    void define_avanco(std::function<void(int passos)> avanca) { avanca_ = std::move(avanca); }

    void guarda_larguras() const;
    QString ajuda() const;

  protected:
    void currentChanged(const QModelIndex& actual, const QModelIndex& anterior) override;
    void mousePressEvent(QMouseEvent* evento) override;
    void mouseReleaseEvent(QMouseEvent* evento) override;
    void mouseDoubleClickEvent(QMouseEvent* evento) override;
    QModelIndex moveCursor(CursorAction accao, Qt::KeyboardModifiers modificadores) override;
    void keyboardSearch(const QString&) override {} // letters edit or do nothing

  private:
    void dispoe_colunas();
    QString chave_largura(const common::ColunaGrelha& coluna) const;
    int coluna_com_foco(int coluna) const; // the nearest one that takes the keyboard
    void sincroniza_actual();

    bool tecla_edicao(QKeyEvent& evento);
    bool tecla_de_accao(QKeyEvent& evento);
    void edita(const QString* inicial);
    void poe_no_editor();
    bool celula_seguinte();
    bool alterna(int linha);

    common::Ecra& ecra_;
    common::Grelha& grelha_;
    ModeloGrelha modelo_;
    std::function<void(int)> avanca_;
    QPointer<QLineEdit> editor_;
    QString antes_da_tecla_;        // text of the editor before the key being typed
    QPersistentModelIndex premida_; // the cell the mouse button went down on
    bool escrito_ = false;          // the user changed something in the editor, be it back to what it was
    bool a_sincronizar_ = false;
};

} // namespace orvex::platform::qt
