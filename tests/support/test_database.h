#pragma once

#include "db/adodb.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A column of the suite's tables, and the length of its texts; 0 for others.
struct SuiteColumn {
    QString name;
    int length;
};
QList<SuiteColumn> suiteColumns(const QString &table);

/// A database with the suite's empty tables, and a connection to it: an embedded one in a folder of its own,
/// or, when the environment says DOUISHO_TEST_ENGINE=PostgreSQL, one of its own on a server that the run of
/// the tests starts.
class TestDatabase {
public:
    TestDatabase();
    ~TestDatabase();
    TestDatabase(const TestDatabase &) = delete;
    TestDatabase &operator=(const TestDatabase &) = delete;

    QString folder() const { return m_folder.path(); }
    /// Of the embedded database.
    QString path() const { return m_folder.filePath(QStringLiteral("suite.db")); }
    QString connectionString() const { return m_connectionString; }

    /// Runs statements past the connection, as a colleague's program would; a fault fails the test.
    void run(const QString &sql) const;
    /// The rows of a SELECT in the embedded engine's dialect, cells joined by '|', Null as "NULL".
    QStringList rows(const QString &sql) const;
    /// The first cell of the first row.
    QString value(const QString &sql) const { return rows(sql).value(0); }

private:
    QTemporaryDir m_folder;
    QString m_name; ///< of the database on the server; empty: embedded
    QString m_connectionString;
    std::unique_ptr<cT_ADODB> m_colleague; ///< on the server

public:
    cT_ADODB db; ///< connected
};
