#pragma once

#include "db/adodb.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// An embedded database with the suite's empty tables in a folder of its own, and a connection to it.
class TestDatabase {
public:
    TestDatabase();

    QString folder() const { return m_folder.path(); }
    QString path() const { return m_folder.filePath(QStringLiteral("suite.db")); }
    QString connectionString() const { return QStringLiteral("Provider=SQLite;Data Source=") + path(); }

    /// Runs statements past the connection, as a colleague's program would; a fault fails the test.
    void run(const QString &sql) const;
    /// The rows of a SELECT in the embedded engine's dialect, cells joined by '|', Null as "NULL".
    QStringList rows(const QString &sql) const;
    /// The first cell of the first row.
    QString value(const QString &sql) const { return rows(sql).value(0); }

private:
    QTemporaryDir m_folder;

public:
    cT_ADODB db; ///< connected
};
