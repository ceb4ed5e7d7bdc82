#include "tests/adjust/ecra_ajuste.h"

using namespace orvex;
using namespace orvex::testes;
using testing::HasSubstr;

namespace {

constexpr const char* anomalia = "Situação Anómala\n\rErro: ";
constexpr const char* pergunta_anular = "Vai proceder à anulação.\n\rPretende continuar?";

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

} // namespace

// What replaces a loaded adjustment is 2nd in the ERP.
TEST(Ajustes, kind_quantity_and_questions_by_mode_loaded_or_not_new_value_and_the_limit_of_150_kg) {
    const std::string sobra = "Vai proceder à geração de uma Sobra",
                      quebra = "Vai proceder à geração de uma Quebra de  ";
    const std::string consumo = "Vai proceder à geração de um Consumo de  ";
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
        {"3", "0,1499", consumo + "0,1499 Tn !", "CI|0.1499|0 / CI|-0.15"},
        {"3", "0,15", consumo + "0,15 Tn !", "CI|0.15|0 / CI|-0.15"},
        {"3", "5", consumo + "5 Tn !", "CI|5|0 / CI|-5"},
        {"1", "0,1499", sobra + "!", "SB|2|-1; SB|0.1499|0 / SB|0.15", true},
        {"1", "7", sobra_grande + "7 Tn !", "SB|2|-1; SB|7|0 / SB|7", true},
        {"2", "0,1499", quebra + "0,1499 Tn !", "QB|2|-1; QB|0.1499|0 / QB|-0.15", true},
        {"2", "3", quebra_grande + "3 Tn !", "QB|2|-1; QB|3|0 / QB|-3", true},
        {"3", "3", consumo + "3 Tn !", "CI|2|-1; CI|3|0 / CI|-3", true},
    };
    for (const auto& caso : casos)
        for (const char modo : std::string(caso.modos)) {
            SCOPED_TRACE(std::string("mode ") + modo + ", new " + caso.novo +
                         (caso.carregado ? ", loaded" : ""));
            Ajustando ajustes(modo, caso.carregado);
            ajustes.ecra.campo(3).Text = caso.novo; // not typed, so not validated
            ajustes.confirma();
            const std::string gerado =
                std::string("|Foi gerado o Documento   :  ") + (caso.carregado ? "2" : "1");
            EXPECT_EQ(sem_fim(ajustes.caixas()), caso.perguntas.empty() ? "" : caso.perguntas + gerado);
            EXPECT_EQ(ajustes.documentos(), caso.gravado);
            EXPECT_TRUE(ajustes.vazio());
        }
}

TEST(Ajustes, the_texts_of_a_confirmation_of_a_replacement_and_of_a_cancellation) {
    EcraAjuste ajustes(1);
    ajustes.item("CEDIDA");
    ajustes.ecra.campo(2).Text = "Proc'1";
    ajustes.quantidade("5,2");
    ajustes.ecra.utilizador_data(ajustes.ecra.DTPicker1, {2017, 12, 31});
    ajustes.janela.respostas = {common::resposta_cancelar};
    ajustes.confirma();
    EXPECT_EQ(ajustes.caixas(), "A data 31-12-2017 está a mais de um ano de hoje.\r\nPretende continuar?");
    EXPECT_EQ(ajustes.documentos() + ajustes.ecra.campo(3).Text, " / 5,2");
    ajustes.ecra.utilizador_data(ajustes.ecra.DTPicker1, {2018, 12, 31});
    ajustes.diario.recomeca();
    ajustes.confirma();
    EXPECT_EQ(ajustes.caixas(),
              "A Sobra é supeior ou igual a 150 Kg!\r\nPretende continuar?|Vai proceder à "
              "geração de uma Sobra de  0,2 Tn !\r\nPretende continuar?|Foi gerado o Documento   :  1");
    const std::string conferencia = R"(
INICIA
TRANCA
CONSULTA Select top 1 * from xel_ORVEX where NumSerie='CEDIDA' order by Registo desc
CONSULTA SELECT * FROM artarm  where artarm.Artigo='CEDIDA' and Armazem='CL'
)";
    const std::string criacao =
        R"(ABRE SELECT VLREXIST , STDISP , ULTPRCOM  From Artigos WHERE     (CODIGO = 'CEDIDA')
