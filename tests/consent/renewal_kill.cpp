// Kills a renewal of 150 rows at random moments, and lets two programs renew the same rows at once:
//   renewal_kill [--rounds=200] [--seed=1]
// As "renewal_kill renew <connection string> forward|backward" it is the program that is killed.

#include "consent/record/renewal_run.h"
#include "tests/consent/consent_rows.h"
#include "tests/consent/victim.h"
#include "tests/history/replayed_log.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <gtest/gtest.h>
#include <random>
#include <thread>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int massageRows = 120;
constexpr int deformityRows = 30; // three batches with the others
constexpr int renewedRows = massageRows + deformityRows;

int rounds = 20;
unsigned seed = std::random_device()();

// The program that is killed.

QList<RenewalRow> received(cT_ADODB &db) {
    Recordset found;
    if (db.iOpenRecSet(found, u"SELECT nIDNo, nDate, iHenkeiFlg, nHenkeiDouiDate, tDouiDay, tSaiDouiDay,"
                              " tSaiDouiKaryoS, tSaiDouiKaryoE FROM RIYOUSHA_DOUI_REC"
                              " WHERE iNewestFlg = 1 and iGetFlg = 1 ORDER BY nIDNo, iHenkeiFlg"_s) != 0)
        return {};
    QList<RenewalRow> rows;
    for (int i = 0; i < found.rowCount(); ++i)
        rows.append({.key = {{1, 1, qint32(found.number(i, 0))},
                             qint32(found.number(i, 1)),
                             short(found.number(i, 2)),
                             qint32(found.number(i, 3))},
                     .name = {},
                     .consentDate = found.date(i, 4),
                     .reConsent = {found.date(i, 5), {found.date(i, 6), found.date(i, 7)}},
                     .newest = true});
    return rows;
}

int renewAll(const QString &connectionString, bool backward) {
    cT_ADODB db;
    if (db.iInit(connectionString) != 0 || db.iConnect() != 0)
        return 1;
    QList<RenewalRow> rows = received(db);
    if (backward)
        std::reverse(rows.begin(), rows.end());
    std::puts("ready");
    std::fflush(stdout);
    std::getchar();
    const QList<RenewalResult> results = RenewalRun(db).renew(rows);
    for (const RenewalResult &result : results)
        if (result.outcome == RenewalOutcome::Failed)
            std::fprintf(stderr, "%s\n", result.reason.toUtf8().constData());
    std::printf("%d %d\n", int(countOutcome(results, RenewalOutcome::Renewed)),
                int(countOutcome(results, RenewalOutcome::Failed)));
    return 0;
}

// The judge.

class Program : public Victim {
public:
    Program(const QString &connectionString, const QString &direction)
        : Victim({u"renew"_s, connectionString, direction}) {}
};

// The rows of each patient and kind, audit columns left out.
using State = QMap<QString, QStringList>;

class RenewalKill : public testing::Test {
protected:
    void SetUp() override {
        const ConsentRows rows(database);
        for (qint32 patient = 1; patient <= massageRows; ++patient)
            insert(rows, patient, 0);
        for (qint32 patient = 1; patient <= deformityRows; ++patient)
            insert(rows, patient, 1);
        database.db.iDisConnect();
        ASSERT_TRUE(QFile::copy(database.path(), pristineFile()));
        pristine = state();
        database.db.iConnect();
        log = std::make_unique<ReplayedLog>(database.db);
        database.db.iDisConnect();
        QElapsedTimer timer;
        Program whole(database.connectionString(), u"forward"_s);
        timer.start();
        whole.go();
        EXPECT_EQ(whole.finish(), QByteArray::number(renewedRows) + " 0");
        duration = std::chrono::nanoseconds(timer.nsecsElapsed());
        finished = state();
        expectFinished();
    }

    // A row of the history, and one whose answer has come.
    static void insert(const ConsentRows &rows, qint32 patient, short kind) {
        const PatientKey key{1, 1, patient};
        const auto own = [kind](qint32 date) { return kind == 0 ? 0 : date; };
        rows.insert({key, 20250510, kind, own(20250510)},
                    {{u"iNewestFlg"_s, u"0"_s}, {u"tDouiDay"_s, u"'2025/05/10'"_s}});
        QMap<QString, QString> literals = answered(u"2026/05/20"_s, u"2026/06/01"_s, u"2026/11/30"_s);
        literals.insert(answered(u"2026/05/20"_s, u"2026/06/01"_s, u"2026/11/30"_s, true));
        literals.insert(
            {{u"iNewestFlg"_s, u"1"_s}, {u"iGetFlg"_s, u"1"_s}, {u"tDouiDay"_s, u"'2025/11/20'"_s}});
        rows.insert({key, 20251120, kind, own(20251120)}, literals);
    }

