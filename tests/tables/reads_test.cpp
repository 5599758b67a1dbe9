#include "db/tables/masters/caremane.h"
#include "db/tables/masters/code.h"
#include "db/tables/masters/doctor.h"
#include "db/tables/masters/kyoten.h"
#include "db/tables/masters/shinseisyo.h"
#include "db/tables/masters/sisetsu.h"
#include "db/tables/masters/soudan.h"
#include "db/tables/masters/staff.h"
#include "db/tables/patient/riyousha.h"
#include "db/tables/patient/riyousha_doui_rec.h"
#include "tests/support/test_database.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Reads : testing::Test {
    TestDatabase database;
    cT_ADODB &db = database.db;
};

template <class R, class T> QString list(const std::vector<R> &records, T R::*member) {
    QStringList texts;
    for (const R &record : records) {
        if constexpr (std::is_same_v<T, QString>)
            texts += record.*member;
        else
            texts += QString::number(record.*member);
    }
    return texts.join(u' ');
}

TEST_F(Reads, CodesInUseInTheirOrder) {
    database.run(
        u"insert into CODE (iBunrui, nIDNo, nIDIndex, iUseFlg, cName) values"
        u" (2, 1, 1, 0, 'a'), (1, 9, 2, Null, 'b'), (1, 9, 1, 0, 'c'), (1, 3, 5, 0, 'd'), (1, 3, 1, 1, 'e')"_s);
    cT_CODE codes;
    codes.iInit(db);
    const struct {
        std::function<short()> read;
        QString names;
    } cases[] = {
        {[&] { return codes.iDataReadGrid(); }, u"d c b a"_s},
        {[&] { return codes.iDataReadGridBunrui(1); }, u"d c b"_s},
        {[&] { return codes.iDataReadGridBunrui(7); }, u""_s},
        {[&] { return codes.iDataReadGridBunrui_OrderIndex(1, 9); }, u"c b"_s},
        {[&] {
             const cD_CODE suspended{1, 3, {}, 1, {}, {}};
             return codes.iDataRead(&suspended);
         },
         u""_s},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(c.read(), 0);
        EXPECT_EQ(list(codes.records(), &cD_CODE::cName), c.names);
    }
    qint32 highest = 0;
    EXPECT_EQ(codes.iGetMaxIDNo(highest, 1), 0);
    EXPECT_EQ(highest, 9);
    EXPECT_EQ(codes.iGetMaxIndexNo(highest, 1), 0);
    EXPECT_EQ(highest, 5);
    EXPECT_EQ(codes.iGetMaxIDNo(highest, 3), 0);
    EXPECT_EQ(highest, 0);
}

TEST_F(Reads, DoctorsByTheFilterInTheOrderOfTheirNumbers) {
    database.run(u"insert into SISETSU (nIDNo, cShamei1, cShameiKana1) values (5, '東病院', 'ヒガシ')"_s);
    database.run(u"insert into DOCTOR (cIDNo, cName, cNameKana, cKikan, iSisetsuCode) values"
                 u" ('10', '山田''一', 'ヤマダ', '東病院', 5), ('9', '山本', 'ヤマモト', '西医院', Null),"
                 u" ('100', '佐藤', 'サトウ', '東病院', 5)"_s);
    cT_DOCTOR doctors;
    doctors.iInit(db);
    const auto filter = [](auto set) {
        cD_DOCTOR doctor;
        set(doctor);
        return doctor;
    };
    const struct {
        const char *name;
        cD_DOCTOR filter;
        QString codes;
    } cases[] = {
        {"none", {}, u"9 10 100"_s},
        {"name with a quote", filter([](cD_DOCTOR &d) { d.cName = u"田'"_s; }), u"10"_s},
        {"kana in half width", filter([](cD_DOCTOR &d) { d.cNameKana = u"ﾔﾏ"_s; }), u"9 10"_s},
        {"institution", filter([](cD_DOCTOR &d) { d.cKikan = u"病院"_s; }), u"10 100"_s},
        {"facility and name", filter([](cD_DOCTOR &d) { d.nSisetsuCd = 5, d.cName = u"佐"_s; }), u"100"_s},
        {"number alone", filter([](cD_DOCTOR &d) { d.cIDNo = u"009"_s, d.cName = u"佐"_s; }), u"9"_s},
        {"no number", filter([](cD_DOCTOR &d) { d.cIDNo = u"x' or 1=1 --"_s; }), u""_s},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(doctors.iDataReadGrid(&c.filter), 0) << c.name << doctors.sErrMsg().toStdString();
        EXPECT_EQ(list(doctors.records(), &cD_DOCTOR::cIDNo), c.codes) << c.name;
    }
    const cD_DOCTOR key = filter([](cD_DOCTOR &d) { d.cIDNo = u"10"_s; });
    ASSERT_EQ(doctors.iDataRead(&key), 0);
    ASSERT_EQ(doctors.nデータ数(), 1);
    EXPECT_EQ(doctors.clsDOCTOR(0)->SISETSUSHAMEI, u"東病院"_s);
    EXPECT_EQ(doctors.clsDOCTOR(0)->SISETSUSHAMEIKANA, u"ヒガシ"_s);
    qint64 highest = 0;
    EXPECT_EQ(doctors.iGetMaxIDNo(highest), 0);
    EXPECT_EQ(highest, 100);
    database.run(u"insert into DOCTOR (cIDno) values ('9876543210')"_s);
    EXPECT_EQ(doctors.iGetMaxIDNo(highest), 0);
    EXPECT_EQ(highest, 9876543210);
}

