#include "tests/adjust/ecra_ajuste.h"

using namespace orvex;
using namespace orvex::testes;

namespace {

const std::string anomalia = "Situação Anómala\n\rErro: ";
const std::string pergunta_anular = "Vai proceder à anulação.\n\rPretende continuar?";

// The boxes without what ends every question.
std::string sem_fim(std::string caixas) {
    const std::string fim = "\r\nPretende continuar?";
    for (std::size_t onde = 0; (onde = caixas.find(fim)) != std::string::npos;)
        caixas.erase(onde, fim.size());
    return caixas;
}

// With item REEL'1, of 5 t, in the field; or with an adjustment of 2 t of it loaded, which left 7 t or 3 t.
struct Ajustando : EcraAjuste {
    Ajustando(char modo, bool carregado) : EcraAjuste(modo - '0') {
        if (carregado) {
            ajusta("REEL'1", modo == '1' ? "7" : modo == '2' ? "3" : "2");
            carrega("1");
        } else {
            item("REEL'1");
        }
        caixas();
    }
};

using Sobras = NoModo<EcraAjuste, 1>;
using Quebras = NoModo<EcraAjuste, 2>;
using Consumos = NoModo<EcraAjuste, 3>;

} // namespace

// What replaces a loaded adjustment is 2nd in the ERP.
TEST(Ajustes, EspecieEPerguntasSaemDoModoDoNovoValorEDoLimiteDe150Kg) {
    const std::string sobra = "Vai proceder à geração de uma Sobra",
                      quebra = "Vai proceder à geração de uma Quebra de  ";
    const std::string sobra_grande = "A Sobra é supeior ou igual a 150 Kg!|" + sobra + " de  ";
    const std::string quebra_grande = "A Quebra é superior ou igual a 150 Kg!|" + quebra;
    const struct {
        const char *modos, *novo;
        std::string perguntas;
        const char* gravado;
        bool carregado = false;
    } casos[] = {
        {"12", "4,85", quebra_grande + "0,15 Tn !", "QB|0.15|0 / QB|-0.15"},
        {"12", "4,8501", quebra + "0,1499 Tn !", "QB|0.1499|0 / QB|-0.15"},
        {"12", "0", quebra_grande + "5 Tn !", "QB|5|0 / QB|-5"},
        {"12", "5", "", " / "},
        {"12", "5,1499", sobra + "!", "SB|0.1499|0 / SB|0.15"},
        {"12", "5,15", sobra_grande + "0,15 Tn !", "SB|0.15|0 / SB|0.15"},
        {"3", "5", "Vai proceder à geração de um Consumo de  5 Tn !", "CI|5|0 / CI|-5"},
        {"1", "7", sobra_grande + "7 Tn !", "SB|2|-1; SB|7|0 / SB|7", true},
        {"2", "3", quebra_grande + "3 Tn !", "QB|2|-1; QB|3|0 / QB|-3", true},
    };
    for (const auto& caso : casos)
        for (const char modo : std::string(caso.modos)) {
            SCOPED_TRACE(std::string("mode ") + modo + ", new " + caso.novo);
            Ajustando ajustes(modo, caso.carregado);
            ajustes.ecra.campo(3).Text = caso.novo; // not typed, so not validated
            ajustes.confirma();
            const char* gerado =
                caso.carregado ? "|Foi gerado o Documento   :  2" : "|Foi gerado o Documento   :  1";
            EXPECT_EQ(sem_fim(ajustes.caixas()), caso.perguntas.empty() ? "" : caso.perguntas + gerado);
            EXPECT_EQ(ajustes.documentos(), caso.gravado);
            EXPECT_TRUE(ajustes.vazio());
        }
}

