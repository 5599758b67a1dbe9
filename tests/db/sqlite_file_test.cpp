#include "tests/db/embedded_database.h"
#include "tests/support/test_environment.h"

#include <QDir>
#include <QElapsedTimer>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Files that are no good, and what is said about them.
class SqliteFile : public EmbeddedDatabase {
protected:
    /// Opening must fail; the one error's state and description.
    std::string refusal(const QString &connection) {
        SqliteProvider provider;
        EXPECT_FALSE(provider.open(connection));
        EXPECT_FALSE(provider.isOpen());
        EXPECT_EQ(provider.errors().size(), 1);
        const ProviderError error = provider.errors().value(0);
        EXPECT_EQ(error.source, u"SQLite"_s);
        return (error.sqlState + u' ' + error.description).toStdString();
    }

    QString other(const QString &name) const { return QFileInfo(path()).dir().filePath(name); }

    void write(const QString &file, const QByteArray &bytes) {
        QFile out(file);
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        EXPECT_EQ(out.write(bytes), bytes.size());
    }

    QByteArray read(const QString &file) {
        QFile in(file);
        EXPECT_TRUE(in.open(QIODevice::ReadOnly));
        return in.readAll();
    }
};

/// Drops root's rights over files while it lives.
class AsOrdinaryUser {
public:
    AsOrdinaryUser() {
        if (m_user == 0) {
            EXPECT_EQ(seteuid(nobody), 0);
        }
    }
    ~AsOrdinaryUser() { EXPECT_EQ(seteuid(m_user), 0); }
    AsOrdinaryUser(const AsOrdinaryUser &) = delete;
    AsOrdinaryUser &operator=(const AsOrdinaryUser &) = delete;

private:
    static constexpr uid_t nobody = 65534;
    const uid_t m_user = geteuid();
};

constexpr auto readable = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
constexpr auto enterable = QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;

} // namespace

TEST_F(SqliteFile, WhatIsNoDatabaseIsRefusedByNameAndLeftAlone) {
    const QByteArray contents[] = {QByteArray("これはデータベースではありません。\n").repeated(40),
                                   QByteArray(4096, '\0'),
                                   QByteArray("SQLite format 3").leftJustified(600, 'x')};
    for (const QByteArray &bytes : contents) {
        const QString file = other(u"写真.jpg"_s);
        write(file, bytes);
        const std::string reason = refusal(u"Provider=SQLite;Data Source="_s + file);
        EXPECT_TRUE(reason.starts_with("08001 データベースファイルではありません。")) << reason;
        EXPECT_NE(reason.find(file.toStdString()), std::string::npos) << reason;
        EXPECT_EQ(read(file), bytes);
    }
}

TEST_F(SqliteFile, AMissingFileIsNamedAndNotMade) {
    const QString missing = other(u"missing.db"_s);
    const std::string reason = refusal(u"Provider=SQLite;Data Source="_s + missing);
    EXPECT_EQ(reason, "08001 データベースファイルがありません。（" + missing.toStdString() + "）");
    EXPECT_FALSE(QFile::exists(missing));
    const QString folder = QFileInfo(path()).path();
    EXPECT_NE(refusal(u"Provider=SQLite;Data Source="_s + folder).find(folder.toStdString()),
              std::string::npos);
}

TEST_F(SqliteFile, ConnectionStringsThatSayTooLittleOrTooMuch) {
    const struct {
        QString connection;
        const char *mentioned;
    } cases[] = {
        {u"Provider=SQLite"_s, "Data Source"},
        {u"Provider=SQLite;Data Source="_s, "Data Source"},
        {u"Provider=SQLite;Data Sorce="_s + path(), "Data Sorce"},
        {u"Provider=SQLite;Data Source='"_s + path(), "'"},
    };
    for (const auto &c : cases)
        EXPECT_NE(refusal(c.connection).find(c.mentioned), std::string::npos) << c.connection.toStdString();
}

TEST_F(SqliteFile, ARelativePathCountsFromTheProgramFolder) {
    const QByteArray before = qgetenv("DOUISHO_FOLDER");
    qputenv("DOUISHO_FOLDER", QFile::encodeName(QFileInfo(path()).path()));
    QDir(QFileInfo(path()).path()).mkdir(u"data"_s);
    write(other(u"data/own.db"_s), {});
    SqliteProvider relative;
    EXPECT_TRUE(relative.open(u"Provider=SQLite;Data Source=data\\own.db"_s));
    EXPECT_EQ(relative.databaseName(), u"own"_s);
    before.isNull() ? qunsetenv("DOUISHO_FOLDER") : qputenv("DOUISHO_FOLDER", before);
}

