#include "instalacao.h"

#include "base/caminho.h"
#include "base/falha.h"
#include "empresa_demo.h"
#include "startup/ficheiro.h"
#include "startup/parametros.h"

#include <fstream>

namespace orvex::demo {
namespace {

// Lines end with CR LF on every system; the texts are ASCII, the same in every code page.
void escreve(const std::filesystem::path& ficheiro, const std::vector<std::string>& linhas) {
    std::ofstream saida(ficheiro, std::ios::binary);
    for (const std::string& linha : linhas)
        saida << linha << "\r\n";
    if (!saida.flush())
        throw base::Falha("Não foi possível escrever o ficheiro «" + base::texto_de(ficheiro) + "».");
}

std::vector<std::string> seccao_bd(const std::string& base) {
    return {"[BD]", "Servidor=sqlite", "Base=" + base, std::string("Utilizador=") + utilizador,
            "PalavraPasse="};
}

} // namespace

void escreve_ficheiros(const std::filesystem::path& pasta) {
    auto definicoes = seccao_bd(pasta_empresa);
    for (const char* linha : {"", "[ERP]", "Empresa=ORVEX", "PalavraPasse=", "Utilizador=demo",
                              "Servidor=sqlite", "Base=Empresa"})
        definicoes.emplace_back(linha);
    escreve(pasta / "OrvexEXE.xel", definicoes);

    std::filesystem::create_directory(pasta / "Catalogos");
    escreve(pasta / "Catalogos" / "bd.sql", seccao_bd(std::string("../") + pasta_empresa));

    escreve(pasta / startup::ficheiro_parametros,
            {"GUIADEVOLUCAO=GD,1,1", "GUIASREMESSA=GR,1,1", "FACTURAS=FA,1,1;FR,1,1", "ARMAZEM=A2,Clientes",
             "ARMAZEMORVEX=A1,ORVEX", "CLIENTEORVEX=ORVEX", "SOBRAS=SB,1,1", "QUEBRAS=QB,1,1",
             "CONSUMOS=CI,1,1", "TRF=TR,1,1"});
}

bool copia_programa(const std::filesystem::path& de, const std::filesystem::path& para) {
    bool encontrado = false;
    for (const std::string programa : {"orvex", "orvex-auditoria", "orvex-diagnostico"})
        for (const char* fim : {"", ".exe"}) {
            const std::string nome = programa + fim;
            if (!startup::defeito_do_ficheiro(de / nome).empty()) continue;
            std::error_code erro;
            if (!std::filesystem::copy_file(de / nome, para / nome, erro))
                throw base::Falha("Não foi possível copiar o programa para «" + base::texto_de(para / nome) +
                                  "».");
            encontrado = encontrado || programa == "orvex";
        }
    return encontrado;
}

} // namespace orvex::demo
