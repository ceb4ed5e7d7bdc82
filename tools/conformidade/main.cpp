// orvex-conformidade: tells whether an ERP's component does what the program asks of it.
#include "app/fabrica_erp.h"
#include "base/caminho.h"
#include "base/descricao.h"
#include "ensaio.h"
#include "linha_comando.h"
#include "platform/consola/consola.h"
#include "platform/proteccao/proteccao.h"
#include "tools/comum/instalacao_pedida.h"
#include "tools/diagnostico/base_de_dados.h"

#include <iostream>

namespace {

using namespace orvex;
using namespace orvex::conformidade;

enum Fim { tudo_certo = 0, nao_viu = 1, ha_errado = 2 };

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
    if (relatorio.errados() > 0) return ha_errado;
    return relatorio.por_experimentar() > 0 ? nao_viu : tudo_certo;
}

} // namespace

int main(int argc, char** argv) {
    const platform::consola::Consola consola;
    const auto argumentos = base::linha_de_comando(argc, argv);
    try {
        const Opcoes opcoes = le_argumentos(std::span(argumentos).subspan(1));
        if (opcoes.ajuda) {
            std::cout << uso() << "\n";
            return tudo_certo;
        }
        return experimenta(opcoes, instalacao_pedida(opcoes.pasta, argumentos[0]));
    } catch (const std::exception& falha) {
        std::cerr << base::descricao(falha) << "\nNada foi experimentado.\n";
        return nao_viu;
    }
}
