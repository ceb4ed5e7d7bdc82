// Runs every benchmark beside its bare baseline, the two in turn, and prints medians and ratios.
//
//     orvex-medicoes [LINHAS]      rows of the large company; 1,000,000 when not given
#include "base/caminho.h"
#include "base/falha.h"
#include "bench/filhos.h"
#include "bench/processo.h"
#include "platform/sqlite/empresa.h"
#include "tests/apoio/pasta_temporaria.h"
#include "tests/fio/servidor_tds.h"
#include "tools/empresa/empresa_demo.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>

namespace {

namespace fs = std::filesystem;
using orvex::base::caminho_de;
using orvex::base::texto_de;
using orvex::bench::corre;
using orvex::bench::Corrida;
using orvex::bench::mediana;
using orvex::demo::OpcoesEmpresa;

constexpr int voltas = 9;
constexpr int linhas_do_cliente = 10'000;
constexpr int linhas_da_guia = 500;
constexpr int linhas_do_pequeno = 1'800; // of one client: every line is its own
constexpr int ajustes = 200;
constexpr int linhas_do_diario = 20;
constexpr int linhas_do_arranque = 10'000'000;

struct Par {
    std::vector<Corrida> nosso, nu;
};

// Both sides in turn, after one uncounted round, so that a machine that slows down slows both.
Par mede(const std::vector<std::string>& nosso, const std::vector<std::string>& nu) {
    corre(nosso);
    corre(nu);
    Par par;
    for (int i = 0; i < voltas; ++i) {
        par.nosso.push_back(corre(nosso));
        par.nu.push_back(corre(nu));
    }
    return par;
}

double mediana_de(const std::vector<Corrida>& corridas, const std::function<double(const Corrida&)>& figura) {
    std::vector<double> valores;
    valores.reserve(corridas.size());
    for (const Corrida& corrida : corridas)
        valores.push_back(figura(corrida));
    return mediana(valores);
}

double parede(const Corrida& corrida) { return corrida.parede_ms; }
double impresso(const Corrida& corrida) { return corrida.numeros.at(0); }
double memoria(const Corrida& corrida) { return static_cast<double>(corrida.memoria_kb) / 1024; }

void cabecalho() {
    std::printf("\n%-58s %10s %10s %7s %8s\n", "medição (medianas)", "ORVEX", "base nua", "razão", "limite");
}

void mostra(const char* nome, const Par& par, double (*figura)(const Corrida&), const char* unidade,
            double limite) {
    const double nosso = mediana_de(par.nosso, figura);
    const double nu = mediana_de(par.nu, figura);
    std::printf("%-58s %7.1f %s %7.1f %s %7.2f", nome, nosso, unidade, nu, unidade, nosso / nu);
    if (limite > 0) std::printf(" %8.2f%s", limite, nosso / nu > limite ? "  acima" : "");
    std::printf("\n");
    std::fflush(stdout);
}

void mede_lista(const std::string& nome, const std::vector<std::string>& comando) {
    std::vector<double> mostrar, logo, filtrar, completar;
    for (int i = 0; i < voltas; ++i) {
        const Corrida corrida = corre(comando);
        mostrar.push_back(corrida.numeros.at(0));
        filtrar.push_back(corrida.numeros.at(1));
        completar.push_back(corrida.numeros.at(2));
        logo.push_back(corrida.numeros.at(3));
    }
    const auto linha = [&nome](const char* accao, double ms) {
        std::printf("%-58s %7.1f ms %29s%s\n", (nome + accao).c_str(), ms, "< 100 ms",
                    ms < 100 ? "" : "  acima");
    };
    linha(": mostrar", mediana(mostrar));
    linha(": filtrar por três letras", mediana(filtrar));
    linha(": o mesmo, enquanto se lê", mediana(logo));
    std::printf("%-58s %7.1f ms\n", (nome + ": ler até ao fim").c_str(), mediana(completar));
    std::fflush(stdout);
}

// The requests from the one that looks the client up, in the order they were sent, one a line.
void escreve_pedidos(const fs::path& ficheiro, const std::vector<std::string>& textos, std::size_t desde,
                     const std::string& cliente) {
    std::ofstream escrita(ficheiro);
    bool do_cliente = false;
    for (std::size_t i = desde; i < textos.size(); ++i) {
        do_cliente = do_cliente || textos[i].find("'" + cliente + "'") != std::string::npos;
        if (!do_cliente || textos[i].starts_with("IF @@TRANCOUNT")) continue; // what a connection ends with
        std::string numa_linha = textos[i];
        std::replace(numa_linha.begin(), numa_linha.end(), '\n', ' ');
        escrita << numa_linha << '\n';
    }
}

OpcoesEmpresa opcoes(const fs::path& pasta, std::int64_t linhas, std::int64_t clientes) {
    OpcoesEmpresa resultado;
    resultado.pasta = pasta;
    resultado.linhas = linhas;
    resultado.clientes = clientes;
    resultado.hoje = orvex::base::DataHora::agora();
    if (linhas > linhas_do_cliente) resultado.linhas_primeiro_cliente = linhas_do_cliente;
    if (linhas > linhas_do_cliente) resultado.artigos = linhas / 10;
    return resultado;
}

// The same statements to the same server on the loopback, whose own work is in both figures.
void mede_fio(const fs::path& instalacao, const fs::path& programas, const std::string& eu) {
    const std::string linhas = std::to_string(linhas_do_pequeno);
    const std::string onde = texto_de(instalacao);
    corre({eu, "--empresa", onde, linhas, "1"});
    const std::string cliente = orvex::demo::codigo_cliente(1, opcoes(instalacao, linhas_do_pequeno, 1));
    orvex::testes::ServidorTDS servidor(instalacao / orvex::demo::pasta_empresa);
    orvex::bench::liga_ao_fio(instalacao, servidor);
    corre({eu, "--facturas-fio", onde, cliente}); // repairs the weights: once
    const std::size_t desde = servidor.textos().size();
    const Corrida gravada = corre({eu, "--facturas-fio", onde, cliente});
    const fs::path instrucoes = instalacao / "instrucoes.sql";
    escreve_pedidos(instrucoes, servidor.textos(), desde, cliente);
    const Par par =
        mede({eu, "--facturas-fio", onde, cliente}, {texto_de(programas / "facturas_fio_nuas"),
                                                     std::to_string(servidor.porta()), texto_de(instrucoes)});
    if (par.nu.front().numeros.at(1) < gravada.numeros.at(1))
        throw std::runtime_error("faltam linhas à base nua");
    mostra(
        ("CarregaFacturas pelo fio, " + std::to_string(static_cast<int>(gravada.numeros.at(1))) + " linhas")
            .c_str(),
        par, impresso, "ms", 1.3);
}

// Start-up costs what its window costs, however much has been written.
void mede_arranque(const fs::path& raiz, const std::string& eu, const std::string& pequena) {
    const fs::path enorme = raiz / "enorme";
    const std::string onde = texto_de(enorme);
    corre({eu, "--empresa", onde, "1000", "40"});
    const Corrida feita = corre({eu, "--linhas-do-livro", onde, std::to_string(linhas_do_arranque)});
    const auto livro =
        fs::file_size(enorme / orvex::demo::pasta_empresa / orvex::platform::sqlite::ficheiro_livro);
    std::printf("  (as 10 000 000 linhas: %.0f s a fazer, %.1f GB)\n", feita.parede_ms / 1e3,
                static_cast<double>(livro) / 1e9);
    mostra("arranque até pintar / janela Qt com uma linha de texto",
           mede({eu, "--ecra", pequena}, {eu, "--texto"}), parede, "ms", 1.8);
    mostra("arranque com 10 000 000 linhas / com 1 000", mede({eu, "--ecra", onde}, {eu, "--ecra", pequena}),
           parede, "ms", 1.1);
    fs::remove_all(enorme);
}

// What a branch office feels: the time of each job beside that of its requests' way there and back.
void mede_sucursal(const fs::path& instalacao, const std::string& eu) {
    const std::string onde = texto_de(instalacao);
    corre({eu, "--empresa", onde, std::to_string(linhas_do_pequeno + 50), "3", "300",
           std::to_string(linhas_do_pequeno)});
    std::vector<double> numeros = corre({eu, "--trabalhos-fio", onde}).numeros;
    const std::vector<double> arranque = corre({eu, "--arranque-fio", onde}).numeros;
    numeros.insert(numeros.end(), arranque.begin(), arranque.end());
    constexpr const char* trabalhos[] = {"listar mil linhas, a reparar os pesos",
                                         "listar mil linhas",
                                         "emitir 30 linhas",
                                         "carregar a guia",
                                         "anulá-la",
                                         "devolver 30 linhas",
                                         "um ajuste",
                                         "substituí-lo",
                                         "anulá-lo",
                                         "uma transferência para a ORVEX",
                                         "uma transferência para um cliente",
                                         "arrancar, até ao primeiro campo"};
    std::printf("\n%-58s %10s %10s %10s %7s\n", "com mais 20 ms em cada resposta", "ORVEX", "pedidos",
                "x 20 ms", "razão");
    const double* numero = numeros.data();
    for (const char* trabalho : trabalhos) {
        const double ms = *numero++;
        const double pedidos = *numero++;
        const double da_linha = pedidos * orvex::bench::demora_da_linha_ms;
        std::printf("%-58s %7.0f ms %10.0f %7.0f ms %7.2f\n", trabalho, ms, pedidos, da_linha, ms / da_linha);
    }
    std::fflush(stdout);
}

// What the journal adds, on a small company: what a confirmation itself costs there hides nothing of it.
void mede_diario(const fs::path& instalacao, const std::string& eu) {
    const std::string onde = texto_de(instalacao);
    corre({eu, "--empresa", onde, std::to_string(linhas_do_pequeno), "1"});
    const std::string cliente = orvex::demo::codigo_cliente(1, opcoes(instalacao, linhas_do_pequeno, 1));
    const std::string linhas = std::to_string(linhas_do_diario);
    mostra("uma regularização com diário / sem ele",
           mede({eu, "--ajuste", onde, std::to_string(ajustes), "diario"},
                {eu, "--ajuste", onde, std::to_string(ajustes)}),
           impresso, "ms", 1.3);
    mostra("uma guia de 20 linhas com diário / sem ele",
           mede({eu, "--emissao", onde, cliente, linhas, "diario"}, {eu, "--emissao", onde, cliente, linhas}),
           impresso, "ms", 1.3);
}

// Each on a company of its own, so that neither takes the lines of the other's next note.
void mede_guia(const fs::path& instalacao, const fs::path& programas, const std::string& eu,
               const std::string& cliente) {
    const fs::path copia = instalacao.parent_path() / "copia";
    fs::copy(instalacao, copia, fs::copy_options::recursive);
    const std::string linhas = std::to_string(linhas_da_guia);
    const Par par = mede(
        {eu, "--emissao", texto_de(instalacao), cliente, linhas},
        {texto_de(programas / "emissao_nua"), texto_de(copia / orvex::demo::pasta_empresa), cliente, linhas});
    for (int i = 0; i < voltas; ++i)
        if (par.nosso[i].numeros.at(1) != par.nu[i].numeros.at(1))
            throw std::runtime_error("as duas guias não têm as mesmas linhas");
    mostra("emitir uma guia de 500 linhas", par, impresso, "ms", 1.8);
    fs::remove_all(copia);
}

void mede_tudo(const fs::path& programas, std::int64_t linhas) {
    const orvex::testes::PastaTemporaria temporaria;
    const fs::path& raiz = temporaria.pasta();
    const std::string eu = texto_de(programas / "orvex-medicoes");
    const std::string grande = texto_de(raiz / "grande"), pequena = texto_de(raiz / "pequena"),
                      clientes = texto_de(raiz / "clientes"), artigos = texto_de(raiz / "artigos"),
                      milhao = texto_de(raiz / "milhao");

    std::printf("A fazer as empresas (%lld, 1 000 e 600 linhas; 100 000 clientes; 100 000 e 1 000 000 de "
                "artigos)...\n",
                static_cast<long long>(linhas));
    const OpcoesEmpresa opcoes_grande = opcoes(raiz / "grande", linhas, 400);
    // In processes of their own: a child's peak memory starts from that of the process it was started by.
    corre({eu, "--empresa", grande, std::to_string(linhas), "400"});
    corre({eu, "--empresa", pequena, "1000", "40"});
    corre({eu, "--empresa", clientes, "600", "100000"});
    corre({eu, "--empresa", artigos, "600", "40", "100000"});
    corre({eu, "--empresa", milhao, "600", "40", "1000000"});
    const std::string cliente = orvex::demo::codigo_cliente(1, opcoes_grande);
    const std::string empresa = texto_de(raiz / "grande" / orvex::demo::pasta_empresa);

    cabecalho();
    mede_arranque(raiz, eu, pequena);

    // Of the company as it was made: what is clean is read once.
    const Par auditoria = mede({texto_de(programas / "orvex-auditoria"), grande},
                               {texto_de(programas / "auditoria_nua"), empresa});
    mostra("auditoria de todas as linhas / as suas consultas", auditoria, parede, "ms", 3);
    mostra("  memória no máximo", auditoria, memoria, "MB", 0);

    const Par facturas =
        mede({eu, "--facturas", grande, cliente},
             {texto_de(programas / "facturas_nuas"), empresa, cliente, orvex::demo::armazem_orvex});
    if (facturas.nosso[0].numeros.at(1) != facturas.nu[0].numeros.at(1))
        throw std::runtime_error("as duas listas de linhas abertas não têm o mesmo tamanho");
    mostra("CarregaFacturas, 10 000 linhas abertas", facturas, impresso, "ms", 1.2);
    mostra("  memória no máximo", facturas, memoria, "MB", 0);

    mede_fio(raiz / "fio", programas, eu);

    // Before the notes: the bare program that issues them keeps no holders straight.
    mostra("uma regularização de stock (média de 200)",
           mede({eu, "--ajuste", grande, std::to_string(ajustes)},
                {texto_de(programas / "ajuste_nuo"), empresa, std::to_string(ajustes)}),
           impresso, "ms", 1.5);
    mede_guia(raiz / "grande", programas, eu, cliente);

    mede_diario(raiz / "diario", eu);

    mede_lista("lista de 100 000 clientes", {eu, "--clientes", clientes});
    mede_lista("lista de 100 000 artigos", {eu, "--artigos", artigos});
    mede_lista("lista de 1 000 000 artigos", {eu, "--artigos", milhao});

    mede_sucursal(raiz / "sucursal", eu);
}

} // namespace

