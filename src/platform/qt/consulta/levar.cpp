#include "platform/qt/consulta/levar.h"

#include "base/caminho.h"
#include "base/descricao.h"
#include "platform/qt/caixa.h"
#include "platform/qt/consulta/extracto.h"
#include "platform/qt/consulta/folha_vista.h"
#include "platform/qt/papel/impressao.h"
#include "platform/qt/textos.h"
#include "platform/saidas/saidas.h"
#include "platform/saidas/xlsx.h"

#include <QClipboard>
#include <QDate>
#include <QGuiApplication>
#include <QMimeData>
#include <QPagedPaintDevice>
#include <QSaveFile>

#include <new>
#include <sstream>
#include <streambuf>

namespace orvex::platform::qt::consulta {
namespace {

using livro::consultas::Destino;
using livro::consultas::Recolhida;

// Told again, row by row.
void conta(const Recolhida& vista, Destino& destino) {
    destino.vista(vista.cabecalho);
    for (const auto& parte : vista.partes) {
        destino.quadro(parte.quadro);
        for (const auto& linha : parte.linhas)
            destino.linha(linha);
        for (const auto& total : parte.totais)
            destino.total(total);
    }
}

// What the writers of text write to, in a file of the toolkit's, which knows of a write that failed.
class ParaFicheiro : public std::streambuf {
  public:
    explicit ParaFicheiro(QIODevice& ficheiro) : ficheiro_(ficheiro) {}

  protected:
    std::streamsize xsputn(const char* texto, std::streamsize bytes) override {
        return ficheiro_.write(texto, bytes);
    }
    int overflow(int letra) override {
        return ficheiro_.putChar(static_cast<char>(letra)) ? letra : traits_type::eof();
    }

  private:
    QIODevice& ficheiro_;
};

// "2026-10-31": the day that it stands at, or that it was taken.
QString dia_de(const Recolhida& vista) {
    for (const auto& filtro : vista.cabecalho.filtros)
        if (filtro.nome.starts_with("À data"))
            if (const QDate dia = QDate::fromString(qs(filtro.valor).right(10), "dd-MM-yyyy"); dia.isValid())
                return dia.toString(Qt::ISODate);
    return QDate::currentDate().toString(Qt::ISODate);
}

// "Cliente C0013 2026-10-31".
QString nome_de(const Recolhida& vista) { return qs(vista.cabecalho.titulo) + " " + dia_de(vista); }

QString feito(const QString& caminho) {
    return caminho.isEmpty() ? QString() : "Guardado em " + entre_aspas(caminho);
}

Impresso da_vista(const Impressa& esta) {
    return {.o_que = "a vista",
            .nome = nome_de(esta.vista),
            .folha = folha_para(esta.vista),
            .teclas_do_pdf = "Ctrl+Shift+P",
            .dispoe = [esta](QPagedPaintDevice& papel) {
                return std::make_unique<FolhaVista>(esta, papel, espaco_de(papel));
            }};
}

Impresso do_extracto(const Extracto& extracto, const QString& empresa) {
    return {.o_que = "o extracto",
            .nome = extracto.nome + " " + dia_de(extracto.vista),
            .folha = folha_a4(),
            .dispoe = [&extracto, empresa](QPagedPaintDevice& papel) {
                return std::make_unique<FolhaVista>(Impressa{extracto.vista, empresa, extracto.fecho}, papel,
                                                    espaco_de(papel));
            }};
}

QString imprime_este(QWidget& janela, const std::function<Impresso()>& qual) {
    return tenta(janela, [&]() -> QString {
        const Impresso este = qual();
        return qt::imprime(janela, este) ? "Enviado para a impressora" : "";
    });
}

QString guarda_este(QWidget& janela, const std::function<Impresso()>& qual) {
    return tenta(janela, [&] { return feito(qt::guarda_pdf(janela, qual())); });
}

} // namespace

QString tenta(QWidget& janela, const std::function<QString()>& faz) {
    try {
        return faz();
    } catch (const std::exception& falha) {
        const bool sem_memoria = dynamic_cast<const std::bad_alloc*>(&falha) != nullptr;
        mostra_caixa(&janela,
                     sem_memoria ? "Não há memória que chegue para tantas linhas." : base::descricao(falha),
                     janela.windowTitle().toStdString(), common::Icone::exclamacao, common::Botoes::ok);
        return {};
    }
}

QString copia(const Recolhida& vista) {
    const Ocupado ocupado;
    std::ostringstream texto, html;
    conta(vista, *saidas::tabulado(texto));
    {
        const auto tabelas = saidas::html(html);
        conta(vista, *tabelas);
    }
    auto* dados = new QMimeData;
    dados->setText(qs(texto.str()));
    dados->setHtml(qs(html.str()));
    QGuiApplication::clipboard()->setMimeData(dados);
    std::size_t linhas = 0;
    for (const auto& parte : vista.partes)
        linhas += parte.linhas.size();
    return QString::number(linhas) + (linhas == 1 ? " linha copiada" : " linhas copiadas");
}

QString guarda_csv(QWidget& janela, const Recolhida& vista) {
    return tenta(janela, [&]() -> QString {
        const QString caminho =
            pede_ficheiro(janela, {"Guardar em CSV", nome_de(vista) + ".csv", "CSV (*.csv)"});
        if (caminho.isEmpty()) return {};
        const Ocupado ocupado;
        grava_ficheiro(caminho, [&](QSaveFile& ficheiro) {
            ParaFicheiro bytes(ficheiro);
            std::ostream saida(&bytes);
            conta(vista, *saidas::csv(saida));
            return saida.good();
        });
        return feito(caminho);
    });
}

QString guarda_xlsx(QWidget& janela, const Recolhida& vista) {
    return tenta(janela, [&]() -> QString {
        const QString caminho = pede_ficheiro(
            janela, {"Guardar em folha de cálculo", nome_de(vista) + ".xlsx", "Folha de cálculo (*.xlsx)"});
        if (caminho.isEmpty()) return {};
        const Ocupado ocupado;
        saidas::Xlsx livro(base::caminho_de(caminho.toStdString()));
        conta(vista, livro);
        livro.acaba();
        return feito(caminho);
    });
}

QString imprime(QWidget& janela, const Recolhida& vista, const QString& empresa) {
    return imprime_este(janela, [&] { return da_vista({vista, empresa}); });
}

QString guarda_pdf(QWidget& janela, const Recolhida& vista, const QString& empresa) {
    return guarda_este(janela, [&] { return da_vista({vista, empresa}); });
}

QString imprime_extracto(QWidget& janela, const Recolhida& vista, const QString& empresa) {
    const Extracto extracto = extracto_de(vista);
    return imprime_este(janela, [&] { return do_extracto(extracto, empresa); });
}

QString guarda_extracto(QWidget& janela, const Recolhida& vista, const QString& empresa) {
    const Extracto extracto = extracto_de(vista);
    return guarda_este(janela, [&] { return do_extracto(extracto, empresa); });
}

} // namespace orvex::platform::qt::consulta
