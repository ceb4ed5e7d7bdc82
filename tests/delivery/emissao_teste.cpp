#include "tests/delivery/ecra_guias.h"

using namespace orvex;
using namespace orvex::testes;

TEST_F(Guias, OsTextosDeEmitirCarregarEAnularUmaGuia) {
    cliente("CL'1");
    escolhe(1);
    preenche_com("c", {22, 23, 24, 25, 26, 27});
    ecra.DTPicker2(1).Value = {2019, 3, 16, 8, 5, 0};
    diario.recomeca();
    confirma();
    EXPECT_EQ(diario.texto(), R"(
INICIA
TRANCA
CRIA SageApiNextPlus.DocumentoComercial
Cab Ano=2019 Data='15-03-2019' AreaGestao=4 Sector='SG' Serie=1 TipoDocumento='GR' TipoTerceiro=2 Terceiro='CL'1' TipoPreco=0
doc.Validar()
Cab NumeroContribuinte='123456789' Processo='c22' VossoNoDocumento='c23' Vendedor='V1' MeiodeTransporte='c24' Matricula='c25' LocalCarga='c26' LocalDescarga='c27' HoraCarga='10:20:30' HoraDescarga='08:05:00' DataCarga='15-03-2019' DataDescarga='16-03-2019' IvaIncluido=False
CRIA SageApiNextPlus.DocumentosGcLin
lin TipoDeLinha=1 Artigo=''
doc.SugereValoresLin(lin, True, True, True, True, True, False, True)
lin descricao='O material constante desta posição foi facturado no documento ' Quantidade=0 Unidade='' TaxaIVA=0 DataMvStock='15-03-2019' PrecoUnitario=0 Sector='SG' Desconto=0 TaxaDesconto=0 Armazem=''
doc.AdicionaLinha(lin)
CRIA SageApiNextPlus.DocumentosGcLin
lin TipoDeLinha=1 Artigo=''
doc.SugereValoresLin(lin, True, True, True, True, True, False, True)
lin descricao='FA/1/123 de 01-03-2019' Quantidade=0 Unidade='' TaxaIVA=0 DataMvStock='15-03-2019' PrecoUnitario=0 Sector='SG' Desconto=0 TaxaDesconto=0 Armazem=''
doc.AdicionaLinha(lin)
CRIA SageApiNextPlus.DocumentosGcLin
lin TipoDeLinha=1 Artigo='BOB'1' Armazem='OR'
doc.SugereValoresLin(lin, True, True, True, True, True, False, True)
lin descricao='Bobina d'aço' Quantidade=2.5 QuantidadeOrigem=2.5 Unidade='TON' DataMvStock='15-03-2019' PrecoUnitario=0 Sector='SG' Desconto=0 TaxaDesconto=0
doc.AdicionaLinha(lin)
SUBMETE 3
submetido.Finalizar(0, 0, 'GR', 2019)
ABRE Select * from xel_ORVEX_MOV where Ano=2019 and TpDoc='FA'     and NumDoc=123 and SerieDoc=1 and NumLinha=1
  altera Qtd=0 PesoLiquido=0 PesoBruto=0
CONSULTA Select * from DocGcLin where ano=2019 and tpDocum='GR' and Serie=1 and NnumDoc=1
ABRE Select * from xel_ORVEX_MOV where Ano=-1
  acrescenta Ano=2019 TpDoc='GR' NumDoc=1 SerieDoc=1 NumLinha=3 Data=2019-03-15 10:20:30 Artigo='BOB'1' Cliente='CL'1' Descritivo='Bobina d'aço' QtdOrig=2.5 Qtd=2.5 Origem='2019/FA/1/123/1/00000' PesoLiquido=2.5 PesoBruto=2.6
ABRE Select * from xel_ORVEX where Ano=-1
  acrescenta NumSerie='BOB'1' Cliente='ORVEX' Data=2019-03-15 10:20:30 Quantidade=-2.5 Obs='José O'Neill, Lda' Funcionario='' CliFinal='ORVEX' Preco=0 Ano=2019 TpDoc='GR' NNumDoc=1 Serie=1 NumLin=3
ABRE Select * from U_DocGcLin1 where ano=-1
  acrescenta TpDocUM='GR' NNumDoc=1 NumLinha=3 Serie=1 Ano=2019 PesoBruto=2.6
CONFIRMA
)");
    diario.recomeca();
    carrega("1");
    EXPECT_THAT(diario.texto(), HasSubstr(R"(
doc.Ler(2019, 1, 1, 'GR')
CONSULTA SELECT *  FROM  RGIVA  where RgIva.Codigo='N''1'
Linhas.Item(1)
CONSULTA Select * from U_DocGcLin1 where Ano=2019 and NumLinha=1  and TpDocum='GR' and Serie=1  and NNumdoc=1  
)"));
    diario.recomeca();
    anula();
    EXPECT_EQ(diario.texto(), R"(
INICIA
CONSULTA Select * from xel_ORVEX_MOV where  Cliente = 'CL''1' and TpDoc='GV' and Artigo='BOB''1' 
TRANCA
CONSULTA Select * from xel_ORVEX_MOV where Ano=2019 and TpDoc='GR'     and NumDoc=1 and SerieDoc=1 
ABRE Select * from xel_ORVEX_MOV where Ano=2019 and TpDoc='FA'     and NumDoc=123 and SerieDoc=1 and NumLinha=1
  altera Qtd=2.5 PesoLiquido=2.5 PesoBruto=2.6
CONSULTA Select * from xel_ORVEX_MOV where TpDoc='GV' and Origem='2019/GR/1/1/3/00000'
EXECUTA Delete xel_ORVEX_MOV where Ano=2019 and TpDoc='GR'     and NumDoc=1 and SerieDoc=1 
EXECUTA Delete xel_ORVEX where Ano=2019 and TpDoc='GR'     and NNumDoc=1 and Serie=1 
ANULA 1 GR/1/1/2019
CONFIRMA
)");
}

TEST_F(Guias, MaisDoQueUmaLinhaTemERecusadoMesmoEspalhadoPorVariasOuTiradoPorOutroPosto) {
    cliente("CL'1");
    escolhe(1);
    edita(1, "Quant", "1");
    escolhe(1);
    edita(1, "Quant", "2");
    caixas();
    diario.recomeca();
    confirma();
    EXPECT_THAT(caixas(), EndsWith(" ultrapassa a permitida.\r\n Linha com BOB'1 Qtd = 3,5 "));
    EXPECT_EQ(diario.texto() + linhas(ecra.Gr, {"Quant"}), "\n2; 1.5");
    EXPECT_TRUE(no_campo(0));
    edita(1, "Quant", "1");
    empresa.outra().Executa("Update xel_ORVEX_MOV set Qtd=1 where NumDoc=123 and NumLinha=1");
    confirma();
    EXPECT_THAT(caixas(), HasSubstr("1 já não tem em aberto a quantidade pedida."));
}

TEST(Emissao, ExigeClienteContribuinteNoMercadoNacionalLinhasEDatasPerto) {
    // Client, tax number, the answer => the box => the control that has the keyboard.
    for (const auto& caso :
         tabela({" =>  => 1 => Falta o Cliente! => campo(0)",
                 "CL'1 =>  => 1 => Número Contribuinte obrigatório! => campo(19)",
                 "CL'1 => 123456780 => 2 => Número Contribuinte inválido! => campo(19)",
                 "CL'1 => 123456780 => 1 => Documento inválido. Obrigatório ter linhas. => campo(0)",
                 "CL2 => 123456780 => 2 => Documento inválido. Obrigatório ter linhas. => campo(0)"})) {
        SCOPED_TRACE(caso[0] + " " + caso[1]);
        EcraGuias guias;
        guias.cliente(caso[0]);
        guias.ecra.campo(19).Text = caso[1];
        guias.janela.respostas = {std::stoi(caso[2])};
        guias.confirma();
        EXPECT_THAT(guias.caixas(), EndsWith(caso[3]));
        EXPECT_EQ(guias.ecra.foco().actual()->nome, caso[4]);
    }
    EcraGuias guias;
    for (common::SelectorData* data :
         {&guias.ecra.DTPicker1, &guias.ecra.DTPicker2(0), &guias.ecra.DTPicker2(1)}) {
        guias.cliente("CL'1");
        guias.escolhe(1);
        guias.ecra.utilizador_data(*data, {2017, 10, 15});
        guias.janela.respostas = {common::resposta_cancelar};
        guias.confirma();
        EXPECT_EQ(guias.caixas(), "A data 15-10-2017 está a mais de um ano de hoje.\r\nPretende continuar?");
        EXPECT_EQ(guias.ecra.foco().actual(), data);
        guias.op.prime(guias.ecra.btCancelar);
    }
    EXPECT_EQ(guias.empresa.linhas("select * from DocGcCab"), "");
}

TEST_F(Guias, SoAGuiaCarregadaEAnuladaESoSeOUtilizadorQuiser) {
    emite({1});
    const auto livro = empresa.livro();
    for (const std::function<void()>& muda : std::initializer_list<std::function<void()>>{
             [&] {
                 ecra.utilizador_data(ecra.DTPicker1, {2018, 3, 15});
             },
             [&] { cliente("CL2"); }, [&] { cliente(""); },
             [&] { janela.respostas = {common::resposta_cancelar}; }}) {
        carrega("1");
        muda();
        caixas();
        anula();
        EXPECT_NE(caixas(), "");
        EXPECT_EQ(empresa.livro(), livro);
        EXPECT_EQ(empresa.linhas("select NVias from DocGcCab"), "0");
        op.prime(ecra.btCancelar);
    }
}

// What comes back of a note is what its lines on the screen say.
TEST_F(Guias, UmaGuiaCarregadaNaoSeAltera) {
    carrega_uma({1});
    EXPECT_FALSE(edita(3, "Quant", "1"));
    EXPECT_EQ(caixas(), "A guia carregada não pode ser alterada!");
    EXPECT_EQ(ecra.Gr.moeda(2, "Quant"), m("2.5"));
}
