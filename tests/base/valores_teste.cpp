#include "base/formato_regional.h"
#include "base/ordem.h"
#include "base/pagina_codigo.h"
#include "base/texto.h"
#include "tests/apoio/falhas.h"
#include "tests/apoio/tabela.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

using namespace orvex::base;
using namespace orvex::testes;
using testing::ElementsAre;

namespace {

constexpr auto maior = Moeda::de_decimos_milesimos(std::numeric_limits<std::int64_t>::max());
constexpr auto menor = Moeda::de_decimos_milesimos(std::numeric_limits<std::int64_t>::min());

Moeda m(const std::string& texto) { return Moeda::le(texto).value(); }
std::string escrita(const std::optional<Moeda>& lida) { return lida ? lida->texto() : "?"; }

} // namespace

TEST(Moeda, LeSeAteQuatroDecimaisEEscreveSeSemZerosNoFim) {
    for (const auto& caso :
         tabela("12 => 12 | -12.50 => -12.5 | +.5 => 0.5 | 5. => 5 | -0 => 0 | 0.00005 => 0.0001 | "
                "-0.00005 => -0.0001 | 0.000049999 => 0 | 1.99995 => 2 | 1,5 => ? | 1.5.2 => ? | "
                " 1 => ? | 1e3 => ? | . => ? | - => ? |  => ? | "
                "922337203685477.5807 => 922337203685477.5807 | 922337203685477.5808 => ? | "
                "-922337203685477.5808 => -922337203685477.5808 | 922337203685477.58075 => ? | "
                "99999999999999999999 => ?"))
        EXPECT_EQ(escrita(Moeda::le(caso[0])), caso[1]) << caso[0];
}

TEST(Moeda, SomaSeCertoArredondaSeParaLongeDoZeroENadaDaAVolta) {
    EXPECT_EQ(m("1.15") - m("1.00"), m("0.15"));
    EXPECT_EQ(menor + maior, m("-0.0001"));
    EXPECT_EQ(m("-1.2345").arredondada(3), m("-1.235"));
    EXPECT_EQ(Moeda::de_real(-0.00005), m("-0.0001"));
    for (const auto& excede : std::initializer_list<void (*)()>{
             [] { (void)(maior + m("0.0001")); }, [] { (void)(menor - m("0.0001")); }, [] { (void)-menor; },
             [] { (void)menor.absoluta(); }, [] { (void)Moeda::de_inteiro(922337203685478); },
             [] { (void)Moeda::de_real(1e15); }, [] { (void)Moeda::de_real(std::nan("")); },
             [] { (void)maior.arredondada(0); }})
        EXPECT_THROW(excede(), Falha);
}

TEST(FormatoRegional, UmSinalSoEDecimalEOsDoisJuntosAgrupam) {
    for (const auto& caso :
         tabela("1,5 => 1.5 | 1.5 => 1.5 | 1.234 => 1.234 | 1,234 => 1.234 | 1.234,5 => 1234.5 | "
                "1,234.5 => 1234.5 |  -0,2  => -0.2 | ,5 => 0.5 | 1.234.567,8 => 1234567.8 | "
                "1.234.567 => ? | 12.34,5 => ? | 1234.567,8 => ? | .234,5 => ? | 1,2,3 => ? | "
                "12a => ? |  => ? | - 1 => ? | 1 234,500 => 1234.5 | 1\u00A0234,5 => 1234.5 | "
                "1\u202F234\u202F567.8 => 1234567.8 | \u00A01\u2009234\u00A0 => 1234 | "
                "12 34,5 => ? | 1 234.567,8 => ? | 1,234 5 => ? | "
                "899999999999,9999 => 899999999999.9999 | 900000000000 => ? | -900.000.000.000,0 => ?"))
        EXPECT_EQ(escrita(FormatoRegional().le(caso[0])), caso[1]) << caso[0];
}