PREPARA True
STOCK 1, 6, 'SB', 'SS', 1, 'SS', 'Proc'1', '', '31-12-2018', '', 'CL', 0, '', ['' 'CEDIDA'], ['' ''], [0 0.2], [0 100], ['' '']
ABRE Select * from xel_ORVEX where Ano=-1
  acrescenta NumSerie='CEDIDA' Cliente='CL'1' Data=2018-12-31 00:00:00 Quantidade=0.2 Obs='Excesso de Peso' Funcionario='' CliFinal='CL'1' Preco=0 Ano=2018 TpDoc='SB' NNumDoc=1 Serie=1 NumLin=1
CONFIRMA
)";
    EXPECT_EQ(ajustes.diario.texto(), conferencia + criacao);

    // The ledger row's time of day, its holder and its year stay.
    ajustes.empresa.outra().Executa(
        "Update xel_ORVEX set Data='2018-12-31 08:09:10', Cliente='CL2' where NNumDoc=1");
    const std::string registo = ajustes.empresa.linhas("select Registo from xel_ORVEX where NNumDoc=1");
    ajustes.diario.recomeca();
    ajustes.carrega("1");
    EXPECT_EQ(ajustes.diario.texto(), R"(
CONSULTA  SELECT     CONVERT(nvarchar(10), Data, 120) + '*' + CAST(NNumDoc AS nvarchar(10))+ '*' + CAST(Registo AS nvarchar(10)) AS teste,  NNumDoc AS 'No.Doc.', Data,NumSerie as 'Artigo',Artigos.Nome as 'Designação Artigo',Abs(Quantidade) as Peso   From xel_ORVEX  Inner join Artigos on Artigos.Codigo=xel_Orvex.Numserie  WHERE     (TpDoc = 'SB') AND (Serie = 1) and  nnumdoc>0 order by Data desc
CONSULTA  Select * from xel_Orvex where Registo=)" +
                                          registo + R"(
CONSULTA  Select * from DocGcCab where Ano=2018 and TpDoc='SB' and NNumdoc= 1and Serie =1
CONSULTA SELECT * FROM artarm  where artarm.Artigo='CEDIDA' and Armazem='CL'
)");
    EXPECT_EQ(ajustes.conteudo(), "CEDIDA|5,2|Proc'1|0,2|Excesso de Peso|1||31-12-2018");
    ajustes.quantidade("0,1");
    ajustes.diario.recomeca();
    ajustes.confirma();
    EXPECT_THAT(
        ajustes.diario.texto(),
        HasSubstr("\nTRANCA\nCONSULTA  Select * from xel_Orvex where Registo=" + registo +
                  "\nCONSULTA Select top 1 * from xel_ORVEX where NumSerie='CEDIDA' order by Registo desc"
                  "\nANULA 1 SB/1/1/2018\nEXECUTA Delete xel_ORVEX where registo=" +
                  registo + " \nABRE SELECT VLREXIST"));
    EXPECT_THAT(ajustes.diario.texto(),
                HasSubstr("'31-12-2018', '', 'CL', 0, '', ['' 'CEDIDA'], ['' ''], [0 0.1], [0 100]"));
    EXPECT_THAT(ajustes.diario.texto(), HasSubstr("Cliente='CL2' Data=2018-12-31 08:09:10 Quantidade=0.1"));

    const std::string novo = ajustes.empresa.linhas("select Registo from xel_ORVEX where NNumDoc=2");
    ajustes.carrega("2");
    ajustes.caixas();
    ajustes.diario.recomeca();
    ajustes.anula();
    EXPECT_EQ(ajustes.diario.texto(),
              "\nCONSULTA Select * from xel_Orvex where Registo=" + novo +
                  "\nCONSULTA Select top 1 * from xel_ORVEX where NumSerie='CEDIDA' order by Registo desc"
                  "\nINICIA\nTRANCA"
                  "\nCONSULTA Select top 1 * from xel_ORVEX where NumSerie='CEDIDA' order by Registo desc"
                  "\nANULA 1 SB/1/2/2018\nEXECUTA Delete xel_ORVEX where registo=" +
                  novo + " \nCONFIRMA\n");
    EXPECT_EQ(ajustes.caixas(), pergunta_anular);
    EXPECT_TRUE(ajustes.vazio());
}

