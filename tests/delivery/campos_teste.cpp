#include "tests/delivery/ecra_guias.h"

using namespace orvex;
using namespace orvex::testes;

TEST(ValidaNIF, nine_digits_with_their_check_digit) {
    for (const auto& caso : tabela({"123456789 => 0", "123456780 => 1", "100000010 => 0", "100000011 => 1",
                                    "000000400 => 0", "000000401 => 1", "12345678 => 1", "1234567890 => 1",
                                    "12345678X => 1", "1234567é => 1", " => 2"})) {
        delivery::ResultadoNIF ok{};
        delivery::ValidaNIF(caso[0], ok);
        EXPECT_EQ(std::to_string(static_cast<int>(ok)), caso[1]) << caso[0];
    }
}

TEST(GuiasParametros, one_message_names_every_list_that_is_too_short) {
    for (const auto& caso : tabela(
             {" => \r\nGUIADEVOLUCAO\r\nGUIASREMESSA\r\nFACTURAS\r\nARMAZEM\r\nARMAZEMORVEX\r\nCLIENTEORVEX",
              "GUIADEVOLUCAO=GV,1,S\nGUIASREMESSA=GR,1\nFACTURAS=FA,1,X;FR,2\nARMAZEM=A,a\nARMAZEMORVEX="
              "O\nCLIENTEORVEX=O"
              " => \r\nGUIASREMESSA\r\nFACTURAS\r\nARMAZEMORVEX",
              "GUIADEVOLUCAO=G,1,S\nGUIASREMESSA=G,1,S\nFACTURAS=F,1,X;\nARMAZEM=A,a\nARMAZEMORVEX=O,"
              "o\nCLIENTEORVEX=O => "})) {
        Bancada<delivery::GuiasRemessa> bancada;
        bancada.empresa.escreve_parametros(caso[0]);
        std::string mensagem;
        try {
            bancada.abre();
        } catch (const base::Falha& falha) {
            mensagem = falha.what();
        }
        EXPECT_EQ(mensagem.substr(std::min(mensagem.find('\r'), mensagem.size())), caso[1]);
    }
}

TEST_F(Guias, fields_and_text_lines_take_what_the_columns_they_end_in_take) {
    std::string limites;
    for (auto& [indice, campo] : ecra.campo)
        if (campo.MaxLength > 0)
            limites += std::to_string(indice) + ":" + std::to_string(campo.MaxLength) + " ";
    EXPECT_EQ(limites, "0:15 1:10 2:6 3:6 19:20 22:30 23:30 24:40 25:20 26:60 27:60 ");
    EXPECT_EQ(ecra.Gr.colunas()[1].comprimento_maximo, 80);
}

TEST_F(Guias, a_client_is_read_when_it_was_typed_and_refused_when_unknown_or_inactive) {
    const auto mostrado = [&] { return ecra.Label2(1).Caption + "|" + textos({19, 2, 3}); };
    for (const char* codigo : {"XX", "INA", "' or '1'='1", ""}) {
        cliente("cl'1"); // taken as the ERP writes it
        EXPECT_EQ(caixas() + mostrado() + ecra.campo(0).Text, "José O'Neill, Lda|123456789|V1|V'2|CL'1");
        cliente(codigo);
        EXPECT_EQ(caixas() + mostrado(), *codigo != '\0' ? "Cliente não existente!||||" : "||||");
        EXPECT_EQ(no_campo(0), *codigo != '\0');
    }
    cliente("CL'1");
    diario.recomeca();
    ecra.utilizador_foca(ecra.campo(0));
    op.sai();
    EXPECT_EQ(diario.texto(), "\n") << "nothing was typed: nothing is asked again";
}

TEST_F(Guias, vendors_and_tax_numbers_are_checked_as_they_are_left) {
    // Client, field, text, what is shown, the answer (1 OK, 2 Cancel), whether the cursor stays.
    for (const auto& caso : tabela({"CL'1 => 2 =>   =>  => 1 => no", "CL'1 => 3 => V'2 =>  => 1 => no",
                                    "CL'1 => 2 => V9 => Vendedor inexistente/interdito! => 1 => stays",
                                    "CL'1 => 3 => V9 => Vendedor inexistente/interdito! => 1 => stays",
                                    "CL'1 => 19 => 123456789 =>  => 1 => no",
                                    "CL'1 => 19 => 123456780 => Número Contribuinte inválido! => 1 => no",
                                    "CL'1 => 19 => 123456780 => Número Contribuinte inválido! => 2 => stays",
                                    "CL'1 => 19 =>   => Campo obrigatório! => 1 => stays",
                                    "CL2 => 19 => 123456789 => Número Contribuinte inválido! => 2 => stays",
                                    "CL3 => 19 => 123456789 => Número Contribuinte inválido! => 1 => no"})) {
        cliente(caso[0]);
        caixas();
        ecra.utilizador_pagina(ecra.SSTab1, 1);
        janela.respostas.assign(1, std::stoi(caso[4]));
        const int indice = std::stoi(caso[1]);
        op.preenche(ecra.campo(indice), caso[2]);
        EXPECT_EQ(caixas(), caso[3]);
        EXPECT_EQ(no_campo(indice), caso[5] == "stays") << caso[0] << " " << caso[2];
        ecra.utilizador_edita(ecra.campo(indice), indice == 19 ? "123456789" : "");
        janela.respostas.clear();
        op.prime(ecra.btCancelar);
        caixas();
    }
}

