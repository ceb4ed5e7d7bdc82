// Texts cross between the rules (UTF-8) and the widgets here.
#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace orvex::platform::qt {

inline QString qs(std::string_view texto) {
    return QString::fromUtf8(texto.data(), static_cast<qsizetype>(texto.size()));
}

// The texts of boxes break their lines with "\r\n" or "\n\r": each pair is one break.
inline QString com_quebras(std::string_view texto) {
    return qs(texto).replace("\r\n", "\n").replace("\n\r", "\n").replace('\r', '\n');
}

} // namespace orvex::platform::qt