TEST(Ajustes, an_item_is_looked_up_where_its_holder_keeps_it) {
    EcraAjuste ajustes(1);
    for (const auto& caso : tabela(
             {"REEL'1 =>  => REEL'1|5|||||Bobina d'aço => 2", "CEDIDA =>  => CEDIDA|5|||||Bobina d'aço => 2",
              "PARADA => Artigo não existente! => PARADA|||||| => 0",
              "SEMLIVRO => Artigo não existente! => SEMLIVRO|||||| => 0",
              "SEMSTOCK => Este Artigo não tem Existência! => SEMSTOCK||||||Bobina d'aço => 0"})) {
        ajustes.item(caso[0]);
        EXPECT_EQ(ajustes.caixas(), caso[1]);
        EXPECT_EQ(ajustes.conteudo(), caso[2] + "|15-03-2019");
        EXPECT_TRUE(ajustes.no_campo(std::stoi(caso[3]))) << caso[0];
        EXPECT_EQ(ajustes.ecra.campo(1).Enabled, !caso[1].empty());
        ajustes.op.prime(ajustes.ecra.btCancelar);
        ajustes.ecra.campo(0).Text.clear();
        ajustes.op.prime(ajustes.ecra.btCancelar); // the click that left a refused field did nothing
        ajustes.caixas();
    }
}

TEST(Ajustes, what_is_typed_as_new_stock_or_quantity_is_checked_and_gives_an_observation) {
    for (const auto& caso : tabela(
             {"1 =>  => Campo Obrigatório! => ", "1 => abc => Valor inválido! => ",
              "1 => 900000000000 => Valor inválido! => ", "1 => 5 =>  => Excesso de Peso",
              "1 => 4,9999 => A Nova Existência deve ser superior à Existência! => ", "2 => 5 =>  => Sucata",
              "2 => 5,0001 => A Nova Existência deve ser inferior à Existência! => ",
              "3 => 5 =>  => Consumo Interno", "3 => 5,0001 => Valor Inválido para o Consumo! => ",
              "1L => 0,1 =>  => ", "1L => 99 =>  => ", "2L => 5 =>  => Sucata",
              "2L => 5,0001 => Valor Inválido para o Consumo! => ", "3L => 5 =>  => Consumo Interno",
              "3L => 5,0001 => Valor Inválido para o Consumo! => "})) {
        SCOPED_TRACE(caso[0] + " " + caso[1]);
        const bool carregado = caso[0].size() > 1;
        Ajustando ajustes(caso[0][0], carregado);
        ajustes.ecra.campo(4).Text.clear();
        EXPECT_EQ(ajustes.ecra.campo(2).MaxLength + ajustes.ecra.campo(4).MaxLength, 30 + 100);
        EXPECT_EQ(ajustes.ecra.Label2(3).Caption,
                  carregado || caso[0] == "3" ? "Quantidade" : "Nova Existência");
        ajustes.quantidade(caso[1]);
        EXPECT_EQ(ajustes.caixas(), caso[2]);
        EXPECT_EQ(ajustes.ecra.campo(4).Text, caso[3]);
        EXPECT_TRUE(ajustes.no_campo(caso[2].empty() ? 4 : 3));
        EXPECT_EQ(ajustes.ecra.campo(3).Text, caso[1]);
    }
}