TEST(FormatoRegional, OsNumerosNaoTemGruposEOsPesosTemSempreTresDecimais) {
    const FormatoRegional portugues, ingles{'.', ','};
    EXPECT_EQ(portugues.texto(m("1234.5")), "1234,5");
    EXPECT_EQ(portugues.texto(Variante(0.2)), "0,2");
    EXPECT_EQ(portugues.texto(Variante(DataHora{2019, 3, 15, 10, 20, 30})), "15-03-2019");
    for (const auto& caso :
         tabela({"0 => ,000 => .000", "0.5 => ,500 => .500", "-0.5 => -,500 => -.500",
                 "-0.0001 => ,000 => .000", "999.9995 => 1.000,000 => 1,000.000",
                 "1234567.8 => 1.234.567,800 => 1,234,567.800", "-123 => -123,000 => -123.000"})) {
        EXPECT_EQ(portugues.peso(m(caso[0])), caso[1]);
        EXPECT_EQ(ingles.peso(m(caso[0])), caso[2]);
    }
}

TEST(DataHora, LeTodasAsFormasENadaQueNaoSejaData) {
    for (const auto& caso :
         tabela({"15-03-2019 => 2019-03-15 00:00:00", "2019-03-15 => 2019-03-15 00:00:00",
                 "5/3/2019 => 2019-03-05 00:00:00", "15-03-2019 10:20 => 2019-03-15 10:20:00",
                 "2019-03-15T10:20:30 => 2019-03-15 10:20:30", "29-02-2020 => 2020-02-29 00:00:00",
                 "29-02-2019 => ?", "31-04-2019 => ?", "15-13-2019 => ?", "15-03-2019 24:00 => ?",
                 "15-03-2019 10 => ?", "15-03-2019x => ?", "--2019 => ?", "15-03-99999 => ?", " => ?"})) {
        const auto lida = DataHora::le(caso[0]);
        EXPECT_EQ(lida ? lida->data_hora_iso() : "?", caso[1]) << caso[0];
    }
    const DataHora momento{2019, 3, 5, 9, 8, 7}, hoje{2026, 11, 23};
    const auto escrita = [&](const std::string& texto, bool com_hora) {
        const auto lida = momento.digitada(texto, com_hora, hoje);
        return lida ? lida->data_hora_iso().substr(0, 16) : "?";
    };
    for (const auto& forma :
         partes("15-10-2025,15/10/2025, 15.10.2025,15 10 2025,15102025,151025,15/10.25,2025-10-15", ",")) {
        EXPECT_EQ(escrita(forma, false), "2025-10-15 09:08") << forma;
        EXPECT_EQ(escrita(forma + " 7h05", false), "?") << forma;
        for (const char* hora : {" 10:20", " 1020", " 10.20"})
            EXPECT_EQ(escrita(forma + hora, true), "2025-10-15 10:20") << forma;
    }
    for (const auto& caso : tabela({"5-2-2026 => 2026-02-05", "1-1-75 => 2075-01-01", "1-1-76 => 1976-01-01",
                                    "29-2-28 => 2028-02-29", "1-1-1753 => 1753-01-01"}))
        EXPECT_EQ(escrita(caso[0], true), caso[1] + " 09:08");
    for (const char* junta : {"1510251020", "151020251020"})
        EXPECT_EQ(escrita(junta, true) + escrita(junta, false), "2025-10-15 10:20?") << junta;
    for (const auto& nada : partes("31-02-2026,29-02-2026,15-10-202,15-10-5,15-10,15-10-,15--10-25,1510202,"
                                   "20251015,015-10-2025,x,15-10-2025x,31-12-1752,15-10-0025,15-10-25 "
                                   "24:00,15-10-25 10,15-10-25 10:2,15-10-2025 10:20:30,15:10:2025,",
                                   ","))
        EXPECT_EQ(escrita(nada, true), "?") << nada;
    for (const auto& [quando, longe] : {std::pair{"24-11-2027", true},
                                        {"22-11-2025", true},
                                        {"23-11-2027 23:59", false},
                                        {"23-11-2025", false}})
        EXPECT_EQ(DataHora::le(quando)->a_mais_de_um_ano(hoje), longe) << quando;
    EXPECT_EQ(momento.data() + momento.data_iso(), "05-03-20192019-03-05");
    EXPECT_EQ(momento.data_hora() + " " + momento.so_hora(), "05-03-2019 09:08 09:08:07");
}

