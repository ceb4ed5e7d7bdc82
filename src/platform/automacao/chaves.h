// Keys of ERP documents as components give and take them.
#pragma once

#include "platform/automacao/valores.h"

namespace orvex::platform::automacao {

// Reads a member of an object of the component's.
using LeMembro = std::function<base::Variante(const Referencia<IDispatch>& objecto, const char* membro)>;

// What a component left for a key: an object or a record with the members Ano, TipoDocumento, Serie and
// NossoNoDocumento, a list of the four in this order, or one of five whose first is Empty. Numbers may be of
// any type that holds a whole number, texts of digits too. Nothing, Empty, Null and a list of nothing but
// these are no document's key: all its members are 0 or empty. Anything else throws Falha.
startup::ChaveDocumento chave_de(const VARIANT& valor, const LeMembro& le_membro);

// As the session's operations take it: a list of Variants with the bounds 0 to 4, position 0 Empty.
Valor lista_da_chave(const startup::ChaveDocumento& chave);

// The whole number that is there, if it fits; Falha otherwise.
std::int64_t inteiro_em(const base::Variante& valor, VARTYPE tipo);

} // namespace orvex::platform::automacao
