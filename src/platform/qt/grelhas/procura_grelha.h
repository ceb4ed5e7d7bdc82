// Finding a row of a grid by typing, and what a barcode reader does with that: it types a code and then
// Enter.
//
// Each character looks again for the row that what was typed means best: the article itself, an article that
// begins so, or anything else that a row says. Enter picks. One that comes on the heels of the last character
// is a reader's, whose code is whole or wrong; a person's takes the row that was found.
#pragma once

#include "common/grelha.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QString>
#include <QTimer>

#include <functional>
#include <optional>
#include <vector>

namespace orvex::platform::qt {

class ProcuraGrelha {
  public:
    // What the grid's view does for it. Rows count from 0.
    struct Vista {
        std::function<void(int linha)> vai; // makes it the current row
        std::function<void(int linha, bool de_leitor)> escolhe;
        // One of these rows, all of the same article; none where the user wants none of them.
        std::function<std::optional<int>(const std::vector<int>& linhas)> pergunta;
        std::function<void(const QString& texto)> diz; // where the user is told of keys; empty for nothing
    };

    ProcuraGrelha(const common::Grelha& grelha, Vista vista);

    bool tecla(const QKeyEvent& evento); // true when it was used up
    bool larga();                        // what was typed; false when that was nothing

  private:
    void escreve(const QString& texto);
    void escolhe(bool de_leitor);
    void escolhe_uma(const std::vector<int>& linhas, bool de_leitor);
    std::optional<int> linha_que_diz(const QString& texto) const;
    std::vector<int> linhas_do_artigo(const QString& texto) const;

    const common::Grelha& grelha_;
    Vista vista_;
    QString texto_;
    QString recusa_; // of the last code
    std::optional<int> achada_;
    QElapsedTimer desde_a_ultima_; // since the last character, or what was picked, was dealt with
    QTimer pausa_;
};

} // namespace orvex::platform::qt