TEST_F(Sobras, OsTextosDeUmaConfirmacaoDeUmaSubstituicaoEDeUmaAnulacao) {
    item("CEDIDA");
    ecra.campo(2).Text = "Proc'1";
    quantidade("5,2");
    ecra.utilizador_data(ecra.DTPicker1, {2017, 12, 31});
    janela.respostas = {common::resposta_cancelar};
    diario.recomeca();
    confirma();
    EXPECT_EQ(caixas(), "A data 31-12-2017 está a mais de um ano de hoje.\r\nPretende continuar?");
    ecra.utilizador_data(ecra.DTPicker1, {2018, 12, 31});
    confirma();
    EXPECT_EQ(diario.texto(), R"(
INICIA
TRANCA
CONSULTA Select top 1 * from xel_ORVEX where NumSerie='CEDIDA' order by Registo desc
CONSULTA SELECT * FROM artarm  where artarm.Artigo='CEDIDA' and Armazem='CL'
ABRE SELECT VLREXIST , STDISP , ULTPRCOM  From Artigos WHERE     (CODIGO = 'CEDIDA')
PREPARA True
STOCK 1, 6, 'SB', 'SS', 1, 'SS', 'Proc'1', '', '31-12-2018', '', 'CL', 0, '', ['' 'CEDIDA'], ['' ''], [0 0.2], [0 100], ['' '']
ABRE Select * from xel_ORVEX where Ano=-1
  acrescenta NumSerie='CEDIDA' Cliente='CL'1' Data=2018-12-31 00:00:00 Quantidade=0.2 Obs='Excesso de Peso' Funcionario='' CliFinal='CL'1' Preco=0 Ano=2018 TpDoc='SB' NNumDoc=1 Serie=1 NumLin=1
CONFIRMA
)");

    // The ledger row's time of day, its holder and its year stay.
    empresa.outra().Executa("Update xel_ORVEX set Data='2018-12-31 08:09:10', Cliente='CL2' where NNumDoc=1");
    const std::string registo = empresa.linhas("select Registo from xel_ORVEX where NNumDoc=1");
    diario.recomeca();
    carrega("1");
    EXPECT_EQ(diario.texto(), R"(
CONSULTA  SELECT     CONVERT(nvarchar(10), Data, 120) + '*' + CAST(NNumDoc AS nvarchar(10))+ '*' + CAST(Registo AS nvarchar(10)) AS teste,  NNumDoc AS 'No.Doc.', Data,NumSerie as 'Artigo',Artigos.Nome as 'Designação Artigo',Abs(Quantidade) as Peso   From xel_ORVEX  Inner join Artigos on Artigos.Codigo=xel_Orvex.Numserie  WHERE     (TpDoc = 'SB') AND (Serie = 1) and  nnumdoc>0 order by Data desc
CONSULTA  Select * from xel_Orvex where Registo=)" +
                                  registo + R"(
CONSULTA  Select * from DocGcCab where Ano=2018 and TpDoc='SB' and NNumdoc= 1and Serie =1
CONSULTA SELECT * FROM artarm  where artarm.Artigo='CEDIDA' and Armazem='CL'
)");
    EXPECT_EQ(conteudo(), "CEDIDA|5,2|Proc'1|0,2|Excesso de Peso|1||31-12-2018");
    quantidade("0,1");
    diario.recomeca();
    confirma();
    const std::string substituicao = diario.texto();
    for (const std::string& parte :
         {"\nTRANCA\nCONSULTA  Select * from xel_Orvex where Registo=" + registo +
              "\nCONSULTA Select top 1 * from xel_ORVEX where NumSerie='CEDIDA' order by Registo desc"
              "\nANULA 1 SB/1/1/2018\nEXECUTA Delete xel_ORVEX where registo=" +
              registo + " \nABRE SELECT VLREXIST",
          std::string("'31-12-2018', '', 'CL', 0, '', ['' 'CEDIDA'], ['' ''], [0 0.1], [0 100]"),
          std::string("Cliente='CL2' Data=2018-12-31 08:09:10 Quantidade=0.1")})
        EXPECT_THAT(substituicao, HasSubstr(parte));

    const std::string novo = empresa.linhas("select Registo from xel_ORVEX where NNumDoc=2");
    carrega("2");
    caixas();
    diario.recomeca();
    anula();
    EXPECT_EQ(diario.texto(),
              "\nCONSULTA Select * from xel_Orvex where Registo=" + novo +
                  "\nCONSULTA Select top 1 * from xel_ORVEX where NumSerie='CEDIDA' order by Registo desc"
                  "\nINICIA\nTRANCA"
                  "\nCONSULTA Select top 1 * from xel_ORVEX where NumSerie='CEDIDA' order by Registo desc"
                  "\nANULA 1 SB/1/2/2018\nEXECUTA Delete xel_ORVEX where registo=" +
                  novo + " \nCONFIRMA\n");
    EXPECT_EQ(caixas(), pergunta_anular);
}

TEST_F(Sobras, UmArtigoEProcuradoOndeOSeuDetentorOGuarda) {
    for (const auto& caso : tabela(
             {"REEL'1 =>  => REEL'1|5|||||Bobina d'aço => 2", "cedida =>  => CEDIDA|5|||||Bobina d'aço => 2",
              "PARADA => Artigo não existente! => PARADA|||||| => 0",
              "SEMLIVRO => Artigo não existente! => SEMLIVRO|||||| => 0",
              "SEMSTOCK => Este Artigo não tem Existência! => SEMSTOCK||||||Bobina d'aço => 0"})) {
        SCOPED_TRACE(caso[0]);
        item(caso[0]);
        EXPECT_EQ(caixas(), caso[1]);
        EXPECT_EQ(conteudo(), caso[2] + "|15-03-2019");
        EXPECT_TRUE(no_campo(std::stoi(caso[3])));
        EXPECT_EQ(ecra.campo(1).Enabled, !caso[1].empty());
        op.prime(ecra.btCancelar);
        ecra.campo(0).Text.clear();
        op.prime(ecra.btCancelar); // the click that left a refused field did nothing
        caixas();
    }
}

