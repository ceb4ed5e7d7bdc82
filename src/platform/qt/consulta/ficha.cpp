#include "platform/qt/consulta/ficha.h"

#include "platform/qt/consulta/grelha_de_pares.h"
#include "platform/qt/consulta/ligacoes.h"
#include "platform/qt/teclas.h"
#include "platform/qt/textos.h"
#include "platform/saidas/saidas.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QMenu>
#include <QPainter>

#include <algorithm>
#include <set>
#include <utility>

namespace orvex::platform::qt::consulta {
namespace {

using livro::consultas::Coluna;
using livro::consultas::Ligacao;

constexpr int margem = 3;             // of every value: room for the ring
constexpr int letras_de_um_lado = 44; // a longer text stands across the card

bool e_nota(const Coluna& coluna) {
    static const std::set<std::string> notas{"nota", "observacoes", "ressalvas"};
    return notas.contains(coluna.chave);
}

// A text that is read, and taken along by the mouse.
class Valor : public QLabel {
  public:
    explicit Valor(const QString& texto) : QLabel(texto) {
        setTextFormat(Qt::PlainText);
        setTextInteractionFlags(Qt::TextSelectableByMouse);
        setMargin(margem);
        setWordWrap(true);
    }
    // On one line, where there is room for it.
    QSize sizeHint() const override {
        return {fontMetrics().horizontalAdvance(text()) + 2 * margem + 1,
                fontMetrics().height() + 2 * margem};
    }
};

// A code that opens its own view, by the mouse and by the keyboard.
class ValorLigado : public QLabel {
  public:
    ValorLigado(const QString& texto, const QString& que_faz, std::function<void()> abre)
        : QLabel("<a href=\"#\">" + texto.toHtmlEscaped() + "</a>"), texto_(texto), abre_(std::move(abre)) {
        setAccessibleDescription(que_faz);
        setTextFormat(Qt::RichText);
        setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::LinksAccessibleByMouse);
        setFocusPolicy(Qt::StrongFocus);
        setMargin(margem);
        connect(
            this, &QLabel::linkActivated, this, [this] { abre_(); }, Qt::QueuedConnection);
    }

  protected:
    void keyPressEvent(QKeyEvent* evento) override {
        if (e_enter(*evento) || evento->key() == Qt::Key_Space) {
            if (!evento->isAutoRepeat()) abre_(); // held down, it would run through the views
            return;
        }
        QLabel::keyPressEvent(evento);
    }
    bool focusNextPrevChild(bool seguinte) override { return QWidget::focusNextPrevChild(seguinte); }
    void focusInEvent(QFocusEvent* evento) override {
        QLabel::focusInEvent(evento);
        update();
    }
    void focusOutEvent(QFocusEvent* evento) override {
        QLabel::focusOutEvent(evento);
        update();
    }
    void paintEvent(QPaintEvent* evento) override {
        QLabel::paintEvent(evento);
        if (!hasFocus()) return;
        QPainter pintor(this);
        pintor.setRenderHint(QPainter::Antialiasing);
        pintor.setPen(QPen(palette().color(QPalette::Active, QPalette::Highlight), 2));
        const int largura = std::min(width(), sizeHint().width());
        pintor.drawRoundedRect(QRectF(0, 0, largura, height()).adjusted(1, 1, -1, -1), 3, 3);
    }
    void contextMenuEvent(QContextMenuEvent* evento) override {
        auto* menu = new QMenu(this);
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->addAction(accessibleDescription().replace('&', "&&"), this, [this] { abre_(); });
        menu->addAction("Copiar", this, [this] { QGuiApplication::clipboard()->setText(texto_); });
        menu->popup(evento->globalPos());
    }

  private:
    QString texto_;
    std::function<void()> abre_;
};

QLabel* novo_valor(const Coluna& coluna, const base::Variante& valor, const QString& texto,
                   const AoAbrir& abre) {
    if (coluna.ligacao == Ligacao::nenhuma || valor.vazio()) return new Valor(texto.isEmpty() ? "–" : texto);
    return new ValorLigado(texto, abrir_em_palavras(coluna.ligacao, texto),
                           [abre, qual = coluna.ligacao, codigo = valor.texto()] { abre(qual, codigo); });
}

} // namespace

Ficha::Ficha(const livro::consultas::Quadro& quadro, const livro::consultas::Linha& valores, AoAbrir abre) {
    setObjectName("ficha." + qs(quadro.chave));
    setAccessibleName(qs(quadro.titulo));
    auto* grelha = new GrelhaDePares;
    grelha->setContentsMargins({});
    setLayout(grelha);
    for (std::size_t i = 0; i < quadro.colunas.size(); ++i) {
        const Coluna& coluna = quadro.colunas[i];
        const QString texto = qs(saidas::numa_linha(saidas::escrito(coluna, valores.at(i))));
        if (texto.isEmpty() && e_nota(coluna)) continue;
        auto* legenda = new QLabel(qs(coluna.titulo) + ":");
        legenda->setTextFormat(Qt::PlainText);
        QLabel* valor = novo_valor(coluna, valores.at(i), texto, abre);
        valor->setObjectName(qs(coluna.chave));
        valor->setAccessibleName(qs(coluna.titulo) + ": " + (texto.isEmpty() ? "nada" : texto));
        const bool largo = e_nota(coluna) || texto.size() > letras_de_um_lado;
        legenda->setContentsMargins(0, margem, 0, 0);
        grelha->junta(legenda, valor, largo);
    }
}

} // namespace orvex::platform::qt::consulta
