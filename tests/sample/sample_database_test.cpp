#include "consent/rules/period.h"
#include "db/adodb.h"
#include "db/tables/schema.h"
#include "sample/sample_database.h"
#include "tests/support/test_environment.h"

#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A database that the maker made, read through the program's own connection.
class Sample {
public:
    explicit Sample(const QDate &day, int patients = 300) {
        const Result<> made = sample::makeSampleDatabase(path(), day, patients);
        EXPECT_TRUE(made) << made.reason().toStdString();
        m_made = bool(made);
        m_db.iInit(u"Provider=SQLite;Data Source="_s + path());
        EXPECT_EQ(m_db.iConnect(), 0) << m_db.sErrMsg().toStdString();
    }

    Recordset read(const QString &sql) {
        Recordset rows;
        if (!m_made)
            return rows;
        EXPECT_EQ(m_db.iOpenRecSet(rows, sql), 0) << sql.toStdString() << '\n'
                                                  << m_db.sErrMsg().toStdString();
        return rows;
    }
    qint64 number(const QString &sql) {
        const Recordset rows = read(sql);
        return rows.rowCount() > 0 ? rows.number(0, 0) : -1;
    }

private:
    QString path() const { return m_folder.filePath(u"sample.db"_s); }

    QTemporaryDir m_folder;
    bool m_made = false;
    cT_ADODB m_db;
};