    QString pristineFile() const { return database.folder() + u"/pristine"_s; }
    void restore() const {
        for (const QString &suffix : {u""_s, u"-wal"_s, u"-shm"_s})
            QFile::remove(database.path() + suffix);
        ASSERT_TRUE(QFile::copy(pristineFile(), database.path()));
    }
    State state() const {
        const QStringList columns =
            database.rows(u"SELECT group_concat(name) FROM pragma_table_info('RIYOUSHA_DOUI_REC')"
                          " WHERE name NOT IN ('cPcName', 'tUpDateTime')"_s);
        State rows;
        for (const QString &row :
             database.rows(u"SELECT nIDNo || '/' || iHenkeiFlg, %1 FROM RIYOUSHA_DOUI_REC"
                           " ORDER BY nIDNo, iHenkeiFlg, nDate, nHenkeiDouiDate"_s.arg(columns.first())))
            rows[row.section(u'|', 0, 0)].append(row);
        return rows;
    }
    // The end state is judged by itself before others are compared with it.
    void expectFinished() const {
        EXPECT_EQ(
            database.rows(
                u"SELECT nDate, count(*), sum(iNewestFlg), sum(iGetFlg = 0 AND tSaiDouiDay IS NULL),"
                " sum(tDouiDay = '2026/05/20') FROM RIYOUSHA_DOUI_REC GROUP BY nDate"_s),
            (QStringList{u"20250510|150|0|0|0"_s, u"20251120|150|0|0|0"_s, u"20260520|150|150|150|150"_s}));
    }
    // A connection to a file of that name would outlive the file.
    void expectLogged() {
        database.db.iConnect();
        EXPECT_EQ(log->disagreement().toStdString(), "");
        database.db.iDisConnect();
    }
    // How many patients and kinds are renewed; every one must be wholly old or wholly renewed.
    int judge() {
        expectLogged();
        EXPECT_EQ(database.value(u"PRAGMA integrity_check"_s), u"ok"_s);
        const State now = state();
        EXPECT_EQ(now.keys(), pristine.keys());
        int renewed = 0;
        for (auto rows = now.begin(); rows != now.end(); ++rows) {
            const bool isRenewed = rows.value() == finished[rows.key()];
            EXPECT_TRUE(isRenewed || rows.value() == pristine[rows.key()])
                << rows.value().join(u'\n').toStdString();
            renewed += isRenewed;
        }
        return renewed;
    }

    TestDatabase database;
    State pristine, finished;
    std::unique_ptr<ReplayedLog> log;
    std::chrono::nanoseconds duration{};
};

} // namespace

TEST_F(RenewalKill, EveryRowIsOldOrRenewedWhateverTheMoment) {
    std::mt19937 random(seed);
    std::uniform_int_distribution<qint64> moment(0, duration.count());
    int halfWay = 0;
    for (int round = 0; round < rounds && !HasFailure(); ++round) {
        restore();
        Program victim(database.connectionString(), u"forward"_s);
        victim.go();
        std::this_thread::sleep_for(std::chrono::nanoseconds(moment(random)));
        victim.kill();
        const int renewed = judge();
        halfWay += renewed > 0 && renewed < renewedRows;

        // A second attempt renews what is left, no more and no less.
        Program second(database.connectionString(), u"forward"_s);
        second.go();
        EXPECT_EQ(second.finish(), QByteArray::number(renewedRows - renewed) + " 0");
        EXPECT_EQ(state(), finished);
    }
    std::printf("%d rounds, seed %u, %d killed half-way of a renewal that takes %.1f ms\n", rounds, seed,
                halfWay, double(duration.count()) / 1e6);
    EXPECT_GT(halfWay, 0) << "no round said anything";
}

TEST_F(RenewalKill, TwoProgramsRenewTheSameRowsOnceBetweenThem) {
    for (int round = 0; round < rounds / 4 + 1 && !HasFailure(); ++round) {
        restore();
        Program one(database.connectionString(), u"forward"_s);
        Program other(database.connectionString(), round % 2 == 0 ? u"backward"_s : u"forward"_s);
        one.go();
        other.go();
        int renewed = 0, failed = 0;
        for (const QByteArray &result : {one.finish(), other.finish()}) {
            renewed += result.split(' ').value(0).toInt();
            failed += result.split(' ').value(1, "1").toInt();
        }
        EXPECT_EQ(renewed, renewedRows);
        EXPECT_EQ(failed, 0);
        EXPECT_EQ(state(), finished);
        expectLogged();
    }
}

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.value(1) == u"renew"_s)
        return renewAll(arguments.value(2), arguments.value(3) == u"backward"_s);
    for (const QString &argument : arguments) {
        if (argument.startsWith(u"--rounds="_s))
            rounds = argument.section(u'=', 1).toInt();
        if (argument.startsWith(u"--seed="_s))
            seed = argument.section(u'=', 1).toUInt();
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
