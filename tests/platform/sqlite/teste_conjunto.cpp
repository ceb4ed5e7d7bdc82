#include "tests/platform/sqlite/empresa_teste.h"

namespace orvex::teste {
namespace {

class Conjuntos : public EmpresaTeste {
  protected:
    Conjuntos() {
        for (const int linha : {1, 2, 3})
            junta("xel_ORVEX_MOV", movimento(linha));
        // A query whose second row cannot be computed: whoever reads it fails.
        outra_ligacao().exec("CREATE VIEW armadilha AS SELECT NumLinha, CASE NumLinha WHEN 2 THEN "
                             "abs(-9223372036854775807 - 1) ELSE NumLinha END AS v FROM xel_ORVEX_Mov");
    }

    // Whether a reader holds the log back in either file.
    bool ha_leitor() const {
        auto outra = outra_ligacao();
        SQLite::Statement ponto(outra, "PRAGMA wal_checkpoint(TRUNCATE)");
        ponto.executeStep();
        return ponto.getColumn(0).getInt() != 0;
    }

    std::vector<std::int64_t> restantes(ConjuntoRegistos& conjunto) {
        std::vector<std::int64_t> lidas;
        for (; !conjunto.fim(); conjunto.move_seguinte())
            lidas.push_back(conjunto.valor("NumLinha").inteiro());
        return lidas;
    }