TEST(Ajustes, a_confirmation_that_is_refused_or_not_agreed_to_writes_nothing) {
    for (const auto& caso : tabela({"1 =>  => Deve introduzir a nova Existência! => 3 => K",
                                    "2 => x => Valor inválido! => 3 => K",
                                    "2 => -1 => A nova Existência não pode ser negativa! => 3 => K",
                                    "3 =>  => Deve introduzir a quantidade do Consumo! => 3 => K",
                                    "3 => 5,001 => Valor Inválido para o Consumo! => 3 => K",
                                    "1 => 6 => A Sobra é supeior ou igual a 150 Kg! => 0 => K",
                                    "1 => 5,1 => Vai proceder à geração de uma Sobra! => 0 => "})) {
        SCOPED_TRACE(caso[0] + " " + caso[1]);
        Ajustando ajustes(caso[0][0], false);
        ajustes.ecra.campo(3).Text = caso[1];
        ajustes.janela.respostas = {common::resposta_cancelar};
        ajustes.diario.recomeca();
        ajustes.confirma();
        EXPECT_EQ(sem_fim(ajustes.caixas()) + ajustes.diario.texto(), caso[2] + "\n");
        EXPECT_TRUE(ajustes.no_campo(std::stoi(caso[3])));
        EXPECT_EQ(ajustes.vazio(), caso[4].empty());
    }
}

TEST(Ajustes,
     the_list_has_the_rows_of_the_modes_own_documents_newest_first_and_a_row_without_erp_header_loads) {
    EcraAjuste ajustes(2);
    insere(ajustes.empresa.outra(), "xel_ORVEX",
           {"NumSerie", "Cliente", "Data", "Quantidade", "Obs", "Ano", "TpDoc", "Serie", "NNumDoc"},
           {{"CEDIDA", "CL'1", base::DataHora{2017, 5, 6, 7, 8, 9}, m("-1.25"), "d'antes", 2017, "QB", 2, 90},
            {"CEDIDA", "CL'1", base::DataHora{2018, 5, 6}, m("-1"), "", 2018, "QB", 2, 91},
            {"CEDIDA", "CL'1", base::DataHora{2018, 5, 6}, m("-1"), "", 2018, "QB", 2, 0},
            {"CEDIDA", "CL'1", base::DataHora{2018, 5, 6}, m("1"), "", 2018, "SB", 2, 92},
            {"CEDIDA", "CL'1", base::DataHora{2018, 5, 6}, m("-1"), "", 2018, "QB", 1, 93}});
    ajustes.item("REEL'1"); // whose name must not stand beside another item
    ajustes.carrega("90");
    EXPECT_EQ(ajustes.janela.listas.back().forma,
              "Números Doc. Quebras, 9500, 1:hidden 2:800 3:1200 4:1400 5:4000 6:600");
    EXPECT_THAT(
        ajustes.janela.listas.back().primeira_coluna,
        testing::ElementsAre(testing::StartsWith("2018-05-06*91*"), testing::StartsWith("2017-05-06*90*")));
    EXPECT_EQ(ajustes.conteudo(), "CEDIDA|5||1,25|d'antes|90||06-05-2017");
    EXPECT_TRUE(ajustes.no_campo(2) && ajustes.ecra.btAnular.Visible);
    for (const common::Controlo* fechado : std::initializer_list<common::Controlo*>{
             &ajustes.ecra.campo(0), &ajustes.ecra.campo(1), &ajustes.ecra.campo(5), &ajustes.ecra.btFx(0),
             &ajustes.ecra.DTPicker1})
        EXPECT_FALSE(fechado->Enabled) << fechado->nome;
}

TEST(Ajustes, each_failure_is_reported_by_the_step_that_failed_last_and_the_text_is_kept) {
    EcraAjuste ajustes(1);
    // What goes wrong, the new stock, what is reported.
    for (const auto& caso :
         tabela({"1st step => 5,1 => Falha provocada.", "Obs => 5,1 => 3671 - ", "1st step => 5,1 => 3671 - ",
                 "Update artarm set Existenc=4 where Artigo='REEL''1' => 5,1 => "
                 "A Existência ou o detentor do Artigo mudou. Volte a introduzir o Artigo.",
                 "Delete Artigos where CODIGO='REEL''1' => 4,1 => O artigo «REEL'1» não existe."})) {
        SCOPED_TRACE(caso[0]);
        ajustes.item("REEL'1");
        ajustes.quantidade(caso[1]);
        ajustes.caixas();
        ajustes.diario.recomeca();
        if (caso[0] == "1st step")
            ajustes.diario.falha_no = 1;
        else if (caso[0] == "Obs")
            ajustes.ecra.campo(4).Text = std::string(101, 'x');
        else
            ajustes.empresa.outra().Executa(caso[0]);
        ajustes.confirma();
        EXPECT_THAT(ajustes.caixas(), HasSubstr("|" + std::string(anomalia) + caso[2]));
        EXPECT_TRUE(ajustes.vazio());
    }
    EXPECT_EQ(ajustes.documentos(), "SB|0.1|-1 / ");
}