TEST_F(SqliteFile, ColumnsTakeWhatTheServersWouldTake) {
    run(u"CREATE TABLE T (a INT, cText NVARCHAR(3) NOT NULL, tDay DATETIME, CONSTRAINT P PRIMARY KEY (a))"_s);
    const struct {
        QString values;
        bool taken;
    } cases[] = {{u"1, N'𠮷あｱ', '2028/02/29'"_s, true},
                 {u"2, '', Null"_s, true},
                 {u"3, 'abc', '2026/11/21 09:08:07.065'"_s, true},
                 {u"4, 'abcd', Null"_s, false},
                 {u"5, 'abc', '2026/02/30'"_s, false},
                 {u"6, 'abc', 'someday'"_s, false},
                 {u"7, Null, Null"_s, false}};
    for (const auto &c : cases)
        EXPECT_EQ(db.execute(u"INSERT INTO T VALUES ("_s + c.values + u")"_s, nullptr), c.taken)
            << c.values.toStdString();
    EXPECT_FALSE(db.execute(u"UPDATE T SET tDay = '2026/04/31'"_s, nullptr));
    EXPECT_EQ(cells(u"SELECT count(*) FROM T"_s), u"3"_s);
}

TEST_F(SqliteFile, AReadOnlyFileIsReadAndNotWritten) {
    run(u"CREATE TABLE T (a int); INSERT INTO T VALUES (5)"_s);
    const QFileInfo file(path());
    const struct {
        QFile::Permissions file, folder;
    } cases[] = {
        {readable, readable | enterable},
        {readable, readable | enterable | QFile::WriteOwner | QFile::WriteOther},
        {readable | QFile::WriteOwner | QFile::WriteOther, readable | enterable},
    };
    for (const auto &c : cases) {
        db.close();
        ASSERT_TRUE(QFile::setPermissions(path(), c.file));
        ASSERT_TRUE(QFile::setPermissions(file.path(), c.folder));
        {
            const AsOrdinaryUser ordinary;
            ASSERT_TRUE(db.open(connectionString())) << errors();
            EXPECT_EQ(cells(u"SELECT a FROM T"_s), u"5"_s);
            EXPECT_FALSE(db.execute(u"UPDATE T SET a = 6"_s, nullptr));
            ASSERT_EQ(db.errors().size(), 1);
            EXPECT_EQ(db.errors()[0].sqlState, u"25006"_s);
            EXPECT_TRUE(db.errors()[0].description.startsWith(
                u"データベースファイルに書き込めません（読み取り専用です）。"));
            EXPECT_TRUE(db.errors()[0].description.contains(path()));
            db.clearErrors();
            EXPECT_EQ(cells(u"SELECT a FROM T"_s), u"5"_s);
            db.close();
        }
        QFile::setPermissions(file.path(), readable | enterable | QFile::WriteOwner);
    }
}

TEST_F(SqliteFile, WhoMayOnlyReadSeesWhatOthersWriteMeanwhile) {
    run(u"CREATE TABLE T (a int); INSERT INTO T VALUES (5)"_s);
    db.close();
    const QFile::Permissions shared = readable | enterable;
    ASSERT_TRUE(QFile::setPermissions(path(), readable));
    ASSERT_TRUE(QFile::setPermissions(QFileInfo(path()).path(), shared));
    std::optional<AsOrdinaryUser> ordinary(std::in_place);
    ASSERT_TRUE(db.open(connectionString())) << errors();
    EXPECT_EQ(cells(u"SELECT a FROM T"_s), u"5"_s);
    ordinary.reset();
    QFile::setPermissions(path(), readable | QFile::WriteOwner);
    QFile::setPermissions(QFileInfo(path()).path(), shared | QFile::WriteOwner);
    SqliteProvider colleague;
    ASSERT_TRUE(colleague.open(connectionString()));
    ASSERT_TRUE(colleague.execute(u"UPDATE T SET a = 6"_s, nullptr));
    for (const bool stays : {true, false}) {
        if (!stays)
            colleague.close();
        ordinary.emplace();
        EXPECT_EQ(cells(u"SELECT a FROM T"_s), u"6"_s) << stays << errors();
        ordinary.reset();
    }
}

