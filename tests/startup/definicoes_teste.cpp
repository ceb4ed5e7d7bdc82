#include "base/texto.h"
#include "startup/construtor_ligacao.h"
#include "startup/definicoes.h"
#include "startup/instalacao.h"
#include "startup/parametros.h"
#include "tests/apoio/falhas.h"
#include "tests/apoio/pasta_temporaria.h"
#include "tests/apoio/tabela.h"

#include <gmock/gmock.h>

#include <regex>
#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace orvex::startup;
using namespace orvex::testes;
using orvex::base::Falha;
using namespace testing;

TEST(Parametros, APrimeiraLinhaComAChaveEOSinalDaOValorTalComoEsta) {
    const PastaTemporaria pasta;
    const Parametros parametros(pasta.pasta());
    EXPECT_THAT(falha([&] { parametros.LerParametros("TRF"); }), HasSubstr(ficheiro_parametros));

    pasta.escreve(ficheiro_parametros, "SOBRAS=a,1\r\nnota = livre\r\nsobras=b,2\r\nTRFX=1\r\nTRF=\r\n"
                                       "ARMAZEMORVEX=OR,Pr\xF3prio\r\narmazem=01 \r\n CONSUMOS=x\r\n"
                                       "QUEBRAS =x\r\nFACTURAS=A,1,X;B,2,Y\r\nCLIENTEORVEX=O=1, ,");
    for (const auto& caso :
         tabela({"SOBRAS => a,1", "TRF => ", "ARMAZEM => 01 ", "armazemorvex => OR,Próprio", "CONSUMOS => ",
                 "QUEBRAS => ", "CLIENTEORVEX => O=1, ,", "GUIAS => "}))
        EXPECT_EQ(parametros.LerParametros(caso[0]), caso[1]) << caso[0];
    EXPECT_THAT(parametros.lista_de_grupos("FACTURAS").elementos, ElementsAre("A", "1", "X", "B", "2", "Y"));
    EXPECT_THAT(parametros.lista("FACTURAS").elementos, ElementsAre("A", "1", "X;B", "2", "Y"));
    EXPECT_THAT(parametros.lista("CLIENTEORVEX").elementos, ElementsAre("O=1", " ", ""));
    EXPECT_TRUE(parametros.lista("TRF").elementos.empty());
    // The third value of the last group may be empty; what follows whole groups is none.
    for (const auto& [valor, elementos] :
         {std::pair{"FA,1,", 3u}, {"FA,1,X;FR,2,", 6u}, {"FA,1,X;", 3u}, {"FA,1", 2u}, {"", 0u}}) {
        pasta.escreve(ficheiro_parametros, std::string("FACTURAS=") + valor);
        EXPECT_EQ(parametros.lista_de_grupos("FACTURAS").elementos.size(), elementos) << valor;
    }
}

TEST(Parametros, UmElementoEmFaltaOuQueNaoESerieDizSeComASuaChave) {
    const ListaParametros lista{"GUIASREMESSA", {"GR", "1a", "40000", " 2"}};
    for (const std::size_t i : {1U, 2U, 4U})
        EXPECT_THAT(falha([&] { lista.serie(i); }), HasSubstr("GUIASREMESSA"));
    EXPECT_EQ(lista.serie(3), 2);
}

TEST(Definicoes, OsCincoValoresDoErpCompletamSeComOsDaBaseESoAPalavraPassePodeFaltar) {
    const PastaTemporaria pasta;
    const auto ficheiro = pasta.escreve("OrvexEXE.xel", "; nota\n[bd]\nServidor = sqlite\nBase=Dados\n"
                                                        "Utilizador=ana\nPalavraPasse=a;b={c}\n"
                                                        "[ERP]\nempresa=\xC9vora\nUtilizador=\nServidor=\n");
    const auto bd = DefinicoesBD::le(ficheiro);
    EXPECT_EQ(bd.palavra_passe, "a;b={c}");
    EXPECT_EQ(bd.base, (pasta.pasta() / "Dados").string());
    auto erp = DefinicoesERP::le(ficheiro);
    EXPECT_TRUE(erp.incompletas());
    erp.completa(ficheiro);
    EXPECT_THAT(erp.valores, ElementsAre("Évora", "", "ana", "sqlite", bd.base));
    EXPECT_FALSE(erp.incompletas());
    // A production ERP is reached by its component; its database is no folder.
    pasta.escreve("OrvexEXE.xel", "[BD]\nServidor=srv\nBase=EMPRESA\n[ERP]\nComponente = {1A} \nBase=ERP\n");
    erp = DefinicoesERP::le(ficheiro);
    erp.completa(ficheiro);
    EXPECT_EQ(erp.tipo(), TipoERP::producao);
    EXPECT_EQ(erp.componente + erp.valores[DefinicoesERP::base], "{1A}ERP");
}

