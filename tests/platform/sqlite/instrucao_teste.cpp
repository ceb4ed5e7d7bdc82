// What is the embedded engine's own: its language, its statements, its locks.
#include "platform/sqlite/sessao_sqlite.h"
#include "tests/contrato/empresa_vazia.h"

namespace orvex::testes {
namespace {

class Instrucoes : public EmpresaVazia<platform::sqlite::SessaoSQLite> {
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
          " where Nome like 'x%'", " where CODIGO=?", " where Nome='a' 'b'"})
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

} // namespace
} // namespace orvex::testes
