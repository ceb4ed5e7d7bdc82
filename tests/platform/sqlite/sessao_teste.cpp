#include "platform/sqlite/falhas.h"
#include "tests/contrato/empresa_vazia.h"

#include <fstream>

namespace orvex::testes {
namespace {

using platform::sqlite::SessaoSQLite;

class Sessao : public EmpresaVazia<SessaoSQLite> {
  protected:
    Sessao() : EmpresaVazia(50) {} // milliseconds to wait for a lock

    // The text of the general failure a procedure ends in, empty for none.
    template <typename Procedimento>
    static std::string texto_da_falha(Procedimento procedimento) {
        try {
            procedimento();
        } catch (const Falha& falha) {
            EXPECT_EQ(falha.numero(), numeros::falha_geral);
            return falha.what();
        }
        return {};
    }
};

TEST_F(Sessao, a_company_that_cannot_be_opened_says_why_and_nothing_is_created) {
    BD.Fecha();
    EXPECT_NE(texto_da_falha([&] { BD.IniciaTransaccao(); }), "") << "a closed session refuses everything";
    EXPECT_FALSE(BD.EmTransaccao());
    const auto tenta = [&] {
        SessaoSQLite outra;
        EXPECT_FALSE(outra.Abre(ligacao(pasta)));
        return texto_da_falha([&] { outra.Executa("Delete xel_ORVEX"); });
    };
    std::filesystem::rename(pasta / "erp.db", pasta / "longe.db");
    EXPECT_THAT(tenta(), HasSubstr("erp.db"));
    EXPECT_FALSE(std::filesystem::exists(pasta / "erp.db"));

    std::ofstream(pasta / "erp.db") << std::string(4096, 'x');
    EXPECT_THAT(tenta(), testing::AllOf(HasSubstr("erp.db"), HasSubstr("não é uma base")));
    std::ofstream(pasta / "livro.db") << std::string(4096, 'x');
    EXPECT_THAT(tenta(), HasSubstr("livro.db"));
    std::filesystem::remove_all(pasta);
    EXPECT_THAT(tenta(), HasSubstr("pasta"));
    EXPECT_FALSE(std::filesystem::exists(pasta));
}

TEST_F(Sessao, a_lock_held_by_another_program_is_reported_as_such) {
    auto outra = outra_ligacao();
    outra.exec("BEGIN IMMEDIATE");
    const auto apaga = [&] { BD.Executa("Delete xel_ORVEX"); };
    EXPECT_THAT(texto_da_falha(apaga), HasSubstr("a ser usada por outro programa"));
    outra.exec("ROLLBACK");
    EXPECT_EQ(texto_da_falha(apaga), "");
}

TEST_F(Sessao, what_was_read_before_another_program_wrote_cannot_be_written_over) {
    BD.IniciaTransaccao();
    junta_movimento(1);
    valor("select STDISP from Artigos where CODIGO='B1'");
    outra_ligacao("erp.db").exec("UPDATE Artigos SET STDISP=1 WHERE CODIGO='B1'");
    const auto artigo = BD.AbreActualizavel("Select * from Artigos where Codigo='B1'");
    artigo->define("Observ", "x");
    EXPECT_THAT([&] { artigo->actualiza(); },
                testing::ThrowsMessage<Falha>(HasSubstr("alterados por outro programa")));
    EXPECT_TRUE(BD.EmTransaccao());
    BD.AnulaTransaccao();
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 0);
}

TEST_F(Sessao, a_refused_commit_leaves_the_transaction_open_to_be_rolled_back) {
    BD.Fecha();
    outra_ligacao().exec("PRAGMA journal_mode=DELETE"); // where a reader holds a commit back
    ASSERT_TRUE(BD.Abre(ligacao(pasta)));
    BD.IniciaTransaccao();
    junta_movimento(1);
    auto leitor = outra_ligacao();
    leitor.exec("BEGIN; SELECT count(*) FROM xel_ORVEX_Mov");
    EXPECT_NE(texto_da_falha([&] { BD.ConfirmaTransaccao(); }), "");
    EXPECT_TRUE(BD.EmTransaccao());
    BD.AnulaTransaccao();
    EXPECT_FALSE(BD.EmTransaccao());
    leitor.exec("ROLLBACK");
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 0);
}

TEST_F(Sessao, a_full_disk_is_reported_as_such) {
    auto livro = outra_ligacao();
    livro.exec("PRAGMA max_page_count=1"); // no page beyond those in use
    const auto enche = [&] {
        for (int i = 0; i < 1000; ++i)
            livro.exec("INSERT INTO xel_ORVEX (NumSerie, Obs) VALUES ('B1', hex(zeroblob(50)))");
    };
    EXPECT_THAT(texto_da_falha([&] { platform::sqlite::com_falhas(enche); }), HasSubstr("espaço em disco"));
}

TEST_F(Sessao, a_damaged_file_is_reported_as_such) {
    for (int linha = 1; linha < 200; ++linha)
        junta_movimento(linha);
    BD.Fecha();
    {
        std::fstream livro(pasta / "livro.db", std::ios::in | std::ios::out | std::ios::binary);
        livro.seekp(4096); // beyond the schema
        livro << std::string(std::filesystem::file_size(pasta / "livro.db") - 4096, '\xEE');
    }
    ASSERT_TRUE(BD.Abre(ligacao(pasta)));
    EXPECT_NE(texto_da_falha([&] { linhas("xel_ORVEX_Mov"); }), "");
}

} // namespace
} // namespace orvex::testes
