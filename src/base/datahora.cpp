#include "base/datahora.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <ctime>

namespace orvex::base {
namespace {

template <typename... Partes>
std::string formata(const char* mascara, Partes... partes) {
    std::array<char, 80> texto{};
    std::snprintf(texto.data(), texto.size(), mascara, partes...);
    return texto.data();
}

// Takes the leading whole number off the text.
std::optional<int> retira_numero(std::string_view& texto) {
    int numero = 0;
    const auto [fim, erro] = std::from_chars(texto.data(), texto.data() + texto.size(), numero);
    if (erro != std::errc() || numero < 0) return std::nullopt;
    texto.remove_prefix(static_cast<std::size_t>(fim - texto.data()));
    return numero;
}

bool retira_sinal(std::string_view& texto, std::string_view aceites) {
    if (texto.empty() || aceites.find(texto.front()) == std::string_view::npos) return false;
    texto.remove_prefix(1);
    return true;
}

} // namespace

DataHora DataHora::agora() {
    const std::time_t instante = std::time(nullptr);
    const std::tm local = *std::localtime(&instante);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

bool DataHora::valida() const {
    const std::chrono::year_month_day data{std::chrono::year(ano),
                                           std::chrono::month(static_cast<unsigned>(mes)),
                                           std::chrono::day(static_cast<unsigned>(dia))};
    return ano >= 1 && ano <= 9999 && data.ok() && hora >= 0 && hora < 24 && minuto >= 0 && minuto < 60 &&
           segundo >= 0 && segundo < 60;
}

std::string DataHora::data() const { return formata("%02d-%02d-%04d", dia, mes, ano); }
std::string DataHora::data_iso() const { return formata("%04d-%02d-%02d", ano, mes, dia); }
std::string DataHora::data_hora_iso() const { return data_iso() + " " + so_hora(); }
std::string DataHora::data_hora() const { return data() + formata(" %02d:%02d", hora, minuto); }
std::string DataHora::so_hora() const { return formata("%02d:%02d:%02d", hora, minuto, segundo); }

std::optional<DataHora> DataHora::le(std::string_view texto) {
    const std::size_t primeiro = texto.find_first_of("-/");
    const bool ano_a_frente = primeiro == 4;
    const auto a = retira_numero(texto);
    if (!a || !retira_sinal(texto, "-/")) return std::nullopt;
    const auto b = retira_numero(texto);
    if (!b || !retira_sinal(texto, "-/")) return std::nullopt;
    const auto c = retira_numero(texto);
    if (!c) return std::nullopt;

    DataHora resultado{ano_a_frente ? *a : *c, *b, ano_a_frente ? *c : *a};
    if (retira_sinal(texto, " T")) {
        const auto hora = retira_numero(texto);
        if (!hora || !retira_sinal(texto, ":")) return std::nullopt;
        const auto minuto = retira_numero(texto);
        if (!minuto) return std::nullopt;
        resultado.hora = *hora;
        resultado.minuto = *minuto;
        if (retira_sinal(texto, ":")) {
            const auto segundo = retira_numero(texto);
            if (!segundo) return std::nullopt;
            resultado.segundo = *segundo;
        }
    }
    if (!texto.empty() || !resultado.valida()) return std::nullopt;
    return resultado;
}

} // namespace orvex::base
