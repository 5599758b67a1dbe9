#pragma once

#include <QString>
#include <QTemporaryDir>

/// A PostgreSQL server of the test's own: data in a temporary folder, a free port of the loopback address,
/// password log-in. It ends with the object, and with the process however that ends.
class PostgresServer {
public:
    PostgresServer();
    ~PostgresServer();
    PostgresServer(const PostgresServer &) = delete;
    PostgresServer &operator=(const PostgresServer &) = delete;

    /// Why there is no server; empty when it runs.
    const QString &problem() const { return m_problem; }

    bool start();
    /// Ends the server at once, as a power failure would.
    void kill();

    quint16 port() const { return m_port; }
    QString connectionString(const QString &password = QString(QLatin1String(rightPassword)),
                             const QString &database = QStringLiteral("postgres")) const {
        return QStringLiteral(
                   "Provider=PostgreSQL;Server=127.0.0.1;Port=%1;Database=%2;User ID=douisho;Password=%3")
            .arg(QString::number(m_port), database, password);
    }

    /// Path of one of the programs that come with the server.
    QString program(const QString &name) const { return m_programs + u'/' + name; }

    static constexpr const char *rightPassword = "Geheim-42";

private:
    bool prepare();
    bool initialise();
    bool failWith(const QString &problem);
    QString path(const QString &name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
    QString m_programs; ///< folder of the server's programs
    QString m_driver;
    QString m_problem;
    unsigned m_user = 0; ///< the server refuses to run as root
    unsigned m_group = 0;
    quint16 m_port = 0;
    int m_process = 0;
};

/// A port of the loopback address where nothing listens at the moment.
quint16 freePort();

/// Library of an ODBC driver by its file name; empty when it is not installed.
QString odbcDriverLibrary(const QString &fileName);
