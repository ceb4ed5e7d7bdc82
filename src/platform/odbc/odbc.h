// The ODBC interface, which needs the system's types first on Windows.
#pragma once

#ifdef _WIN32
#define NOMINMAX
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>