TEST(Definicoes, QuemEntraPelaSessaoDoSistemaNaoPrecisaDeUtilizadorENadaEAmbiguo) {
    const PastaTemporaria pasta;
    const auto ficheiro = pasta.pasta() / "OrvexEXE.xel";
    const auto le = [&](const std::string& bd) {
        pasta.escreve("OrvexEXE.xel", "[BD]\nBase=B\n" + std::regex_replace(bd, std::regex("; "), "\n"));
        return DefinicoesBD::le(ficheiro);
    };
    const auto bd = le("Servidor=srv; Autenticacao=Windows");
    EXPECT_FALSE(bd.incompletas());
    EXPECT_EQ(ConstrutorLigacao::le(texto_ligacao(bd))["Option"], "2");
    EXPECT_EQ(ConstrutorLigacao::le(texto_ligacao(le("Servidor=srv; Utilizador=u")))["Option"], "1");
    for (const auto& caso :
         tabela("Servidor=srv; Autenticacao=window => só pode ser windows | "
                "Servidor=srv; Autenticacao=windows; Utilizador=u => dispensa Utilizador | "
                "Servidor=srv; Autenticacao=windows; PalavraPasse=p => dispensa Utilizador | "
                "Servidor=sqlite; Autenticacao=windows => é de um servidor"))
        EXPECT_THAT(falha([&] { le(caso[0]); }), AllOf(HasSubstr("OrvexEXE.xel"), HasSubstr(caso[1])));
}

TEST(Definicoes, UmaPalavraPasseProtegidaAbreSeEOutraQueComeceAssimFicaComoEsta) {
    const PastaTemporaria pasta;
    const auto abre = [](const std::string& texto) -> std::string {
        if (texto == "estragada") throw Falha("porque sim.");
        return "aberta " + texto;
    };
    const auto bd = [&](const std::string& palavra_passe) {
        const auto ficheiro =
            pasta.escreve("d", "[BD]\nServidor=s\nBase=b\nUtilizador=u\nPalavraPasse=" + palavra_passe +
                                   "\n[ERP]\nPalavraPasse=" + palavra_passe);
        EXPECT_EQ(definicoes_erp(ficheiro, abre).valores[DefinicoesERP::palavra_passe],
                  definicoes_bd(ficheiro, "", abre).palavra_passe);
        return definicoes_bd(ficheiro, "", abre).palavra_passe;
    };
    const std::string marca(marca_protegida);
    EXPECT_EQ(bd(marca + "x"), "aberta x");
    for (const char* simples : {"", "segredo", "protegida:", "protegida:segredo", " protegida:x="})
        EXPECT_EQ(bd(simples), orvex::base::apara(simples));
    EXPECT_THAT(
        falha([&] { bd(marca + "estragada"); }),
        AllOf(HasSubstr("palavra-passe de ["), HasSubstr("porque sim."), HasSubstr("Escreva-a de novo")));
}

TEST(Ficheiro, OQueNaoEUmFicheiroDeTextoNossoERecusadoLogoEDizPorque) {
    const PastaTemporaria pasta;
    const auto em = [&](const std::string& nome) { return pasta.pasta() / nome; };
    const auto recusa = [&](const std::string& nome) { return falha([&] { DefinicoesBD::le(em(nome)); }); };
    std::filesystem::resize_file(pasta.escreve("grande", "x"), 100 << 20);
    pasta.escreve("utf16", std::string("\xFF\xFE[\0B\0", 6));
    pasta.escreve("binario", std::string("abc\0", 4));
    for (const auto& caso :
         tabela("nenhum => não existe | utf16/dentro => não existe | . => é uma pasta | "
                "grande => demasiado grande | utf16 => em UTF-16 | binario => não é um ficheiro de texto"))
        EXPECT_THAT(recusa(caso[0]), HasSubstr(caso[1]));
    EXPECT_EQ(PastasInstalacao({em("utf16"), em("a")}).ficheiro_definicoes(), em("a") / "OrvexEXE.xel");
}

#ifndef _WIN32 // files that only a POSIX system has
TEST(Ficheiro, UmCanoUmaLigacaoEmVoltaEOQueNaoSePodeLerDizemSeComoTais) {
    const PastaTemporaria pasta;
    const auto em = [&](const std::string& nome) { return pasta.pasta() / nome; };
    const auto recusa = [&](const std::string& nome) { return falha([&] { DefinicoesBD::le(em(nome)); }); };
    mkfifo(em("cano").c_str(), 0600);
    std::filesystem::create_symlink("volta", em("volta"));
    for (const auto& caso : tabela("cano => não é um ficheiro comum | /dev/zero => não é um ficheiro comum | "
                                   "volta => volta a si mesma"))
        EXPECT_THAT(recusa(caso[0]), HasSubstr(caso[1]));
    EXPECT_THAT(recusa(std::string(300, 'x')), HasSubstr("demasiado longo"));
    // A common folder that cannot be asked for is not the program's own.
    const PastasInstalacao em_volta{em("volta"), em(".")};
    EXPECT_THAT(falha([&] { em_volta.ficheiro_definicoes(); }), HasSubstr("volta a si mesma"));
    pasta.escreve("fechado", "x");
    if (geteuid() == 0 && seteuid(65534) == 0) {
        EXPECT_THAT(recusa("fechado"), HasSubstr("não há permissão"));
        ASSERT_EQ(seteuid(0), 0);
    }
}
#endif

