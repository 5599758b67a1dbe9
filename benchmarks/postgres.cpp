// PostgreSQL on this machine: the list's rows beside a bare block fetch of the same query, and the renewal of
// a thousand rows beside the same statements as one script in the server's own shell.

#include "benchmarks/figures.h"
#include "benchmarks/noting_provider.h"
#include "consent/list/list_model.h"
#include "consent/record/renewal_run.h"
#include "consent/rows/list_query.h"
#include "db/adodb.h"
#include "db/odbc/odbc_connection.h"
#include "db/odbc/odbc_drivers.h"
#include "db/tables/keys_query.h"
#include "sample/sample_database.h"
#include "sample/server_database.h"
#include "tests/odbc/postgres_server.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdio>

using namespace Qt::Literals::StringLiterals;

namespace {

const QDate day(2026, 11, 21);
constexpr Branch branch{1, 1};
constexpr int copies = 60; ///< of the sample's patients: some ten thousand rows in the list
constexpr int renewed = 1000;
constexpr int repetitions = 5;

QString connectionTo(const PostgresServer &server, const QString &database) {
    return server.connectionString(QString(QLatin1String(PostgresServer::rightPassword)), database);
}

void connect(cT_ADODB &db, const QString &connectionString) {
    db.iInit(connectionString);
    if (db.iConnect() != 0)
        stop(db.sErrMsg());
}

void run(cT_ADODB &db, const QString &sql) {
    if (db.iExecSQL(sql) != 0)
        stop(db.sErrMsg());
}

/// The sample's patients many times over.
void makeOffice(const PostgresServer &server) {
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"sample.db"_s);
    cT_ADODB administrator, office;
    connect(administrator, connectionTo(server, u"postgres"_s));
    run(administrator, u"CREATE DATABASE office"_s);
    for (const Result<> &done : {sample::makeSampleDatabase(file, day, 300),
                                 sample::copyToServer(file, connectionTo(server, u"office"_s))})
        if (!done)
            stop(done.reason());
    connect(office, connectionTo(server, u"office"_s));
    for (const QString &table : {u"RIYOUSHA"_s, u"RIYOUSHA_SUB"_s, u"RIYOUSHA_DOUI_REC"_s}) {
        const Result<Recordset> none = readRows(office, u"SELECT * FROM %1 WHERE 1 = 0"_s.arg(table));
        const QString columns = none ? none->columns().join(u", ") : QString();
        QString values = columns;
        run(office, u"INSERT INTO %1 (%2) SELECT %3 FROM %1, generate_series(1, %4) AS k"_s.arg(
                        table, columns, values.replace(u"nidno,"_s, u"nidno + 1000 * k,"_s),
                        QString::number(copies)));
    }
    run(office, u"UPDATE RIYOUSHA_DOUI_REC SET iGetFlg = 1, tSaiDouiDay = '2027/12/20', tSaiDouiKaryoS = "
                u"'2028/01/01',"
                " tSaiDouiKaryoE = '2028/06/30' WHERE iNewestFlg = 1 AND iHenkeiFlg = 0"_s);
    run(office, u"ANALYZE"_s);
}

ListFilter wholeYear() {
    ListFilter filter;
    filter.lapsedBefore = day;
    filter.from = QDate(2026, 11, 1);
    filter.to = QDate(2027, 10, 31);
    return filter;
}

/// Binds every column as what it is, fetches blocks and drops them.
size_t bareLoop(SQLHDBC connection, const QString &sql) {
    constexpr size_t blockRows = 200, cellBytes = 512;
    SQLHSTMT statement = nullptr;
    SQLAllocHandle(SQL_HANDLE_STMT, connection, &statement);
    SQLULEN fetched = 0;
    SQLSetStmtAttrW(statement, SQL_ATTR_ROW_ARRAY_SIZE, odbcAttribute(blockRows), 0);
    SQLSetStmtAttrW(statement, SQL_ATTR_ROWS_FETCHED_PTR, &fetched, 0);
    if (!SQL_SUCCEEDED(SQLExecDirectW(statement, odbcText(sql), SQL_NTS)))
        stop(u"the server refuses the bare query"_s);
    SQLSMALLINT columns = 0;
    SQLNumResultCols(statement, &columns);
    const auto count = size_t(columns);
    std::vector<std::vector<char>> values(count, std::vector<char>(blockRows * cellBytes));
    std::vector<std::vector<SQLLEN>> lengths(count, std::vector<SQLLEN>(blockRows));
    for (SQLUSMALLINT i = 0; i < columns; ++i) {
        SQLLEN type = 0;
        SQLColAttributeW(statement, SQLUSMALLINT(i + 1), SQL_DESC_CONCISE_TYPE, nullptr, 0, nullptr, &type);
        const SQLSMALLINT bound = type == SQL_SMALLINT || type == SQL_INTEGER || type == SQL_BIGINT
                                      ? SQL_C_SBIGINT
                                  : type == SQL_TYPE_TIMESTAMP ? SQL_C_TYPE_TIMESTAMP
                                                               : SQL_C_WCHAR;
        const SQLLEN bytes = bound == SQL_C_WCHAR ? SQLLEN(cellBytes) : SQLLEN(sizeof(SQL_TIMESTAMP_STRUCT));
        SQLBindCol(statement, SQLUSMALLINT(i + 1), bound, values[i].data(), bytes, lengths[i].data());
    }
    size_t rows = 0;
    while (SQL_SUCCEEDED(SQLFetch(statement)))
        rows += fetched;
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
    return rows;
}

