#include "tests/delivery/ecra_guias.h"

using namespace orvex;
using namespace orvex::testes;

TEST(ValidaNIF, TemNoveAlgarismosEOUltimoConfereComOsOutros) {
    for (const auto& caso : tabela({"123456789 => 0", "123456780 => 1", "100000010 => 0", "100000011 => 1",
                                    "000000400 => 0", "000000401 => 1", "12345678 => 1", "1234567890 => 1",
                                    "12345678X => 1", "1234567é => 1", " => 2"})) {
        delivery::ResultadoNIF ok{};
        delivery::ValidaNIF(caso[0], ok);
        EXPECT_EQ(std::to_string(static_cast<int>(ok)), caso[1]) << caso[0];
    }
}

TEST(GuiasParametros, UmaMensagemNomeiaTodasAsListasCurtas) {
    for (const auto& caso :
         tabela({" => GUIADEVOLUCAO\r\nGUIASREMESSA\r\nFACTURAS\r\nARMAZEM\r\nARMAZEMORVEX\r\nCLIENTEORVEX",
                 "GUIADEVOLUCAO=GV,1,S\nGUIASREMESSA=GR,1\nFACTURAS=FA,1,X;FR,2\nARMAZEM=A,a\nARMAZEMORVEX="
                 "O\nCLIENTEORVEX=O => GUIASREMESSA\r\nFACTURAS\r\nARMAZEMORVEX"})) {
        Bancada<delivery::GuiasRemessa> bancada;
        bancada.empresa.escreve_parametros(caso[0]);
        EXPECT_THAT([&] { bancada.abre(); },
                    testing::ThrowsMessage<base::Falha>(EndsWith("os parâmetros:\r\n" + caso[1])));
    }
}

TEST_F(Guias, CamposELinhasDeTextoLevamOQueLevamAsColunasOndeAcabam) {
    std::string limites;
    for (auto& [indice, campo] : ecra.campo)
        if (campo.MaxLength > 0)
            limites += std::to_string(indice) + ":" + std::to_string(campo.MaxLength) + " ";
    EXPECT_EQ(limites, "0:15 1:10 2:6 3:6 19:20 22:30 23:30 24:40 25:20 26:60 27:60 ");
    EXPECT_EQ(ecra.Gr.colunas()[1].comprimento_maximo, 80);
}

TEST_F(Guias, UmClienteELidoQuandoFoiEscritoERecusadoQuandoNaoExisteOuEstaInactivo) {
    const auto mostrado = [&] { return caixas() + ecra.Label2(1).Caption + "|" + textos({19, 2, 3}); };
    for (const std::string codigo : {"XX", "INA", "' or '1'='1", ""}) {
        cliente("cl'1"); // taken as the ERP writes it
        EXPECT_EQ(mostrado() + ecra.campo(0).Text, "José O'Neill, Lda|123456789|V1|V'2|CL'1");
        cliente(codigo);
        EXPECT_EQ(mostrado(), codigo.empty() ? "||||" : "Cliente não existente!||||");
        EXPECT_EQ(no_campo(0), !codigo.empty());
    }
    cliente("CL'1");
    diario.recomeca();
    ecra.utilizador_foca(ecra.campo(0));
    op.sai();
    EXPECT_EQ(diario.texto(), "\n") << "nothing was typed: nothing is asked again";
}

TEST(CamposDasGuias, VendedoresENumerosDeContribuinteSaoVerificadosASaida) {
    // Client, field, text, what is shown, the answer (1 OK, 2 Cancel), whether the cursor stays.
    for (const auto& caso : tabela({"CL'1 => 2 =>   =>  => 1 => no", "CL'1 => 3 => v'2 =>  => 1 => no",
                                    "CL'1 => 2 => V9 => Vendedor inexistente/interdito! => 1 => stays",
                                    "CL'1 => 3 => V9 => Vendedor inexistente/interdito! => 1 => stays",
                                    "CL'1 => 19 => 123456789 =>  => 1 => no",
                                    "CL'1 => 19 => 123456780 => Número Contribuinte inválido! => 1 => no",
                                    "CL'1 => 19 => 123456780 => Número Contribuinte inválido! => 2 => stays",
                                    "CL'1 => 19 =>   => Campo obrigatório! => 1 => stays",
                                    "CL2 => 19 => 123456789 => Número Contribuinte inválido! => 2 => stays",
                                    "CL3 => 19 => 123456789 => Número Contribuinte inválido! => 1 => no"})) {
        SCOPED_TRACE(caso[0] + " " + caso[1] + " " + caso[2]);
        EcraGuias guias;
        guias.cliente(caso[0]);
        guias.caixas();
        guias.ecra.utilizador_pagina(guias.ecra.SSTab1, 1);
        guias.janela.respostas = {std::stoi(caso[4])};
        const int indice = std::stoi(caso[1]);
        guias.op.preenche(guias.ecra.campo(indice), caso[2]);
        EXPECT_EQ(guias.caixas(), caso[3]);
        EXPECT_EQ(guias.no_campo(indice), caso[5] == "stays");
        EXPECT_NE(guias.ecra.campo(indice).Text, "v'2") << "as the ERP writes it";
    }
}

