#include "search/master_query.h"
#include "search/patient_search_query.h"
#include "search/search_conditions.h"
#include "search/staff_search_query.h"

#include "tests/support/test_database.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const Branch Office{1, 2};
const QDate Today(2026, 11, 21);

/// The texts of one column, joined by blanks.
QString column(cT_ADODB &db, const QString &sql, QStringView name = u"nIDNo") {
    Recordset rows;
    EXPECT_EQ(db.iOpenRecSet(rows, sql), 0) << db.sErrMsg().toStdString();
    QStringList cells;
    for (int row = 0; row < rows.rowCount(); ++row)
        cells << rows.text(row, rows.column(name));
    return cells.join(u' ');
}

} // namespace

TEST(PatientSearchSql, FindsWhomItShould) {
    TestDatabase database;
    const auto patient = [&](int number, const QString &name, const QString &kana, const QString &expires,
                             const QString &more = u"0, 0, 0"_s, const QString &office = u"1, 2"_s) {
        database.run(
            u"INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, cTelNo, tExpireDay,"
            " iSejutsuKubun, nTantou, nTantou5) VALUES (%1, %2, '%3', '%4', '03-%2', %5, %6)"_s.arg(office)
                .arg(number)
                .arg(name, kana, expires, more));
    };
    patient(3, u"山田"_s, u"ヤマダ"_s, u"NULL"_s);
    patient(1, u"O''Brien"_s, u"オブライエン"_s, u"'2026/11/21'"_s, u"1, 7, 0"_s);
    patient(2, u"100%"_s, u"ﾔﾏｶﾞﾀ"_s, u"'2026/11/20'"_s, u"0, 0, 7"_s);
    patient(4, u"山_田"_s, u"ヤマナシ"_s, u"'2026/03/01'"_s);
    patient(5, u"山本"_s, u"ヤマモト"_s, u"'2026/02/28'"_s);
    patient(6, u"他拠点"_s, u"タキョテン"_s, u"NULL"_s, u"0, 7, 0"_s, u"9, 1"_s);

    struct Case {
        PatientConditions conditions;
        QString numbers;
        bool allOffices = false;
    };
    const Case cases[] = {
        {{}, u"1 3"_s},
        {{.ended = true}, u"1 2 3 4 5"_s},
        {{.endMonth = QDate(2026, 3, 1)}, u"1 2 3 4"_s},
        // The alternatives of the end date must not let others past the further conditions.
        {{.name = u"山"_s, .endMonth = QDate(2026, 3, 1)}, u"3 4"_s},
        {{.number = 5, .endMonth = QDate(2026, 3, 1)}, u""_s},
        {{.kana = u"やまだ"_s}, u"3"_s},
        {{.kana = u"ヤマ"_s, .ended = true}, u"2 3 4 5"_s},
        {{.name = u"O'B"_s}, u"1"_s},
        {{.name = u"'"_s, .ended = true}, u"1"_s},
        {{.name = u"%"_s, .ended = true}, u"1 2 3 4 5"_s},
        {{.name = u"山_"_s, .ended = true}, u"3 4 5"_s},
        {{.tel = u"03-4"_s, .ended = true}, u"4"_s},
        {{.staff = 7, .ended = true}, u"1 2"_s},
        {{.staff = 7, .ended = true}, u"1 2 6"_s, true},
        {{.kind = 1}, u"1"_s},
    };
    for (const Case &c : cases)
        EXPECT_EQ(column(database.db, patientListSql(c.conditions, Office, c.allOffices, Today)), c.numbers)
            << conditionSummary(c.conditions).toStdString();
}

TEST(PatientSearch, SaysItsConditions) {
    EXPECT_EQ(conditionSummary(PatientConditions{.endMonth = Today}), u"抽出条件："_s);
    EXPECT_EQ(conditionSummary(PatientConditions{.name = u"山"_s,
                                                 .kana = u"や"_s,
                                                 .tel = u"03"_s,
                                                 .staff = 7,
                                                 .kind = 0,
                                                 .number = 12,
                                                 .ended = true}),
              u"抽出条件： 名称（全文一致）=山 かな（全文一致）=や TEL（全文一致）=03 施術終了患者表示 "
              " 担当施術者=7 施術区分=マッサージ 利用者ID=12"_s);
    EXPECT_EQ(conditionSummary(PatientConditions{.kind = 1}), u"抽出条件： 施術区分=鍼灸"_s);
    EXPECT_EQ(conditionSummary(StaffConditions{.kana = u"や"_s, .number = 3}),
              u"抽出条件： かな（全文一致）=や 担当施術者=3"_s);
}

