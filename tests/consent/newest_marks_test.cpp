#include "consent/record/renewal.h"

#include "tests/consent/consent_rows.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>
#include <random>

using namespace Qt::Literals::StringLiterals;

namespace {

// The marks as the office's rule words them, naively, on a table of their own.
void markByTheBook(const TestDatabase &database, const PatientKey &patient) {
    for (const int kind : {0, 1}) {
        const QString rows = u" WHERE nIDNo = %1 AND iHenkeiFlg = %2"_s.arg(patient.nIDNo).arg(kind);
        const QString found = database
                                  .rows(u"SELECT nDate, nHenkeiDouiDate FROM BOOK"_s + rows +
                                        u" AND iReceptDisabledFlg = 0 ORDER BY nDate DESC LIMIT 1"_s)
                                  .value(0);
        if (found.isEmpty())
            continue;
        database.run(u"UPDATE BOOK SET iNewestFlg = 0"_s + rows);
        database.run(u"UPDATE BOOK SET iNewestFlg = 1%1 AND nDate = %2"
                     " AND (iReceptDisabledFlg <> 1 OR iReceptDisabledFlg IS NULL)%3"_s.arg(
                         rows, found.section(u'|', 0, 0),
                         kind == 1 ? u" AND nHenkeiDouiDate = "_s + found.section(u'|', 1) : QString()));
    }
}

QStringList marks(const TestDatabase &database, const QString &table) {
    return database.rows(
        u"SELECT nIDNo, iHenkeiFlg, nDate, nHenkeiDouiDate, iNewestFlg FROM %1 ORDER BY 1, 2, 3, 4"_s.arg(
            table));
}

} // namespace

TEST(NewestMarks, AgreeWithTheRuleAppliedNaively) {
    TestDatabase database;
    std::mt19937 random(7);
    const auto pick = [&random](const QStringList &values) {
        return values[qsizetype(random() % unsigned(values.size()))];
    };
    constexpr int patients = 120;
    QStringList inserts;
    for (int number = 1; number <= patients; ++number)
        for (int kind = 0; kind <= 1; ++kind)
            for (int row = 0, count = int(random() % 5); row < count; ++row)
                inserts.append(
                    u"(1, 1, %1, %2, %3, %4, %5, %6)"_s.arg(number)
                        .arg(20260000 + row * 100 + int(random() % 90))
                        .arg(kind)
                        .arg(kind == 0 ? 0 : 20260101 + row)
                        .arg(pick({u"0"_s, u"1"_s, u"NULL"_s}), pick({u"0"_s, u"0"_s, u"1"_s, u"NULL"_s})));
    database.run(u"INSERT INTO RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg,"
                 " nHenkeiDouiDate, iNewestFlg, iReceptDisabledFlg) VALUES "_s +
                 inserts.join(u", "_s) + u"; CREATE TABLE BOOK AS SELECT * FROM RIYOUSHA_DOUI_REC"_s);

    ConsentRenewal renewal(database.db);
    for (int number = 1; number <= patients; ++number) {
        ASSERT_EQ(renewal.setDouiNewestFlg({1, 1, number}), 0) << renewal.sErrMsg().toStdString();
        markByTheBook(database, {1, 1, number});
    }
    EXPECT_EQ(marks(database, u"RIYOUSHA_DOUI_REC"_s), marks(database, u"BOOK"_s));
}

TEST(NewestMarks, PatientWithDisabledOrUnknownClaimFlagsOnlyKeepsHisMarks) {
    TestDatabase database;
    const ConsentRows rows(database);
    const PatientKey patient{1, 1, 5};
    rows.insert({patient, 20260101, 0, 0}, {{u"iNewestFlg"_s, u"1"_s}, {u"iReceptDisabledFlg"_s, u"1"_s}});
    rows.insert({patient, 20260201, 0, 0}, {{u"iNewestFlg"_s, u"0"_s}, {u"iReceptDisabledFlg"_s, u"NULL"_s}});
    const QStringList before = rows.all();
    ConsentRenewal renewal(database.db);
    ASSERT_EQ(renewal.setDouiNewestFlg(patient), 0);
    EXPECT_EQ(rows.all(), before);
}

TEST(NewestMarks, OneOfSeveralDeformityRowsOfADateIsMarkedAndRowsThatKeepTheirMarkAreNotWritten) {
    TestDatabase database;
    const ConsentRows rows(database);
    const PatientKey patient{1, 1, 5};
    for (const int own : {20260101, 20260102, 20260103})
        rows.insert({patient, 20260101, 1, own}, {{u"iNewestFlg"_s, u"1"_s}});
    rows.insert({patient, 20250101, 1, 20250101}, {{u"iNewestFlg"_s, u"0"_s}});
    const ConsentRows::Row old = rows.read({patient, 20250101, 1, 20250101});
    ConsentRenewal renewal(database.db);
    ASSERT_EQ(renewal.setDouiNewestFlg(patient), 0);
    EXPECT_EQ(rows.newest(patient).size(), 1);
    EXPECT_EQ(rows.read({patient, 20250101, 1, 20250101}), old);
    const QStringList settled = rows.all();
    ASSERT_EQ(renewal.setDouiNewestFlg(patient), 0);
    EXPECT_EQ(rows.all(), settled);
}
