#include "tests/transfer/ecra_trf.h"

#include "platform/sqlite/empresa.h"

using namespace orvex;
using namespace orvex::testes;

static const std::string anomalia = "Situação Anómala\n\rErro: ";

using ParaOrvex = NoModo<EcraTrf, 1>;
using ParaCliente = NoModo<EcraTrf, 2>;

TEST(TrfBobines, CadaRecusaDizPorqueESoLimpaOQueTemDeLimpar) {
    // Mode, field, what is typed => the box => the labels 2, 3, 4 and the fields 1, 2, 4, 5 afterwards.
    for (const auto& caso : tabela({
             "1|0| =>  => ||||||",
             "1|0|NADA => Artigo não existente! => ||||||",
             "1|0|CASA => Este Artigo/Num.Série já pertence à ORVEX! => ||||||",
             "2|0|CASA => Este Artigo/Num.Série pertence à ORVEX! => ||||||",
             "2|0|COMGUIA => Existem Guias de Remessa por gerar para este Artigo! => ||||||",
             "1|0|PARADA => Artigo não existente! => |L3|L4|c1|c2|c4|c5",
             "2|0|SEMSTOCK => Este Artigo não tem Existência! => L2|L3|L4|c1|c2|c4|c5",
             "2|2| => Campo obrigatório! => L2|L3||c1||c4|c5",
             "2|2|ORVEX => Impossível.Cliente destino selecionado é a ORVEX! => L2|L3||c1|ORVEX||",
             "2|2|c1 => Impossível.Cliente destino selecionado é o mesmo! => L2|L3||c1|c1||",
             "2|2|NADA => Cliente não existente! => L2|L3||c1|NADA||",
             "2|2|INA => Cliente não existente! => L2|L3||c1|INA||",
         })) {
        SCOPED_TRACE(caso[0]);
        const auto entrada = partes(caso[0], "|");
        EcraTrf trf(std::stoi(entrada[0]));
        for (const int i : {2, 3, 4})
            trf.ecra.Label2(i).Caption = "L" + std::to_string(i);
        for (const int i : {1, 2, 4, 5})
            trf.ecra.campo(i).Text = "c" + std::to_string(i);
        const int campo = std::stoi(entrada[1]);
        trf.op.preenche(trf.ecra.campo(campo), entrada[2]);
        EXPECT_EQ(trf.caixas(), caso[1]);
        EXPECT_EQ(trf.conteudo(), caso[2]);
        EXPECT_EQ(trf.no_campo(campo), !caso[1].empty());
    }
}

