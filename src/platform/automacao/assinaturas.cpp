#include "platform/automacao/assinaturas.h"

#include "base/falha.h"
#include "base/texto.h"
#include "platform/automacao/chaves.h"

#include <algorithm>

namespace orvex::platform::automacao {
namespace {

using enum TipoMembro;

constexpr Argumento argumentos_ler[] = {
    {inteiro_16, true}, {inteiro_16, true}, {inteiro_32, true}, {texto, true}};
constexpr Argumento argumentos_finalizar[] = {{inteiro_32}, {inteiro_16}, {texto, true}, {inteiro_16, true}};

constexpr Assinatura assinaturas[] = {
    // a commercial document
    {"Cab", objecto},
    {"Linhas", objecto},
    {"Origem", inteiro_16},
    {"Ler", inteiro_32, argumentos_ler},
    {"Finalizar", inteiro_32, argumentos_finalizar},
    {"Validar", por_ler},
    {"SugereValoresLin", por_ler},
    {"AdicionaLinha", por_ler},
    // its header
    {"Ano", inteiro_16},
    {"Serie", inteiro_16},
    {"NossoNoDocumento", inteiro_32},
    {"AreaGestao", inteiro_16},
    {"TipoTerceiro", inteiro_16},
    {"TipoPreco", inteiro_16},
    {"NumeroViasemitidas", inteiro_16},
    {"convertido", inteiro_16},
    // its lines, and one of them
    {"Count", inteiro_32},
    {"Item", objecto},
    {"NumeroDaLinha", inteiro_16},
    {"TipoDeLinha", inteiro_16},
    {"Quantidade", decimal},
    {"QuantidadeOrigem", decimal},
};

constexpr VARTYPE largura(TipoMembro tipo) { return tipo == inteiro_16 ? VT_I2 : VT_I4; }

} // namespace

const Assinatura& assinatura_de(std::string_view membro) {
    static constexpr Assinatura desconhecida{};
    const auto* const esta =
        std::find_if(std::begin(assinaturas), std::end(assinaturas),
                     [&](const Assinatura& uma) { return base::mesmo_nome(uma.nome, membro); });
    return esta == std::end(assinaturas) ? desconhecida : *esta;
}

Valor posto(TipoMembro tipo, const base::Variante& valor) {
    if (tipo == texto) return variant_de(valor.texto());
    if (tipo == decimal && !valor.nulo()) return variant_de(valor.moeda());
    return variant_de(valor, largura(tipo));
}

base::Variante lido(TipoMembro tipo, const base::Variante& valor) {
    switch (tipo) {
    case inteiro_16:
    case inteiro_32:
        if (const bool* flag = std::get_if<bool>(&valor.valor())) return *flag ? base::verdadeiro : 0;
        return inteiro_em(valor, largura(tipo));
    case decimal:
        return valor.nulo() ? valor : valor.moeda();
    case qualquer:
    case texto:
    case objecto:
    case por_ler:
        break;
    }
    return valor;
}

} // namespace orvex::platform::automacao
