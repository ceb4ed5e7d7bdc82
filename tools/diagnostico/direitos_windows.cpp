#include "direitos.h"

#include <windows.h>
// What it declares stands on the system's types.
#include <aclapi.h>

#include <algorithm>
#include <iterator>
#include <memory>

namespace orvex::diagnostico {
namespace {

constexpr DWORD para_ler = FILE_READ_DATA | GENERIC_READ | GENERIC_ALL;
constexpr DWORD para_mudar =
    FILE_WRITE_DATA | FILE_APPEND_DATA | DELETE | WRITE_DAC | WRITE_OWNER | GENERIC_WRITE | GENERIC_ALL;

bool de_todos(void* grupo) {
    constexpr WELL_KNOWN_SID_TYPE todos[] = {WinWorldSid, WinAuthenticatedUserSid, WinInteractiveSid,
                                             WinBuiltinUsersSid, WinAccountDomainUsersSid};
    return std::any_of(std::begin(todos), std::end(todos),
                       [grupo](WELL_KNOWN_SID_TYPE este) { return ::IsWellKnownSid(grupo, este) != FALSE; });
}

} // namespace

std::optional<DireitosDeTodos> direitos_de_todos(const std::filesystem::path& ficheiro) {
    ACL* lista = nullptr;
    void* descritor = nullptr;
    if (::GetNamedSecurityInfoW(ficheiro.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr,
                                &lista, nullptr, &descritor) != ERROR_SUCCESS)
        return std::nullopt;
    const std::unique_ptr<void, decltype(&::LocalFree)> guarda(descritor, &::LocalFree);
    if (lista == nullptr) return DireitosDeTodos{true, true}; // nothing is kept from anybody
    DWORD dados = 0, negados = 0;
    for (DWORD i = 0; i < lista->AceCount; ++i) { // the first that says something of a right counts
        void* entrada = nullptr;
        if (::GetAce(lista, i, &entrada) == FALSE) continue;
        auto& esta = *static_cast<ACCESS_ALLOWED_ACE*>(entrada); // one that denies is laid out alike
        const bool da = esta.Header.AceType == ACCESS_ALLOWED_ACE_TYPE;
        if ((!da && esta.Header.AceType != ACCESS_DENIED_ACE_TYPE) ||
            (esta.Header.AceFlags & INHERIT_ONLY_ACE) != 0 || !de_todos(&esta.SidStart))
            continue;
        if (da)
            dados |= esta.Mask & ~negados;
        else
            negados |= esta.Mask & ~dados;
    }
    return DireitosDeTodos{(dados & para_ler) != 0, (dados & para_mudar) != 0};
}

} // namespace orvex::diagnostico
