#include "platform/automacao/registo.h"

#include "platform/automacao/falhas.h"

#include <array>
#include <optional>

namespace orvex::platform::automacao {
namespace {

constexpr bool de_64_bits = sizeof(void*) == 8;
constexpr const char* estes_bits = de_64_bits ? "64 bits" : "32 bits";
constexpr const char* outros_bits = de_64_bits ? "32 bits" : "64 bits";
// Programs of the two word sizes see two registers of classes.
constexpr REGSAM esta_vista = de_64_bits ? KEY_WOW64_64KEY : KEY_WOW64_32KEY;
constexpr REGSAM outra_vista = de_64_bits ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;

// The text of a key of the classes; none when there is no such key.
std::optional<std::wstring> chave_das_classes(const std::wstring& chave, REGSAM vista) {
    HKEY aberta = nullptr;
    if (::RegOpenKeyExW(HKEY_CLASSES_ROOT, chave.c_str(), 0, KEY_READ | vista, &aberta) != ERROR_SUCCESS)
        return std::nullopt;
    std::array<wchar_t, 256> valor{};
    auto bytes = static_cast<DWORD>(sizeof(wchar_t) * (valor.size() - 1));
    ::RegQueryValueExW(aberta, nullptr, nullptr, nullptr, reinterpret_cast<BYTE*>(valor.data()), &bytes);
    ::RegCloseKey(aberta);
    return std::wstring(valor.data());
}

// A component in process; one out of it serves programs of both sizes.
bool so_para_os_outros(const std::wstring& classe) {
    std::wstring numero = classe;
    if (!classe.starts_with(L'{'))
        numero = chave_das_classes(classe + L"\\CLSID", esta_vista)
                     .value_or(chave_das_classes(classe + L"\\CLSID", outra_vista).value_or(L""));
    const std::wstring chave = L"CLSID\\" + numero + L"\\InprocServer32";
    return !numero.empty() && chave_das_classes(chave, outra_vista) && !chave_das_classes(chave, esta_vista);
}

} // namespace

Referencia<IDispatch> cria_componente(const std::string& classe) {
    const std::string este = "O componente do ERP «" + classe + "» ";
    const std::wstring nome = utf16_de(classe);
    CLSID clsid{};
    Referencia<IDispatch> sessao;
    HRESULT feito = nome.starts_with(L'{') ? ::CLSIDFromString(nome.c_str(), &clsid)
                                           : ::CLSIDFromProgID(nome.c_str(), &clsid);
    const bool conhecida = !falhou(feito);
    if (conhecida)
        feito = ::CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                                   IID_PPV_ARGS(sessao.GetAddressOf()));
    if (!falhou(feito)) return sessao;
    if (!conhecida || feito == REGDB_E_CLASSNOTREG || feito == REGDB_E_KEYMISSING) {
        if (so_para_os_outros(nome))
            throw base::Falha(este + "só está registado para programas de " + outros_bits + "; este é de " +
                                  estes_bits + ".",
                              feito);
        throw base::Falha(este + "não está registado nesta máquina.", feito);
    }
    if (feito == static_cast<HRESULT>(0x80070000U | ERROR_BAD_EXE_FORMAT))
        throw base::Falha(este + "não é para programas de " + estes_bits + ", como este.", feito);
    if (feito == E_NOINTERFACE) throw base::Falha(este + "não se deixa automatizar.", feito);
    throw base::Falha(este + "não arrancou: " + texto_do_sistema(feito), feito);
}

} // namespace orvex::platform::automacao
