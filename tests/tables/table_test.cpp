#include "db/adodb.h"
#include "db/tables/masters/code.h"
#include "db/tables/masters/doctor.h"
#include "tests/support/test_environment.h"
#include "tests/tables/recording_provider.h"

#include <QRegularExpression>
#include <functional>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class CodeTable : public testing::Test {
protected:
    void SetUp() override {
        db.iInit(u"Provider=Test"_s);
        ASSERT_EQ(db.iConnect(), 0);
        table.iInit(db);
        log.steps.clear();
    }

    cD_CODE record() const { return {1, 2, u"O'Neil"_s, 3, 0, u"備考"_s}; }

    RecordingProvider::Log log;
    cT_ADODB db{[this](const QString &) { return std::make_unique<RecordingProvider>(log); }};
    cT_CODE table;
};

const QString select =
    u"  select      CODE.iBunrui as iBunrui     ,CODE.nIDNo as nIDNo     ,CODE.cName as cName"
    u"     ,CODE.nIDIndex as nIDIndex     ,CODE.iUseFlg as iUseFlg     ,CODE.cBikou as cBikou"
    u"  FROM      CODE"_s;

TEST_F(CodeTable, WritesTheStatementsOfTheCodeTable) {
    const cD_CODE code = record();
    const cD_CODE nulls{1, 2, {}, 3, {}, {}};
    qint32 number = 0;
    const struct {
        const char *operation;
        std::function<short()> run;
        QString sql;
    } cases[] = {
        {"iGetMaxIDNo", [&] { return table.iGetMaxIDNo(number, 5); },
         u"  select      max(CODE.nIDNo) as nIDNo  FROM      CODE where iBunrui = 5"_s},
        {"iGetMaxIndexNo", [&] { return table.iGetMaxIndexNo(number, 5); },
         u"  select      max(CODE.nIDIndex) as nIDIndex  FROM      CODE where iBunrui = 5"_s},
        {"iDataReadGrid", [&] { return table.iDataReadGrid(); },
         select + u" where  (iUseFlg = 0 OR iUseFlg IS NULL)  order by      iBunrui, nIDNo, nIDIndex "_s},
        {"iDataReadGridBunrui", [&] { return table.iDataReadGridBunrui(5); },
         select + u" where iBunrui = 5 and  (iUseFlg = 0 OR iUseFlg IS NULL)"
                  u"  order by      iBunrui, nIDNo, nIDIndex "_s},
        {"iDataReadGridBunrui_OrderIndex", [&] { return table.iDataReadGridBunrui_OrderIndex(5, 7); },
         select + u" where iBunrui = 5 and  nIDNo = 7 and  (iUseFlg = 0 OR iUseFlg IS NULL)"
                  u"  order by      iBunrui, nIDIndex "_s},
        {"iDataRead", [&] { return table.iDataRead(&code); },
         select + u" where    CODE.iBunrui = 1    and CODE.nIDNo = 2    and CODE.nIDIndex = 3"
                  u" and  (iUseFlg = 0 OR iUseFlg IS NULL)"_s},
        {"iDataInsert", [&] { return table.iDataInsert(&code, -1, false); },
         u" insert into    CODE (      iBunrui     ,nIDNo     ,cName     ,nIDIndex     ,iUseFlg     ,cBikou"
         u" )values(       1     ,2     ,'O''Neil'     ,3     ,0     ,'備考' ) "_s},
        {"iDataUpdate", [&] { return table.iDataUpdate(&code, -1, false); },
         u" update      CODE set       cName =  'O''Neil'     ,iUseFlg =  0     ,cBikou =  '備考'"
         u" where    iBunrui = 1    and nIDNo = 2    and nIDIndex = 3"_s},
        {"iDataUpdate to Null", [&] { return table.iDataUpdate(&nulls, -1, false); },
         u" update      CODE set       cName =  Null     ,iUseFlg =  Null     ,cBikou =  Null"
         u" where    iBunrui = 1    and nIDNo = 2    and nIDIndex = 3"_s},
        {"iData削除", [&] { return table.iData削除(&code, -1, false); },
         u" delete from      CODE where    iBunrui = 1    and nIDNo = 2    and nIDIndex = 3"_s},
    };
    for (const auto &c : cases) {
        log.steps.clear();
        log.resultColumns = c.sql.contains(u"max("_s)
                                ? QStringList{u"n"_s}
                                : QStringList{u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s};
        log.resultRow = QList<qint64>(log.resultColumns.size(), 9);
        EXPECT_EQ(c.run(), 0) << c.operation;
        EXPECT_EQ(log.steps, QStringList{c.sql}) << c.operation;
    }
    EXPECT_EQ(number, 9);
}

TEST_F(CodeTable, TheMaximumOfAnEmptyCategoryIsZero) {
    qint32 number = 77;
    EXPECT_EQ(table.iGetMaxIDNo(number, 5), 0);
    EXPECT_EQ(number, 0);
}