TEST_F(Guias, UmNumeroCarregaASuaGuiaOuDizPorqueNao) {
    cliente("CL'1");
    preenche_com("d'á ", {22, 23, 25, 26, 27});
    escolhe(1);
    confirma();
    cliente("CL2");
    caixas();
    carrega("0001");
    // The note's vendor is what stood in the manager's field; what is shown of another client goes.
    EXPECT_EQ(caixas() + ecra.Label2(1).Caption + textos({1, 0, 19, 2, 3, 22, 23, 25, 26, 27}),
              "1|CL'1|123456789||V1|d'á 22|d'á 23|d'á 25|d'á 26|d'á 27|");
    EXPECT_EQ(ecra.DTPicker1.Value, (base::DataHora{2019, 3, 15}));
    EXPECT_EQ(ecra.DTPicker2(0).Value, relogio);
    EXPECT_EQ(linhas(ecra.Gr, {"Artigo", "Quant", "PesoBruto", "NumLinha"}),
              "|0|0|1; |0|0|2; BOB'1|2.5|2.6|3");
    EXPECT_EQ(ecra.foco().actual()->nome + botoes(), "SSTab1-AD");
    for (const char* numero : {"abc", "1,5", "4294967297"}) {
        carrega(numero);
        EXPECT_EQ(caixas() + ecra.foco().actual()->nome, "Valor inválido!campo(1)");
        EXPECT_EQ(textos({0, 1}), std::string("CL'1|") + numero + "|") << "nothing is cleared";
    }
    // Statement => number => what is said.
    for (const auto& caso :
         tabela({" => 99 => O documento GR/1/99/2019 não existe.", " => 0 => ", " =>  => ",
                 "Update DocGcCab set [Convert]=-1 where NNumDoc=1 => 1 => Guia Remessa já Convertida!"})) {
        ecra.campo(0).Text = "CL'1";
        if (!caso[0].empty()) empresa.outra().Executa(caso[0]);
        carrega(caso[1]);
        EXPECT_EQ(caixas(), caso[2]);
        EXPECT_TRUE(vazio());
    }
    empresa.outra().Executa("Update DocGcCab set NVias=-1, [Convert]=0 where NNumDoc=1");
    carrega("1");
    EXPECT_EQ(caixas() + botoes(), "Documento Anulado!---");
}

TEST_F(Guias, AListaDeGuiasMostraAsQueEstaoEmVigorEPreencheOClienteEDepoisAGuia) {
    for (int i = 0; i < 3; ++i)
        emite({1});
    empresa.outra().Executa("Update DocGcCab set NVias=-1 where NNumDoc=1");
    empresa.outra().Executa("Update DocGcCab set [Convert]=-1 where NNumDoc=2");
    janela.escolhe_a_primeira_com("No. Doc.", "3");
    op.prime(ecra.btFx(1));
    EXPECT_THAT(janela.listas.at(0).primeira_coluna, ElementsAre("2019-03-15 00:00:00*3*CL'1"));
    EXPECT_EQ(janela.listas.at(0).forma, "Guias de Remessa, 8400, 1:hidden 2:1200 3:1000 4:1200 5:4500");
    EXPECT_EQ(ecra.Label2(1).Caption + "|" + textos({0, 1}) + botoes(), "José O'Neill, Lda|CL'1|3|-AD");
    cliente("CL2");
    op.prime(ecra.btFx(1));
    EXPECT_THAT(janela.listas.at(1).primeira_coluna, ElementsAre()) << "this client's alone";
}

TEST_F(Guias, AsOutrasListasTemTodosOsClientesEVendedoresEscNoClienteFechaESairDesliga) {
    op.prime(ecra.btFx(0));
    ecra.utilizador_pagina(ecra.SSTab1, 1);
    op.prime(ecra.btFx(2));
    EXPECT_THAT(janela.listas.at(0).primeira_coluna, ElementsAre("CL'1", "CL2", "CL3", "INA"));
    EXPECT_THAT(janela.listas.at(1).primeira_coluna, ElementsAre("V'2", "V1")) << "by name";
    op.tecla(ecra.campo(0), common::tecla_esc);
    EXPECT_TRUE(janela.descarregada);
    ecra.Form_Terminate();
    EXPECT_FALSE(ERP.Empresa());
    EXPECT_THROW(BD.Consulta("select * from Clientes"), base::Falha);
}
