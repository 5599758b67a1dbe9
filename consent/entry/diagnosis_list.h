#pragma once

#include "db/recordset.h"

/// Reads a list of diagnoses in code page 932 or UTF-8, a line each, as rows `number` (from 1) and `name`;
/// blank lines are left out.
/// @param reason names the file, and a line that is no text, when it cannot be read
bool readDiagnoses(const QString &path, Recordset &rows, QString &reason);
