// A program that dies, really, before anything it asks of database, ERP, journal or user, which is also after
// whatever it asked last; a recovery that does; and a server that does. The draft of a note goes with them.
#include "tests/morte/cemiterio.h"

using namespace orvex::testes;
using orvex::confirmacao::Fluxo;

namespace {

const Commit commits[] = {{"done"},
                          {"refused", Diario::Maneira::lanca},
                          {"unknown", Diario::Maneira::faz_e_lanca},
                          {"undone", Diario::Maneira::perde}};

// Of the table of decisions, those in which a flow can die.
const char* janelas_de(Fluxo fluxo) {
    if (fluxo == Fluxo::anula_guia || fluxo == Fluxo::anula_ajuste)
        return "cancelled with rows|no candidate|rows there";
    if (fluxo == Fluxo::substitui_ajuste)
        return "cancelled with rows|no candidate|replacement half done|rows there";
    if (fluxo == Fluxo::transfere_para_cliente) return "no candidate|rows there";
    return "answer lost|answered, not committed|no candidate|rows there|undone";
}

// Where recovery writes nothing but its own journal, which no wire leads to.
bool so_se_le(const std::string& janela) {
    return janela == "no candidate" || janela == "rows there" || janela == "undone";
}

struct Morte : Cemiterio {
    void prova() {
        Pastas mortos;
        for (const Commit& commit : commits)
            for (auto& morto : mata(commit))
                mortos.push_back(std::move(morto));
        if (pelo_fio()) novo_servidor(); // the other is killed with what it had open
        const Sentenca sentenca = julga(mortos);
        EXPECT_EQ(sentenca.defeitos, "");
        EXPECT_EQ(sentenca.nomes(), janelas_de(GetParam()));
        Pastas na_recuperacao;
        for (const auto& [janela, morto] : sentenca.janelas)
            for (auto& outro : pelo_fio() && so_se_le(janela) ? Pastas() : mata_recuperacao(morto))
                na_recuperacao.push_back(std::move(outro));
        if (pelo_fio()) novo_servidor();
        EXPECT_EQ(julga(na_recuperacao).defeitos, "");
        EXPECT_GT(mortos.size(), 20);
    }
};

} // namespace

TEST_P(Morte, NadaSePerdeOndeQuerQueOProgramaOuARecuperacaoMorram) { prova(); }

TEST_P(Morte, PeloFioTambemNao) {
    novo_servidor();
    prova();
}

TEST_P(Morte, NadaSePerdeSeOServidorMorreEmQualquerPedido) {
    Pastas vivos;
    for (const bool depois_de_cumprido : {false, true})
        for (auto& vivo : mata_servidor(depois_de_cumprido))
            vivos.push_back(std::move(vivo));
    EXPECT_GT(vivos.size(), 10);
    novo_servidor();
    EXPECT_EQ(julga(vivos).defeitos, "");
}

INSTANTIATE_TEST_SUITE_P(Fluxos, Morte, testing::ValuesIn(orvex::confirmacao::fluxos),
                         [](const auto& fluxo) { return nome(fluxo.param); });
