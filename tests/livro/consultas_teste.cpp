// What the property test's users never do: items that came by other ways, hours of one day, codes that mean
// something in a statement; and what the enquiries cost a server.
#include "base/texto.h"
#include "livro/consultas/consultas.h"
#include "tests/propriedades/observador.h"

using namespace orvex;
using namespace orvex::testes;
using namespace orvex::livro::consultas;

namespace {

struct Consultas : testing::Test {
    EmpresaTeste empresa;
    std::optional<livro::Casa> casa;

    Consultas() {
        empresa.recomeca();
        casa = livro::Casa::le(startup::Parametros(empresa.pasta()));
    }
    void detentor(const std::string& artigo, const std::string& cliente, const base::Variante& data,
                  const base::Variante& peso, const char* tipo, int serie, int numero,
                  const std::string& para = "") {
        insere(empresa.outra(), "xel_ORVEX",
               {"NumSerie", "Cliente", "CliFinal", "Data", "Quantidade", "Ano", "TpDoc", "Serie", "NNumDoc",
                "NumLin"},
               {{artigo, cliente, para, data, peso, 2019, tipo, serie, numero, 1}});
    }
    Recolhida vista(const auto& consulta, const auto& pedido) {
        Recolhida recolhida;
        EXPECT_TRUE(consulta(Meios{empresa.outra(), *casa, relogio}, pedido, recolhida));
        return recolhida;
    }
    std::string ficha(const std::string& codigo) {
        return celulas(vista(artigo, codigo), "ficha", {"detentor", "desde", "peso", "ressalvas"});
    }
};

const base::DataHora dia_1{2019, 3, 1}, dia_1_a_tarde{2019, 3, 1, 15, 30, 0}, dia_2{2019, 3, 2};

TEST_F(Consultas, OQueOLivroNaoSabeEDitoENaoEAdivinhado) {
    detentor("SEM", "CL2", dia_1, m("-2"), "GR", 1, 5);
    detentor("MEIA", "CL2", dia_1, m("3"), "SB", 1, 0);
    detentor("MEIA", "CL2", dia_2, m("-3"), "QB", 2, 0, "CL3");
    detentor("SALTO", "CL2", dia_1, m("3"), "SB", 1, 0);
    detentor("SALTO", "CL3", dia_2, m("1"), "SB", 1, 9);
    detentor("NULOS", "CL2", {}, {}, "FC", 1, 9);
    EXPECT_EQ(ficha("SEM"),
              "CL2|2019-03-01||O livro não tem o início deste artigo: veio por outra via. O ERP não "
              "tem este artigo|\n");
    EXPECT_THAT(ficha("MEIA"), HasSubstr("|0|O livro tem a saída para CL3, e não a entrada. "));
    EXPECT_THAT(ficha("SALTO"), StartsWith("CL3|2019-03-02|4|O livro não diz como passou de CL2 para CL3. "));
    EXPECT_THAT(ficha("NULOS"), StartsWith("CL2||0|Há um movimento sem peso. Há um movimento sem data. "));
    EXPECT_EQ(celulas(vista(cliente, PedidoCliente{"CL2", dia_2}), "artigos", {"artigo", "desde", "peso"}),
              "MEIA|2019-03-01|0|\nNULOS||0|\nSEM|2019-03-01||\nTotal||0|\n");
}

TEST_F(Consultas, NumDiaOrdenaORegistoTenhamHoraOuNao) {
    detentor("R", "CL2", dia_2, m("3"), "FC", 1, 1);
    detentor("R", "CL2", dia_1_a_tarde, m("1"), "SB", 1, 1);
    detentor("R", "CL3", dia_1, m("-1"), "GR", 1, 2);
    EXPECT_THAT(ficha("R"), StartsWith("CL3|2019-03-01|3|"));
    EXPECT_EQ(celulas(vista(artigo, std::string("R")), "movimentos", {"documento"}),
              "2019/GR/1/2|\n2019/SB/1/1|\n2019/FC/1/1|\n");
    EXPECT_EQ(celulas(vista(movimentos, PedidoMovimentos{dia_1, dia_1}), "movimentos", {"documento"}),
              "2019/SB/1/1|\n2019/GR/1/2|\n|\n|\n");
    EXPECT_EQ(celulas(vista(cliente, PedidoCliente{"CL3", dia_1}), "artigos", {"artigo", "peso"}),
              "R||\nTotal|0|\n");
}

// A return of any series brings a line back, as it does on the note's screen; and rows lack what they may
// lack.
TEST_F(Consultas, LeOQueOutrosDeixaramPorPreencherEDevolveuEmOutraSerie) {
    const auto movimento = [&](const char* tipo, int serie, const char* artigo, const std::string& origem) {
        insere(empresa.outra(), "xel_ORVEX_Mov",
               {"Ano", "TpDoc", "SerieDoc", "NumDoc", "NumLinha", "Data", "Cliente", "Artigo", "Origem"},
               {{2019, tipo, serie, 77, 1, dia_1, "CL2", artigo, origem}});
    };
    empresa.insere_item("R", "CL2", m("1"));
    const livro::Numeracao &guias = casa->guias, &devolucoes = casa->devolucoes;
    const std::string guia = "2019/" + guias.TpDoc + "/" + guias.SerieEscrita + "/77";
    movimento(guias.TpDoc.c_str(), guias.Serie, "R", "2019/FA/1/1/1/00000");
    movimento(guias.TpDoc.c_str(), guias.Serie + 1, "R", "2019/FA/1/1/1/00000");
    EXPECT_NE(celulas(vista(artigo, std::string("R")), "por_devolver", {"documento"}), "");
    movimento(devolucoes.TpDoc.c_str(), devolucoes.Serie + 1, "R", guia + "/1/00000");
    EXPECT_EQ(celulas(vista(artigo, std::string("R")), "por_devolver", {"documento"}), "");
    EXPECT_THAT(celulas(vista(documento, guias.TpDoc + "/77"), "linhas", {"artigo", "devolvida_com"}),
                StartsWith("R|2019/" + devolucoes.TpDoc + "/"));

    insere(empresa.outra(), "xel_ORVEX", {"NumSerie", "Cliente", "Data", "Quantidade", "TpDoc", "Serie"},
           {{"R", "SO NO LIVRO", dia_1, m("1"), casa->sobras.TpDoc, casa->sobras.Serie}});
    EXPECT_EQ(celulas(vista(movimentos, PedidoMovimentos{dia_1, dia_1, "Transferência", "R"}), "movimentos",
                      {"detentor"}),
              "SO NO LIVRO|\n|\n");
    EXPECT_EQ(celulas(vista(parados, PedidoParados{1, "SO NO LIVRO", {}}), "parados", {"artigo"}),
              "R|\nTotal|\n");
}

TEST_F(Consultas, ProcuraOQueFoiEscritoEDeMaisNada) {
    for (const char* codigo : {"A%B", "A_B", "A[B]", "D'X", "AXB", "000123", "ÁGUA"})
        empresa.insere_item(codigo, "CL2", m("1"));
    for (const auto& caso :
         tabela("A%B => A%B; | A_b => A_B; | A[B] => A[B]; | d'x => D'X; | 00123 => 000123; | "
                "%B => A%B; | gua => ÁGUA; | água => ÁGUA; | ' or 1=1 => ? | [ => A[B];")) {
        Recolhida achados;
        const bool ha = procura(Meios{empresa.outra(), *casa, relogio}, caso[0], achados);
        std::string codigos = ha ? "" : "?";
        for (const auto& parte : achados.partes)
            for (const auto& linha : parte.linhas)
                if (parte.quadro.colunas[0].chave == "artigo") codigos += linha[0].texto() + ";";
        EXPECT_EQ(codigos, caso[1]) << caso[0];
    }
}

TEST_F(Consultas, AoServidorSoSePerguntaEONumeroDePedidosNaoCresceComAsLinhas) {
    if (!pelo_fio()) GTEST_SKIP() << "only the wire counts";
    const auto pedidos = [&](int artigos) {
        for (int i = 0; i < artigos; ++i) {
            const std::string codigo = "R" + std::to_string(i) + "/" + std::to_string(artigos);
            empresa.insere_item(codigo, "CL2", m("1"));
            empresa.insere_factura(
                {"FA", 1, 500 + artigos, i + 1, codigo, m("1"), m("1"), "CL", "CL2", m("1")});
        }
        SessaoDeTeste BD;
        EXPECT_TRUE(BD.Abre(ligacao(empresa.pasta())));
        const Meios meios{BD, *casa, relogio};
        const std::size_t antes = BD.servidor().textos().size();
        std::vector<int> contados;
        const auto conta = [&](const auto& consulta, const auto& pedido) {
            Recolhida recolhida;
            BD.servidor().recomeca();
            EXPECT_TRUE(consulta(meios, pedido, recolhida));
            contados.push_back(BD.servidor().pedidos());
        };
        conta(artigo, "R0/" + std::to_string(artigos));
        conta(cliente, PedidoCliente{"CL2"});
        conta(documento, "FA/1/" + std::to_string(500 + artigos));
        conta(parados, PedidoParados{0, "CL2", {}});
        conta(movimentos, PedidoMovimentos{{2018, 1, 1}, relogio});
        conta(procura, std::string("R"));
        const auto textos = BD.servidor().textos();
        for (std::size_t i = antes; i < textos.size(); ++i)
            EXPECT_EQ(base::maiusculas(textos[i].substr(0, 7)), "SELECT ") << textos[i];
        return contados;
    };
    const auto de_poucas = pedidos(2), de_muitas = pedidos(50);
    for (std::size_t i = 0; i < de_muitas.size(); ++i)
        EXPECT_TRUE(de_muitas[i] > 0 && de_muitas[i] <= de_poucas[i] && de_poucas[i] <= 8) << i;
}

} // namespace
