#include "db/tables/masters/caremane.h"
#include "db/tables/masters/doctor.h"
#include "db/tables/masters/sisetsu.h"
#include "tests/support/test_database.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Patient 1 has doctor 12 and second doctor 13, patient 2 the other way round, patient 3 none.
class Copies : public testing::Test {
protected:
    void SetUp() override {
        database.run(
            u"insert into RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, nDouiIsiCd, nSisetsuCd, nCareManeCd) values"
            u" (1, 1, 1, 12, 5, 7), (1, 1, 2, 13, 6, 8), (1, 1, 3, Null, Null, Null)"_s);
        database.run(u"insert into RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo, iIsiCd2) values"
                     u" (1, 1, 1, '13'), (1, 1, 2, '12'), (1, 1, 3, Null)"_s);
        database.run(u"insert into DOCTOR (cIDNo, iSisetsuCode) values ('12', 5), ('13', 6)"_s);
        database.run(
            u"insert into CAREMANE (nIDNo, nSisetsuCode, cMobNo) values (7, 5, '090'), (8, 6, '080')"_s);
        database.run(
            u"insert into SOUDAN (iKyotenCd, iKyotenEb, nIDNo, nSisetsuCode) values (1, 1, 7, 5), (1, 1, 8, 6)"_s);
        database.run(u"update RIYOUSHA set cPcName = 'OLD'"_s);

        doctor.cIDNo = u"12"_s;
        doctor.cName = u"𠮷田'"_s;
        doctor.cKikan = u"東病院"_s;
        doctor.cAddress1 = u"中央区"_s;
        facility.nIDNo = 5;
        facility.cShamei1 = u"東苑"_s;
        facility.cAddress1 = u"中央区1-2"_s;
        facility.cAddress2 = u"東ビル"_s;
        facility.cTelNo = u"03-1"_s;
        careManager.nIDNo = 7;
        careManager.cName = u"鈴木"_s;
        doctors.iInit(db);
        facilities.iInit(db);
        careManagers.iInit(db);
    }

    /// A column as the connection sees it, within its transaction too.
    QString column(const QString &sql) {
        Recordset rows;
        EXPECT_EQ(db.iOpenRecSet(rows, sql), 0) << db.sErrMsg().toStdString();
        QStringList cells;
        for (int row = 0; row < rows.rowCount(); ++row)
            cells += rows.isNull(row, 0) ? u"Null"_s : rows.text(row, 0);
        return cells.join(u' ');
    }

    TestDatabase database;
    cT_ADODB &db = database.db;
    cD_DOCTOR doctor;
    cD_SISETSU facility;
    cD_CAREMANE careManager;
    cT_DOCTOR doctors;
    cT_SISETSU facilities;
    cT_CAREMANE careManagers;
};

TEST_F(Copies, ReachTheRowsThatNameTheMasterAndNoOthers) {
    const auto doctorOp = [&] { return doctors.iDataUpdate_ToRiyousha(&doctor); };
    const auto home = [&] { return facilities.iDataUpdate_ToRiyousha(&facility); };
    const auto institution = [&] { return facilities.iDataUpdate_ToRiyousha_Iryou(&facility); };
    const auto toCareManager = [&] { return facilities.iDataUpdate_ToCareMane(&facility); };
    const auto toCounsellor = [&] { return facilities.iDataUpdate_ToSoudan(&facility); };
    const auto careManagerName = [&] { return careManagers.iDataUpdate_ToRiyousha(&careManager); };
    const struct {
        std::function<short()> copy;
        QString table;
        QString column;
        QString values; ///< of the rows in order
    } cases[] = {
        {doctorOp, u"RIYOUSHA"_s, u"cDouiIsiName1"_s, u"𠮷田' Null Null"_s},
        {doctorOp, u"RIYOUSHA"_s, u"cDouiIsiName2"_s, u"Null 𠮷田' Null"_s},
        {doctorOp, u"RIYOUSHA"_s, u"cDouiIsiKikan1"_s, u"東病院 Null Null"_s},
        {doctorOp, u"RIYOUSHA"_s, u"cDouiIsiAdd2"_s, u"Null 中央区 Null"_s},
        {home, u"RIYOUSHA"_s, u"cSisetsuName"_s, u"東苑 Null Null"_s},
        {home, u"RIYOUSHA"_s, u"cSisetsuAddress"_s, u"中央区1-2東ビル Null Null"_s},
        {institution, u"RIYOUSHA"_s, u"cDouiIsiKikan1"_s, u"東苑 Null Null"_s},
        {institution, u"RIYOUSHA"_s, u"cDouiIsiKikan2"_s, u"Null 東苑 Null"_s},
        {toCareManager, u"CAREMANE"_s, u"cAdress2"_s, u"東ビル Null"_s},
        {toCareManager, u"CAREMANE"_s, u"cTelNo"_s, u"03-1 Null"_s},
        {toCareManager, u"CAREMANE"_s, u"cMobNo"_s, u"090 080"_s},
        {toCounsellor, u"SOUDAN"_s, u"cAdress1"_s, u"中央区1-2 Null"_s},
        {careManagerName, u"RIYOUSHA"_s, u"cCareManeName"_s, u"鈴木 Null Null"_s},
    };
    for (const auto &c : cases) {
        ASSERT_EQ(db.iBeginTrans(), 0);
        EXPECT_EQ(c.copy(), 0) << doctors.sErrMsg().toStdString() << facilities.sErrMsg().toStdString();
        EXPECT_EQ(column(u"select %1 from %2 order by nIDNo"_s.arg(c.column, c.table)), c.values)
            << c.column.toStdString();
        // The caller's transaction: nothing stays when it is rolled back.
        ASSERT_EQ(db.iRollback(), 0);
        EXPECT_FALSE(column(u"select %1 from %2"_s.arg(c.column, c.table)).contains(u"東"_s));
    }
}

TEST_F(Copies, SignTheRowsThatTheyWrite) {
    ASSERT_EQ(careManagers.iDataUpdate_ToRiyousha(&careManager), 0);
    EXPECT_EQ(column(u"select cPcName from RIYOUSHA order by nIDNo"_s),
              db.csGetComputerName() + u" OLD OLD"_s);
    EXPECT_EQ(database.value(u"select count(*) from RIYOUSHA where tUpDateTime is not Null"_s), u"1"_s);
}

TEST_F(Copies, RefuseAMissingRecord) {
    EXPECT_EQ(doctors.iDataUpdate_ToRiyousha(nullptr), -1);
    EXPECT_EQ(doctors.sErrMsg(), u"DOCTORが無効です。"_s);
    EXPECT_EQ(facilities.iDataUpdate_ToSoudan(nullptr), -1);
    EXPECT_EQ(facilities.sErrMsg(), u"SISETSUが無効です。"_s);
    EXPECT_EQ(careManagers.iDataUpdate_ToRiyousha(nullptr), -1);
    EXPECT_EQ(careManagers.sErrMsg(), u"CAREMANEが無効です。"_s);
}

// A code that is no number cannot stand in a patient's number column, where text would compare as 0.
TEST_F(Copies, ADoctorWithoutNumberReachesNoPatient) {
    database.run(u"update RIYOUSHA set nDouiIsiCd = 0 where nIDNo = 3"_s);
    doctor.cIDNo = u"X1"_s;
    ASSERT_EQ(doctors.iDataUpdate_ToRiyousha(&doctor), 0);
    EXPECT_EQ(column(u"select cDouiIsiName1 from RIYOUSHA"_s), u"Null Null Null"_s);
}

} // namespace
