// What is the embedded engine's own: its language, its statements, its locks, its files.
#include "platform/sqlite/falhas.h"
#include "platform/sqlite/sessao_sqlite.h"
#include "tests/contrato/empresa_vazia.h"

#include <fstream>
#include <sqlite3.h>

namespace orvex::testes {
namespace {

TEST(Comparacao, NaoVeMaiusculasNemBrancosNoFimEOrdenaAsLetrasComAcentoJuntoDasOutras) {
    using platform::sqlite::compara_servidor;
    for (const auto& [a, b] :
         {std::pair{"Bobina", "BOBINA  "}, {"ção", "ÇÃO"}, {"", "   "}, {"ÿ", "Ÿ"}, {"š", "Š"}})
        EXPECT_EQ(compara_servidor(a, b), 0) << a << " " << b;
    for (const auto& [a, b] : {std::pair{"a", " a"}, {"é", "e"}, {"×", "÷"}, {"ab", "a b"}})
        EXPECT_NE(compara_servidor(a, b), 0) << a << " " << b;
    const std::vector<std::string> ordenados{"",      "10",     "9",      "Agua", "Água",
                                             "aguas", "Águeda", "BOBINA", "zé",   "Zea"};
    for (std::size_t i = 1; i < ordenados.size(); ++i)
        EXPECT_LT(compara_servidor(ordenados[i - 1], ordenados[i]), 0) << ordenados[i];
}

TEST(Uri, DaAoMotorOCaminhoTalComoE) {
    for (const auto& caso : tabela(R"(C:\b\c#.db => file:C:\b\c%23.db | /a/1%? => file:///a/1%25%3F | )"
                                   R"(\\s\p\x.db => file:\\s\p\x.db | //s/p/x.db => file:////s/p/x.db)"))
        EXPECT_EQ(platform::sqlite::uri_de(caso[0]), caso[1]);
}

using platform::sqlite::SessaoSQLite;

class Instrucoes : public EmpresaVazia<SessaoSQLite> {
  protected:
    Instrucoes() {
        for (const int linha : {1, 2, 3})
            junta_movimento(linha);
    }