TEST(Ajustes, a_replacement_after_the_holder_changed_or_the_row_went_is_refused_and_what_stays_is_named) {
    EcraAjuste ajustes(3);
    ajustes.ajusta("REEL'1", "2");
    const auto substitui = [&](const char* quantidade) {
        ajustes.carrega("1");
        ajustes.caixas();
        ajustes.quantidade(quantidade);
        ajustes.confirma();
        return ajustes.caixas();
    };
    // What can be known to be refused is refused before the old document is cancelled.
    for (const auto& [quantidade, aviso] :
         {std::pair{"-1", "A quantidade não pode ser negativa."}, {"6", "Valor Inválido para o Consumo!"}}) {
        ajustes.carrega("1");
        ajustes.quantidade("5");
        ajustes.ecra.campo(3).Text = quantidade;
        if (quantidade[0] == '6')
            ajustes.ecra.campo(1).Text = "9"; // the stock was another when it was loaded
        ajustes.confirma();
        EXPECT_THAT(ajustes.caixas(), testing::EndsWith(std::string("|") + anomalia + aviso));
        EXPECT_EQ(ajustes.documentos(), "CI|2|0 / CI|-2");
    }
    // What the ERP refuses all the same is told, with the old document.
    ajustes.empresa.outra().Executa("Delete Series where TpDoc='CI'");
    EXPECT_THAT(
        substitui("1"),
        testing::EndsWith("|O documento CI/3/1/2019 ficou anulado no ERP, mas pode continuar nos movimentos "
                          "da ORVEX."));
    ajustes.carrega("1");
    ajustes.anula();
    EXPECT_EQ(ajustes.caixas(),
              std::string(pergunta_anular) + "|" + anomalia + "O documento CI/3/1/2019 já está anulado.");

    insere(ajustes.empresa.outra(), "xel_ORVEX", {"NumSerie", "Cliente", "Quantidade"},
           {{"REEL'1", "CL2", 3}});
    // Cancelling it asks where the stock goes.
    ajustes.carrega("1");
    ajustes.janela.respostas = {common::resposta_ok, common::resposta_cancelar};
    ajustes.anula();
    EXPECT_EQ(ajustes.caixas(),
              std::string(pergunta_anular) +
                  "|O Artigo mudou de detentor depois deste movimento: é agora de CL2.\r\nA "
                  "anulação repõe o stock no armazém OR.\r\nPretende continuar?");
    EXPECT_THAT(substitui("1"),
                testing::EndsWith("O Artigo mudou de detentor depois deste movimento, que já não "
                                  "pode ser substituído."));
    EXPECT_EQ(ajustes.documentos(), "CI|2|-1 / CI|-2");
    EXPECT_TRUE(ajustes.vazio());

    ajustes.carrega("1");
    ajustes.empresa.outra().Executa("Delete xel_ORVEX where NNumDoc=1");
    const std::string antes = ajustes.conteudo();
    ajustes.anula();
    EXPECT_EQ(ajustes.caixas() + ajustes.conteudo(),
              std::string(pergunta_anular) + "|Impossível a anulação!" + antes);
    ajustes.confirma();
    EXPECT_THAT(ajustes.caixas(), HasSubstr(std::string(anomalia) + "O movimento carregado já não existe."));
    EXPECT_EQ(ajustes.documentos(), "CI|2|-1 / ");
}

