#include "registo.h"

#include "base/caminho.h"

#include <windows.h>

#include <vector>

namespace orvex::diagnostico {
namespace {

using Texto = std::wstring;

constexpr int outros_bits = bits_do_programa == 64 ? 32 : 64;

REGSAM vista_de(int bits) { return bits == 64 ? KEY_WOW64_64KEY : KEY_WOW64_32KEY; }

// A text below the machine's and the user's classes, in one size's view. None where there is no such value.
std::optional<Texto> valor(const Texto& chave, const wchar_t* nome, REGSAM vista) {
    HKEY aberta = nullptr;
    if (::RegOpenKeyExW(HKEY_CLASSES_ROOT, chave.c_str(), 0, KEY_QUERY_VALUE | vista, &aberta) !=
        ERROR_SUCCESS)
        return std::nullopt;
    std::vector<wchar_t> texto(32'768); // with its variables' values in their place
    auto bytes = static_cast<DWORD>(texto.size() * sizeof(wchar_t));
    const LSTATUS lido = ::RegGetValueW(aberta, nullptr, nome, RRF_RT_REG_SZ, nullptr, texto.data(), &bytes);
    ::RegCloseKey(aberta);
    if (lido != ERROR_SUCCESS) return std::nullopt;
    return Texto(texto.data());
}

// A command line begins with its program, in quotes or up to the end of its name.
Texto programa_de(const Texto& comando) {
    if (comando.starts_with(L'"')) return comando.substr(1, comando.find(L'"', 1) - 1);
    for (std::size_t fim = comando.find(L' '); fim != Texto::npos; fim = comando.find(L' ', fim + 1))
        if (::SearchPathW(nullptr, comando.substr(0, fim).c_str(), L".exe", 0, nullptr, nullptr) != 0)
            return comando.substr(0, fim);
    return comando;
}

// The system looks for a name without a folder where it looks for any library.
bool existe(const Texto& ficheiro, const wchar_t* extensao) {
    return ::SearchPathW(nullptr, ficheiro.c_str(), extensao, 0, nullptr, nullptr) != 0;
}

std::string utf8(const Texto& texto) { return base::texto_de(std::filesystem::path(texto)); }

VistaDoRegisto le_vista(const Texto& classe, int bits) {
    const REGSAM vista = vista_de(bits);
    const Texto chave = L"CLSID\\" + classe;
    VistaDoRegisto lida{bits};
    const Texto biblioteca = valor(chave + L"\\InprocServer32", nullptr, vista).value_or(L"");
    const Texto executavel = programa_de(valor(chave + L"\\LocalServer32", nullptr, vista).value_or(L""));
    lida.biblioteca = utf8(biblioteca);
    lida.executavel = utf8(executavel);
    const auto aplicacao = valor(chave, L"AppID", vista);
    lida.substituto = aplicacao && valor(L"AppID\\" + *aplicacao, L"DllSurrogate", vista).has_value();
    if (!biblioteca.empty() && !existe(biblioteca, L".dll")) lida.em_falta = lida.biblioteca;
    if (biblioteca.empty() && !executavel.empty() && !existe(executavel, L".exe"))
        lida.em_falta = lida.executavel;
    return lida;
}

// A name stands for its number, which may also be given itself.
std::optional<Texto> classe_de(const Texto& componente) {
    if (componente.starts_with(L'{')) return componente;
    const Texto chave = componente + L"\\CLSID";
    const auto nesta = valor(chave, nullptr, vista_de(bits_do_programa));
    return nesta ? nesta : valor(chave, nullptr, vista_de(outros_bits));
}

} // namespace

std::optional<ClasseRegistada> classe_registada(const std::string& componente) {
    const auto classe = classe_de(base::caminho_de(componente).wstring());
    if (!classe) return std::nullopt;
    return ClasseRegistada{utf8(*classe),
                           {le_vista(*classe, bits_do_programa), le_vista(*classe, outros_bits)}};
}

} // namespace orvex::diagnostico
