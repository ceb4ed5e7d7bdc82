// Two and three programs at once, in every order with one change of program, and in random orders. What was
// committed must be what the same programs do one after the other, in the order of their commits: then none
// moved what it had read too early, whatever that was. What one of them alone does, tests/propriedades
// compares with its model.
//
// ORVEX_SEMENTE=<seed> plays the random orders of that seed.
#include "tests/apoio/documentos_perdidos.h"
#include "tests/ordem/jogada.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <map>
#include <random>

using namespace orvex;
using namespace orvex::testes;
using confirmacao::Fluxo;

namespace {

// What is on the disk is no part of this: they work in memory, where there is some.
const bool em_memoria = std::filesystem::is_directory("/dev/shm") && setenv("TMPDIR", "/dev/shm", 0) == 0;

std::string nomes(const Fluxos& fluxos) {
    std::string todos;
    for (const Fluxo fluxo : fluxos)
        todos += (todos.empty() ? "" : ", ") + std::string(nome(fluxo));
    return todos;
}

// What they do one after the other; nothing where one of them is then refused.
const std::optional<Estado>& um_apos_outro(Linha linha, const Fluxos& fluxos) {
    static std::map<std::pair<Linha, Fluxos>, std::optional<Estado>> vistos;
    const auto [este, novo] = vistos.try_emplace({linha, fluxos});
    if (novo) {
        const Jogada jogada(linha, fluxos, {});
        if (jogada.confirmados == fluxos) este->second = jogada.ultimo;
    }
    return este->second;
}

struct Visto {
    std::string defeito; // none: nothing is wrong with it
    int passos = 0;      // of the first program
};

// Why this is not what those that committed do one after the other, in that order; empty when it is.
std::string diferenca(Linha linha, const Fluxos& feitos, const std::string& livro, const std::string* erp) {
    const auto& devido = um_apos_outro(linha, feitos);
    if (!devido) return "could not be done one after the other: " + nomes(feitos);
    if (livro != devido->livro) return "ledger:\n" + livro + "\ninstead of\n" + devido->livro;
    if (erp != nullptr && *erp != devido->erp) return "ERP:\n" + *erp + "\ninstead of\n" + devido->erp;
    return "";
}

// Where the stock was taken between its check and the lock, a replacement ends with the old document
// cancelled and its row in the ledger, which the recovery completes: as if the document had been cancelled,
// at some time among the others.
std::string diferenca_completada(Linha linha, Jogada& jogada) {
    // Who tried to cancel it meanwhile has one of it, too.
    if (jogada.gaveta.por_acabar().empty()) return "no journal of what was left half done";
    jogada.recupera();
    std::string primeira;
    for (std::size_t n = jogada.confirmados.size() + 1; n-- > 0;) {
        Fluxos feitos = jogada.confirmados;
        feitos.insert(feitos.begin() + static_cast<std::ptrdiff_t>(n), Fluxo::anula_ajuste);
        const std::string esta = diferenca(linha, feitos, jogada.ultimo.livro, &jogada.ultimo.erp);
        if (esta.empty()) return "";
        if (primeira.empty()) primeira = esta;
    }
    return primeira;
}

Visto joga(Linha linha, const Fluxos& fluxos, const Ordem& ordem) {
    Jogada jogada(linha, fluxos, ordem);
    Visto visto{"", jogada.escalonador.passos_do_primeiro()};
    std::string caixas;
    const auto exige = [&](bool certo, const std::string& senao) {
        if (!certo && visto.defeito.empty()) visto.defeito = senao;
    };
    exige(!jogada.escalonador.encravou(), "all wait for the lock");
    exige(!jogada.confirmados.empty(), "none of them was done");
    for (std::size_t n = 0; n < fluxos.size(); ++n) {
        Programa& programa = *jogada.programas[n];
        exige(!programa.BD().EmTransaccao(), "a transaction is left open");
        const std::string estas = programa.janela.retira_caixas();
        exige(jogada.feitos.contains(n) || !estas.empty() || !programa.janela.listas.empty(),
              "a user was told nothing");
        caixas += "\n" + estas;
    }
    const std::string perdidos = documentos_perdidos(jogada.empresa, caixas);
    exige(perdidos.empty(), "documents that nobody names: " + perdidos);
    const std::string sem = linhas_sem_documento(jogada.empresa, caixas);
    exige(sem.empty(), "rows without their document: " + sem);
    std::string diferente;
    if (caixas.find("ficou anulado no ERP") != std::string::npos) {
        diferente = diferenca_completada(linha, jogada);
    } else {
        Fluxos feitos;
        for (const std::string& livro : jogada.livros) {
            feitos.push_back(jogada.confirmados[feitos.size()]);
            if (diferente.empty()) diferente = diferenca(linha, feitos, livro, nullptr);
        }
        if (diferente.empty()) diferente = diferenca(linha, feitos, jogada.ultimo.livro, &jogada.ultimo.erp);
    }
    exige(diferente.empty(), "after " + nomes(jogada.confirmados) + ", " + diferente);
    exige(jogada.gaveta.por_acabar().empty(), "an unfinished journal");
    if (!visto.defeito.empty()) visto.defeito += "\nboxes:" + caixas;
    return visto;
}

// True when nothing is wrong.
bool confere(Linha linha, const Fluxos& fluxos, const Ordem& ordem, int* passos = nullptr) {
    const Visto visto = joga(linha, fluxos, ordem);
    if (passos != nullptr) *passos = visto.passos;
    if (visto.defeito.empty()) return true;
    ADD_FAILURE() << nomes(fluxos) << (linha == Linha::aberta ? ", line open" : ", line closed")
                  << ", order \"" << texto(ordem) << "\": " << visto.defeito;
    return false;
}

// Two or three of the flows, and some changes of program anywhere.
void ao_acaso(std::uint32_t semente) {
    constexpr int vezes = 200;
    std::cout << "ORVEX_SEMENTE=" << semente << std::endl;
    std::mt19937 gerador(semente);
    const auto ate = [&gerador](std::size_t limite) { return gerador() % limite; };
    for (int vez = 0; vez < vezes; ++vez) {
        Fluxos fluxos;
        for (std::size_t n = ate(4) == 0 ? 2 : 3; n > 0; --n)
            fluxos.push_back(confirmacao::fluxos[ate(std::size(confirmacao::fluxos))]);
        Ordem ordem;
        for (std::size_t n = 2 + ate(8), passo = 0; n > 0; --n)
            ordem.push_back({static_cast<int>(passo += 1 + ate(20)), ate(fluxos.size())});
        if (!confere(linha_para(fluxos), fluxos, ordem)) return;
    }
}

class Ordens : public testing::TestWithParam<Fluxo> {};

} // namespace

// The first one takes so many steps, the second all of its, and the first goes on.
TEST_P(Ordens, ComUmaTrocaDoisProgramasFazemOQueFariamUmAposOOutro) {
    for (const Fluxo segundo : confirmacao::fluxos) {
        const Fluxos fluxos{GetParam(), segundo};
        for (int passo = 1, passos = 1; passo <= passos && !HasFailure(); ++passo)
            confere(linha_para(fluxos), fluxos, {{passo, 1}}, &passos);
    }
}

INSTANTIATE_TEST_SUITE_P(DeCadaFluxo, Ordens, testing::ValuesIn(confirmacao::fluxos),
                         [](const auto& fluxo) { return nome(fluxo.param); });

TEST(OrdensAoAcaso, DoisOuTresProgramasFazemOQueFariamUmAposOOutro) {
    const char* pedida = std::getenv("ORVEX_SEMENTE");
    ao_acaso(pedida != nullptr ? static_cast<std::uint32_t>(std::stoul(pedida)) : 20190315);
}
