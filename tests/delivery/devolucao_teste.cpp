#include "tests/delivery/ecra_guias.h"

using namespace orvex;
using namespace orvex::testes;

TEST_F(Guias, UmaLinhaVoltaUmaVezEASuaGuiaJaNaoSeAnulaSemPrenderOsOutrosComACaixaAberta) {
    carrega_uma({1, 3});
    devolve({1});
    EXPECT_EQ(caixas(), "Vai proceder à Devolução.\n\rPretende continuar?|Foi criado o documento Nº  1");
    EXPECT_TRUE(vazio());
    EXPECT_EQ(empresa.linhas("select Qtd, PesoLiquido, PesoBruto from xel_ORVEX_MOV where TpDoc='FR'"),
              "0|null|null");
    carrega("1");
    abre_devolucao();
    EXPECT_FALSE(marca(1));
    EXPECT_TRUE(marca(2)) << "the other line is still out";
    EXPECT_EQ(caixas(), "O Artigo selecionado já foi devolvido!");
    op.prime(ecra.btGV(1));
    carrega("1");
    const auto livro = empresa.livro();
    caixas();
    janela.com_a_caixa_aberta = [&] { empresa.outra().Executa("Update xel_ORVEX set Obs=Obs"); };
    anula();
    EXPECT_THAT(caixas(), EndsWith("|Esta GR já foi devolvida!|Esta GR já foi devolvida!"));
    EXPECT_FALSE(BD.EmTransaccao());
    EXPECT_EQ(empresa.livro(), livro);
}

TEST_F(Guias, OResumoDizOQueFoiFeitoDaGuiaCarregada) {
    const auto resumo = [this] {
        const delivery::ResumoGuia r = ecra.LeResumo();
        std::string linhas;
        for (const auto& [numero, devolucao] : r.devolvidas)
            linhas += " " + std::to_string(numero) + ":" + devolucao;
        return r.NomeCliente + " " + texto(r.situacao) + linhas;
    };
    EXPECT_THROW(resumo(), base::Falha) << "there is no note";
    carrega_uma({1, 3});
    const int carregada = ecra.carregamento();
    EXPECT_EQ(resumo(), "José O'Neill, Lda EMITIDA");
    devolve({1});
    EXPECT_EQ(ecra.carregamento(), 0);
    carrega("1");
    EXPECT_NE(ecra.carregamento(), carregada);
    EXPECT_EQ(resumo(), "José O'Neill, Lda DEVOLVIDA EM PARTE 3:GV/1/1");
    devolve({2});
    carrega("1");
    EXPECT_EQ(resumo(), "José O'Neill, Lda DEVOLVIDA 3:GV/1/1 6:GV/1/2");
    EXPECT_EQ(delivery::totais(ecra.Gr, "Quant", "PesoBruto").texto({}),
              "2 linhas   P.Liq. 5,500 t   Peso Bruto 2,600 t");
    op.prime(ecra.btCancelar);
    emite({2});
    carrega("2");
    anula();
    carrega("2");
    EXPECT_EQ(resumo(), "José O'Neill, Lda ANULADA");
}