// The entry shows what the join gives for the row as it is now, not what the record carried.
TEST_F(Reads, AnUpdatedEntryReadsItsJoinsAgain) {
    database.run(u"insert into SISETSU (nIDNo, cShamei1, cSisetsuType, cAddress1) values"
                 u" (5, '東苑', '施設', 'A'), (6, '西支援', '居宅', 'B')"_s);
    database.run(u"insert into CAREMANE (nIDNo, nSisetsuCode) values (1, 5)"_s);
    cT_CAREMANE careManagers;
    careManagers.iInit(db);
    ASSERT_EQ(careManagers.iDataReadGrid(), 0);
    ASSERT_EQ(careManagers.nデータ数(), 1);
    EXPECT_EQ(careManagers.clsCAREMANE(0)->SISETSUSHAMEI, u"東苑"_s);
    EXPECT_TRUE(careManagers.clsCAREMANE(0)->JIGYOSYOSHAMEI.isNull());

    cD_CAREMANE changed = *careManagers.clsCAREMANE(0);
    changed.iJigyosyoCode = 6;
    changed.nSisetsuCode.setNull();
    ASSERT_EQ(careManagers.iDataUpdate(&changed, 0, true), 0) << careManagers.sErrMsg().toStdString();
    const cD_CAREMANE &entry = *careManagers.clsCAREMANE(0);
    EXPECT_TRUE(entry.SISETSUSHAMEI.isNull());
    EXPECT_EQ(entry.JIGYOSYOSHAMEI + entry.JIGYOSYOSHURUI + entry.JIGYOSYOADD1, u"西支援居宅B"_s);
}

TEST_F(Reads, AnUpdateOfARowThatIsGoneLeavesTheEntry) {
    database.run(u"insert into SISETSU (nIDNo, cShamei1) values (5, '東苑')"_s);
    cT_SISETSU facilities;
    facilities.iInit(db);
    ASSERT_EQ(facilities.iDataReadGrid(), 0);
    database.run(u"delete from SISETSU"_s);
    cD_SISETSU changed = *facilities.clsSisetsu(0);
    changed.cShamei1 = u"西苑"_s;
    EXPECT_EQ(facilities.iDataUpdate(&changed, 0, true), 0);
    EXPECT_EQ(facilities.affectedRows(), 0);
    EXPECT_EQ(facilities.clsSisetsu(0)->cShamei1, u"東苑"_s);
}

