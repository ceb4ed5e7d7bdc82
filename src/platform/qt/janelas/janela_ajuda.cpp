#include "platform/qt/janelas/janela_ajuda.h"

#include "base/versao.h"
#include "platform/qt/caixa.h"
#include "platform/qt/textos.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QStandardPaths>
#include <QUrl>

namespace orvex::platform::qt {
namespace {

constexpr QSize habitual{640, 460};

QString texto_da_sessao(const EstadoSessao& sessao) {
    QString texto = qs("Versão\t" + std::string(base::versao()) + "\nEmpresa\t" + sessao.empresa + "\nBD\t" +
                       sessao.motor + "\nUtilizador\t" + sessao.utilizador + "\n");
    if (!sessao.pasta_do_registo.empty()) texto += qs("Registo\t" + sessao.pasta_do_registo + "\n");
    if (const QString guia = guia_instalado(); !guia.isEmpty())
        texto += "Guia\t" + QDir::toNativeSeparators(guia) + "\n";
    return texto;
}

} // namespace

QString guia_instalado() {
    const QDir programa(QCoreApplication::applicationDirPath());
    // Beside the program, also seen from the folder of its 32-bit ones; or where its documentation lies.
    const QStringList pastas = QStringList{programa.filePath("manual"), programa.filePath("../manual"),
                                           programa.filePath("../share/doc/orvex/manual")} +
                               QStandardPaths::locateAll(QStandardPaths::GenericDataLocation,
                                                         "doc/orvex/manual", QStandardPaths::LocateDirectory);
    for (const QString& pasta : pastas)
        for (const char* pagina : {"index.html", "index.md", "README.md"})
            if (const QDir manual(pasta); manual.exists(pagina))
                return QDir::cleanPath(manual.absoluteFilePath(pagina));
    return {};
}

JanelaAjuda::JanelaAjuda(QWidget& pai, const QString& teclas, const EstadoSessao& sessao) : QDialog(&pai) {
    setObjectName("JanelaAjuda");
    setWindowTitle("Ajuda");
    auto* texto = new QPlainTextEdit("Teclas de «" + pai.windowTitle() + "»\n\n" + teclas + "\n" +
                                     texto_da_sessao(sessao));
    texto->setObjectName("texto");
    texto->setAccessibleName("Ajuda");
    texto->setReadOnly(true);
    texto->setTabChangesFocus(true);
    texto->setTabStopDistance(texto->fontMetrics().horizontalAdvance("Ctrl+Shift+Tab   "));
    texto->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);

    auto* botoes = new QHBoxLayout;
    const auto junta = [&](const char* legenda, auto accao) {
        auto* botao = new QPushButton(legenda);
        botao->setAutoDefault(false);
        connect(botao, &QPushButton::clicked, this, accao);
        botoes->addWidget(botao);
        return botao;
    };
    junta("&Copiar", [texto] { QGuiApplication::clipboard()->setText(texto->toPlainText()); });
    if (const QString guia = guia_instalado(); !guia.isEmpty())
        junta("&Abrir o guia", [this, guia] {
            if (QDesktopServices::openUrl(QUrl::fromLocalFile(guia))) return;
            mostra_caixa(this,
                         "Este computador não abriu o guia. Está em:\n" +
                             QDir::toNativeSeparators(guia).toStdString(),
                         "Ajuda", common::Icone::exclamacao, common::Botoes::ok);
        });
    botoes->addStretch();
    junta("&Fechar", [this] { accept(); })->setDefault(true);

    auto* disposicao = new QVBoxLayout(this);
    disposicao->addWidget(texto, 1);
    disposicao->addLayout(botoes);
    resize(habitual.boundedTo(screen()->availableSize() - QSize(40, 60)));
}

} // namespace orvex::platform::qt
