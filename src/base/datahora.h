// A calendar date with a time of day, to the second, without time zone: what the screens show and the ledger
// keeps.
#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace orvex::base {

struct DataHora {
    int ano = 1900;
    int mes = 1;
    int dia = 1;
    int hora = 0;
    int minuto = 0;
    int segundo = 0;

    friend constexpr auto operator<=>(const DataHora&, const DataHora&) = default;

    static DataHora agora(); // of the machine's own clock, local time
    bool valida() const;

    std::string data() const;          // dd-mm-yyyy, as shown and as sent to the ERP
    std::string data_iso() const;      // yyyy-mm-dd, as written to the ledger
    std::string data_hora_iso() const; // yyyy-mm-dd hh:mm:ss, as written to the ledger
    std::string data_hora() const;     // dd-mm-yyyy HH:MM, as the pickers show it
    std::string so_hora() const;       // HH:MM:SS, as sent to the ERP

    // Reads any of the forms above, with "-" or "/" between the parts of the date; the time is optional,
    // seconds too. Empty when the text is no date of the calendar.
    static std::optional<DataHora> le(std::string_view texto);
};

} // namespace orvex::base
