// Renews a thousand received consents through the program's own operations, and runs the same statements as
// one script in the embedded engine's shell, each on a copy of the same database. At most three times as long
// is allowed. Then it takes the renewal back, which may take twice as long as the renewal.

#include "benchmarks/noting_provider.h"
#include "consent/batches/take_back_run.h"
#include "consent/record/renewal_run.h"
#include "db/adodb.h"
#include "db/dialect/dialect.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int patients = 5000;
constexpr int received = 1000;
constexpr int repetitions = 3;
constexpr double allowedRatio = 3.0;
constexpr double allowedBack = 2.0;

[[noreturn]] void stop(const QString &reason) {
    std::fprintf(stderr, "%s\n", reason.toUtf8().constData());
    std::exit(1);
}

void run(const QString &path, const QString &sql) {
    sqlite3 *handle = nullptr;
    sqlite3_open(path.toUtf8().constData(), &handle);
    // The schema names the collation; no statement here compares by it.
    sqlite3_create_collation(handle, "Japanese_CI_AS", SQLITE_UTF8, nullptr,
                             [](void *, int, const void *, int, const void *) { return 0; });
    char *fault = nullptr;
    if (sqlite3_exec(handle, sql.toUtf8().constData(), nullptr, nullptr, &fault) != SQLITE_OK)
        stop(QString::fromUtf8(fault));
    sqlite3_close(handle);
}

QString literal(const QString &column) {
    switch (column[0].unicode()) {
    case u't':
        return u"'2025/11/20'"_s;
    case u'c':
        return u"'腰痛症による歩行困難'"_s;
    default:
        return u"1"_s;
    }
}

// Three consents a patient; of the newest, every fifth is received.
void fill(const QString &path, const QStringList &columns) {
    QMap<QString, QString> values = {{u"nIDNo"_s, u"p.n"_s},
                                     {u"nDate"_s, u"20241120 + r.n * 5000"_s},
                                     {u"iHenkeiFlg"_s, u"0"_s},
                                     {u"nHenkeiDouiDate"_s, u"0"_s},
                                     {u"iNewestFlg"_s, u"r.n = 2"_s},
                                     {u"iReceptDisabledFlg"_s, u"0"_s},
                                     {u"iGetFlg"_s, u"r.n = 2 AND p.n % %1 = 0"_s.arg(patients / received)},
                                     {u"tSaiDouiDay"_s, u"'2026/05/20'"_s},
                                     {u"tSaiDouiKaryoS"_s, u"'2026/06/01'"_s},
                                     {u"tSaiDouiKaryoE"_s, u"'2026/11/30'"_s}};
    QStringList cells;
    for (const QString &column : columns)
        cells.append(values.value(column, literal(column)));
    run(path, u"WITH RECURSIVE p(n) AS (VALUES(1) UNION ALL SELECT n + 1 FROM p WHERE n < %1),"
              " r(n) AS (VALUES(0), (1), (2))"
              " INSERT INTO RIYOUSHA_DOUI_REC (%2) SELECT %3 FROM p, r"_s.arg(patients)
                  .arg(columns.join(u", "), cells.join(u", ")));
}

class Connection {
public:
    Connection(const QString &path, QStringList &script)
        : db([&script](const QString &text) {
              return std::make_unique<NotingProvider>(makeProvider(text), script);
          }) {
        db.iInit(u"Provider=SQLite;Data Source="_s + path);
        if (db.iConnect() != 0)
            stop(db.sErrMsg());
    }
    cT_ADODB db;
};

QList<RenewalRow> receivedRows(cT_ADODB &db) {
    Recordset found;
    if (db.iOpenRecSet(found, u"SELECT nIDNo, nDate FROM RIYOUSHA_DOUI_REC"
                              " WHERE iNewestFlg = 1 and iGetFlg = 1 ORDER BY nIDNo"_s) != 0)
        stop(db.sErrMsg());
    QList<RenewalRow> rows;
    for (int i = 0; i < found.rowCount(); ++i)
        rows.append({.key = {{1, 1, qint32(found.number(i, 0))}, qint32(found.number(i, 1)), 0, 0},
                     .name = {},
                     .consentDate = QDate(2025, 11, 20),
                     .reConsent = {{2026, 5, 20}, {{2026, 6, 1}, {2026, 11, 30}}},
                     .newest = true});
    return rows;
}

