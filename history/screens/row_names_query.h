#pragma once

#include "app/base/branch.h"
#include "app/base/result.h"
#include "db/tables/patient/consent_words.h"

#include <QHash>
#include <QSet>
#include <map>

class cT_ADODB;

/// Codes by what they are the code of.
using RowCodes = std::map<ColumnKind, QSet<QString>>;

/// What the rows of codes are called now. Those that are gone have no name.
using RowNames = std::map<ColumnKind, QHash<QString, QString>>;

Result<RowNames> readRowNames(cT_ADODB &db, const Branch &branch, const RowCodes &codes);