TEST_F(Guias, a_note_number_loads_the_note_or_says_why_not) {
    cliente("CL'1");
    preenche_com("d'á ", {22, 23, 25, 26, 27});
    escolhe(1);
    confirma();
    caixas();
    carrega("0001");
    // The note's vendor is what stood in the manager's field.
    EXPECT_EQ(caixas() + textos({1, 0, 19, 3, 22, 23, 25, 26, 27}),
              "1|CL'1|123456789|V1|d'á 22|d'á 23|d'á 25|d'á 26|d'á 27|");
    EXPECT_EQ(ecra.DTPicker1.Value, (base::DataHora{2019, 3, 15}));
    EXPECT_EQ(ecra.DTPicker2(0).Value, relogio);
    EXPECT_EQ(linhas(ecra.Gr, {"Artigo", "Quant", "PesoBruto", "NumLinha"}),
              "|0|0|1; |0|0|2; BOB'1|2.5|2.6|3");
    EXPECT_TRUE(ecra.foco().actual() == &ecra.SSTab1 && botoes() == "-AD");
    for (const char* numero : {"abc", "1,5", "4294967297"}) {
        carrega(numero);
        EXPECT_EQ(caixas(), "Valor inválido!");
        EXPECT_TRUE(no_campo(1) && ecra.campo(1).Text == numero && !vazio()) << "nothing is cleared";
    }
    carrega("99");
    EXPECT_THAT(caixas(), HasSubstr("GR/1/99/2019"));
    EXPECT_TRUE(vazio());
    for (const char* numero : {"", "0"}) {
        ecra.campo(0).Text = "CL'1";
        carrega(numero);
        EXPECT_TRUE(vazio() && caixas().empty());
    }
    empresa.outra().Executa("Update DocGcCab set NVias=-1 where NNumDoc=1");
    carrega("1");
    EXPECT_EQ(caixas() + botoes(), "Documento Anulado!---");
    empresa.outra().Executa("Update DocGcCab set [Convert]=-1 where NNumDoc=1");
    carrega("1");
    EXPECT_EQ(caixas(), "Guia Remessa já Convertida!");
    EXPECT_TRUE(vazio());
}

TEST_F(Guias, the_note_list_shows_the_notes_in_force_and_fills_the_client_then_the_note) {
    for (int i = 0; i < 3; ++i)
        emite({1});
    empresa.outra().Executa("Update DocGcCab set NVias=-1 where NNumDoc=1");
    empresa.outra().Executa("Update DocGcCab set [Convert]=-1 where NNumDoc=2");
    janela.escolhe_a_primeira_com("No. Doc.", "3");
    op.prime(ecra.btFx(1));
    EXPECT_THAT(janela.listas.at(0).primeira_coluna, ElementsAre("2019-03-15 00:00:00*3*CL'1"));
    EXPECT_EQ(ecra.Label2(1).Caption + "|" + textos({0, 1}) + botoes(), "José O'Neill, Lda|CL'1|3|-AD");
    cliente("CL2");
    op.prime(ecra.btFx(1));
    EXPECT_TRUE(janela.listas.at(1).primeira_coluna.empty() && no_campo(1));
}

TEST_F(Guias, the_lists_have_their_texts_and_widths_esc_in_the_client_closes_and_leaving_logs_off) {
    ecra.campo(0).Text = "CL'1";
    for (const int i : {0, 1, 2, 3}) {
        ecra.utilizador_pagina(ecra.SSTab1, i / 2);
        op.prime(ecra.btFx(i));
    }
    const char* listas[] = {
        "Clientes, 8000, 1:1500 2:5000SELECT Codigo AS Cliente, Nome AS Nome From Clientes  ORDER BY Codigo",
        "Guias de Remessa, 8400, 1:hidden 2:1200 3:1000 4:1200 5:4500"
        " SELECT (convert(nvarchar(19),docgccab.data,120)+'*'+cast(DocGcCab.NNumDoc as nvarchar(10))+'*'+"
        "cast(DocGcCab.Terceiro as nvarchar(15))) as Teste,DocGcCab.Data as 'Data Doc.', DocGcCab.NNumdoc as "
        "'No. Doc.',DOCGCCAB.TERCEIRO AS Cliente, CLIENTES.NOME as 'Nome Cliente' FROM DOCGCCAB INNER JOIN"
        " CLIENTES ON CLIENTES.CODIGO = DOCGCCAB.TERCEIRO WHERE     (DOCGCCAB.NVIAS <> - 1) AND "
        "(DOCGCCAB.TPTERC = 2) AND (DOCGCCAB.TPDOC = 'GR') AND (DOCGCCAB.SERIE = '1')  and Ano=2019 and "
        "[Convert]<>-1 and DOCGCCAB.Terceiro='CL''1' ORDER BY DocGcCab.Data,serie,nnumdoc",
        "Vendedores, 4500, 1:1000 2:3000 SELECT     VENDEDOR.CODIGO, VENDEDOR.NOME FROM Vendedor order by "
        "Nome"};
    for (const std::size_t i : {0U, 1U, 2U, 3U}) // two of vendors
        EXPECT_EQ(janela.listas.at(i).forma + janela.listas.at(i).sql, listas[std::min<std::size_t>(i, 2)]);
    op.tecla(ecra.campo(0), common::tecla_esc);
    EXPECT_TRUE(janela.descarregada);
    ecra.Form_Terminate();
    EXPECT_FALSE(ERP.Empresa());
    EXPECT_THROW(BD.Consulta("select * from Clientes"), base::Falha);
}