    // Whether a reader holds the log back in either file.
    bool ha_leitor() const {
        auto outra = outra_ligacao();
        SQLite::Statement ponto(outra, "PRAGMA wal_checkpoint(TRUNCATE)");
        ponto.executeStep();
        return ponto.getColumn(0).getInt() != 0;
    }
};

TEST_F(Instrucoes, OQueOServidorRecusariaOuNaoConhecemosEUmaInstrucaoErrada) {
    for (const std::string fim :
         {" limit 1", " where Nome='aberto", " where", "; delete Clientes", " -- x", " order by 1",
          " where Nome like 'x%' escape '!'", " where Nome between 'a' and 'b'",
          " where CODIGO in (select CODIGO, Nome from Clientes)", " where CODIGO=?", " where Nome='a' 'b'"})
        EXPECT_EQ(numero_da_falha([&] { BD.Consulta("select * from Clientes" + fim); }),
                  numeros::instrucao_errada)
            << fim;
    for (const char* sql : {"", "select", "select Nada from Clientes", "select \"Nada\" from Clientes",
                            "select top x * from Clientes", "drop table Clientes", "delete Clientes",
                            "select convert(nvarchar(10),Data,103) from DocGcCab",
                            "create table t([a] [xml] null)", "alter table xel_ORVEX add Novo text"})
        EXPECT_EQ(numero_da_falha([&] { BD.Consulta(sql); }), numeros::instrucao_errada) << sql;
    EXPECT_EQ(linhas("Clientes"), 2) << "a query that is none is not run";
    EXPECT_EQ(numero_da_falha([&] { BD.Executa("Delete Nenhuma where a=1"); }), numeros::tabela_em_falta);
}

TEST_F(Instrucoes, UmaConhecidaVeAsColunasQueOutrosJuntaramEUmAlterJuntaTodasAsSuasOuNenhuma) {
    const std::size_t antes = BD.Consulta("select * from xel_ORVEX")->colunas();
    outra_ligacao().exec("ALTER TABLE xel_ORVEX ADD COLUMN b money");
    for (const bool em_transaccao : {false, true}) {
        if (em_transaccao) BD.IniciaTransaccao();
        EXPECT_EQ(
            numero_da_falha([&] { BD.Executa("ALTER TABLE  xel_ORVEX ADD a money null, b money Null"); }),
            numeros::instrucao_errada);
        EXPECT_EQ(BD.EmTransaccao(), em_transaccao);
        EXPECT_EQ(BD.Consulta("select * from xel_ORVEX")->colunas(), antes + 1);
    }
}

TEST_F(Instrucoes, UmaLinhaQueNaoSeCalculaSoFalhaAQuemALe) {
    outra_ligacao().exec("CREATE VIEW armadilha AS SELECT NumLinha, CASE NumLinha WHEN 2 THEN "
                         "abs(-9223372036854775807 - 1) ELSE NumLinha END AS v FROM xel_ORVEX_Mov");
    const auto sonda = BD.Consulta("select v from armadilha");
    EXPECT_EQ(sonda->valor(0).inteiro(), 1) << "a probe reads one row";
    EXPECT_NE(numero_da_falha([&] { sonda->move_seguinte(); }), 0);
    const auto interrompida = BD.Consulta("select v from armadilha");
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 3) << "another statement does not fail for what is put by";
    EXPECT_NE(numero_da_falha([&] { interrompida->fim(); }), 0);
}

TEST_F(Instrucoes, NenhumaTrancaDuraMaisDoQueOConjuntoASuaUltimaLinhaOuAInstrucaoSeguinte) {
    {
        const auto meio_lido = BD.Consulta("select * from xel_ORVEX_Mov");
        EXPECT_TRUE(ha_leitor()) << "or the check below proves nothing";
    }
    EXPECT_FALSE(ha_leitor());
    const auto lido = BD.Consulta("select * from xel_ORVEX_Mov");
    while (!lido->fim())
        lido->move_seguinte();
    EXPECT_FALSE(ha_leitor());
    EXPECT_EQ(lido->contagem(), 3);
    const auto interrompido = BD.Consulta("select * from xel_ORVEX_Mov");
    const auto vazio = BD.Consulta("select * from Clientes where CODIGO='nenhum'");
    EXPECT_FALSE(ha_leitor());
}

class Sessao : public EmpresaVazia<SessaoSQLite> {
  protected:
    Sessao() : EmpresaVazia(50) {} // milliseconds to wait for a lock