// Mode, L where an adjustment is loaded, and the text => the box => the observation it gives.
TEST(Ajustes, ONovoValorEVerificadoQuandoEEscritoEDaUmaObservacao) {
    for (const auto& caso : tabela(
             {"1 =>  => Campo Obrigatório! => ", "1 => abc => Valor inválido! => ",
              "1 => 900000000000 => Valor inválido! => ", "1 => 5 =>  => Excesso de Peso",
              "1 => 4,9999 => A Nova Existência deve ser superior à Existência! => ", "2 => 5 =>  => Sucata",
              "2 => 5,0001 => A Nova Existência deve ser inferior à Existência! => ",
              "3 => 5 =>  => Consumo Interno", "3 => 5,0001 => Valor Inválido para o Consumo! => ",
              "1L => 0,1 =>  => ", "2L => 5 =>  => Sucata",
              "2L => 5,0001 => Valor Inválido para o Consumo! => ", "3L => 5 =>  => Consumo Interno",
              "3L => 5,0001 => Valor Inválido para o Consumo! => "})) {
        SCOPED_TRACE(caso[0] + " " + caso[1]);
        const bool carregado = caso[0].size() > 1;
        Ajustando ajustes(caso[0][0], carregado);
        ajustes.ecra.campo(4).Text.clear();
        EXPECT_EQ(ajustes.ecra.Label2(3).Caption,
                  carregado || caso[0] == "3" ? "Quantidade" : "Nova Existência");
        ajustes.quantidade(caso[1]);
        EXPECT_EQ(ajustes.caixas(), caso[2]);
        EXPECT_EQ(ajustes.ecra.campo(4).Text, caso[3]);
        EXPECT_TRUE(ajustes.no_campo(caso[2].empty() ? 4 : 3));
    }
}

// Mode, L where an adjustment is loaded, and the text => the box => where the cursor stands, if anything
// stays.
TEST(Ajustes, UmaConfirmacaoRecusadaOuNaoAceiteNaoEscreveNada) {
    for (const auto& caso :
         tabela({"1 =>  => Deve introduzir a nova Existência! => 3", "2 => x => Valor inválido! => 3",
                 "2 => -1 => A nova Existência não pode ser negativa! => 3",
                 "3 =>  => Deve introduzir a quantidade do Consumo! => 3",
                 "3 => 5,001 => Valor Inválido para o Consumo! => 3",
                 "2L => 5,001 => Valor Inválido para o Consumo! => 3",
                 "1 => 6 => A Sobra é supeior ou igual a 150 Kg! => 0",
                 "1 => 5,1 => Vai proceder à geração de uma Sobra! => "})) {
        SCOPED_TRACE(caso[0] + " " + caso[1]);
        Ajustando ajustes(caso[0][0], caso[0].size() > 1);
        ajustes.ecra.campo(3).Text = caso[1];
        ajustes.janela.respostas = {common::resposta_cancelar};
        ajustes.diario.recomeca();
        ajustes.confirma();
        EXPECT_EQ(sem_fim(ajustes.caixas()) + ajustes.diario.texto(), caso[2] + "\n");
        EXPECT_TRUE(ajustes.no_campo(caso[3] == "3" ? 3 : 0));
        EXPECT_EQ(ajustes.vazio(), caso[3].empty());
    }
}