TEST(StaffSearchSql, FindsWhomItShould) {
    TestDatabase database;
    database.run(
        u"INSERT INTO STAFF (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, iChusiFlg) VALUES"
        " (1, 2, 2, '佐藤', 'サトウ', NULL), (1, 2, 1, 'O''Hara', 'オハラ', 0),"
        " (1, 2, 3, '鈴木', 'スズキ', 1), (9, 1, 1, '他拠点', 'タキョテン', 0);"
        "INSERT INTO SOUDAN_TANTOU (nIDNo, iStaffKyotenCd, iStaffKyotenEb, nStaffIDNo) VALUES"
        " (8, 1, 2, 2), (8, 1, 2, 3), (8, 9, 1, 1), (5, 1, 2, 1);"
        "INSERT INTO KYOTEN (iKyotenCd, iKyotenEb, cKyotenName, iUsedFlg) VALUES"
        " (1, 0, '本部', 1), (1, 2, '東', 1), (1, 1, '西', 2), (2, 1, '旧', 0), (3, 1, '未定', NULL)"_s);
    struct Case {
        StaffConditions conditions;
        QString numbers;
    };
    const Case cases[] = {
        {{.office = Office}, u"1 2"_s},
        {{.suspended = true, .office = Office}, u"1 2 3"_s},
        {{.allOffices = true}, u"1 1 2"_s},
        {{.name = u"'"_s, .office = Office}, u"1"_s},
        {{.name = u"%"_s, .office = Office}, u"1 2"_s},
        {{.kana = u"さとう"_s, .office = Office}, u"2"_s},
        {{.number = 2, .office = Office}, u"2"_s},
        {{.office = Office, .consultation = 8}, u"2"_s},
        {{.suspended = true, .office = Office, .consultation = 8}, u"2 3"_s},
        {{.office = Office, .consultation = 77}, u""_s},
    };
    for (const Case &c : cases)
        EXPECT_EQ(column(database.db, staffListSql(c.conditions)), c.numbers)
            << staffListSql(c.conditions).toStdString();
    EXPECT_EQ(column(database.db, officeListSql(false), u"cKyotenName"), u"東"_s);
    EXPECT_EQ(column(database.db, officeListSql(true), u"cKyotenName"), u"西 東"_s);
}

TEST(MasterSql, ListsByCodeAndFindsOne) {
    TestDatabase database;
    database.run(
        u"INSERT INTO SISETSU (nIDNo, cShamei1) VALUES (10, '市民病院'), (9, '老人ホーム'), (11, '病院の寮');"
        "INSERT INTO RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo, iAddressSisetsuCd, iAddressSisetsuCd3)"
        " VALUES (1, 1, 1, 11, 11), (1, 1, 2, 0, 11);"
        "INSERT INTO DOCTOR (cIDNo, cName, iSisetsuCode) VALUES ('10', '乙', 10), ('9', '甲', 77), ('11', "
        "'丙', 11);"
        "INSERT INTO HOKENJA (cHokenNo, cHokenJName) VALUES ('00138016', '国保'), ('6', '協会');"
        "INSERT INTO SOUDAN (iKyotenCd, iKyotenEb, nIDNo, cName) VALUES (1, 2, 4, '相談'), (9, 1, 5, '他');"_s);
    struct Case {
        Master master;
        QString codes;
        QString typed;
        QString found;
    };
    const Case cases[] = {
        {Master::Doctor, u"9 10 11"_s, u"9"_s, u"9"_s},
        {Master::Doctor, u"9 10 11"_s, u"90"_s, u""_s},
        {Master::Hospital, u"10 11"_s, u"010"_s, u"10"_s},
        {Master::Hospital, u"10 11"_s, u"9"_s, u""_s},       // no doctor there
        {Master::LivingFacility, u"11 9"_s, u"9"_s, u"9"_s}, // where patients live first
        {Master::LivingFacility, u"11 9"_s, u"10"_s, u""_s}, // a clinic
        {Master::Facility, u"9 10 11"_s, u"10"_s, u"10"_s},
        {Master::Insurer, u"00138016 6"_s, u"00138016"_s, u"00138016"_s},
        {Master::Insurer, u"00138016 6"_s, u"138016"_s, u""_s},
        {Master::Counsellor, u"4"_s, u"4"_s, u"4"_s},
        {Master::Counsellor, u"4"_s, u"5"_s, u""_s}, // of another office
    };
    for (const Case &c : cases) {
        EXPECT_EQ(column(database.db, masterListSql(c.master, Office), u"code"), c.codes);
        EXPECT_EQ(column(database.db, masterRowSql(c.master, Office, c.typed), u"code"), c.found)
            << c.typed.toStdString();
    }
}
