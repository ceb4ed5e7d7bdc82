#include "platform/qt/acesso.h"

#include <QPainter>
#include <QStyle>

namespace orvex::platform::qt {
namespace {

// C, A, D, N and S are the buttons'. Where two screens give a letter to different labels, neither has another
// one left.
constexpr struct {
    const char* legenda;
    char letra;
} letras[] = {{"Cliente", 'L'},
              {"No.Doc", 'O'},
              {"Número Doc.", 'O'},
              {"Data", 'T'},
              {"Data da Devolução", 'T'},
              {"Armazém", 'Z'},
              {"Facturas", 'F'},
              {"Guia de Remessa", 'G'},
              {"Linhas da guia", 'G'}, // in the return panel
              {"Contribuinte", 'B'},
              {"Gestor Conta", 'E'},
              {"Vendedor", 'V'},
              {"Processo", 'P'},
              {"V/Número", 'M'},
              {"Meio Transporte", 'I'},
              {"Matrícula", 'U'},
              {"Local Carga", 'Q'},
              {"Local Descarga", 'J'},
              {"Data/Hora Carga", 'H'},
              {"Data/Hora Descarga", 'K'},
              {"Artigo/Num.Série", 'R'},
              {"Existência", 'E'},
              {"Nova Existência", 'X'},
              {"Quantidade", 'Q'},
              {"Observações", 'B'},
              {"Novo Cliente", 'V'},
              {"Obs (Entrada)", 'E'},
              {"Obs (Saída)", 'B'}};

} // namespace

QChar letra_de_acesso(const QString& legenda) {
    QString sem_unidade = legenda;
    if (sem_unidade.endsWith(" (t)")) sem_unidade.chop(4);
    for (const auto& [desta, letra] : letras)
        if (sem_unidade == desta) return letra;
    return {};
}

QString com_letra_de_acesso(const QString& legenda) {
    const QChar letra = letra_de_acesso(legenda);
    if (letra.isNull()) return legenda;
    const qsizetype onde = legenda.indexOf(letra, 0, Qt::CaseInsensitive);
    if (onde < 0) return legenda + " (&" + letra + ")";
    return QString(legenda).insert(onde, '&');
}

Legenda::Legenda(const QString& texto) : QLabel(texto) {
    setTextFormat(Qt::PlainText);
    if (const QString inteira = com_letra_de_acesso(texto); inteira.endsWith(')'))
        setMinimumWidth(fontMetrics().size(Qt::TextShowMnemonic, inteira).width());
}

void Legenda::paintEvent(QPaintEvent* evento) {
    if (buddy() == nullptr) return QLabel::paintEvent(evento);
    QPainter pintor(this);
    style()->drawItemText(&pintor, contentsRect(), int(alignment()) | Qt::TextShowMnemonic, palette(),
                          isEnabled(), com_letra_de_acesso(text()), foregroundRole());
}

} // namespace orvex::platform::qt