TEST_F(Guias, OsTextosDeDevolverUmaLinhaDeUmaGuiaDoAnoPassado) {
    emite({1, 3});
    cliente("CL'1");
    janela.escolhe_a_primeira_com("No. Doc.", "1");
    op.prime(ecra.btFx(1)); // from the list
    op.escreve(ecra.campo(1), "0001");
    op.tecla(ecra.campo(1), common::tecla_esc); // back, with the number left as typed
    preenche_com("c", {2, 19, 22, 24, 25, 26, 27});
    abre_devolucao();
    ecra.utilizador_data(ecra.DTPicker3, {2020, 7, 2});
    janela.respostas = {common::resposta_cancelar};
    op.prime(ecra.btGV(1)); // a date far off
    EXPECT_EQ(ecra.foco().actual(), &ecra.DTPicker3);
    ecra.utilizador_data(ecra.DTPicker3, {2020, 1, 2, 8, 5, 0});
    diario.recomeca();
    marca(1);
    op.prime(ecra.btGV(1));
    EXPECT_EQ(diario.texto(), R"(
CONSULTA Select * from xel_ORVEX_MOV where  Cliente = 'CL''1' and TpDoc='GV' and Artigo='BOB''1' 
INICIA
TRANCA
CRIA SageApiNextPlus.DocumentoComercial
Cab Ano=2020 Data='02-01-2020' AreaGestao=4 Sector='SD' Serie=1 TipoDocumento='GV' TipoTerceiro=2 Terceiro='CL'1' TipoPreco=0
doc Origem=3
doc.Validar()
Cab NumeroContribuinte='c19' Processo='' VossoNoDocumento='0001' Vendedor='c2' MeiodeTransporte='c24' Matricula='c25' LocalCarga='c27' LocalDescarga='c26' DataCarga='02-01-2020' DataDescarga='02-01-2020' IvaIncluido=False
CRIA SageApiNextPlus.DocumentosGcLin
lin TipoDeLinha=1 Artigo='BOB'1' Armazem='OR'
doc.SugereValoresLin(lin, True, True, True, True, True, False, True)
lin descricao='Bobina d'aço' Quantidade=2.5 QuantidadeOrigem=2.5 DataMvStock='02-01-2020' PrecoUnitario=0 Sector='SD' Desconto=0 TaxaDesconto=0
doc.AdicionaLinha(lin)
SUBMETE 3
submetido.Finalizar(0, 0, 'GV', 2020)
CONSULTA Select * from xel_ORVEX_MOV where Ano=2019 and TpDoc='GR' and NumDoc= 1 and SerieDoc=1 
ABRE Select * from xel_ORVEX_MOV where Ano=2019 and TpDoc='FA'     and NumDoc=123 and SerieDoc=1 and NumLinha=1
  altera Qtd=2.5 PesoLiquido=2.5 PesoBruto=2.6
CONSULTA Select * from xel_ORVEX_MOV where TpDoc='GV' and Origem='2019/GR/1/1/3/00000'
CONSULTA Select * from DocGcLin where ano=2020 and tpDocum='GV' and Serie=1 and NnumDoc=1
ABRE Select * from xel_ORVEX_MOV where Ano=-1
  acrescenta Ano=2020 TpDoc='GV' NumDoc=1 SerieDoc=1 NumLinha=1 Data=2020-01-02 08:05:00 Artigo='BOB'1' Cliente='CL'1' Descritivo='Bobina d'aço' QtdOrig=2.5 Qtd=2.5 Origem='2019/GR/1/1/3/00000' PesoLiquido=2.5 PesoBruto=2.6
ABRE Select * from xel_ORVEX where Ano=-1
  acrescenta NumSerie='BOB'1' Cliente='ORVEX' Data=2020-01-02 08:05:00 Quantidade=2.5 Obs='José O'Neill, Lda' Funcionario='' CliFinal='ORVEX' Preco=0 Ano=2020 TpDoc='GV' NNumDoc=1 Serie=1 NumLin=1
ABRE Select * from U_DocGcLin1 where ano=-1
  acrescenta TpDocUM='GV' NNumDoc=1 NumLinha=1 Serie=1 Ano=2020 PesoBruto=2.6
CONFIRMA
)");
}

TEST(Devolucoes, OQueOutroPostoFezEntretantoAGuiaCarregadaRecusaADevolucaoEAAnulacao) {
    for (const auto& caso :
         tabela({"devolve a outro => devolve => Erro: O artigo BOB'1 da guia 1 já foi devolvido.",
                 "anula => devolve => Erro: A guia 1 foi anulada depois de carregada.",
                 "devolve a outro => anula => Erro: O artigo BOB'1 da guia 1 já foi devolvido.",
                 "anula => anula => Erro: "})) {
        SCOPED_TRACE(caso[0] + ", " + caso[1]);
        EcraGuias este;
        EcraGuias outro(este.empresa);
        este.emite({1, 3});
        for (EcraGuias* posto : {&este, &outro})
            posto->carrega("1");
        if (caso[1] == "devolve") {
            este.abre_devolucao();
            EXPECT_TRUE(este.marca(1));
        }
        caso[0] == "anula" ? outro.anula() : outro.devolve({1});
        if (caso[0] == "devolve a outro")
            outro.BD.Executa("Update xel_ORVEX_MOV set Cliente='CL2' where TpDoc='GV'");
        const auto livro = este.empresa.livro() + este.empresa.stock();
        este.caixas();
        caso[1] == "anula" ? este.anula() : este.op.prime(este.ecra.btGV(1));
        EXPECT_THAT(este.caixas(), HasSubstr(caso[2]));
        EXPECT_TRUE(este.vazio());
        EXPECT_EQ(este.empresa.livro() + este.empresa.stock(), livro);
    }
}

TEST_F(Guias, UmaGuiaQueNaoFoiLidaPorInteiroDizOENaoSeAnulaNemDevolve) {
    emite({1, 3});
    const auto livro = empresa.livro();
    int lidas = 0;
    diario.espia = [&](const std::string& linha) {
        if (linha.starts_with("CONSULTA Select * from U_DocGcLin1") && ++lidas == 3)
            throw base::Falha("Estão a ser usados.");
    };
    carrega("1");
    EXPECT_EQ(ecra.estado(), "A guia não foi lida por inteiro: Estão a ser usados.");
    caixas();
    for (common::Botao* botao : {&ecra.btConf(1), &ecra.btGV(0)}) {
        op.prime(*botao);
        EXPECT_THAT(caixas(), HasSubstr("nem devolvida.\r\nEstão a ser usados."));
        EXPECT_FALSE(ecra.Frame3.Visible);
    }
    EXPECT_EQ(empresa.livro(), livro);
    carrega("1");
    EXPECT_EQ(ecra.estado(), "");
    devolve({1, 2});
    EXPECT_EQ(empresa.linhas("select PesoBruto from xel_ORVEX_MOV where TpDoc='GV'"), "2.6; 0");
}

