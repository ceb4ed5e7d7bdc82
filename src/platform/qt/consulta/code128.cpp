#include "platform/qt/consulta/code128.h"

#include <zint.h>

#include <algorithm>
#include <memory>

namespace orvex::platform::qt::consulta {

std::optional<std::vector<bool>> code128(const std::string& codigo) {
    // The letters with accents that there are a way for, few readers know it for.
    const bool legivel =
        std::all_of(codigo.begin(), codigo.end(), [](char c) { return c >= ' ' && c <= '~'; });
    if (codigo.empty() || !legivel) return std::nullopt;
    const std::unique_ptr<zint_symbol, decltype(&ZBarcode_Delete)> simbolo(ZBarcode_Create(),
                                                                           ZBarcode_Delete);
    if (!simbolo) return std::nullopt;
    simbolo->symbology = BARCODE_CODE128;
    const auto* letras = reinterpret_cast<const unsigned char*>(codigo.data());
    if (ZBarcode_Encode(simbolo.get(), letras, static_cast<int>(codigo.size())) >= ZINT_ERROR)
        return std::nullopt;
    std::vector<bool> modulos;
    for (int i = 0; i < simbolo->width; ++i)
        modulos.push_back((simbolo->encoded_data[0][i / 8] >> (i % 8) & 1) != 0);
    return modulos;
}

} // namespace orvex::platform::qt::consulta
