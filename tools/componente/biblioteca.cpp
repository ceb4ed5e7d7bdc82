// The component in the process of whoever uses it: what the system asks such a library for.
#include "base/falha.h"
#include "tools/componente/classe.h"

#include <olectl.h>

namespace {

using namespace orvex::componente;

HINSTANCE propria = nullptr;

std::wstring ficheiro_proprio() {
    std::wstring nome(32768, L'\0'); // the longest that the system has
    nome.resize(::GetModuleFileNameW(propria, nome.data(), static_cast<DWORD>(nome.size())));
    return nome;
}

template <typename Accao>
HRESULT feito(Accao accao) {
    try {
        accao();
        return S_OK;
    } catch (...) {
        return SELFREG_E_CLASS;
    }
}

} // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE esta, DWORD, void*) {
    propria = esta;
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID classe, REFIID qual, void** objecto) {
    if (objecto == nullptr) return E_POINTER;
    *objecto = nullptr;
    if (classe != classe_da_emulacao.numero) return CLASS_E_CLASSNOTAVAILABLE;
    return sem_lancar(
        [&] { return fabrica(sessoes_da_emulacao(), Modo::biblioteca)->QueryInterface(qual, objecto); });
}

STDAPI DllCanUnloadNow() { return Vida::usada() ? S_FALSE : S_OK; }

STDAPI DllRegisterServer() {
    return feito([] { regista(classe_da_emulacao, Modo::biblioteca, ficheiro_proprio()); });
}

STDAPI DllUnregisterServer() {
    return feito([] { retira(classe_da_emulacao, Modo::biblioteca); });
}
