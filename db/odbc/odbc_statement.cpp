#include "db/odbc/odbc_statement.h"

#include "db/odbc/odbc_errors.h"
#include "db/odbc/odbc_rows.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

OdbcAnswer failed(const QList<ProviderError> &errors) {
    return {.done = false, .rows = {}, .counts = {}, .errors = errors};
}

} // namespace

OdbcStatement::OdbcStatement(std::shared_ptr<const OdbcConnection> connection)
    : m_connection(std::move(connection)) {
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_STMT, m_connection->handle(), &m_statement)))
        m_statement = nullptr;
}

OdbcStatement::~OdbcStatement() {
    if (m_statement)
        SQLFreeHandle(SQL_HANDLE_STMT, m_statement);
}

QList<ProviderError> OdbcStatement::errors() const {
    QList<ProviderError> errors = m_statement ? odbcDiagnostics(SQL_HANDLE_STMT, m_statement)
                                              : odbcDiagnostics(SQL_HANDLE_DBC, m_connection->handle());
    if (errors.isEmpty())
        errors = {odbcError(u"HY000"_s, u"原因不明のエラーです。"_s)};
    return errors;
}

bool OdbcStatement::run(const QString &sql, int seconds) const {
    if (!m_statement)
        return false;
    // Some drivers have no time-out of their own.
    SQLSetStmtAttrW(m_statement, SQL_ATTR_QUERY_TIMEOUT, odbcAttribute(SQLULEN(std::max(0, seconds))), 0);
    const SQLRETURN result = SQLExecDirectW(m_statement, odbcText(sql), SQLINTEGER(sql.size()));
    return SQL_SUCCEEDED(result) || result == SQL_NO_DATA;
}

OdbcAnswer odbcQuery(const std::shared_ptr<const OdbcConnection> &connection, const QString &sql,
                     int seconds) {
    const OdbcStatement statement(connection);
    if (!statement.run(sql, seconds))
        return failed(statement.errors());
    // Counts of changed rows may stand before the rows.
    SQLSMALLINT columns = 0;
    while (SQL_SUCCEEDED(SQLNumResultCols(statement.handle(), &columns)) && columns == 0) {
        const SQLRETURN more = SQLMoreResults(statement.handle());
        if (more == SQL_NO_DATA)
            return failed({odbcError(u"24000"_s, u"SQL が行を返しません。"_s)});
        if (!SQL_SUCCEEDED(more))
            return failed(statement.errors());
    }
    OdbcAnswer answer;
    OdbcRowReader reader(statement.handle(), connection->readsCellsOfBlocks());
    answer.done = reader.readAll(answer.rows);
    if (!answer.done)
        return failed(reader.errors());
    return answer;
}

OdbcAnswer odbcExecute(const std::shared_ptr<const OdbcConnection> &connection, const QString &sql,
                       int seconds) {
    const OdbcStatement statement(connection);
    if (!statement.run(sql, seconds))
        return failed(statement.errors());
    OdbcAnswer answer;
    for (;;) {
        SQLLEN count = 0;
        SQLRowCount(statement.handle(), &count);
        answer.counts.append(std::max<SQLLEN>(count, 0));
        // An error of a later statement shows only when its result is asked for.
        const SQLRETURN more = SQLMoreResults(statement.handle());
        if (more != SQL_NO_DATA && !SQL_SUCCEEDED(more))
            return failed(statement.errors());
        if (more == SQL_NO_DATA)
            break;
    }
    answer.done = true;
    return answer;
}
