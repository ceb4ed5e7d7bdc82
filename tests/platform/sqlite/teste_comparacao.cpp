#include "platform/sqlite/empresa.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace orvex::platform::sqlite {
namespace {

TEST(Comparacao, texts_are_equal_without_case_and_without_trailing_blanks) {
    for (const auto& [a, b] :
         {std::pair{"Bobina", "BOBINA  "}, {"ção", "ÇÃO"}, {"", "   "}, {"ÿ", "Ÿ"}, {"š", "Š"}})
        EXPECT_EQ(compara_servidor(a, b), 0) << a << " " << b;
    for (const auto& [a, b] : {std::pair{"a", " a"}, {"é", "e"}, {"×", "÷"}, {"ab", "a b"}})
        EXPECT_NE(compara_servidor(a, b), 0) << a << " " << b;
}

TEST(Comparacao, accented_letters_stand_with_their_plain_ones) {
    const std::vector<std::string> ordenados{"",      "10",     "9",      "Agua", "Água",
                                             "aguas", "Águeda", "BOBINA", "zé",   "Zea"};
    auto baralhados = ordenados;
    std::reverse(baralhados.begin(), baralhados.end());
    std::sort(baralhados.begin(), baralhados.end(),
              [](const auto& a, const auto& b) { return compara_servidor(a, b) < 0; });
    EXPECT_EQ(baralhados, ordenados);
}

} // namespace
} // namespace orvex::platform::sqlite
