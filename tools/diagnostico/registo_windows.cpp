#include "registo.h"

#include "base/caminho.h"
#include "platform/automacao/registo.h"

#include <array>

namespace orvex::diagnostico {
namespace {

using platform::automacao::numero_da_classe;
using platform::automacao::texto_das_classes;
using Texto = std::wstring;

constexpr int outros_bits = bits_do_programa == 64 ? 32 : 64;

// A command line begins with its program, in quotes or up to the end of its name.
Texto programa_de(const Texto& comando) {
    if (comando.starts_with(L'"')) return comando.substr(1, comando.find(L'"', 1) - 1);
    for (std::size_t fim = comando.find(L' '); fim != Texto::npos; fim = comando.find(L' ', fim + 1))
        if (::SearchPathW(nullptr, comando.substr(0, fim).c_str(), L".exe", 0, nullptr, nullptr) != 0)
            return comando.substr(0, fim);
    return comando;
}

// The system folder, as this program names the one that programs of that size see under the same name.
Texto pasta_do_sistema(int bits) {
    std::array<wchar_t, MAX_PATH> nome{};
    if (bits == bits_do_programa) {
        ::GetSystemDirectoryW(nome.data(), MAX_PATH);
    } else if (bits == 32) {
        ::GetSystemWow64DirectoryW(nome.data(), MAX_PATH);
    } else {
        ::GetSystemWindowsDirectoryW(nome.data(), MAX_PATH);
        return nome.data() + Texto(L"\\Sysnative");
    }
    return nome.data();
}

bool encontra(const wchar_t* pasta, const Texto& ficheiro, const wchar_t* extensao) {
    return ::SearchPathW(pasta, ficheiro.c_str(), extensao, 0, nullptr, nullptr) != 0;
}

// For programs of that size. The system looks for a name without a folder where it looks for any library.
bool existe(const Texto& ficheiro, const wchar_t* extensao, int bits) {
    const Texto nossa = pasta_do_sistema(bits_do_programa) + L'\\', deles = pasta_do_sistema(bits) + L'\\';
    if (ficheiro.find_first_of(L"\\/") == Texto::npos)
        return encontra(deles.c_str(), ficheiro, extensao) || encontra(nullptr, ficheiro, extensao);
    const auto n = static_cast<int>(nossa.size());
    const bool do_sistema = ::CompareStringOrdinal(ficheiro.substr(0, nossa.size()).c_str(), -1,
                                                   nossa.c_str(), n, TRUE) == CSTR_EQUAL;
    return encontra(nullptr, do_sistema ? deles + ficheiro.substr(nossa.size()) : ficheiro, extensao);
}

std::string utf8(const Texto& texto) { return base::texto_de(std::filesystem::path(texto)); }

VistaDoRegisto le_vista(const Texto& classe, int bits) {
    const auto valor = [bits](const Texto& chave, const wchar_t* nome = nullptr) {
        return texto_das_classes(chave, nome, bits);
    };
    const Texto chave = L"CLSID\\" + classe;
    VistaDoRegisto lida{bits};
    Texto biblioteca = valor(chave + L"\\InprocServer32").value_or(L"");
    if (biblioteca.starts_with(L'"')) biblioteca = programa_de(biblioteca);
    const Texto executavel = programa_de(valor(chave + L"\\LocalServer32").value_or(L""));
    lida.biblioteca = utf8(biblioteca);
    lida.executavel = utf8(executavel);
    const auto aplicacao = valor(chave, L"AppID");
    lida.substituto = aplicacao && valor(L"AppID\\" + *aplicacao, L"DllSurrogate");
    if (!biblioteca.empty() && !existe(biblioteca, L".dll", bits)) lida.em_falta = lida.biblioteca;
    // Whichever view it is in, the system starts it.
    if (biblioteca.empty() && !executavel.empty() && !existe(executavel, L".exe", bits_do_programa) &&
        !existe(executavel, L".exe", outros_bits))
        lida.em_falta = lida.executavel;
    return lida;
}

} // namespace

std::optional<ClasseRegistada> classe_registada(const std::string& componente) {
    const Texto nome = base::caminho_de(componente).wstring();
    auto classe = numero_da_classe(nome, bits_do_programa);
    if (!classe) classe = numero_da_classe(nome, outros_bits);
    if (!classe) return std::nullopt;
    return ClasseRegistada{utf8(*classe),
                           {le_vista(*classe, bits_do_programa), le_vista(*classe, outros_bits)}};
}

} // namespace orvex::diagnostico
