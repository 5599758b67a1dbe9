#pragma once

#include "app/base/platform/native.h"

// The ODBC interface with its wide functions.
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

/// A number where the interface takes attributes as pointers.
inline SQLPOINTER odbcAttribute(SQLULEN value) {
    return reinterpret_cast<SQLPOINTER>(value); // NOLINT(performance-no-int-to-ptr)
}
