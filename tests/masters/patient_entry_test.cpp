#include "db/column_names.h"
#include "masters/master_entry.h"
#include "masters/master_query.h"
#include "tests/masters/practice.h"

#include <atomic>
#include <thread>

using namespace Qt::Literals::StringLiterals;

namespace {

class PatientEntries : public MasterPractice {
protected:
    MasterOutcome save(MasterEntry &entry, const MasterValues &values) const {
        for (const auto &[column, text] : values.asKeyValueRange())
            entry.setValue(column, text);
        EXPECT_TRUE(entry.whyWrong().text.isEmpty()) << qPrintable(entry.whyWrong().text);
        return entry.save(false);
    }
    QString row(const QString &columns, const QString &table = u"RIYOUSHA"_s, int number = 5) const {
        return database.value(u"SELECT %1 FROM %2 WHERE iKyotenEb = 1 AND nIDNo = %3"_s
                                  .arg(QString(columns).replace(u","_s, u" || '|' || "_s), table)
                                  .arg(number));
    }

    const MasterDescription patients = describeMaster(MasterKind::Patient, {1, 1});
    const MasterValues whole{{u"cName"_s, u"青木　花"_s},      {u"tBirthday"_s, u"1950/03/10"_s},
                             {u"iSexKubun"_s, u"2"_s},         {u"nDouiIsiCd"_s, u"12"_s},
                             {u"iAddressSisetsuCd"_s, u"5"_s}, {u"cHokenNo"_s, u"00123456"_s},
                             {u"iSoudaninId"_s, u"3"_s},       {u"nTantou"_s, u"8"_s}};
};

} // namespace

// Both rows, what they repeat of masters, and the month from whose types periods are reckoned.
TEST_F(PatientEntries, ANewPatientIsWhole) {
    database.run(u"INSERT INTO HOKENJA (cHokenNo, cHokenJName) VALUES ('00123456', '緑川市')"_s);
    MasterEntry entry(patients, database.db);
    ASSERT_TRUE(entry.openNew());
    EXPECT_EQ(entry.code(), u"5"_s); // another office's numbers do not count
    ASSERT_EQ(save(entry, whole).kind, MasterOutcome::Done);
    EXPECT_EQ(row(u"cName,iSexKubun,iSejutsuKubun,nTantou"_s), u"青木　花|2|0|8"_s);
    EXPECT_EQ(database.value(u"SELECT nIDNo FROM RIYOUSHA WHERE tBirthday = '1950/03/10'"_s), u"5"_s);
    EXPECT_EQ(row(u"nDouiIsiCd,cDouiIsiName1,cDouiIsiKikan1,cDouiIsiAdd1"_s), u"12|医師'甲|甲病院|自宅"_s);
    EXPECT_EQ(row(u"nSisetsuCd,cSisetsuName,cSisetsuAddress"_s), u"5|甲病院|緑川県若葉市中央1"_s);
    EXPECT_EQ(row(u"cHokenNo,cHokenJName"_s), u"00123456|緑川市"_s);
    EXPECT_EQ(row(u"iAddressSisetsuCd,iSoudaninId,iSisetsuCode"_s, u"RIYOUSHA_SUB"_s), u"5|3|5"_s);
    EXPECT_EQ(row(u"COUNT(*),MAX(length(tDouiYM))"_s, u"DOUIKIROKU"_s), u"1|7"_s);

    // Another doctor is followed; what was not touched stays, also what the suite's programs wrote.
    database.run(u"UPDATE RIYOUSHA SET cSisetsuName = '旧名' WHERE nIDNo = 5;"
                 "UPDATE RIYOUSHA_SUB SET cTelS0Ryosyu = '0999-7' WHERE nIDNo = 5"_s);
    ASSERT_TRUE(entry.open(u"5"_s));
    ASSERT_EQ(save(entry, {{u"nDouiIsiCd"_s, u"3"_s}, {u"iSoudaninId"_s, {}}}).kind, MasterOutcome::Done);
    EXPECT_EQ(row(u"cDouiIsiName1,cSisetsuName,cHokenJName"_s), u"三浦 一|旧名|緑川市"_s);
    EXPECT_EQ(
        database.value(u"SELECT cTelS0Ryosyu FROM RIYOUSHA_SUB WHERE nIDNo = 5 AND iSoudaninId IS NULL"_s),
        u"0999-7"_s);
    // A patient of the suite without a second row gets one.
    ASSERT_TRUE(entry.open(u"1"_s));
    ASSERT_EQ(save(entry, {{u"iSoudaninId"_s, u"4"_s}}).kind, MasterOutcome::Done);
    EXPECT_EQ(row(u"iSoudaninId"_s, u"RIYOUSHA_SUB"_s, 1), u"4"_s);
    EXPECT_EQ(row(u"cDouiIsiName1,nSisetsuCd"_s, u"RIYOUSHA"_s, 1), u"医師'甲|6"_s);
}

