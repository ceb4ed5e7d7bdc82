#include "platform/automacao/registo.h"

#include "platform/automacao/falhas.h"

#include <vector>

namespace orvex::platform::automacao {
namespace {

constexpr int estes_bits = sizeof(void*) * 8;
constexpr int outros_bits = 96 - estes_bits;

std::string de_bits(int bits) { return std::to_string(bits) + " bits"; }

// A component in process; one out of it serves programs of both sizes.
bool so_para_os_outros(const std::wstring& classe) {
    auto numero = numero_da_classe(classe, estes_bits);
    if (!numero) numero = numero_da_classe(classe, outros_bits);
    if (!numero) return false;
    const std::wstring chave = L"CLSID\\" + *numero + L"\\InprocServer32";
    return texto_das_classes(chave, nullptr, outros_bits) && !texto_das_classes(chave, nullptr, estes_bits);
}

} // namespace

std::optional<std::wstring> texto_das_classes(const std::wstring& chave, const wchar_t* nome, int bits) {
    const REGSAM vista = bits == 64 ? KEY_WOW64_64KEY : KEY_WOW64_32KEY;
    HKEY aberta = nullptr;
    if (::RegOpenKeyExW(HKEY_CLASSES_ROOT, chave.c_str(), 0, KEY_QUERY_VALUE | vista, &aberta) !=
        ERROR_SUCCESS)
        return std::nullopt;
    std::vector<wchar_t> texto(32'768); // with its variables' values in their place
    auto bytes = static_cast<DWORD>(texto.size() * sizeof(wchar_t));
    const LSTATUS lido = ::RegGetValueW(aberta, nullptr, nome, RRF_RT_REG_SZ, nullptr, texto.data(), &bytes);
    ::RegCloseKey(aberta);
    if (lido != ERROR_SUCCESS) return std::nullopt;
    return std::wstring(texto.data());
}

std::optional<std::wstring> numero_da_classe(const std::wstring& classe, int bits) {
    if (classe.starts_with(L'{')) return classe;
    if (auto numero = texto_das_classes(classe + L"\\CLSID", nullptr, bits)) return numero;
    const auto actual = texto_das_classes(classe + L"\\CurVer", nullptr, bits);
    return actual ? texto_das_classes(*actual + L"\\CLSID", nullptr, bits) : std::nullopt;
}

Referencia<IDispatch> cria_componente(const std::string& classe) {
    const std::string este = "O componente do ERP «" + classe + "» ";
    const std::wstring nome = utf16_de(classe);
    CLSID clsid{};
    Referencia<IDispatch> sessao;
    HRESULT feito = ::CLSIDFromProgID(nome.c_str(), &clsid);
    if (const auto numero = numero_da_classe(nome, estes_bits); falhou(feito) && numero)
        feito = ::CLSIDFromString(numero->c_str(), &clsid);
    const bool conhecida = !falhou(feito);
    if (conhecida)
        feito = ::CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                                   IID_PPV_ARGS(sessao.GetAddressOf()));
    if (!falhou(feito)) return sessao;
    if (!conhecida || feito == REGDB_E_CLASSNOTREG || feito == REGDB_E_KEYMISSING) {
        if (so_para_os_outros(nome))
            throw base::Falha(este + "só está registado para programas de " + de_bits(outros_bits) +
                                  "; este é de " + de_bits(estes_bits) + ".",
                              feito);
        throw base::Falha(este + "não está registado nesta máquina.", feito);
    }
    if (feito == static_cast<HRESULT>(0x80070000U | ERROR_BAD_EXE_FORMAT))
        throw base::Falha(este + "não é para programas de " + de_bits(estes_bits) + ", como este.", feito);
    if (feito == E_NOINTERFACE) throw base::Falha(este + "não se deixa automatizar.", feito);
    throw base::Falha(este + "não arrancou: " + texto_do_sistema(feito), feito);
}

} // namespace orvex::platform::automacao
