#include "tests/support/test_database.h"

#include "db/tables/schema.h"
#include "history/log_tables.h"
#include "tests/odbc/postgres_server.h"
#include "tests/support/test_environment.h"

#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>
#include <memory>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// Past the program's own provider: what is not under test must not be able to hide a fault in it.
std::unique_ptr<sqlite3, decltype(&sqlite3_close)> open(const QString &path) {
    sqlite3 *raw = nullptr;
    EXPECT_EQ(sqlite3_open(path.toUtf8().constData(), &raw), SQLITE_OK);
    sqlite3_busy_timeout(raw, 5000);
    // A test's data need not survive a power failure; syncing took most of the tests' time.
    // Data of earlier programs keep no rules.
    sqlite3_exec(raw, "PRAGMA synchronous = OFF; PRAGMA ignore_check_constraints = ON", nullptr, nullptr,
                 nullptr);
    // Comparing byte by byte is enough for what tests look up.
    sqlite3_create_collation(
        raw, "Japanese_CI_AS", SQLITE_UTF8, nullptr,
        [](void *, int leftLength, const void *left, int rightLength, const void *right) {
            return QByteArray::fromRawData(static_cast<const char *>(left), leftLength)
                .compare(QByteArray::fromRawData(static_cast<const char *>(right), rightLength));
        });
    return {raw, &sqlite3_close};
}

bool onServer() {
    static const bool asked = qgetenv("DOUISHO_TEST_ENGINE") == "PostgreSQL";
    return asked;
}

/// The suite's tables and those of the history.
void makeAllTables(cT_ADODB &suite) {
    EXPECT_EQ(suite.iConnect(), 0) << suite.sErrMsg().toStdString();
    for (const auto &make : {makeSchema, makeLogTables}) {
        const Result<bool> made = make(suite);
        EXPECT_TRUE(made) << made.reason().toStdString();
    }
}

/// The server of the run, with the suite's tables in the database that others are copied from.
class Server {
public:
    static Server &ofRun() {
        static Server server;
        return server;
    }

    QString connectionString(const QString &database) const {
        return m_server.connectionString(QString(QLatin1String(PostgresServer::rightPassword)), database);
    }

    QString makeDatabase() {
        const QString name = u"test%1"_s.arg(++m_made);
        run(u"CREATE DATABASE %1 TEMPLATE suite STRATEGY FILE_COPY"_s.arg(name));
        return name;
    }
    void drop(const QString &name) { run(u"DROP DATABASE %1 WITH (FORCE)"_s.arg(name)); }

private:
    Server() {
        EXPECT_EQ(m_server.problem().toStdString(), "");
        m_administrator.iInit(connectionString(u"postgres"_s));
        EXPECT_EQ(m_administrator.iConnect(), 0) << m_administrator.sErrMsg().toStdString();
        run(u"CREATE DATABASE suite"_s);
        cT_ADODB suite;
        suite.iInit(connectionString(u"suite"_s));
        makeAllTables(suite);
    }
    void run(const QString &sql) {
        EXPECT_EQ(m_administrator.iExecSQL(sql), 0) << m_administrator.sErrMsg().toStdString();
    }

    PostgresServer m_server;
    cT_ADODB m_administrator;
    int m_made = 0;
};

/// The file that an empty database of the suite is, made once.
const QByteArray &embeddedSuite() {
    static const QByteArray bytes = [] {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"suite.db"_s);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.close();
        {
            cT_ADODB suite;
            suite.iInit(u"Provider=SQLite;Data Source="_s + path);
            makeAllTables(suite);
        }
        EXPECT_EQ(sqlite3_exec(open(path).get(), "PRAGMA journal_mode = DELETE", nullptr, nullptr, nullptr),
                  SQLITE_OK);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }();
    return bytes;
}

QString joinedCells(const Recordset &rows, int row) {
    QStringList cells;
    for (int column = 0; column < rows.columnCount(); ++column)
        cells.append(rows.isNull(row, column) ? u"NULL"_s : rows.text(row, column));
    return cells.join(u'|');
}

} // namespace

QList<SuiteColumn> suiteColumns(const QString &table) {
    static const QRegularExpression column(u"^ *(\\S+) (?:N?VARCHAR\\((\\d+)\\)|[A-Z]+).*,$"_s,
                                           QRegularExpression::MultilineOption);
    QList<SuiteColumn> columns;
    for (const QString &statement : schemaStatements())
        if (statement.startsWith(u"CREATE TABLE %1 ("_s.arg(table)))
            for (const auto &match : column.globalMatch(statement.section(u'\n', 1)))
                columns.append({match.captured(1), match.captured(2).toInt()});
    return columns;
}

TestDatabase::TestDatabase() {
    if (onServer()) {
        m_name = Server::ofRun().makeDatabase();
        m_connectionString = Server::ofRun().connectionString(m_name);
        m_colleague = std::make_unique<cT_ADODB>();
        m_colleague->iInit(m_connectionString);
        EXPECT_EQ(m_colleague->iConnect(), 0) << m_colleague->sErrMsg().toStdString();
    } else {
        m_connectionString = u"Provider=SQLite;Data Source="_s + path();
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(embeddedSuite());
    }
    EXPECT_EQ(db.iInit(connectionString()), 0);
    EXPECT_EQ(db.iConnect(), 0) << db.sErrMsg().toStdString();
}

TestDatabase::~TestDatabase() {
    if (m_name.isEmpty())
        return;
    db.iDisConnect();
    m_colleague.reset();
    Server::ofRun().drop(m_name);
}

void TestDatabase::run(const QString &sql) const {
    if (m_colleague) {
        EXPECT_EQ(m_colleague->iExecSQL(sql), 0)
            << sql.left(300).toStdString() << m_colleague->sErrMsg().toStdString();
        return;
    }
    const auto handle = open(path());
    char *fault = nullptr;
    EXPECT_EQ(sqlite3_exec(handle.get(), sql.toUtf8().constData(), nullptr, nullptr, &fault), SQLITE_OK)
        << (fault ? fault : "");
    sqlite3_free(fault);
}

QStringList TestDatabase::rows(const QString &sql) const {
    QStringList rows;
    if (m_colleague) {
        Recordset read;
        EXPECT_EQ(m_colleague->iOpenRecSet(read, sql), 0)
            << sql.toStdString() << m_colleague->sErrMsg().toStdString();
        for (int row = 0; row < read.rowCount(); ++row)
            rows.append(joinedCells(read, row));
        return rows;
    }
    const auto take = [](void *to, int count, char **values, char **) {
        QStringList cells;
        for (int i = 0; i < count; ++i)
            cells.append(values[i] ? QString::fromUtf8(values[i]) : QStringLiteral("NULL"));
        static_cast<QStringList *>(to)->append(cells.join(u'|'));
        return 0;
    };
    const auto handle = open(path());
    EXPECT_EQ(sqlite3_exec(handle.get(), sql.toUtf8().constData(), take, &rows, nullptr), SQLITE_OK)
        << sqlite3_errmsg(handle.get());
    return rows;
}
