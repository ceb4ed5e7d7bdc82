#include "platform/qt/papel/impressao.h"

#include "base/falha.h"
#include "platform/qt/caixa.h"
#include "platform/qt/papel/paginas.h"
#include "platform/qt/textos.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QRegularExpression>
#include <QSaveFile>
#include <QStandardPaths>

namespace orvex::platform::qt {
namespace {

constexpr int pontos_por_polegada = 600; // of a PDF

QString pasta_dos_documentos() {
    const QString documentos = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir(documentos).exists() ? documentos : QDir::homePath();
}

// What a file system of any kind refuses.
QString nome_possivel(QString nome) {
    static const QRegularExpression recusados("[<>:\"/\\\\|?*\\x{0}-\\x{1f}\\x{7f}]+");
    return nome.replace(recusados, "-").simplified();
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

// "a guia" -> "a", "as etiquetas" -> "as".
std::string artigo_de(const Impresso& este) { return este.o_que.section(' ', 0, 0).toStdString(); }

std::string com_maiuscula(QString texto) {
    texto[0] = texto[0].toUpper();
    return texto.toStdString();
}

} // namespace

std::string empresa_no_papel(const EstadoSessao& sessao) {
    return sessao.empresa + (sessao.demonstracao ? std::string("   ") + marca_de_demonstracao : "");
}

QPageLayout folha_a4(QPageLayout::Orientation orientacao) {
    return {QPageSize(QPageSize::A4), orientacao, {15, 12, 15, 12}, QPageLayout::Millimeter};
}

QString entre_aspas(const QString& caminho) { return "«" + QDir::toNativeSeparators(caminho) + "»"; }

bool imprime(QWidget& janela, const Impresso& este) {
    const std::string pronome = artigo_de(este);
    if (QPrinterInfo::availablePrinterNames().isEmpty())
        throw base::Falha(
            "Não há impressora neste computador. Guarde " + este.o_que.toStdString() + " em PDF" +
            (este.teclas_do_pdf.isEmpty() ? "" : " (" + este.teclas_do_pdf.toStdString() + ")") +
            " e imprima-" + pronome + " noutro.");
    QPrinter impressora(QPrinter::HighResolution);
    const bool ate_a_borda = este.folha.mode() == QPageLayout::FullPageMode;
    impressora.setFullPage(ate_a_borda);
    if (ate_a_borda)
        impressora.setPageSize(este.folha.pageSize()); // its margins are nobody's business
    else
        impressora.setPageLayout(este.folha);
    impressora.setDocName(este.nome);
    QPrintDialog dialogo(&impressora, &janela);
    dialogo.setWindowTitle("Imprimir " + este.o_que);
    dialogo.setOptions(QAbstractPrintDialog::PrintShowPageSize | QAbstractPrintDialog::PrintPageRange |
                       QAbstractPrintDialog::PrintCollateCopies);
    {
        const Ocupado ocupado;
        dialogo.setMinMax(1, este.dispoe(impressora)->paginas());
    }
    if (dialogo.exec() != QDialog::Accepted) return false;
    impressora.setFullPage(ate_a_borda); // the dialog lays the page out anew
    const Ocupado ocupado;
    QPainter pintor;
    if (imprime(*este.dispoe(impressora), impressora, pintor)) return true;
    impressora.abort(); // before the painter ends, which would send the pages that were taken
    pintor.end();
    throw base::Falha(com_maiuscula(este.o_que) + " não " + (pronome.size() > 1 ? "foram" : "foi") +
                      " impress" + pronome + ": a impressora «" + impressora.printerName().toStdString() +
                      "» não " + pronome + " recebeu.");
}

QString guarda_pdf(QWidget& janela, const Impresso& este) {
    const QString caminho =
        pede_ficheiro(janela, {"Guardar " + este.o_que + " em PDF", este.nome + ".pdf", "PDF (*.pdf)"});
    if (caminho.isEmpty()) return {};
    const Ocupado ocupado;
    grava_ficheiro(caminho, [&](QSaveFile& ficheiro) {
        QPdfWriter papel(&ficheiro);
        papel.setPageLayout(este.folha);
        papel.setResolution(pontos_por_polegada);
        papel.setTitle(este.nome);
        QPainter pintor;
        return imprime(*este.dispoe(papel), papel, pintor);
    });
    return caminho;
}

QString pede_ficheiro(QWidget& janela, const FicheiroPedido& pedido) {
    QFileDialog dialogo(&janela, pedido.titulo, pasta_dos_documentos(), pedido.filtro);
    dialogo.setAcceptMode(QFileDialog::AcceptSave);
    const QString sufixo = QFileInfo(pedido.nome).suffix();
    dialogo.setDefaultSuffix(sufixo);
    dialogo.selectFile(nome_possivel(pedido.nome));
    while (dialogo.exec() == QDialog::Accepted) {
        const QString caminho = dialogo.selectedFiles().constFirst();
        if (caminho.endsWith("." + sufixo, Qt::CaseInsensitive)) return caminho;
        // What stands behind a dot is a suffix to the dialog, which asks of that name.
        const QString inteiro = caminho + "." + sufixo;
        if (!QFileInfo::exists(inteiro) ||
            mostra_escolha(&janela,
                           QFileInfo(inteiro).fileName().toStdString() + " já existe.\nQuer substituí-lo?",
                           pedido.titulo.toStdString(), "&Sim", "&Não"))
            return inteiro;
    }
    return {};
}

void grava_ficheiro(const QString& caminho, const std::function<bool(QSaveFile&)>& escreve) {
    const auto falhou = [&](QFileDevice::FileError erro) {
        throw base::Falha("Não foi possível gravar o ficheiro " + entre_aspas(caminho).toStdString() + ": " +
                          causa(erro));
    };
    QSaveFile ficheiro(caminho);
    if (!ficheiro.open(QIODevice::WriteOnly)) falhou(QFileDevice::OpenError);
    if (!escreve(ficheiro)) falhou(QFileDevice::WriteError);
    if (!ficheiro.commit()) falhou(ficheiro.error());
}

} // namespace orvex::platform::qt
