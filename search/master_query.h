#pragma once

#include "app/base/branch.h"

#include <QString>

/// The masters that share one plain search.
enum class Master { Doctor, Hospital, LivingFacility, Insurer, Counsellor };

/// The rows to pick from, by code: the code as `code`, the name as `name`, and the master's further columns.
QString masterListSql(Master master, const Branch &office);

/// Code and name of one row, under the same conditions as the list.
/// @param code digits
QString masterRowSql(Master master, const Branch &office, const QString &code);
