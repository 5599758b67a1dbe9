#pragma once

#include "app/base/folders.h"
#include "tests/support/test_database.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>

/// A practice with two institutions, three doctors and four patients, and its folders.
class MasterPractice : public testing::Test, protected TestInstallation {
protected:
    MasterPractice();

    void writePostalCodes(const QByteArray &bytes, const QString &name = QStringLiteral("KEN_ALL.CSV")) const;
    QString doctor(const QString &column, int number = 12) const {
        return database.value(
            QStringLiteral("SELECT %1 FROM DOCTOR WHERE cIDNo = '%2'").arg(column).arg(number));
    }

    TestDatabase database;
};
