#include "platform/qt/consulta/procura.h"

#include "livro/chaves.h"
#include "platform/qt/aplicacao.h"
#include "platform/qt/teclas.h"
#include "platform/qt/textos.h"
#include "platform/saidas/saidas.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace orvex::platform::qt::consulta {
namespace {

using namespace livro::consultas;

constexpr int pausa_ms = 25;
constexpr int maior_texto = 120;

QTreeWidget* nova_lista() {
    auto* lista = new QTreeWidget;
    lista->setObjectName("respostas");
    lista->setAccessibleName("Respostas da procura");
    lista->setColumnCount(2);
    lista->setHeaderHidden(true);
    lista->setRootIsDecorated(false);
    lista->setUniformRowHeights(true);
    lista->setAllColumnsShowFocus(true);
    lista->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lista->setColumnWidth(0, lista->fontMetrics().horizontalAdvance("0000/WWW/00/00000000000"));
    lista->header()->setStretchLastSection(true);
    return lista;
}

} // namespace

Procura::Procura(std::shared_ptr<Fonte> fonte, Janela janela)
    : janela_(std::move(janela)), campo_(new QLineEdit), respostas_(new QWidget), mensagem_(new QLabel),
      outra_vez_(new QPushButton("Te&ntar outra vez")), lista_(nova_lista()),
      pergunta_(std::move(fonte), *this) {
    campo_->setObjectName("procura");
    campo_->setAccessibleName("Procurar");
    campo_->setPlaceholderText("Artigo, cliente ou documento");
    campo_->setClearButtonEnabled(true);
    campo_->setMaxLength(maior_texto);
    mensagem_->setObjectName("mensagem_da_procura");
    mensagem_->setTextFormat(Qt::PlainText);
    mensagem_->setWordWrap(true);
    mensagem_->setMargin(6);
    pinta_fundo(*mensagem_, cor_aviso, Qt::black);
    outra_vez_->setObjectName("procurar_outra_vez");
    outra_vez_->setAccessibleName("Tentar outra vez");

    auto* disposicao = new QVBoxLayout(respostas_);
    disposicao->setContentsMargins(0, 0, 0, 0);
    disposicao->addWidget(mensagem_);
    disposicao->addWidget(outra_vez_, 0, Qt::AlignLeft);
    disposicao->addWidget(lista_, 1);
    mostra({});

    espera_.setSingleShot(true);
    espera_.setInterval(pausa_ms);
    connect(&espera_, &QTimer::timeout, this, [this] { pergunta(); });
    connect(campo_, &QLineEdit::textChanged, this, [this] { mudou_o_texto(); });
    connect(outra_vez_, &QPushButton::clicked, this, [this] { outra_vez(); });
    connect(lista_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* linha) {
        for (const Achado& este : achados_)
            if (este.linha == linha) return abre(Achado(este));
    });
    campo_->installEventFilter(this);
    lista_->installEventFilter(this);
}

QString Procura::texto() const { return campo_->text().trimmed(); }

QString Procura::actual() const {
    const QTreeWidgetItem* linha = a_vista_ ? lista_->currentItem() : nullptr;
    return linha != nullptr ? linha->text(0) : QString();
}

void Procura::foca() {
    campo_->setFocus(Qt::ShortcutFocusReason);
    campo_->selectAll();
}

void Procura::procura(const QString& codigo) {
    campo_->setText(codigo.trimmed());
    foca();
    desde_o_enter_.invalidate();
    entra();
}

void Procura::outra_vez() {
    campo_->setFocus();
    pergunta();
}

// What is asked

void Procura::mudou_o_texto() {
    enter_ = false;
    desde_o_enter_.invalidate();
    fim_.reset();
    const bool ha = !texto().isEmpty();
    if (ha) {
        espera_.start();
    } else {
        espera_.stop();
        if (pergunta_.a_meio()) pergunta_.desiste();
        limpa();
        mostra({});
    }
    a_vista_ = ha;
    janela_.mudou();
}

void Procura::pergunta() {
    espera_.stop();
    fim_.reset();
    mostra({});
    da_anterior_ = true;
    pergunta_.pergunta([texto = texto().toStdString()](const Meios& meios, Destino& destino) {
        return livro::consultas::procura(meios, texto, destino);
    });
    janela_.mudou();
}

void Procura::desiste() {
    espera_.stop();
    enter_ = false;
    if (pergunta_.a_meio()) pergunta_.desiste();
    janela_.mudou();
}

void Procura::fecha() {
    desiste();
    fim_.reset();
    a_vista_ = false;
    campo_->selectAll();
    janela_.mudou();
}

// What is answered

void Procura::comeca() {
    da_anterior_ = true;
    quadro_.reset();
}

