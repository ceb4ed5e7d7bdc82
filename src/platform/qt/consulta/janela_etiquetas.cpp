#include "platform/qt/consulta/janela_etiquetas.h"

#include "base/descricao.h"
#include "platform/qt/acesso.h"
#include "platform/qt/caixa.h"
#include "platform/qt/memoria.h"
#include "platform/qt/papel/impressao.h"
#include "platform/qt/teclas.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDate>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPushButton>
#include <QSpinBox>

#include <algorithm>

namespace orvex::platform::qt::consulta {
namespace {

constexpr int copias_no_maximo = 99;
constexpr QSize lugar_da_amostra(400, 200);

QString quantas(std::size_t n, const char* uma, const char* varias) {
    return QString::number(n) + " " + (n == 1 ? uma : varias);
}

// Some of the codes, for a sentence.
QString alguns(const QStringList& codigos) {
    constexpr qsizetype ditos = 5;
    return codigos.mid(0, ditos).join(", ") + (codigos.size() > ditos ? ", ..." : "");
}

} // namespace

QImage amostra_da_etiqueta(const TamanhoDeEtiqueta& tamanho, const Etiqueta& etiqueta) {
    constexpr int pontos_por_mm = 8;
    TamanhoDeEtiqueta so_ela = tamanho;
    so_ela.colunas = so_ela.linhas = 1;
    so_ela.primeira = {};
    QImage imagem((so_ela.etiqueta * pontos_por_mm).toSize(), QImage::Format_RGB32);
    imagem.setDotsPerMeterX(pontos_por_mm * 1000);
    imagem.setDotsPerMeterY(pontos_por_mm * 1000);
    imagem.fill(Qt::white);
    QPainter pintor(&imagem);
    FolhaEtiquetas(so_ela, {etiqueta}, 0, imagem, imagem.size()).pinta(pintor, 0);
    return imagem;
}

JanelaEtiquetas::JanelaEtiquetas(QWidget& pai, std::vector<Etiqueta> etiquetas)
    : QDialog(&pai), etiquetas_(std::move(etiquetas)) {
    setObjectName("Etiquetas");
    setWindowTitle("Etiquetas");
    constroi();
    tamanho_->setCurrentIndex(std::max(0, tamanho_->findText(le_escolha("etiquetas/tamanho"))));
    connect(tamanho_, &QComboBox::currentIndexChanged, this, [this] { mostra(); });
    connect(copias_, &QSpinBox::valueChanged, this, [this] { mostra(); });
    connect(primeira_, &QSpinBox::valueChanged, this, [this] { mostra(); });
    connect(imprimir_, &QPushButton::clicked, this, [this] { imprime(); });
    connect(pdf_, &QPushButton::clicked, this, [this] { guarda(); });
    mostra();
}

void JanelaEtiquetas::constroi() {
    auto* campos = new QFormLayout;
    const auto par = [&](const QString& legenda, const char* nome, QWidget* campo) {
        campo->setObjectName(nome);
        campo->setAccessibleName(QString(legenda).remove('&'));
        auto* texto = new QLabel(legenda);
        texto->setBuddy(campo);
        campos->addRow(texto, campo);
    };
    tamanho_ = new QComboBox;
    for (const TamanhoDeEtiqueta& este : tamanhos_de_etiqueta())
        tamanho_->addItem(este.nome);
    copias_ = new QSpinBox;
    copias_->setRange(1, copias_no_maximo);
    primeira_ = new QSpinBox;
    par("&Tamanho", "tamanho", tamanho_);
    par("C&ópias de cada", "copias", copias_);
    par("P&rimeiro lugar livre da folha", "primeira", primeira_);

    amostra_ = new QLabel;
    amostra_->setObjectName("amostra");
    amostra_->setAccessibleName("Amostra da etiqueta");
    amostra_->setAlignment(Qt::AlignCenter);
    amostra_->setFixedSize(lugar_da_amostra + QSize(16, 16));
    contagem_ = new QLabel;
    contagem_->setObjectName("contagem");
    aviso_ = new QLabel;
    aviso_->setObjectName("aviso");
    aviso_->setWordWrap(true);
    aviso_->setTextFormat(Qt::PlainText);
    aviso_->setMinimumHeight(3 * fontMetrics().lineSpacing()); // nothing jumps when it has something to say
    aviso_->setAlignment(Qt::AlignTop);

    imprimir_ = new QPushButton("&Imprimir");
    pdf_ = new QPushButton("Guardar em &PDF");
    auto* cancelar = new QPushButton("&Cancelar");
    imprimir_->setObjectName("imprimir");
    pdf_->setObjectName("pdf");
    cancelar->setObjectName("cancelar");
    pdf_->setAutoDefault(false);
    cancelar->setAutoDefault(false);
    imprimir_->setDefault(true);
    connect(cancelar, &QPushButton::clicked, this, [this] { reject(); });
    auto* rodape = new QHBoxLayout;
    rodape->addStretch();
    for (QPushButton* botao : {imprimir_, pdf_, cancelar})
        rodape->addWidget(botao);

    for (QWidget* campo : std::initializer_list<QWidget*>{tamanho_, tamanho_->view(), copias_, primeira_,
                                                          imprimir_, pdf_, cancelar})
        campo->installEventFilter(this);

    auto* disposicao = new QVBoxLayout(this);
    disposicao->addLayout(campos);
    disposicao->addWidget(amostra_, 0, Qt::AlignCenter);
    disposicao->addWidget(contagem_);
    disposicao->addWidget(aviso_);
    disposicao->addLayout(rodape);
}

bool JanelaEtiquetas::eventFilter(QObject* alvo, QEvent* evento) {
    return evento->type() == QEvent::KeyPress && de_leitor(*alvo, static_cast<const QKeyEvent&>(*evento));
}

// A reader's code chooses nothing, counts nothing and prints nothing, also of an item that was read too late.
bool JanelaEtiquetas::de_leitor(const QObject& alvo, const QKeyEvent& tecla) {
    constexpr int mais_do_que_se_escreve = 4; // at such a speed
    const bool logo = desde_a_ultima_.isValid() && desde_a_ultima_.elapsed() < pausa_de_leitor_ms;
    if (e_enter(tecla) || tecla.key() == Qt::Key_Space) {
        if (!logo) return false;
        desfaz();
        QApplication::beep();
        return true;
    }
    if (escrito(tecla).isEmpty()) return false;
    if (!logo) {
        letras_ = 0;
        antes_ = {copias_->value(), primeira_->value()};
    }
    desde_a_ultima_.start();
    if (++letras_ >= mais_do_que_se_escreve) desfaz();
    return letras_ >= mais_do_que_se_escreve || (&alvo != copias_ && &alvo != primeira_);
}

void JanelaEtiquetas::desfaz() {
    copias_->setValue(antes_.first);
    primeira_->setValue(antes_.second);
    for (QSpinBox* campo : {copias_, primeira_})
        campo->selectAll();
}

const TamanhoDeEtiqueta& JanelaEtiquetas::tamanho() const {
    return tamanhos_de_etiqueta()[static_cast<std::size_t>(tamanho_->currentIndex())];
}

std::vector<Etiqueta> JanelaEtiquetas::que_cabem() const {
    std::vector<Etiqueta> todas;
    for (const Etiqueta& esta : etiquetas_)
        if (cabe(tamanho(), esta) == Cabe::sim)
            todas.insert(todas.end(), static_cast<std::size_t>(copias_->value()), esta);
    return todas;
}

QString JanelaEtiquetas::de_fora(Cabe porque) const {
    QStringList codigos;
    for (const Etiqueta& esta : etiquetas_)
        if (cabe(tamanho(), esta) == porque) codigos << esta.codigo;
    return alguns(codigos);
}

void JanelaEtiquetas::mostra() {
    primeira_->setRange(1, tamanho().por_folha());
    primeira_->setEnabled(tamanho().por_folha() > 1);
    const auto n = que_cabem().size();
    QString conta = quantas(n, "etiqueta", "etiquetas");
    if (tamanho().por_folha() > 1) {
        const auto por_folha = static_cast<std::size_t>(tamanho().por_folha());
        const std::size_t lugares = n + static_cast<std::size_t>(primeira_->value() - 1);
        conta += " em " + quantas((lugares + por_folha - 1) / por_folha, "folha", "folhas");
    }
    contagem_->setText(conta);
    QStringList avisos;
    if (const QString codigos = de_fora(Cabe::nao); !codigos.isEmpty())
        avisos << "Não cabe nesta etiqueta, e fica de fora: " + codigos + ". Escolha uma maior.";
    if (const QString codigos = de_fora(Cabe::letras); !codigos.isEmpty())
        avisos << "Tem letras que um código de barras não leva, e fica de fora: " + codigos + ".";
    aviso_->setText(avisos.join("\n"));
    imprimir_->setEnabled(n > 0);
    pdf_->setEnabled(n > 0);
    mostra_amostra();
}

// Of the first that fits, framed by where it ends.
void JanelaEtiquetas::mostra_amostra() {
    const std::vector<Etiqueta> todas = que_cabem();
    if (todas.empty()) {
        amostra_->setPixmap({});
        amostra_->setText("Nenhuma cabe.");
        return;
    }
    const qreal escala = devicePixelRatioF();
    QImage imagem = amostra_da_etiqueta(tamanho(), todas.front())
                        .scaled((QSizeF(lugar_da_amostra) * escala).toSize(), Qt::KeepAspectRatio,
                                Qt::SmoothTransformation);
    QPainter pintor(&imagem);
    pintor.setPen(Qt::gray);
    pintor.drawRect(imagem.rect().adjusted(0, 0, -1, -1));
    pintor.end();
    QPixmap vista = QPixmap::fromImage(imagem);
    vista.setDevicePixelRatio(escala);
    amostra_->setPixmap(vista);
}

Impresso JanelaEtiquetas::impresso() const {
    return {.o_que = "as etiquetas",
            .nome = "Etiquetas " + QDate::currentDate().toString(Qt::ISODate),
            .folha = folha_de(tamanho()),
            .dispoe = [this](QPagedPaintDevice& papel) {
                return std::make_unique<FolhaEtiquetas>(tamanho(), que_cabem(), primeira_->value() - 1, papel,
                                                        espaco_de(papel));
            }};
}

void JanelaEtiquetas::imprime() {
    try {
        if (qt::imprime(*this, impresso()))
            acaba(quantas(que_cabem().size(), "etiqueta enviada", "etiquetas enviadas") +
                  " para a impressora");
    } catch (const std::exception& falha) {
        mostra_caixa(this, base::descricao(falha), "Etiquetas", common::Icone::exclamacao,
                     common::Botoes::ok);
    }
}

void JanelaEtiquetas::guarda() {
    try {
        const QString caminho = guarda_pdf(*this, impresso());
        if (!caminho.isEmpty())
            acaba(quantas(que_cabem().size(), "etiqueta guardada", "etiquetas guardadas") + " em " +
                  entre_aspas(caminho));
    } catch (const std::exception& falha) {
        mostra_caixa(this, base::descricao(falha), "Etiquetas", common::Icone::exclamacao,
                     common::Botoes::ok);
    }
}

void JanelaEtiquetas::acaba(const QString& feito) {
    guarda_escolha("etiquetas/tamanho", tamanho().nome);
    feito_ = feito;
    QStringList de_fora_todas;
    for (const Cabe porque : {Cabe::nao, Cabe::letras})
        if (const QString codigos = de_fora(porque); !codigos.isEmpty()) de_fora_todas << codigos;
    if (!de_fora_todas.isEmpty()) feito_ += "; de fora: " + de_fora_todas.join(", ");
    accept();
}

} // namespace orvex::platform::qt::consulta
