// Which patients the list shows, and in which order.

#include "tests/list/list_fixture.h"

using namespace Qt::Literals::StringLiterals;

class ListQueryTest : public ListTest {};

TEST_F(ListQueryTest, ShowsNewestConsentsThatEndInTheRange) {
    patient(1, u"境の初日"_s, u"ｱ"_s);
    consent(1, u"2026/11/01"_s);
    patient(2, u"境の末日"_s, u"ｲ"_s);
    consent(2, u"2027/04/30"_s);
    patient(3, u"前日"_s, u"ｳ"_s);
    consent(3, u"2026/10/31"_s);
    patient(4, u"翌日"_s, u"ｴ"_s);
    consent(4, u"2027/05/01"_s);
    patient(5, u"古い同意"_s, u"ｵ"_s);
    consent(5, u"2026/12/31"_s, u"iNewestFlg = 0"_s);
    patient(6, u"同意なし"_s, u"ｶ"_s);
    patient(7, u"二種"_s, u"ｷ"_s);
    consent(7, u"2026/12/31"_s);
    consent(7, u"2026/12/31"_s, u"iHenkeiFlg = 1, nHenkeiDouiDate = 20260601"_s);
    patient(8, u"他拠点"_s, u"ｸ"_s);
    consent(8, u"2026/12/31"_s);
    database.run(u"UPDATE RIYOUSHA SET iKyotenEb = 2 WHERE nIDNo = 8;"
                 "UPDATE RIYOUSHA_DOUI_REC SET iKyotenEb = 2 WHERE nIDNo = 8"_s);
    list.filter().order = ListOrder::Patient;

    EXPECT_EQ(found(), QStringList({u"1"_s, u"2"_s, u"7"_s, u"7h"_s}));
    list.filter().view = ListView::History;
    EXPECT_EQ(found(), QStringList({u"5"_s}));
}

TEST_F(ListQueryTest, EachFilterKeepsItsRowsOnly) {
    patient(1, u"全部に合う"_s, u"ｱ"_s,
            u"nTantou = 5, cHokenNo = '0612', tExpireDay = NULL, iTenki = NULL"_s);
    consent(1, u"2026/12/31"_s, u"cItiranBikou = 'FAX　で 依頼', iDouiShubetsu = 1"_s);
    patient(2, u"何にも合わない"_s, u"ｲ"_s, u"iSejutsuKubun = 1, nTantou2 = 5, cHokenNo = '0613'"_s);
    consent(2, u"2026/12/31"_s, u"cIsiCd = '2', cItiranBikou = 'O''Brien'"_s);
    database.run(u"INSERT INTO RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo, iAddressSisetsuCd2, iSoudaninId)"
                 " VALUES (1, 1, 1, 20, 9), (1, 1, 2, 10, 8)"_s);
    for (const int outcome : {1, 3, 15, 2}) {
        patient(10 + outcome, u"転帰"_s, u"ｳ"_s, u"iTenki = %1"_s.arg(outcome));
        consent(10 + outcome, u"2026/12/31"_s, u"cIsiCd = '2'"_s);
    }
    patient(30, u"終了"_s, u"ｴ"_s, u"tExpireDay = '2026/10/01'"_s);
    consent(30, u"2026/12/31"_s, u"cIsiCd = '2'"_s);
    list.filter().order = ListOrder::Patient;
    EXPECT_EQ(found(), QStringList({u"1"_s, u"2"_s, u"12"_s}));

    const ListFilter plain = list.filter();
    const auto with = [&](auto change) {
        list.filter() = plain;
        change(list.filter());
        return found();
    };
    const QStringList one{u"1"_s};
    EXPECT_EQ(with([](auto &f) { f.doctor = u"1"_s; }), one);
    EXPECT_EQ(with([](auto &f) { f.hospital = 10; }), one);
    EXPECT_EQ(with([](auto &f) { f.facility = 20; }), one);
    EXPECT_EQ(with([](auto &f) { f.staff = 5; }), one);
    EXPECT_EQ(with([](auto &f) { f.insurer = u"0612"_s; }), one);
    EXPECT_EQ(with([](auto &f) { f.counsellor = 9; }), one);
    EXPECT_EQ(with([](auto &f) { f.patient = 1; }), one);
    EXPECT_EQ(with([](auto &f) { f.procedure = Procedure::Oral; }), one);
    EXPECT_EQ(with([](auto &f) { f.requestMethod = u"で依"_s; }), one) << "blanks in the remark are ignored";
    EXPECT_EQ(with([](auto &f) { f.requestMethod = u"O'B"_s; }), QStringList{u"2"_s});
    EXPECT_EQ(with([](auto &f) { f.doctor = u"1' OR '1'='1"_s; }), QStringList());
    EXPECT_EQ(with([](auto &f) { f.kind = TreatmentKind::Acupuncture; }), QStringList{u"2"_s});
    EXPECT_EQ(with([](auto &f) { f.ended = true; }), QStringList({u"1"_s, u"2"_s, u"12"_s, u"30"_s}));
}

