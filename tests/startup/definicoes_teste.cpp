#include "base/falha.h"
#include "startup/construtor_ligacao.h"
#include "startup/definicoes.h"
#include "startup/instalacao.h"
#include "startup/parametros.h"
#include "tests/apoio/falhas.h"
#include "tests/apoio/pasta_temporaria.h"
#include "tests/apoio/tabela.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

using namespace orvex::startup;
using namespace orvex::testes;
using orvex::base::Falha;
using testing::ElementsAre;
using testing::HasSubstr;

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
}

TEST(Ficheiro, OQueNaoEUmFicheiroDeTextoNossoERecusadoLogoEDizPorque) {
    const PastaTemporaria pasta;
    const auto em = [&](const std::string& nome) { return pasta.pasta() / nome; };
    const auto recusa = [&](const std::string& nome) { return falha([&] { DefinicoesBD::le(em(nome)); }); };
    mkfifo(em("cano").c_str(), 0600);
    std::filesystem::create_symlink("volta", em("volta"));
    std::filesystem::resize_file(pasta.escreve("grande", "x"), 100 << 20);
    pasta.escreve("utf16", std::string("\xFF\xFE[\0B\0", 6));
    pasta.escreve("binario", std::string("abc\0", 4));
    for (const auto& caso :
         tabela("nenhum => não existe | utf16/dentro => não existe | . => é uma pasta | "
                "cano => não é um ficheiro comum | /dev/zero => não é um ficheiro comum | "
                "volta => volta a si mesma | grande => demasiado grande | utf16 => em UTF-16 | "
                "binario => não é um ficheiro de texto"))
        EXPECT_THAT(recusa(caso[0]), HasSubstr(caso[1]));
    EXPECT_THAT(recusa(std::string(300, 'x')), HasSubstr("demasiado longo"));
    // A common folder that cannot be asked for is not the program's own.
    const PastasInstalacao em_volta{em("volta"), em(".")};
    EXPECT_THAT(falha([&] { em_volta.ficheiro_definicoes(); }), HasSubstr("volta a si mesma"));
    EXPECT_EQ(PastasInstalacao({em("utf16"), em("a")}).ficheiro_definicoes(), em("a") / "OrvexEXE.xel");
    if (geteuid() == 0 && seteuid(65534) == 0) {
        EXPECT_THAT(recusa("utf16"), HasSubstr("não há permissão"));
        ASSERT_EQ(seteuid(0), 0);
    }
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
