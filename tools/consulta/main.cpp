// orvex-consulta: asks the ledger, and changes nothing.
#include "janela.h"
#include "platform/saidas/saidas.h"
#include "platform/saidas/xlsx.h"
#include "tools/comum/exame_da_instalacao.h"
#include "tools/consulta/fonte.h"

#include <sstream>

namespace {

using namespace orvex;
using namespace orvex::consulta;
using livro::consultas::Meios;

std::unique_ptr<livro::consultas::Destino> saida(const Opcoes& opcoes, std::ostream& texto) {
    switch (opcoes.formato) {
    case Formato::csv:
        return platform::saidas::csv(texto);
    case Formato::json:
        return platform::saidas::json(texto);
    default:
        return platform::saidas::texto(texto);
    }
}

int consulta_instalacao(const Opcoes& opcoes, const startup::PastasInstalacao& pastas) {
    constexpr int espera_da_instrucao = 300;
    const livro::Casa casa = livro::Casa::le(startup::Parametros(pastas.programa));
    std::ostringstream texto;
    std::unique_ptr<platform::saidas::Xlsx> folhas;
    bool ha = false;
    le_da_empresa(empresa_para_ler(pastas, espera_da_instrucao), casa, [&](const Meios& meios) {
        folhas.reset();
        texto.str({});
        if (opcoes.formato == Formato::xlsx) {
            folhas = std::make_unique<platform::saidas::Xlsx>(opcoes.ficheiro);
            ha = responde(meios, *opcoes.pedido, *folhas);
        } else {
            ha = responde(meios, *opcoes.pedido, *saida(opcoes, texto));
        }
    });
    if (!ha) {
        std::cerr << nada(*opcoes.pedido) << "\n";
        return ha_defeitos;
    }
    if (folhas) folhas->acaba();
    std::cout << texto.view() << std::flush;
    if (!std::cout) throw base::Falha("O resultado não pôde ser escrito.");
    return tudo_certo;
}

// A command line that is wrong is said at the prompt.
std::optional<Opcoes> pede_janela(std::span<const std::string> argumentos) {
    try {
        Opcoes opcoes = le_argumentos(argumentos);
        if (opcoes.janela && !opcoes.ajuda) return opcoes;
    } catch (const base::Falha&) {
    }
    return {};
}

} // namespace

int main(int argc, char** argv) {
    const auto linha = base::linha_de_comando(argc, argv);
    if (const auto opcoes = pede_janela(std::span(linha).subspan(1)))
        return corre_janela(argc, argv, *opcoes);
    return exame_da_instalacao(argc, argv, le_argumentos, uso(), consulta_instalacao, "Nada foi consultado.");
}
