// orvex-sessao-guiada INSTALACAO SAIDA: plays the program's main job on a demo company with real keys in the
// real window, and leaves pictures of it and a summary of what was written to the ledger, the ERP and the
// stock.
#include "app/fabrica_orvex.h"
#include "base/caminho.h"
#include "base/descricao.h"
#include "platform/qt/aplicacao.h"
#include "platform/sqlite/sessao_sqlite.h"
#include "roteiro.h"
#include "startup/construtor_ligacao.h"
#include "startup/ficheiro.h"
#include "tools/empresa/empresa_demo.h"

#include <QApplication>
#include <QSettings>

#include <fstream>
#include <iostream>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using namespace orvex;

// What the confirmations wrote, read through a session of its own.
class Resumo {
  public:
    explicit Resumo(const fs::path& instalacao) {
        BD_.Abre(
            startup::ConstrutorLigacao{.servidor = startup::servidor_embebido,
                                       .base = base::texto_de(fs::absolute(instalacao) / demo::pasta_empresa),
                                       .utilizador = demo::utilizador,
                                       .palavra_passe = ""}
                .constroi());
    }

    void tabela(const std::string& titulo, const std::string& sql) {
        const base::FormatoRegional formato;
        texto_ << "\n" << titulo << "\n";
        const auto registos = BD_.Consulta(sql);
        if (registos->fim()) texto_ << "    (nada)\n";
        for (; !registos->fim(); registos->move_seguinte()) {
            texto_ << "   ";
            for (std::size_t i = 0; i < registos->colunas(); ++i)
                texto_ << ' ' << registos->nome_coluna(i) << '=' << formato.texto(registos->valor(i));
            texto_ << "\n";
        }
    }

    void estado(const std::string& momento, int guia = 12) {
        const std::string numero = std::to_string(guia);
        texto_ << "\n== " << momento << " ==\n";
        tabela("xel_ORVEX_Mov, linhas da guia " + numero,
               "Select NumLinha,Artigo,Cliente,Qtd,PesoLiquido,PesoBruto,Origem from xel_ORVEX_Mov where "
               "TpDoc='GR' and NumDoc=" +
                   numero);
        tabela("xel_ORVEX, detentores escritos pela guia " + numero,
               "Select NumSerie,Cliente,Quantidade,Obs,NumLin from xel_ORVEX where TpDoc='GR' and NNumDoc=" +
                   numero);
        tabela("xel_ORVEX_Mov, linhas de factura abertas do cliente C0001",
               "Select TpDoc,NumDoc,NumLinha,Artigo,QtdOrig,Qtd,PesoBruto from xel_ORVEX_Mov where "
               "Cliente='C0001' and (TpDoc='FA' or TpDoc='FR') order by Artigo");
        tabela("ERP, guia " + numero,
               "Select TpDoc,NNumDoc,Terceiro,NVias from DocGcCab where TpDoc='GR' and NNumDoc=" + numero);
        tabela("ERP, stock dos artigos da guia " + numero,
               "Select artarm.Artigo,artarm.Armazem,Existenc from artarm inner join DocGcLin on "
               "DocGcLin.Artigo=artarm.Artigo where TpDocum='GR' and NNumDoc=" +
                   numero + " order by artarm.Artigo");
    }

    void devolucao() {
        tabela("xel_ORVEX_Mov, linhas da devolução 1",
               "Select NumLinha,Artigo,Cliente,Qtd,PesoLiquido,PesoBruto,Origem from xel_ORVEX_Mov where "
               "TpDoc='GD' and NumDoc=1");
        tabela("xel_ORVEX, detentores escritos pela devolução 1",
               "Select NumSerie,Cliente,Quantidade,Obs,NumLin from xel_ORVEX where TpDoc='GD' and NNumDoc=1");
        tabela("ERP, devolução 1",
               "Select TpDoc,NNumDoc,Terceiro,VossoNo,NVias from DocGcCab where TpDoc='GD' and NNumDoc=1");
    }

    std::string texto() const { return texto_.str(); }

  private:
    platform::sqlite::SessaoSQLite BD_;
    std::ostringstream texto_;
};

