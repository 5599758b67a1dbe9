// What the history costs: a renewal of a thousand rows with it beside the same without, on the embedded
// database and over a line on which a round trip takes 20 ms; and a row's history among a million records.

#include "benchmarks/answered_practice.h"
#include "benchmarks/figures.h"
#include "consent/record/renewal_run.h"
#include "db/tables/schema.h"
#include "history/log_entries.h"
#include "history/log_tables.h"
#include "tests/odbc/postgres_server.h"
#include "tests/odbc/slow_line.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int rows = 1000; ///< each of another patient, with two older ones
constexpr int records = 1'000'000;
constexpr int turns = 5;
constexpr std::chrono::milliseconds roundTrip(20);
constexpr double allowedRatio = 1.4;
constexpr double mostMilliseconds = 50;

void connect(cT_ADODB &db, const QString &text) {
    db.iInit(text);
    if (db.iConnect() != 0)
        stop(db.sErrMsg());
}

void makeAll(cT_ADODB &db) {
    for (const auto &make : {makeSchema, makeLogTables})
        if (const Result<bool> made = make(db); !made)
            stop(made.reason());
}

double renew(cT_ADODB &db, HistoryState::Kind history) {
    makeAnswered(db, rows);
    run(db, u"DELETE FROM DOUISHO_LOG"_s);
    db.history().kind = history;
    QList<RenewalRow> received;
    for (int patient = 1; patient <= rows; ++patient)
        received.append({.key = {{1, 1, patient}, 20251120, 0, 0},
                         .name = {},
                         .consentDate = {2025, 11, 20},
                         .reConsent = {{2026, 5, 20}, {{2026, 6, 1}, {2026, 11, 30}}}});
    QList<RenewalResult> results;
    const double time = millisecondsOf([&] { results = RenewalRun(db).renew(received); });
    if (countOutcome(results, RenewalOutcome::Renewed) != rows)
        stop(u"not all rows were renewed"_s + results.first().reason);
    return time;
}

/// In turns, so that a busy machine disturbs both alike.
void compare(Figures &figures, const char *name, cT_ADODB &db, int repetitions) {
    std::vector<double> with, without;
    for (int turn = 0; turn < repetitions; ++turn) {
        without.push_back(renew(db, HistoryState::Unfit));
        with.push_back(renew(db, HistoryState::Kept));
    }
    const Result<Recordset> logged = readRows(db, u"SELECT COUNT(*) FROM DOUISHO_LOG"_s);
    if (!logged || logged->number(0, 0) != 2 * rows)
        stop(u"not all changes were recorded"_s);
    figures.compare(name, median(with), "without history", median(without), allowedRatio);
}

void measureOneRow(Figures &figures, cT_ADODB &db) {
    run(db, u"DELETE FROM DOUISHO_LOG"_s);
    run(db,
        u"INSERT INTO DOUISHO_LOG (cWrite, iSeq, tTime, cPcName, cOperation, cTable, iKyotenCd, iKyotenEb,"
        " nIDNo, cKey, iKind, cChanges) WITH RECURSIVE n(i) AS (VALUES(0) UNION ALL SELECT i + 1 FROM n"
        " WHERE i < %1) SELECT 'w' || i, 1, GetDate(), 'PC', '一覧の保存', 'RIYOUSHA_DOUI_REC', 1, 1, i % "
        "20000,"
        " '20260401/0/0', 2, '{\"iGetFlg\":[\"0\",\"1\"]}' FROM n"_s.arg(records - 1));
    std::vector<double> times;
    for (int turn = 0; turn < turns; ++turn)
        times.push_back(millisecondsOf([&] {
            const Result<LogRecords> found = readPatientLog(db, {1, 1, 4711}, 500);
            if (!found ||
                entriesOfRow(entriesOf(*found), {{1, 1, 4711}, 20260401, 0, 0}).size() != records / 20000)
                stop(u"the row's records are not found"_s);
        }));
    figures.limit("history of a row among 1,000,000 records", median(times), mostMilliseconds);
}

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    Figures figures;
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"practice.db"_s));
    if (!file.open(QIODevice::WriteOnly))
        stop(file.errorString());
    file.close();
    cT_ADODB embedded;
    connect(embedded, u"Provider=SQLite;Data Source="_s + file.fileName());
    makeAll(embedded);
    compare(figures, "1,000 rows renewed in the embedded database", embedded, turns);
    measureOneRow(figures, embedded);

    const PostgresServer server;
    if (!server.problem().isEmpty())
        stop(server.problem());
    cT_ADODB near;
    connect(near, server.connectionString());
    makeAll(near);
    compare(figures, "1,000 rows renewed on a server of this machine", near, turns);
    const SlowLine line(server.port(), roundTrip);
    QString text = server.connectionString();
    text.replace(u"Port=%1;"_s.arg(server.port()), u"Port=%1;"_s.arg(line.port()));
    cT_ADODB far;
    connect(far, text);
    compare(figures, "1,000 rows renewed over the line", far, 2);
    return figures.exitCode();
}
