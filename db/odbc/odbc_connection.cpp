#include "db/odbc/odbc_connection.h"

#include "db/odbc/odbc_errors.h"

#include <QCoreApplication>
#include <array>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>

using namespace Qt::Literals::StringLiterals;

SQLWCHAR *odbcText(const QString &text) {
    // The interface takes texts as non-const and does not change them.
    return const_cast<SQLWCHAR *>(text.utf16());
}

namespace {

/// What the waiting thread and the thread that logs in share.
struct LogIn {
    std::mutex mutex;
    std::condition_variable done;
    bool isDone = false;
    bool isAbandoned = false;
    std::unique_ptr<OdbcConnection> connection;
    QList<ProviderError> errors;
};

void logIn(const std::shared_ptr<LogIn> &shared, const OdbcTarget &target, std::chrono::seconds timeout) {
    auto connection = std::make_unique<OdbcConnection>();
    QList<ProviderError> errors;
    if (!connection->logIn(target, timeout, errors))
        connection.reset();
    const std::lock_guard lock(shared->mutex);
    if (shared->isAbandoned)
        return;
    shared->connection = std::move(connection);
    shared->errors = errors;
    shared->isDone = true;
    shared->done.notify_one();
}

/// Windows are painted meanwhile, but take no input: what is under way would be begun anew.
bool waitForLogIn(LogIn &shared, std::unique_lock<std::mutex> &lock, std::chrono::seconds limit) {
    constexpr std::chrono::milliseconds betweenPaints(50);
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!shared.done.wait_for(lock, betweenPaints, [&] { return shared.isDone; })) {
        if (std::chrono::steady_clock::now() >= end)
            return false;
        lock.unlock();
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        lock.lock();
    }
    return true;
}

} // namespace

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
    return true;
}

void OdbcConnection::learnAbout() {
    std::array<SQLWCHAR, 257> name{};
    SQLSMALLINT bytes = 0;
    if (SQL_SUCCEEDED(SQLGetInfoW(m_connection, SQL_DATABASE_NAME, name.data(),
                                  SQLSMALLINT((name.size() - 1) * sizeof(SQLWCHAR)), &bytes)))
        m_databaseName = QString::fromUtf16(reinterpret_cast<const char16_t *>(name.data()));
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
    const auto shared = std::make_shared<LogIn>();
    // The driver gives up a little earlier, so that its own words are heard where it does.
    const std::chrono::seconds ownLimit = std::max(std::chrono::seconds(1), limit - std::chrono::seconds(1));
    try {
        std::thread([=] { logIn(shared, target, ownLimit); }).detach();
    } catch (const std::system_error &) {
        errors = {odbcError(u"HY001"_s, u"接続用のスレッドを開始できません。"_s)};
        return nullptr;
    }
    std::unique_lock lock(shared->mutex);
    if (!waitForLogIn(*shared, lock, limit)) {
        shared->isAbandoned = true;
        errors = {odbcError(u"HYT00"_s, u"%1秒以内に応答がありません。"_s.arg(limit.count()))};
        return nullptr;
    }
    errors = shared->errors;
    return std::move(shared->connection);
}

OdbcStatement::OdbcStatement(std::shared_ptr<const OdbcConnection> connection)
    : m_connection(std::move(connection)) {
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_STMT, m_connection->handle(), &m_statement)))
        m_statement = nullptr;
}

OdbcStatement::~OdbcStatement() {
    if (m_statement)
        SQLFreeHandle(SQL_HANDLE_STMT, m_statement);
}
