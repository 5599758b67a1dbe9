#include "app/base/ini_file.h"
#include "app/base/platform/files.h"
#include "backup/backups_query.h"
#include "backup/daily_backup.h"
#include "backup/restore_form.h"
#include "db/connection_settings.h"
#include "tests/support/small_disk.h"
#include "tests/support/test_database.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A practice with one consent, whose data folder is its program folder.
class BackupTest : public testing::Test, protected TestInstallation {
protected:
    BackupTest() {
        EXPECT_TRUE(writeConnectionString(folders, database.connectionString()));
        consent(1);
    }
    void consent(int number) {
        database.run(u"INSERT INTO RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg, "
                     u"nHenkeiDouiDate) "
                     "VALUES (1, 1, %1, 20261101, 0, 0)"_s.arg(number));
    }
    /// What the program says when a day begins.
    QStringList begin(const QDate &day) {
        clock.set(day);
        DailyBackup backup(environment);
        backup.look();
        backup.wait();
        QCoreApplication::sendPostedEvents();
        return messages.said();
    }
    QStringList lying() const { return QDir(backups.folder()).entryList(QDir::Files, QDir::Name); }

    TestDatabase database;
    Backups backups{folders, database.path()};
    const QDate monday{2026, 11, 16};
};

} // namespace

TEST_F(BackupTest, EachDaysFirstStartMakesOneWithTheColleaguesLastCommitAndTenAreKept) {
    for (int day = 0; day < 12; ++day)
        EXPECT_EQ(begin(monday.addDays(day)), QStringList());
    consent(2); // after the last one; it stands in the log beside the database
    begin(monday.addDays(11));
    EXPECT_EQ(lying().size(), 10);
    EXPECT_EQ(lying().front(), u"suite_20261118.db"_s);
    EXPECT_EQ(*countConsents(backups.all().front().path), 1) << "the day's first start made it";
    begin(monday.addDays(12));
    EXPECT_EQ(*countConsents(backups.all().front().path), 2);
}

TEST_F(BackupTest, ACopyIsOfOneMomentAlthoughAColleagueWritesAllTheWhile) {
    database.run(u"CREATE TABLE A (n int); CREATE TABLE B (n int, x text)"_s);
    database.run(
        u"INSERT INTO B WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 9000) "
        "SELECT 0, hex(zeroblob(600)) FROM n; INSERT INTO A VALUES (0)"_s);
    database.run(u"PRAGMA journal_mode = WAL"_s);
    std::jthread colleague([this](const std::stop_token &stop) {
        for (int n = 1; !stop.stop_requested(); ++n)
            database.run(
                u"BEGIN; UPDATE A SET n = %1; UPDATE B SET n = %1 WHERE rowid IN (1, 9000); COMMIT"_s.arg(n));
    });
    const Result<> made = backups.makeDaily(monday, {});
    colleague = {};
    ASSERT_TRUE(made) << made.reason().toStdString();
    cT_ADODB copy;
    copy.iInit(*embeddedConnection(backups.all().front().path));
    const Result<Recordset> rows =
        readRows(copy, u"SELECT A.n, MIN(B.n), MAX(B.n) FROM A, B WHERE B.rowid IN (1, 9000)"_s);
    ASSERT_TRUE(rows) << rows.reason().toStdString();
    EXPECT_EQ(rows->number(0, 0), rows->number(0, 1));
    EXPECT_EQ(rows->number(0, 0), rows->number(0, 2));
}

TEST_F(BackupTest, OfTwoPcsThatStartAtOnceOneMakesItAndAKilledOnesHalfFileGoes) {
    begin(monday);
    QFile half(backups.folder() + u"/suite_20261116.db.douisho-abcdef"_s);
    ASSERT_TRUE(half.open(QIODevice::WriteOnly));
    half.close();
    std::array<Result<>, 4> made;
    {
        std::vector<std::jthread> pcs;
        for (Result<> &one : made)
            pcs.emplace_back([&] { one = backups.makeDaily(monday.addDays(1), {}); });
    }
    for (const Result<> &one : made)
        EXPECT_TRUE(one) << one.reason().toStdString();
    EXPECT_EQ(lying(), (QStringList{u"suite_20261116.db"_s, u"suite_20261117.db"_s}));
}

