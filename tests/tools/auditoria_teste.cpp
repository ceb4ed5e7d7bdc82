// The auditor: a company that every flow has worked on is clean; damaged in any one way, that is what is
// found, and nothing else.
#include "tests/apoio/tabela.h"
#include "tests/tools/empresa_percorrida.h"
#include "tools/auditoria/aceites.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace orvex::testes {
namespace {

namespace fs = std::filesystem;
using namespace testing;

// What is found, and the damage (por_extenso).
const char* const casos[] = {
    " => select 1",
    "erro L1 2019/FA/1/10/1 100 kg => update FA1 set Qtd=Qtd+0.1",
    "erro L1 2019/FA/1/10/1 1000 kg => update FA1 set Qtd=Qtd-1, PesoLiquido=PesoLiquido-1, "
    "PesoBruto=PesoBruto-1",
    "erro L1 2019/GR/1/1/3 500 kg => update GR3 set Qtd=2",
    "aviso L1 2019/FA/1/10/1 100 kg => update FA1 set PesoBruto=PesoBruto+0.1",
    "aviso L1 2019/FA/1/10/1 100 kg => update FA1 set PesoLiquido=PesoLiquido+0.1",
    "erro L2 2019/GR/1/1/3 2500 kg => update GR3 set Origem='2019/FA/1/99/1/00000'",
    "erro L2 2019/GR/1/1/3 2500 kg => update GR3 set Origem='lixo'",
    "erro L2 2019/GV/1/1/1 3000 kg => update xel_ORVEX_Mov set Origem=null where TpDoc='GV'",
    "erro L3 2019/GR/1/1/3 2500 kg => delete from xel_ORVEX where Registo=6",
    "erro L3 2019/GR/1/1/3 2500 kg => update xel_ORVEX set NumLin=9 where Registo=6; update xel_ORVEX set "
    "NumLin=3, "
    "Quantidade=-2.5, NumSerie='R1' where Registo=7; update xel_ORVEX set NumLin=4, Quantidade=-3, "
    "NumSerie='R2' where "
    "Registo=6; update xel_ORVEX set Quantidade=-2.4 where NNumDoc=1 and TpDoc='GR' and NumLin=3",
    "erro L3 2019/GR/1/1/3 2500 kg => update xel_ORVEX set Quantidade=2.5 where Registo=6",
    "erro L3 2019/GR/1/1/3 2500 kg => insert into "
    "xel_ORVEX(NumSerie,Cliente,CliFinal,Data,Quantidade,Ano,TpDoc,Serie,"
    "NNumDoc,NumLin) select NumSerie,Cliente,CliFinal,Data,Quantidade,Ano,TpDoc,Serie,NNumDoc,NumLin from "
    "xel_ORVEX "
    "where Registo=6",
    "erro L3 2019/GR/1/1/3 2500 kg => update FA1 set Qtd=Qtd+2.5, PesoLiquido=PesoLiquido+2.5, "
    "PesoBruto=PesoBruto+"
    "(select PesoBruto from xel_ORVEX_Mov where TpDoc='GR' and NumDoc=1 and NumLinha=3); delete from GR3",
    "erro L4 registo 15 6000 kg => delete from xel_ORVEX where Registo=16",
    "erro L4 registo 18 6000 kg => delete from xel_ORVEX where Registo=17",
    "erro L4 registo 18 5900 kg => update xel_ORVEX set Quantidade=5.9 where Registo=18",
    "erro L5 2019/GR/1/1/4 3000 kg => COPIA GV 2; update xel_ORVEX_Mov set Qtd=Qtd+3, "
    "PesoLiquido=PesoLiquido+3, "
    "PesoBruto=PesoBruto+(select PesoBruto from xel_ORVEX_Mov where TpDoc='GV' and NumDoc=1) where "
    "TpDoc='FA' and "
    "NumLinha=2",
    "erro L6 registo 17 6000 kg => update xel_ORVEX set Cliente='CL''1' where Registo=17",
    "aviso L6 registo 14 100 kg => update xel_ORVEX set Cliente='CL3' where Registo=14; update erp.DocGcLin "
    "set "
    "Armazem='CL' where TpDocum='CI'",
    "aviso L6 registo 13 200 kg => update xel_ORVEX set Cliente='CL3' where Registo=13; update erp.DocGcLin "
    "set Armazem='CL' where TpDocum='QB'",
    "aviso L7 2019/GV/1/1/1 3000 kg => update xel_ORVEX_Mov set Data='2031-01-01' where TpDoc='GV'",
    "erro L7 2019/GR/1/1/3 2500 kg => update GR3 set Data=null",
    "erro L7 2019/GR/1/1/3 2500 kg => update GR3 set Cliente='NADA'",
    "aviso L7 2019/GR/1/1/3 2500 kg => update GR3 set Cliente='cl2'",
    "aviso L7 registo 18 6000 kg => update xel_ORVEX set Cliente='cl3' where Registo=18",
    "erro L7 registo 6 2500 kg => update xel_ORVEX set Cliente='orvex' where Registo=6",
    "erro L7 registo 1 0 kg => update xel_ORVEX set Quantidade=null where Registo=1",
    "erro L7 registo 20 0 kg => insert into "
    "xel_ORVEX(Registo,NumSerie,Cliente,Quantidade,Ano,TpDoc,Serie,NNumDoc) "
    "values(20,'R9','CL2',0,2018,'FC',1,7)",
    "erro E1 2019/GR/1/4 500 kg => create temp table c as select * from erp.DocGcCab where TpDoc='GR' and "
    "NNumDoc=3; "
    "create temp table l as select * from erp.DocGcLin where TpDocum='GR' and NNumDoc=3; update c set "
    "NNumDoc=4; "
    "update l set NNumDoc=4; insert into erp.DocGcCab select * from c; insert into erp.DocGcLin select * "
    "from l",
    "erro E1 2019/SB/1/1 100 kg => delete from xel_ORVEX where Registo=11",
    "erro E1 2019/TR/6/1 6000 kg => delete from xel_ORVEX where Registo in (15,16); update erp.artarm set "
    "Existenc=6 "
    "where Artigo='R3' and Armazem='CL'",
    "aviso E1 2019/FA/1/11 7000 kg => create temp table c as select * from erp.DocGcCab where TpDoc='FA'; "
    "create temp "
    "table l as select * from erp.DocGcLin where TpDocum='FA'; update c set NNumDoc=11; update l set "
    "NNumDoc=11; "
    "insert into erp.DocGcCab select * from c; insert into erp.DocGcLin select * from l",
    "erro E2 2019/GR/1/1 5500 kg => update erp.DocGcCab set NVias=-1 where TpDoc='GR' and NNumDoc=1",
    "erro E2 2019/SB/1/1 100 kg => delete from erp.DocGcCab where TpDoc='SB'; delete from erp.DocGcLin where "
    "TpDocum='SB'",
    "erro E2 registo 16 6000 kg => update erp.DocGcCab set NVias=-1 where TpDoc='TR'",
    "aviso E2 2019/FA/1/10 7000 kg => update erp.DocGcCab set NVias=-1 where TpDoc='FA'",
    "erro E3 2019/GR/1/1/3 100 kg => update erp.DocGcLin set Quant=2.6 where TpDocum='GR' and NNumDoc=1 and "
    "NumLinha=3",
    "erro E3 2019/GR/1/1/3 2500 kg => update erp.DocGcLin set Artigo='R5' where TpDocum='GR' and NNumDoc=1 "
    "and "
    "NumLinha=3",
    "erro E3 2019/GR/1/1/3 2500 kg => delete from erp.DocGcLin where TpDocum='GR' and NNumDoc=1 and "
    "NumLinha=3",
    "erro E3 2019/SB/1/1/1 200 kg => update erp.DocGcLin set Quant=0.3 where TpDocum='SB'",
    "erro E3 2019/TR/6/1 100 kg => update erp.DocGcLin set Quant=5.9 where TpDocum='TR'",
    "erro E3 2019/TR/6/1 0 kg => update erp.DocGcCab set Data='2019-03-14 00:00:00' where TpDoc='TR'",
    "aviso E3 2019/GR/1/1/3 100 kg => update U_DocGcLin1 set PesoBruto=PesoBruto+0.1 where TpDocUM='GR' and "
    "NNumDoc=1 "
    "and NumLinha=3",
    "aviso E3 2019/FA/1/10/2 100 kg => update erp.DocGcLin set Quant=3.1 where TpDocum='FA' and NumLinha=2",
    "erro E4 2019/GR/1/3/3 500 kg => update erp.DocGcLin set Armazem='CL' where TpDocum='GR' and NNumDoc=3",
    "aviso E4 R5 5800 kg => update erp.artarm set Armazem='CL' where Artigo='R5'",
    "aviso E5 R4 0 kg => update ObservArtigos set Observ='CL2 - Ibérica SL'",
    // What honest history has.
    " => update xel_ORVEX set CliFinal='CL''1' where Registo=4; update xel_ORVEX set Cliente='CL''1' where "
    "Registo=17",
    " => update xel_ORVEX set Cliente='CL''1' where Registo=17; create temp table c as select * from "
    "erp.DocGcCab where TpDoc='GR' and NNumDoc=2; create temp table l as select * from erp.DocGcLin where "
    "TpDocum='GR' and NNumDoc=2; update c set NNumDoc=4, Terceiro='CL''1'; update l set NNumDoc=4, "
    "Artigo='R4', Armazem='CL' where Artigo<>''; insert into erp.DocGcCab select * from c; insert into "
    "erp.DocGcLin select * from l where Artigo<>''",
    " => update erp.DocGcCab set NVias=-1 where TpDoc='FA'; update xel_ORVEX_Mov set Qtd=0, "
    "QtdOrig=QtdOrig-Qtd, "
    "PesoLiquido=0, PesoBruto=null where TpDoc='FA'",
    " => update GR3 set PesoBruto=null, PesoLiquido=null; update FA1 set PesoBruto=null, PesoLiquido=null",
    " => insert into xel_ORVEX(NumSerie,Cliente,CliFinal,Data,Quantidade,Ano,TpDoc,Serie,NNumDoc,NumLin) "
    "values('R1',"
    "'ORVEX','ORVEX','2017-05-01',0.1,2017,'SB',1,37,1)",
    " => insert into erp.Artigos(CODIGO) values('PARADO')",
    " => update erp.DocGcCab set NNumDoc=9 where TpDoc='GR' and NNumDoc=2; update erp.DocGcLin set NNumDoc=9 "
    "where "
    "TpDocum='GR' and NNumDoc=2",
};

TEST(Auditoria, AchaOQueSeEstragouENadaMaisEmQualquerDosMotores) {
    for (const char* motor : {"", "fio"}) {
        setenv("ORVEX_TESTE_MOTOR", motor, 1);
        for (const char* caso : casos) {
            const auto p = partes(caso);
            const Estragada empresa(por_extenso(p[1]));
            EXPECT_EQ(auditada(empresa.copia.pasta(), relogio), p[0]) << motor << " " << p[1];
        }
    }
    unsetenv("ORVEX_TESTE_MOTOR");
}

// What a session over the wire asked its server, noted when it goes.
struct SessaoEscutada : SessaoDeTeste {
    std::vector<std::string>& ouvidas;
    explicit SessaoEscutada(std::vector<std::string>& onde) : ouvidas(onde) {}
    ~SessaoEscutada() override {
        for (const std::string& texto : servidor().textos())
            ouvidas.push_back(texto);
    }
};

TEST(Auditoria, AoServidorSoFazPerguntas) {
    setenv("ORVEX_TESTE_MOTOR", "fio", 1);
    const Estragada empresa(por_extenso("update FA1 set Qtd=Qtd+0.1"));
    std::vector<std::string> ouvidas;
    auditoria::Pedido pedido = empresa.pedido();
    pedido.abre = [&]() -> std::unique_ptr<startup::SessaoBD> {
        auto sessao = std::make_unique<SessaoEscutada>(ouvidas);
        sessao->Abre(ligacao(empresa.copia.pasta()));
        return sessao;
    };
    EXPECT_EQ(resumo_de(empresa.audita(pedido)), "erro L1 2019/FA/1/10/1 100 kg");
    EXPECT_THAT(ouvidas, SizeIs(Gt(30)));
    EXPECT_THAT(ouvidas, Each(AnyOf(StartsWith("Select "), StartsWith("IF @@TRANCOUNT > 0 ROLLBACK "))));
    unsetenv("ORVEX_TESTE_MOTOR");
}

TEST(Auditoria, ReleOQuePodeSerUmaConfirmacaoAMeioAntesDeODizer) {
    const std::string menos = "update FA1 set Qtd=Qtd-0.1", mais = "update FA1 set Qtd=Qtd+0.1";
    // What happens before the second look, and before the third.
    for (const auto& [segunda, terceira, dito] : {std::tuple{mais, std::string(), ""},
                                                  {menos, std::string(), "erro L1 2019/FA/1/10/1 200 kg"},
                                                  {menos, mais + ";" + mais, ""}}) {
        const Estragada empresa(por_extenso(menos));
        SemProgresso progresso;
        std::vector<std::string> por_fazer{terceira, segunda};
        progresso.enquanto_espera = [&] {
            empresa.estraga(por_extenso(por_fazer.back()));
            por_fazer.pop_back();
        };
        EXPECT_EQ(resumo_de(auditoria::audita(empresa.pedido(), progresso)), dito);
    }
}

TEST(Auditoria, DizAsConfirmacoesDeQueNinguemViuOFim) {
    const PastaTemporaria diarios;
    const Estragada empresa("");
    auditoria::Pedido pedido = empresa.pedido();
    platform::diario::Gaveta& gaveta = pedido.gaveta.emplace(diarios.pasta());
    gaveta.cria(platform::diario::linha_da_intencao(
        {.maquina = "PC1"}, {.Data = relogio, .artigos = {{"R1", m("2.5"), "OR"}, {"R2", m("1"), "OR"}}}));
    const std::string nome = gaveta.por_acabar().at(0).filename().string();
    EXPECT_EQ(resumo_de(empresa.audita(pedido)), "aviso J1 " + nome + " 3500 kg");
    std::ofstream(gaveta.por_acabar().at(0)) << "não é";
    EXPECT_EQ(resumo_de(empresa.audita(pedido)), "erro J1 " + nome + " 0 kg");
}

TEST(Auditoria, SoMostraOQueSePedeEEscondeOQueSeAceitouComOMesmoPeso) {
    const Estragada empresa(por_extenso("update FA1 set Qtd=Qtd+0.1; update erp.DocGcCab set NVias=-1 where "
                                        "TpDoc='TR'; update GR3 set Cliente='cl2'"));
    const std::string linha = "erro L1 2019/FA/1/10/1 100 kg", transferencia = "erro E2 registo 16 6000 kg",
                      codigo = "aviso L7 2019/GR/1/1/3 2500 kg";
    auditoria::Pedido pedido = empresa.pedido();
    EXPECT_EQ(resumo_de(empresa.audita(pedido)), transferencia + "; " + codigo + "; " + linha);
    pedido.filtro = {.cliente = "CL2 "};
    EXPECT_EQ(resumo_de(empresa.audita(pedido)), codigo + "; " + linha);
    pedido.filtro = {.artigo = "r3"};
    EXPECT_EQ(resumo_de(empresa.audita(pedido)), transferencia);
    pedido.filtro = {.desde = base::DataHora{2019, 3, 2}};
    EXPECT_EQ(resumo_de(empresa.audita(pedido)), transferencia + "; " + codigo);

    auditoria::Achado de_varios;
    de_varios.artigo = "2 artigos";
    de_varios.artigos = {"R1", "R2"};
    EXPECT_TRUE((auditoria::Filtro{.cliente = "", .artigo = "r2"}.passa(de_varios)));

    pedido.filtro = {};
    const fs::path ficheiro = empresa.copia.pasta() / "aceites.txt";
    auditoria::escreve_aceites(ficheiro, empresa.audita(pedido));
    pedido.aceites = auditoria::le_aceites(ficheiro);
    const auditoria::Relatorio nenhum = empresa.audita(pedido);
    EXPECT_EQ(resumo_de(nenhum), "");
    EXPECT_EQ(nenhum.aceites.size(), 3);
    empresa.estraga(por_extenso("update FA1 set Qtd=Qtd+0.1"));
    EXPECT_EQ(resumo_de(empresa.audita(pedido)), "erro L1 2019/FA/1/10/1 200 kg");
    EXPECT_THROW(auditoria::le_aceites(empresa.copia.pasta() / "nenhum"), base::Falha);
}

TEST(Auditoria, DizOQueNaoPodeVerEVeOResto) {
    const Estragada empresa(por_extenso("update FA1 set Qtd=Qtd+0.1; drop table erp.artarm"));
    const std::string dito = auditada(empresa.copia.pasta(), relogio);
    EXPECT_THAT(dito, AllOf(StartsWith("? L4, L6, L7 dos detentores, E4 do stock e E5: "),
                            HasSubstr("artarm"), HasSubstr("; ? E1 de FA/1: depende dos detentores; "),
                            HasSubstr("; ? E1, E2, E3 e E6 de TR/6: "),
                            EndsWith("; erro L1 2019/FA/1/10/1 100 kg")));
}

} // namespace
} // namespace orvex::testes
