#include "platform/qt/ligacao.h"

#include "platform/qt/janela_qt.h"
#include "platform/qt/teclas.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QDateTimeEdit>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionComboBox>

namespace orvex::platform::qt {
namespace {

QDateTime data_qt(const base::DataHora& valor) {
    return {QDate(valor.ano, valor.mes, valor.dia), QTime(valor.hora, valor.minuto, valor.segundo)};
}

// What the picker shows replaces what it showed; the parts it hides stay.
base::DataHora com_o_mostrado(base::DataHora valor, const QDateTime& mostrado, bool com_hora) {
    valor.ano = mostrado.date().year();
    valor.mes = mostrado.date().month();
    valor.dia = mostrado.date().day();
    if (com_hora) {
        valor.hora = mostrado.time().hour();
        valor.minuto = mostrado.time().minute();
    }
    return valor;
}

} // namespace

LigacaoData::LigacaoData(JanelaQt& janela, common::SelectorData& selector, QDateTimeEdit& data)
    : Ligacao(janela, selector, data), selector_(selector), data_(data) {
    data.setLocale(QLocale(QLocale::Portuguese, QLocale::Portugal));
    data.setDisplayFormat(selector.com_hora ? "dd-MM-yyyy HH:mm" : "dd-MM-yyyy");
    data.setCalendarPopup(true);
    QObject::connect(&data, &QDateTimeEdit::dateTimeChanged, &data, [this](const QDateTime& mostrado) {
        const base::DataHora novo = com_o_mostrado(selector_.Value, mostrado, selector_.com_hora);
        if (novo != selector_.Value) ecra().utilizador_data(selector_, novo);
    });
}

void LigacaoData::mostra() {
    Ligacao::mostra();
    const QDateTime valor = data_qt(selector_.Value);
    if (!valor.isValid() ||
        com_o_mostrado(selector_.Value, data_.dateTime(), selector_.com_hora) == selector_.Value)
        return;
    const QSignalBlocker calado(data_);
    data_.setDateTime(valor);
}

void LigacaoData::recebeu_foco() { data_.setSelectedSection(QDateTimeEdit::DaySection); }

QString LigacaoData::ajuda() const {
    return QString("F4 calendário   Enter seguinte   ") +
           (selector_.cancela() != nullptr ? "Esc cancela" : "Esc anterior");
}

bool LigacaoData::tecla(QKeyEvent& evento) {
    switch (evento.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        data_.interpretText(); // a half-typed year counts as it stands
        ecra().utilizador_tecla(selector_, codigo_tecla(evento), estado_shift(evento));
        return true;
    case Qt::Key_F4:
        abre_calendario();
        return true;
    default:
        return false;
    }
}

bool LigacaoData::rato(QEvent&) {
    data_.calendarWidget()->setFirstDayOfWeek(Qt::Monday); // made at the first click, not at start-up
    return false;
}

void LigacaoData::abre_calendario() {
    QStyleOptionComboBox opcao;
    opcao.initFrom(&data_);
    opcao.subControls = QStyle::SC_All;
    const QRect seta =
        data_.style()->subControlRect(QStyle::CC_ComboBox, &opcao, QStyle::SC_ComboBoxArrow, &data_);
    QMouseEvent premido(QEvent::MouseButtonPress, seta.center(), data_.mapToGlobal(seta.center()),
                        Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&data_, &premido);
}

} // namespace orvex::platform::qt
