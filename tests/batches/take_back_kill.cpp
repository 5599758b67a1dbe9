// Kills the taking back of 51 renewals at random moments, and lets two programs take them back at once; on
// the engine that DOUISHO_TEST_ENGINE names:
//   take_back_kill [--rounds=500] [--seed=1]
// As "take_back_kill take <connection string> <run>" it is the program that is killed.

#include "consent/batches/take_back_query.h"
#include "consent/batches/take_back_run.h"
#include "consent/record/record_write_query.h"
#include "tests/batches/renewed_practice.h"
#include "tests/consent/victim.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <chrono>
#include <cstdio>
#include <random>
#include <thread>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int patients = 34;
constexpr int renewals = patients + patients / 2;

int rounds = 5;
unsigned seed = std::random_device()();

// The program that is killed. Prints 1 when it took the run back, 0 when another one had.
int take(const QString &connectionString, qint32 batch) {
    cT_ADODB db;
    if (db.iInit(connectionString) != 0)
        return 1;
    TakeBack work(db, {1, 1});
    const Result<TakeBackProposal> proposal = work.propose(batch);
    std::puts("ready");
    std::fflush(stdout);
    std::getchar();
    const Result<bool> taken =
        proposal && proposal->plan.goingBack() > 0 ? work.take(*proposal) : Result<bool>(false);
    std::printf("%s\n", taken ? *taken ? "1" : "0" : taken.reason().toUtf8().constData());
    return 0;
}

// The judge.

class Program : public Victim {
public:
    Program(const QString &connectionString, qint32 batch)
        : Victim({u"take"_s, connectionString, QString::number(batch)}) {}
};

class TakeBackKill : public testing::Test, protected RenewedPractice {
protected:
    TakeBackKill() : RenewedPractice(patients) {}

    void SetUp() override {
        old = rows();
        renewal = renew(database.db);
        renewed = rows();
        ASSERT_EQ(renewed.size(), 2 * renewals);
        for (const QString &table : tables)
            database.run(u"CREATE TABLE KEPT_%1 AS SELECT * FROM %1"_s.arg(table));
        database.db.iDisConnect();
        QElapsedTimer timer;
        Program whole(database.connectionString(), renewal);
        timer.start();
        whole.go();
        EXPECT_EQ(whole.finish(), "1");
        duration = std::chrono::nanoseconds(timer.nsecsElapsed());
        EXPECT_EQ(rows(), old);
    }
    void restore() const {
        for (const QString &table : tables)
            database.run(u"DELETE FROM %1; INSERT INTO %1 SELECT * FROM KEPT_%1"_s.arg(table));
    }
    // On a server what the killed program had sent may still be on its way.
    void waitForServer() const {
        if (qgetenv("DOUISHO_TEST_ENGINE") != "PostgreSQL")
            return;
        const QString others = u"SELECT COUNT(*) FROM pg_stat_activity WHERE datname = current_database()"
                               " AND pid <> pg_backend_pid()"_s;
        for (int wait = 0; wait < 500 && database.value(others) != u"0"; ++wait)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        EXPECT_EQ(database.value(others), u"0"_s);
    }
    // Whether all is taken back; nothing may be in between, and rows and records tell the same.
    bool judge() {
        waitForServer();
        const QStringList now = rows();
        const bool isBack = now == old;
        EXPECT_TRUE(isBack || now == renewed) << now.join(u'\n').toStdString();
        EXPECT_EQ(database.value(u"SELECT COUNT(*) FROM DOUISHO_LOG_BATCH WHERE nTakesBack IS NOT NULL"
                                 " AND nRows = %1"_s.arg(renewals)),
                  isBack ? u"1"_s : u"0"_s);
        cT_ADODB db;
        db.iInit(database.connectionString());
        const Result<Recordset> records = readRows(
            db, sqlRecordsOfBatch(renewal).replace(u"nBatch = %1"_s.arg(renewal), u"nBatch IS NOT NULL"_s));
        std::vector<PatientKey> all;
        for (qint32 patient = 1; patient <= patients; ++patient)
            all.push_back({1, 1, patient});
        StandingRows standing;
        standing.add(*readRows(db, sqlStanding(all)));
        const TakeBackPlan plan = planTakeBack(writtenRows(batchRecords(*records)), standing,
                                               [](const QString &) { return false; });
        EXPECT_EQ(plan.goingBack(), isBack ? 0 : renewals);
        EXPECT_EQ(plan.left().size(), 0u);
        return isBack;
    }

    const QStringList tables{u"RIYOUSHA_DOUI_REC"_s, u"DOUISHO_LOG"_s, u"DOUISHO_LOG_BATCH"_s};
    QStringList old, renewed;
    qint32 renewal = 0;
    std::chrono::nanoseconds duration{};
};

} // namespace

TEST_F(TakeBackKill, EverythingIsOldOrRenewedWhateverTheMoment) {
    std::mt19937 random(seed);
    std::uniform_int_distribution<qint64> moment(0, duration.count());
    int back = 0;
    for (int round = 0; round < rounds && !HasFailure(); ++round) {
        restore();
        Program victim(database.connectionString(), renewal);
        victim.go();
        std::this_thread::sleep_for(std::chrono::nanoseconds(moment(random)));
        victim.kill();
        const bool isBack = judge();
        back += isBack;
        Program second(database.connectionString(), renewal);
        QElapsedTimer timer;
        timer.start();
        second.go();
        EXPECT_EQ(second.finish(), isBack ? "0" : "1");
        const std::chrono::nanoseconds took(timer.nsecsElapsed());
        EXPECT_TRUE(judge());
        // Whatever else the machine does, the moments lie in what it takes.
        if (!isBack)
            duration = std::min(duration, took);
        moment.param(std::uniform_int_distribution<qint64>::param_type(0, duration.count()));
    }
    std::printf("%d rounds, seed %u, in %d of them it was done before it was killed; it takes %.1f ms\n",
                rounds, seed, back, double(duration.count()) / 1e6);
    EXPECT_LT(back, rounds) << "no round said anything";
}

TEST_F(TakeBackKill, OfTwoProgramsOneTakesTheRunBack) {
    for (int round = 0; round < rounds / 4 + 1 && !HasFailure(); ++round) {
        restore();
        Program one(database.connectionString(), renewal), other(database.connectionString(), renewal);
        one.go();
        other.go();
        const QByteArray first = one.finish(), second = other.finish();
        EXPECT_EQ(std::min(first, second), "0");
        EXPECT_EQ(std::max(first, second), "1");
        EXPECT_TRUE(judge());
    }
}

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.value(1) == u"take"_s)
        return take(arguments.value(2), arguments.value(3).toInt());
    for (const QString &argument : arguments) {
        if (argument.startsWith(u"--rounds="_s))
            rounds = argument.section(u'=', 1).toInt();
        if (argument.startsWith(u"--seed="_s))
            seed = argument.section(u'=', 1).toUInt();
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
