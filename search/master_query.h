#pragma once

#include "app/base/branch.h"

#include <QString>

/// The masters that share one plain search. Of the institutions
/// hospitals have a doctor; a living facility is where patients live or that has no doctor, those with
/// patients first; facilities are all of them.
enum class Master { Doctor, Hospital, LivingFacility, Facility, Insurer, Counsellor };

/// The rows to pick from, by code: the code as `code`, the name as `name`, and the master's further columns.
QString masterListSql(Master master, const Branch &office);

/// Code and name of one row, under the same conditions as the list.
/// @param code digits
QString masterRowSql(Master master, const Branch &office, const QString &code);