    // What a session that opens anew ends in.
    std::string tenta() {
        SessaoSQLite outra;
        outra.Abre(ligacao(pasta));
        return falha([&] { outra.Consulta("select * from xel_ORVEX"); });
    }
    void na_base(const char* sql) { outra_ligacao().exec(sql); }
    void no_erp(const char* sql) { outra_ligacao(platform::sqlite::ficheiro_erp).exec(sql); }
};

// The connection that was opened last, for what no session lets one do to it.
sqlite3* ultima_aberta = nullptr;
int apanha(sqlite3* aberta, char**, const sqlite3_api_routines*) {
    ultima_aberta = aberta;
    return SQLITE_OK;
}
int recusa_anular(void*, int accao, const char* qual, const char*, const char*, const char*) {
    return accao == SQLITE_TRANSACTION && std::string_view(qual) == "ROLLBACK" ? SQLITE_DENY : SQLITE_OK;
}

TEST_F(Sessao, UmaEmpresaQueNaoAbreDizPorqueENadaSeCria) {
    BD.Fecha();
    EXPECT_NE(falha([&] { BD.IniciaTransaccao(); }), "") << "a closed session refuses everything";
    EXPECT_FALSE(BD.EmTransaccao());
    std::filesystem::rename(pasta / "erp.db", pasta / "longe.db");
    EXPECT_THAT(tenta(), HasSubstr("erp.db"));
    EXPECT_FALSE(std::filesystem::exists(pasta / "erp.db"));

    std::ofstream(pasta / "erp.db") << std::string(4096, 'x');
    EXPECT_THAT(tenta(), testing::AllOf(HasSubstr("erp.db"), HasSubstr("não é uma base")));
    std::ofstream(pasta / "livro.db") << std::string(4096, 'x');
    EXPECT_THAT(tenta(), HasSubstr("livro.db"));
    std::filesystem::remove(pasta / "erp.db");
    std::filesystem::create_directory(pasta / "erp.db");
    EXPECT_THAT(tenta(), testing::AllOf(HasSubstr("erp.db"), HasSubstr("é uma pasta")));
    std::filesystem::remove_all(pasta);
    EXPECT_THAT(tenta(), HasSubstr("pasta"));
    EXPECT_FALSE(std::filesystem::exists(pasta));
}

TEST_F(Sessao, UmLivroJaComecadoPedeSeDeVoltaENuncaSeRecomeca) {
    BD.Fecha();
    const auto livro = pasta / "livro.db", longe = pasta / "longe.db";
    std::filesystem::rename(livro, longe);
    EXPECT_THAT(tenta(), testing::AllOf(HasSubstr("livro.db"), HasSubstr("cópia")));
    EXPECT_FALSE(std::filesystem::exists(livro));
    std::ofstream(livro).flush();
    EXPECT_THAT(tenta(), HasSubstr("cópia"));
    EXPECT_EQ(std::filesystem::file_size(livro), 0u);
    no_erp("PRAGMA user_version=0"); // of a company whose ledger was never begun
    EXPECT_THAT(tenta(), "A tabela xel_ORVEX não existe.");
    std::filesystem::rename(longe, livro);
    EXPECT_EQ(tenta(), "") << "as a company of before the mark";
    na_base("DROP TABLE xel_ORVEX; DROP TABLE xel_ORVEX_Mov");
    EXPECT_THAT(tenta(), HasSubstr("cópia"));
}

TEST_F(Sessao, UmFicheiroTrocadoComOProgramaAbertoNaoAceitaTransaccoes) {
    for (const char* nome : {"livro.db", "erp.db"}) {
        std::filesystem::rename(pasta / nome, pasta / "antes.db");
        std::filesystem::copy_file(pasta / "antes.db", pasta / nome);
        EXPECT_THAT(falha([&] { BD.IniciaTransaccao(); }),
                    testing::AllOf(HasSubstr(nome), HasSubstr("Feche o programa")));
        EXPECT_FALSE(BD.EmTransaccao());
        std::filesystem::rename(pasta / "antes.db", pasta / nome);
    }
    BD.IniciaTransaccao();
}

// Nothing of the ERP's, neither its lock nor what it writes meanwhile, stands in the way of a confirmation.
TEST_F(Sessao, UmaConfirmacaoComANotaDeUmArtigoGravaUmSoFicheiro) {
    BD.Fecha();
    na_base("DROP TABLE IF EXISTS ObservArtigos"); // a company of when the notes were in the ERP's file
    no_erp("ALTER TABLE Artigos ADD COLUMN Observ nvarchar(35) COLLATE SERVIDOR");
    no_erp("UPDATE Artigos SET Observ='antiga'");
    ASSERT_TRUE(BD.Abre(ligacao(pasta)));
    no_erp("UPDATE Artigos SET Observ='de ninguém'");
    auto erp = outra_ligacao(platform::sqlite::ficheiro_erp);
    BD.IniciaTransaccao();
    junta_movimento(1);
    valor("select STDISP from Artigos where CODIGO='B1'");
    erp.exec("UPDATE Artigos SET STDISP=1; BEGIN IMMEDIATE");
    const auto artigo = BD.AbreActualizavel("Select * from Artigos where Codigo='b1'");
    EXPECT_EQ(numero_da_falha([&] { artigo->define("Observ", std::string(36, 'x')); }),
              numeros::valor_truncado);
    for (const std::string& nota : {std::string("nova"), std::string(35, 'x')}) {
        artigo->define("Observ", nota);
        artigo->actualiza();
        EXPECT_EQ(valor("select Observ from Artigos where CODIGO='B1'"), Variante(nota));
    }
    artigo->define("STDISP", 9);
    EXPECT_NE(numero_da_falha([&] { artigo->actualiza(); }), 0) << "the stock is the ERP's";
    BD.ConfirmaTransaccao();
    erp.exec("ROLLBACK");
    EXPECT_TRUE(BD.Abre(ligacao(pasta)));
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 1);
    EXPECT_EQ(valor("select Observ from Artigos where CODIGO='B1'"), Variante(std::string(35, 'x')));
    EXPECT_EQ(valor("select Observ from Artigos where CODIGO='B2'"), Variante("antiga"));
}