// Client, two open lines, a lower weight, a text line, confirm; the same note again, and cancel it.
void guia_de_remessa(demo::Roteiro& roteiro, Resumo& resumo) {
    roteiro.retrata("ecra")
        .tecla(Qt::Key_F4)
        .retrata("clientes")
        .tecla(Qt::Key_Return)
        .retrata("linhas-abertas");
    roteiro.tecla(Qt::Key_Tab, {}, 4).tecla(Qt::Key_Return);
    roteiro.tecla(Qt::Key_Tab, Qt::ShiftModifier).tecla(Qt::Key_Down).tecla(Qt::Key_Return);
    roteiro.escreve("1,5").tecla(Qt::Key_Return, {},
                                 2); // past the gross weight to the designation of the next row
    roteiro.escreve("Entregar ao cuidado da Sr.ª Conceição").tecla(Qt::Key_Return);
    roteiro.retrata("guia-por-confirmar").tecla(Qt::Key_C, Qt::AltModifier).retrata("guia-criada");
    roteiro.tecla(Qt::Key_Return).faz([&resumo] { resumo.estado("Depois de emitir"); });

    roteiro.tecla(Qt::Key_Tab).escreve("12").tecla(Qt::Key_Tab).retrata("guia-carregada");
    roteiro.tecla(Qt::Key_A, Qt::AltModifier).retrata("anular");
    roteiro.tecla(Qt::Key_Left).tecla(Qt::Key_Return).retrata("anulada");
    roteiro.faz([&resumo] { resumo.estado("Depois de anular"); });
}

// The same two lines go out once more, and the first of them comes back.
void devolucao(demo::Roteiro& roteiro, Resumo& resumo) {
    roteiro.escreve("C0001").tecla(Qt::Key_Tab, {}, 5).tecla(Qt::Key_Return);
    roteiro.tecla(Qt::Key_Tab, Qt::ShiftModifier).tecla(Qt::Key_Down).tecla(Qt::Key_Return);
    roteiro.tecla(Qt::Key_C, Qt::AltModifier).tecla(Qt::Key_Return);
    roteiro.faz([&resumo] { resumo.estado("Depois de emitir outra vez", 13); });

    roteiro.tecla(Qt::Key_Tab).escreve("13").tecla(Qt::Key_Tab).tecla(Qt::Key_D, Qt::AltModifier);
    roteiro.tecla(Qt::Key_Space).retrata("devolucao").tecla(Qt::Key_D, Qt::AltModifier);
    roteiro.tecla(Qt::Key_Left).tecla(Qt::Key_Return).retrata("devolvida").tecla(Qt::Key_Return);
    roteiro.faz([&resumo] {
        resumo.estado("Depois de devolver uma linha", 13);
        resumo.devolucao();
    });
}

// The screen's own window: pop-ups of its widgets are windows of the application too.
QWidget* janela_do_ecra() {
    for (QWidget* janela : QApplication::topLevelWidgets())
        if (janela->isVisible() && janela->windowType() == Qt::Window) return janela;
    return nullptr;
}

int corre(QApplication& aplicacao, const fs::path& instalacao, const fs::path& saida) {
    std::error_code erro;
    fs::create_directories(saida, erro);
    if (const std::string defeito = startup::defeito_da_pasta(saida); !defeito.empty())
        throw base::Falha("A pasta das imagens não pode ser usada: «" + base::texto_de(saida) + "» " +
                          defeito + ".");
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                       QString::fromStdString(base::texto_de(saida)));
    platform::qt::prepara_aplicacao(aplicacao);

    app::FabricaOrvex fabrica(instalacao);
    startup::Arranque arranque(fabrica, {instalacao, instalacao});
    const auto ecra = arranque.Main("2");
    QWidget* janela = janela_do_ecra();
    if (ecra == nullptr || janela == nullptr) return 1;
    janela->resize(1024, 740);
    Resumo resumo(instalacao);
    demo::Roteiro roteiro(*janela, saida);
    resumo.estado("Antes");
    guia_de_remessa(roteiro, resumo);
    devolucao(roteiro, resumo);
    roteiro.corre();

    std::ofstream(saida / "resumo.txt") << resumo.texto();
    std::cout << resumo.texto() << "\nImagens e resumo em " << base::texto_de(saida) << "\n";
    return 0;
}

} // namespace

int main(int argc, char* argv[]) {
    const auto argumentos = base::linha_de_comando(argc, argv);
    QApplication aplicacao(argc, argv);
    if (argc != 3) {
        std::cerr << "Uso: orvex-sessao-guiada INSTALACAO SAIDA\n";
        return 2;
    }
    try {
        return corre(aplicacao, base::caminho_de(argumentos[1]), base::caminho_de(argumentos[2]));
    } catch (const std::exception& falha) {
        std::cerr << base::descricao(falha) << "\n";
        return 1;
    }
}
