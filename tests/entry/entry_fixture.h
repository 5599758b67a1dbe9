#pragma once

#include "app/base/folders.h"
#include "consent/record/draft.h"
#include "tests/support/test_database.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>

/// A massage patient 7 and an acupuncture patient 8 on 2026/11/21, with doctor 1 of the hospital.
class EntryTest : public testing::Test, protected TestInstallation {
protected:
    EntryTest();

    /// A massage consent on a day (yyyymmdd) that can be registered as it stands, for half a year from it.
    /// @param set "column = value, …"
    void consent(int day, const QString &set = {}, int patient = 7);
    /// Cells of a row by its date key, joined by '|'.
    QString stored(int day, const QString &columns) const;
    /// "nDate/iHenkeiFlg/nHenkeiDouiDate/iNewestFlg" of patient 7's rows.
    QStringList keys() const;
    ConsentRowKey key(int day) const { return {massagePatient, day, 0, 0}; }

    const PatientKey massagePatient{1, 1, 7};
    const PatientKey acupuncturePatient{1, 1, 8};
    TestDatabase database;
};
