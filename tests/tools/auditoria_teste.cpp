// The auditor: a company that every flow has worked on is clean; damaged in any one way, that is what is
// found, and nothing else.
#include "tests/tools/empresa_percorrida.h"
#include "tools/auditoria/aceites.h"

#include <cstdlib>

namespace orvex::testes {
namespace {

namespace fs = std::filesystem;
using namespace testing;

// What is found, and the damage.
const char* const casos[] = {
    " => select 1",
    "erro L1 2019/FA/1/10/1 100 kg => update mov set Qtd=Qtd+0.1 where FA1",
    "erro L1 2019/FA/1/10/1 1000 kg => update mov set Qtd=Qtd-1, PesoLiquido=PesoLiquido-1, "
    "PesoBruto=PesoBruto-1 where FA1",
    "erro L1 2019/GR/1/1/3 500 kg => update mov set Qtd=2 where GR3",
    "aviso L1 2019/FA/1/10/1 100 kg => update mov set PesoBruto=PesoBruto+0.1 where FA1",
    "aviso L1 2019/FA/1/10/1 100 kg => update mov set PesoLiquido=PesoLiquido+0.1 where FA1",
    "erro L2 2019/GR/1/1/3 2500 kg => update mov set Origem='2019/FA/1/99/1/00000' where GR3",
    "erro L2 2019/GR/1/1/3 2500 kg => update mov set Origem='lixo' where GR3",
    "erro L2 2019/GV/1/1/1 3000 kg => update mov set Origem=null where TpDoc='GV'",
    "erro L3 2019/GR/1/1/3 2500 kg => delete from det where Registo=6",
    "erro L3 2019/GR/1/1/3 2500 kg => update det set NumLin=3, Quantidade=-2.4, NumSerie='R1' where "
    "Registo=7; "
    "update det set NumLin=4, Quantidade=-3, NumSerie='R2' where Registo=6",
    "erro L3 2019/GR/1/1/3 2500 kg => update det set Quantidade=2.5 where Registo=6",
    "erro L3 2019/GR/1/1/3 2500 kg => create temp table c as select * from det where Registo=6; "
    "update c set Registo=null; insert into det select * from c",
    "erro L3 2019/GR/1/1/3 2500 kg => update mov set Qtd=Qtd+2.5, PesoLiquido=PesoLiquido+2.5, "
    "PesoBruto=PesoBruto+(select PesoBruto from mov where GR3) where FA1; delete from mov where GR3",
    "erro L4 registo 15 6000 kg => delete from det where Registo=16",
    "erro L4 registo 18 6000 kg => delete from det where Registo=17",
    "erro L4 registo 18 5900 kg => update det set Quantidade=5.9 where Registo=18",
    "erro L5 2019/GR/1/1/4 3000 kg => update mov set Qtd=Qtd+3, PesoLiquido=PesoLiquido+3, "
    "PesoBruto=PesoBruto+(select PesoBruto from mov where TpDoc='GV') where TpDoc='FA' and NumLinha=2; "
    "COPIA mov GV 1 2; COPIA peso GV 1 2; COPIA cab GV 1 2; COPIA lin GV 1 2; COPIA det GV 1 2",
    "erro L6 registo 17 6000 kg => update det set Cliente='CL''1' where Registo=17",
    "aviso L6 registo 14 100 kg => update det set Cliente='CL3' where Registo=14; "
    "update lin set Armazem='CL' where TpDocum='CI'",
    "aviso L6 registo 13 200 kg => update det set Cliente='CL3' where Registo=13; "
    "update lin set Armazem='CL' where TpDocum='QB'",
    "aviso L7 2019/GV/1/1/1 3000 kg => update mov set Data='2031-01-01' where TpDoc='GV'",
    "erro L7 2019/GR/1/1/3 2500 kg => update mov set Data=null where GR3",
    "erro L7 2019/GR/1/1/3 2500 kg => update mov set Cliente='NADA' where GR3",
    "aviso L7 2019/GR/1/1/3 2500 kg => update mov set Cliente='cl2' where GR3",
    "aviso L7 registo 18 6000 kg => update det set Cliente='cl3' where Registo=18",
    "erro L7 registo 6 2500 kg => update det set Cliente='orvex' where Registo=6",
    "erro L7 registo 1 0 kg => update det set Quantidade=null where Registo=1",
    "erro L7 registo 20 0 kg => insert into det(Registo,NumSerie,Cliente,Quantidade,Ano,TpDoc,Serie,NNumDoc) "
    "values(20,'R9','CL2',0,2018,'FC',1,7)",
    "erro E1 2019/GR/1/4 500 kg => COPIA cab GR 3 4; COPIA lin GR 3 4",
    "erro E1 2019/SB/1/1 100 kg => delete from det where Registo=11",
    "erro E1 2019/TR/6/1 6000 kg => delete from det where Registo in (15,16); "
    "update erp.artarm set Existenc=6 where Artigo='R3' and Armazem='CL'",
    "aviso E1 2019/FA/1/11 7000 kg => COPIA cab FA 10 11; COPIA lin FA 10 11",
    "erro E2 2019/GR/1/1 5500 kg => update cab set NVias=-1 where TpDoc='GR' and NNumDoc=1",
    "erro E2 2019/SB/1/1 100 kg => delete from cab where TpDoc='SB'; delete from lin where TpDocum='SB'",
    "erro E2 registo 16 6000 kg => update cab set NVias=-1 where TpDoc='TR'",
    "aviso E2 2019/FA/1/10 7000 kg => update cab set NVias=-1 where TpDoc='FA'",
    "erro E3 2019/GR/1/1/3 100 kg => update lin set Quant=2.6 where ERP3",
    "erro E3 2019/GR/1/1/3 2500 kg => update lin set Artigo='R5' where ERP3",
    "erro E3 2019/GR/1/1/3 2500 kg => delete from lin where ERP3",
    "erro E3 2019/SB/1/1/1 200 kg => update lin set Quant=0.3 where TpDocum='SB'",
    "erro E3 2019/TR/6/1 100 kg => update lin set Quant=5.9 where TpDocum='TR'",
    "erro E3 2019/TR/6/1 0 kg => update cab set Data='2019-03-14 00:00:00' where TpDoc='TR'",
    "aviso E3 2019/GR/1/1/3 100 kg => update peso set PesoBruto=PesoBruto+0.1 where ERP3",
    "aviso E3 2019/FA/1/10/2 100 kg => update lin set Quant=3.1 where TpDocum='FA' and NumLinha=2",
    "erro E4 2019/GR/1/3/3 500 kg => update lin set Armazem='CL' where TpDocum='GR' and NNumDoc=3",
    "aviso E4 R5 5800 kg => update erp.artarm set Armazem='CL' where Artigo='R5'",
    "aviso E5 R4 0 kg => update ObservArtigos set Observ='CL2 - Ibérica SL'",
    // What honest history has.
    " => update det set CliFinal='CL''1' where Registo=4; update det set Cliente='CL''1' where Registo=17",
    " => update det set Cliente='CL''1' where Registo=17; COPIA cab GR 2 4; COPIA lin GR 2 4; "
    "update cab set Terceiro='CL''1' where TpDoc='GR' and NNumDoc=4; update lin set Artigo='R4', "
    "Armazem='CL' where TpDocum='GR' and NNumDoc=4 and Artigo<>''",
    " => update cab set NVias=-1 where TpDoc='FA'; update mov set Qtd=0, QtdOrig=QtdOrig-Qtd, "
    "PesoLiquido=0, PesoBruto=null where TpDoc='FA'",
    " => update mov set PesoBruto=null, PesoLiquido=null where GR3 or FA1",
    " => insert into det(NumSerie,Cliente,CliFinal,Data,Quantidade,Ano,TpDoc,Serie,NNumDoc,NumLin) "
    "values('R1','ORVEX','ORVEX','2017-05-01',0.1,2017,'SB',1,37,1)",
    " => insert into erp.Artigos(CODIGO) values('PARADO')",
    " => update cab set NNumDoc=9 where TpDoc='GR' and NNumDoc=2; "
    "update lin set NNumDoc=9 where TpDocum='GR' and NNumDoc=2",
};

TEST(Auditoria, AchaOQueSeEstragouENadaMaisEmQualquerDosMotores) {
    for (const char* motor : {"", "fio"}) {
        setenv("ORVEX_TESTE_MOTOR", motor, 1);
        for (const char* caso : casos) {
            const auto p = partes(caso);
            const Estragada empresa(p[1]);
            EXPECT_EQ(auditada(empresa.copia.pasta(), relogio), p[0]) << motor << " " << p[1];
        }
    }
    unsetenv("ORVEX_TESTE_MOTOR");
}

const std::string a_mais = "update mov set Qtd=Qtd+0.1 where FA1";

auditoria::Relatorio audita(const auditoria::Pedido& pedido) {
    SemProgresso progresso;
    return auditoria::audita(pedido, progresso);
}

TEST(Auditoria, SoFazPerguntas) {
    const Estragada empresa(a_mais);
    Diario diario;
    auditoria::Pedido pedido = empresa.pedido();
    pedido.abre = [&] {
        auto sessao = std::make_unique<SessaoDeTeste>(diario);
        sessao->Abre(ligacao(empresa.copia.pasta()));
        return sessao;
    };
    EXPECT_EQ(resumo_de(audita(pedido)), "erro L1 2019/FA/1/10/1 100 kg");
    EXPECT_THAT(diario.linhas, SizeIs(Gt(30)));
    EXPECT_THAT(diario.linhas, Each(StartsWith("CONSULTA Select ")));
}

TEST(Auditoria, ReleOQuePodeSerUmaConfirmacaoAMeioAntesDeODizer) {
    const std::string menos = "update mov set Qtd=Qtd-0.1 where FA1";
    // What happens before the second look, and before the third.
    for (const auto& [segunda, terceira, dito] : {std::tuple{a_mais, std::string(), ""},
                                                  {menos, std::string(), "erro L1 2019/FA/1/10/1 200 kg"},
                                                  {menos, a_mais + ";" + a_mais, ""}}) {
        const Estragada empresa(menos);
        SemProgresso progresso;
        std::vector<std::string> por_fazer{terceira, segunda};
        progresso.enquanto_espera = [&] {
            empresa.estraga(por_fazer.back());
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
    EXPECT_EQ(resumo_de(audita(pedido)), "aviso J1 " + nome + " 3500 kg");
    std::ofstream(gaveta.por_acabar().at(0)) << "não é";
    EXPECT_EQ(resumo_de(audita(pedido)), "erro J1 " + nome + " 0 kg");
}

TEST(Auditoria, SoMostraOQueSePedeEEscondeOQueSeAceitouComOMesmoPeso) {
    const Estragada empresa("update mov set Qtd=Qtd+0.1 where FA1; update cab set NVias=-1 where TpDoc='TR'; "
                            "update mov set Cliente='cl2' where GR3");
    const std::string linha = "erro L1 2019/FA/1/10/1 100 kg", transferencia = "erro E2 registo 16 6000 kg",
                      codigo = "aviso L7 2019/GR/1/1/3 2500 kg";
    auditoria::Pedido pedido = empresa.pedido();
    EXPECT_EQ(resumo_de(audita(pedido)), transferencia + "; " + codigo + "; " + linha);
    pedido.filtro = {.cliente = "CL2 "};
    EXPECT_EQ(resumo_de(audita(pedido)), codigo + "; " + linha);
    pedido.filtro = {.artigo = "r3"};
    EXPECT_EQ(resumo_de(audita(pedido)), transferencia);
    pedido.filtro = {.desde = base::DataHora{2019, 3, 2}};
    EXPECT_EQ(resumo_de(audita(pedido)), transferencia + "; " + codigo);

    auditoria::Achado de_varios;
    de_varios.artigo = "2 artigos";
    de_varios.artigos = {"R1", "R2"};
    EXPECT_TRUE((auditoria::Filtro{.cliente = "", .artigo = "r2"}.passa(de_varios)));

    pedido.filtro = {};
    const fs::path ficheiro = empresa.copia.pasta() / "aceites.txt";
    auditoria::escreve_aceites(ficheiro, audita(pedido));
    pedido.aceites = auditoria::le_aceites(ficheiro);
    const auditoria::Relatorio nenhum = audita(pedido);
    EXPECT_EQ(resumo_de(nenhum), "");
    EXPECT_EQ(nenhum.aceites.size(), 3);
    empresa.estraga(a_mais);
    EXPECT_EQ(resumo_de(audita(pedido)), "erro L1 2019/FA/1/10/1 200 kg");
    EXPECT_THROW(auditoria::le_aceites(empresa.copia.pasta() / "nenhum"), base::Falha);
}

TEST(Auditoria, DizOQueNaoPodeVerEVeOResto) {
    const Estragada empresa(a_mais + "; drop table erp.artarm");
    const std::string dito = auditada(empresa.copia.pasta(), relogio);
    EXPECT_THAT(dito, AllOf(StartsWith("? L4, L6, L7 dos detentores, E4 do stock e E5: "),
                            HasSubstr("artarm"), HasSubstr("; ? E1 de FA/1: depende dos detentores; "),
                            HasSubstr("; ? E1, E2, E3 e E6 de TR/6: "),
                            EndsWith("; erro L1 2019/FA/1/10/1 100 kg")));
}

} // namespace
} // namespace orvex::testes