TEST_F(BackupTest, AFullDiskLeavesTheOldOnesAndIsToldWithTheirAge) {
    begin(monday);
    database.run(u"CREATE TABLE Big (x blob); INSERT INTO Big VALUES (zeroblob(3000000))"_s);
    QString said;
    {
        const SmallDisk disk(1'000'000);
        said = begin(monday.addDays(8)).value(0);
    }
    EXPECT_TRUE(said.startsWith(u"データベースのバックアップを作成できません。"_s)) << said.toStdString();
    EXPECT_TRUE(said.contains(u"2026/11/16（8日前）"_s)) << said.toStdString();
    EXPECT_EQ(lying(), QStringList{u"suite_20261116.db"_s});
}

TEST_F(BackupTest, WhatCannotBeCopiedIsNamed) {
    // Pages that nobody reads on the way, only the check.
    database.run(u"CREATE TABLE Big (x text); INSERT INTO Big WITH RECURSIVE n(i) AS "
                 "(SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 100) SELECT hex(zeroblob(900)) FROM n"_s);
    database.db.iDisConnect();
    const auto lastLine = [](const QStringList &said) { return said.value(0).split(u"\r\n"_s).last(); };
    QFile damaged(database.path());
    ASSERT_TRUE(damaged.open(QIODevice::ReadWrite));
    damaged.seek(damaged.size() - 40000);
    damaged.write(QByteArray(40000, 'x'));
    damaged.close();
    QString said = begin(monday).value(0);
    EXPECT_TRUE(said.contains(u"壊れています"_s)) << said.toStdString();
    EXPECT_EQ(lastLine({said}), u"バックアップは一つもありません。"_s);
    EXPECT_EQ(lying(), QStringList());
    QDir(backups.folder()).removeRecursively();
    QFile(backups.folder()).open(QIODevice::WriteOnly); // no folder can be made there
    said = begin(monday.addDays(1)).value(0);
    EXPECT_TRUE(said.contains(u"フォルダ「"_s) && said.contains(u"バックアップ」を作成できません。"_s))
        << said.toStdString();
    ASSERT_TRUE(writeConnectionString(folders, u"Provider=SQLOLEDB.1;Data Source=SRV"_s));
    EXPECT_EQ(begin(monday.addDays(2)), QStringList()) << "a server is looked after by others";
}

TEST_F(BackupTest, RestoringMakesANewFileThatTheNextStartUsesIfTheUserWants) {
    begin(monday);
    consent(2);
    begin(monday.addDays(1));
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        messages.answers = {answer};
        QTimer::singleShot(0, [] {
            QWidget *form = QApplication::activeModalWidget();
            QTest::keyClick(form->findChild<QWidget *>(u"txtShibori"_s), Qt::Key_Down); // the older one
            QTest::keyClick(form->findChild<QWidget *>(u"ssList"_s), Qt::Key_Return);
        });
        restoreBackup(environment, nullptr);
        const QString used = *embeddedFile(*readConnectionString(folders));
        EXPECT_EQ(QFileInfo(used).fileName(),
                  answer == Answer::Yes ? u"suite_20261116復元_2.db"_s : u"suite.db"_s);
        EXPECT_EQ(*countConsents(used), answer == Answer::Yes ? 1 : 2);
        messages.said();
    }
    EXPECT_EQ(database.value(u"SELECT COUNT(*) FROM RIYOUSHA_DOUI_REC"_s), u"2"_s)
        << "the one in use is untouched";
    // A damaged backup is refused, and nothing lies there that could be taken for a database.
    QFile::resize(backups.all().back().path, 9000);
    const Result<QString> refused = backups.restore(backups.all().back());
    EXPECT_FALSE(refused);
    EXPECT_EQ(QDir(database.folder()).entryList({u"*復元*"_s}, QDir::Files).size(), 2);
}

TEST(NetworkDrive, IsKnownByItsFileSystem) {
    for (const char *kind : {"nfs4", "cifs", "fuse.sshfs"})
        EXPECT_TRUE(platform::isNetworkFileSystem(kind)) << kind;
    for (const char *kind : {"ext4", "fuse.ntfs-3g", "fuseblk", "tmpfs", "overlay"})
        EXPECT_FALSE(platform::isNetworkFileSystem(kind)) << kind;
}