TEST_F(Reads, StaffByBranch) {
    database.run(u"insert into KYOTEN (iKyotenCd, iKyotenEb, cKyotenName, iUsedFlg) values"
                 u" (1, 0, '本部', 1), (1, 1, '東', 1), (1, 2, '西', 2), (1, 3, '旧', 0)"_s);
    database.run(u"insert into STAFF (iKyotenCd, iKyotenEb, nIDNo, cName, iChusiFlg) values"
                 u" (1, 2, 1, '乙', 0), (1, 1, 8, '甲', Null), (1, 1, 3, '丙', 1)"_s);
    cT_STAFF staff;
    staff.iInit(db);
    ASSERT_EQ(staff.iDataReadGrid({1, 1}), 0) << staff.sErrMsg().toStdString();
    EXPECT_EQ(list(staff.records(), &cD_STAFF::nIDNo), u"3 8"_s);
    EXPECT_EQ(staff.clsSTAFF(0)->cKyotenName, u"東"_s);
    ASSERT_EQ(staff.iDataReadGrid_AllKyoten(), 0);
    EXPECT_EQ(list(staff.records(), &cD_STAFF::nIDNo), u"3 8 1"_s);
    qint32 highest = 0;
    EXPECT_EQ(staff.iGetMaxIDNo(highest, {1, 1}), 0);
    EXPECT_EQ(highest, 8);

    const struct {
        Branch branch;
        qint32 nIDNo;
        QString name;
        bool taken, exists;
    } cases[] = {
        {{1, 1}, 8, u"甲"_s, false, true},
        {{1, 1}, 9, u"甲"_s, true, false},
        {{1, 2}, 8, u"甲"_s, false, false},
        {{1, 1}, 3, u"O'Neil"_s, false, true},
    };
    for (const auto &c : cases) {
        cD_STAFF member;
        member.iKyotenId = c.branch.iKyotenCd;
        member.iKyotenEb = c.branch.iKyotenEb;
        member.nIDNo = c.nIDNo;
        member.cName = c.name;
        bool taken = !c.taken;
        bool exists = !c.exists;
        EXPECT_EQ(staff.iChkStaffName(&member, taken), 0) << staff.sErrMsg().toStdString();
        EXPECT_EQ(staff.iDataIdentChk(&member, exists), 0) << staff.sErrMsg().toStdString();
        EXPECT_EQ(taken, c.taken) << c.nIDNo;
        EXPECT_EQ(exists, c.exists) << c.nIDNo;
    }

    cT_KYOTEN branches;
    branches.iInit(db);
    ASSERT_EQ(branches.iDataReadGrid(), 0);
    EXPECT_EQ(list(branches.records(), &cD_KYOTEN::cKyotenName), u"東 西"_s);
}

TEST_F(Reads, PatientsAndTheirConsents) {
    database.run(
        u"insert into RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, iTenki) values"
        u" (1, 1, 5, Null), (1, 1, 1, 1), (1, 1, 2, 2), (1, 1, 3, 3), (1, 1, 4, 15), (1, 2, 2, 0)"_s);
    database.run(u"insert into RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg, "
                 u"nHenkeiDouiDate) values"
                 u" (1, 1, 2, 20260401, 1, 20260501), (1, 1, 2, 20260401, 0, 0), (1, 1, 2, 20251001, 0, 0),"
                 u" (1, 1, 2, 20260401, 1, 20260402), (1, 1, 5, 20260101, 0, 0)"_s);
    cT_RIYOUSHA patients;
    patients.iInit(db);
    ASSERT_EQ(patients.iDataReadGrid({1, 1}), 0) << patients.sErrMsg().toStdString();
    EXPECT_EQ(patients.nデータ数(), 5);
    ASSERT_EQ(patients.iDataReadGrid_Douisho({1, 1}), 0) << patients.sErrMsg().toStdString();
    ASSERT_EQ(patients.nデータ数(), 2);
    EXPECT_EQ(patients.clsRIYOUSHA(0)->nIDNo, 2);
    EXPECT_TRUE(patients.clsRIYOUSHA(1)->iTenki.isNull());
    ASSERT_EQ(patients.iDataRead(PatientKey{1, 2, 2}), 0);
    EXPECT_EQ(patients.nデータ数(), 1);

    cT_RIYOUSHA_DOUI_REC consents;
    consents.iInit(db);
    ASSERT_EQ(consents.iDataReadGrid({1, 1, 2}), 0) << consents.sErrMsg().toStdString();
    EXPECT_EQ(list(consents.records(), &cD_RIYOUSHA_DOUI_REC::nHenkeiDouiDate), u"0 0 20260402 20260501"_s);
    const ConsentRowKey key = consents.clsRIYOUSHA_DOUI_REC(2)->key();
    ASSERT_EQ(consents.iDataRead(key), 0);
    ASSERT_EQ(consents.nデータ数(), 1);
    EXPECT_EQ(consents.clsRIYOUSHA_DOUI_REC(0)->key(), key);
}

} // namespace
