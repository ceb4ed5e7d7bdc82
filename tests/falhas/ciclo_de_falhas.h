// Fails the first step of a flow, then the second, and so on until a run is clean; then again with what comes
// after the failure failing too. Whatever fails, the ledger is as it was or complete, every document of the
// ERP is in the ledger, cancelled or named for manual cancellation, and the screen can be used.
#pragma once

#include "tests/apoio/documentos_perdidos.h"
#include "tests/apoio/fluxos.h"

namespace orvex::testes {

// One way for a step to fail.
template <typename TBancada>
struct Estrago {
    const char* nome;
    std::function<void(TBancada&, int passo)> arma;
    std::function<bool(const TBancada&, int passo)> deu_se;
    bool recusa = false;    // the ERP refuses, where it could also raise
    bool reparavel = false; // the session may put it right, unnoticed
};

// Where the answer to a commit is lost and nothing tells what became of it, the user is told so.
constexpr const char* incerto = "Não se sabe se o que estava a ser gravado ficou";

// Whoever reads a box holds up nobody.
void nada_preso(auto& bancada) {
    EXPECT_FALSE(bancada.BD.em_passo());
    startup::SessaoBD& outra = bancada.empresa.outra();
    EXPECT_NO_THROW({
        outra.IniciaTransaccao();
        outra.Tranca();
        outra.AnulaTransaccao();
    });
}

template <typename TBancada>
void percorre(const Fluxo<TBancada>& fluxo, const Estrago<TBancada>& estrago, const std::string& completo) {
    for (int passo = 1;; ++passo) {
        SCOPED_TRACE("step " + std::to_string(passo) + ": " + estrago.nome);
        TBancada bancada;
        fluxo.prepara(bancada);
        bancada.caixas();
        bancada.janela.com_a_caixa_aberta = [&bancada] { nada_preso(bancada); };
        const auto antes = bancada.empresa.livro();
        bancada.diario.recomeca();
        estrago.arma(bancada, passo);
        const bool ha_passos = fluxo.pede_ao_erp || !bancada.diario.so_do_erp;
        EXPECT_NO_THROW(fluxo.age(bancada));
        const bool falhou = estrago.deu_se(bancada, passo);
        const std::string rasto = bancada.diario.texto();
        bancada.diario.recomeca();
        if (pelo_fio()) bancada.BD.servidor().recomeca();

        const std::string caixas = bancada.caixas();
        const bool parou = caixas.find("Situação Anómala\n\rErro: ") != std::string::npos;
        const bool tolerada = estrago.recusa ? fluxo.segue_com_recusa : estrago.reparavel;
        EXPECT_EQ(parou || tolerada, falhou || tolerada) << caixas << rasto;
        const std::string livro = bancada.empresa.livro();
        const bool ficou = !parou || (livro == completo && caixas.find(incerto) != std::string::npos);
        EXPECT_EQ(livro, ficou ? completo : antes) << caixas << rasto;
        EXPECT_EQ(documentos_perdidos(bancada.empresa, caixas), "") << caixas << rasto;
        EXPECT_EQ(linhas_sem_documento(bancada.empresa, caixas), "") << caixas << rasto;
        EXPECT_FALSE(bancada.BD.EmTransaccao()) << rasto;
        EXPECT_TRUE(fluxo.utilizavel(bancada)) << rasto;
        EXPECT_TRUE(falhou || passo > 1 || !ha_passos) << "nothing was failed";
        if (!falhou || testing::Test::HasFailure()) return;
    }
}

// Steps as the program takes them.
template <typename TBancada>
std::vector<Estrago<TBancada>> estragos_do_programa() {
    using Maneira = Diario::Maneira;
    using Depois = Diario::Depois;
    const auto estrago = [](const char* nome, Maneira maneira, Depois depois) {
        return Estrago<TBancada>{nome,
                                 [=](TBancada& bancada, int passo) {
                                     bancada.diario.falha_no = passo;
                                     bancada.diario.maneira = maneira;
                                     // The other steps fail in as many ways without automation.
                                     bancada.diario.so_do_erp = pela_automacao() && maneira != Maneira::lanca;
                                     bancada.diario.depois_disso = depois;
                                 },
                                 [](const TBancada& bancada, int) { return bancada.diario.falhou; },
                                 maneira == Maneira::recusa};
    };
    std::vector<Estrago<TBancada>> todos{
        estrago("raises", Maneira::lanca, Depois::nada),
        estrago("is done, and raises", Maneira::faz_e_lanca, Depois::nada),
        estrago("refuses, cancellations too", Maneira::recusa, Depois::anulacao_recusada),
        estrago("raises, everything after it too", Maneira::perde, Depois::tudo_lanca)};
    if (!pela_automacao()) return todos;
    for (const auto& [nome, maneira] : {std::pair{"says nothing of its failure", Maneira::sem_descricao},
                                        {"ends", Maneira::termina},
                                        {"is done, and the component ends", Maneira::faz_e_termina}})
        todos.push_back(estrago(nome, maneira, Depois::nada));
    for (const auto& [nome, maneira] : {std::pair{"numbers come as texts", Maneira::como_texto},
                                        {"numbers come as fractions", Maneira::como_real},
                                        {"nothing comes", Maneira::como_nulo}}) {
        todos.push_back(estrago(nome, maneira, Depois::nada));
        todos.back().reparavel = true; // what can still be understood, or is not needed
    }
    return todos;
}

// Requests as they reach the server, and statements inside those that are of several.
template <typename TBancada>
std::vector<Estrago<TBancada>> estragos_do_fio() {
    const auto estrago = [](const char* nome, const Avaria& avaria) {
        return Estrago<TBancada>{
            nome, [=](TBancada& bancada, int passo) { bancada.BD.servidor().avaria_no(passo, avaria); },
            [](const TBancada& bancada, int passo) { return bancada.BD.servidor().pedidos() >= passo; },
            false, true};
    };
    const auto no_meio = [](const char* nome, const Avaria& avaria) {
        return Estrago<TBancada>{
            nome,
            [=](TBancada& bancada, int passo) { bancada.BD.servidor().avaria_na_instrucao(passo, avaria); },
            [](const TBancada& bancada, int passo) { return bancada.BD.servidor().instrucoes() >= passo; },
            false, true};
    };
    using Efeito = Avaria::Efeito;
    return {
        no_meio("the connection drops inside a batch", {.efeito = Efeito::corta}),
        no_meio("victim of a deadlock inside a batch", {Efeito::vitima, 1205, "Transaction was deadlocked."}),
        no_meio("a statement of a batch is refused", {Efeito::erro, 8650, "Refused."}),
        no_meio("a statement of a batch is refused, as information", {Efeito::aviso, 8650, "Refused."}),
        no_meio("a statement of a batch is refused after a lock's time-out",
                {Efeito::erro, 1222, "Refused."}),
        estrago("the connection drops", {.efeito = Efeito::corta}),
        estrago("the connection drops before the answer", {.efeito = Efeito::corta_depois}),
        estrago("victim of a deadlock", {Efeito::vitima, 1205, "Transaction was deadlocked."}),
        estrago("refused for want of resources", {Efeito::erro, 8650, "Refused."}),
        estrago("refused after a lock's time-out", {Efeito::erro, 1222, "Refused."}),
        estrago("refused for a wrong conversion", {Efeito::erro, 245, "Refused."})};
}

template <typename TBancada>
void ciclo_de_falhas(const Fluxo<TBancada>& fluxo) {
    std::string completo;
    {
        TBancada bancada;
        fluxo.prepara(bancada);
        fluxo.age(bancada);
        completo = bancada.empresa.livro();
    }
    for (const auto& estrago : pelo_fio() ? estragos_do_fio<TBancada>() : estragos_do_programa<TBancada>())
        percorre(fluxo, estrago, completo);
}

} // namespace orvex::testes
