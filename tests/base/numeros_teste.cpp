#include "base/falha.h"
#include "base/formato_regional.h"
#include "tests/apoio/tabela.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace orvex::base;
using orvex::testes::tabela;

namespace {

constexpr auto maior = Moeda::de_decimos_milesimos(std::numeric_limits<std::int64_t>::max());
constexpr auto menor = Moeda::de_decimos_milesimos(std::numeric_limits<std::int64_t>::min());

Moeda m(const std::string& texto) { return Moeda::le(texto).value(); }
std::string escrita(const std::optional<Moeda>& lida) { return lida ? lida->texto() : "?"; }

} // namespace

TEST(Moeda, plain_text_is_read_to_four_decimals_and_written_without_trailing_zeros) {
    for (const auto& caso :
         tabela({"12 => 12", "-12.50 => -12.5", "+.5 => 0.5", "5. => 5", "-0 => 0", "0.00005 => 0.0001",
                 "-0.00005 => -0.0001", "0.000049999 => 0", "1.99995 => 2", "1,5 => ?", "1.5.2 => ?",
                 " 1 => ?", "1e3 => ?", ". => ?", "- => ?", " => ?"}))
        EXPECT_EQ(escrita(Moeda::le(caso[0])), caso[1]) << caso[0];
    for (const char* limite : {"922337203685477.5807", "-922337203685477.5808"})
        EXPECT_EQ(escrita(Moeda::le(limite)), limite);
    for (const char* excede : {"922337203685477.5808", "922337203685477.58075", "99999999999999999999"})
        EXPECT_EQ(escrita(Moeda::le(excede)), "?") << excede;
}

TEST(Moeda, sums_are_exact_rounding_is_half_away_from_zero_and_nothing_wraps) {
    EXPECT_EQ(m("1.15") - m("1.00"), m("0.15"));
    EXPECT_EQ(menor + maior, m("-0.0001"));
    EXPECT_EQ(m("1.2345").arredondada(3), m("1.235"));
    EXPECT_EQ(m("-1.2345").arredondada(3), m("-1.235"));
    EXPECT_EQ(m("-0.5").arredondada(0), m("-1"));
    EXPECT_EQ(Moeda::de_real(-0.00005), m("-0.0001"));
    for (const auto& excede : std::initializer_list<void (*)()>{
             [] { (void)(maior + m("0.0001")); }, [] { (void)(menor - m("0.0001")); }, [] { (void)-menor; },
             [] { (void)menor.absoluta(); }, [] { (void)Moeda::de_inteiro(922337203685478); },
             [] { (void)Moeda::de_real(1e15); }, [] { (void)Moeda::de_real(std::nan("")); },
             [] { (void)maior.arredondada(0); }})
        EXPECT_THROW(excede(), Falha);
}

TEST(FormatoRegional, a_single_sign_is_decimal_and_both_together_group) {
    for (const auto& caso :
         tabela({"1,5 => 1.5", "1.5 => 1.5", "1.234 => 1.234", "1,234 => 1.234", "1.234,5 => 1234.5",
                 "1,234.5 => 1234.5", " -0,2  => -0.2", ",5 => 0.5", "1.234.567,8 => 1234567.8",
                 "1.234.567 => ?", "12.34,5 => ?", "1234.567,8 => ?", ".234,5 => ?", "1,2,3 => ?", "12a => ?",
                 " => ?", "- 1 => ?"}))
        EXPECT_EQ(escrita(FormatoRegional().le(caso[0])), caso[1]) << caso[0];
    for (const auto& caso :
         tabela({"1 234,500 => 1234.5", "1\u00A0234,5 => 1234.5", "1\u202F234\u202F567.8 => 1234567.8",
                 "\u00A01\u2009234\u00A0 => 1234", "12 34,5 => ?", "1 234.567,8 => ?", "1,234 5 => ?",
                 "899999999999,9999 => 899999999999.9999", "900000000000 => ?", "-900.000.000.000,0 => ?"}))
        EXPECT_EQ(escrita(FormatoRegional().le(caso[0])), caso[1]) << caso[0];
}

TEST(FormatoRegional, plain_numbers_carry_no_grouping_and_weights_always_three_decimals) {
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
