#pragma once

#include "app/base/folders.h"
#include "app/base/request_methods.h"
#include "history/log_tables.h"
#include "tests/support/test_database.h"
#include "tests/support/test_environment.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

/// Patients 7 山田 and 8 鈴木, doctors 1 and 2, and a history that holds what a test records.
class HistoryTest : public testing::Test, protected TestInstallation {
protected:
    HistoryTest() {
        const Result<bool> made = makeLogTables(database.db);
        EXPECT_TRUE(made) << made.reason().toStdString();
        database.run(u"INSERT INTO DOCTOR (cIDNo, cName) VALUES ('1', '阿部'), ('2', '馬場');"
                     "INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana) VALUES"
                     " (1, 1, 7, '山田', 'ヤマダ'), (1, 1, 8, '鈴木　花子', 'スズキ　ハナコ');"_s);
        QDir(folders.program()).mkpath(u"DATA"_s);
        EXPECT_TRUE(writeRequestMethods(folders, {u"郵送"_s, u"FAX"_s}));
    }

    struct Record {
        QString changes = u"{}"_s;
        int kind = 2;
        QString key = u"20260401/0/0"_s;
        QString table = u"RIYOUSHA_DOUI_REC"_s;
        QString patient = u"7"_s;
        QString time = u"2026/11/20 10:00:00"_s;
        QString operation = u"一覧の保存"_s;
        QString batch = u"Null"_s;
        QString branch = u"1, 1"_s;
        QString write = {}; ///< empty: one of its own
    };
    /// Each record is newer than the one before, where it is of the same time.
    void record(const Record &it) {
        ++m_records;
        const QString write = it.write.isEmpty() ? QString::number(m_records) : it.write;
        database.run(
            u"INSERT INTO DOUISHO_LOG (cWrite, iSeq, tTime, cPcName, cOperation, nBatch, cTable,"
            " iKyotenCd, iKyotenEb, nIDNo, cKey, iKind, cChanges) VALUES ('%1', %2, '%3', 'PC%4', '%5',"
            " %6, '%7', %8, %9, '%10', %11, '%12')"_s.arg(write.rightJustified(32, u'0'))
                .arg(m_records)
                .arg(it.time)
                .arg(m_records)
                .arg(it.operation, it.batch, it.table, it.branch, it.patient, it.key)
                .arg(it.kind)
                .arg(it.changes));
    }

    TestDatabase database;

private:
    int m_records = 0;
};
