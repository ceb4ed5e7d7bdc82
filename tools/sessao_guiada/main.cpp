// orvex-sessao-guiada INSTALACAO SAIDA: plays the program's tasks on a demo company with real keys in the
// real windows, and leaves the manual's pictures and a summary of what was written to the ledger, the ERP and
// the stock.
#include "app/fabrica_orvex.h"
#include "base/caminho.h"
#include "base/descricao.h"
#include "platform/qt/aplicacao.h"
#include "startup/arranque.h"
#include "startup/ficheiro.h"
#include "tarefas.h"

#include <QApplication>
#include <QSettings>
#include <QWidget>

#include <fstream>
#include <functional>
#include <iostream>

namespace {

namespace fs = std::filesystem;
using namespace orvex;

// The screen's own window: pop-ups of its widgets are windows of the application too.
QWidget* janela_do_ecra() {
    for (QWidget* janela : QApplication::topLevelWidgets())
        if (janela->isVisible() && janela->windowType() == Qt::Window) return janela;
    return nullptr;
}

struct Tarefa {
    const char* argumento; // what the program is started with
    QSize tamanho;
    std::function<void(demo::Roteiro&)> joga;
};

void corre(const fs::path& instalacao, const fs::path& saida, const Tarefa& tarefa) {
    app::FabricaOrvex fabrica(instalacao);
    startup::Arranque arranque(fabrica, {instalacao, instalacao});
    const auto ecra = arranque.Main(tarefa.argumento);
    QWidget* janela = janela_do_ecra();
    if (ecra == nullptr || janela == nullptr) throw base::Falha("O ecrã não abriu.");
    janela->resize(tarefa.tamanho);
    demo::Roteiro roteiro(*janela, saida);
    tarefa.joga(roteiro);
    roteiro.corre();
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

    demo::Resumo resumo(instalacao);
    resumo.estado("Antes");
    constexpr QSize guias{1024, 740}, ajustes{780, 370}, transferencias{780, 330};
    for (const Tarefa& tarefa :
         {Tarefa{"2", guias, [&](demo::Roteiro& roteiro) { demo::joga_guias(roteiro, resumo); }},
          Tarefa{"1", ajustes, demo::joga_sobra}, Tarefa{"3", ajustes, demo::joga_quebra},
          Tarefa{"4", ajustes, demo::joga_consumo}, Tarefa{"5", transferencias, demo::joga_para_orvex},
          Tarefa{"6", transferencias, demo::joga_para_cliente}})
        corre(instalacao, saida, tarefa);
    demo::joga_consultas(instalacao, saida);

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
