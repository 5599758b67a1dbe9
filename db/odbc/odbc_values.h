#pragma once

#include "db/odbc/odbc_api.h"
#include "db/recordset.h"

#include <QStringView>

/// Appends a decimal number written in digits: as an integer where nothing stands behind the point, else
/// as a real; as text when it is no number.
void appendDecimal(Recordset &rows, QStringView digits);

/// Appends "yyyy/mm/dd", with " hh:mm:ss.fff" behind it unless it is midnight.
void appendTimestamp(Recordset &rows, const SQL_TIMESTAMP_STRUCT &at);
