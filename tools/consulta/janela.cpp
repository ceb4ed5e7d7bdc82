#include "tools/consulta/janela.h"

#include "base/descricao.h"
#include "platform/qt/consulta/janela_consulta.h"
#include "platform/qt/programa.h"
#include "tools/comum/instalacao_pedida.h"
#include "tools/consulta/fonte.h"

#include <cstdlib>
#include <iostream>

namespace orvex::consulta {
namespace {

using namespace platform::qt::consulta;

void diz_falha(const std::string& texto) {
    platform::qt::diz(texto, "ORVEX - Consultas", common::Icone::critico);
}

// Whoever only reads needs no log-in to the ERP: what the settings say of it, without its password.
platform::qt::EstadoSessao estado(const startup::PastasInstalacao& pastas, const EmpresaParaLer& empresa) {
    auto ERP = startup::DefinicoesERP::le(pastas.ficheiro_definicoes());
    if (ERP.incompletas()) ERP.completa(pastas.ficheiro_definicoes());
    const std::string& nome = ERP.valores[startup::DefinicoesERP::empresa];
    return {.empresa = nome.empty() ? empresa.nome : nome,
            .motor = empresa.aspecto ? "SQLite" : "SQL Server",
            .utilizador = "só leitura",
            .demonstracao = ERP.tipo() == startup::TipoERP::emulacao};
}

// The first session, opened while the window is already there: a failure is told once, and the next enquiry
// tries again.
class Abertura : public Ouvinte {
  public:
    Abertura(std::shared_ptr<Fonte> fonte, JanelaConsulta& janela)
        : janela_(janela), pergunta_(std::move(fonte), *this) {
        pergunta_.pergunta([](const auto&, auto&) { return true; });
    }
    void comeca() override {}
    void vista(const livro::consultas::Vista& /*esta*/) override {}
    void quadro(const livro::consultas::Quadro& /*este*/) override {}
    void linhas(std::vector<livro::consultas::Linha> /*estas*/) override {}
    void total(const livro::consultas::Linha& /*este*/) override {}
    void acaba(const Fim& fim) override {
        if (fim.como == Fim::Como::falhou) janela_.avisa(QString::fromStdString(fim.falha));
    }

  private:
    JanelaConsulta& janela_;
    Pergunta pergunta_;
};

int corre(platform::qt::Programa& programa, const startup::PastasInstalacao& pastas, const Opcoes& opcoes) {
    constexpr int espera_da_instrucao = 30;
    auto casa = livro::Casa::le(startup::Parametros(pastas.programa));
    const EmpresaParaLer empresa = empresa_para_ler(pastas, espera_da_instrucao);
    const auto fonte = std::make_shared<FonteDaEmpresa>(empresa, std::move(casa));
    JanelaConsulta janela(fonte, estado(pastas, empresa));
    janela.abre(opcoes.pedido);
    std::optional<Abertura> abertura;
    if (!opcoes.pedido) abertura.emplace(fonte, janela);
    return programa.corre();
}

} // namespace

int corre_janela(int argc, char** argv, const Opcoes& opcoes) {
    int fim = EXIT_FAILURE;
    {
        const auto programa = platform::qt::Programa::novo(argc, argv, diz_falha);
        try {
            fim = corre(*programa, instalacao_pedida(opcoes.pasta, base::linha_de_comando(argc, argv)[0]),
                        opcoes);
        } catch (const std::exception& falha) {
            diz_falha(base::descricao(falha));
        }
    }
    // What a server keeps waiting is left behind: it reads, and what the process would tidy up it may use.
    std::cout.flush();
    std::_Exit(fim);
}

} // namespace orvex::consulta
