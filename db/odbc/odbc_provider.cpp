#include "db/odbc/odbc_provider.h"

#include "app/base/time_limit.h"
#include "db/odbc/odbc_drivers.h"
#include "db/odbc/odbc_errors.h"
#include "db/odbc/postgres_session.h"

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

/// Runs a text of SQL. The driver is given a little more than the time in which it should give up by itself:
/// not every driver does so beside a server that says nothing more.
bool OdbcProvider::ask(Work work, const QString &sql, Effect effect, OdbcAnswer &answer) {
    if (!m_connection)
        return notOpen();
    const std::chrono::seconds limit(m_commandTimeout);
    std::optional<OdbcAnswer> given =
        inTime<OdbcAnswer>(limit + std::max(limit / 20, std::chrono::seconds(1)),
                           [work, connection = m_connection, text = inDialect(dialect(), sql),
                            seconds = m_commandTimeout] { return work(connection, text, seconds); });
    if (!given)
        return failLate(m_inTransaction ? Effect::None : effect);
    answer = std::move(*given);
    return answer.done || failInTransaction(answer.errors, effect);
}

bool OdbcProvider::query(const QString &sql, Recordset &rows) {
    rows.close();
    OdbcAnswer answer;
    if (!ask(odbcQuery, sql, Effect::None, answer))
        return false;
    rows = std::move(answer.rows);
    return true;
}

bool OdbcProvider::execute(const QString &sql, qint64 *affected) {
    OdbcAnswer answer;
    const bool done = ask(odbcExecute, sql, Effect::Unknown, answer);
    if (affected)
        *affected = answer.counts.value(0);
    return done;
}

bool OdbcProvider::executeAll(const QStringList &statements, QList<qint64> &affected) {
    affected.clear();
    for (qsizetype first = 0; first < statements.size(); first += mostTogether) {
        const QStringList together = statements.mid(first, mostTogether);
        OdbcAnswer answer;
        if (!ask(odbcExecute, together.join(u";\n"_s), Effect::Unknown, answer))
            return false;
        // Nobody could tell whose counts they are.
        if (answer.counts.size() != together.size())
            return failInTransaction({odbcError(u"HY000"_s, u"変更された件数が分かりません。"_s)},
                                     Effect::Unknown);
        affected += answer.counts;
    }
    return true;
}

template <class T>
std::optional<T> OdbcProvider::inTime(std::chrono::seconds limit, const std::function<T()> &work) {
    return m_commandTimeout > 0 ? within(limit, work) : work();
}

/// What is late goes with its connection: nothing more can be sent over it, and the server undoes what it has
/// not committed.
bool OdbcProvider::failLate(Effect effect) {
    m_inTransaction = false; // the driver is still busy with it
    return fail({odbcError(u"08S01"_s, lateError(std::chrono::seconds(m_commandTimeout)).description)},
                effect);
}

/// The driver has no time limit of its own for these.
bool OdbcProvider::inTime(bool (OdbcConnection::*work)(bool), bool argument, Effect effect) {
    const std::optional<bool> done =
        inTime<bool>(std::chrono::seconds(m_commandTimeout),
                     [connection = m_connection, work, argument] { return (*connection.*work)(argument); });
    return done ? *done : failLate(effect);
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
