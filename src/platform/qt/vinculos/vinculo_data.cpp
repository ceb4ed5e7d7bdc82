#include "platform/qt/janelas/janela_qt.h"
#include "platform/qt/teclas.h"
#include "platform/qt/textos.h"
#include "platform/qt/vinculos/calendario.h"
#include "platform/qt/vinculos/limite_texto.h"
#include "platform/qt/vinculos/vinculo.h"

#include <QAction>
#include <QDateTime>
#include <QIcon>
#include <QLineEdit>

namespace orvex::platform::qt {
namespace {

// The parts of "dd-MM-yyyy HH:mm": where each stands, and how long it is.
struct Parte {
    int inicio;
    int tamanho;
};
constexpr Parte partes[] = {{0, 2}, {3, 2}, {6, 4}, {11, 2}, {14, 2}};

QDateTime data_qt(const base::DataHora& valor) { // in a zone without gaps
    return {QDate(valor.ano, valor.mes, valor.dia), QTime(valor.hora, valor.minuto, valor.segundo), Qt::UTC};
}

base::DataHora de_qt(const QDateTime& data) {
    const QDate dia = data.date();
    const QTime hora = data.time();
    return {dia.year(), dia.month(), dia.day(), hora.hour(), hora.minute(), hora.second()};
}

QDateTime mudada(const QDateTime& data, int parte, int passo) {
    constexpr int minuto = 60, hora = 60 * minuto;
    switch (parte) {
    case 0:
        return data.addDays(passo);
    case 1:
        return data.addMonths(passo);
    case 2:
        return data.addYears(passo);
    case 3:
        return data.addSecs(qint64{passo} * hora);
    default:
        return data.addSecs(qint64{passo} * minuto);
    }
}

} // namespace

VinculoData::VinculoData(JanelaQt& janela, common::SelectorData& selector, QLineEdit& linha)
    : Vinculo(janela, selector, linha), selector_(selector), linha_(linha) {
    QAction* abre = linha.addAction(Calendario::icone(linha.palette().color(QPalette::Text)),
                                    QLineEdit::TrailingPosition);
    abre->setText("Calendário");
    linha.setValidator(new LimiteTexto(&linha, {}, [&selector] { return qs(selector.texto_mostrado()); }));
    QObject::connect(&linha, &QLineEdit::textEdited, &linha, [this](const QString& texto) {
        ecra().utilizador_edita(selector_, texto.toStdString());
    });
    QObject::connect(abre, &QAction::triggered, &linha, [this] {
        if (janela_.termina_edicao() && ecra().utilizador_foca(selector_)) abre_calendario();
    });
}

void VinculoData::mostra() {
    Vinculo::mostra();
    const QString texto = qs(selector_.texto_mostrado());
    if (texto == linha_.text()) return;
    linha_.setText(texto);
    if (linha_.hasFocus()) recebeu_foco();
}

void VinculoData::recebeu_foco() { linha_.selectAll(); }

QString VinculoData::ajuda() const {
    return QString("F4 calendário   Setas mudam o dia   Enter seguinte   ") +
           (selector_.cancela() != nullptr ? "Esc cancela" : "Esc anterior");
}

bool VinculoData::tecla(QKeyEvent& evento) {
    switch (evento.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        ecra().utilizador_tecla(selector_, codigo_tecla(evento), estado_shift(evento));
        return true;
    case Qt::Key_F4:
        if (evento.modifiers() != Qt::NoModifier) return false;
        abre_calendario();
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
        muda(evento.key() == Qt::Key_Up ? +1 : -1);
        return true;
    default:
        return false;
    }
}

// The part the cursor is in, of a date that stands as it is shown; the day otherwise.
int VinculoData::parte_do_cursor() const {
    const auto escrita = ecra().data_escrita(selector_);
    const QString texto = linha_.text();
    if (!escrita || linha_.selectedText() == texto) return 0;
    if (texto != qs(selector_.com_hora ? escrita->data_hora() : escrita->data())) return 0;
    const int cursor = linha_.hasSelectedText() ? linha_.selectionStart() : linha_.cursorPosition();
    int parte = 0;
    for (const Parte& esta : partes)
        if (cursor > esta.inicio + esta.tamanho) ++parte;
    return parte;
}

void VinculoData::muda(int passo) {
    const auto escrita = ecra().data_escrita(selector_);
    if (!escrita) return;
    const int parte = parte_do_cursor();
    const base::DataHora nova = de_qt(mudada(data_qt(*escrita), parte, passo));
    if (!nova.valida() || nova.ano < base::primeiro_ano_do_servidor) return;
    ecra().utilizador_data(selector_, nova);
    janela_.mostra();
    linha_.setSelection(partes[parte].inicio, partes[parte].tamanho);
}

void VinculoData::abre_calendario() {
    const base::DataHora escrita = ecra().data_escrita(selector_).value_or(selector_.Value);
    Calendario::abre(linha_, data_qt(escrita).date(), [this, escrita](QDate dia) {
        ecra().utilizador_data(selector_, de_qt({dia, data_qt(escrita).time(), Qt::UTC}));
        janela_.mostra();
    });
}

} // namespace orvex::platform::qt
