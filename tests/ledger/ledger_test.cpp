// The consent ledger from a real database: what the sample, which is recomputed elsewhere, does not hold.

#include "app/base/codepage932.h"
#include "print/ledger/ledger.h"
#include "print/ledger/ledger_query.h"
#include "tests/support/test_database.h"

#include <QHash>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class LedgerTest : public testing::Test {
protected:
    LedgerTest() {
        for (int number = 1; number <= 4; ++number)
            database.run(
                u"INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName) VALUES (1, 1, %1, '利用者%1'),"
                " (2, 1, %1, '他の拠点')"_s.arg(number));
    }
    /// A newest consent from 2026/06/01 to 2026/11/30 unless `set` says otherwise, and its place in the
    /// order.
    void consent(int number, const QString &set = {}, int date = 20260601, short correction = 0) {
        const ConsentRowKey key{{1, 1, number}, date, correction, correction * date};
        database.run(u"INSERT INTO RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg,"
                     " nHenkeiDouiDate, iNewestFlg, tDouiDay, tDouiKaryoS, tDouiKaryoE) VALUES"
                     " (1, 1, %1, %2, %3, %4, 1, '2026/06/01', '2026/06/01', '2026/11/30')"_s.arg(number)
                         .arg(date)
                         .arg(correction)
                         .arg(key.nHenkeiDouiDate));
        if (!set.isEmpty())
            database.run(
                u"UPDATE RIYOUSHA_DOUI_REC SET %1 WHERE nIDNo = %2 AND nDate = %3 AND iHenkeiFlg = %4"_s
                    .arg(set)
                    .arg(number)
                    .arg(date)
                    .arg(correction));
        rows.push_back(key);
    }
    Ledger read(LedgerOrder order) {
        order.branch = {1, 1};
        Result<Ledger> ledger = readLedger(database.db, order);
        EXPECT_TRUE(ledger) << ledger.reason().toStdString();
        return ledger ? std::move(*ledger) : Ledger();
    }
    Ledger ofRows(LedgerPattern pattern = LedgerPattern::Patients, const Period &period = {}) {
        return read({.pattern = pattern, .rows = rows, .period = period});
    }
    Ledger ofPatients(std::vector<qint32> patients) { return read({.patients = std::move(patients)}); }
    /// The patients of the lines, "2h" for a deformity row.
    static QString lines(const Ledger &ledger) {
        QStringList numbers;
        for (const LedgerRow &row : ledger.rows)
            numbers += QString::number(row.key.patient.nIDNo) + (row.isDeformity() ? u"h"_s : QString());
        return numbers.join(u' ');
    }
    /// The first record's cells by column.
    static QHash<QString, QString> cells(const Ledger &ledger) {
        const DataFile file = ledgerData(ledger.rows, {}, QDate(2026, 11, 21));
        const QStringList found = decode932(file.bytes()).split(u"\r\n"_s).value(1).split(u',');
        QHash<QString, QString> result;
        for (qsizetype i = 0; i < found.size(); ++i)
            result[ledgerColumns().value(i)] = found[i];
        return result;
    }

    TestDatabase database;
    std::vector<ConsentRowKey> rows;
};

TEST_F(LedgerTest, ListsPatientsOfWhomNothingIsKnown) {
    const Ledger ledger = ofPatients({3, 77, 1});
    EXPECT_EQ(lines(ledger), u"3 1"_s);
    EXPECT_EQ(ledger.gone, std::vector<size_t>{1});
    const auto cell = cells(ledger);
    EXPECT_EQ(cell.size(), 30);
    for (const auto &[column, text] : {std::pair(u"同意日"_s, u"\"同意日無\""_s),
                                       {u"依頼日"_s, u"\"依頼日無\""_s},
                                       {u"予備1"_s, u"\"予備１無\""_s},
                                       {u"予備2"_s, u"\"予備２無\""_s},
                                       {u"受取日"_s, u"\"受け取り日無\""_s},
                                       {u"同意書期限"_s, u"\"\""_s},
                                       {u"機関ID"_s, u"\"\""_s},
                                       {u"種別"_s, u"\"\""_s},
                                       {u"患者ID"_s, u"3"_s}})
        EXPECT_EQ(cell[column], text) << column.toStdString();
}

// A patient without a consent is asked for by the doctor of the patient's own row.
TEST_F(LedgerTest, NamesThePatientsOwnDoctorWithoutAConsent) {
    database.run(u"INSERT INTO DOCTOR (cIDno, cName, iSisetsuCode) VALUES ('5', '阿部', 50);"
                 "INSERT INTO SISETSU (nIDNo, cShamei1) VALUES (50, '中央病院');"
                 "UPDATE RIYOUSHA SET nDouiIsiCd = 5"_s);
    const auto cell = cells(ofPatients({1}));
    EXPECT_EQ(cell[u"医師ID"_s] + cell[u"医師名"_s] + cell[u"機関名"_s] + cell[u"機関ID"_s],
              u"\"5\"\"阿部\"\"中央病院\"\"50\""_s);
}

