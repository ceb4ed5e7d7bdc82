// Who holds an item: the one place that says it.
//
// The holder of an item is the `Cliente` of its newest row in xel_ORVEX. What each flow writes there:
//
//     a note, a return         ORVEX, when it moves ORVEX's own warehouse; otherwise the client of the
//     document.
//                              So a note from ORVEX's warehouse names ORVEX as the holder, while its movement
//                              line names the client: the item stays ORVEX's, and its weight goes to the
//                              client.
//     an adjustment            the holder of then: it changes nobody's hold
//     a transfer, two rows     the exit names the holder of then, the entry the new one
//     an entry alone           where it is the item's first row: its beginning
//
// And where the stock of an item lies follows from its holder: in ORVEX's own warehouse what ORVEX holds, in
// the one of the clients what any client holds.
//
// A row may be taken out again (a note or an adjustment that is cancelled), so the row that stands before
// another need not be the one that stood there when that was written.
#pragma once

#include <string>

namespace orvex::livro {

struct Lugares {
    std::string Armazem;      // ARMAZEM: of what clients hold
    std::string ArmazemOrvex; // ARMAZEMORVEX: of what ORVEX holds
    std::string ClienteOrvex; // CLIENTEORVEX: ORVEX as a client

    // After a note or a return of this client that moves this warehouse.
    const std::string& detentor(const std::string& armazem_movido, const std::string& cliente) const {
        return armazem_movido == Armazem ? cliente : ClienteOrvex;
    }
    const std::string& armazem(const std::string& detentor) const {
        return detentor == ClienteOrvex ? ArmazemOrvex : Armazem;
    }
};

} // namespace orvex::livro