TEST_F(PatientEntries, TwoPcsThatEnterPatientsAtOnceGetNumbersOfTheirOwn) {
    constexpr int each = 10;
    std::atomic<int> done = 0;
    const auto enter = [&] {
        cT_ADODB db;
        db.iInit(database.connectionString());
        for (int i = 0; i < each; ++i) {
            MasterEntry entry(patients, db);
            if (!entry.openNew())
                continue;
            entry.setValue(u"cName"_s, u"同時"_s);
            done += entry.save(false).kind == MasterOutcome::Done ? 1 : 0;
        }
    };
    std::thread colleague(enter);
    enter();
    colleague.join();
    EXPECT_EQ(done, 2 * each);
    EXPECT_EQ(
        database.value(u"SELECT COUNT(*) FROM RIYOUSHA WHERE cName = '同時' AND nIDNo BETWEEN 5 AND 24"_s),
        u"20"_s);
}

TEST_F(PatientEntries, OneWithConsentsStaysAndOneWithoutGoesAltogether) {
    MasterEntry entry(patients, database.db);
    ASSERT_TRUE(entry.open(u"1"_s));
    const Result<MasterUses> uses = entry.uses();
    ASSERT_TRUE(uses);
    EXPECT_EQ(uses->consents, 2); // another office's patient has the third
    EXPECT_TRUE(whyKept(patients, u"山田"_s, *uses).contains(u"2 件"));

    ASSERT_TRUE(entry.openNew());
    ASSERT_EQ(save(entry, whole).kind, MasterOutcome::Done);
    ASSERT_TRUE(entry.open(u"5"_s));
    EXPECT_TRUE(entry.uses()->none());
    // A consent that is entered meanwhile keeps the patient.
    database.run(
        u"INSERT INTO RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg, nHenkeiDouiDate)"
        " VALUES (1, 1, 5, 20260101, 0, 0)"_s);
    EXPECT_EQ(entry.remove({}).kind, MasterOutcome::Refused);
    database.run(u"DELETE FROM RIYOUSHA_DOUI_REC WHERE nIDNo = 5"_s);
    EXPECT_EQ(entry.remove({}).kind, MasterOutcome::Done);
    for (const QString &table : {u"RIYOUSHA"_s, u"RIYOUSHA_SUB"_s, u"DOUIKIROKU"_s})
        EXPECT_EQ(row(u"COUNT(*)"_s, table), u"0"_s) << table.toStdString();
}

TEST_F(PatientEntries, CounsellorsAndStaffAreAnOfficesOwnAndCountTheirPatients) {
    database.run(
        u"UPDATE RIYOUSHA SET nTantou3 = 1;"
        "INSERT INTO RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo) VALUES (1, 1, 1), (1, 1, 4), (1, 2, 1);"
        "UPDATE RIYOUSHA_SUB SET iSoudaninId = 1"_s);
    for (const MasterKind kind : {MasterKind::Counsellor, MasterKind::Staff}) {
        const MasterDescription here = describeMaster(kind, {1, 1});
        const MasterDescription there = describeMaster(kind, {1, 2});
        MasterEntry mine(here, database.db), other(there, database.db);
        ASSERT_TRUE(mine.openNew() && other.openNew());
        EXPECT_EQ(mine.code() + other.code(), u"11"_s);
        EXPECT_EQ(save(mine, {{u"cName"_s, u"此方"_s}, {u"iChusiFlg"_s, u"1"_s}}).kind, MasterOutcome::Done);
        EXPECT_EQ(save(other, {{u"cName"_s, u"彼方"_s}}).kind, MasterOutcome::Done);
        const auto rows = readRows(database.db, masterListSql(kind, {1, 1}));
        ASSERT_TRUE(rows && rows->rowCount() == 1);
        EXPECT_EQ(rows->text(0, rows->column(u"name")) + rows->text(0, rows->column(u"state")),
                  u"此方休止"_s);
        ASSERT_TRUE(mine.open(u"1"_s));
        EXPECT_EQ(mine.uses()->patients, 3);
    }
}

// A suite's database may lack a birthday.
TEST_F(PatientEntries, PatientsAreEnteredWithoutOptionalColumns) {
    database.run(u"DROP INDEX IX_RIYOUSHA_CAREMANE"_s);
    for (const OptionalColumn &column : optionalColumns())
        database.run(u"ALTER TABLE %1 DROP COLUMN %2"_s.arg(column.table, column.column));
    MasterEntry entry(patients, database.db);
    ASSERT_TRUE(entry.openNew());
    ASSERT_EQ(save(entry, {{u"cName"_s, u"青木"_s}, {u"tSyoryoDay"_s, u"2026/11/01"_s}}).kind,
              MasterOutcome::Done);
    EXPECT_EQ(database.value(u"SELECT cName FROM RIYOUSHA WHERE tSyoryoDay = '2026/11/01'"_s), u"青木"_s);
    const auto rows = readRows(database.db, masterListSql(MasterKind::Patient, {1, 1}));
    EXPECT_TRUE(rows && rows->rowCount() == 4) << qPrintable(rows.reason());
}