int main(int argc, char** argv) {
    using namespace orvex::bench;
    const auto argumentos = orvex::base::linha_de_comando(argc, argv);
    const std::string modo = argc > 1 ? argumentos[1] : "";
    const auto numero = [&](std::size_t i) { return std::stoll(argumentos[i]); };
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    try {
        if (modo == "--empresa" && argc >= 5) {
            OpcoesEmpresa pedidas = opcoes(caminho_de(argumentos[2]), numero(3), numero(4));
            if (argc >= 6) pedidas.artigos = numero(5);
            if (argc == 7) pedidas.linhas_primeiro_cliente = numero(6);
            orvex::demo::faz_empresa(pedidas);
            return 0;
        }
        if (modo == "--texto") return mostra_janela_com_texto();
        if (modo == "--ecra" && argc == 3) return mostra_ecra(caminho_de(argumentos[2]));
        if (modo == "--facturas" && argc == 4) return mede_facturas(caminho_de(argumentos[2]), argumentos[3]);
        if (modo == "--facturas-fio" && argc == 4)
            return mede_facturas_fio(caminho_de(argumentos[2]), argumentos[3]);
        if (modo == "--trabalhos-fio" && argc == 3) return mede_trabalhos_fio(caminho_de(argumentos[2]));
        if (modo == "--arranque-fio" && argc == 3) return mede_arranque_fio(caminho_de(argumentos[2]));
        if (modo == "--linhas-do-livro" && argc == 4)
            return acrescenta_linhas_ao_livro(caminho_de(argumentos[2]), numero(3));
        if (modo == "--emissao" && argc >= 5)
            return mede_emissao(caminho_de(argumentos[2]), argumentos[3], static_cast<int>(numero(4)),
                                argc == 6);
        if (modo == "--ajuste" && argc >= 4)
            return mede_ajuste(caminho_de(argumentos[2]), static_cast<int>(numero(3)), argc == 5);
        if (modo == "--clientes" && argc == 3) return mede_lista_clientes(caminho_de(argumentos[2]));
        if (modo == "--artigos" && argc == 3) return mede_lista_artigos(caminho_de(argumentos[2]));
        mede_tudo(fs::canonical("/proc/self/exe").parent_path(), argc > 1 ? numero(1) : 1'000'000);
    } catch (const std::exception& falha) {
        std::fprintf(stderr, "%s\n", falha.what());
        return 1;
    }
    return 0;
}