    std::unique_ptr<ConjuntoRegistos> linha(int numero) {
        return BD.AbreActualizavel("Select * from xel_ORVEX_MOV where NumLinha=" + std::to_string(numero));
    }
};

TEST_F(Conjuntos, a_probe_reads_one_row) {
    const auto sonda = BD.Consulta("select v from armadilha");
    EXPECT_EQ(sonda->valor(0).inteiro(), 1);
    EXPECT_NE(numero_da_falha([&] { sonda->move_seguinte(); }), 0);
}

TEST_F(Conjuntos, a_failure_while_the_rest_is_put_by_belongs_to_its_own_set) {
    const auto sonda = BD.Consulta("select v from armadilha");
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 3) << "another statement does not fail for it";
    EXPECT_NE(numero_da_falha([&] { sonda->fim(); }), 0);
}

TEST_F(Conjuntos, a_set_can_be_read_on_after_other_statements_changed_its_rows) {
    const auto conjunto = BD.Consulta("select * from xel_ORVEX_Mov");
    conjunto->move_seguinte();
    BD.Executa("Delete xel_ORVEX_MOV where Ano=2024");
    EXPECT_THAT(restantes(*conjunto), ::testing::ElementsAre(2, 3));
    EXPECT_EQ(conjunto->contagem(), 3);
}

TEST_F(Conjuntos, the_count_is_of_all_rows_whenever_asked) {
    const auto conjunto = BD.Consulta("select * from xel_ORVEX_Mov");
    conjunto->move_seguinte();
    EXPECT_EQ(conjunto->contagem(), 3);
    EXPECT_THAT(restantes(*conjunto), ::testing::ElementsAre(2, 3));
    const auto ate_ao_fim = BD.Consulta("select * from xel_ORVEX_Mov");
    restantes(*ate_ao_fim);
    EXPECT_EQ(ate_ao_fim->contagem(), 3);
    EXPECT_EQ(BD.Consulta("select * from xel_ORVEX_Mov where Ano=-1")->contagem(), 0);
}

TEST_F(Conjuntos, values_of_every_kind_survive_being_put_by) {
    const std::string longo(70, 'x');
    junta("xel_ORVEX_MOV",
          movimento(4, {{"Descritivo", longo}, {"Data", DataHora{2024, 1, 2}}, {"QtdOrig", -3}}));
    junta("xel_ORVEX_MOV", movimento(5, {{"NumDoc", 1 << 30}, {"PesoBruto", moeda("899999999999.9999")}}));
    BD.Executa("Delete xel_ORVEX_MOV where NumLinha<4");
    const auto conjunto = BD.Consulta("select * from xel_ORVEX_Mov where Ano=2024 order by NumLinha");
    ASSERT_EQ(conjunto->contagem(), 2);
    EXPECT_EQ(conjunto->valor("Descritivo"), Variante(longo));
    EXPECT_EQ(conjunto->valor("Data"), Variante(DataHora{2024, 1, 2}));
    EXPECT_EQ(conjunto->valor("QTDORIG"), Variante(Moeda::de_inteiro(-3)));
    EXPECT_TRUE(conjunto->valor("PesoBruto").nulo());
    conjunto->move_seguinte();
    EXPECT_EQ(conjunto->valor("PesoBruto"), Variante(moeda("899999999999.9999")));
    EXPECT_EQ(conjunto->valor("NumDoc"), Variante(1 << 30));
}

TEST_F(Conjuntos, no_lock_outlives_the_set_its_last_row_or_the_next_statement) {
    {
        const auto meio_lido = BD.Consulta("select * from xel_ORVEX_Mov");
        EXPECT_TRUE(ha_leitor()) << "or the check below proves nothing";
    }
    EXPECT_FALSE(ha_leitor());
    const auto lido = BD.Consulta("select * from xel_ORVEX_Mov");
    restantes(*lido);
    EXPECT_FALSE(ha_leitor());
    const auto interrompido = BD.Consulta("select * from xel_ORVEX_Mov");
    const auto vazio = BD.Consulta("select * from Clientes where CODIGO='nenhum'");
    EXPECT_FALSE(ha_leitor());
}

TEST_F(Conjuntos, in_a_join_the_first_column_of_a_name_wins_and_an_unknown_name_fails) {
    const auto conjunto =
        BD.Consulta("Select * from xel_ORVEX_Mov INNER JOIN Artigos ON Artigos.Codigo="
                    "xel_ORVEX_Mov.Artigo inner join DocGcCab on DocGcCab.NNumDoc=12 where Qtd>0");
    EXPECT_EQ(conjunto->valor("TPDOC"), Variante("FA"));
    EXPECT_EQ(numero_da_falha([&] { conjunto->valor("Nada"); }), numeros::instrucao_errada);
}

TEST_F(Conjuntos, only_an_updatable_set_of_one_table_takes_values) {
    const char* simples = "Select * from xel_ORVEX_MOV where NumLinha=1";
    EXPECT_EQ(numero_da_falha([&] { BD.AbreActualizavel(simples)->define("Qtd", 1); }), 0);
    EXPECT_EQ(numero_da_falha([&] { BD.Consulta(simples)->define("Qtd", 1); }), numeros::instrucao_errada);
    for (const char* sql :
         {"select Qtd+1 as Qtd from xel_ORVEX_Mov", "select max(Qtd) as Qtd from xel_ORVEX_Mov",
          "select m.* from xel_ORVEX_Mov as m inner join Artigos on CODIGO=Artigo"})
        EXPECT_EQ(numero_da_falha([&] { BD.AbreActualizavel(sql)->define("Qtd", 1); }),
                  numeros::instrucao_errada)
            << sql;
}

TEST_F(Conjuntos, a_row_is_updated_twice_through_the_same_set) {
    const auto conjunto = linha(2);
    conjunto->define("Qtd", conjunto->valor("Qtd").moeda() - moeda("1"));
    EXPECT_EQ(conjunto->valor("Qtd"), Variante(moeda("0.5")));
    conjunto->actualiza();
    conjunto->define("PesoBruto", moeda("0.1"));
    conjunto->actualiza();
    EXPECT_EQ(valor("select Qtd from xel_ORVEX_Mov where NumLinha=2"), Variante(moeda("0.5")));
    EXPECT_EQ(valor("select PesoBruto from xel_ORVEX_Mov where NumLinha=2"), Variante(moeda("0.1")));
    EXPECT_EQ(valor("select Qtd from xel_ORVEX_Mov where NumLinha=1"), Variante(moeda("1.5")));
}

TEST_F(Conjuntos, a_row_changed_or_deleted_by_somebody_else_is_not_overwritten) {
    for (const char* mudanca : {"UPDATE xel_ORVEX_Mov SET Origem='' WHERE NumLinha=3",
                                "UPDATE xel_ORVEX_Mov SET Artigo='b1' WHERE NumLinha=3",
                                "UPDATE xel_ORVEX_Mov SET Origem=NULL, Qtd=9 WHERE NumLinha=3",
                                "DELETE FROM xel_ORVEX_Mov WHERE NumLinha=3"}) {
        const auto conjunto = linha(3);
        conjunto->define("Qtd", 4);
        outra_ligacao().exec(mudanca);
        EXPECT_EQ(numero_da_falha([&] { conjunto->actualiza(); }), numeros::registo_alterado) << mudanca;
    }
    EXPECT_EQ(linhas("xel_ORVEX_Mov where Qtd=4"), 0);
}

TEST_F(Conjuntos, an_erp_row_takes_a_note_and_a_set_without_its_key_is_for_reading) {
    const auto artigo = BD.AbreActualizavel("Select * from Artigos where Codigo='b1'");
    artigo->define("Observ", "C2 - Zé");
    artigo->actualiza();
    EXPECT_EQ(valor("select Observ from Artigos where CODIGO='B1'"), Variante("C2 - Zé"));
    const auto preco =
        BD.AbreActualizavel("SELECT VLREXIST , STDISP , ULTPRCOM  From Artigos WHERE     (CODIGO = 'B1')");
    EXPECT_EQ(preco->valor("Stdisp"), Variante(Moeda::de_inteiro(3)));
    preco->define("STDISP", 1);
    EXPECT_EQ(numero_da_falha([&] { preco->actualiza(); }), numeros::instrucao_errada);
}

} // namespace
} // namespace orvex::teste