TEST_F(Sessao, UmaTransaccaoAcabaOndeAcabaENinguemEscreveNumaQueJaNaoHa) {
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(apanha));
    ASSERT_TRUE(BD.Abre(ligacao(pasta)));
    BD.IniciaTransaccao();
    junta_movimento(1);
    sqlite3_set_authorizer(ultima_aberta, recusa_anular, nullptr);
    BD.AnulaTransaccao();
    EXPECT_FALSE(BD.EmTransaccao());
    auto outra = outra_ligacao();
    outra.exec("BEGIN IMMEDIATE"); // no lock is left
    EXPECT_THAT(falha([&] { BD.Executa("Delete xel_ORVEX"); }), HasSubstr("a ser usada por outro programa"));
    outra.exec("ROLLBACK");
    BD.IniciaTransaccao();
    junta_movimento(2);
    BD.IniciaTransaccao(); // left open by a failure: it is none of the next one's
    junta_movimento(3);
    BD.ConfirmaTransaccao();
    BD.AnulaTransaccao(); // nothing to take back is no failure
    EXPECT_THAT(falha([&] { BD.ConfirmaTransaccao(); }), HasSubstr("transacção"));
    EXPECT_EQ(linhas("xel_ORVEX_Mov where NumLinha=3"), linhas("xel_ORVEX_Mov"));

    ASSERT_TRUE(BD.Abre(ligacao(pasta)));
    sqlite3_reset_auto_extension();
    BD.IniciaTransaccao();
    junta_movimento(4);
    sqlite3_exec(ultima_aberta, "ROLLBACK", nullptr, nullptr, nullptr); // as a full disk may make it
    EXPECT_THAT(falha([&] { junta_movimento(5); }), HasSubstr("Nada ficou gravado"));
    EXPECT_THAT(falha([&] { BD.ConfirmaTransaccao(); }), HasSubstr("Nada ficou gravado"));
    EXPECT_FALSE(BD.EmTransaccao());
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 1);
}

TEST_F(Sessao, UmCommitRecusadoDeixaATransaccaoAbertaEUmDiscoCheioDizSeComoTal) {
    BD.Fecha();
    auto outra = outra_ligacao();
    outra.exec("PRAGMA journal_mode=DELETE"); // where a reader holds a commit back
    ASSERT_TRUE(BD.Abre(ligacao(pasta)));
    BD.IniciaTransaccao();
    junta_movimento(1);
    outra.exec("BEGIN; SELECT count(*) FROM xel_ORVEX_Mov");
    EXPECT_NE(falha([&] { BD.ConfirmaTransaccao(); }), "");
    EXPECT_TRUE(BD.EmTransaccao());
    BD.AnulaTransaccao();
    EXPECT_FALSE(BD.EmTransaccao());
    outra.exec("ROLLBACK");
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 0);
    outra.exec("PRAGMA max_page_count=1"); // no page beyond those in use
    const auto enche = [&] {
        outra.exec("INSERT INTO xel_ORVEX (NumSerie, Obs) VALUES ('B1', hex(zeroblob(9999)))");
    };
    EXPECT_THAT(falha([&] { platform::sqlite::com_falhas(enche); }), HasSubstr("espaço em disco"));
}

} // namespace
} // namespace orvex::testes
