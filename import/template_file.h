#pragma once

#include "import/import_kind.h"

#include "app/base/result.h"

/// Writes a CSV file with the headings of a kind and two rows of examples, for the practice to fill in. In
/// code page 932, which spread-sheets open as it stands.
Result<> writeImportTemplate(const QString &path, ImportKind kind);
