#include "platform/qt/consulta/filtros.h"

#include "base/texto.h"
#include "platform/qt/consulta/campo_data.h"
#include "platform/qt/consulta/grelha_de_pares.h"
#include "platform/qt/teclas.h"
#include "platform/qt/textos.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

namespace orvex::platform::qt::consulta {
namespace {

using namespace livro::consultas;

constexpr int entre_linhas = 6;
constexpr int maior_codigo = 60;
constexpr const char* sem_codigos = "sem_codigos"; // a property of the fields that hold none
constexpr int mais_dias = 100'000;

// Today is as the ledger stands, with rows that are dated tomorrow.
bool como_esta(std::optional<base::DataHora>& data) {
    const base::DataHora agora = base::DataHora::agora();
    if (data == base::DataHora{agora.ano, agora.mes, agora.dia}) data.reset();
    return true;
}

// What a fast hand may have written there.
bool serve(const QObject* campo) {
    std::optional<base::DataHora> data;
    if (const auto* este = dynamic_cast<const CampoData*>(campo)) return este->le(data);
    const auto* escrito = qobject_cast<const QLineEdit*>(campo);
    return escrito != nullptr && base::le_inteiro(escrito->text().toStdString()).has_value();
}

} // namespace

Filtros* Filtros::de(const Pedido& pedido, Janela janela) {
    const bool ha = std::holds_alternative<PedidoCliente>(pedido) ||
                    std::holds_alternative<PedidoParados>(pedido) ||
                    std::holds_alternative<PedidoMovimentos>(pedido);
    return !ha ? nullptr : new Filtros(pedido, std::move(janela));
}

Filtros::Filtros(const Pedido& pedido, Janela janela)
    : pedido_(pedido), janela_(std::move(janela)), grelha_(new GrelhaDePares(entre_linhas)) {
    setObjectName("filtros");
    setLayout(grelha_);
    grelha_->setContentsMargins({});
    std::visit([this](auto& este) { constroi(este); }, pedido_);
    auto* ver = new QPushButton("&Ver");
    ver->setObjectName("ver");
    ver->setAccessibleName("Ver");
    ver->setAutoDefault(true); // Enter presses it too
    connect(ver, &QPushButton::clicked, this, [this] { ve(); });
    grelha_->junta(new QLabel, ver, false);
}

void Filtros::constroi(PedidoCliente& pedido) {
    data("data", "À d&ata", "hoje", pedido.data);
    data("de", "Guias d&e", "há um ano", pedido.de);
    leituras_.emplace_back([&pedido] { return como_esta(pedido.data); });
}

void Filtros::constroi(PedidoParados& pedido) {
    dias("dias", "F&ora há mais de (dias)", pedido.dias);
    texto("cliente", "C&liente", pedido.cliente);
    data("data", "À d&ata", "hoje", pedido.data);
    leituras_.emplace_back([&pedido] { return como_esta(pedido.data); });
}

void Filtros::constroi(PedidoMovimentos& pedido) {
    data("de", "D&e", pedido.de);
    data("ate", "&Até", pedido.ate);
    especie("tipo", "Tip&o", pedido.especie);
    texto("artigo", "A&rtigo", pedido.artigo);
    texto("cliente", "C&liente", pedido.cliente);
    texto("documento", "Doc&umento", pedido.documento);
    leituras_.emplace_back([this, &pedido] {
        return pedido.de <= pedido.ate ||
               recusa(*findChild<QLineEdit*>("filtro_ate"), "O período acaba antes de começar.");
    });
}

void Filtros::junta(const char* nome, const QString& legenda, QWidget* campo) {
    campo->setObjectName(QString("filtro_") + nome);
    campo->setAccessibleName(QString(legenda).remove('&'));
    auto* etiqueta = new QLabel(legenda);
    etiqueta->setBuddy(campo);
    etiqueta->setContentsMargins(0, (campo->sizeHint().height() - etiqueta->sizeHint().height()) / 2, 0, 0);
    grelha_->junta(etiqueta, campo, false);
    campo->installEventFilter(this);
}

void Filtros::data(const char* nome, const QString& legenda, const QString& vazio,
                   std::optional<base::DataHora>& onde) {
    auto* campo = new CampoData(onde, vazio);
    campo->setProperty(sem_codigos, true);
    junta(nome, legenda, campo);
    leituras_.emplace_back([this, campo, &onde] {
        return campo->le(onde) ||
               recusa(*campo, "«" + campo->text().trimmed() + "» não é uma data. Escreva-a como 31-10-2026.");
    });
}

void Filtros::data(const char* nome, const QString& legenda, base::DataHora& onde) {
    auto* campo = new CampoData(onde, {});
    campo->setProperty(sem_codigos, true);
    junta(nome, legenda, campo);
    leituras_.emplace_back([this, campo, &onde] {
        std::optional<base::DataHora> lida;
        if (!campo->le(lida) || !lida)
            return recusa(*campo, campo->text().trimmed().isEmpty()
                                      ? "Falta a data."
                                      : "«" + campo->text().trimmed() +
                                            "» não é uma data. Escreva-a como 31-10-2026.");
        onde = *lida;
        return true;
    });
}

void Filtros::texto(const char* nome, const QString& legenda, std::string& onde) {
    auto* campo = new QLineEdit(qs(onde));
    campo->setMaxLength(maior_codigo);
    campo->setPlaceholderText("todos");
    campo->setFixedWidth(fontMetrics().horizontalAdvance("0000/WWW/00/000000") + 16);
    junta(nome, legenda, campo);
    leituras_.emplace_back([campo, &onde] {
        onde = campo->text().trimmed().toStdString();
        return true;
    });
}

void Filtros::dias(const char* nome, const QString& legenda, int& onde) {
    auto* campo = new QLineEdit(QString::number(onde));
    campo->setProperty(sem_codigos, true);
    campo->setMaxLength(maior_codigo);
    campo->setAlignment(Qt::AlignRight);
    campo->setFixedWidth(fontMetrics().horizontalAdvance("000000") + 16);
    junta(nome, legenda, campo);
    leituras_.emplace_back([this, campo, &onde] {
        const QString escrito = campo->text().trimmed();
        const auto lidos = base::le_inteiro(escrito.toStdString());
        if (!lidos || *lidos < 0 || *lidos > mais_dias)
            return recusa(*campo, escrito.isEmpty() ? "Falta o número de dias."
                                                    : "«" + escrito + "» não é um número de dias.");
        onde = static_cast<int>(*lidos);
        return true;
    });
}

void Filtros::especie(const char* nome, const QString& legenda, std::string& onde) {
    auto* campo = new QComboBox;
    campo->setProperty(sem_codigos, true);
    campo->addItem("Todos");
    for (const std::string& esta : especies())
        campo->addItem(qs(esta));
    campo->setCurrentIndex(std::max(0, campo->findText(qs(onde))));
    junta(nome, legenda, campo);
    leituras_.emplace_back([campo, &onde] {
        onde = campo->currentIndex() > 0 ? campo->currentText().toStdString() : std::string();
        return true;
    });
}

bool Filtros::recusa(QLineEdit& campo, const QString& porque) {
    janela_.diz(porque);
    campo.setFocus();
    campo.selectAll();
    return false;
}

// Codes are for the fields of codes; elsewhere they are looked for, and what was in the field stays.
bool Filtros::eventFilter(QObject* alvo, QEvent* evento) {
    if (evento->type() == QEvent::Wheel && !static_cast<QWidget*>(alvo)->hasFocus()) {
        evento->ignore(); // nothing changes in passing
        return true;
    }
    if (evento->type() != QEvent::KeyPress) return false;
    const auto& tecla = static_cast<QKeyEvent&>(*evento);
    const char* valor = qobject_cast<QComboBox*>(alvo) != nullptr ? "currentIndex" : "text";
    const Leitor::Que que = leitor_.ve(tecla);
    if (que == Leitor::Que::comeca) antes_do_leitor_ = alvo->property(valor);
    if (que == Leitor::Que::acaba && alvo->property(sem_codigos).toBool() && !serve(alvo)) {
        if (leitor_.codigo().isEmpty()) return true;
        alvo->setProperty(valor, antes_do_leitor_);
        janela_.lido(leitor_.codigo());
        return true;
    }
    if (!e_enter(tecla)) return false;
    if (!tecla.isAutoRepeat()) ve();
    return true;
}

void Filtros::ve() {
    janela_.diz({});
    for (const auto& leitura : leituras_)
        if (!leitura()) return;
    janela_.ve(Pedido(pedido_));
}

} // namespace orvex::platform::qt::consulta
