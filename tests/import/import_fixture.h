#pragma once

#include "import/import_job.h"
#include "tests/support/test_database.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>

/// A practice with an institution, doctors of one name, a member of staff and three patients.
class ImportTest : public testing::Test, protected TestInstallation {
protected:
    ImportTest();

    /// A job of a file's text, in code page 932 unless told otherwise; its columns recognised.
    ImportJob job(ImportKind kind, const QString &text, bool utf8 = false) const;
    ImportJob jobOf(ImportKind kind, const QByteArray &bytes) const;
    /// "新規", "変更 電話：1 → 2", "同じ", "× reason" of each row.
    static QStringList said(const ImportPlan &plan);
    QStringList tried(const ImportJob &job);
    ImportOutcome written(const ImportJob &job, ImportRows rows = ImportRows::All);
    QString patients(const QString &columns) const {
        return database.rows(QStringLiteral("SELECT nIDNo, %1 FROM RIYOUSHA ORDER BY nIDNo").arg(columns))
            .join(u'\n');
    }

    TestDatabase database;
};
