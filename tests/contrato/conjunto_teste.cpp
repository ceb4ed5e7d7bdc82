#include "tests/contrato/empresa_vazia.h"

namespace orvex::testes {
namespace {

class Conjuntos : public Contrato {
  protected:
    Conjuntos() {
        for (const int linha : {1, 2, 3})
            junta_movimento(linha);
    }

    static std::string restantes(ConjuntoRegistos& conjunto) {
        std::string lidas;
        for (; !conjunto.fim(); conjunto.move_seguinte())
            lidas += conjunto.valor("NumLinha").texto();
        return lidas;
    }
};

TEST_F(Conjuntos, ContamTodasAsLinhasELeemSeAteAoFimDepoisDeOutrasInstrucoesAsMudarem) {
    const auto contado = BD.Consulta("select * from xel_ORVEX_Mov");
    contado->move_seguinte();
    EXPECT_EQ(contado->contagem(), 3);
    EXPECT_EQ(restantes(*contado), "23");
    EXPECT_EQ(contado->contagem(), 3);
    EXPECT_EQ(BD.Consulta("select * from xel_ORVEX_Mov where Ano=-1")->contagem(), 0);

    const auto interrompido = BD.Consulta("select * from xel_ORVEX_Mov");
    interrompido->move_seguinte();
    BD.Executa("Delete xel_ORVEX_MOV where Ano=2024");
    EXPECT_EQ(restantes(*interrompido), "23");
    EXPECT_EQ(interrompido->contagem(), 3);
}

TEST_F(Conjuntos, ValoresDeTodosOsTiposETextosLongosFicamInteirosQuandoSaoPostosDeLado) {
    const std::string trecho = "peça nº 1: 5 € de aço 😀 ", texto = trecho + trecho;
    junta_movimento(4, {{"Descritivo", texto}, {"Data", DataHora{2024, 1, 2}}, {"QtdOrig", -3}});
    junta_movimento(5, {{"NumDoc", 1 << 30}, {"PesoBruto", m("899999999999.9999")}});
    std::string soma = "Descritivo", longo = texto;
    for (int i = 1; i < 30; ++i) {
        soma += "+Descritivo";
        longo += texto;
    }
    const auto conjunto = BD.Consulta("select xel_ORVEX_Mov.*, " + soma +
                                      " as longo from xel_ORVEX_Mov where NumLinha>3 order by NumLinha");
    ASSERT_EQ(conjunto->contagem(), 2);
    EXPECT_EQ(conjunto->valor("longo"), Variante(longo));
    EXPECT_EQ(conjunto->valor("Data"), Variante(DataHora{2024, 1, 2}));
    EXPECT_EQ(conjunto->valor("QTDORIG"), Variante(Moeda::de_inteiro(-3)));
    EXPECT_TRUE(conjunto->valor("PesoBruto").nulo());
    conjunto->move_seguinte();
    EXPECT_EQ(conjunto->valor("PesoBruto"), Variante(m("899999999999.9999")));
    EXPECT_EQ(conjunto->valor("NumDoc"), Variante(1 << 30));
}

TEST_F(Conjuntos, NumaJuncaoGanhaAPrimeiraColunaESoOsActualizaveisDeUmaTabelaComChaveRecebemValores) {
    const auto conjunto =
        BD.Consulta("Select * from xel_ORVEX_Mov inner join DocGcCab on NNumDoc=12 where Qtd>0");
    EXPECT_EQ(conjunto->valor("TPDOC"), Variante("FA"));
    EXPECT_EQ(numero_da_falha([&] { conjunto->valor("Nada"); }), numeros::instrucao_errada);
    EXPECT_EQ(numero_da_falha([&] { conjunto->define("Qtd", 1); }), numeros::instrucao_errada);
    for (const char* sql :
         {"select Qtd+1 as Qtd from xel_ORVEX_Mov", "select max(Qtd) as Qtd from xel_ORVEX_Mov",
          "select m.* from xel_ORVEX_Mov as m inner join Artigos on CODIGO=Artigo"})
        EXPECT_EQ(numero_da_falha([&] { BD.AbreActualizavel(sql)->define("Qtd", 1); }),
                  numeros::instrucao_errada)
            << sql;
    const auto sem_chave = BD.AbreActualizavel("SELECT VLREXIST , STDISP From Artigos WHERE CODIGO = 'B1'");
    sem_chave->define("STDISP", 1);
    EXPECT_EQ(numero_da_falha([&] { sem_chave->actualiza(); }), numeros::instrucao_errada);
}

TEST_F(Conjuntos, UmaLinhaMudaDuasVezesPeloMesmoMasNaoPorCimaDoQueOutroMudouOuApagou) {
    const auto linha = [this](int numero) {
        return BD.AbreActualizavel("Select * from xel_ORVEX_MOV where NumLinha=" + std::to_string(numero));
    };
    const auto conjunto = linha(2);
    conjunto->define("Qtd", conjunto->valor("Qtd").moeda() - m("1"));
    conjunto->actualiza();
    EXPECT_EQ(conjunto->valor("Qtd"), Variante(m("0.5")));
    conjunto->define("PesoBruto", m("0.1"));
    conjunto->actualiza();
    EXPECT_EQ(linhas("xel_ORVEX_Mov where Qtd=0.5 and PesoBruto=0.1"), 1);
    for (const char* mudanca : {"UPDATE xel_ORVEX_Mov SET Origem='' WHERE NumLinha=3",
                                "UPDATE xel_ORVEX_Mov SET Artigo='b1' WHERE NumLinha=3",
                                "UPDATE xel_ORVEX_Mov SET Origem=Descritivo, Qtd=9 WHERE NumLinha=3",
                                "DELETE FROM xel_ORVEX_Mov WHERE NumLinha=3"}) {
        const auto lida = linha(3);
        lida->define("Qtd", 4);
        outra().Executa(mudanca);
        EXPECT_EQ(numero_da_falha([&] { lida->actualiza(); }), numeros::registo_alterado) << mudanca;
    }
    EXPECT_EQ(linhas("xel_ORVEX_Mov where Qtd=4"), 0);
}

} // namespace
} // namespace orvex::testes