TEST_F(ParaOrvex, UmArtigoVoltaAOrvex) {
    for (const char* nome : {"campo(2)", "btFx(2)", "Label2(4)"})
        EXPECT_FALSE(ecra.controlo(nome).Visible) << nome;
    diario.recomeca();
    item("CEDIDA");
    EXPECT_EQ(conteudo(), "Bobina d'aço (2,5)|Ibérica SL||CL2||"
                          "Mov.Entrada - Aquisição pela Orvex do Cliente CL2|"
                          "Mov.Saida - Aquisição pela Orvex do Cliente CL2");
    ecra.utilizador_data(ecra.DTPicker1, {2017, 12, 31, 9, 5, 0});
    janela.respostas = {common::resposta_cancelar};
    confirma();
    EXPECT_THAT(caixas(), StartsWith("A data 31-12-2017 está a mais de um ano"));
    ecra.utilizador_data(ecra.DTPicker1, {2018, 12, 31, 9, 5, 0});
    confirma();
    EXPECT_EQ(diario.texto(), R"(
CONSULTA Select top 1 * from xel_ORVEX where NumSerie='CEDIDA' order by Registo desc
CONSULTA Select * from xel_ORVEX_Mov INNER JOIN Artigos ON Artigos.Codigo=xel_ORVEX_Mov.Artigo where Artigo ='CEDIDA' and Qtd>0 and artoudes=0 and ( (TpDoc='FA' and SerieDoc=1) )
CONSULTA SELECT * FROM Artigos  where Artigos.CODIGO='CEDIDA' and Artigos.Inactivo<>-1 
CONSULTA SELECT * FROM artarm  where artarm.Artigo='CEDIDA' and Armazem='CL'
CONSULTA Select top 1 * from xel_ORVEX where Numserie='CEDIDA' order by Registo desc
CONSULTA Select * from Clientes where Codigo='CL2' 
INICIA
TRANCA
CONSULTA Select top 1 * from xel_ORVEX where NumSerie='CEDIDA' order by Registo desc
CONSULTA Select * from xel_ORVEX_Mov INNER JOIN Artigos ON Artigos.Codigo=xel_ORVEX_Mov.Artigo where Artigo ='CEDIDA' and Qtd>0 and artoudes=0 and ( (TpDoc='FA' and SerieDoc=1) )
CONSULTA SELECT * FROM artarm  where artarm.Artigo='CEDIDA' and Armazem='CL'
ABRE Select * from xel_ORVEX where Ano=-1
  acrescenta NumSerie='CEDIDA' Cliente='CL'1' Data=2018-12-31 09:05:00 Quantidade=-2.5 Obs='Mov.Saida - Aquisição pela Orvex do Cliente CL2' Funcionario='' CliFinal='ORVEX' Preco=0 Ano=2019 TpDoc='QB' NNumDoc=0 Serie=2 NumLin=1
ABRE Select * from xel_ORVEX where Ano=-1
  acrescenta NumSerie='CEDIDA' Cliente='ORVEX' Data=2018-12-31 09:05:00 Quantidade=2.5 Obs='Mov.Entrada - Aquisição pela Orvex do Cliente CL2' Funcionario='' CliFinal='ORVEX' Preco=0 Ano=2019 TpDoc='SB' NNumDoc=0 Serie=1 NumLin=1
CONSULTA SELECT VLREXIST , STDISP , ULTPRCOM  From Artigos WHERE     (CODIGO = 'CEDIDA')
STOCK 1, 6, 'TR', 'ST', 6, 'OR', '', '', '31-12-2018', '', 'CL', 0, '', ['' 'CEDIDA'], ['' ''], [0 2.5], [0 100], ['' '']
CONFIRMA
)");
}

