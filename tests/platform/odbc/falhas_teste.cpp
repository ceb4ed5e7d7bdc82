// How a connection comes about, and what goes wrong between the program and the server: said clearly, and
// nothing half-written.
#include "platform/odbc/falhas.h"
#include "platform/odbc/texto_ligacao.h"
#include "platform/sqlite/empresa.h"
#include "tests/platform/odbc/servidor.h"

namespace orvex::testes {
namespace {

TEST(TextoDeLigacao, DizAoControladorOMesmoQueAsDefinicoesNasPalavrasDele) {
    using platform::odbc::Fala;
    const std::string inicio = "DRIVER={C};SERVER={s\\I};DATABASE={b};",
                      entrada = "UID={u};PWD={p}}w};APP={ORVEX};",
                      do_sistema = "Trusted_Connection={Yes};APP={ORVEX};";
    const struct {
        Fala fala;
        int opcao;
        const char* encriptacao;
        std::string texto;
    } casos[] = {
        {Fala::servidor, C::com_palavra_passe, "", entrada + "Encrypt=yes;TrustServerCertificate=no;"},
        {Fala::servidor, C::do_sistema, "nao", do_sistema + "Encrypt=no;TrustServerCertificate=yes;"},
        {Fala::servidor, C::do_sistema, "Sem_Certificado",
         do_sistema + "Encrypt=yes;TrustServerCertificate=yes;"},
        {Fala::freetds, C::do_sistema, "sim",
         do_sistema + "TDS_Version=7.4;ClientCharset=UTF-8;Encryption=require;"},
    };
    for (const auto& caso : casos) {
        const C ligacao{.opcao = caso.opcao,
                        .servidor = "s\\I",
                        .base = "b",
                        .utilizador = "u",
                        .palavra_passe = "p}w",
                        .controlador = "C",
                        .encriptacao = caso.encriptacao};
        EXPECT_EQ(platform::odbc::texto_odbc(ligacao.constroi(), caso.fala), inicio + caso.texto);
    }
}

TEST_F(Servidor, UmaLigacaoRecusadaDizPorqueENuncaComQuePalavraPasse) {
    using std::tuple;
    constexpr const char *credenciais = "não aceitou o utilizador ou a palavra-passe",
                         *ligar = "Não foi possível ligar ao servidor";
    for (const auto& [qual, valor, causa] :
         {tuple{&C::palavra_passe, "xSEGREDOx", credenciais},
          {&C::utilizador, "ninguém", credenciais},
          {&C::base, "OUTRA", "não abriu a base de dados"},
          {&C::servidor, "127.0.0.1,1", ligar},
          {&C::servidor, "nenhum.invalid", ligar},
          {&C::controlador, "Inexistente", "O controlador ODBC indicado nas definições não está instalado"},
          {&C::encriptacao, "", ligar}, // asked for, and not offered
          {&C::encriptacao, "talvez", "A definição Encriptacao tem de ser"},
          {&C::palavra_passe, "xSEGREDOx};Server={x", "não aceita os caracteres «};»"}}) {
        SessaoODBC outra({.ligacao = 2});
        EXPECT_FALSE(outra.Abre(ligacao_com({{qual, valor}})));
        EXPECT_THAT(falha([&] { outra.Consulta("select NumSerie from  xel_ORVEX"); }),
                    AllOf(HasSubstr(causa), Not(HasSubstr("SEGREDO")), Not(HasSubstr("segredo"))));
    }
    EXPECT_THAT(platform::odbc::falha_de({{"28000", 18456, "A"}, {"42000", 4060, "B"}}).what(),
                HasSubstr("de dados: não existe, ou"));
    for (const char* palavra : {"a;b{c}d='e\"f} ;g", "}", "{a}", ";{}='\"", "ção€😀"}) {
        servidor.palavra_passe = palavra;
        EXPECT_TRUE(SessaoODBC().Abre(ligacao(servidor, palavra))) << palavra;
    }
}

TEST_F(Servidor, QueSeCalaEDeixadoNoTempoDeUmaLigacao) {
    for (const bool na_entrada : {true, false}) {
        servidor.cala_se = na_entrada;
        servidor.avaria_no(1, {.efeito = Efeito::surdez, .milissegundos = 4'000}); // once logged in
        SessaoODBC outra({.ligacao = 1});
        const auto antes = std::chrono::steady_clock::now();
        EXPECT_FALSE(outra.Abre(ligacao(servidor)));
        EXPECT_LT(std::chrono::steady_clock::now() - antes, std::chrono::milliseconds(2'500));
        EXPECT_THAT(falha([&] { outra.Executa("Delete xel_ORVEX"); }), HasSubstr("não respondeu a tempo"));
    }
}

TEST_F(Servidor, OQueSoUmPodeFazerSobreviveAUmaLigacaoPerdidaEDepoisLarga) {
    SessaoODBC outra({.bloqueio = 1});
    ASSERT_TRUE(outra.Abre(ligacao(servidor)));
    const auto tenta = [&] { return falha([&] { outra.EmExclusivo([] {}); }); };
    BD.EmExclusivo([&] {
        avaria(Efeito::corta);
        usa();
        EXPECT_THAT(tenta(), HasSubstr("por outro posto")) << "the new connection has it too";
    });
    EXPECT_EQ(tenta(), "");
    EXPECT_EQ(falha([&] { BD.EmExclusivo([&] { avaria(Efeito::corta_depois); }); }), "")
        << "the work was done";
    EXPECT_EQ(tenta(), "");
}

TEST_F(Servidor, OsErrosDoServidorTemOsNumerosQueAsRegrasConhecemEOTextoDele) {
    for (const auto& [nativo, numero, causa] :
         {std::tuple{208, numeros::tabela_em_falta, "Falta uma tabela"},
          {207, numeros::instrucao_errada, "Falta uma coluna"},
          {102, numeros::instrucao_errada, "A instrução SQL tem um erro"},
          {2627, numeros::chave_violada, "mesma chave"},
          {515, numeros::chave_violada, "obrigatório"},
          {8152, numeros::valor_truncado, "não cabe"},
          {229, numeros::sem_permissao, "não tem permissão"},
          {9002, numeros::falha_geral, "Não há espaço"},
          {50000, numeros::instrucao_errada, "recusou a instrução"}}) {
        avaria(Efeito::erro, nativo);
        const Falha apanhada = falha_de([&] { usa(); });
        EXPECT_EQ(apanhada.numero(), numero) << nativo << apanhada.what();
        EXPECT_THAT(apanhada.what(), AllOf(HasSubstr(causa), HasSubstr("(The server's text.)")));
    }
    // What another program stands in the way of is tried again, where nothing can come of it but rows.
    for (const int nativo : {1205, 1222}) {
        avaria(Efeito::erro, nativo);
        usa();
        avaria(Efeito::erro, nativo);
        EXPECT_THAT(falha([&] { apaga(); }), HasSubstr("outro posto"));
    }
}

TEST_F(Servidor, UmaLigacaoPerdidaEntreConfirmacoesReabreSemNinguemDarPorIssoSalvoORegisto) {
    int engolidas = 0;
    BD.define_ao_engolir([&](const std::exception&) { ++engolidas; });
    ASSERT_TRUE(BD.Abre(ligacao(servidor)));
    const auto meio_lido = BD.Consulta("select Artigo from xel_ORVEX_Mov");
    for (const Efeito efeito : {Efeito::corta, Efeito::corta_depois}) {
        avaria(efeito);
        usa();
        avaria(efeito);
        BD.IniciaTransaccao();
        EXPECT_TRUE(BD.EmTransaccao());
        BD.AnulaTransaccao();
    }
    EXPECT_EQ(meio_lido->contagem(), 8) << "what was put by is still there";
    EXPECT_EQ(engolidas, 4);
}

TEST_F(Servidor, OQueOServidorDesfezDizSeENadaSeEscreveSoDepois) {
    for (const auto& [efeito, causa] : {std::pair{Efeito::corta, "perdeu-se"},
                                        {Efeito::corta_depois, "perdeu-se"},
                                        {Efeito::vitima, "deixar passar a de outro posto"}}) {
        BD.IniciaTransaccao();
        junta("B1");
        avaria(efeito);
        EXPECT_THAT(falha([&] { junta("B2"); }),
                    AllOf(HasSubstr(causa), HasSubstr("Nada do que estava a ser gravado ficou")));
        EXPECT_THAT(falha([&] { junta("B3"); }), HasSubstr("anulada pelo servidor"));
        EXPECT_THAT(falha([&] { apaga(); }), HasSubstr("anulada pelo servidor"));
        EXPECT_THAT(falha([&] { BD.ConfirmaTransaccao(); }), HasSubstr("anulada pelo servidor"));
        EXPECT_FALSE(BD.EmTransaccao());
        EXPECT_EQ(series(), "");
        usa();
    }
}

TEST_F(Servidor, UmaTransaccaoQueAcabouSemOProgramaSaberNotaSeAntesDaEscritaSeguinte) {
    BD.IniciaTransaccao();
    junta("B1");
    BD.Executa("IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION"); // as a trigger's failure does
    avaria(Efeito::erro, 3609);
    EXPECT_THAT(falha([&] { junta("B2"); }), HasSubstr("The server's text."));
    EXPECT_THAT(falha([&] { junta("B3"); }), HasSubstr("anulada pelo servidor"));
    EXPECT_FALSE(BD.EmTransaccao());
    EXPECT_NE(falha([&] { BD.ConfirmaTransaccao(); }), "") << "there is nothing to confirm";

    // A rollback that the server refuses is done by closing the connection, as where it does not tell
    // whether a transaction is open.
    for (const bool anula : {true, false}) {
        BD.IniciaTransaccao();
        junta("B1");
        avaria(Efeito::erro, 50000);
        if (anula) BD.AnulaTransaccao();
        EXPECT_FALSE(BD.EmTransaccao());
        insere(empresa.outra(), "xel_ORVEX", {"NumSerie"}, {{"B4"}});
        BD.IniciaTransaccao();
        BD.ConfirmaTransaccao();
    }
    EXPECT_EQ(series(), "B4; B4");
}

TEST_F(Servidor, UmaConfirmacaoFalhaSeNaoFicouFeitaEDizQuandoNinguemPodeSaber) {
    const std::string feita, nada = "Nada do que estava a ser gravado ficou", nao_se_sabe = "Não se sabe";
    enum Escreve { so_apaga, junta_uma, junta_e_apaga }; // the row of the last proves nothing
    const struct {
        Escreve escreve;
        Avaria avaria; // of COMMIT; the number of the last row is asked for first
        std::string texto;
        bool aberta = false; // the transaction, afterwards
        bool servidor_volta = true;
    } casos[] = {
        {junta_uma, {Efeito::corta}, nada},
        {junta_uma, {Efeito::corta_depois}, feita},
        {junta_uma, {Efeito::corta_depois}, nao_se_sabe, false, false},
        {so_apaga, {Efeito::corta_depois}, nao_se_sabe},
        {so_apaga, {Efeito::corta}, nao_se_sabe},
        {junta_e_apaga, {Efeito::corta_depois}, nao_se_sabe},
        {junta_uma, {Efeito::demora, 0, "", 2'000}, nada},
        {junta_uma, {Efeito::surdez, 0, "", 2'500}, feita}, // later than was waited for
        {junta_uma, {Efeito::vitima, 0, "No."}, nada},
        {junta_uma, {Efeito::erro, 1222, "No."}, "outro posto", true},
        {junta_uma, {Efeito::erro, 3902, "No."}, "(No.)", true},
    };
    for (const auto& [escreve, avaria, texto, aberta, volta] : casos) {
        SCOPED_TRACE(texto + " " + std::to_string(avaria.numero));
        const std::string antes = series();
        BD.IniciaTransaccao();
        if (escreve != so_apaga) junta("B1");
        if (escreve != junta_uma) apaga();
        servidor.avaria_no(escreve == so_apaga ? 1 : 2, avaria);
        if (!volta) servidor.palavra_passe = "outra";
        const std::string dito = falha([&] { BD.ConfirmaTransaccao(); });
        servidor.palavra_passe = "segredo";
        EXPECT_THAT(dito, HasSubstr(texto));
        EXPECT_EQ(dito.empty(), texto == feita);
        EXPECT_EQ(dito.find(nada) != std::string::npos, texto == nada);
        EXPECT_EQ(BD.EmTransaccao(), aberta);
        BD.AnulaTransaccao();
        const std::string com_ela = antes.empty() ? "B1" : antes + "; B1";
        if (texto != nao_se_sabe) {
            EXPECT_EQ(series(), texto == feita ? com_ela : antes);
        }
        usa();
    }
}

TEST_F(Servidor, QuemVemDepoisEsperaESabeQueOutroPostoEstaAGravar) {
    SessaoODBC outra({.instrucao = 1, .bloqueio = 2}); // the lock is waited for first
    ASSERT_TRUE(outra.Abre(ligacao(servidor)));
    BD.IniciaTransaccao();
    outra.IniciaTransaccao(); // beginning locks nothing
    BD.Tranca();
    EXPECT_THAT(falha([&] { outra.Executa("Delete xel_ORVEX"); }), HasSubstr("por outro posto"));
    outra.AnulaTransaccao();
    junta("B1");
    EXPECT_EQ(outra.Consulta("select count(*) from xel_ORVEX")->valor(0).inteiro(), 0)
        << "readers do not wait";
    BD.ConfirmaTransaccao();
    for (const auto& [resposta, texto] : {std::pair{-2, "deixar passar a de outro posto"},
                                          {-3, "deixar passar"},
                                          {-999, "getapplock: -999"}}) {
        BD.IniciaTransaccao();
        avaria(Efeito::tranca, resposta);
        EXPECT_THAT(falha([&] { BD.Tranca(); }), HasSubstr(texto));
        BD.AnulaTransaccao();
    }
}

TEST_F(Servidor, AsInstrucoesVaoALetraEAsLinhasGravamSeComValoresComTipo) {
    BD.Consulta("select  Artigo from xel_ORVEX_Mov where Qtd>0 and NumDoc= 123and NumLinha=1");
    const auto linha = BD.AbreActualizavel("Select * from xel_ORVEX_MOV where NumDoc=123 and NumLinha=1");
    linha->define("Qtd", m("1.25"));
    linha->actualiza();
    junta("B'1");
    const auto textos = servidor.textos();
    EXPECT_THAT(textos, testing::Contains(
                            "select  Artigo from xel_ORVEX_Mov where Qtd>0 and NumDoc= 123and NumLinha=1"));
    EXPECT_EQ(textos.at(textos.size() - 4),
              "UPDATE xel_ORVEX_MOV SET [Qtd]=@P1 WHERE [Ano]=@P2 AND [TpDoc]=@P3 AND [NumDoc]=@P4 AND "
              "[SerieDoc]=@P5 AND [NumLinha]=@P6 AND [Data]=@P7 AND [Artigo] COLLATE Latin1_General_BIN2=@P8 "
              "AND [Cliente] COLLATE Latin1_General_BIN2=@P9 AND [Descritivo] COLLATE Latin1_General_BIN2="
              "@P10 AND [QtdOrig]=@P11 AND [Qtd]=@P12 AND [Origem] IS NULL AND [PesoLiquido]=@P13 AND "
              "[PesoBruto]=@P14 | 1.25, 2019, 'FA', 123, 1, 1, 2019-03-01 00:00:00, 'BOB''1', 'CL''1', "
              "'Bobina d''aço', 8, 2.5, 2.5, 2.6");
    EXPECT_EQ(textos.back(), "INSERT INTO xel_ORVEX([NumSerie]) VALUES (@P1) | 'B''1'");

    // Without a primary key, another one will do that has no nulls.
    platform::sqlite::abre_base(empresa.pasta() / "livro.db")
        .exec("CREATE TABLE u_so (A int NOT NULL, B int); CREATE UNIQUE INDEX i_so ON u_so (A);"
              "CREATE TABLE u_nulos (A int, B int); CREATE UNIQUE INDEX i_nulos ON u_nulos (A);"
              "INSERT INTO u_so VALUES (1, 1); INSERT INTO u_nulos VALUES (1, 1)");
    for (const auto& [tabela, causa] :
         {std::pair{"u_so", ""}, {"u_nulos", "O registo não pode ser alterado sem a sua chave."}}) {
        const auto uma = BD.AbreActualizavel(std::string("Select * from ") + tabela);
        uma->define("B", 2);
        EXPECT_EQ(falha([&] { uma->actualiza(); }), causa);
    }
    EXPECT_EQ(empresa.linhas("select B from u_so"), "2");
}

} // namespace
} // namespace orvex::testes
