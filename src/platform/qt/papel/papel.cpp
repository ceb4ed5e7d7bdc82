#include "platform/qt/papel/papel.h"

#include "base/descricao.h"
#include "delivery/folha_guia.h"
#include "delivery/guias_remessa.h"
#include "platform/qt/janelas/janela_qt.h"
#include "platform/qt/papel/folha.h"
#include "platform/qt/textos.h"

#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSaveFile>
#include <QShortcut>
#include <QStandardPaths>
#include <QToolButton>

namespace orvex::platform::qt {
namespace {

const QPageLayout folha_a4(QPageSize(QPageSize::A4), QPageLayout::Portrait, {15, 12, 15, 12},
                           QPageLayout::Millimeter);

QString nome_de(const delivery::FolhaGuia& folha) {
    return "Guia " + (folha.numero.empty() ? QString("por confirmar") : qs(folha.numero));
}

QString pasta_dos_documentos() {
    const QString documentos = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir(documentos).exists() ? documentos : QDir::homePath();
}

const char* causa(QFileDevice::FileError erro) {
    switch (erro) {
    case QFileDevice::OpenError:
    case QFileDevice::PermissionsError:
    case QFileDevice::RenameError:
        return "não se pode escrever nesta pasta, ou o ficheiro está aberto noutro programa.";
    default:
        return "não há espaço no disco, ou o disco falhou.";
    }
}

// Whole or not at all: what was there under this name stays until the new one is.
QFileDevice::FileError escreve_pdf(const delivery::FolhaGuia& folha, const QString& caminho) {
    QSaveFile ficheiro(caminho);
    if (!ficheiro.open(QIODevice::WriteOnly)) return ficheiro.error();
    {
        QPdfWriter papel(&ficheiro);
        papel.setPageLayout(folha_a4);
        papel.setResolution(600);
        papel.setTitle(nome_de(folha));
        QPainter pintor;
        if (!imprime(folha, papel, pintor)) return QFileDevice::WriteError;
    }
    return ficheiro.commit() ? QFileDevice::NoError : ficheiro.error();
}

} // namespace

BotoesPapel::BotoesPapel(JanelaQt& janela, delivery::GuiasRemessa& ecra, const EstadoSessao& sessao,
                         LinhaEstado& linha)
    : janela_(janela), ecra_(ecra), linha_(linha),
      empresa_(sessao.empresa + (sessao.demonstracao ? "   EMPRESA DE DEMONSTRAÇÃO" : "")) {
    auto* disposicao = new QHBoxLayout(this);
    disposicao->setContentsMargins(0, 0, 0, 0);
    disposicao->setSpacing(2);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    novo_botao("Imprimir", "Imprimir a guia", QKeySequence("Ctrl+P"), &BotoesPapel::imprime_guia);
    novo_botao("PDF", "Guardar a guia em PDF", QKeySequence("Ctrl+Shift+P"), &BotoesPapel::guarda_pdf);
}

void BotoesPapel::novo_botao(const QString& texto, const QString& dica, const QKeySequence& teclas,
                             void (BotoesPapel::*faz)()) {
    auto* botao = new QToolButton;
    botao->setObjectName("papel " + texto);
    botao->setText(texto);
    botao->setAccessibleName(dica);
    botao->setToolTip(dica + " (" + teclas.toString() + ")");
    botao->setAutoRaise(true);
    botao->setFocusPolicy(Qt::NoFocus);
    layout()->addWidget(botao);
    connect(botao, &QToolButton::clicked, this, faz);
    auto* atalho = new QShortcut(teclas, &janela_);
    atalho->setWhatsThis(dica); // for the help
    connect(atalho, &QShortcut::activated, this, faz);
}

void BotoesPapel::diz(const std::string& texto) {
    janela_.caixa(texto, ecra_.titulo_janela(), common::Icone::exclamacao, common::Botoes::ok);
}

// A field is left, and so validated, as it is before a button happens; the keyboard comes back to it.
bool BotoesPapel::aceita_o_digitado() {
    if (!janela_.termina_edicao()) return false;
    common::Controlo* com_teclado = ecra_.foco().actual();
    if (com_teclado == nullptr || !ecra_.SSTab1.recebe_foco()) return true;
    if (dynamic_cast<common::Campo*>(com_teclado) == nullptr &&
        dynamic_cast<common::SelectorData*>(com_teclado) == nullptr)
        return true;
    if (!ecra_.utilizador_foca(ecra_.SSTab1)) return false;
    ecra_.utilizador_foca(*com_teclado);
    return true;
}

std::optional<delivery::FolhaGuia> BotoesPapel::folha() {
    if (!aceita_o_digitado()) return {};
    try {
        delivery::FolhaGuia feita;
        if (!ecra_.sem_outros([&] { feita = delivery::folha_da_guia(ecra_, empresa_); })) return {};
        if (!feita.linhas.empty()) return feita;
        diz("A guia não tem linhas: nada há para imprimir.");
    } catch (const std::exception& falha) {
        diz(base::descricao(falha));
    }
    return {};
}

void BotoesPapel::imprime_guia() {
    const auto guia = folha();
    if (!guia) return;
    if (QPrinterInfo::availablePrinterNames().isEmpty())
        return diz(
            "Não há impressora neste computador. Guarde a guia em PDF (Ctrl+Shift+P) e imprima-a noutro.");
    QPrinter impressora(QPrinter::HighResolution);
    impressora.setPageLayout(folha_a4);
    impressora.setDocName(nome_de(*guia));
    QPrintDialog dialogo(&impressora, &janela_);
    dialogo.setWindowTitle("Imprimir a guia");
    dialogo.setOptions(QAbstractPrintDialog::PrintShowPageSize | QAbstractPrintDialog::PrintPageRange |
                       QAbstractPrintDialog::PrintCollateCopies);
    dialogo.setMinMax(1, folha_em(*guia, impressora).paginas());
    if (dialogo.exec() != QDialog::Accepted) return;
    QPainter pintor;
    if (imprime(*guia, impressora, pintor)) return;
    impressora.abort(); // before the painter ends, which would send the pages that were taken
    pintor.end();
    diz("A guia não foi impressa: a impressora «" + impressora.printerName().toStdString() +
        "» não a recebeu.");
}

void BotoesPapel::guarda_pdf() {
    const auto guia = folha();
    if (!guia) return;
    QFileDialog dialogo(&janela_, "Guardar a guia em PDF", pasta_dos_documentos(), "PDF (*.pdf)");
    dialogo.setAcceptMode(QFileDialog::AcceptSave);
    dialogo.setDefaultSuffix("pdf");
    dialogo.selectFile(nome_de(*guia) + ".pdf");
    if (dialogo.exec() != QDialog::Accepted) return;
    const QString caminho = dialogo.selectedFiles().constFirst();
    const std::string nome = "«" + QDir::toNativeSeparators(caminho).toStdString() + "»";
    const auto erro = escreve_pdf(*guia, caminho);
    if (erro != QFileDevice::NoError)
        return diz("Não foi possível gravar o ficheiro " + nome + ": " + causa(erro));
    linha_.mostra_feito(qs("Guia guardada em " + nome));
}

} // namespace orvex::platform::qt
