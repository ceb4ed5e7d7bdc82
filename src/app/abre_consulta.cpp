#include "app/abre_consulta.h"

#include "app/processo_solto.h"
#include "base/caminho.h"
#include "base/falha.h"
#include "platform/qt/textos.h"
#include "startup/instalacao.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcessEnvironment>

namespace orvex::app {
namespace {

using platform::qt::qs;

constexpr const char* pasta_comum = "ORVEX_PASTA_COMUM";

// The folder that this process was started in stays free.
void solta(QProcess& processo) {
    processo.setWorkingDirectory(QFileInfo(processo.program()).absolutePath());
    auto ambiente = QProcessEnvironment::systemEnvironment();
    if (const QString comum = ambiente.value(pasta_comum); !comum.isEmpty())
        ambiente.insert(pasta_comum, QFileInfo(comum).absoluteFilePath());
    processo.setProcessEnvironment(ambiente);
    solta_do_sistema(processo);
}

} // namespace

std::string abre_consulta(const common::CodigoEscrito& codigo, const std::filesystem::path& instalacao) {
    // It would be taken for an option.
    if (codigo.codigo.starts_with('-'))
        return "Um código que começa por «-» não se abre daqui: procure-o na consulta.";
    try {
        const auto este = base::caminho_de(QCoreApplication::applicationFilePath().toStdString());
        const QString programa = qs(base::texto_de(startup::programa_a_par(este, "orvex-consulta")));
        QProcess processo;
        processo.setProgram(programa);
        processo.setArguments({"--instalacao", qs(base::texto_de(instalacao)), "--janela",
                               codigo.de == common::CodigoDe::artigo ? "artigo" : "cliente",
                               qs(codigo.codigo)});
        solta(processo);
        if (processo.startDetached()) return {};
        return "A consulta não arrancou: «" + programa.toStdString() + "».";
    } catch (const base::Falha& falha) {
        return std::string("A consulta não arrancou: ") + falha.what();
    }
}

} // namespace orvex::app
