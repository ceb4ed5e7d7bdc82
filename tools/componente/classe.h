// The class of the session component: what the system finds it by, and what makes its sessions.
#pragma once

#include "tools/componente/despacho.h"

#include <functional>
#include <memory>
#include <string>

namespace orvex::componente {

struct Classe {
    CLSID numero;
    std::wstring nome;      // its ProgID
    std::wstring descricao; // what tools that list classes show
};

// Orvex.SessaoERP, with the emulation of the embedded company behind it.
extern const Classe classe_da_emulacao;

std::wstring texto_do_numero(const CLSID& numero); // in braces

using FazSessao = std::function<Referencia<IDispatch>()>;

FazSessao sessoes_da_emulacao();

// How a class is reached: by a program of its own, or in the process of whoever uses it.
enum class Modo { programa, biblioteca };

// That of a library keeps the component as an object does; that of a program is there as long as it serves.
Referencia<IClassFactory> fabrica(FazSessao faz, Modo modo);

// For all users of the machine, below HKLM\Software\Classes. `ficheiro` is the command or the library. Throw
// Falha with the system's text; taking away what is not there is no failure. The name stays while the other
// way is registered.
void regista(const Classe& classe, Modo modo, const std::wstring& ficheiro);
void retira(const Classe& classe, Modo modo);

} // namespace orvex::componente
