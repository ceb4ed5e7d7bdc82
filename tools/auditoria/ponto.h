// Keys of a fixed size, for records that are put in order: a line's key, and an article's code as a number.
#pragma once

#include "livro/casa.h"
#include "livro/chaves.h"

#include <array>
#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvex::auditoria {

using livro::mesmo_codigo;
// Equal for codes that are the same; for any two others it would take billions of them to meet.
std::uint64_t resumo(const std::string& codigo);

struct Ponto {
    std::array<char, 12> tipo{}; // three characters at most, in upper case
    std::int16_t serie = 0;
    std::int16_t ano = 0;
    std::int32_t numero = 0;
    std::int32_t linha = 0;

    friend auto operator<=>(const Ponto&, const Ponto&) = default;

    static Ponto de(std::int64_t ano, std::string_view tipo, std::int64_t serie, std::int64_t numero,
                    std::int64_t linha);
    static Ponto de(const livro::ChaveLinha& chave);
    std::string TpDoc() const { return tipo.data(); }
    std::string documento() const; // GR/1/7
    std::string texto() const;     // 2019/GR/1/7/3
};

} // namespace orvex::auditoria
