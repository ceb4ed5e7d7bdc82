// orvex-conformidade: tells whether an ERP's component does what the program asks of it.
#include "app/fabrica_erp.h"
#include "app/passagem.h"
#include "base/caminho.h"
#include "ensaio.h"
#include "linha_comando.h"
#include "platform/proteccao/proteccao.h"
#include "tools/comum/exame_da_instalacao.h"
#include "tools/diagnostico/base_de_dados.h"

namespace {

using namespace orvex;
using namespace orvex::conformidade;

// Where the ERP's tables cannot be seen, the diagnosis says why.
std::unique_ptr<startup::SessaoBD> abre_tabelas(const startup::PastasInstalacao& pastas,
                                                std::string& porque) {
    try {
        diagnostico::Resultados resultados;
        auto BD = diagnostico::verifica_base_de_dados(startup::definicoes_bd(pastas.ficheiro_definicoes(),
                                                                             pastas.catalogo(),
                                                                             platform::proteccao::abre),
                                                      resultados);
        for (const auto& este : resultados)
            if (este.estado == diagnostico::Estado::erro) porque += este.o_que + ": " + este.texto + " ";
        return BD;
    } catch (const base::Falha& falha) {
        porque = falha.what();
        return nullptr;
    }
}

int experimenta(const Opcoes& opcoes, const startup::PastasInstalacao& pastas) {
    const auto erp = startup::definicoes_erp(pastas.ficheiro_definicoes(), platform::proteccao::abre);
    if (erp.incompletas())
        throw base::Falha("Em [ERP] de «" + base::texto_de(pastas.ficheiro_definicoes()) +
                          "» faltam Empresa, Utilizador, Servidor ou Base.");
    Pedido pedido{.nova_sessao = [&] { return app::cria_sessao_erp(erp); },
                  .entrada = erp.valores,
                  .empresa = opcoes.empresa,
                  .casa = Casa::le(startup::Parametros(pastas.programa)),
                  .cliente = opcoes.cliente,
                  .artigo = opcoes.artigo,
                  .agora = base::DataHora::agora()};
    const auto BD = abre_tabelas(pastas, pedido.sem_BD);
    pedido.BD = BD.get();
    Relatorio relatorio(std::cout);
    const auto por_anular = ensaia(pedido, relatorio);
    std::cout << "\n" << relatorio.resumo() << "\n";
    for (const auto& chave : por_anular)
        std::cout << "POR ANULAR, anule-o no ERP: " << chave.texto() << "\n";
    if (relatorio.errados() > 0) return ha_defeitos;
    return relatorio.por_experimentar() > 0 ? nao_viu : tudo_certo;
}

} // namespace

int main(int argc, char** argv) {
    return exame_da_instalacao(
        argc, argv, le_argumentos, uso(),
        [&](const Opcoes& opcoes, const startup::PastasInstalacao& pastas) {
            const auto programa = base::caminho_do_programa(base::linha_de_comando(argc, argv)[0]);
            const auto fim = app::passa_a_32_bits(pastas, programa);
            return fim ? *fim : experimenta(opcoes, pastas);
        },
        "Nada foi experimentado.");
}