TEST(Ajustes, a_short_list_is_named_by_the_operation_that_needs_it_and_the_screen_stays) {
    EcraAjuste sem_serie(1, "SOBRAS=SB\r\n");
    sem_serie.op.prime(sem_serie.ecra.btFx(5));
    EXPECT_THAT(sem_serie.caixas(), HasSubstr("SOBRAS"));
    sem_serie.ajusta("REEL'1", "4,9"); // a breakage needs no key of surpluses
    sem_serie.op.prime(sem_serie.ecra.btCancelar);
    EXPECT_THAT(sem_serie.caixas(), HasSubstr("superior"));
    sem_serie.item("reel'1"); // written as the ERP writes it
    sem_serie.quantidade("6");
    const std::string conteudo = sem_serie.conteudo();
    sem_serie.confirma();
    EXPECT_THAT(sem_serie.caixas(), HasSubstr("O parâmetro SOBRAS está incompleto"));
    EXPECT_EQ(sem_serie.conteudo(), conteudo);
    EXPECT_THAT(conteudo, testing::StartsWith("REEL'1|4,9|"));

    EcraAjuste sem_armazem(1, "ARMAZEMORVEX=\r\n");
    sem_armazem.item("REEL'1");
    EXPECT_THAT(sem_armazem.caixas(), HasSubstr("ARMAZEMORVEX"));
    EXPECT_EQ(sem_armazem.conteudo(), "REEL'1|||||||15-03-2019");
    EXPECT_TRUE(sem_armazem.no_campo(0));
}

TEST(Ajustes, a_movement_that_lacks_what_its_document_is_known_by_is_not_loaded_and_says_so) {
    for (const std::string coluna : {"Data", "Ano", "Quantidade"}) {
        EcraAjuste ajustes(3);
        ajustes.ajusta("REEL'1", "2");
        ajustes.caixas();
        const auto antes = ajustes.conteudo();
        // The list still has its key; the row has lost the value meanwhile.
        ajustes.diario.espia = [&](const std::string& linha) {
            if (!linha.starts_with("CONSULTA  Select * from xel_Orvex")) return;
            const auto movimento =
                ajustes.empresa.outra().AbreActualizavel("Select * from xel_ORVEX where NNumDoc=1");
            movimento->define(coluna, {});
            movimento->actualiza();
        };
        ajustes.carrega("1");
        EXPECT_THAT(ajustes.caixas(), testing::StartsWith("O movimento está sem " + coluna + " nos"));
        EXPECT_EQ(ajustes.conteudo(), antes);
    }
}

TEST(Ajustes, an_unknown_commit_names_what_stands_and_what_to_look_at_and_nothing_that_is_not_so) {
    for (const bool substitui : {false, true}) {
        EcraAjuste ajustes(3);
        ajustes.ajusta("REEL'1", "5");
        ajustes.carrega("1");
        ajustes.caixas();
        // The ERP then refuses to cancel the old one.
        if (substitui) ajustes.empresa.outra().Executa("Update DocGcCab set NVias=-1");
        ajustes.quantidade("4");
        ajustes.diario.espia = [](const std::string& linha) {
            if (linha == "CONFIRMA") throw startup::ConfirmacaoDesconhecida("Não se sabe.");
        };
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

TEST(Ajustes, a_replacement_is_refused_before_the_cancelling_where_a_text_is_too_long_and_priced_after_it) {
    EcraAjuste ajustes(3);
    ajustes.ajusta("REEL'1", "5");
    const auto substitui = [&](int campo, const std::string& texto) {
        ajustes.carrega("1");
        ajustes.quantidade("4");
        ajustes.ecra.campo(campo).Text = texto;
        ajustes.confirma();
        return ajustes.caixas();
    };
    EXPECT_THAT(substitui(2, std::string(31, 'x')), HasSubstr("Erro: O Processo não pode ter mais de 30"));
    EXPECT_THAT(substitui(4, std::string(101, 'x')), HasSubstr("Erro: O texto das Observações não pode ter"));
    EXPECT_EQ(ajustes.documentos(), "CI|5|0 / CI|-5");
    substitui(2, "P");
    EXPECT_EQ(ajustes.empresa.linhas("select PrecoUnit from DocGcLin where TpDocum='CI' and NNumDoc=2"),
              "100");
}
