#include "base/falha.h"
#include "base/pagina_codigo.h"
#include "base/texto.h"
#include "base/variante.h"
#include "tests/apoio/tabela.h"

#include <gmock/gmock.h>

using namespace orvex::base;
using orvex::testes::tabela;
using testing::ElementsAre;
using testing::Property;
using testing::Throws;

TEST(DataHora, every_form_is_read_and_nothing_that_is_no_date) {
    for (const auto& caso :
         tabela({"15-03-2019 => 2019-03-15 00:00:00", "2019-03-15 => 2019-03-15 00:00:00",
                 "5/3/2019 => 2019-03-05 00:00:00", "15-03-2019 10:20 => 2019-03-15 10:20:00",
                 "2019-03-15T10:20:30 => 2019-03-15 10:20:30", "29-02-2020 => 2020-02-29 00:00:00",
                 "29-02-2019 => ?", "31-04-2019 => ?", "15-13-2019 => ?", "15-03-2019 24:00 => ?",
                 "15-03-2019 10 => ?", "15-03-2019x => ?", "--2019 => ?", "15-03-99999 => ?", " => ?"})) {
        const auto lida = DataHora::le(caso[0]);
        EXPECT_EQ(lida ? lida->data_hora_iso() : "?", caso[1]) << caso[0];
    }
    const DataHora momento{2019, 3, 5, 9, 8, 7};
    EXPECT_EQ(momento.data() + momento.data_iso(), "05-03-20192019-03-05");
    EXPECT_EQ(momento.data_hora() + " " + momento.so_hora(), "05-03-2019 09:08 09:08:07");
}

TEST(Texto, lengths_and_pieces_count_characters_not_bytes) {
    EXPECT_EQ(comprimento("ação€"), 5U);
    EXPECT_EQ(primeiros("ação", 2) + ultimos("ação", 2) + ultimos("ão", 5), "açãoão");
    EXPECT_EQ(a_partir_de("ação", 3) + a_partir_de("ação", 9), "ão");
    EXPECT_EQ(maiusculas("çãÿœ÷ß1"), "ÇÃŸŒ÷ß1");
    EXPECT_EQ(apara("  a b "), "a b");
    EXPECT_THAT(divide("a,,b ,", ','), ElementsAre("a", "", "b ", ""));
    EXPECT_TRUE(divide("", ',').empty());
    EXPECT_EQ(entre_plicas("O'Neill''s"), "'O''Neill''''s'");
    for (const auto& caso : tabela({" 0012  => 12", "+7 => 7", "-7 => -7", " => ?", "+ => ?", "1.0 => ?",
                                    "12a => ?", "99999999999999999999 => ?"})) {
        const auto numero = le_inteiro(caso[0]);
        EXPECT_EQ(numero ? std::to_string(*numero) : "?", caso[1]) << caso[0];
    }
}

TEST(PaginaCodigo, bytes_are_windows_1252_unless_they_are_utf_8_with_letters) {
    for (const auto& caso : tabela({"ARMAZ\xC9M=\x80 \x9F \x81 => ARMAZÉM=€ Ÿ \xC2\x81", "Armazém => Armazém",
                                    "\xEF\xBB\xBFGR => GR", "\xC0\xAF => À¯", "Armazém \xE7 => ArmazÃ©m ç"}))
        EXPECT_EQ(texto_de_ficheiro(caso[0]), caso[1]);
    EXPECT_EQ(texto_de_ficheiro("\xC3"), "Ã") << "a letter that starts and does not end";
}

TEST(Variante, converts_what_is_of_the_type_asked_for_and_fails_otherwise) {
    EXPECT_EQ(Variante(true).texto() + Variante().texto(), "-1");
    EXPECT_EQ(Variante(2.5).inteiro(), 3);
    EXPECT_EQ(Variante("  12.50").moeda().texto(), "12.5");
    EXPECT_TRUE(Variante(-1).logico());
    EXPECT_EQ(Variante("15-03-2019").data().data_iso(), "2019-03-15");
    EXPECT_THAT([] { (void)Variante().moeda(); },
                Throws<Falha>(Property(&Falha::numero, numeros_falha::valor_nulo)));
    for (const auto& pede : std::initializer_list<void (*)()>{[] { (void)Variante("1,5").real(); },
                                                              [] { (void)Variante(DataHora{}).inteiro(); },
                                                              [] { (void)Variante("1.5").inteiro(); }})
        EXPECT_THAT(pede, Throws<Falha>(Property(&Falha::numero, numeros_falha::tipo_diferente)));
}