double renewByProgram(const QString &path, QStringList &script) {
    Connection connection(path, script);
    const QList<RenewalRow> rows = receivedRows(connection.db);
    script.clear();
    QElapsedTimer timer;
    timer.start();
    const QList<RenewalResult> results = RenewalRun(connection.db).renew(rows);
    const double milliseconds = double(timer.nsecsElapsed()) / 1e6;
    if (countOutcome(results, RenewalOutcome::Renewed) != received)
        stop(u"renewed %1 of %2: %3"_s.arg(countOutcome(results, RenewalOutcome::Renewed))
                 .arg(received)
                 .arg(results.value(0).reason));
    return milliseconds;
}

double takeBackByProgram(const QString &path) {
    QStringList ignored;
    Connection connection(path, ignored);
    Recordset last;
    if (connection.db.iOpenRecSet(last, u"SELECT MAX(nBatch) FROM DOUISHO_LOG_BATCH"_s) != 0)
        stop(connection.db.sErrMsg());
    TakeBack work(connection.db, {1, 1});
    QElapsedTimer timer;
    timer.start();
    const Result<TakeBackProposal> proposal = work.propose(qint32(last.number(0, 0)));
    const Result<bool> taken = proposal ? work.take(*proposal) : Failure{proposal.reason()};
    const double milliseconds = double(timer.nsecsElapsed()) / 1e6;
    if (!taken || !*taken || proposal->plan.goingBack() != received)
        stop(u"not taken back: "_s + taken.reason());
    return milliseconds;
}

void writeScript(const QString &path, const QStringList &statements) {
    QString text = u"PRAGMA foreign_keys = ON;\nPRAGMA journal_mode = WAL;\nPRAGMA synchronous = FULL;\n"_s;
    for (const QString &statement : statements)
        text += QString::fromUtf8(inDialect(SqlDialect::Embedded, statement.toUtf8()))
                    .replace(u"GetDate()"_s, u"strftime('%Y/%m/%d %H:%M:%S', 'now', 'localtime')"_s) +
                u";\n"_s;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
        stop(file.errorString());
}

double renewByShell(const QString &path, const QString &script) {
    QProcess shell;
    shell.setStandardInputFile(script);
    shell.setStandardOutputFile(QProcess::nullDevice());
    QElapsedTimer timer;
    timer.start();
    shell.start(u"sqlite3"_s, {u"-bail"_s, path});
    if (!shell.waitForFinished(-1) || shell.exitCode() != 0)
        stop(u"sqlite3: "_s + QString::fromUtf8(shell.readAllStandardError()));
    return double(timer.nsecsElapsed()) / 1e6;
}

double median(QList<double> times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    const QString original = folder.filePath(u"original.db"_s);
    QFile schema(QStringLiteral(DOUISHO_SCHEMA));
    if (!schema.open(QIODevice::ReadOnly))
        stop(schema.errorString());
    run(original, QString::fromUtf8(schema.readAll()));
    {
        QStringList ignored;
        Connection connection(original, ignored);
        Recordset table;
        connection.db.iOpenRecSet(table, u"SELECT TOP 1 * FROM RIYOUSHA_DOUI_REC"_s);
        fill(original, table.columns());
    }

    QList<double> program, back, shell;
    for (int i = 0; i < repetitions; ++i) {
        const QString suffix = QString::number(i);
        const QString ours = folder.filePath(u"program"_s + suffix);
        const QString theirs = folder.filePath(u"shell"_s + suffix);
        const QString script = folder.filePath(u"script"_s + suffix);
        QFile::copy(original, ours);
        QFile::copy(original, theirs);
        QStringList statements;
        program.append(renewByProgram(ours, statements));
        back.append(takeBackByProgram(ours));
        writeScript(script, statements);
        shell.append(renewByShell(theirs, script));
    }
    const double ratio = median(program) / median(shell);
    std::printf(
        "renewing %d rows of %d: program %.0f ms, script in the shell %.0f ms, ratio %.2f (allowed %.1f)\n",
        received, patients * 3, median(program), median(shell), ratio, allowedRatio);
    const double ratioBack = median(back) / median(program);
    std::printf("taking them back: %.0f ms, ratio to the renewal %.2f (allowed %.1f)\n", median(back),
                ratioBack, allowedBack);
    return ratio <= allowedRatio && ratioBack <= allowedBack ? 0 : 1;
}
