#include "db/odbc/odbc_connection.h"

#include "app/base/time_limit.h"
#include "db/odbc/odbc_errors.h"
#include "db/odbc/postgres_session.h"

#include <QCoreApplication>
#include <array>

using namespace Qt::Literals::StringLiterals;

SQLWCHAR *odbcText(const QString &text) {
    // The interface takes texts as non-const and does not change them. What it calls a unit differs between
    // systems.
    return static_cast<SQLWCHAR *>(const_cast<void *>(static_cast<const void *>(text.utf16())));
}

OdbcConnection::~OdbcConnection() {
    if (m_loggedIn)
        SQLDisconnect(m_connection);
    if (m_connection)
        SQLFreeHandle(SQL_HANDLE_DBC, m_connection);
    if (m_environment)
        SQLFreeHandle(SQL_HANDLE_ENV, m_environment);
}

bool OdbcConnection::allocate(QList<ProviderError> &errors) {
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_environment))) {
        errors = {odbcError(u"HY001"_s, u"ODBC を初期化できません。"_s)};
        return false;
    }
    if (!SQL_SUCCEEDED(SQLSetEnvAttr(m_environment, SQL_ATTR_ODBC_VERSION, odbcAttribute(SQL_OV_ODBC3), 0)) ||
        !SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_DBC, m_environment, &m_connection))) {
        errors = odbcDiagnostics(SQL_HANDLE_ENV, m_environment);
        return false;
    }
    return true;
}

bool OdbcConnection::logIn(const OdbcTarget &target, std::chrono::seconds timeout,
                           QList<ProviderError> &errors) {
    if (!allocate(errors))
        return false;
    SQLSetConnectAttrW(m_connection, SQL_ATTR_LOGIN_TIMEOUT, odbcAttribute(SQLULEN(timeout.count())), 0);
    const SQLRETURN result = SQLDriverConnectW(m_connection, nullptr, odbcText(target.connectionString),
                                               SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(result)) {
        errors = odbcDiagnostics(SQL_HANDLE_DBC, m_connection);
        return false;
    }
    m_loggedIn = true;
    learnAbout();
    return m_dialect != SqlDialect::PostgreSql || beginPostgresSession(m_connection, errors);
}

QString OdbcConnection::textAbout(SQLUSMALLINT what) const {
    std::array<SQLWCHAR, 257> text{};
    SQLSMALLINT bytes = 0;
    if (!SQL_SUCCEEDED(SQLGetInfoW(m_connection, what, text.data(),
                                   SQLSMALLINT((text.size() - 1) * sizeof(SQLWCHAR)), &bytes)))
        return {};
    return QString::fromUtf16(reinterpret_cast<const char16_t *>(text.data()));
}

void OdbcConnection::learnAbout() {
    m_databaseName = textAbout(SQL_DATABASE_NAME);
    if (textAbout(SQL_DBMS_NAME).startsWith(u"PostgreSQL", Qt::CaseInsensitive))
        m_dialect = SqlDialect::PostgreSql;
    constexpr SQLUINTEGER wanted = SQL_GD_ANY_COLUMN | SQL_GD_ANY_ORDER | SQL_GD_BLOCK | SQL_GD_BOUND;
    SQLUINTEGER extensions = 0;
    if (SQL_SUCCEEDED(
            SQLGetInfoW(m_connection, SQL_GETDATA_EXTENSIONS, &extensions, sizeof extensions, nullptr)))
        m_readsCellsOfBlocks = (extensions & wanted) == wanted;
}

bool OdbcConnection::setAutoCommit(bool on) {
    return SQL_SUCCEEDED(SQLSetConnectAttrW(m_connection, SQL_ATTR_AUTOCOMMIT,
                                            odbcAttribute(on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF),
                                            SQL_IS_UINTEGER));
}

bool OdbcConnection::endTransaction(bool commit) {
    return SQL_SUCCEEDED(SQLEndTran(SQL_HANDLE_DBC, m_connection, commit ? SQL_COMMIT : SQL_ROLLBACK));
}

bool OdbcConnection::isDead() const {
    SQLUINTEGER dead = SQL_CD_FALSE;
    return SQL_SUCCEEDED(SQLGetConnectAttrW(m_connection, SQL_ATTR_CONNECTION_DEAD, &dead, 0, nullptr)) &&
           dead == SQL_CD_TRUE;
}

std::unique_ptr<OdbcConnection> logInWithin(std::chrono::seconds limit, const OdbcTarget &target,
                                            QList<ProviderError> &errors) {
    struct LogIn {
        std::unique_ptr<OdbcConnection> connection;
        QList<ProviderError> errors;
    };
    // The driver gives up a little earlier, so that its own words are heard where it does.
    const std::chrono::seconds ownLimit = std::max(std::chrono::seconds(1), limit - std::chrono::seconds(1));
    const std::function<LogIn()> work = [target, ownLimit] {
        LogIn logIn{std::make_unique<OdbcConnection>(), {}};
        if (!logIn.connection->logIn(target, ownLimit, logIn.errors))
            logIn.connection.reset();
        return logIn;
    };
    // Windows are painted meanwhile, but take no input: what is under way would be begun anew.
    std::optional<LogIn> done =
        within(limit, work, [] { QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); });
    errors = done ? done->errors : QList{lateError(limit)};
    return done ? std::move(done->connection) : nullptr;
}