TEST_F(ParaCliente, UmArtigoPassaParaOutroClienteEAFichaDizQual) {
    insere(empresa.outra(), "Clientes", {"CODIGO", "Nome"},
           {{"CL'9", "Trefilaria Ançã & Irmãos D'😀rey, Lda"}});
    item("REEL'1");
    EXPECT_TRUE(no_campo(2));
    EXPECT_EQ(ecra.campo(2).MaxLength + ecra.campo(4).MaxLength, 15 + 100);
    EXPECT_EQ(conteudo(), "Bobina d'aço (2,5)|José O'Neill, Lda||CL'1|||");
    diario.recomeca();
    destino("CL'9");
    EXPECT_THAT(conteudo(), HasSubstr("|CL'9|Mov.Entrada - Transferência do Cliente CL'1|"
                                      "Mov.Saida - Transferência para Cliente CL'9"));
    auto erp = platform::sqlite::abre_base(empresa.pasta() / platform::sqlite::ficheiro_erp);
    erp.exec("BEGIN IMMEDIATE"); // nothing is written to the ERP's file
    confirma();
    EXPECT_THAT(diario.texto(), EndsWith(R"(
INICIA
TRANCA
CONSULTA Select top 1 * from xel_ORVEX where NumSerie='REEL''1' order by Registo desc
CONSULTA Select * from xel_ORVEX_Mov INNER JOIN Artigos ON Artigos.Codigo=xel_ORVEX_Mov.Artigo where Artigo ='REEL''1' and Qtd>0 and artoudes=0 and ( (TpDoc='FA' and SerieDoc=1) )
CONSULTA SELECT * FROM artarm  where artarm.Artigo='REEL''1' and Armazem='CL'
ABRE Select * from xel_ORVEX where Ano=-1
  acrescenta NumSerie='REEL'1' Cliente='CL'1' Data=2019-03-15 10:20:30 Quantidade=-2.5 Obs='Mov.Saida - Transferência para Cliente CL'9' Funcionario='' CliFinal='CL'9' Preco=0 Ano=2019 TpDoc='QB' NNumDoc=0 Serie=2 NumLin=1
ABRE Select * from xel_ORVEX where Ano=-1
  acrescenta NumSerie='REEL'1' Cliente='CL'9' Data=2019-03-15 10:20:30 Quantidade=2.5 Obs='Mov.Entrada - Transferência do Cliente CL'1' Funcionario='' CliFinal='CL'9' Preco=0 Ano=2019 TpDoc='SB' NNumDoc=0 Serie=1 NumLin=1
ABRE Select * from Artigos where Codigo='REEL''1'
  altera Observ='CL'9 - Trefilaria Ançã & Irmãos D''
CONFIRMA
)"));
}

TEST(TrfBobines, UmaFalhaEMostradaComOSeuNumeroEFicaParaAsQueVemSemTexto) {
    for (const auto& caso :
         tabela({"QUEBRAS=LONGO,1,S => 3671 - ", "- => Primeira.",
                 "TRF=XX,1,S => 2147226504 - O tipo de documento «XX» não movimenta stocks."})) {
        EcraTrf trf(1, caso[0] + "\r\n");
        if (caso[0] == "-") trf.diario.lanca_em("INICIA", base::Falha("Primeira."));
        for (const bool segunda : {false, true}) {
            trf.item("REEL'1");
            if (segunda) trf.diario.recomeca();
            trf.diario.falha_no = segunda;
            trf.confirma();
            EXPECT_THAT(trf.caixas(), HasSubstr(anomalia + caso[1]));
        }
    }
}

TEST(TrfBobines, OQueFaltaOuFoiEscritoMasNuncaAceiteNaoSeTransfere) {
    // Esc leaves a field without validating it; the last item is with the client chosen for the one before.
    for (const auto& caso :
         tabela({"0 => OUTRA => O Artigo/Num.Série OUTRA não foi validado. Volte a indicá-lo. => 0",
                 "2 => NADA => O cliente destino NADA não foi validado para este Artigo. Volte a indicá-lo. "
                 "=> 0",
                 "2 =>  => Deve selecionar o cliente destino! => 2",
                 "0 =>  => Campo obrigatório [Artigo/Num.Série]. => 0"})) {
        EcraTrf trf(2);
        trf.item("REEL'1");
        trf.destino("CL2");
        common::Campo& campo = trf.ecra.campo(std::stoi(caso[0]));
        trf.op.escreve(campo, caso[1]);
        trf.op.tecla(campo, common::tecla_esc);
        trf.confirma();
        EXPECT_EQ(trf.caixas(), (caso[1].empty() ? "" : anomalia) + caso[2]);
        EXPECT_TRUE(trf.no_campo(std::stoi(caso[3])));
        EXPECT_EQ(trf.rasto(), "");
    }
}

TEST(TrfBobines, OQueMudouDesdeQueOArtigoFoiMostradoNaoSeTransfereEOTextoNaoFica) {
    for (const auto& caso :
         tabela({"Update artarm set Existenc=1 where Artigo='REEL''1' => A Existência do Artigo/Num.Série "
                 "REEL'1 mudou depois de ter sido indicado. Volte a indicá-lo.",
                 "Update xel_ORVEX_Mov set Artigo='REEL''1' where Artigo='COMGUIA' => Existem Guias de "
                 "Remessa por gerar para este Artigo!",
                 "Delete xel_ORVEX where NumSerie='REEL''1' and NNumDoc=8 => O Artigo/Num.Série REEL'1 teve "
                 "outro movimento depois de ter sido indicado. Volte a indicá-lo."})) {
        EcraTrf trf(1);
        trf.item("REEL'1");
        trf.empresa.outra().Executa(caso[0]);
        trf.confirma();
        EXPECT_EQ(trf.caixas(), anomalia + caso[1]);
        trf.item("OUTRA");
        trf.diario.recomeca();
        trf.diario.falha_no = 1;
        trf.confirma();
        EXPECT_EQ(trf.caixas(), anomalia + "Falha provocada.");
    }
}

TEST(TrfBobines, UmaGravacaoDesconhecidaDizOndeVer) {
    for (const int modo : {1, 2}) {
        EcraTrf trf(modo);
        trf.item("REEL'1");
        if (modo == 2) trf.destino("CL2");
        trf.diario.lanca_em("CONFIRMA", startup::ConfirmacaoDesconhecida("Não se sabe."));
        trf.confirma();
        EXPECT_THAT(trf.caixas(),
                    EndsWith("veja se o último movimento do artigo REEL'1 é o desta transferência: "
                             "se sim, está tudo feito; se não, " +
                             std::string(modo == 1 ? "anule-os no ERP." : "nada ficou.")));
    }
}

TEST_F(ParaCliente, OsCodigosFicamEComparamSeComoOErpOsEscreve) {
    insere(empresa.outra(), "Clientes", {"CODIGO", "Nome"}, {{"ORVEX", "A própria"}});
    item("reel'1");
    EXPECT_EQ(ecra.campo(0).Text, "REEL'1");
    for (const auto& [codigo, aviso] :
         {std::pair{"orvex", "é a ORVEX!"}, {"cl'1", "é o mesmo!"}, {"cl2", ""}}) {
        destino(codigo);
        EXPECT_THAT(caixas(), EndsWith(aviso));
    }
    // A destination was accepted for its item alone.
    item("OUTRA");
    EXPECT_EQ(conteudo(), "Bobina d'aço (2,5)|José O'Neill, Lda||CL'1|||");
    destino("cl2");
    confirma();
    EXPECT_EQ(caixas() + rasto(), "CL'1|CL2|-2.5; CL2|CL2|2.5");
}

TEST(TrfBobines, UmParametroCurtoEDitoEOsCamposFicamMasOutraFalhaAcabaOPrograma) {
    for (const auto& caso : tabela({"TRF=TR,6 => TRF", "SOBRAS=SB => SOBRAS", "FACTURAS=FA,1 => FACTURAS",
                                    "FACTURAS= => FACTURAS", "CLIENTEORVEX= => CLIENTEORVEX"})) {
        EcraTrf trf(1, caso[0] + "\r\n");
        trf.diario.recomeca();
        trf.item("REEL'1");
        trf.confirma();
        EXPECT_THAT(trf.caixas(), HasSubstr("O parâmetro " + caso[1] + " está incompleto"));
        EXPECT_EQ(trf.ecra.campo(0).Text, "REEL'1");
        EXPECT_THAT(trf.diario.texto(), testing::Not(HasSubstr("INICIA")));
        EXPECT_FALSE(trf.janela.descarregada);
    }
    EcraTrf trf(1);
    trf.diario.falha_no = trf.diario.passos + 1;
    trf.item("REEL'1");
    EXPECT_EQ(trf.caixas(), "Falha provocada.");
    EXPECT_TRUE(trf.janela.descarregada);
}

TEST_F(ParaCliente, AsListasTemTodosOsArtigosDoLivroEOsClientesEmUso) {
    janela.escolhe_a_primeira_com("Artigo", "REEL'1");
    op.prime(ecra.btFx(0));
    EXPECT_TRUE(no_campo(2)); // the choice was validated
    ecra.utilizador_lista(ecra.campo(2));
    ecra.utilizador_lista(ecra.campo(4)); // none
    ASSERT_EQ(janela.listas.size(), 2U);
    EXPECT_EQ(janela.listas[0].primeira_coluna.size(), 7U);
    EXPECT_THAT(janela.listas[1].primeira_coluna, ElementsAre("CL'1", "CL2", "CL3"));
}