TEST_F(Quebras, AListaTemOsDocumentosDoModoAComecarNoMaisRecenteEUmSemCabecalhoNoErpCarregaSe) {
    insere(empresa.outra(), "xel_ORVEX",
           {"NumSerie", "Cliente", "Data", "Quantidade", "Obs", "Ano", "TpDoc", "Serie", "NNumDoc"},
           {{"CEDIDA", "CL'1", base::DataHora{2017, 5, 6, 7, 8, 9}, m("-1.25"), "d'antes", 2017, "QB", 2, 90},
            {"CEDIDA", "CL'1", base::DataHora{2018, 5, 6}, m("-1"), "", 2018, "QB", 2, 91},
            {"CEDIDA", "CL'1", base::DataHora{2018, 5, 6}, m("-1"), "", 2018, "QB", 2, 0},
            {"CEDIDA", "CL'1", base::DataHora{2018, 5, 6}, m("1"), "", 2018, "SB", 2, 92},
            {"CEDIDA", "CL'1", base::DataHora{2018, 5, 6}, m("-1"), "", 2018, "QB", 1, 93}});
    item("REEL'1"); // whose name must not stand beside another item
    carrega("90");
    EXPECT_EQ(janela.listas.back().forma,
              "Números Doc. Quebras, 9500, 1:hidden 2:800 3:1200 4:1400 5:4000 6:600");
    EXPECT_THAT(janela.listas.back().primeira_coluna,
                ElementsAre(StartsWith("2018-05-06*91*"), StartsWith("2017-05-06*90*")));
    EXPECT_EQ(conteudo(), "CEDIDA|5||1,25|d'antes|90||06-05-2017");
    EXPECT_TRUE(no_campo(2));
    std::string fechados;
    for (const common::Controlo* controlo : ecra.controlos())
        if (!controlo->Enabled) fechados += controlo->nome + " ";
    EXPECT_EQ(fechados, "campo(0) campo(1) campo(5) DTPicker1 btFx(0) ");
    EXPECT_TRUE(ecra.btAnular.Visible);
}

TEST_F(Sobras, CadaFalhaEDitaPeloUltimoPassoQueFalhouEOSeuTextoFica) {
    // What goes wrong, the new stock, what is reported.
    for (const auto& caso :
         tabela({"1st step => 5,1 => Falha provocada.", "Obs => 5,1 => 3671 - ", "1st step => 5,1 => 3671 - ",
                 "Update artarm set Existenc=4 where Artigo='REEL''1' => 5,1 => "
                 "A Existência ou o detentor do Artigo mudou. Volte a introduzir o Artigo.",
                 "Delete Artigos where CODIGO='REEL''1' => 4,1 => O artigo «REEL'1» não existe."})) {
        SCOPED_TRACE(caso[0]);
        item("REEL'1");
        quantidade(caso[1]);
        diario.recomeca();
        if (caso[0] == "1st step")
            diario.falha_no = 1;
        else if (caso[0] == "Obs")
            ecra.campo(4).Text = std::string(101, 'x');
        else
            empresa.outra().Executa(caso[0]);
        confirma();
        EXPECT_THAT(caixas(), HasSubstr("|" + anomalia + caso[2]));
    }
}

TEST_F(Consumos, UmaSubstituicaoQueSeSabeRecusadaNaoAnulaOAntigoEAOutraFazSeComOPrecoDeDepois) {
    ajusta("REEL'1", "5");
    // Field, what is written in it => the box.
    for (const auto& caso :
         tabela({"3 => -1 => A quantidade não pode ser negativa.", "3 => 6 => Valor Inválido para o Consumo!",
                 "2 => 1234567890123456789012345678901 => O Processo não pode ter mais de 30 caracteres.",
                 "4 => OBS => O texto das Observações não pode ter mais de 100 caracteres.",
                 "2 => P => Foi gerado o Documento   :  2"})) {
        SCOPED_TRACE(caso[2]);
        const bool feita = caso[1] == "P";
        carrega("1");
        quantidade("4");
        ecra.campo(std::stoi(caso[0])).Text = caso[1] == "OBS" ? std::string(101, 'x') : caso[1];
        if (caso[1] == "6") ecra.campo(1).Text = "9"; // the stock was another when it was loaded
        confirma();
        EXPECT_THAT(caixas(), EndsWith("|" + (feita ? "" : anomalia) + caso[2]));
        EXPECT_EQ(documentos(), feita ? "CI|5|-1; CI|4|0 / CI|-4" : "CI|5|0 / CI|-5");
    }
    EXPECT_EQ(empresa.linhas("select PrecoUnit from DocGcLin where TpDocum='CI' and NNumDoc=2"), "100");
}