TEST_F(CodeTable, AuditColumnsTakeTheComputerAndTheServersTime) {
    cT_DOCTOR doctors;
    doctors.iInit(db);
    cD_DOCTOR doctor;
    doctor.cIDNo = u"12"_s;
    doctor.cPcName = u"ANOTHER"_s;
    doctor.tUpDateTime = u"1999/01/01"_s;
    ASSERT_EQ(doctors.iDataUpdate(&doctor, -1, false), 0);
    ASSERT_EQ(doctors.iDataInsert(&doctor, -1, false), 0);
    const QString computer = db.csGetComputerName();
    EXPECT_TRUE(log.steps[0].endsWith(
        u"     ,cPcName =  '%1'     ,tUpDateTime = GetDate() where    cIDNo = '12'"_s.arg(computer)))
        << log.steps[0].toStdString();
    EXPECT_TRUE(log.steps[1].endsWith(u"     ,'%1'     ,GetDate() ) "_s.arg(computer)))
        << log.steps[1].toStdString();
}

TEST_F(CodeTable, TheFlagBracketsAWriteByATransaction) {
    const cD_CODE code = record();
    const struct {
        const char *name;
        bool transaction;
        QString failing;
        QStringList steps; ///< "…" stands for the statement
    } cases[] = {
        {"alone", true, {}, {u"begin"_s, u"…"_s, u"commit"_s}},
        {"in the caller's", false, {}, {u"…"_s}},
        {"no begin", true, u"begin"_s, {u"begin"_s}},
        {"statement fails", true, u" delete"_s, {u"begin"_s, u"…"_s}},
        {"statement fails in the caller's", false, u" delete"_s, {u"…"_s}},
        {"commit fails", true, u"commit"_s, {u"begin"_s, u"…"_s, u"commit"_s}},
    };
    for (const auto &c : cases) {
        log.steps.clear();
        log.failing = c.failing;
        EXPECT_EQ(table.iData削除(&code, -1, c.transaction), c.failing.isEmpty() ? 0 : -1) << c.name;
        log.failing.clear();
        EXPECT_EQ(log.steps.replaceInStrings(QRegularExpression(u"^ delete.*"_s), u"…"_s), c.steps) << c.name;
        if (!c.failing.isEmpty()) {
            EXPECT_EQ(table.sErrMsg(), db.sErrMsg()) << c.name;
            EXPECT_TRUE(table.sErrMsg().contains(u"refused"_s)) << c.name;
        }
        // However it ended, the connection is free for the next transaction.
        EXPECT_EQ(db.iBeginTrans(), 0) << c.name;
        EXPECT_EQ(db.iRollback(), 0) << c.name;
    }
}

// What comes after the statement belongs to the transaction: an entry that cannot be read back undoes it.
TEST_F(CodeTable, AnEntryThatCannotBeReadBackUndoesTheWrite) {
    cT_DOCTOR doctors;
    doctors.iInit(db);
    cD_DOCTOR doctor;
    doctor.cIDNo = u"12"_s;
    log.failing = u"  select"_s;
    EXPECT_EQ(doctors.iDataInsert(&doctor, 0, true), -1);
    EXPECT_FALSE(log.steps.contains(u"commit"_s));
    EXPECT_EQ(doctors.nデータ数(), 0);
}

TEST_F(CodeTable, RefusesAMissingRecordAndAMissingComputerName) {
    cT_DOCTOR doctors;
    doctors.iInit(db);
    EXPECT_EQ(table.iDataInsert(nullptr, -1, true), -1);
    EXPECT_EQ(table.sErrMsg(), u"CODEが無効です。"_s);
    EXPECT_EQ(doctors.iDataReadGrid(nullptr), -1);
    EXPECT_EQ(doctors.sErrMsg(), u"DOCTORが無効です。"_s);
    EXPECT_TRUE(log.steps.isEmpty());

    cT_CODE unconnected;
    const cD_CODE code = record();
    QString name = u"left over"_s;
    EXPECT_EQ(unconnected.iGetComputerName(name), -1);
    EXPECT_EQ(name, QString());
    EXPECT_EQ(unconnected.iDataUpdate(&code, -1, true), -1);
    EXPECT_EQ(unconnected.sErrMsg(), u"コンピューター名の取得に失敗しました。"_s);
    EXPECT_EQ(unconnected.iDataReadGrid(), -1);
    EXPECT_EQ(unconnected.iData削除(&code, -1, true), -1);
}

TEST_F(CodeTable, AFailedReadLeavesTheArray) {
    log.resultColumns = {u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s};
    log.resultRow = {1, 2, 3, 4, 5, 6};
    ASSERT_EQ(table.iDataReadGrid(), 0);
    log.failing = u"  select"_s;
    EXPECT_EQ(table.iDataReadGrid(), -1);
    ASSERT_EQ(table.nデータ数(), 1);
    EXPECT_EQ(table.clsCODE(0)->nIDIndex, 4);
    EXPECT_EQ(table.clsCODE(1), nullptr);
    EXPECT_EQ(table.clsCODE(-1), nullptr);
}

} // namespace
