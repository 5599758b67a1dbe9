#pragma once

#include "db/odbc/odbc_connection.h"
#include "db/recordset.h"

#include <QList>
#include <QString>
#include <memory>

/// A statement handle. It keeps its connection: closing that under it would free the handle twice.
class OdbcStatement {
public:
    explicit OdbcStatement(std::shared_ptr<const OdbcConnection> connection);
    ~OdbcStatement();
    OdbcStatement(const OdbcStatement &) = delete;
    OdbcStatement &operator=(const OdbcStatement &) = delete;

    SQLHSTMT handle() const { return m_statement; }
    /// Executes; a statement that has nothing to do (SQL_NO_DATA) succeeds.
    bool run(const QString &sql, int seconds) const;
    /// Why the last call failed.
    QList<ProviderError> errors() const;

private:
    std::shared_ptr<const OdbcConnection> m_connection;
    SQLHSTMT m_statement = nullptr;
};

/// What a text of SQL has given.
struct OdbcAnswer {
    bool done = false;
    Recordset rows;              ///< of a query
    QList<qint64> counts;        ///< changed rows, for each statement of the text
    QList<ProviderError> errors; ///< why it is not done
};

/// @name In the server's own dialect
/// Each keeps its connection and blocks as long as the driver does.
/// @param seconds after which the driver gives up, where it can; 0 never
///@{
/// The rows of the first statement that gives rows.
OdbcAnswer odbcQuery(const std::shared_ptr<const OdbcConnection> &connection, const QString &sql,
                     int seconds);
OdbcAnswer odbcExecute(const std::shared_ptr<const OdbcConnection> &connection, const QString &sql,
                       int seconds);
///@}
