// Steps: what is read ahead and written behind differs in nothing from what is asked and done one by one.
#include "tests/contrato/empresa_vazia.h"

namespace orvex::testes {
namespace {

class Passos : public Contrato {
  protected:
    using Passo = std::function<void()>;

    std::string lidas(const std::string& sql) {
        std::string todas;
        const auto conjunto = BD.Consulta(sql);
        for (; !conjunto->fim(); conjunto->move_seguinte())
            for (std::size_t i = 0; i < conjunto->colunas(); ++i)
                todas += std::string(conjunto->nome_coluna(i)) + "=" + conjunto->valor(i).texto() + " ";
        return todas + std::to_string(conjunto->contagem());
    }
    std::string resposta(const std::string& sql) {
        std::string texto;
        const std::string erro = falha([&] { texto = lidas(sql); });
        return erro.empty() ? texto : std::to_string(numero_da_falha([&] { BD.Consulta(sql); })) + erro;
    }
    std::unique_ptr<ConjuntoRegistos> linha(int numero) {
        return BD.AbreActualizavel("Select * from xel_ORVEX_MOV where NumLinha=" + std::to_string(numero));
    }
    void muda(int numero, const char* qtd) {
        const auto conjunto = linha(numero);
        conjunto->define("Qtd", m(qtd));
        conjunto->actualiza();
    }
    std::string quantidades() { return lidas("select NumLinha, Qtd from xel_ORVEX_MOV order by NumLinha"); }
};

TEST_F(Passos, OQueSeAnunciouTemAMesmaRespostaPorQualquerOrdemDuasVezesOuNenhumaEComUmaErradaNoMeio) {
    for (const int numero : {1, 2, 3})
        junta_movimento(numero, {{"Descritivo", "a;b--c /*'€ ?"}, {"Data", DataHora{2024, 1, numero}}});
    for (const std::string errada :
         {"select Nada from Artigos", "select * from Nenhuma", "select Nome from Artigos where CODIGO='B1",
          "select CODIGO from Artigos;", "selectx", "select CODIGO from Artigos -- B1",
          "select [CODIGO from Artigos", "select Nome from Artigos where CODIGO=?", "\xFF"}) {
        std::vector<std::string> perguntas{
            "select * from xel_ORVEX_Mov order by NumLinha",
            "Select top 1 NNumDoc as 'No; Doc.' from DocGcCab order by Data desc",
            errada,
            "select Nome from Clientes where CODIGO='C1'';'",
            "select * from xel_ORVEX_Mov where Ano=-1",
            "select Nome from Clientes where Nome='D''Ávila & Filhos'",
        };
        std::vector<std::string> sem_passo;
        for (const std::string& pergunta : perguntas)
            sem_passo.push_back(resposta(pergunta));
        BD.EmPasso(perguntas, [&] {
            for (const int vez : {1, 2})
                for (std::size_t i = perguntas.size(); i-- > 0;)
                    EXPECT_EQ(resposta(perguntas[i]), sem_passo[i]) << vez;
        });
        BD.EmPasso(perguntas, [] {});
        EXPECT_EQ(linhas("Artigos"), 2);
    }
}

TEST_F(Passos, AsEscritasVeemSeUmasAsOutrasEAsLeiturasVeemAsEscritas) {
    const std::string pergunta = "Select * from xel_ORVEX_MOV where NumLinha=1";
    junta_movimento(1);
    BD.IniciaTransaccao();
    BD.Tranca();
    BD.EmPasso({pergunta, pergunta}, [&] {
        const auto primeira = linha(1);
        for (const char* qtd : {"1.4", "1.3"}) {
            primeira->define("Qtd", m(qtd));
            primeira->actualiza();
        }
        EXPECT_EQ(primeira->valor("Qtd"), Variante(m("1.3")));
        const auto segunda = linha(1); // of one text with the first, and both alive
        EXPECT_EQ(segunda->valor("Qtd"), Variante(m("1.3")));
        segunda->define("Qtd", m("1.2"));
        junta_movimento(2);
        BD.EmPasso({"select NumLinha, Qtd from xel_ORVEX_MOV order by NumLinha"}, [&] {
            EXPECT_EQ(quantidades(), "NumLinha=1 Qtd=1.3 NumLinha=2 Qtd=1.5 2");
            segunda->actualiza();
        });
        BD.Executa("Delete xel_ORVEX_MOV where NumLinha=2");
        junta_movimento(2, {{"Qtd", m("7")}});
        EXPECT_EQ(quantidades(), "NumLinha=1 Qtd=1.2 NumLinha=2 Qtd=7 2");
        BD.Executa("Delete xel_ORVEX_MOV where NumLinha=1");
    });
    EXPECT_EQ(quantidades(), "NumLinha=2 Qtd=7 1");
    BD.EmPasso({}, [&] {
        muda(2, "8");
        BD.ConfirmaTransaccao();
        muda(2, "9");
    });
    BD.IniciaTransaccao();
    EXPECT_EQ(quantidades(), "NumLinha=2 Qtd=9 1");
    BD.EmPasso({}, [&] {
        muda(2, "10");
        BD.AnulaTransaccao();
        junta_movimento(3);
    });
    EXPECT_EQ(quantidades(), "NumLinha=2 Qtd=9 NumLinha=3 Qtd=1.5 2");
}

TEST_F(Passos, OQueSeAnunciouDuasVezesVeOQueSeFezEntreAsDuas) {
    const std::string pergunta = "select Qtd from xel_ORVEX_MOV where NumLinha=1";
    const Passo altera = [this] { BD.Executa("Update xel_ORVEX_MOV set Qtd=4 where NumLinha=1"); };
    const Passo altera_ja = [this] { // a text that goes alone to where texts go together
        const std::string fim = pelo_fio() || no_servidor() ? ";" : "";
        BD.Executa("Update xel_ORVEX_MOV set Qtd=4 where NumLinha=1" + fim);
    };
    const std::pair<Passo, std::string> casos[] = {
        {[] {}, "2"},
        {altera, "4"},
        {altera_ja, "4"},
        {[&] { BD.EmPasso({}, altera); }, "4"},
        {[&] { BD.EmPasso({}, altera_ja); }, "4"},
        {[&] { BD.EmPasso({}, [&] { BD.AnulaTransaccao(); }); }, "1.5"}};
    for (const auto& [faz, depois] : casos) {
        BD.Executa("Delete xel_ORVEX_MOV");
        junta_movimento(1);
        BD.IniciaTransaccao();
        muda(1, "2");
        BD.EmPasso({pergunta, pergunta}, [&, entre = faz, qtd = depois] {
            EXPECT_EQ(lidas(pergunta), "Qtd=2 1");
            entre();
            EXPECT_EQ(lidas(pergunta), "Qtd=" + qtd + " 1");
        });
        BD.AnulaTransaccao();
    }
}

TEST_F(Passos, UmaFalhaNoMeioEADaSuaInstrucaoENadaDoPassoFicaNumaTransaccaoAnulada) {
    const struct {
        Passo escreve;
        std::int32_t numero;
        const char* onde; // in its failure, on an engine that tells it later
    } casos[] = {
        {[this] { junta_movimento(1); }, numeros::chave_violada, "NumLinha=1"},
        {[this] {
             const auto antes = linha(2);
             muda(2, "5");
             antes->define("Qtd", m("6"));
             antes->actualiza();
         },
         numeros::registo_alterado, "NumLinha=2"},
        {[this] {
             junta_movimento(7, {{"Descritivo", std::string(81, 'x')}});
         },
         numeros::valor_truncado, ""},
        {[this] { BD.Executa("Delete Nenhuma"); }, numeros::tabela_em_falta, ""},
        {[this] { BD.Executa("Delete xel_ORVEX_MOV where Nada=1"); }, numeros::instrucao_errada, ""},
        {[this] { BD.Executa("Delete xel_ORVEX_MOV where Artigo='"); }, numeros::instrucao_errada, ""},
        {[] { throw Falha("Da regra.", 99); }, 99, "Da regra."},
    };
    for (const auto& [escreve, numero, onde] : casos)
        for (const bool em_transaccao : {true, false}) {
            BD.Executa("Delete xel_ORVEX_MOV");
            for (const int linha : {1, 2})
                junta_movimento(linha, {{"Descritivo", std::to_string(numero)}});
            if (em_transaccao) BD.IniciaTransaccao();
            const Falha apanhada = falha_de([&, faz = escreve] {
                BD.EmPasso({}, [&] {
                    muda(1, "4");
                    junta_movimento(3);
                    faz();
                    junta_movimento(4);
                });
            });
            EXPECT_EQ(apanhada.numero(), numero) << apanhada.what();
            if (pelo_fio() || no_servidor()) { // which tell it later
                EXPECT_THAT(apanhada.what(), HasSubstr(onde));
            }
            if (em_transaccao) BD.AnulaTransaccao();
            EXPECT_FALSE(BD.EmTransaccao());
            EXPECT_EQ(linhas("xel_ORVEX_MOV where NumLinha<4 and (Qtd=4 or NumLinha=3)"),
                      em_transaccao ? 0 : 2)
                << numero;
        }
}

TEST_F(Passos, MaisDoQueCabeNumPedidoFicaInteiro) {
    std::vector<std::string> perguntas;
    for (int i = 1; i <= 1100; ++i)
        perguntas.push_back("select NumLinha from xel_ORVEX_MOV where NumLinha=" + std::to_string(i) +
                            std::string(i == 7 ? 300'000 : 0, ' '));
    BD.IniciaTransaccao();
    BD.EmPasso(perguntas, [&] {
        for (int i = 1; i <= 1100; ++i)
            if (BD.Consulta(perguntas[static_cast<std::size_t>(i) - 1])->fim()) junta_movimento(i);
    });
    BD.EmPasso(perguntas, [&] {
        for (int i = 1; i <= 1100; ++i)
            EXPECT_EQ(BD.Consulta(perguntas[static_cast<std::size_t>(i) - 1])->valor(0), Variante(i));
    });
    BD.ConfirmaTransaccao();
    EXPECT_EQ(linhas("xel_ORVEX_MOV"), 1100);
}

// Once its columns are known, a set is opened only for what is read of it.
TEST_F(Passos, UmConjuntoASoSeAcrescentarEOMesmoQueUmQueSeLe) {
    for (const int numero : {1, 2}) {
        const auto conjunto = BD.AbreActualizavel("Select * from xel_ORVEX_MOV where NumDoc=7");
        EXPECT_EQ(conjunto->colunas(), 14u);
        conjunto->acrescenta();
        EXPECT_EQ(numero_da_falha([&] { conjunto->define("Nada", 1); }), numeros::instrucao_errada);
        for (const auto& [nome, dado] : std::map<std::string, Variante>{
                 {"Ano", 2024}, {"TpDoc", "FA"}, {"NumDoc", 7}, {"SerieDoc", 1}, {"NumLinha", numero}})
            conjunto->define(nome, dado);
        EXPECT_EQ(conjunto->valor("NumLinha"), Variante(numero));
        conjunto->actualiza();
    }
    for (const auto& faz :
         {std::function<void(ConjuntoRegistos&)>([](auto& c) { EXPECT_EQ(c.contagem(), 2); }),
          {[](auto& c) { EXPECT_FALSE(c.fim()); }},
          {[](auto& c) { c.move_seguinte(); }},
          {[](auto& c) { EXPECT_EQ(c.valor("NumLinha"), Variante(1)); }},
          {[](auto& c) { c.define("Qtd", 1); }}}) {
        const auto conjunto = BD.AbreActualizavel("Select * from xel_ORVEX_MOV where NumDoc=7");
        faz(*conjunto);
        EXPECT_EQ(conjunto->contagem(), 2);
        conjunto->define("Qtd", 3);
        conjunto->actualiza();
    }
    EXPECT_EQ(linhas("xel_ORVEX_MOV where Qtd=3"), 2);
    if (no_servidor()) return; // whose tables stay
    const auto vivo = BD.AbreActualizavel("Select * from xel_ORVEX_MOV where NumDoc=7");
    BD.Executa("ALTER TABLE xel_ORVEX_MOV ADD UmaNova int null, OutraNova int null");
    vivo->acrescenta(); // with the columns it knows
    EXPECT_EQ(BD.AbreActualizavel("Select * from xel_ORVEX_MOV where NumDoc=7")->colunas(), 16u);
}

} // namespace
} // namespace orvex::testes
