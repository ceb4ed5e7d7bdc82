#include "platform/automacao/chaves.h"

#include "base/falha.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace orvex::platform::automacao {
namespace {

using base::Falha;
using base::Variante;
using startup::ChaveDocumento;

constexpr std::array<const char*, 4> membros_da_chave{"Ano", "TipoDocumento", "Serie", "NossoNoDocumento"};
using Partes = std::array<Variante, 4>;

// What is whole is turned into a number exactly; a date, a flag or nothing never is one.
bool e_numero(const Variante& valor) {
    if (const auto* real = std::get_if<double>(&valor.valor())) return std::trunc(*real) == *real;
    if (const auto* moeda = std::get_if<base::Moeda>(&valor.valor())) return moeda->arredondada(0) == *moeda;
    return std::holds_alternative<std::int64_t>(valor.valor()) ||
           std::holds_alternative<std::string>(valor.valor());
}

Partes partes_do_registo(const VARIANT& valor) {
    Partes partes;
    for (std::size_t i = 0; i < partes.size(); ++i) {
        Valor campo;
        if (valor.pRecInfo == nullptr || valor.pvRecord == nullptr ||
            falhou(valor.pRecInfo->GetField(valor.pvRecord, utf16_de(membros_da_chave[i]).c_str(),
                                            &campo.variant())))
            throw Falha(std::string("O registo da chave não tem o campo ") + membros_da_chave[i] + ".");
        partes[i] = variante_de(campo.variant());
    }
    return partes;
}

Partes partes_da_lista(const std::vector<Valor>& elementos) {
    const bool com_posicao_0 = elementos.size() == 5 && variante_de(elementos[0].variant()).nulo();
    if (elementos.size() != 4 && !com_posicao_0)
        throw Falha("A lista da chave tem " + std::to_string(elementos.size()) +
                    " elementos; esperavam-se quatro, ou cinco com o primeiro vazio.");
    Partes partes;
    for (std::size_t i = 0; i < partes.size(); ++i)
        partes[i] = variante_de(elementos[i + (com_posicao_0 ? 1 : 0)].variant());
    return partes;
}

Partes partes_de(const VARIANT& valor, const LeMembro& le_membro) {
    if ((valor.vt & ~VT_BYREF) == VT_RECORD) return partes_do_registo(valor); // laid out alike
    if (valor.vt == (VT_BYREF | VT_VARIANT)) return partes_de(*valor.pvarVal, le_membro);
    if (const auto elementos = elementos_da_lista(valor)) return partes_da_lista(*elementos);
    const Referencia<IDispatch> objecto = objecto_em(valor);
    Partes partes;
    for (std::size_t i = 0; objecto && i < partes.size(); ++i)
        partes[i] = le_membro(objecto, membros_da_chave[i]);
    return partes;
}

} // namespace

std::int64_t inteiro_em(const Variante& valor, VARTYPE tipo) {
    const std::string texto = valor.nulo() ? "nulo" : valor.texto();
    if (!e_numero(valor))
        throw Falha("«" + texto + "» não é um número inteiro.", base::numeros_falha::tipo_diferente);
    const std::int64_t numero = valor.inteiro();
    const bool cabe = tipo == VT_I2 ? numero == static_cast<std::int16_t>(numero)
                                    : numero == static_cast<std::int32_t>(numero);
    if (!cabe)
        throw Falha("«" + texto + "» é um número demasiado grande.", base::numeros_falha::valor_excessivo);
    return numero;
}

ChaveDocumento chave_de(const VARIANT& valor, const LeMembro& le_membro) {
    const Partes partes = partes_de(valor, le_membro);
    if (std::all_of(partes.begin(), partes.end(), [](const Variante& parte) { return parte.nulo(); }))
        return {};
    const auto numero = [&](std::size_t i, VARTYPE tipo) {
        try {
            return inteiro_em(partes[i], tipo);
        } catch (const Falha& falha) {
            throw Falha(std::string(membros_da_chave[i]) + ": " + falha.what(), falha.numero());
        }
    };
    return {static_cast<std::int16_t>(numero(0, VT_I2)), partes[1].texto(),
            static_cast<std::int16_t>(numero(2, VT_I2)), static_cast<std::int32_t>(numero(3, VT_I4))};
}

Valor lista_da_chave(const ChaveDocumento& chave) {
    std::vector<Valor> partes(5);
    partes[1] = variant_de(chave.Ano, VT_I2);
    partes[2] = variant_de(chave.TipoDocumento);
    partes[3] = variant_de(chave.Serie, VT_I2);
    partes[4] = variant_de(chave.NossoNoDocumento, VT_I4);
    return lista_de_variants(std::move(partes));
}

} // namespace orvex::platform::automacao
