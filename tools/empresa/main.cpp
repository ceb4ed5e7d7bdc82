// orvex-empresa: makes a demo company.
#include "base/caminho.h"
#include "base/descricao.h"
#include "empresa_demo.h"
#include "instalacao.h"
#include "linha_comando.h"
#include "platform/consola/consola.h"

#include <iostream>

namespace {

namespace fs = std::filesystem;

int faz(const orvex::demo::OpcoesEmpresa& opcoes, const fs::path& programas) {
    orvex::demo::faz_empresa(opcoes);
    std::cout << "Empresa criada em " << orvex::base::texto_de(orvex::base::caminho_completo(opcoes.pasta))
              << "\n";
    if (!orvex::demo::copia_programa(programas, opcoes.pasta))
        std::cout << "O programa orvex não foi encontrado em " << orvex::base::texto_de(programas)
                  << ": copie-o para a pasta da instalação.\n";
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    const orvex::platform::consola::Consola consola;
    const auto linha = orvex::base::linha_de_comando(argc, argv);
    orvex::demo::OpcoesEmpresa opcoes;
    try {
        opcoes = orvex::demo::le_argumentos(std::span(linha).subspan(1));
    } catch (const orvex::base::Falha& falha) {
        std::cerr << falha.what() << "\n" << orvex::demo::uso() << "\n";
        return 2;
    }
    try {
        return faz(opcoes, orvex::base::caminho_do_programa(linha[0]).parent_path());
    } catch (const std::exception& falha) {
        std::cerr << "Não foi possível criar a empresa: " << orvex::base::descricao(falha) << "\n";
        return 1;
    }
}