QByteArray bytesOf(const QDate &day, int patients) {
    QTemporaryDir folder;
    const QString path = folder.filePath(u"sample.db"_s);
    const Result<> made = sample::makeSampleDatabase(path, day, patients);
    EXPECT_TRUE(made) << made.reason().toStdString();
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

TEST(SampleDatabase, IsTheSameForTheSameArgumentsOnly) {
    const QDate day(2026, 11, 21);
    const QByteArray bytes = bytesOf(day, 60);
    EXPECT_TRUE(bytes == bytesOf(day, 60));
    EXPECT_FALSE(bytes == bytesOf(day.addDays(1), 60));
    EXPECT_FALSE(bytes == bytesOf(day, 61));
}

/// Month ends, leap days and both sides of the middle of a month, on which the rules turn.
class OnDay : public testing::TestWithParam<QDate> {};

const QString newestMassage = u"SELECT * FROM RIYOUSHA_DOUI_REC WHERE iNewestFlg = 1 AND iHenkeiFlg = 0"_s;

TEST_P(OnDay, NothingContradictsItself) {
    Sample sample(GetParam());
    const QString today = GetParam().toString(u"yyyy/MM/dd");
    const QString patientKey = u"iKyotenCd, iKyotenEb, nIDNo"_s;
    const QString samePatient =
        u"P.iKyotenCd = C.iKyotenCd AND P.iKyotenEb = C.iKyotenEb AND P.nIDNo = C.nIDNo"_s;
    struct Case {
        const char *fault;
        QString rows;
    };
    const QList<Case> cases = {
        {"several newest rows of one kind",
         u"SELECT 1 FROM RIYOUSHA_DOUI_REC WHERE iNewestFlg = 1 GROUP BY %1, iHenkeiFlg HAVING COUNT(*) > 1"_s
             .arg(patientKey)},
        {"a patient without a newest massage row",
         u"SELECT 1 FROM RIYOUSHA AS P WHERE NOT EXISTS (SELECT 1 FROM RIYOUSHA_DOUI_REC AS C WHERE %1 AND "
         "C.iNewestFlg = 1 AND C.iHenkeiFlg = 0)"_s.arg(samePatient)},
        {"a newest row that is not the latest for claims",
         u"SELECT 1 FROM RIYOUSHA_DOUI_REC AS C WHERE C.iNewestFlg = 1 AND (C.iReceptDisabledFlg <> 0 OR "
         u"EXISTS "
         "(SELECT 1 FROM RIYOUSHA_DOUI_REC AS P WHERE %1 AND P.iHenkeiFlg = C.iHenkeiFlg AND "
         "P.iReceptDisabledFlg = 0 AND P.nDate > C.nDate))"_s.arg(samePatient)},
        {"a consent of the future", u"SELECT 1 FROM RIYOUSHA_DOUI_REC WHERE tDouiDay > '%1'"_s.arg(today)},
        {"a period that ends before it starts, or starts before its consent",
         u"SELECT 1 FROM RIYOUSHA_DOUI_REC WHERE tDouiKaryoE < tDouiKaryoS OR tDouiKaryoS < tDouiDay OR "
         "tShinsatsuDay > tDouiDay"_s},
        {"a re-consent that cannot be renewed",
         u"SELECT 1 FROM RIYOUSHA_DOUI_REC WHERE tSaiDouiDay <= tDouiDay OR tSaiDouiDay > '%1' OR "
         u"tSaiDouiKaryoS <= "
         "tDouiKaryoE OR tSaiDouiKaryoE < tSaiDouiKaryoS"_s.arg(today)},
        {"an answer without a request, or without a date",
         u"SELECT 1 FROM RIYOUSHA_DOUI_REC WHERE iGetFlg + iGetFlgHenkei > 0 AND (iOutputFlg + "
         u"iOutputFlgHenkei = 0 "
         "OR tSaiDouiDay IS NULL)"_s},
        {"a patient's summary that is not the newest consent",
         u"SELECT 1 FROM RIYOUSHA AS P INNER JOIN RIYOUSHA_DOUI_REC AS C ON %1 WHERE C.iNewestFlg = 1 AND "
         "C.iHenkeiFlg = 0 AND (P.tDouiDay1 <> C.tDouiDay OR P.tDouiKaryoE1 <> C.tDouiKaryoE)"_s.arg(
             samePatient)},
        {"a consent, sub-row or setting of nobody", u"SELECT %1 FROM RIYOUSHA_DOUI_REC UNION SELECT %1 FROM "
                                                    u"RIYOUSHA_SUB UNION SELECT %1 FROM DOUIKIROKU "
                                                    "EXCEPT SELECT %1 FROM RIYOUSHA"_s.arg(patientKey)},
    };
    for (const Case &c : cases)
        EXPECT_EQ(sample.read(c.rows).rowCount(), 0) << c.fault;
}

TEST_P(OnDay, EveryPeriodFollowsTheMidMonthRule) {
    Sample sample(GetParam());
    const Recordset rows = sample.read(
        u"SELECT tDouiDay, tDouiKaryoE, nDouiUpMonth, tDouiKaryoS, iHenkeiFlg FROM RIYOUSHA_DOUI_REC"_s);
    ASSERT_GT(rows.rowCount(), 600);
    for (int row = 0; row < rows.rowCount(); ++row) {
        const QDate day = rows.date(row, 0);
        const QDate end = rows.date(row, 1);
        // From the 16th of one month to the 15th of the next, all consents end with one month.
        const QDate turned = day.addDays(-15);
        ASSERT_EQ(end.day(), end.daysInMonth()) << rows.text(row, 1).toStdString();
        ASSERT_EQ((end.year() - turned.year()) * 12 + end.month() - turned.month(), rows.number(row, 2))
            << rows.text(row, 0).toStdString();
        // Nor does the program's own rule find a difference to tell of.
        const Period stored{rows.date(row, 3), end};
        const PeriodRule rule = rows.number(row, 4) == 0 ? periodRule({}) : deformityRule({}, 1);
        ASSERT_EQ(reckonStored(day, stored, rule, nullptr).period, stored) << rows.text(row, 0).toStdString();
    }
}

TEST_P(OnDay, ThereIsWorkToDo) {
    Sample sample(GetParam());
    const QDate first(GetParam().year(), GetParam().month(), 1);
    const QString dueInTheList = u" AND tDouiKaryoE >= '%1' AND tDouiKaryoE <= '%2'"_s.arg(
        first.toString(u"yyyy/MM/dd"), first.addMonths(6).addDays(-1).toString(u"yyyy/MM/dd"));
    EXPECT_GT(sample.read(newestMassage + dueInTheList).rowCount(), 150);
    struct Case {
        const char *what;
        QString condition;
        int least;
    };
    const QString lastMonth = first.addMonths(-1).toString(u"yyyy/MM/dd");
    const QList<Case> cases = {
        {"ready to be renewed",
         u"iGetFlg = 1 AND tSaiDouiKaryoE IS NOT NULL AND tDouiKaryoE >= '%1'"_s.arg(lastMonth), 30},
        {"asked, not answered", u"iOutputFlg = 1 AND iGetFlg = 0"_s, 20},
        {"lapsed", u"tDouiKaryoE < '%1'"_s.arg(GetParam().toString(u"yyyy/MM/dd")), 10},
        {"by word of mouth", u"iDouiShubetsu = 1"_s, 5},
        {"acupuncture", u"iHKHariUmu = 1"_s, 40},
        {"mail sent", u"iSendFlg = 1"_s, 5},
        {"own request methods", u"cKobetuDouiIrai LIKE '%,%'"_s, 1},
        {"with a remark", u"cItiranBikou <> ''"_s, 20},
        {"by a doctor whose institution is only written", u"cIsiCd = '16' AND cDouiIsiKikan <> ''"_s, 1},
        {"by a doctor without institution", u"cIsiCd = '24' AND cDouiIsiKikan IS NULL"_s, 1},
    };
    for (const Case &c : cases)
        EXPECT_GE(sample.read(newestMassage + u" AND "_s + c.condition).rowCount(), c.least) << c.what;
    EXPECT_GE(
        sample.number(u"SELECT COUNT(*) FROM RIYOUSHA_DOUI_REC WHERE iNewestFlg = 1 AND iHenkeiFlg = 1 AND "
                      "iGetFlgHenkei = 1 AND tDouiDayTempHenkei IS NOT NULL"_s),
        5);
    const auto differing = [&](const QString &otherRow, const QString &column) {
        return sample.number(
            u"SELECT COUNT(*) FROM RIYOUSHA_DOUI_REC AS C INNER JOIN RIYOUSHA_DOUI_REC AS O"
            " ON O.iKyotenCd = C.iKyotenCd AND O.iKyotenEb = C.iKyotenEb AND O.nIDNo = C.nIDNo"
            " AND %1 WHERE C.iNewestFlg = 1 AND C.iHenkeiFlg = 0 AND O.%2 <> C.%2"_s.arg(otherRow, column));
    };
    const QString correction = u"O.iNewestFlg = 1 AND O.iHenkeiFlg = 1"_s;
    EXPECT_GE(differing(correction, u"cIsiCd"_s), 10) << "massage and correction by two doctors";
    EXPECT_GE(differing(correction, u"iDouiShubetsu"_s), 5) << "one by word of mouth, the other written";
    EXPECT_GE(differing(u"O.iNewestFlg = 0 AND O.iHenkeiFlg = 0"_s, u"cIsiCd"_s), 20) << "changed doctors";
}

std::string nameOfDay(const testing::TestParamInfo<QDate> &day) {
    return day.param.toString(u"yyyyMMdd").toStdString();
}

INSTANTIATE_TEST_SUITE_P(Days, OnDay,
                         testing::Values(QDate(2026, 11, 21), QDate(2024, 2, 29), QDate(2026, 11, 1),
                                         QDate(2027, 1, 15), QDate(2027, 1, 16), QDate(2026, 12, 31)),
                         nameOfDay);

TEST(Schema, KeepsToWhatBothServersTake) {
    static const QRegularExpression column(u"^    \\w+ (SMALLINT|INT|FLOAT|DATETIME|MONEY|DECIMAL\\(9, "
                                           u"3\\)|NVARCHAR\\([1-9]\\d{0,2}\\)|NVARCHAR\\(4000\\))"
                                           "( COLLATE Japanese_CI_AS)?( NOT NULL)?,$"_s,
                                           QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression constraint(
        u"^    CONSTRAINT \\w+ (PRIMARY KEY \\([\\w, ]+\\)|FOREIGN KEY \\([\\w, ]+\\) REFERENCES \\w+ \\([\\w, ]+\\)),?$"_s,
        QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression index(u"^CREATE INDEX \\w+ ON \\w+ \\([\\w, ]+\\)$"_s);
    int tables = 0;
    for (const QString &statement : schemaStatements()) {
        QStringList lines = statement.split(u'\n');
        if (lines.size() == 1) {
            EXPECT_TRUE(index.match(statement).hasMatch()) << statement.toStdString();
            continue;
        }
        ++tables;
        EXPECT_TRUE(lines.takeFirst().startsWith(u"CREATE TABLE "));
        EXPECT_EQ(lines.takeLast(), u")"_s);
        for (const QString &line : lines)
            EXPECT_TRUE(column.match(line).hasMatch() || constraint.match(line).hasMatch())
                << line.toStdString();
    }
    EXPECT_EQ(tables, 19);
}

} // namespace
