#pragma once

#include "db/connection_string.h"

#include <QString>
#include <QStringList>

/// What a connection string comes to for ODBC: what the driver manager is given, and what messages and
/// the log-in need to know.
struct OdbcTarget {
    QString connectionString;
    QString server;   ///< as people know it: the server, or the data source's name
    QString driver;   ///< name or library; empty with a data source
    QString password; ///< so that it can be kept out of messages
    int loginSeconds = maxLoginSeconds;
    QString reason; ///< why there is no way to connect; empty when there is one

    static constexpr int maxLoginSeconds = 15;

    /// The server (and driver), as messages name it.
    QString name() const;
};

/// Maps an OLE DB string to the keywords of the best driver among `installed` for its server; an ODBC string
/// passes as it is, but for FreeTDS's protocol version. A keyword that neither OLE DB nor we know is an
/// error: silence would hide a typing mistake in "Use Encryption for Data".
OdbcTarget odbcTarget(const ConnectionString &source, const QStringList &installed);

/// The SQL Server driver to use: on Linux FreeTDS, else Microsoft's, the newest first; null without any.
QString sqlServerDriver(const QStringList &installed);

/// A value as ODBC reads it back: braces when a sign in it would mean something else.
QString odbcQuoted(const QString &value);
