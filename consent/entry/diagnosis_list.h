#pragma once

#include "db/recordset.h"

/// Reads a list of diagnoses, a line each, as rows `number` (from 1) and `name`; blank lines are left out.
/// @param reason names the file when it cannot be read
bool readDiagnoses(const QString &path, Recordset &rows, QString &reason);
