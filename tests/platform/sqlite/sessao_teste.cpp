#include "platform/sqlite/falhas.h"
#include "tests/contrato/empresa_vazia.h"

#include <fstream>
#include <sqlite3.h>
#include <sys/stat.h>

namespace orvex::testes {
namespace {

using platform::sqlite::SessaoSQLite;

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
    mkfifo((pasta / "erp.db").c_str(), 0600);
    EXPECT_THAT(tenta(), testing::AllOf(HasSubstr("erp.db"), HasSubstr("não é um ficheiro comum")));
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
