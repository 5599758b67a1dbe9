#pragma once

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

/// The conditions in words, each only when it is set.
QString conditionSummary(const PatientConditions &conditions);