TEST_F(SqliteFile, AnotherProgramsLockIsWaitedForAndThenReported) {
    run(u"CREATE TABLE T (a int)"_s);
    SqliteProvider colleague;
    ASSERT_TRUE(colleague.open(connectionString()));
    ASSERT_TRUE(colleague.begin());
    ASSERT_TRUE(colleague.execute(u"INSERT INTO T VALUES (1)"_s, nullptr));
    EXPECT_EQ(cells(u"SELECT count(*) FROM T"_s), u"0"_s) << "reading goes on meanwhile";
    QElapsedTimer clock;
    const QString writing[] = {u"INSERT INTO T VALUES (2)"_s, u"CREATE TABLE U (a int)"_s, {}};
    for (const QString &sql : writing) {
        clock.start();
        EXPECT_FALSE(sql.isEmpty() ? db.begin() : db.execute(sql, nullptr));
        EXPECT_GE(clock.elapsed(), 90);
        const std::string reason = errors();
        EXPECT_TRUE(reason.starts_with("HYT00 データベースファイルが他のプログラムで使用中です。")) << reason;
        EXPECT_NE(reason.find(path().toStdString()), std::string::npos);
    }
    ASSERT_TRUE(colleague.commit());
    run(u"INSERT INTO T VALUES (2)"_s);
    EXPECT_EQ(cells(u"SELECT a FROM T ORDER BY a"_s), u"1 2"_s);
}

TEST_F(SqliteFile, AnExclusivelyLockedFileIsReportedOnOpening) {
    run(u"PRAGMA locking_mode = EXCLUSIVE; CREATE TABLE T (a int)"_s);
    const std::string reason = refusal(connectionString());
    EXPECT_TRUE(reason.starts_with("HYT00 データベースファイルが他のプログラムで使用中です。")) << reason;
}

TEST_F(SqliteFile, AMissingTableOrColumnIsNamedWithItsFile) {
    run(u"CREATE TABLE T (a int REFERENCES T (a) PRIMARY KEY)"_s);
    const struct {
        QString sql;
        const char *reason;
    } cases[] = {
        {u"SELECT * FROM RIYOUSHA"_s, "42S02 データベースに表がありません。no such table: RIYOUSHA"},
        {u"SELECT T.cName FROM T"_s, "42S22 データベースの表に列がありません。no such column: T.cName"},
        {u"INSERT INTO T (cName) VALUES (1)"_s,
         "42S22 データベースの表に列がありません。table T has no column named cName"},
        {u"INSERT INTO T VALUES (1)"_s, ""}, // refers to itself
        {u"INSERT INTO T VALUES (3), (4) ON CONFLICT DO NOTHING; INSERT INTO T VALUES (3)"_s,
         "23000 データの決まりに反するため、書き込めません。UNIQUE constraint failed: T.a"},
        {u"UPDATE T SET a = 9"_s,
         "23000 データの決まりに反するため、書き込めません。UNIQUE constraint failed: T.a"},
    };
    for (const auto &c : cases) {
        db.execute(c.sql, nullptr);
        const std::string expected = c.reason + (*c.reason ? "（" + path().toStdString() + "）" : "");
        EXPECT_EQ(errors(), expected) << c.sql.toStdString();
    }
    run(u"CREATE TABLE U (a int REFERENCES T (a))"_s);
    EXPECT_FALSE(db.execute(u"INSERT INTO U VALUES (77)"_s, nullptr)) << "foreign keys count";
}

TEST_F(SqliteFile, AFileDamagedInTheMiddleIsReportedByName) {
    run(u"CREATE TABLE T (a int, b text)"_s);
    run(u"INSERT INTO T WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2000) "
        "SELECT i, 'some text to fill pages with' FROM n"_s);
    db.close();
    QByteArray bytes = read(path());
    ASSERT_GT(bytes.size(), 40000);
    write(path(), bytes.replace(8192, 20000, QByteArray(20000, '\x55')));
    ASSERT_TRUE(db.open(connectionString())) << errors();
    Recordset rows;
    EXPECT_FALSE(db.query(u"SELECT count(*), max(b) FROM T"_s, rows));
    const std::string reason = errors();
    EXPECT_TRUE(reason.starts_with("HY000 データベースファイルが壊れています。")) << reason;
    EXPECT_NE(reason.find(path().toStdString()), std::string::npos);
}

TEST_F(SqliteFile, AFileThatGoesAwayIsNoticedAndFoundAgain) {
    run(u"CREATE TABLE T (a int)"_s);
    db.close(); // which moves everything from the log into the file
    const QByteArray good = read(path());
    ASSERT_TRUE(db.open(connectionString()));
    for (const QByteArray &bytes : {QByteArray(), QByteArray(good.size(), 'x')}) {
        write(path(), bytes); // as on a share that is torn down
        EXPECT_FALSE(db.execute(u"INSERT INTO T VALUES (1)"_s, nullptr));
        EXPECT_NE(errors().find(path().toStdString()), std::string::npos);
    }
    db.close();
    EXPECT_FALSE(db.begin());
    EXPECT_EQ(errors(), "08001 データベースに接続していません。");

    write(path(), good);
    ASSERT_TRUE(db.open(connectionString())) << errors();
    run(u"INSERT INTO T VALUES (1)"_s);
    EXPECT_EQ(cells(u"SELECT a FROM T"_s), u"1"_s);
}
