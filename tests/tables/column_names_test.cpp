#include "db/column_names.h"
#include "db/tables/masters/caremane.h"
#include "db/tables/patient/riyousha.h"
#include "tests/support/test_database.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A suite's database that names its columns otherwise.
class ColumnNamesTest : public testing::Test {
protected:
    cD_RIYOUSHA patient() const {
        cD_RIYOUSHA record;
        record.iKyotenCd = record.iKyotenEb = 1;
        record.nIDNo = 7;
        record.cName = u"青木"_s;
        record.tBirthday = QDate(1950, 3, 10);
        record.cZokugara = u"tBirthday"_s;
        record.iKaigodo = short(3);
        record.nCareManeCd = 5;
        record.cCareManeName = u"旧"_s;
        record.cSisetsuName = u"荘"_s;
        return record;
    }
    cD_RIYOUSHA written() {
        cT_RIYOUSHA table;
        table.iInit(database.db);
        cD_RIYOUSHA record = patient();
        EXPECT_EQ(table.iDataInsert(&record, -1, true), 0) << qPrintable(table.sErrMsg());
        record.iTenki = short(2);
        EXPECT_EQ(table.iDataUpdate(&record, -1, true), 0) << qPrintable(table.sErrMsg());
        EXPECT_EQ(table.iDataRead(PatientKey{1, 1, 7}), 0) << qPrintable(table.sErrMsg());
        return table.records().empty() ? cD_RIYOUSHA() : table.records().front();
    }
    /// A query of a screen's kind: with aliases, joins, and the names in all its clauses.
    QStringList joined() {
        const auto rows = readRows(
            database.db, u"SELECT P.nIDNo, P.tBirthday AS C1, P.[iKaigodo], KYOTEN.cTelNo, H.cHokenJNameKana"
                         " FROM RIYOUSHA AS P LEFT JOIN KYOTEN ON KYOTEN.iKyotenCd = P.iKyotenCd"
                         " LEFT JOIN HOKENJA H ON H.cHokenNo = P.cHokenNo"
                         " WHERE (P.iKaigodo = 3 OR P.iKaigodo IS NULL) AND 'P.tBirthday' <> P.cName"
                         " ORDER BY P.nIDNo"_s);
        EXPECT_TRUE(rows) << qPrintable(rows.reason());
        QStringList cells;
        for (int column = 0; rows && rows->rowCount() == 1 && column < rows->columnCount(); ++column)
            cells += rows->text(0, column);
        return cells;
    }

    TestDatabase database;
};

} // namespace

TEST_F(ColumnNamesTest, OtherNamesServeEverywhere) {
    ColumnNames names;
    const std::pair<QString, QString> renamed[] = {{u"tBirthday"_s, u"生年月日"_s},
                                                   {u"cZokugara"_s, u"cTuzuki2"_s},
                                                   {u"iKaigodo"_s, u"Order"_s},
                                                   {u"nCareManeCd"_s, u"nCm"_s},
                                                   {u"cCareManeName"_s, u"cCm"_s}};
    for (const auto &[ours, theirs] : renamed) {
        database.run(u"ALTER TABLE RIYOUSHA RENAME COLUMN %1 TO [%2]"_s.arg(ours, theirs));
        EXPECT_TRUE(names.set(u"RIYOUSHA"_s, ours, theirs.toUpper()));
    }
    database.db.setColumnNames(names);
    const cD_RIYOUSHA read = written();
    EXPECT_EQ(read.tBirthday, QDate(1950, 3, 10));
    EXPECT_EQ(read.cZokugara, u"tBirthday"_s);
    EXPECT_EQ(short(read.iKaigodo), 3);
    EXPECT_EQ(short(read.iTenki), 2);
    EXPECT_EQ(joined().mid(0, 3), QStringList({u"7"_s, u"1950/03/10"_s, u"3"_s}));
    cT_CAREMANE careManagers;
    careManagers.iInit(database.db);
    cD_CAREMANE careManager;
    careManager.nIDNo = 5;
    careManager.cName = u"新"_s;
    EXPECT_EQ(careManagers.iDataUpdate_ToRiyousha(&careManager), 0);
    EXPECT_EQ(database.value(u"select cCm from RIYOUSHA"_s), u"新"_s);
}

TEST_F(ColumnNamesTest, WhatIsMissingIsEmptyAndTheRestIsKept) {
    database.run(u"DROP INDEX IX_RIYOUSHA_CAREMANE"_s);
    for (const OptionalColumn &column : optionalColumns())
        database.run(u"ALTER TABLE %1 DROP COLUMN %2"_s.arg(column.table, column.column));
    const cD_RIYOUSHA read = written();
    EXPECT_FALSE(read.tBirthday.isValid());
    EXPECT_TRUE(read.cZokugara.isEmpty());
    EXPECT_TRUE(read.iKaigodo.isNull());
    EXPECT_EQ(read.cName, u"青木"_s);
    EXPECT_EQ(short(read.iTenki), 2);
    EXPECT_EQ(read.cSisetsuName, u"荘"_s);
    EXPECT_FALSE(read.tUpDateTime.isEmpty());
    EXPECT_EQ(joined(), QStringList({u"7"_s, {}, {}, {}, {}}));
    EXPECT_FALSE(database.db.hasColumn(u"RIYOUSHA", u"tBirthday"));
    EXPECT_TRUE(database.db.hasColumn(u"RIYOUSHA", u"cName"));
    // A column that is made is seen.
    EXPECT_EQ(database.db.iExecSQL(u"ALTER TABLE RIYOUSHA ADD tBirthday DATETIME"_s), 0);
    EXPECT_TRUE(database.db.hasColumn(u"RIYOUSHA", u"tBirthday"));
    // A connection that is found again may be to another database.
    database.db.iDisConnect();
    database.run(u"ALTER TABLE RIYOUSHA DROP COLUMN tBirthday"_s);
    EXPECT_EQ(joined(), QStringList({u"7"_s, {}, {}, {}, {}}));
}

TEST_F(ColumnNamesTest, IniFileNamesThemAndOddLinesAreTold) {
    const TestInstallation practice;
    EXPECT_TRUE(readColumnNames(practice.folders).oddities.isEmpty());
    QFile file(Folders::file(practice.folders.data(), u"列名.ini"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    // 生年 in code page 932.
    file.write("; note\r\n[RIYOUSHA]\r\ntBirthday=\x90\xb6\x94\x4e\r\ncZokugara=\r\ncName=cShimei\r\n"
               "iKaigodo=a] FROM x--\r\n[KYOTEN]\r\ncTelNo = cDenwa\r\n");
    file.close();
    const ColumnNamesRead read = readColumnNames(practice.folders);
    EXPECT_EQ(read.names.inForce(u"RIYOUSHA", u"tBirthday"), u"生年"_s);
    EXPECT_FALSE(read.names.has(u"RIYOUSHA", u"cZokugara"));
    EXPECT_EQ(read.names.inForce(u"KYOTEN", u"cTelNo"), u"cDenwa"_s);
    EXPECT_EQ(read.names.inForce(u"RIYOUSHA", u"iKaigodo"), u"iKaigodo"_s);
    ASSERT_EQ(read.oddities.size(), 2);
    EXPECT_TRUE(read.oddities[0].contains(u"cName"));
    EXPECT_TRUE(read.oddities[1].contains(u"a] FROM x--"));
}
