#include "platform/qt/consulta/campo_data.h"

#include "platform/qt/textos.h"
#include "platform/qt/vinculos/calendario.h"

#include <QAction>
#include <QDate>
#include <QIcon>
#include <QKeyEvent>

namespace orvex::platform::qt::consulta {
namespace {

constexpr int ano_sem_seguinte = 9999; // periods end before the day after

} // namespace

CampoData::CampoData(const std::optional<base::DataHora>& valor, const QString& vazio) {
    setPlaceholderText(vazio);
    setMaxLength(20);
    setFixedWidth(fontMetrics().horizontalAdvance("00-00-0000") + 56);
    if (valor) setText(qs(valor->data()));
    QAction* abre = addAction(Calendario::icone(palette().color(QPalette::Text)), TrailingPosition);
    abre->setText("Calendário");
    abre->setToolTip("Calendário (F4)");
    connect(abre, &QAction::triggered, this, [this] { abre_calendario(); });
}

bool CampoData::le(std::optional<base::DataHora>& qual) const {
    const QString texto = text().trimmed();
    qual.reset();
    if (texto.isEmpty()) return true;
    const base::DataHora hoje = base::DataHora::agora();
    const auto lida = hoje.digitada(texto.toStdString(), false, hoje);
    if (!lida || lida->ano >= ano_sem_seguinte) return false;
    qual = base::DataHora{lida->ano, lida->mes, lida->dia};
    return true;
}

QDate CampoData::dia() const {
    std::optional<base::DataHora> escrita;
    if (!le(escrita) || !escrita) return QDate::currentDate();
    return {escrita->ano, escrita->mes, escrita->dia};
}

void CampoData::poe(QDate dia) {
    setText(dia.toString("dd-MM-yyyy"));
    selectAll();
}

void CampoData::abre_calendario() {
    Calendario::abre(*this, dia(), [this](QDate escolhido) {
        poe(escolhido);
        setFocus();
    });
}

void CampoData::keyPressEvent(QKeyEvent* evento) {
    switch (evento->key()) {
    case Qt::Key_F4:
        return abre_calendario();
    case Qt::Key_Up:
    case Qt::Key_Down:
        return poe(dia().addDays(evento->key() == Qt::Key_Up ? 1 : -1));
    default:
        return QLineEdit::keyPressEvent(evento);
    }
}

} // namespace orvex::platform::qt::consulta