// Patient 1: doctor 1 only. 2: doctor 2. 3: doctor 1, but the later consent is of the second doctor, 2.
TEST_F(ListQueryTest, SortsByEachOrder) {
    patient(1, u"甲"_s, u"ｳ"_s, u"tDouiDay1 = '2026/05/01'"_s);
    consent(1, u"2026/12/31"_s);
    patient(2, u"乙"_s, u"い"_s);
    consent(2, u"2026/12/31"_s, u"cIsiCd = '2'"_s);
    patient(3, u"丙"_s, u"ア"_s, u"tDouiDay1 = '2026/05/01', tDouiDay2 = '2026/06/01'"_s);
    consent(3, u"2026/12/30"_s);
    database.run(u"INSERT INTO RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo, iIsiCd2) VALUES (1, 1, 3, '2')"_s);
    struct Case {
        ListOrder order;
        PatientOrder patients;
        QStringList expected;
    };
    const Case cases[] = {
        {ListOrder::HospitalAndDoctor, PatientOrder::Number, {u"1"_s, u"3"_s, u"2"_s}},
        {ListOrder::HospitalAndDoctor, PatientOrder::Kana, {u"3"_s, u"1"_s, u"2"_s}},
        {ListOrder::HospitalKana, PatientOrder::Number, {u"2"_s, u"3"_s, u"1"_s}},
        {ListOrder::HospitalKana, PatientOrder::Kana, {u"3"_s, u"2"_s, u"1"_s}},
        {ListOrder::Patient, PatientOrder::Number, {u"1"_s, u"2"_s, u"3"_s}},
        {ListOrder::Patient, PatientOrder::Kana, {u"3"_s, u"2"_s, u"1"_s}},
        {ListOrder::EndSoonest, PatientOrder::Number, {u"3"_s, u"1"_s, u"2"_s}},
    };
    for (const Case &c : cases) {
        list.filter().order = c.order;
        list.filter().patientOrder = c.patients;
        EXPECT_EQ(found(), c.expected) << int(c.order) << '/' << int(c.patients);
    }
    list.filter().order = ListOrder::LaterDoctor;
    list.filter().patientOrder = PatientOrder::Kana;
    const QStringList byDoctor = found();
    EXPECT_LT(byDoctor.indexOf(u"3"_s), byDoctor.indexOf(u"2"_s)) << "3 and 2 share the institution";
    EXPECT_EQ(qAbs(byDoctor.indexOf(u"3"_s) - byDoctor.indexOf(u"2"_s)), 1);
}

TEST_F(ListQueryTest, JumpWidensTheRangeToThePatient) {
    patient(1, u"先"_s, u"ｱ"_s, u"tDouiKaryoE1 = '2025/01/31', tDouiKaryoE2 = '2027/08/15'"_s);
    patient(2, u"期間なし"_s, u"ｲ"_s);
    QString warning;
    ListFilter filter = list.filter();
    ASSERT_EQ(list.iJumpTo(1, filter, &warning), 0);
    EXPECT_EQ(warning, QString());
    EXPECT_EQ(filter.from, QDate(2026, 11, 1));
    EXPECT_EQ(filter.to, QDate(2027, 8, 31));
    EXPECT_EQ(filter.patient, 1);

    ASSERT_EQ(list.iJumpTo(2, filter, &warning), 0);
    EXPECT_EQ(warning, u"該当する利用者には要加療期間の入力がないため表示できません。"_s);
    ASSERT_EQ(list.iJumpTo(99, filter, &warning), 0);
    EXPECT_EQ(warning, u"該当する利用者データがありません。"_s);
}

TEST_F(ListQueryTest, WrongRangeIsExplained) {
    ListFilter filter;
    EXPECT_FALSE(whyRangeIsWrong(filter).isEmpty());
    filter.setDefaultRange(QDate(2026, 11, 21));
    EXPECT_TRUE(whyRangeIsWrong(filter).isEmpty());
    filter.to = filter.from.addDays(-1);
    EXPECT_EQ(whyRangeIsWrong(filter),
              u"対象期間の終了月は開始月以前に設定できません。\r\n対象期間を設定しなおしてください。"_s);
}