void measureList(Figures &figures, const PostgresServer &server) {
    const QString text = connectionTo(server, u"office"_s);
    cT_ADODB db;
    connect(db, text);
    OdbcConnection bare;
    QList<ProviderError> errors;
    if (!bare.logIn(odbcTarget(ConnectionString(text), installedOdbcDrivers()), std::chrono::seconds(10),
                    errors))
        stop(u"no second connection"_s);
    const ListFilter filter = wholeYear();
    const QString sql = listSql(branch, filter);
    std::vector<double> loop, list;
    ConsentListModel model;
    size_t rows = 0;
    for (int i = 0; i <= repetitions; ++i) { // the first one warms the caches
        const double bareTime =
            millisecondsOf([&] { rows = bareLoop(bare.handle(), inDialect(SqlDialect::PostgreSql, sql)); });
        const double listTime = millisecondsOf([&] {
            Result<Recordset> read = readRows(db, sql);
            if (!read)
                stop(read.reason());
            model.load(std::move(*read), {day, filter.from, filter.to, false, {}, nullptr});
        });
        if (size_t(model.records().count()) != rows)
            stop(u"%1 rows and %2"_s.arg(rows).arg(model.records().count()));
        if (i == 0)
            continue;
        loop.push_back(bareTime);
        list.push_back(listTime);
    }
    std::printf("%zu rows of the list from PostgreSQL\n", rows);
    figures.compare("query into the grid's model", median(list), "bare block fetch", median(loop), 1.5);
}

double renewByProgram(const QString &connectionString, QStringList &script) {
    cT_ADODB db(
        [&](const QString &text) { return std::make_unique<NotingProvider>(makeProvider(text), script); });
    connect(db, connectionString);
    const Result<Recordset> found = readRows(
        db,
        u"SELECT TOP %1 nIDNo, nDate, tDouiDay FROM RIYOUSHA_DOUI_REC WHERE iNewestFlg = 1 AND iHenkeiFlg = 0"
        " AND iReceptDisabledFlg = 0 AND iKyotenCd = 1 AND tDouiDay IS NOT NULL ORDER BY nIDNo, nDate"_s.arg(
            renewed));
    if (!found)
        stop(found.reason());
    QList<RenewalRow> rows;
    for (int i = 0; i < found->rowCount(); ++i)
        rows.append({.key = {{1, 1, qint32(found->number(i, 0))}, qint32(found->number(i, 1)), 0, 0},
                     .name = {},
                     .consentDate = found->date(i, 2),
                     .reConsent = {{2027, 12, 20}, {{2028, 1, 1}, {2028, 6, 30}}},
                     .newest = true});
    script.clear();
    QList<RenewalResult> results;
    const double time = millisecondsOf([&] { results = RenewalRun(db).renew(rows); });
    if (countOutcome(results, RenewalOutcome::Renewed) != renewed)
        stop(u"renewed %1: %2"_s.arg(countOutcome(results, RenewalOutcome::Renewed))
                 .arg(results.value(0).reason));
    return time;
}

QByteArray inServersWords(const QStringList &script) {
    QByteArray text;
    for (const QString &sql : script)
        text += inDialect(SqlDialect::PostgreSql, sql).toUtf8() + ";\n";
    return text;
}

double renewByShell(const PostgresServer &server, const QString &database, const QString &script) {
    QProcess shell;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"PGPASSWORD"_s, QString(QLatin1String(PostgresServer::rightPassword)));
    shell.setProcessEnvironment(environment);
    shell.setStandardOutputFile(QProcess::nullDevice());
    return millisecondsOf([&] {
        shell.start(u"psql"_s,
                    {u"-q"_s, u"-v"_s, u"ON_ERROR_STOP=1"_s, u"-h"_s, u"127.0.0.1"_s, u"-p"_s,
                     QString::number(server.port()), u"-U"_s, u"douisho"_s, u"-f"_s, script, database});
        if (!shell.waitForFinished(-1) || shell.exitCode() != 0)
            stop(u"psql: "_s + QString::fromUtf8(shell.readAllStandardError()));
    });
}

void measureRenewal(Figures &figures, const PostgresServer &server) {
    const QTemporaryDir folder;
    cT_ADODB administrator;
    connect(administrator, connectionTo(server, u"postgres"_s));
    std::vector<double> program, shell;
    for (int i = 0; i < 3; ++i) {
        for (const QString &copy : {u"ours"_s, u"theirs"_s}) {
            run(administrator, u"DROP DATABASE IF EXISTS %1"_s.arg(copy));
            run(administrator, u"CREATE DATABASE %1 TEMPLATE office"_s.arg(copy));
        }
        QStringList script;
        program.push_back(renewByProgram(connectionTo(server, u"ours"_s), script));
        QFile file(folder.filePath(u"script.sql"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(inServersWords(script)) < 0)
            stop(file.errorString());
        file.close();
        shell.push_back(renewByShell(server, u"theirs"_s, file.fileName()));
    }
    figures.compare("renewing 1,000 rows", median(program), "the server's shell", median(shell), 3.0);
}

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const PostgresServer server;
    if (!server.problem().isEmpty())
        stop(server.problem());
    makeOffice(server);
    Figures figures;
    measureList(figures, server);
    measureRenewal(figures, server);
    return figures.exitCode();
}