void Procura::limpa() {
    da_anterior_ = false;
    grupo_.clear();
    achados_.clear();
    lista_->clear();
}

void Procura::quadro(const Quadro& este) {
    // All that can be the text to the letter has been told by then.
    if (enter_ && !da_anterior_ && este.chave == "artigos_parte")
        if (const Achado* unico = exacto()) return abre(Achado(*unico));
    quadro_ = este;
}

void Procura::linhas(std::vector<Linha> estas) {
    if (!quadro_ || estas.empty()) return;
    if (da_anterior_) limpa();
    mostra({});
    const auto& colunas = quadro_->colunas;
    if (std::exchange(grupo_, quadro_->chave) != quadro_->chave) {
        auto* titulo = new QTreeWidgetItem(lista_, {qs(quadro_->titulo)});
        titulo->setFlags(Qt::NoItemFlags);
        titulo->setFirstColumnSpanned(true);
        QFont letra = lista_->font();
        letra.setBold(true);
        titulo->setFont(0, letra);
        titulo->setForeground(0, cor_titulo);
        titulo->setBackground(0, cor_etiquetas);
        titulo->setSizeHint(0, altura_da_linha());
    }
    for (const Linha& esta : estas) {
        const std::string codigo = esta[0].texto();
        QStringList resto;
        for (std::size_t i = 1; i < esta.size(); ++i)
            if (!esta[i].vazio()) resto << qs(saidas::escrito(colunas[i], esta[i]));
        auto* linha = new QTreeWidgetItem(lista_, {qs(codigo), resto.join("   ")});
        linha->setToolTip(1, linha->text(1));
        linha->setSizeHint(0, altura_da_linha());
        achados_.push_back({colunas[0].ligacao, codigo, linha});
    }
    if (lista_->currentItem() == nullptr) lista_->setCurrentItem(achados_.front().linha);
}

void Procura::acaba(const Fim& fim) {
    fim_ = fim;
    if (da_anterior_) limpa();
    if (fim.como == Fim::Como::falhou)
        mostra(qs(fim.falha));
    else if (fim.como == Fim::Como::desistiu)
        mostra("Interrompido: podem faltar respostas.");
    else if (achados_.empty())
        mostra("Nada foi encontrado com «" + texto() + "».");
    else
        mostra({});
    janela_.mudou();
    if (enter_) decide();
}

void Procura::mostra(const QString& mensagem) {
    mensagem_->setText(mensagem);
    mensagem_->setVisible(!mensagem.isEmpty());
    outra_vez_->setVisible(fim_ && fim_->como == Fim::Como::falhou);
    lista_->setEnabled(mensagem.isEmpty() || !achados_.empty());
}

QSize Procura::altura_da_linha() const { return {0, lista_->fontMetrics().height() + 8}; } // as in tables

// What is opened

void Procura::entra() {
    const bool do_mesmo_leitor =
        desde_o_enter_.isValid() && desde_o_enter_.elapsed() < pausa_de_leitor_ms; // that ends with two
    desde_o_enter_.start();
    if (do_mesmo_leitor || texto().isEmpty()) return;
    enter_ = true;
    a_vista_ = true;
    campo_->selectAll(); // the next code may come before the answer
    if (fim_ && (fim_->como == Fim::Como::respondeu || fim_->como == Fim::Como::nao_ha)) return decide();
    if (fim_ || !pergunta_.a_meio() || espera_.isActive()) pergunta();
    janela_.diz("A procurar «" + texto() + "»…");
}

const Procura::Achado* Procura::exacto() const {
    const std::string procurado = livro::codigo_normal(texto().toStdString());
    const Achado* unico = nullptr;
    for (const Achado& este : achados_) {
        if (livro::codigo_normal(este.texto) != procurado) continue;
        if (unico != nullptr) return nullptr;
        unico = &este;
    }
    return unico;
}

void Procura::decide() {
    enter_ = false;
    janela_.mudou();
    if (fim_->como == Fim::Como::desistiu || fim_->como == Fim::Como::falhou) return campo_->selectAll();
    if (const Achado* unico = achados_.size() == 1 ? &achados_.front() : exacto())
        return abre(Achado(*unico));
    campo_->selectAll();
    if (achados_.empty()) return janela_.diz(mensagem_->text());
    lista_->setFocus();
    janela_.diz("Há mais do que um com «" + texto() + "». Escolha com as setas e Enter.");
}

void Procura::abre(const Achado& achado) {
    janela_.diz({});
    const bool do_campo = campo_->hasFocus();
    fecha();
    if (!do_campo) campo_->setFocus();
    janela_.abre(achado.ligacao, achado.texto);
}

} // namespace orvex::platform::qt::consulta