TEST(Texto, ContaEmUnidadesUtf16ENaoParteCaracteres) {
    EXPECT_EQ(comprimento("a😀b€"), 5U);
    EXPECT_EQ(primeiros("a😀b", 2) + "|" + primeiros("a😀b", 3), "a|a😀");
    EXPECT_EQ(ultimos("a😀b", 2) + "|" + ultimos("a😀b", 9), "b|a😀b");
    EXPECT_EQ(a_partir_de("a😀b", 2) + "|" + a_partir_de("a😀b", 3) + a_partir_de("a😀b", 9), "😀b|b");
    for (const std::string_view mau : {"\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF0\x80\x80\xAF",
                                       "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xC3", "\x80"}) {
        EXPECT_FALSE(utf8_valido(mau));
        std::string_view resto = mau;
        EXPECT_EQ(retira_caracter(resto), static_cast<unsigned char>(mau[0])) << "a byte stands for itself";
        EXPECT_EQ(resto.size(), mau.size() - 1);
    }
    EXPECT_TRUE(texto_valido("a\xED\x9F\xBF\xEE\x80\x80\xF4\x8F\xBF\xBFç€"));
    EXPECT_EQ(maiusculas("çãÿœ÷ß1"), "ÇÃŸŒ÷ß1");
    EXPECT_THAT(divide("a,,b ,", ','), ElementsAre("a", "", "b ", ""));
    EXPECT_TRUE(divide("", ',').empty());
    for (const auto& caso : tabela({" 0012  => 12", "+7 => 7", "-7 => -7", " => ?", "+ => ?", "1.0 => ?",
                                    "12a => ?", "99999999999999999999 => ?"})) {
        const auto numero = le_inteiro(caso[0]);
        EXPECT_EQ(numero ? std::to_string(*numero) : "?", caso[1]) << caso[0];
    }
}

TEST(PaginaCodigo, OsBytesSaoWindows1252AMenosQueSejamUtf8ComLetras) {
    for (const auto& caso : tabela({"ARMAZ\xC9M=\x80 \x9F \x81 => ARMAZÉM=€ Ÿ \xC2\x81", "Armazém => Armazém",
                                    "\xEF\xBB\xBFGR => GR", "\xC0\xAF => À¯", "Armazém \xE7 => ArmazÃ©m ç",
                                    "\xED\xA0\x81 => í\xC2\xA0\xC2\x81", "\xE0\x81\xAF => à\xC2\x81¯",
                                    "\xEF\xBB\xBFGR\xC9 => GRÉ"}))
        EXPECT_EQ(texto_de_ficheiro(caso[0]), caso[1]);
    EXPECT_EQ(texto_de_ficheiro("\xC3"), "Ã") << "a letter that starts and does not end";
}

TEST(Variante, ConverteOQueEDoTipoPedidoEFalhaNoResto) {
    EXPECT_EQ(Variante(true).texto() + Variante().texto(), "-1");
    EXPECT_EQ(Variante(2.5).inteiro(), 3);
    EXPECT_EQ(Variante("  12.50").moeda().texto(), "12.5");
    EXPECT_EQ(Variante("15-03-2019").data().data_iso(), "2019-03-15");
    using numeros_falha::tipo_diferente;
    EXPECT_EQ(numero_da_falha([] { (void)Variante().moeda(); }), numeros_falha::valor_nulo);
    EXPECT_EQ(numero_da_falha([] { (void)Variante("1,5").real(); }), tipo_diferente);
    EXPECT_EQ(numero_da_falha([] { (void)Variante(DataHora{}).inteiro(); }), tipo_diferente);
    EXPECT_EQ(numero_da_falha([] { (void)Variante("1.5").inteiro(); }), tipo_diferente);
}

TEST(Ordem, NumerosEDatasContamPeloQueValemTambemDentroDosTextosEAcentosNaoContam) {
    const std::vector<Variante> ordenados{
        {},           9,        m("10.5"), "31-12-2023", DataHora{2024, 2, 1},
        "02-02-2024", "A007B",  "a10b",    "AÇO 1",      "aço 02",
        "Acre",       "FA/1/9", "FA/1/10", "FA/2/1"};
    for (std::size_t i = 1; i < ordenados.size(); ++i) {
        EXPECT_TRUE(ChaveOrdem(ordenados[i - 1]) < ChaveOrdem(ordenados[i])) << i;
        EXPECT_FALSE(ChaveOrdem(ordenados[i]) < ChaveOrdem(ordenados[i - 1])) << i;
    }
}
