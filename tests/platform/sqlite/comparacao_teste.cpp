#include "platform/sqlite/empresa.h"

#include <gtest/gtest.h>

TEST(Comparacao, NaoVeMaiusculasNemBrancosNoFimEOrdenaAsLetrasComAcentoJuntoDasOutras) {
    using orvex::platform::sqlite::compara_servidor;
    for (const auto& [a, b] :
         {std::pair{"Bobina", "BOBINA  "}, {"ção", "ÇÃO"}, {"", "   "}, {"ÿ", "Ÿ"}, {"š", "Š"}})
        EXPECT_EQ(compara_servidor(a, b), 0) << a << " " << b;
    for (const auto& [a, b] : {std::pair{"a", " a"}, {"é", "e"}, {"×", "÷"}, {"ab", "a b"}})
        EXPECT_NE(compara_servidor(a, b), 0) << a << " " << b;
    const std::vector<std::string> ordenados{"",      "10",     "9",      "Agua", "Água",
                                             "aguas", "Águeda", "BOBINA", "zé",   "Zea"};
    for (std::size_t i = 1; i < ordenados.size(); ++i)
        EXPECT_LT(compara_servidor(ordenados[i - 1], ordenados[i]), 0) << ordenados[i];
}
