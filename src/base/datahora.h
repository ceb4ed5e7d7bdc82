// A calendar date with a time of day, to the second, without time zone: what the screens show and the ledger
// keeps.
#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace orvex::base {

inline constexpr int primeiro_ano_do_servidor = 1753; // the columns that keep a date with a time begin there

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

    // What this becomes when the text is typed over it: what the text does not say (the time, or what of it
    // is hidden) stays. Day, month and year are separated by "-", "/", "." or a blank, or are plain digits
    // (15102025, 151025); a year of two digits is the nearest to today. `com_hora` lets a time follow
    // ("10:20", "10.20", "10h20", 1020). Empty when the text is no date of the calendar, or one too old for
    // the ledger.
    std::optional<DataHora> digitada(std::string_view texto, bool com_hora, const DataHora& hoje) const;
    bool a_mais_de_um_ano(const DataHora& hoje) const;
};

} // namespace orvex::base
