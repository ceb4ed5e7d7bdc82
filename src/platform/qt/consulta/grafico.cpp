#include "platform/qt/consulta/grafico.h"

#include "platform/qt/consulta/graficos.h"
#include "platform/qt/textos.h"
#include "platform/saidas/saidas.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QToolTip>

#include <array>

namespace orvex::platform::qt::consulta {
namespace {

using livro::consultas::Tipo;

// "Nov 24"
QString mes(const base::DataHora& data) {
    constexpr std::array nomes{"Jan", "Fev", "Mar", "Abr", "Mai", "Jun",
                               "Jul", "Ago", "Set", "Out", "Nov", "Dez"};
    return QString("%1 %2")
        .arg(nomes.at(static_cast<std::size_t>(data.mes - 1)))
        .arg(data.ano % 100, 2, 10, QChar('0'));
}

Barra barra(const livro::consultas::Quadro& quadro, const livro::consultas::Linha& linha) {
    Barra esta;
    QString como; // the first column in full
    for (std::size_t c = 0; c < quadro.colunas.size(); ++c) {
        const auto& coluna = quadro.colunas[c];
        const QString texto = qs(saidas::escrito(coluna, linha[c]));
        if (coluna.tipo == Tipo::inteiro) {
            esta.artigos = texto + (texto == "1" ? " artigo" : " artigos");
        } else if (coluna.tipo == Tipo::peso) {
            esta.peso = texto.isEmpty() ? "sem peso conhecido" : texto + " t";
            esta.valor = linha[c].nulo() ? 0 : linha[c].real();
        } else {
            const auto* data = std::get_if<base::DataHora>(&linha[c].valor());
            como = texto;
            esta.nome = data != nullptr ? mes(*data) : texto;
        }
    }
    esta.inteiro = como + ": " + esta.artigos + ", " + esta.peso;
    return esta;
}

} // namespace

Grafico::Grafico(const livro::consultas::Recolhida::Parte& parte) {
    QStringList tudo;
    for (const auto& linha : parte.linhas) {
        barras_.push_back(barra(parte.quadro, linha));
        tudo << barras_.back().inteiro;
    }
    setObjectName("grafico." + qs(parte.quadro.chave));
    setAccessibleName(qs(parte.quadro.titulo));
    setAccessibleDescription(tudo.join("; "));
    setMouseTracking(true);
}

bool Grafico::event(QEvent* evento) {
    if (evento->type() != QEvent::ToolTip) return QWidget::event(evento);
    const auto& ajuda = static_cast<const QHelpEvent&>(*evento);
    const int qual = barra_em(ajuda.pos());
    QToolTip::showText(ajuda.globalPos(),
                       qual < 0 ? QString() : barras_[static_cast<std::size_t>(qual)].inteiro, this);
    return true;
}

// At once: nobody waits over each of 24 columns.
void Grafico::mouseMoveEvent(QMouseEvent* evento) {
    const int qual = barra_em(evento->position().toPoint());
    if (qual == apontada_) return;
    apontada_ = qual;
    QToolTip::showText(evento->globalPosition().toPoint(),
                       qual < 0 ? QString() : barras_[static_cast<std::size_t>(qual)].inteiro, this);
    update();
}

void Grafico::leaveEvent(QEvent*) {
    apontada_ = -1;
    update();
}

QWidget* novo_grafico(const livro::consultas::Recolhida::Parte& parte) {
    if (parte.linhas.empty()) return nullptr;
    if (parte.quadro.chave == "idades") return new GraficoIdades(parte);
    if (parte.quadro.chave == "evolucao") return new GraficoEvolucao(parte);
    return nullptr;
}

} // namespace orvex::platform::qt::consulta
