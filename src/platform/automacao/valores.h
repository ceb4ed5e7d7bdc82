// Values between the program and the automation, both ways: what a client sends and a component reads, and
// the other way round. Nothing is rounded or cut on the way; what the other side cannot hold throws Falha.
//
//     program            goes as         comes from
//     null               Null            Null, Empty, an argument that was left out, Nothing
//     flag               Boolean         Boolean
//     integer            I2 or I4        I1, I2, I4, I8, INT and their unsigned ones
//     double             R8              R8, R4
//     Moeda              Currency        Currency, Decimal (rounded to four decimals)
//     DataHora           Date            Date
//     text               BSTR            BSTR; Date without a day, as "hh:mm:ss"
//
// A value that comes by reference is looked through.
#pragma once

#include "base/variante.h"
#include "platform/automacao/com.h"
#include "startup/sessao_erp.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orvex::platform::automacao {

// `inteiro` is the type that an integer goes as: VT_I2 or VT_I4.
Valor variant_de(const base::Variante& valor, VARTYPE inteiro = VT_I4);
base::Variante variante_de(const VARIANT& valor);

// An object on its way out, and on its way in.
using DespachoDe = std::function<Referencia<IDispatch>(const startup::ReferenciaERP&)>;
using ObjectoDe = std::function<startup::ReferenciaERP(const Referencia<IDispatch>&)>;

Valor variant_de(const startup::ValorERP& valor, VARTYPE inteiro, const DespachoDe& despacho_de);
startup::ValorERP valor_erp_de(const VARIANT& valor, const ObjectoDe& objecto_de);
Valor variant_do_objecto(const Referencia<IDispatch>& objecto); // Nothing, of none
// None of Nothing, Empty and Null; Falha of a plain value.
Referencia<IDispatch> objecto_em(const VARIANT& valor);

// Lists of one dimension, whatever their lower bound.
Valor lista_de_textos(const std::vector<std::string>& textos); // bounds 0..n-1, as all three
Valor lista_de_reais(const std::vector<double>& reais);
Valor lista_de_variants(std::vector<Valor> valores);
std::optional<std::vector<Valor>> elementos_da_lista(const VARIANT& valor); // none when it is no such list

// What an argument by reference points at.
VARIANT referencia_a(VARIANT& valor);              // to any value
VARIANT referencia_ao_conteudo(VARIANT& valor);    // to one of the very type that it has now
bool por_referencia(const VARIANT& argumento);     // a value can be left there
void deixa(const VARIANT& argumento, Valor valor); // converted to the type that is pointed at
Valor sem_referencia(const VARIANT& valor);        // a copy of what is there

} // namespace orvex::platform::automacao
