#include "platform/qt/consulta/pagina.h"

#include "platform/qt/aplicacao.h"
#include "platform/qt/consulta/ficha.h"
#include "platform/qt/consulta/filtros.h"
#include "platform/qt/consulta/grafico.h"
#include "platform/qt/textos.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>

#include <utility>

namespace orvex::platform::qt::consulta {
namespace {

using namespace livro::consultas;

// Captions of tabs, where a table's title is too long for one; it is the tab's tool tip.
constexpr std::pair<const char*, const char*> curtos[] = {{"movimentos", "Movimentos"},
                                                          {"stock", "Stock"},
                                                          {"abertas", "Facturas em aberto"},
                                                          {"por_devolver", "Guias por devolver"},
                                                          {"artigos", "Artigos"},
                                                          {"evolucao", "Últimos 24 meses"},
                                                          {"parados", "Parados"}};

QString curto(const Quadro& quadro) {
    for (const auto& [chave, texto] : curtos)
        if (quadro.chave == chave) return texto;
    return qs(quadro.titulo);
}

// They take what is left, and ask for no more than they need: the page scrolls only where that is too much.
struct Separadores : QTabWidget {
    QSize sizeHint() const override { return minimumSizeHint(); }
};

} // namespace

QString titulo_de(const Pedido& pedido) {
    struct {
        QString operator()(const PedidoArtigo& p) const { return "Artigo " + qs(p.codigo); }
        QString operator()(const PedidoCliente& p) const { return "Cliente " + qs(p.codigo); }
        QString operator()(const PedidoDocumento& p) const { return "Documento " + qs(p.qual); }
        QString operator()(const PedidoParados&) const { return "Parados"; }
        QString operator()(const PedidoMovimentos&) const { return "Movimentos"; }
        QString operator()(const PedidoProcura&) const { return "Procura"; }
    } titulo;
    return std::visit(titulo, pedido);
}

Pagina::Pagina(std::shared_ptr<Fonte> fonte, Pedido pedido, Janela janela)
    : pedido_(std::move(pedido)), janela_(std::move(janela)), disposicao_(new QVBoxLayout(this)),
      aviso_(new QWidget), mensagem_(new QLabel), outra_vez_(new QPushButton("Te&ntar outra vez")),
      pergunta_(std::move(fonte), *this) {
    setObjectName("pagina");
    disposicao_->setContentsMargins(0, 0, 0, 0);
    mensagem_->setObjectName("mensagem_da_pagina");
    mensagem_->setTextFormat(Qt::PlainText);
    mensagem_->setWordWrap(true);
    mensagem_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    outra_vez_->setObjectName("outra_vez");
    outra_vez_->setAccessibleName("Tentar outra vez");
    outra_vez_->setToolTip("Perguntar outra vez (F5)");
    connect(outra_vez_, &QPushButton::clicked, this, [this] { pergunta(); });
    auto* faixa = new QHBoxLayout(aviso_);
    faixa->setContentsMargins(8, 6, 8, 6);
    faixa->addWidget(mensagem_, 1);
    faixa->addWidget(outra_vez_);
    pinta_fundo(*aviso_, cor_aviso, Qt::black);
    aviso_->hide();
    poe_filtros();
    disposicao_->addWidget(aviso_);
    esvazia();
}

// As the view was asked, whatever was written in them since.
void Pagina::poe_filtros() {
    Filtros* novos = Filtros::de(pedido_, {[this](const Pedido& outro) {
                                               janela_.pede(outro);
                                               poe_filtros();
                                           },
                                           janela_.diz, janela_.lido});
    if (novos == nullptr) return;
    if (filtros_ != nullptr) {
        delete disposicao_->replaceWidget(filtros_, novos);
        filtros_->hide();
        filtros_->deleteLater();
    } else {
        disposicao_->insertWidget(0, novos);
    }
    filtros_ = novos;
}

QString Pagina::titulo() const {
    return cabecalho_.titulo.empty() ? titulo_de(pedido_) : qs(cabecalho_.titulo);
}

int Pagina::lidas() const {
    int soma = 0;
    for (const Bloco& este : blocos_)
        soma += este.tabela ? este.tabela->lidas() : static_cast<int>(este.parte.linhas.size());
    return soma;
}

QString Pagina::estado() const {
    if (a_meio()) {
        const int quantas = como_ ? 0 : lidas(); // of this answer
        return (quantas > 1 ? QLocale().toString(quantas) + " linhas…" : "A ler…") + "   Esc desiste";
    }
    const VistaQuadro* tabela = actual();
    QString texto = tabela != nullptr ? tabela->resumo() : QString();
    if (como_ == Fim::Como::desistiu) texto = "Interrompido: faltam linhas.   " + texto;
    return texto;
}

void Pagina::pergunta() {
    guarda_lugar();
    pergunta_.pergunta([pedido = pedido_](const Meios& meios, Destino& destino) {
        return responde(meios, pedido, destino);
    });
    if (outra_vez_->hasFocus()) foca(); // it goes
    mostra({}, false);
    janela_.mudou();
}

// The answer

void Pagina::esvazia() {
    const bool com_teclado = conteudo_ != nullptr && focusWidget() != nullptr && isVisible() &&
                             conteudo_->isAncestorOf(window()->focusWidget());
    if (com_teclado) {
        quer_foco_ = true;
        setFocus();
    }
    blocos_.clear();
    delete std::exchange(conteudo_, new QWidget);
    disposicao_->addWidget(conteudo_, 1);
    auto* coluna = new QVBoxLayout(conteudo_);
    coluna->setContentsMargins(0, 0, 0, 0);
    auto* faixa = new QWidget;
    faixa->setMinimumWidth(1); // below that of both, they stand under one another
    cartoes_ = new QBoxLayout(lado_a_lado());
    cartoes_->setContentsMargins({});
    cartoes_->setSpacing(12);
    faixa->setLayout(cartoes_);
    coluna->addWidget(faixa);
    separadores_ = new Separadores;
    separadores_->setObjectName("separadores");
    separadores_->setAccessibleName("Quadros");
    separadores_->hide();
    coluna->addWidget(separadores_, 1);
    connect(separadores_, &QTabWidget::currentChanged, this, [this] { janela_.mudou(); });
}

QBoxLayout::Direction Pagina::lado_a_lado() const {
    constexpr int letras = 95; // that a card and a chart take
    return width() < letras * fontMetrics().averageCharWidth() ? QBoxLayout::TopToBottom
                                                               : QBoxLayout::LeftToRight;
}

void Pagina::resizeEvent(QResizeEvent* evento) {
    QWidget::resizeEvent(evento);
    cartoes_->setDirection(lado_a_lado());
}

void Pagina::comeca() {
    if (como_) guarda_lugar(); // where one went meanwhile
    como_.reset();
    mostra({}, false);
    esvazia();
}

void Pagina::vista(const Vista& esta) {
    cabecalho_ = esta;
    janela_.mudou();
}

void Pagina::quadro(const Quadro& este) {
    fecha_bloco();
    blocos_.push_back({{este, {}, {}}, nullptr});
    // The ages are figures and bars beside the card.
    if (!este.ficha && este.chave != "idades") nova_tabela(blocos_.back());
}

void Pagina::nova_tabela(Bloco& bloco) {
    const Quadro& quadro = bloco.parte.quadro;
    auto* folha = new QWidget;
    auto* coluna = new QVBoxLayout(folha);
    coluna->setContentsMargins(6, 6, 6, 6);
    bloco.tabela = new VistaQuadro(cabecalho_.chave, quadro);
    bloco.tabela->define_janela({janela_.abre, janela_.lido, [this] { janela_.mudou(); }, janela_.copia});
    coluna->addWidget(bloco.tabela, 1);
    if (const auto lugar = lugares_.find(quadro.chave); lugar != lugares_.end())
        bloco.tabela->repoe_filtro(lugar->second.filtro);
    // What the ERP says of the stock comes after what moved.
    const bool a_frente = separadores_->count() > 0 && separadores_->widget(0)->objectName() == "stock";
    folha->setObjectName(qs(quadro.chave));
    const int lugar = separadores_->insertTab(a_frente ? separadores_->count() - 1 : separadores_->count(),
                                              folha, curto(quadro));
    separadores_->setTabToolTip(lugar, qs(quadro.titulo));
    separadores_->show();
    if (quadro.chave == quer_separador_ || lugar == 0) separadores_->setCurrentIndex(lugar);
    // It goes to the first of them, unless the user took it elsewhere.
    if (quer_foco_ && window()->focusWidget() == this && separadores_->currentIndex() == lugar &&
        quadro.chave != "stock") {
        quer_foco_ = false;
        bloco.tabela->tabela().setFocus();
    }
    conta(bloco);
}

void Pagina::conta(const Bloco& bloco) {
    const int lugar = lugar_de(bloco.tabela);
    if (lugar >= 0)
        separadores_->setTabText(lugar, curto(bloco.parte.quadro) + " (" +
                                            QLocale().toString(bloco.tabela->lidas()) + ")");
}

void Pagina::linhas(std::vector<Linha> estas) {
    if (blocos_.empty()) return;
    Bloco& bloco = blocos_.back();
    if (bloco.tabela) {
        bloco.tabela->junta(std::move(estas));
        conta(bloco);
    } else {
        for (Linha& esta : estas)
            bloco.parte.linhas.push_back(std::move(esta));
    }
    janela_.mudou();
}

void Pagina::total(const Linha& este) {
    if (blocos_.empty()) return;
    Bloco& bloco = blocos_.back();
    bloco.tabela ? bloco.tabela->total(este) : bloco.parte.totais.push_back(este);
}

void Pagina::fecha_bloco() {
    if (blocos_.empty()) return;
    Bloco& bloco = blocos_.back();
    if (bloco.parte.quadro.ficha) {
        if (!bloco.parte.linhas.empty())
            cartoes_->addWidget(new Ficha(bloco.parte.quadro, bloco.parte.linhas.front(), janela_.abre), 1);
    } else if (!bloco.tabela) {
        if (QWidget* grafico = novo_grafico(bloco.parte)) cartoes_->addWidget(grafico, 1);
    } else if (bloco.parte.quadro.chave == "evolucao") {
        if (QWidget* grafico = novo_grafico(bloco.tabela->toda()))
            static_cast<QVBoxLayout*>(bloco.tabela->parentWidget()->layout())->insertWidget(0, grafico, 1);
    }
}

void Pagina::acaba(const Fim& fim) {
    const auto antes = std::exchange(como_, fim.como);
    if (!antes) fecha_bloco(); // else nothing of this answer came
    switch (fim.como) {
    case Fim::Como::respondeu:
        repoe_lugar();
        mostra({}, false);
        break;
    case Fim::Como::nao_ha:
        mostra(qs(nada(pedido_)), false);
        break;
    case Fim::Como::desistiu:
        if (antes == Fim::Como::respondeu) {
            como_ = antes;
            mostra("Interrompido: à vista está a resposta anterior, inteira.", true);
            break;
        }
        mostra("Interrompido: faltam linhas. O que está à vista não se copia nem se guarda como um todo.",
               true);
        break;
    case Fim::Como::falhou:
        esvazia(); // a part would be taken for all
        mostra(qs(fim.falha), true);
        break;
    }
    quer_foco_ = false;
    if (window()->focusWidget() == this && outra_vez_->isVisible()) outra_vez_->setFocus();
    janela_.mudou();
}

void Pagina::mostra(const QString& mensagem, bool outra_vez) {
    mensagem_->setText(mensagem);
    outra_vez_->setVisible(outra_vez);
    aviso_->setVisible(!mensagem.isEmpty());
}

} // namespace orvex::platform::qt::consulta
