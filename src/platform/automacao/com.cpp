#include "platform/automacao/com.h"

#include <new>

namespace orvex::platform::automacao {

std::wstring utf16_de(std::string_view utf8) {
    const int bytes = static_cast<int>(utf8.size());
    std::wstring texto(
        static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, nullptr, 0)), L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, texto.data(), static_cast<int>(texto.size()));
    return texto;
}

std::string utf8_de(std::wstring_view utf16) {
    const int unidades = static_cast<int>(utf16.size());
    const auto converte = [&](char* para, int bytes) {
        return ::WideCharToMultiByte(CP_UTF8, 0, utf16.data(), unidades, para, bytes, nullptr, nullptr);
    };
    std::string texto(static_cast<std::size_t>(converte(nullptr, 0)), '\0');
    converte(texto.data(), static_cast<int>(texto.size()));
    return texto;
}

Texto::Texto(std::string_view utf8) {
    const std::wstring letras = utf16_de(utf8);
    texto_ = ::SysAllocStringLen(letras.data(), static_cast<UINT>(letras.size()));
    if (texto_ == nullptr) throw std::bad_alloc();
}

} // namespace orvex::platform::automacao
