#include "platform/qt/consulta/coluna_guardada.h"

#include <limits>
#include <optional>

namespace orvex::platform::qt::consulta {
namespace {

using base::DataHora;
using base::Moeda;
using base::Variante;
using livro::consultas::Tipo;

// The last ones in ascending order.
constexpr std::int64_t nenhum = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t estranho = nenhum - 1;

// Parts side by side, the larger ones first, each with room for what a clock can show.
std::int64_t como_numero(const DataHora& data) {
    std::int64_t numero = data.ano;
    for (const int parte : {data.mes, data.dia, data.hora, data.minuto, data.segundo})
        numero = numero * 64 + parte;
    return numero;
}

DataHora como_data(std::int64_t numero) {
    DataHora data;
    for (int* parte : {&data.segundo, &data.minuto, &data.hora, &data.dia, &data.mes}) {
        *parte = static_cast<int>(numero % 64);
        numero /= 64;
    }
    data.ano = static_cast<int>(numero);
    return data;
}

std::optional<std::int64_t> como_numero(Tipo tipo, const Variante& valor) {
    if (tipo == Tipo::data)
        if (const auto* data = std::get_if<DataHora>(&valor.valor())) return como_numero(*data);
    if (tipo == Tipo::peso)
        if (const auto* peso = std::get_if<Moeda>(&valor.valor())) return peso->decimos_milesimos();
    if (tipo == Tipo::inteiro)
        if (const auto* inteiro = std::get_if<std::int64_t>(&valor.valor())) return *inteiro;
    return {};
}

Variante como_valor(Tipo tipo, std::int64_t numero) {
    if (tipo == Tipo::data) return como_data(numero);
    if (tipo == Tipo::peso) return Moeda::de_decimos_milesimos(numero);
    return numero;
}

} // namespace

void ColunaGuardada::junta(const Variante& valor) {
    const int linha = static_cast<int>(de_texto() ? fins_.size() : numeros_.size());
    com_algo_ = com_algo_ || !valor.vazio();
    if (de_texto()) {
        if (const auto* texto = std::get_if<std::string>(&valor.valor()))
            textos_ += *texto;
        else if (!valor.nulo())
            estranhos_[linha] = valor;
        fins_.push_back(textos_.size());
        return;
    }
    const std::optional<std::int64_t> numero = como_numero(tipo_, valor);
    if (!numero && !valor.vazio()) estranhos_[linha] = valor;
    numeros_.push_back(numero ? *numero : valor.vazio() ? nenhum : estranho);
}

Variante ColunaGuardada::valor(int linha) const {
    const auto i = static_cast<std::size_t>(linha);
    if (!estranhos_.empty())
        if (const auto este = estranhos_.find(linha); este != estranhos_.end()) return este->second;
    if (!de_texto()) return numeros_[i] == nenhum ? Variante() : como_valor(tipo_, numeros_[i]);
    const std::size_t inicio = i == 0 ? 0 : fins_[i - 1];
    if (inicio == fins_[i]) return {};
    return std::string_view(textos_).substr(inicio, fins_[i] - inicio);
}

bool ColunaGuardada::nulo(int linha) const {
    const auto i = static_cast<std::size_t>(linha);
    if (!de_texto()) return numeros_[i] == nenhum;
    return fins_[i] == (i == 0 ? 0 : fins_[i - 1]) && !estranhos_.contains(linha);
}

std::function<bool(int, int)> ColunaGuardada::menor(bool ascendente) {
    if (!de_texto())
        return [this, ascendente](int a, int b) {
            const std::int64_t primeiro = numeros_[static_cast<std::size_t>(a)];
            const std::int64_t segundo = numeros_[static_cast<std::size_t>(b)];
            if (ascendente || primeiro >= estranho || segundo >= estranho) return primeiro < segundo;
            return segundo < primeiro;
        };
    for (int linha = static_cast<int>(das_linhas_.size()); linha < static_cast<int>(fins_.size()); ++linha)
        das_linhas_.push_back(nulo(linha) ? -1 : chave_de(valor(linha)));
    return [this, ascendente](int a, int b) {
        const int da_a = das_linhas_[static_cast<std::size_t>(a)];
        const int da_b = das_linhas_[static_cast<std::size_t>(b)];
        if (da_a == da_b) return false;
        if (da_a < 0 || da_b < 0) return da_b < 0;
        const auto& primeira = chaves_[static_cast<std::size_t>(ascendente ? da_a : da_b)];
        const auto& segunda = chaves_[static_cast<std::size_t>(ascendente ? da_b : da_a)];
        return primeira < segunda;
    };
}

// Names repeat; where nearly every row has a text of its own, looking for it would be in vain.
int ColunaGuardada::chave_de(const Variante& valor) {
    constexpr std::size_t a_procurar = 1 << 16;
    const int nova = static_cast<int>(chaves_.size());
    const auto* texto = std::get_if<std::string>(&valor.valor());
    if (texto != nullptr && repetidas_.size() < a_procurar) {
        const auto [onde, primeira] = repetidas_.try_emplace(*texto, nova);
        if (!primeira) return onde->second;
    }
    chaves_.emplace_back(valor);
    return nova;
}

void ColunaGuardada::esquece_ordem() {
    chaves_ = {};
    das_linhas_ = {};
    repetidas_ = {};
}

} // namespace orvex::platform::qt::consulta
