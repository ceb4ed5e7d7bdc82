// The component that ends in mid-call, as its own program and the test of it know it.
#pragma once

#include "tools/componente/classe.h"

namespace orvex::testes {

// A class of its own for each process: Wine sends the next client to the one that died.
inline componente::Classe classe_que_morre(const CLSID& numero) {
    return {numero, L"Orvex.SessaoERP.QueMorre", L"ORVEX: componente que acaba a meio"};
}

// While it is set, the first operation that creates or cancels a document ends the process: "antes" of it is
// done, or "depois", as its command line says before the class.
inline constexpr const wchar_t* sinal_para_morrer = L"Local\\orvex-componente-morre";

} // namespace orvex::testes
