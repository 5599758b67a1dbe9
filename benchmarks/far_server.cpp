// A branch at the end of a line to the head office's server: a thousand rows saved and renewed and the list
// searched over a line on which a round trip takes 20 ms. Beside it the same renewal on a server of this
// machine, and its statements as one script in the server's own shell.

#include "benchmarks/answered_practice.h"
#include "benchmarks/figures.h"
#include "benchmarks/list_screen.h"
#include "benchmarks/noting_provider.h"
#include "consent/record/grid_save.h"
#include "consent/record/renewal_run.h"
#include "db/adodb.h"
#include "db/dialect/dialect.h"
#include "db/tables/schema.h"
#include "tests/odbc/postgres_server.h"
#include "tests/odbc/slow_line.h"

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int rows = 1000; ///< each of another patient
constexpr std::chrono::milliseconds roundTrip(20);
constexpr double mostTripsOfARow = 0.5;
constexpr double mostMilliseconds = 15'000;
constexpr double mostTripsOfASearch = 3;
constexpr double allowedRatio = 3;

std::unique_ptr<cT_ADODB> connected(const QString &text, QStringList &script) {
    auto db = std::make_unique<cT_ADODB>(
        [&script](const QString &of) { return std::make_unique<NotingProvider>(makeProvider(of), script); });
    db->iInit(text);
    if (db->iConnect() != 0)
        stop(db->sErrMsg());
    return db;
}

ConsentRowKey keyOf(int patient) {
    return {{1, 1, patient}, 20251120, 0, 0};
}

/// Each row with another remark, over what stands there.
std::vector<RowEdit> edits(cT_ADODB &db) {
    const Result<Recordset> found = readRows(
        db, u"SELECT nIDNo, tUpDateTime FROM RIYOUSHA_DOUI_REC WHERE iNewestFlg = 1 ORDER BY nIDNo"_s);
    if (!found || found->rowCount() != rows)
        stop(u"the rows to be edited are not there"_s + found.reason());
    std::vector<RowEdit> edited;
    for (int row = 0; row < rows; ++row) {
        RowEdit edit;
        edit.read.key = keyOf(int(found->number(row, 0)));
        edit.read.updateTime = found->text(row, 1);
        edit.read.values.received = short(1);
        edit.read.values.reconsent = {2026, 5, 20};
        edit.read.values.nextStart = {2026, 6, 1};
        edit.read.values.nextEnd = {2026, 11, 30};
        edit.now = edit.read.values;
        edit.now.remark = u"郵送"_s;
        edited.push_back(edit);
    }
    return edited;
}

void save(cT_ADODB &db, const std::vector<RowEdit> &edited) {
    const Result<std::vector<size_t>> overtaken = saveRows(db, edited, {QStringLiteral("一覧の保存")});
    if (!overtaken || !overtaken->empty())
        stop(u"not all rows were saved"_s + overtaken.reason());
}

void renew(cT_ADODB &db) {
    QList<RenewalRow> received;
    for (int patient = 1; patient <= rows; ++patient)
        received.append({.key = keyOf(patient),
                         .name = {},
                         .consentDate = {2025, 11, 20},
                         .reConsent = {{2026, 5, 20}, {{2026, 6, 1}, {2026, 11, 30}}}});
    const QList<RenewalResult> results = RenewalRun(db).renew(received);
    if (countOutcome(results, RenewalOutcome::Renewed) != rows)
        stop(u"not all rows were renewed"_s + results.first().reason);
}

void measureLine(Figures &figures, const PostgresServer &server) {
    const SlowLine line(server.port(), roundTrip);
    QString text = server.connectionString();
    text.replace(u"Port=%1;"_s.arg(server.port()), u"Port=%1;"_s.arg(line.port()));
    QStringList script;
    const std::unique_ptr<cT_ADODB> db = connected(text, script);
    const auto tripsOf = [&](const std::function<void()> &work) {
        const int before = line.roundTrips();
        work();
        return double(line.roundTrips() - before);
    };
    makeAnswered(*db, rows);
    {
        const QTemporaryDir folder;
        ListScreen screen(folder.path(), {2026, 5, 25}, {1, 1}, *db);
        double painted = 0;
        const double trips = tripsOf([&] {
            painted = screen.search(QDate(2026, 5, 1), QDate(2026, 5, 31));
            screen.settle();
        });
        if (screen.rowCount() != rows)
            stop(u"the list does not show all rows"_s);
        figures.note("F4 over the line, 1,000 rows", painted);
        figures.count("F4: round trips, the rows' letters included", trips, mostTripsOfASearch);
    }
    const std::vector<RowEdit> edited = edits(*db);
    double time = 0;
    double trips = tripsOf([&] { time = millisecondsOf([&] { save(*db, edited); }); });
    figures.limit("1,000 edited rows saved over the line", time, mostMilliseconds);
    figures.count("saving: round trips a row", trips / rows, mostTripsOfARow);
    trips = tripsOf([&] { time = millisecondsOf([&] { renew(*db); }); });
    figures.limit("1,000 rows renewed over the line", time, mostMilliseconds);
    figures.count("renewal: round trips a row", trips / rows, mostTripsOfARow);
}

double byShell(const PostgresServer &server, const QStringList &statements) {
    const QTemporaryDir folder;
    QFile script(folder.filePath(u"script.sql"_s));
    if (!script.open(QIODevice::WriteOnly))
        stop(script.errorString());
    for (const QString &statement : statements)
        script.write(inDialect(SqlDialect::PostgreSql, statement).toUtf8() + ";\n");
    script.close();
    QProcess shell;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"PGPASSWORD"_s, QLatin1String(PostgresServer::rightPassword));
    environment.insert(u"PGCLIENTENCODING"_s, u"UTF8"_s);
    shell.setProcessEnvironment(environment);
    shell.setStandardOutputFile(QProcess::nullDevice());
    return millisecondsOf([&] {
        shell.start(server.program(u"psql"_s),
                    {u"-X"_s, u"-q"_s, u"-v"_s, u"ON_ERROR_STOP=1"_s, u"-h"_s, u"127.0.0.1"_s, u"-p"_s,
                     QString::number(server.port()), u"-U"_s, u"douisho"_s, u"-d"_s, u"postgres"_s, u"-f"_s,
                     script.fileName()});
        if (!shell.waitForFinished(-1) || shell.exitCode() != 0)
            stop(u"psql: "_s + QString::fromUtf8(shell.readAllStandardError()));
    });
}

/// In turns, so that a busy machine disturbs both alike.
void measureLocal(Figures &figures, const PostgresServer &server) {
    QStringList script;
    const std::unique_ptr<cT_ADODB> db = connected(server.connectionString(), script);
    std::vector<double> program, shell;
    for (int turn = 0; turn < 3; ++turn) {
        makeAnswered(*db, rows);
        script.clear();
        program.push_back(millisecondsOf([&] { renew(*db); }));
        const QStringList statements = script;
        makeAnswered(*db, rows);
        shell.push_back(byShell(server, statements));
    }
    figures.compare("1,000 rows renewed on a server of this machine", median(program), "the script",
                    median(shell), allowedRatio);
}

} // namespace

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    const PostgresServer server;
    if (!server.problem().isEmpty())
        stop(server.problem());
    {
        cT_ADODB db;
        db.iInit(server.connectionString());
        if (db.iConnect() != 0)
            stop(db.sErrMsg());
        if (const Result<bool> made = makeSchema(db); !made)
            stop(made.reason());
    }
    Figures figures;
    measureLine(figures, server);
    measureLocal(figures, server);
    return figures.exitCode();
}
