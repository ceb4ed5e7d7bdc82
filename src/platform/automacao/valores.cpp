#include "platform/automacao/valores.h"

#include "base/falha.h"
#include "platform/automacao/datas.h"

#include <cmath>
#include <cstdio>
#include <limits>

namespace orvex::platform::automacao {
namespace {

using base::Falha;
using base::Moeda;
using base::Variante;
using startup::ReferenciaERP;
using startup::ValorERP;

[[noreturn]] void de_outro_tipo(const std::string& texto) {
    throw Falha(texto, base::numeros_falha::tipo_diferente);
}

[[noreturn]] void excessivo(const std::string& numero) {
    throw Falha("«" + numero + "» é um número demasiado grande.", base::numeros_falha::valor_excessivo);
}

[[noreturn]] void desconhecido(VARTYPE tipo) {
    char numero[8];
    std::snprintf(numero, sizeof numero, "0x%04X", tipo);
    if ((tipo & VT_ARRAY) != 0) de_outro_tipo("Veio uma lista onde se esperava um valor.");
    if (tipo == VT_DISPATCH || tipo == VT_UNKNOWN)
        de_outro_tipo("Veio um objecto onde se esperava um valor.");
    de_outro_tipo(std::string("Veio um valor de um tipo que não se conhece (") + numero + ").");
}

struct ParaVariant {
    VARTYPE inteiro;
    VARIANT& v;

    void operator()(std::monostate) const { v.vt = VT_NULL; }
    void operator()(bool valor) const {
        v.vt = VT_BOOL;
        v.boolVal = valor ? VARIANT_TRUE : VARIANT_FALSE;
    }
    void operator()(std::int64_t valor) const {
        v.vt = inteiro;
        if (inteiro == VT_I2)
            v.iVal = cabe<SHORT>(valor);
        else
            v.lVal = cabe<LONG>(valor);
    }
    void operator()(double valor) const {
        v.vt = VT_R8;
        v.dblVal = valor;
    }
    void operator()(Moeda valor) const {
        v.vt = VT_CY;
        v.cyVal.int64 = valor.decimos_milesimos();
    }
    void operator()(const base::DataHora& valor) const {
        v.date = data_da_automacao(valor);
        v.vt = VT_DATE;
    }
    void operator()(const std::string& valor) const {
        v.bstrVal = Texto(valor).larga();
        v.vt = VT_BSTR;
    }

    template <typename Inteiro>
    static Inteiro cabe(std::int64_t valor) {
        if (valor < std::numeric_limits<Inteiro>::min() || valor > std::numeric_limits<Inteiro>::max())
            excessivo(std::to_string(valor));
        return static_cast<Inteiro>(valor);
    }
};

// Through its plain text, which has all its digits.
Moeda moeda_do_decimal(const DECIMAL& decimal) {
    DECIMAL copia = decimal;
    Texto texto;
    const HRESULT feito =
        ::VarBstrFromDec(&copia, LOCALE_INVARIANT, LOCALE_NOUSEROVERRIDE, texto.para_receber());
    const auto lido = falhou(feito) ? std::nullopt : Moeda::le(texto.utf8());
    if (!lido) excessivo(texto.utf8());
    return *lido;
}

Variante simples_de(const VARIANT& v) {
    switch (v.vt) {
    case VT_EMPTY:
    case VT_NULL:
        return {};
    case VT_BOOL:
        return v.boolVal != VARIANT_FALSE;
    case VT_I1:
        return static_cast<signed char>(v.cVal);
    case VT_UI1:
        return v.bVal;
    case VT_I2:
        return v.iVal;
    case VT_UI2:
        return v.uiVal;
    case VT_I4:
    case VT_INT:
        return v.lVal;
    case VT_UI4:
    case VT_UINT:
        return v.ulVal;
    case VT_I8:
        return v.llVal;
    case VT_UI8:
        if (v.ullVal > static_cast<ULONGLONG>(std::numeric_limits<std::int64_t>::max()))
            excessivo(std::to_string(v.ullVal));
        return v.ullVal;
    case VT_R4:
        return static_cast<double>(v.fltVal);
    case VT_R8:
        return v.dblVal;
    case VT_CY:
        return Moeda::de_decimos_milesimos(v.cyVal.int64);
    case VT_DECIMAL:
        return moeda_do_decimal(v.decVal);
    case VT_DATE:
        return variante_da_data(v.date);
    case VT_BSTR:
        return utf8_de({v.bstrVal, ::SysStringLen(v.bstrVal)});
    case VT_ERROR:
        if (v.scode == DISP_E_PARAMNOTFOUND) return {};
        break;
    case VT_DISPATCH:
    case VT_UNKNOWN:
        if (v.punkVal == nullptr) return {};
        break;
    default:
        break;
    }
    desconhecido(v.vt);
}

} // namespace

Valor variant_de(const Variante& valor, VARTYPE inteiro) {
    Valor resultado;
    std::visit(ParaVariant{inteiro, resultado.variant()}, valor.valor());
    return resultado;
}

Variante variante_de(const VARIANT& valor) {
    return (valor.vt & VT_BYREF) != 0 ? simples_de(sem_referencia(valor).variant()) : simples_de(valor);
}

Valor variant_do_objecto(const Referencia<IDispatch>& objecto) {
    Valor resultado;
    resultado.variant().vt = VT_DISPATCH;
    resultado.variant().pdispVal = Referencia<IDispatch>(objecto).Detach();
    return resultado;
}

Referencia<IDispatch> objecto_em(const VARIANT& valor) {
    const Valor directo = sem_referencia(valor);
    const VARIANT& v = directo.variant();
    Referencia<IDispatch> objecto;
    if (v.vt == VT_EMPTY || v.vt == VT_NULL) return objecto;
    if (v.vt != VT_DISPATCH && v.vt != VT_UNKNOWN)
        de_outro_tipo("Veio «" + simples_de(v).texto() + "» onde se esperava um objecto.");
    if (v.punkVal != nullptr && falhou(v.punkVal->QueryInterface(IID_PPV_ARGS(objecto.GetAddressOf()))))
        de_outro_tipo("Veio um objecto que não se deixa automatizar.");
    return objecto;
}

Valor variant_de(const ValorERP& valor, VARTYPE inteiro, const DespachoDe& despacho_de) {
    if (!valor.objecto) return variant_de(valor.valor, inteiro);
    return variant_do_objecto(despacho_de(valor.objecto));
}

ValorERP valor_erp_de(const VARIANT& valor, const ObjectoDe& objecto_de) {
    const Valor directo = sem_referencia(valor);
    const bool objecto = directo.tipo() == VT_DISPATCH || directo.tipo() == VT_UNKNOWN;
    if (!objecto || directo.variant().punkVal == nullptr) return simples_de(directo.variant());
    return objecto_de(objecto_em(directo.variant()));
}

Valor sem_referencia(const VARIANT& valor) {
    VARIANT de = valor;
    Valor directo;
    HRESULT feito = ::VariantCopyInd(&directo.variant(), &de);
    // What is pointed at may itself point on; a chain longer than this leads nowhere.
    for (int i = 0; !falhou(feito) && (directo.tipo() & VT_BYREF) != 0 && i < 4; ++i) {
        Valor passo = std::move(directo);
        feito = ::VariantCopyInd(&directo.variant(), &passo.variant());
    }
    if (falhou(feito) || (directo.tipo() & VT_BYREF) != 0) desconhecido(valor.vt);
    return directo;
}

} // namespace orvex::platform::automacao
