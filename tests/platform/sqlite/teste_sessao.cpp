#include "platform/sqlite/motor.h"
#include "tests/platform/sqlite/empresa_teste.h"

#include <fstream>

namespace orvex::teste {
namespace {

class Sessao : public EmpresaTeste {
  protected:
    std::string texto_da_falha(SessaoSQLite& sessao) {
        try {
            sessao.Executa("Delete xel_ORVEX");
        } catch (const Falha& falha) {
            EXPECT_EQ(falha.numero(), numeros::falha_geral);
            return falha.what();
        }
        return {};
    }
};

TEST_F(Sessao, a_company_that_cannot_be_opened_says_why_and_nothing_is_created) {
    BD.Fecha();
    const auto tenta = [&] {
        SessaoSQLite outra;
        EXPECT_FALSE(outra.Abre(ligacao()));
        return texto_da_falha(outra);
    };
    std::filesystem::rename(pasta / "erp.db", pasta / "longe.db");
    EXPECT_THAT(tenta(), ::testing::HasSubstr("erp.db"));
    EXPECT_FALSE(std::filesystem::exists(pasta / "erp.db"));

    std::ofstream(pasta / "erp.db") << std::string(4096, 'x');
    EXPECT_THAT(tenta(),
                ::testing::AllOf(::testing::HasSubstr("erp.db"), ::testing::HasSubstr("não é uma base")));
    std::ofstream(pasta / "livro.db") << std::string(4096, 'x');
    EXPECT_THAT(tenta(), ::testing::HasSubstr("livro.db"));
    std::filesystem::remove_all(pasta);
    EXPECT_THAT(tenta(), ::testing::HasSubstr("pasta"));
    EXPECT_FALSE(std::filesystem::exists(pasta));
}

TEST_F(Sessao, a_closed_session_refuses_every_statement) {
    BD.Fecha();
    EXPECT_EQ(numero_da_falha([&] { BD.Consulta("select * from Clientes"); }), numeros::falha_geral);
    EXPECT_EQ(numero_da_falha([&] { BD.IniciaTransaccao(); }), numeros::falha_geral);
    EXPECT_FALSE(BD.EmTransaccao());
}

TEST_F(Sessao, a_rollback_takes_back_both_files_and_the_half_read_set_survives_it) {
    BD.IniciaTransaccao();
    junta("xel_ORVEX_MOV", movimento(1));
    BD.Executa("Delete Artigos where CODIGO='B2'");
    const auto conjunto = BD.Consulta("select * from xel_ORVEX_Mov");
    BD.AnulaTransaccao();
    EXPECT_FALSE(BD.EmTransaccao());
    EXPECT_EQ(conjunto->valor("NumLinha"), Variante(1));
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 0);
    EXPECT_EQ(linhas("Artigos"), 2);
}

TEST_F(Sessao, a_lock_held_by_another_program_is_reported_as_such) {
    auto outra = outra_ligacao();
    outra.exec("BEGIN IMMEDIATE");
    EXPECT_THAT(texto_da_falha(BD), ::testing::HasSubstr("a ser usada por outro programa"));
    outra.exec("ROLLBACK");
    EXPECT_EQ(texto_da_falha(BD), "");
}

TEST_F(Sessao, what_was_read_before_another_program_wrote_cannot_be_written_over) {
    BD.IniciaTransaccao();
    junta("xel_ORVEX_MOV", movimento(1));
    valor("select STDISP from Artigos where CODIGO='B1'");
    outra_ligacao("erp.db").exec("UPDATE Artigos SET STDISP=1 WHERE CODIGO='B1'");
    const auto artigo = BD.AbreActualizavel("Select * from Artigos where Codigo='B1'");
    artigo->define("Observ", "x");
    EXPECT_THAT([&] { artigo->actualiza(); },
                ::testing::ThrowsMessage<Falha>(::testing::HasSubstr("alterados por outro programa")));
    EXPECT_TRUE(BD.EmTransaccao());
    BD.AnulaTransaccao();
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 0);
}

TEST_F(Sessao, the_erp_may_write_while_the_ledger_is_being_written) {
    BD.IniciaTransaccao();
    junta("xel_ORVEX_MOV", movimento(1));
    outra_ligacao("erp.db").exec("INSERT INTO DocGcLin VALUES(2024,'GR',1,99,1,'A1')");
    EXPECT_EQ(BD.Consulta("Select * from DocGcLin where NnumDoc=99")->contagem(), 1);
    BD.ConfirmaTransaccao();
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 1);
}

TEST_F(Sessao, a_refused_commit_leaves_the_transaction_open_to_be_rolled_back) {
    BD.Fecha();
    outra_ligacao().exec("PRAGMA journal_mode=DELETE"); // where a reader holds a commit back
    ASSERT_TRUE(BD.Abre(ligacao()));
    BD.IniciaTransaccao();
    junta("xel_ORVEX_MOV", movimento(1));
    auto leitor = outra_ligacao();
    leitor.exec("BEGIN; SELECT count(*) FROM xel_ORVEX_Mov");
    EXPECT_EQ(numero_da_falha([&] { BD.ConfirmaTransaccao(); }), numeros::falha_geral);
    EXPECT_TRUE(BD.EmTransaccao());
    BD.AnulaTransaccao();
    EXPECT_FALSE(BD.EmTransaccao());
    leitor.exec("ROLLBACK");
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 0);
}

TEST_F(Sessao, a_full_disk_is_reported_as_such) {
    platform::sqlite::Motor motor(pasta, 50);
    motor.base().exec("PRAGMA main.max_page_count=1"); // no page beyond those in use
    std::string texto;
    try {
        for (int linha = 1; linha < 1000; ++linha) {
            const auto conjunto = motor.consulta("Select * from xel_ORVEX_MOV where Ano=-1",
                                                 platform::sqlite::Motor::Modo::actualizavel);
            conjunto->acrescenta();
            for (const auto& [nome, dado] : movimento(linha, {{"Descritivo", std::string(80, 'x')}}))
                conjunto->define(nome, dado);
            conjunto->actualiza();
        }
    } catch (const Falha& falha) {
        texto = falha.what();
        EXPECT_EQ(falha.numero(), numeros::falha_geral);
    }
    EXPECT_THAT(texto, ::testing::HasSubstr("espaço em disco"));
}

TEST_F(Sessao, a_damaged_file_is_reported_as_such) {
    for (int linha = 1; linha < 200; ++linha)
        junta("xel_ORVEX_MOV", movimento(linha));
    BD.Fecha();
    {
        std::fstream livro(pasta / "livro.db", std::ios::in | std::ios::out | std::ios::binary);
        livro.seekp(4096); // beyond the schema
        livro << std::string(std::filesystem::file_size(pasta / "livro.db") - 4096, '\xEE');
    }
    ASSERT_TRUE(BD.Abre(ligacao()));
    EXPECT_EQ(numero_da_falha([&] { linhas("xel_ORVEX_Mov"); }), numeros::falha_geral);
}

} // namespace
} // namespace orvex::teste
