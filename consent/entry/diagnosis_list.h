#pragma once

#include "app/base/result.h"
#include "db/recordset.h"

/// Reads a list of diagnoses in code page 932 or UTF-8, a line each, as rows `number` (from 1) and `name`;
/// blank lines are left out.
/// A failure names the file, and a line that is no text.
Result<Recordset> readDiagnoses(const QString &path);
