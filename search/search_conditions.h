#pragma once

#include "app/base/branch.h"

#include <QDate>
#include <QString>

/// What the patient search is narrowed by; the defaults let everyone pass whose treatment goes on.
struct PatientConditions {
    QString name = {};
    QString kana = {};
    QString tel = {};
    qint64 staff = 0;    ///< one of the five responsible staff; 0: any
    short kind = -1;     ///< 0 massage, 1 acupuncture, other: any
    qint64 number = 0;   ///< 0: any
    bool ended = false;  ///< whoever's treatment has ended too, whenever that was
    QDate endMonth = {}; ///< without `ended`: whose treatment ended in this month or later too; empty: none

    friend bool operator==(const PatientConditions &, const PatientConditions &) = default;
};

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
QString conditionSummary(const PatientConditions &conditions);
QString conditionSummary(const StaffConditions &conditions);