TEST_F(Consumos, UmMovimentoQueOutrosMudaramDesdeEntaoRecusaSeEOQueFicaEDito) {
    ajusta("REEL'1", "2");
    const auto substitui = [&](bool so_anula = false) {
        caixas();
        quantidade("1");
        so_anula ? anula() : confirma();
        return caixas();
    };
    // What the ERP refuses all the same is told, with the old document.
    empresa.outra().Executa("Delete Series where TpDoc='CI'");
    carrega("1");
    EXPECT_THAT(substitui(), EndsWith("|O documento CI/3/1/2019 ficou anulado no ERP, mas pode continuar nos "
                                      "movimentos da ORVEX."));
    carrega("1");
    EXPECT_THAT(substitui(true), EndsWith("|" + anomalia + "O documento CI/3/1/2019 já está anulado."));

    insere(empresa.outra(), "xel_ORVEX", {"NumSerie", "Cliente", "Quantidade"}, {{"REEL'1", "CL2", 3}});
    carrega("1");
    janela.respostas = {common::resposta_ok, common::resposta_cancelar};
    EXPECT_THAT(substitui(true),
                EndsWith("|O Artigo mudou de detentor depois deste movimento: é agora de CL2.\r\nA "
                         "anulação repõe o stock no armazém OR.\r\nPretende continuar?"));
    carrega("1");
    EXPECT_THAT(substitui(), EndsWith("O Artigo mudou de detentor depois deste movimento, que já não pode "
                                      "ser substituído."));
    EXPECT_EQ(documentos(), "CI|2|-1 / CI|-2");

    carrega("1");
    empresa.outra().Executa("Delete xel_ORVEX where NNumDoc=1");
    EXPECT_THAT(substitui(true), EndsWith("|Impossível a anulação!"));
    EXPECT_EQ(ecra.campo(5).Text, "1") << "nothing is cleared";
    EXPECT_THAT(substitui(),
                EndsWith(anomalia + "O movimento carregado já não existe. Volte a escolhê-lo da lista."));
}

TEST(Ajustes, UmaListaCurtaEDitaPelaOperacaoQuePrecisaDelaEOEcraFica) {
    EcraAjuste sem_serie(1, "SOBRAS=SB\r\n");
    sem_serie.op.prime(sem_serie.ecra.btFx(5));
    EXPECT_THAT(sem_serie.caixas(), HasSubstr("SOBRAS"));
    sem_serie.ajusta("REEL'1", "4,9"); // a breakage needs no key of surpluses
    EXPECT_EQ(sem_serie.documentos(), "QB|0.1|0 / QB|-0.1");
    sem_serie.op.prime(sem_serie.ecra.btCancelar);
    sem_serie.item("REEL'1");
    sem_serie.quantidade("6");
    sem_serie.caixas();
    const std::string conteudo = sem_serie.conteudo();
    sem_serie.confirma();
    EXPECT_THAT(sem_serie.caixas(), HasSubstr("O parâmetro SOBRAS está incompleto"));
    EXPECT_EQ(sem_serie.conteudo(), conteudo);
}

TEST_F(Consumos, UmMovimentoSemOQueOIdentificaNaoSeCarregaEDizPorque) {
    ajusta("REEL'1", "2");
    caixas();
    const auto movimento = empresa.outra().AbreActualizavel("Select * from xel_ORVEX where NNumDoc=1");
    movimento->define("Quantidade", {});
    movimento->actualiza();
    carrega("1");
    EXPECT_THAT(caixas(), StartsWith("O movimento está sem Quantidade nos"));
    EXPECT_EQ(ecra.campo(3).Text + ecra.campo(5).Text, "");
}

TEST(Ajustes, UmaGravacaoDesconhecidaNomeiaOQueHaQueVerESoIsso) {
    for (const bool substitui : {false, true}) {
        EcraAjuste ajustes(3);
        ajustes.ajusta("REEL'1", "5");
        ajustes.carrega("1");
        // The ERP then refuses to cancel the old one.
        if (substitui) ajustes.empresa.outra().Executa("Update DocGcCab set NVias=-1");
        ajustes.quantidade("4");
        ajustes.diario.lanca_em("CONFIRMA", startup::ConfirmacaoDesconhecida("Não se sabe."));
        substitui ? ajustes.confirma() : ajustes.anula();
        const std::string caixas = ajustes.caixas();
        for (const auto& [texto, dito] :
             {std::pair{"em vigor no ERP - \n\r'CI/3/2/2019 '", substitui},
              {"em vigor no ERP - \n\r'CI/3/1/2019 '", false},
              {"O documento CI/3/1/2019 ficou anulado no ERP", !substitui},
              {"o ERP não anulou, devem ser anulados manualmente - \n\r'CI/3/1/2019 '", substitui}})
            EXPECT_EQ(caixas.find(texto) != std::string::npos, dito) << texto << "\n" << caixas;
    }
}

TEST_F(Sobras, ODocumentoDeUmaAnulacaoQueFalhaEOferecidoOutraVezAoErp) {
    ajusta("REEL'1", "5,2");
    carrega("1");
    caixas();
    diario.lanca_em("EXECUTA Delete", base::Falha("Falhou."));
    anula();
    EXPECT_THAT(caixas(), HasSubstr("devem ser anulados manualmente - \n\r'SB/1/1/2019 '"));
}
