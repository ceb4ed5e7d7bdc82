// Lists and arguments by reference.
#include "platform/automacao/valores.h"

#include "base/falha.h"

#include <cstring>
#include <new>

namespace orvex::platform::automacao {
namespace {

// A new list of so many elements, which `enche` fills in place.
template <typename Elemento, typename Enche>
Valor nova_lista(VARTYPE tipo, std::size_t quantos, Enche enche) {
    Valor resultado;
    resultado.variant().parray = ::SafeArrayCreateVector(tipo, 0, static_cast<ULONG>(quantos));
    if (resultado.variant().parray == nullptr) throw std::bad_alloc();
    resultado.variant().vt = static_cast<VARTYPE>(VT_ARRAY | tipo);
    void* dados = nullptr;
    if (falhou(::SafeArrayAccessData(resultado.variant().parray, &dados))) throw std::bad_alloc();
    for (std::size_t i = 0; i < quantos; ++i)
        enche(static_cast<Elemento*>(dados)[i], i);
    ::SafeArrayUnaccessData(resultado.variant().parray);
    return resultado;
}

Valor elemento(SAFEARRAY* lista, VARTYPE tipo, LONG posicao) {
    Valor resultado;
    VARIANT& v = resultado.variant();
    DECIMAL decimal{};
    void* para = &v.bVal;
    if (tipo == VT_VARIANT) para = &v;
    if (tipo == VT_DECIMAL) para = &decimal; // it lies over the type of the value it is put in
    if (falhou(::SafeArrayGetElement(lista, &posicao, para)))
        throw base::Falha("Não foi possível ler um elemento da lista.");
    if (tipo == VT_DECIMAL) v.decVal = decimal;
    if (tipo != VT_VARIANT) v.vt = tipo;
    return resultado;
}

std::size_t tamanho_de(VARTYPE tipo) {
    switch (tipo) {
    case VT_I1:
    case VT_UI1:
        return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
        return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
        return 8;
    default:
        return 0;
    }
}

} // namespace

Valor lista_de_textos(const std::vector<std::string>& textos) {
    return nova_lista<BSTR>(VT_BSTR, textos.size(),
                            [&](BSTR& posto, std::size_t i) { posto = Texto(textos[i]).larga(); });
}

Valor lista_de_reais(const std::vector<double>& reais) {
    return nova_lista<double>(VT_R8, reais.size(), [&](double& posto, std::size_t i) { posto = reais[i]; });
}

Valor lista_de_variants(std::vector<Valor> valores) {
    return nova_lista<VARIANT>(VT_VARIANT, valores.size(),
                               [&](VARIANT& posto, std::size_t i) { posto = valores[i].larga(); });
}

std::optional<std::vector<Valor>> elementos_da_lista(const VARIANT& valor) {
    const Valor directo = sem_referencia(valor);
    SAFEARRAY* lista = directo.variant().parray;
    if ((directo.tipo() & VT_ARRAY) == 0 || lista == nullptr || ::SafeArrayGetDim(lista) != 1)
        return std::nullopt;
    VARTYPE tipo = VT_EMPTY;
    if (falhou(::SafeArrayGetVartype(lista, &tipo))) tipo = directo.tipo() & VT_TYPEMASK;
    LONG primeiro = 0, ultimo = 0;
    if (tipo == VT_RECORD || falhou(::SafeArrayGetLBound(lista, 1, &primeiro)) ||
        falhou(::SafeArrayGetUBound(lista, 1, &ultimo)))
        return std::nullopt;
    std::vector<Valor> elementos;
    for (LONG i = primeiro; i <= ultimo; ++i)
        elementos.push_back(elemento(lista, tipo, i));
    return elementos;
}

VARIANT referencia_a(VARIANT& valor) {
    VARIANT referencia{};
    referencia.vt = VT_BYREF | VT_VARIANT;
    referencia.pvarVal = &valor;
    return referencia;
}

VARIANT referencia_ao_conteudo(VARIANT& valor) {
    VARIANT referencia{};
    referencia.vt = static_cast<VARTYPE>(VT_BYREF | valor.vt);
    referencia.byref = &valor.bVal;
    return referencia;
}

bool por_referencia(const VARIANT& argumento) {
    return (argumento.vt & VT_BYREF) != 0 && argumento.byref != nullptr;
}

void deixa(const VARIANT& argumento, Valor valor) {
    if (!por_referencia(argumento)) throw base::Falha("O argumento não é por referência.");
    const auto tipo = static_cast<VARTYPE>(argumento.vt & ~VT_BYREF);
    if (tipo == VT_VARIANT) {
        ::VariantClear(argumento.pvarVal);
        *argumento.pvarVal = valor.larga();
        return;
    }
    const std::size_t tamanho = tamanho_de(tipo);
    if ((tipo != VT_BSTR && tamanho == 0) ||
        falhou(::VariantChangeTypeEx(&valor.variant(), &valor.variant(), LOCALE_INVARIANT, 0, tipo)))
        throw base::Falha("O argumento por referência não aceita o valor.",
                          base::numeros_falha::tipo_diferente);
    if (tipo == VT_BSTR) {
        ::SysFreeString(*argumento.pbstrVal);
        *argumento.pbstrVal = valor.larga().bstrVal;
    } else {
        std::memcpy(argumento.byref, &valor.variant().bVal, tamanho);
    }
}

} // namespace orvex::platform::automacao
