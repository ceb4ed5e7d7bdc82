#include "base/datahora.h"

#include "base/texto.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <ctime>
#include <initializer_list>
#include <vector>

namespace orvex::base {
namespace {

// Two digits at least, four of a year.
std::string com_zeros(int numero, std::size_t digitos = 2) {
    std::string texto = std::to_string(numero);
    if (texto.size() < digitos) texto.insert(0, digitos - texto.size(), '0');
    return texto;
}
std::string ano_inteiro(int ano) { return com_zeros(ano, 4); }

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

// The numbers of a date as it was typed, day, month, year, hour and minute in the order they stand; none when
// something else is among them.
std::vector<std::string_view> partes_de(std::string_view texto) {
    std::vector<std::string_view> partes;
    const auto corta = [&](std::string_view algarismos, std::initializer_list<std::size_t> tamanhos) {
        for (const std::size_t tamanho : tamanhos) {
            if (algarismos.empty()) break;
            partes.push_back(algarismos.substr(0, tamanho));
            algarismos.remove_prefix(std::min(tamanho, algarismos.size()));
        }
        return algarismos.empty();
    };
    while (true) {
        const std::string_view algarismos =
            texto.substr(0, std::min(texto.find_first_not_of("0123456789"), texto.size()));
        texto.remove_prefix(algarismos.size());
        bool bom = !algarismos.empty();
        if (partes.empty() && algarismos.size() > 4)
            bom = corta(algarismos, {2, 2, algarismos.size() % 4 == 0 ? std::size_t{4} : 2, 2, 2});
        else if (partes.size() == 3 && algarismos.size() == 4)
            bom = corta(algarismos, {2, 2});
        else
            partes.push_back(algarismos);
        if (bom && texto.empty()) return partes;
        if (!bom || !retira_sinal(texto, partes.size() < 3 ? "-/. " : partes.size() == 3 ? " " : ":.h"))
            return {};
    }
}

int ano_mais_proximo(int dois_algarismos, int este) {
    const int ano = este - este % 100 + dois_algarismos;
    return ano - este >= 50 ? ano - 100 : este - ano > 50 ? ano + 100 : ano;
}

} // namespace

DataHora DataHora::agora() {
    const std::time_t instante = std::time(nullptr);
    // Into a value of our own: threads of the system's parts may ask for the time too.
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &instante);
#else
    localtime_r(&instante, &local);
#endif
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

bool DataHora::valida() const {
    const std::chrono::year_month_day data{std::chrono::year(ano),
                                           std::chrono::month(static_cast<unsigned>(mes)),
                                           std::chrono::day(static_cast<unsigned>(dia))};
    return ano >= 1 && ano <= 9999 && data.ok() && hora >= 0 && hora < 24 && minuto >= 0 && minuto < 60 &&
           segundo >= 0 && segundo < 60;
}

std::string DataHora::data() const { return com_zeros(dia) + "-" + com_zeros(mes) + "-" + ano_inteiro(ano); }
std::string DataHora::data_iso() const {
    return ano_inteiro(ano) + "-" + com_zeros(mes) + "-" + com_zeros(dia);
}
std::string DataHora::data_hora_iso() const { return data_iso() + " " + so_hora(); }
std::string DataHora::data_hora() const { return data() + " " + com_zeros(hora) + ":" + com_zeros(minuto); }
std::string DataHora::so_hora() const {
    return com_zeros(hora) + ":" + com_zeros(minuto) + ":" + com_zeros(segundo);
}

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

std::optional<DataHora> DataHora::digitada(std::string_view texto, bool com_hora,
                                           const DataHora& hoje) const {
    const std::vector<std::string_view> partes = partes_de(apara(texto));
    if (partes.size() != 3 && !(com_hora && partes.size() == 5)) return std::nullopt;
    const auto numero = [](std::string_view parte) { return retira_numero(parte).value_or(0); };
    const bool ano_a_frente = partes[0].size() == 4;
    const std::string_view este_ano = partes[ano_a_frente ? 0 : 2], este_dia = partes[ano_a_frente ? 2 : 0];
    if (este_dia.size() > 2 || partes[1].size() > 2) return std::nullopt;
    if (este_ano.size() != 4 && este_ano.size() != 2) return std::nullopt;

    DataHora lida = *this;
    lida.dia = numero(este_dia);
    lida.mes = numero(partes[1]);
    lida.ano = este_ano.size() == 4 ? numero(este_ano) : ano_mais_proximo(numero(este_ano), hoje.ano);
    if (partes.size() == 5) {
        if (partes[3].size() > 2 || partes[4].size() != 2) return std::nullopt;
        lida.hora = numero(partes[3]);
        lida.minuto = numero(partes[4]);
    }
    if (!lida.valida() || lida.ano < primeiro_ano_do_servidor) return std::nullopt;
    return lida;
}

bool DataHora::a_mais_de_um_ano(const DataHora& hoje) const {
    const auto anos = [&](int passados) { return DataHora{hoje.ano + passados, hoje.mes, hoje.dia}; };
    const DataHora este_dia{ano, mes, dia};
    return este_dia < anos(-1) || este_dia > anos(+1);
}

} // namespace orvex::base
