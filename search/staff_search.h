#pragma once

#include "app/base/branch.h"

#include <QString>

/// What the staff search is narrowed by.
struct StaffConditions {
    QString name = {};
    QString kana = {};
    qint64 number = 0;      ///< 0: any
    bool suspended = false; ///< suspended staff too
    bool allOffices = false;
    Branch office = {};       ///< without allOffices
    qint64 consultation = -1; ///< only the staff assigned to this consultation; −1: any

    friend bool operator==(const StaffConditions &, const StaffConditions &) = default;
};

/// The conditions in words, each only when it is set.
QString conditionSummary(const StaffConditions &conditions);
