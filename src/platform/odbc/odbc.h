// The ODBC interface, which needs the system's types first on Windows.
#pragma once

#ifdef _WIN32
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

namespace orvex::platform::odbc {

// The interface takes some numbers where it takes pointers elsewhere.
inline SQLPOINTER como_ponteiro(int numero) {
    return reinterpret_cast<SQLPOINTER>(static_cast<SQLLEN>(numero)); // NOLINT(performance-no-int-to-ptr)
}

} // namespace orvex::platform::odbc
