// Enquiries asked in the background: who is told what, when, and when no more.
#include "platform/qt/consulta/pergunta.h"
#include "platform/sqlite/sessao_sqlite.h"
#include "tests/qt/apoio_qt.h"

#include <atomic>
#include <future>

namespace orvex::testes {
namespace {

using namespace livro::consultas;
using namespace platform::qt::consulta;
using namespace testing;

struct FonteDeTeste : Fonte {
    std::atomic<int> vezes = 1; // that what is asked is answered from the start
    bool responde(const Consulta& consulta, Destino& destino,
                  const std::function<void()>& recomeca) override {
        platform::sqlite::SessaoSQLite nenhuma;
        const livro::Casa casa{};
        for (int vez = 1; vez < vezes; ++vez) {
            consulta({nenhuma, casa, {}}, destino);
            recomeca();
        }
        return consulta({nenhuma, casa, {}}, destino);
    }
};

struct APergunta : Test, Ouvinte {
    std::shared_ptr<FonteDeTeste> fonte = std::make_shared<FonteDeTeste>();
    std::unique_ptr<Pergunta> pergunta = std::make_unique<Pergunta>(fonte, *this);
    std::string ditos, falha;
    std::size_t lidas = 0, maior_peca = 0;
    std::function<void()> ao_ler = [] {};

    ~APergunta() override {
        pergunta.reset();
        EXPECT_TRUE(espera([this] { return fonte.use_count() == 1; })) << "uma linha ficou para trás";
    }
    static bool espera(const std::function<bool()>& ate) { return QTest::qWaitFor(ate, 20'000); }
    bool acaba_com(const std::string& esperado) {
        return espera([&] { return ditos.find('.') != std::string::npos; }) && ditos == esperado;
    }

    void comeca() override {
        ditos += "<";
        lidas = 0;
    }
    void vista(const Vista& /*esta*/) override { ditos += "v"; }
    void quadro(const Quadro& /*este*/) override { ditos += "q"; }
    void linhas(std::vector<Linha> estas) override {
        for (const Linha& esta : estas)
            EXPECT_EQ(esta[0].inteiro(), static_cast<std::int64_t>(lidas++));
        maior_peca = std::max(maior_peca, estas.size());
        if (!ditos.ends_with('l')) ditos += "l";
        const auto agora = ao_ler; // which it may change
        agora();
    }
    void total(const Linha& /*este*/) override { ditos += "t"; }
    void acaba(const Fim& fim) override {
        EXPECT_FALSE(pergunta->a_meio());
        ditos += "." + std::to_string(static_cast<int>(fim.como));
        falha = fim.falha;
    }

    // The answer of so many rows, and then what `depois` does.
    static Consulta conta(std::int64_t quantas, std::function<bool(Destino&)> depois = {}) {
        return [=](const Meios& /*meios*/, Destino& d) {
            d.vista({});
            d.quadro({});
            for (std::int64_t i = 0; i < quantas; ++i)
                if (!d.linha({i})) return true;
            if (depois) return depois(d);
            d.total({});
            return true;
        };
    }
};

TEST_F(APergunta, ContaPorOrdemEmPecasLimitadasComAJanelaLivre) {
    int voltas = 0, pecas = 0;
    QTimer relogio;
    QObject::connect(&relogio, &QTimer::timeout, [&] { ++voltas; });
    relogio.start(0);
    ao_ler = [&] { ++pecas; };
    pergunta->pergunta(conta(300'000));
    EXPECT_EQ(ditos, "");
    EXPECT_TRUE(acaba_com("<vqlt.0")) << ditos;
    EXPECT_EQ(lidas, 300'000U);
    EXPECT_LE(maior_peca, 10'000U);
    EXPECT_GE(voltas, pecas / 2);
}

TEST_F(APergunta, DizComoAcabouEORecomeco) {
    pergunta->pergunta([](const auto&, auto&) { return false; });
    EXPECT_TRUE(acaba_com("<.1")) << ditos;
    ditos.clear();
    pergunta->pergunta(conta(1, [](Destino&) -> bool { throw base::Falha("O servidor caiu."); }));
    EXPECT_TRUE(acaba_com("<vql.3")) << ditos;
    EXPECT_EQ(falha, "O servidor caiu.");
    ditos.clear();
    fonte->vezes = 2;
    std::promise<void> leu;
    bool primeira = true;
    ao_ler = [&] {
        if (std::exchange(primeira, false)) leu.set_value();
    };
    pergunta->pergunta(conta(3, [leram = leu.get_future().share()](Destino&) {
        leram.wait();
        return true;
    }));
    EXPECT_TRUE(acaba_com("<vql<vql.0")) << ditos;
    EXPECT_EQ(lidas, 3U);
}

// One hangs on a server, one has more to tell than anybody takes: neither keeps the next one waiting, and
// what they still say, or how they end, reaches nobody.
TEST_F(APergunta, DesisteSemEsperarPelaBaseDeDados) {
    std::promise<void> solta;
    std::atomic<bool> continuou = false;
    pergunta->pergunta(conta(2, [&](Destino& d) -> bool { // both rows are told while it hangs
        solta.get_future().wait();
        continuou = d.prossegue() || d.linha({std::int64_t{2}});
        throw base::Falha("tarde");
    }));
    ASSERT_TRUE(espera([this] { return lidas == 2; }));
    pergunta->desiste();
    pergunta->desiste();
    EXPECT_EQ(ditos, "<vql.2");
    ao_ler = [this] { // from within what is told of one, another
        ditos.clear();
        ao_ler = [] {};
        pergunta->pergunta(conta(5));
    };
    pergunta->pergunta(conta(10'000'000));
    ASSERT_TRUE(espera([this] { return ditos.ends_with('.' + std::to_string(0)); }));
    EXPECT_EQ(ditos, "<vqlt.0");
    EXPECT_EQ(lidas, 5U);
    solta.set_value();
    EXPECT_TRUE(espera([this] { return fonte.use_count() == 2; })) << "só a pergunta a tem";
    EXPECT_FALSE(continuou);
    EXPECT_EQ(ditos, "<vqlt.0");
}

TEST_F(APergunta, DesistidaAntesDaPrimeiraLinhaSoDizOFim) {
    std::promise<void> solta;
    pergunta->pergunta([ate = solta.get_future().share()](const auto&, auto&) {
        ate.wait();
        return true;
    });
    QTest::qWait(100);
    pergunta->desiste();
    EXPECT_EQ(ditos, ".2");
    solta.set_value();
}

TEST_F(APergunta, AcabadaAMeioNadaMaisDiz) {
    ao_ler = [this] { pergunta.reset(); };
    pergunta->pergunta(conta(10'000'000));
    EXPECT_TRUE(espera([this] { return fonte.use_count() == 1; }));
    EXPECT_EQ(ditos, "<vql");
}

} // namespace
} // namespace orvex::testes