TEST_F(Guias, UmDocumentoDeQueOErpNaoMostraAsLinhasEAnuladoEOLivroFica) {
    cliente("CL'1"); // which repairs a weight
    const auto livro = empresa.livro();
    diario.momento = [&](const auto& operacao) {
        if (operacao.membro == "NossoNoDocumento") // once it was created, too
            empresa.outra().Executa("Delete DocGcLin where Artigo='BOB3' and NNumDoc=1");
    };
    emite({1, 3});
    EXPECT_THAT(caixas(), HasSubstr("Erro: O ERP não mostra o artigo BOB3 no documento GR/1/1/2019"));
    EXPECT_EQ(empresa.livro(), livro);
    EXPECT_EQ(empresa.linhas("select NVias from DocGcCab where TpDoc='GR'"), "-1");
}

// Also where the ledger spells it in two ways: each sees what the other wrote.
TEST_F(Guias, DuasLinhasDeUmaOrigemTiramEDevolvemAsDuas) {
    const auto origem = [this] {
        return empresa.linhas(
            "select Qtd, PesoLiquido, PesoBruto from xel_ORVEX_MOV where NumDoc=123 and NumLinha=1");
    };
    for (const char* fim : {"devolvida", "anulada"}) {
        cliente("CL'1");
        escolhe(1);
        edita(1, "Quant", "1");
        escolhe(1);
        confirma();
        EXPECT_EQ(origem(), "0|0|-1"); // the gross weight is that of the whole line
        empresa.outra().Executa(
            "Update xel_ORVEX_MOV set Origem='2019/FA/01/123/1/00000' where TpDoc='GR' and QtdOrig=1");
        carrega(*fim == 'd' ? "1" : "2");
        *fim == 'd' ? devolve({1, 2}) : anula();
        EXPECT_EQ(origem(), "2.5|2.5|2.6") << fim << caixas();
    }
}

TEST_F(Guias, OPainelPrendeOEcraEnquantoEstaAbertoEDeixaAGuiaComoEstava) {
    carrega_uma({1});
    const auto cancela = [&] {
        janela.respostas = {common::resposta_cancelar};
        op.prime(ecra.btGV(1));
    };
    const auto esc = [this](common::Controlo& onde) {
        return [this, &onde] {
            ecra.utilizador_foca(onde);
            EXPECT_TRUE(ecra.utilizador_esc(onde));
        };
    };
    for (const std::function<void()>& sai : std::initializer_list<std::function<void()>>{
             esc(ecra.Final), esc(ecra.DTPicker3), esc(ecra.btGV(1)), esc(ecra.btGV(2)),
             [&] { op.prime(ecra.btGV(2)); }, cancela}) {
        abre_devolucao();
        EXPECT_EQ(ecra.DTPicker3.Value, relogio);
        std::string activos;
        for (const common::Controlo* controlo : ecra.controlos())
            if (controlo->Enabled) activos += controlo->nome + " ";
        EXPECT_EQ(activos, "Frame3 DTPicker3 btGV(1) btGV(2) btSair Final ");
        EXPECT_EQ(ecra.foco().actual(), &ecra.Final);
        EXPECT_FALSE(ecra.utilizador_esc(ecra.btSair));
        EXPECT_TRUE(marca(1)) << "and unticked again when the panel is opened";
        sai();
        for (const common::Controlo* controlo : ecra.controlos())
            EXPECT_EQ(controlo->Enabled, controlo != &ecra.btConf(0)) << controlo->nome;
        EXPECT_FALSE(ecra.Frame3.Visible);
        EXPECT_EQ(ecra.foco().actual(), &ecra.btGV(0));
    }
    anula();
    EXPECT_EQ(empresa.linhas("select NVias from DocGcCab"), "-1") << "the loaded note is still at hand";
}

TEST_F(Guias, AsGrelhasPassamDas30LinhasOPainelOfereceTodosOsArtigosESoVoltaOQueFicouMarcado) {
    for (int numero = 201; numero <= 228; ++numero)
        insere_linha(empresa.outra(), {"FA", 1, numero, 1, "BOB2", m("0.1"), m("0.1")});
    carrega_uma({1, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 31});
    abre_devolucao();
    EXPECT_EQ(linhas(ecra.Final, {"Artigo"}),
              "BOB'1; BOB2; BOB2; BOB2; BOB2; BOB2; BOB2; BOB2; BOB2; BOB2; BOB2; BOB3");
    EXPECT_FALSE(marca(13)) << "a blank row";
    EXPECT_TRUE(marca(12));
    EXPECT_TRUE(marca(2));
    EXPECT_TRUE(op.edita(ecra.Final, 2, "Transf", "0"));
    op.prime(ecra.btGV(1));
    EXPECT_EQ(empresa.linhas("select NumLinha, Qtd, Origem from xel_ORVEX_MOV where TpDoc='GV'"),
              "1|3|2019/GR/1/1/36/00000");
}
