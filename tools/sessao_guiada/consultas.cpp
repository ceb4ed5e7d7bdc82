#include "platform/qt/consulta/extracto.h"
#include "platform/qt/consulta/folha_vista.h"
#include "platform/qt/consulta/janela_consulta.h"
#include "tarefas.h"
#include "tools/consulta/fonte.h"

#include <QApplication>
#include <QPushButton>
#include <QTreeWidget>

namespace orvex::demo {
namespace {

using namespace livro::consultas;
using namespace platform::qt::consulta;

// What is found, and its view, whole.
class Consultas : public Roteiro {
  public:
    Consultas(QWidget& janela, std::filesystem::path pasta) : Roteiro(janela, std::move(pasta)) {
        auto* levar = janela.findChild<QPushButton*>("copiar");
        auto* achados = janela.findChild<QTreeWidget*>("respostas");
        inteira_ = [levar] { return levar->isEnabled(); };
        achou_ = [achados] { return achados->isVisible() && achados->topLevelItemCount() > 0; };
    }
    void escreve_em_cima(const char* texto) {
        tecla(Qt::Key_P, Qt::AltModifier).tecla(Qt::Key_A, Qt::ControlModifier);
        escreve(texto).espera(achou_);
    }
    void abre(const char* texto, const char* retrato) {
        escreve_em_cima(texto);
        tecla(Qt::Key_Return).espera(inteira_).retrata(retrato);
    }
    void ve(Qt::Key tecla_da_vista, const char* retrato) {
        tecla(tecla_da_vista).espera(inteira_).retrata(retrato);
    }

  private:
    std::function<bool()> inteira_, achou_;
};

} // namespace

void joga_consultas(const std::filesystem::path& instalacao, const std::filesystem::path& saida) {
    constexpr int espera_da_instrucao = 30;
    const startup::PastasInstalacao pastas{instalacao, instalacao};
    const auto fonte = std::make_shared<consulta::FonteDaEmpresa>(
        empresa_para_ler(pastas, espera_da_instrucao), livro::Casa::le(startup::Parametros(instalacao)));
    JanelaConsulta janela(
        fonte, {.empresa = "ORVEX", .motor = "SQLite", .utilizador = "só leitura", .demonstracao = true});
    janela.abre();
    constexpr QSize tamanho{1024, 640};
    janela.resize(tamanho);

    Consultas roteiro(janela, saida);
    roteiro.escreve_em_cima("BG0000");
    roteiro.retrata("consulta-procura");
    roteiro.abre("BG000020", "consulta-artigo");
    roteiro.abre("C0001", "consulta-cliente");
    roteiro.abre("GR/1/13", "consulta-documento");
    roteiro.ve(Qt::Key_F6, "consulta-parados");
    roteiro.ve(Qt::Key_F7, "consulta-movimentos");
    roteiro.tecla(Qt::Key_T, Qt::AltModifier)
        .espera([] { return QApplication::activeModalWidget() != nullptr; })
        .retrata("etiquetas")
        .tecla(Qt::Key_Escape);
    roteiro.retrata_papel("extracto", [&](QPaintDevice& papel, QSizeF espaco) {
        struct ComExtracto : Extracto, FolhaVista {
            ComExtracto(Extracto este, QPaintDevice& papel, QSizeF espaco)
                : Extracto(std::move(este)),
                  FolhaVista({Extracto::vista, "ORVEX (empresa de treino)", fecho}, papel, espaco) {}
        };
        Recolhida cliente;
        fonte->responde([](const Meios& m, Destino& d) { return responde(m, PedidoCliente{"C0013"}, d); },
                        cliente, [&] { cliente = {}; });
        return std::make_unique<ComExtracto>(extracto_de(cliente), papel, espaco);
    });
    roteiro.corre();
}

} // namespace orvex::demo
