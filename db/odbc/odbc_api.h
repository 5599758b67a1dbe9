#pragma once

// The ODBC interface with its wide functions; on Windows its headers want windows.h before them.
#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

/// A number where the interface takes attributes as pointers.
inline SQLPOINTER odbcAttribute(SQLULEN value) {
    return reinterpret_cast<SQLPOINTER>(value); // NOLINT(performance-no-int-to-ptr)
}
