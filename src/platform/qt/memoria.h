// What the user's windows looked like: kept in an INI file of the user's configuration. Nothing here ever
// fails; what cannot be kept or no longer fits is as if it had never been.
#pragma once

#include <QSize>
#include <QString>

#include <memory>

class QLockFile;
class QSplitter;
class QWidget;

namespace orvex::platform::qt {

int le_largura(const QString& chave, int habitual); // pixels
void guarda_largura(const QString& chave, int largura);

QString le_escolha(const QString& chave); // as it was kept; empty where none was
void guarda_escolha(const QString& chave, const QString& valor);

// Size and place of a window. When none is kept, or its screen has gone, it gets `habitual` as far as the
// screen allows. While one of the same name is open, in this program or another, the next one opens beside it
// and its place is not kept.
class LugarDaJanela {
  public:
    explicit LugarDaJanela(QString chave);
    ~LugarDaJanela();

    void repoe(QWidget& janela, QSize habitual);
    void guarda(const QWidget& janela) const;

  private:
    QString chave_;
    std::unique_ptr<QLockFile> tranca_; // held while the window is open
    int ordem_ = 0;                     // of the windows of this name
};

void repoe_divisao(QSplitter& divisao, const QString& chave);
void guarda_divisao(const QSplitter& divisao, const QString& chave);

} // namespace orvex::platform::qt
