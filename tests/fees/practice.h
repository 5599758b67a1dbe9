#pragma once

#include "app/base/codepage932.h"
#include "app/base/folders.h"
#include "tests/support/test_database.h"
#include "tests/support/test_environment.h"

#include <QFile>
#include <gtest/gtest.h>

/// Branch 1-1 of a practice, whose program folder says where the database is.
class FeesTest : public testing::Test, protected TestInstallation {
protected:
    FeesTest() {
        writeConnection(database.connectionString());
        database.run(QStringLiteral("insert into KYOTEN (iKyotenCd, iKyotenEb) values (1, 1), (2, 1)"));
    }

    void writeConnection(const QString &text) const {
        QFile file(programFolder.filePath(QStringLiteral("adodb.ini")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(
            encode932(QStringLiteral("[接続情報]\r\n接続情報=") + text + QStringLiteral("\r\n")).bytes);
    }
    /// @param values group, code and price of 療養費単価
    void price(const QString &from, const QString &to, const QString &values) const {
        database.run(
            QStringLiteral("insert into 療養費単価 (cStartDate, cEndDate, iTankaKbn, nTankaCode, nTanka) "
                           "values ('%1', '%2', %3)")
                .arg(from, to, values));
    }
    /// @param values nMinLen, nMaxLen and nKingakuOuryou
    void band(const QString &from, const QString &to, const QString &values, int office = 1) const {
        database.run(
            QStringLiteral("insert into 往療費区分 (iKyotenCd, iKyotenEb, cStartDate, cEndDate, nMinLen, "
                           "nMaxLen, nKingakuOuryou) values (%4, 1, '%1', '%2', %3)")
                .arg(from, to, values)
                .arg(office));
    }
    QString said() const { return messages.shown.isEmpty() ? QString() : messages.shown.last().text; }
    std::string why() const { return said().toStdString(); }

    TestDatabase database;
};
