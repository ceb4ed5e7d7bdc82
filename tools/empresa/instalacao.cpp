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

void copia(const std::filesystem::path& ficheiro, const std::filesystem::path& para) {
    std::error_code erro;
    if (!std::filesystem::copy_file(ficheiro, para / ficheiro.filename(), erro))
        throw base::Falha("Não foi possível copiar o programa para «" +
                          base::texto_de(para / ficheiro.filename()) + "».");
}

// What a program for Windows needs beside it.
void copia_bibliotecas(const std::filesystem::path& de, const std::filesystem::path& para) {
    for (const auto& entrada : std::filesystem::directory_iterator(de))
        if (entrada.path().extension() == ".dll") copia(entrada.path(), para);
    if (!startup::defeito_da_pasta(de / "platforms").empty()) return;
    std::filesystem::create_directory(para / "platforms");
    for (const auto& entrada : std::filesystem::directory_iterator(de / "platforms"))
        copia(entrada.path(), para / "platforms");
}

// One starter a task, for who has no other menu. Their lines are ASCII, whatever the folder is called.
void escreve_arranques(const std::filesystem::path& pasta) {
    struct Arranque {
        const char *nome, *argumento;
    };
    for (const Arranque& um :
         {Arranque{"Sobras", "1"}, Arranque{"Guias de remessa", "2"}, Arranque{"Quebras", "3"},
          Arranque{"Consumos internos", "4"}, Arranque{"Transferência para a ORVEX", "5"},
          Arranque{"Transferência para outro cliente", "6"}})
        escreve(pasta / base::caminho_de(std::string(um.nome) + ".cmd"),
                {std::string("@start \"\" \"%~dp0orvex.exe\" ") + um.argumento});
    escreve(pasta / "Consultas.cmd", {"@start \"\" \"%~dp0orvex-consulta.exe\""});
    escreve(pasta / base::caminho_de("Verificar a instalação.cmd"),
            {"@\"%~dp0orvex-diagnostico.exe\"", "@pause"});
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
    for (const std::string programa : {"orvex", "orvex-auditoria", "orvex-consulta", "orvex-diagnostico"})
        for (const char* fim : {"", ".exe", ".com"})
            if (startup::defeito_do_ficheiro(de / (programa + fim)).empty()) {
                copia(de / (programa + fim), para);
                encontrado = encontrado || programa == "orvex";
            }
    if (startup::defeito_da_pasta(de / "manual").empty())
        std::filesystem::copy(de / "manual", para / "manual", std::filesystem::copy_options::recursive);
    if (startup::defeito_do_ficheiro(para / "orvex.exe").empty()) {
        copia_bibliotecas(de, para);
        escreve_arranques(para);
    }
    return encontrado;
}

} // namespace orvex::demo
