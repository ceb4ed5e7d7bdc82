// Dates as the automation counts them: days since 30-12-1899, the time of day as their fraction. Before that
// day the days are negative and the fraction still counts from midnight on.
#pragma once

#include "base/variante.h"

namespace orvex::platform::automacao {

double data_da_automacao(const base::DataHora& data);

// To the nearest second. Day 0 says that there is no date: what is given then is the time alone, as a text.
base::Variante variante_da_data(double data);

} // namespace orvex::platform::automacao