TEST(Instalacao, OQueEstaJuntoDoProgramaVemAntesDoQueEDaMaquina) {
    // The environment is written here in the code page alone, which has not all letters.
    const PastaTemporaria programa, dados(std::filesystem::current_path());
    const auto instalacao = [&] { return pasta_da_instalacao(programa.pasta()); };
    static std::string nenhuns = "ProgramData=", estes = nenhuns + dados.pasta().string();
    putenv(nenhuns.data());
    EXPECT_EQ(instalacao(), programa.pasta());
    putenv(estes.data());
    EXPECT_EQ(instalacao(), programa.pasta()); // nobody installed anything
    std::filesystem::create_directory(dados.pasta() / "ORVEX");
    EXPECT_EQ(instalacao(), dados.pasta() / "ORVEX");
    for (const char* nome : {ficheiro_parametros, "OrvexEXE.xel"}) {
        const auto ficheiro = programa.escreve(nome, "");
        EXPECT_EQ(instalacao(), programa.pasta()) << nome;
        std::filesystem::remove(ficheiro);
    }
    putenv(nenhuns.data());
    // Those of 32 bits, in their folder of the others', never work on another company than these.
    const auto de_32 = programa.escreve("32/OrvexEXE.xel", "").parent_path();
    EXPECT_EQ(pasta_da_instalacao(de_32, 32), programa.pasta());
    EXPECT_EQ(pasta_da_instalacao(de_32, 64), de_32);
    EXPECT_EQ(pasta_da_instalacao(programa.pasta(), 32), programa.pasta());
}

TEST(Instalacao, OProgramaDe32BitsTrabalhaPeloOutroQuandoAsDefinicoesOEscolhemParaUmComponente) {
    const PastaTemporaria pasta;
    const auto erp = [&](const std::string& linhas) {
        return DefinicoesERP::le(
            pasta.escreve("d", "[ERP]\n" + std::regex_replace(linhas, std::regex("; "), "\n")));
    };
    const auto programa = pasta.pasta() / "orvex.exe";
    const auto escolhidos = erp("Servidor=srv; Bits=32");
    EXPECT_THAT(falha([&] { programa_de_32_bits(escolhidos, programa, 64); }),
                AllOf(HasSubstr("Bits=32"), HasSubstr((pasta.pasta() / "32" / "orvex.exe").string())));
    const auto outro = pasta.escreve("32/orvex.exe", "");
    EXPECT_EQ(programa_de_32_bits(escolhidos, programa, 64), outro);
    EXPECT_EQ(programa_de_32_bits(escolhidos, programa, 32), std::nullopt);
    for (const char* este : {"Servidor=srv", "Servidor=srv; Bits=64", "Servidor=sqlite; Bits=32"})
        EXPECT_EQ(programa_de_32_bits(erp(este), programa, 64), std::nullopt) << este;
    EXPECT_THAT(falha([&] { programa_a_par(outro, "orvex-consulta"); }), HasSubstr("orvex-consulta.exe»"));
    const auto consulta = pasta.escreve("orvex-consulta.exe", "");
    for (const auto& de : {programa, outro})
        EXPECT_EQ(programa_a_par(de, "orvex-consulta"), consulta);
    EXPECT_THAT(falha([&] { erp("Bits=16"); }), AllOf(HasSubstr("[ERP]"), HasSubstr("32 ou 64, e não «16»")));
}

TEST(ConstrutorLigacao, TodosOsValoresVoltamComoForam) {
    for (const char* valor : {"", "a", "}", "}}", "{a}", ";Pwd={x};", "a=b;c", "fim}", "ação'\""}) {
        const ConstrutorLigacao c{
            .servidor = valor, .base = valor, .utilizador = valor, .palavra_passe = valor};
        auto lidos = ConstrutorLigacao::le(c.constroi());
        for (const char* nome : {"Server", "Database", "Uid", "Pwd"})
            EXPECT_EQ(lidos[nome], valor) << nome;
        EXPECT_EQ(lidos["Provider"] + lidos["Option"], "MSDataShape1");
    }
    for (const char* ligacao : {"Server", "Server={a}", "Server={a", "Server={a}x;"})
        EXPECT_THROW(ConstrutorLigacao::le(ligacao), Falha) << ligacao;
}