TEST_F(LedgerTest, TakesTheNewestConsentOfEachKind) {
    consent(2);
    consent(2, {}, 20260801, 1);
    consent(2, u"iNewestFlg = 0"_s, 20261001);
    consent(1, u"tDouiDay = '2026/03/01'"_s, 20260301);
    consent(1); // old data: two rows are marked
    consent(3, u"iKyotenCd = 2"_s);
    Ledger ledger = ofPatients({2, 1, 3});
    EXPECT_EQ(lines(ledger), u"2 2h 1 3"_s);
    EXPECT_EQ(ledger.rows[2].consentDay, QDate(2026, 6, 1));
    EXPECT_FALSE(ledger.rows[3].hasConsent()) << "of another branch";
    // The list hands over rows: exactly those, unless they have been followed.
    ledger = ofRows();
    EXPECT_EQ(lines(ledger), u"2 2h 1 1"_s);
    EXPECT_EQ(ledger.gone, (std::vector<size_t>{2, 5}));
}

TEST_F(LedgerTest, KeepsToThePeriodAskedFor) {
    const Period september{QDate(2026, 9, 1), QDate(2026, 9, 30)};
    consent(1);
    consent(2, u"tDouiKaryoS = '2026/12/01', tDouiKaryoE = '2026/08/01'"_s); // reversed
    consent(3, u"tDouiKaryoE = '2026/08/31'"_s);
    consent(4, u"tDouiKaryoS = Null, tDouiKaryoE = Null"_s);
    consent(1, u"tHenkeSday = '2026/10/01', tHenKeEday = '2026/10/31'"_s, 20260602, 1);
    consent(2, u"tHenkeSday = '2026/09/30', tHenKeEday = '2026/10/31'"_s, 20260602, 1);
    consent(4, u"tDouiKaryoS = Null"_s, 20260602, 1);
    const Ledger ledger = ofRows(LedgerPattern::Patients, september);
    EXPECT_EQ(lines(ledger), u"1 2 4 2h 4h"_s);
    EXPECT_EQ(withoutDeformityPeriod(ledger.rows), QStringList{u"4 利用者4"_s});
    EXPECT_EQ(ledgerData(ledger.rows, {}, {}).count(), 4) << "all but the one that is named";
    EXPECT_EQ(cells({{ledger.rows[0], ledger.rows[4]}, {}})[u"同意種別タイトル"_s], u"\"マッサージ\""_s);
    EXPECT_EQ(lines(ofRows(LedgerPattern::Patients, {{}, QDate(2026, 8, 1)})), u"1 2 3 4 4h"_s);
}

TEST_F(LedgerTest, SortsAsTheLayoutsGroup) {
    database.run(
        u"INSERT INTO DOCTOR (cIDno, cName, iSisetsuCode) VALUES ('9', '阿部', 10), ('10', '馬場', 10),"
        " ('2', '千葉', 9);"
        "INSERT INTO STAFF (iKyotenCd, iKyotenEb, nIDNo, cName) VALUES (1, 1, 7, '佐藤'), (1, 1, 8, '佐藤');"
        "UPDATE RIYOUSHA SET nTantou = CASE nIDNo WHEN 1 THEN 99 WHEN 2 THEN 8 WHEN 3 THEN 7 ELSE 8 END"_s);
    consent(4, u"cIsiCd = '10'"_s);
    consent(1, u"cDouiIsiKikan = '登録のない病院'"_s);
    consent(2, u"cIsiCd = '9'"_s);
    consent(3, u"cIsiCd = '2'"_s);
    EXPECT_EQ(lines(ofRows()), u"4 1 2 3"_s);
    EXPECT_EQ(lines(ofRows(LedgerPattern::Institutions)), u"3 2 4 1"_s);
    EXPECT_EQ(lines(ofRows(LedgerPattern::Staff)), u"3 4 2 1"_s) << "namesakes stay apart, nobody comes last";
}

// More patients than a statement takes numbers.
TEST_F(LedgerTest, LeavesOutWhatWasNotAskedForOfThousands) {
    database.run(u"WITH RECURSIVE n(i) AS (SELECT 100 UNION ALL SELECT i + 1 FROM n WHERE i < 3000)"
                 " INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName) SELECT 1, 1, i, 'x' FROM n"_s);
    std::vector<qint32> patients;
    for (qint32 number = 2999; number >= 200; number -= 2)
        patients.push_back(number);
    const Ledger ledger = ofPatients(patients);
    ASSERT_EQ(ledger.rows.size(), patients.size());
    for (size_t i = 0; i < patients.size(); ++i)
        ASSERT_EQ(ledger.rows[i].key.patient.nIDNo, patients[i]);
}

TEST_F(LedgerTest, TellsWhyItCannotBeRead) {
    database.run(u"DROP TABLE SISETSU"_s);
    const Result<Ledger> ledger = readLedger(database.db, {.branch = {1, 1}, .patients = {1}});
    ASSERT_FALSE(ledger);
    EXPECT_TRUE(ledger.reason().contains(u"SISETSU"_s)) << ledger.reason().toStdString();
}

TEST(LedgerSearchName, NamesTheFiltersThatWereSet) {
    const LedgerFilter filters[] = {{u"医師"_s, u"阿部　一"_s}, {u"施設"_s, {}}, {u"相談者"_s, u"千葉"_s}};
    EXPECT_EQ(ledgerSearchName(filters), u"医師：阿部　一　　相談者：千葉"_s);
    EXPECT_EQ(ledgerSearchName({}), QString());
}

} // namespace
