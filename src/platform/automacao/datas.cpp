#include "platform/automacao/datas.h"

#include "base/falha.h"

#include <chrono>
#include <cmath>

namespace orvex::platform::automacao {
namespace {

namespace crono = std::chrono;
using base::DataHora;

constexpr crono::sys_days dia_zero = crono::year{1899} / 12 / 30;
constexpr crono::sys_days primeiro_dia = crono::year{100} / 1 / 1;
constexpr crono::sys_days ultimo_dia = crono::year{9999} / 12 / 31;
constexpr int segundos_por_dia = 24 * 60 * 60;

[[noreturn]] void sem_data(const std::string& texto) {
    throw base::Falha("«" + texto + "» não é uma data.", base::numeros_falha::tipo_diferente);
}

} // namespace

double data_da_automacao(const DataHora& data) {
    if (!data.valida()) sem_data(data.data_hora_iso());
    const crono::sys_days dia = crono::year{data.ano} / data.mes / data.dia;
    if (dia < primeiro_dia) sem_data(data.data_hora_iso());
    const auto dias = static_cast<double>((dia - dia_zero).count());
    const double fraccao =
        static_cast<double>((data.hora * 60 + data.minuto) * 60 + data.segundo) / segundos_por_dia;
    return dias < 0 ? dias - fraccao : dias + fraccao;
}

base::Variante variante_da_data(double data) {
    constexpr auto primeira = static_cast<double>((primeiro_dia - dia_zero).count()) - 1;
    constexpr auto ultima = static_cast<double>((ultimo_dia - dia_zero).count()) + 1;
    if (!(data > primeira && data < ultima)) sem_data(base::Variante(data).texto());
    const double dias = std::trunc(data);
    auto segundos = static_cast<int>(std::lround(std::abs(data - dias) * segundos_por_dia));
    crono::sys_days dia = dia_zero + crono::days(static_cast<int>(dias));
    if (segundos == segundos_por_dia) { // rounded up to the next midnight
        dia += crono::days(1);
        segundos = 0;
    }
    const crono::year_month_day partes(dia);
    const DataHora lida{static_cast<int>(partes.year()),
                        static_cast<int>(static_cast<unsigned>(partes.month())),
                        static_cast<int>(static_cast<unsigned>(partes.day())),
                        segundos / 3600,
                        segundos / 60 % 60,
                        segundos % 60};
    if (!lida.valida()) sem_data(base::Variante(data).texto());
    if (dia == dia_zero) return lida.so_hora();
    return lida;
}

} // namespace orvex::platform::automacao
