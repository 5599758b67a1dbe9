#include "db/odbc/odbc_provider.h"

#include "db/odbc/odbc_drivers.h"
#include "db/odbc/odbc_errors.h"
#include "db/odbc/odbc_rows.h"
#include "db/odbc/postgres_session.h"
#include "db/odbc/time_limit.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {
constexpr qsizetype mostTogether = 100; ///< statements: no server reads more as one text more cheaply
} // namespace

OdbcProvider::OdbcProvider(std::chrono::seconds loginLimit) : m_loginLimit(loginLimit) {}

OdbcProvider::~OdbcProvider() {
    OdbcProvider::close();
}

bool OdbcProvider::open(const QString &connectionString) {
    close();
    const QStringList drivers = installedOdbcDrivers();
    const OdbcTarget target = odbcTarget(ConnectionString(connectionString), drivers);
    m_password = target.password;
    if (!target.reason.isEmpty())
        return fail({odbcError(u"08001"_s, target.reason)});

    QList<ProviderError> errors;
    m_connection =
        logInWithin(std::min(m_loginLimit, std::chrono::seconds(target.loginSeconds)), target, errors);
    if (m_connection)
        return true;
    if (errors.isEmpty())
        errors = {odbcError(u"08001"_s, {})};
    errors.first().description.prepend(u"%1に接続できません。"_s.arg(target.name()) +
                                       whyDriverIsMissing(target.driver, drivers));
    return fail(errors);
}

void OdbcProvider::close() {
    if (m_connection && m_inTransaction && !m_connection->isDead())
        m_connection->endTransaction(false);
    m_inTransaction = false;
    m_connection.reset();
}

QString OdbcProvider::databaseName() const {
    return m_connection ? m_connection->databaseName() : QString();
}

SqlDialect OdbcProvider::dialect() const {
    return m_connection ? m_connection->dialect() : SqlDialect::SqlServer;
}

bool OdbcProvider::fail(QList<ProviderError> errors, Effect effect) {
    const bool isLost = m_connection && (saysConnectionLost(errors) || m_connection->isDead());
    if (isLost && !errors.isEmpty())
        errors.first().description.prepend(
            effect == Effect::None
                ? u"データベースとの接続が切れました。データは変更されていません。"_s
                : u"データベースとの接続が切れました。変更が保存されたか分かりません。再読込して確かめてください。"_s);
    else if (dialect() == SqlDialect::PostgreSql)
        explainPostgresErrors(errors);
    hidePassword(errors, m_password);
    m_errors += errors;
    if (isLost)
        close();
    return false;
}

bool OdbcProvider::failStatement(const OdbcStatement &statement, Effect effect) {
    QList<ProviderError> errors = odbcDiagnostics(SQL_HANDLE_STMT, statement.handle());
    if (errors.isEmpty())
        errors = {odbcError(u"HY000"_s, u"原因不明のエラーです。"_s)};
    return failInTransaction(errors, effect);
}

/// A transaction ends with the statement that fails in it: servers differ in what is left of it, and some
/// drivers report a later commit as a success although everything was undone.
bool OdbcProvider::failInTransaction(const QList<ProviderError> &errors, Effect effect) {
    fail(errors, m_inTransaction ? Effect::None : effect);
    if (m_connection && m_inTransaction)
        rollback();
    return false;
}

bool OdbcProvider::failConnection(Effect effect) {
    QList<ProviderError> errors = odbcDiagnostics(SQL_HANDLE_DBC, m_connection->handle());
    if (errors.isEmpty())
        errors = {m_connection->isDead() ? odbcError(u"08S01"_s, {})
                                         : odbcError(u"HY000"_s, u"原因不明のエラーです。"_s)};
    return fail(errors, effect);
}

bool OdbcProvider::notOpen() {
    return fail({odbcError(u"08003"_s, u"データベースに接続していません。"_s)});
}

/// Executes; a statement that has nothing to do (SQL_NO_DATA) succeeds.
bool OdbcProvider::run(const OdbcStatement &statement, const QString &sql, Effect effect) {
    if (!statement.handle())
        return failConnection();
    // Some drivers have no time-out; the statement runs without one then.
    SQLSetStmtAttrW(statement.handle(), SQL_ATTR_QUERY_TIMEOUT,
                    odbcAttribute(SQLULEN(std::max(0, m_commandTimeout))), 0);
    const QString text = inDialect(dialect(), sql);
    const SQLRETURN result = SQLExecDirectW(statement.handle(), odbcText(text), SQLINTEGER(text.size()));
    return SQL_SUCCEEDED(result) || result == SQL_NO_DATA || failStatement(statement, effect);
}

bool OdbcProvider::query(const QString &sql, Recordset &rows) {
    rows.close();
    if (!m_connection)
        return notOpen();
    const OdbcStatement statement(m_connection);
    if (!run(statement, sql, Effect::None))
        return false;
    // Counts of changed rows may stand before the rows.
    SQLSMALLINT columns = 0;
    while (SQL_SUCCEEDED(SQLNumResultCols(statement.handle(), &columns)) && columns == 0) {
        const SQLRETURN more = SQLMoreResults(statement.handle());
        if (more == SQL_NO_DATA)
            return fail({odbcError(u"24000"_s, u"SQL が行を返しません。"_s)});
        if (!SQL_SUCCEEDED(more))
            return failStatement(statement, Effect::None);
    }
    OdbcRowReader reader(statement.handle(), m_connection->readsCellsOfBlocks());
    if (reader.readAll(rows))
        return true;
    rows.close();
    return failInTransaction(reader.errors(), Effect::None);
}

