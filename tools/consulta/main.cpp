// orvex-consulta: asks the ledger, and changes nothing.
#include "linha_comando.h"
#include "platform/saidas/saidas.h"
#include "platform/saidas/xlsx.h"
#include "tools/comum/empresa_para_ler.h"
#include "tools/comum/exame_da_instalacao.h"

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
    const EmpresaParaLer empresa = empresa_para_ler(pastas, espera_da_instrucao);
    std::ostringstream texto;
    std::unique_ptr<platform::saidas::Xlsx> folhas;
    bool ha = false;
    const bool inteira = le_em_repouso(empresa.aspecto, [&] {
        const auto BD = empresa.abre();
        const Meios meios{*BD, casa, base::DataHora::agora()};
        folhas.reset();
        texto.str({});
        if (opcoes.formato == Formato::xlsx) {
            folhas = std::make_unique<platform::saidas::Xlsx>(opcoes.ficheiro);
            ha = opcoes.consulta(meios, *folhas);
        } else {
            ha = opcoes.consulta(meios, *saida(opcoes, texto));
        }
    });
    if (!inteira) throw base::Falha("A empresa foi aberta e fechada por outros durante a leitura.");
    if (!ha) {
        std::cerr << opcoes.nada << "\n";
        return ha_defeitos;
    }
    if (folhas) folhas->acaba();
    std::cout << texto.view() << std::flush;
    if (!std::cout) throw base::Falha("O resultado não pôde ser escrito.");
    return tudo_certo;
}

} // namespace

int main(int argc, char** argv) {
    return exame_da_instalacao(argc, argv, le_argumentos, uso(), consulta_instalacao, "Nada foi consultado.");
}
