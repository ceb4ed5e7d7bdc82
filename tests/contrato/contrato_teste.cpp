// What every session does, whatever engine is behind it.
#include "tests/contrato/empresa_vazia.h"

namespace orvex::testes {
namespace {

using Linguagem = Contrato;
using RegrasServidor = Contrato;
using Transaccoes = Contrato;

// The language of the statements, where the screens' own statements do not show it.
TEST_F(Linguagem, OsValoresIgualamSeComOuSemPlicasEMaiusculasEOMaisJuntaTextosESomaNumeros) {
    for (const auto& caso :
         tabela({"Data from DocGcCab where TpDoc='gr ' and Serie='1' and Nnumdoc='12' => 2024-03-05 10:20:30",
                 "NNumDoc from DocGcCab where Ano=2024 and NNumdoc= 12and Serie =1 => 12",
                 "CODIGO FROM Clientes where Nome='D''ÁVILA & FILHOS' => C1",
                 "count(*) FROM Clientes where CODIGO='x'' or 1=1 or CODIGO=''' => 0",
                 "CODIGO+Nome FROM Artigos where CODIGO='B1' => B1Bobina 1",
                 "STDISP+ULTPRCOM FROM Artigos where CODIGO='B1' => 15.5",
                 "Observ+'x' FROM Artigos where CODIGO='B1' => "}))
        EXPECT_EQ(valor("SELECT " + caso[0]).texto(), caso[1]) << caso[0];
    EXPECT_NE(numero_da_falha([&] { BD.Consulta("SELECT CODIGO+STDISP FROM Artigos"); }), 0);
    const auto recente = BD.Consulta("Select top 1 NNumDoc as 'No. Doc.' from DocGcCab order by Data desc");
    EXPECT_EQ(recente->valor(0), Variante(13));
    EXPECT_EQ(recente->contagem(), 1);
    EXPECT_EQ(recente->nome_coluna(0), "No. Doc.");
}

// What the server does to values on their way in.
TEST_F(RegrasServidor, OsValoresFicamComoAColunaOsGuardaEOsQueNaoCabemSaoRecusados) {
    const auto define = [this](const char* coluna, const Variante& dado) {
        auto conjunto = BD.AbreActualizavel("Select * from xel_ORVEX where Ano=-1");
        conjunto->acrescenta();
        conjunto->define("NumSerie", "B1");
        conjunto->define(coluna, dado);
        return conjunto;
    };
    const DataHora fim_do_dia{2024, 2, 29, 23, 59, 58};
    const std::string cem(100, 'x');
    const struct { // what goes in, and what it is then
        const char* coluna;
        std::vector<std::pair<Variante, Variante>> valores;
    } aceites[] = {
        {"Quantidade", {{m("1.2345"), m("1.235")}, {m("-1.2345"), m("-1.235")}, {0.1 + 0.2, m("0.3")}}},
        {"Preco", {{m("2.345"), m("2.35")}, {m("899999999999.99"), m("899999999999.99")}}},
        {"Serie", {{32767, 32767}, {"-12", -12}}},
        {"Obs", {{cem, cem}, {"C1  ", "C1  "}, {"", ""}}},
        {"Data", {{"2024-02-29 23:59:58", fim_do_dia}, {fim_do_dia, fim_do_dia}, {Variante(), Variante()}}},
    };
    std::int64_t registo = 0;
    for (const auto& [coluna, valores] : aceites)
        for (const auto& [dado, lido] : valores) {
            const auto conjunto = define(coluna, dado);
            EXPECT_THAT(falha([&] { conjunto->define("Preco", 9e11 + 0.5); }), HasSubstr("900000000000,5"));
            conjunto->actualiza();
            const std::string onde = " from xel_ORVEX where Registo=" + std::to_string(++registo);
            EXPECT_EQ(valor("select " + std::string(coluna) + onde), lido) << coluna << dado.texto();
        }
    constexpr std::int32_t outro_tipo = base::numeros_falha::tipo_diferente;
    const struct {
        std::int32_t numero;
        const char* coluna;
        std::vector<Variante> valores;
    } recusas[] = {
        {numeros::valor_truncado, "TpDoc", {"GRXX", "a😀b"}}, // two UTF-16 units for one character
        {numeros::valor_truncado, "Serie", {32768, -32769}},
        {numeros::valor_truncado, "NNumDoc", {std::int64_t{1} << 31, 1e300}},
        {numeros::valor_truncado, "Preco", {9e11, -9e11}},
        {numeros::valor_truncado, "Data", {DataHora{1752, 12, 31}}},
        {outro_tipo, "Obs", {"a\xED\xA0\x80", std::string("a\0b", 3)}},
        {outro_tipo, "Serie", {"um"}},
        {outro_tipo, "Preco", {"1,5", ""}},
        {outro_tipo, "Data", {"31-12-2024", "2024-2-3", 45000}},
        {numeros::instrucao_errada, "Registo", {5}},
        {numeros::instrucao_errada, "Nenhuma", {5}},
    };
    for (const auto& recusa : recusas)
        for (const Variante& dado : recusa.valores)
            EXPECT_EQ(numero_da_falha([&] { define(recusa.coluna, dado); }), recusa.numero)
                << recusa.coluna << dado.texto();
    for (const std::string& mau : {std::string("'\xC0\xA7'"), std::string("'a\0'", 4)}) {
        const std::string sql = "Select * from xel_ORVEX where Obs=" + mau;
        for (const std::string& texto : {falha([&] { BD.Executa(sql); }), falha([&] { BD.Consulta(sql); }),
                                         falha([&] { BD.AbreActualizavel(sql); })})
            EXPECT_THAT(texto, HasSubstr("caracteres"));
    }
}

TEST_F(RegrasServidor, AsChavesSaoUnicasSemMaiusculasETemTodasAsPartesEAsDatasPerdemAHora) {
    junta_movimento(1, {{"Data", DataHora{2024, 5, 6, 7, 8, 9}}});
    EXPECT_EQ(valor("select convert(nvarchar(19),Data,120) from xel_ORVEX_Mov"), Variante("2024-05-06"));
    for (const Variante& tipo : {Variante("fa "), Variante()})
        EXPECT_EQ(numero_da_falha([&] { junta_movimento(1, {{"TpDoc", tipo}}); }), numeros::chave_violada);
    EXPECT_EQ(numero_da_falha([&] { insere(BD, "xel_ORVEX", {"Ano"}, {{2024}}); }), numeros::chave_violada);
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 1);
}

TEST_F(RegrasServidor, UmNumeroDeIdentidadeNuncaVoltaASerUsado) {
    for (int numero = 1; numero <= 4; ++numero) {
        insere(BD, "xel_ORVEX", {"NumSerie"}, {{"B1"}});
        EXPECT_EQ(valor("select max(Registo) from xel_ORVEX"), Variante(numero));
        if (numero > 1) BD.Executa(numero == 2 ? "Delete xel_ORVEX where registo=2 " : "Delete xel_ORVEX");
    }
}

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

TEST_F(Transaccoes, AnulamOsDoisFicheirosMasNaoOConjuntoMeioLidoNemAcabamComUmaInstrucaoRecusada) {
    BD.IniciaTransaccao();
    junta_movimento(1);
    BD.Executa("Delete Artigos where CODIGO='B2'");
    for (const char* errada : {"Delete Nenhuma", "Delete xel_ORVEX_Mov where Nada=1"})
        EXPECT_NE(numero_da_falha([&] { BD.Executa(errada); }), 0);
    EXPECT_EQ(numero_da_falha([&] { junta_movimento(1); }), numeros::chave_violada);
    EXPECT_TRUE(BD.EmTransaccao());
    const auto conjunto = BD.Consulta("select * from xel_ORVEX_Mov");
    BD.AnulaTransaccao();
    EXPECT_FALSE(BD.EmTransaccao());
    EXPECT_EQ(conjunto->valor("NumLinha"), Variante(1));
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 0);
    EXPECT_EQ(linhas("Artigos"), 2);
}

// What is read before the lock is for the eye; it neither hides what others wrote nor stands in the way.
TEST_F(Transaccoes, ATrancaMostraOQueOutrosGravaramEntretanto) {
    BD.IniciaTransaccao();
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 0);
    insere(outra(), "xel_ORVEX_Mov", {"Ano", "TpDoc", "NumDoc", "SerieDoc", "NumLinha"}, {{1, "A", 1, 1, 7}});
    BD.Tranca();
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 1);
    junta_movimento(1);
    BD.ConfirmaTransaccao();
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 2);
    EXPECT_EQ(BD.Comprimento("XEL_orvex_mov", "descritivo"), 80u);
    EXPECT_EQ(BD.Comprimento("xel_ORVEX_Mov", "Qtd") + BD.Comprimento("Nenhuma", "Qtd"), 0u);
}

} // namespace
} // namespace orvex::testes