bool OdbcProvider::execute(const QString &sql, qint64 *affected) {
    QList<qint64> counts;
    const bool done = runCounting(sql, counts);
    if (affected)
        *affected = counts.value(0);
    return done;
}

bool OdbcProvider::executeAll(const QStringList &statements, QList<qint64> &affected) {
    affected.clear();
    for (qsizetype first = 0; first < statements.size(); first += mostTogether) {
        const QStringList together = statements.mid(first, mostTogether);
        QList<qint64> counts;
        if (!runCounting(together.join(u";\n"_s), counts))
            return false;
        // Nobody could tell whose counts they are.
        if (counts.size() != together.size())
            return failInTransaction({odbcError(u"HY000"_s, u"変更された件数が分かりません。"_s)},
                                     Effect::Unknown);
        affected += counts;
    }
    return true;
}

/// @param affected takes a number for each statement of the text
bool OdbcProvider::runCounting(const QString &sql, QList<qint64> &affected) {
    if (!m_connection)
        return notOpen();
    const OdbcStatement statement(m_connection);
    if (!run(statement, sql, Effect::Unknown))
        return false;
    for (;;) {
        SQLLEN count = 0;
        SQLRowCount(statement.handle(), &count);
        affected.append(std::max<SQLLEN>(count, 0));
        // An error of a later statement shows only when its result is asked for.
        const SQLRETURN more = SQLMoreResults(statement.handle());
        if (more == SQL_NO_DATA)
            return true;
        if (!SQL_SUCCEEDED(more))
            return failStatement(statement, Effect::Unknown);
    }
}

/// The driver has no time limit of its own for these. What is late goes with its connection: nothing more can
/// be sent over it, and the server undoes what it has not committed.
bool OdbcProvider::inTime(bool (OdbcConnection::*work)(bool), bool argument, Effect effect) {
    const auto connection = m_connection;
    const std::function<bool()> call = [connection, work, argument] { return (*connection.*work)(argument); };
    const std::chrono::seconds limit(m_commandTimeout);
    const std::optional<bool> done = limit.count() > 0 ? within(limit, call) : call();
    if (done)
        return *done;
    m_inTransaction = false; // the driver is still busy with it
    return fail({odbcError(u"08S01"_s, lateError(limit).description)}, effect);
}

bool OdbcProvider::begin() {
    if (!m_connection)
        return notOpen();
    if (m_inTransaction)
        return fail({odbcError(u"25000"_s, u"トランザクションはすでに始まっています。"_s)});
    if (!inTime(&OdbcConnection::setAutoCommit, false))
        return m_connection && failConnection();
    m_inTransaction = true;
    return true;
}

bool OdbcProvider::commit() {
    if (!m_connection)
        return notOpen();
    if (!m_inTransaction)
        return fail({odbcError(u"25000"_s, u"トランザクションが始まっていません。"_s)});
    // A driver may report success for a connection that it knows to be dead.
    const bool committed = inTime(&OdbcConnection::endTransaction, true, Effect::Unknown);
    if (committed && !m_connection->isDead())
        return leaveTransaction();
    if (m_connection)
        failConnection(Effect::Unknown);
    if (m_connection)
        rollback();
    return false;
}

bool OdbcProvider::rollback() {
    if (!m_connection || !m_inTransaction)
        return true;
    if (inTime(&OdbcConnection::endTransaction, false))
        return leaveTransaction();
    if (m_connection && saysNothingToUndo(odbcDiagnostics(SQL_HANDLE_DBC, m_connection->handle())))
        return leaveTransaction();
    if (m_connection)
        failConnection();
    close(); // the server undoes what is left of the transaction
    return false;
}

/// Back to statements that take effect at once; a connection that refuses would keep the next one open.
bool OdbcProvider::leaveTransaction() {
    m_inTransaction = false;
    if (inTime(&OdbcConnection::setAutoCommit, true))
        return true;
    if (m_connection)
        failConnection();
    close();
    return false;
}

QString OdbcProvider::columnsSql() const {
    if (dialect() != SqlDialect::PostgreSql)
        return DbProvider::columnsSql();
    return u"SELECT TABLE_NAME, COLUMN_NAME, DATA_TYPE, CHARACTER_MAXIMUM_LENGTH FROM "
           u"INFORMATION_SCHEMA.COLUMNS"
           " WHERE TABLE_SCHEMA = ANY (current_schemas(false))"_s;
}

QString OdbcProvider::indexesSql() const {
    if (dialect() != SqlDialect::PostgreSql)
        return DbProvider::indexesSql();
    return u"SELECT T.relname AS T, I.relname AS I, pg_get_indexdef(I.oid, A.attnum, true) FROM pg_index AS X"
           " JOIN pg_class AS T ON T.oid = X.indrelid JOIN pg_class AS I ON I.oid = X.indexrelid"
           " JOIN pg_attribute AS A ON A.attrelid = I.oid JOIN pg_namespace AS N ON N.oid = T.relnamespace"
           " WHERE N.nspname = ANY (current_schemas(false)) ORDER BY T.relname, I.relname, A.attnum"_s;
}
