#include "setup/set_up.h"

#include "app/base/settings.h"
#include "db/adodb.h"
#include "db/connection_settings.h"
#include "db/connection_string.h"
#include "setup/practice_query.h"
#include "tests/support/small_disk.h"
#include "tests/support/test_environment.h"

#include <QDir>
#include <array>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;
using setup::Answers;
using setup::Engine;

namespace {

/// A program folder with nothing in it.
class SetUp : public testing::Test, protected TestInstallation {
protected:
    SetUp() {
        answers = setup::rememberedAnswers(folders);
        answers.practice.name = u"あおば治療院"_s;
    }

    Result<bool> make() const {
        return setup::setUp(Folders(folders.program()), answers, clock.today(), {}, {});
    }
    QString file() const { return folders.program() + u"/DATA/douisho.db"_s; }
    bool isInstalled() const { return QFile::exists(folders.program() + u"/adodb.ini"_s); }
    /// Rows of the first and the last table that are written, of the embedded file; null without one.
    QString contents() const {
        if (!QFile::exists(file()))
            return {};
        cT_ADODB db;
        db.iInit(*embeddedConnection(file()));
        const Result<qint64> branches = setup::countRows(db, u"KYOTEN"_s);
        const Result<qint64> days = setup::countRows(db, u"HOLIDAY"_s);
        return branches && days ? u"%1 %2"_s.arg(*branches).arg(*days) : u"unreadable"_s;
    }
    QStringList leftOver() const {
        QStringList names;
        for (const QString &folder : {folders.program(), folders.program() + u"/DATA"_s})
            names +=
                QDir(folder).entryList({u"*setup*"_s, u"*.lock"_s, u"初期設定*"_s, u"*-wal"_s}, QDir::Files);
        return names;
    }

    Answers answers;
};

const QString whole = u"2 236"_s;

} // namespace

TEST_F(SetUp, IsLeftAndGoneOnWithAndThenMakesAnInstallationOnce) {
    answers.server = u"srv;1"_s;
    answers.password = u"secret"_s;
    answers.practice.representative = u"𠮷田　花"_s;
    answers.practice.treatments = setup::Treatments::Both;
    answers.screen = 3;
    ASSERT_TRUE(setup::rememberAnswers(folders, answers));
    const Answers again = setup::rememberedAnswers(folders);
    EXPECT_EQ(again.server, answers.server);
    EXPECT_EQ(again.password, QString()) << "stays with who typed it";
    EXPECT_EQ(again.practice.representative, answers.practice.representative);
    EXPECT_EQ(again.practice.treatments, answers.practice.treatments);
    EXPECT_EQ(again.screen, 3);

    EXPECT_TRUE(setup::tryConnection(answers)->isNew);
    EXPECT_FALSE(QFile::exists(file())) << "trying makes nothing";
    const Result<bool> made = make();
    ASSERT_TRUE(made && *made) << made.reason().toStdString();
    EXPECT_EQ(*embeddedFile(*readConnectionString(folders)), file());
    EXPECT_EQ(contents(), whole);
    EXPECT_EQ(leftOver(), QStringList());
    const Folders installed(folders.program());
    EXPECT_TRUE(Settings(installed).isOn(Setting::利用者登録)) << "its patients are entered here";

    answers.practice.name = u"べつの治療院"_s; // the next PC
    const Result<setup::Trial> found = setup::tryConnection(answers);
    EXPECT_FALSE(found->isNew);
    EXPECT_TRUE(found->said.contains(u"（利用者 0 人）"_s)) << found->said.toStdString();
    const Result<bool> joined = make();
    ASSERT_TRUE(joined) << joined.reason().toStdString();
    EXPECT_FALSE(*joined);
    EXPECT_EQ(contents(), whole);
}

TEST_F(SetUp, OfTwoPcsAtOnceOneMakesAndTheOthersJoin) {
    std::array<Result<bool>, 3> made{false, false, false};
    {
        std::vector<std::jthread> pcs;
        for (Result<bool> &one : made)
            pcs.emplace_back([&] { one = make(); });
    }
    int makers = 0;
    for (const Result<bool> &one : made) {
        EXPECT_TRUE(one) << one.reason().toStdString();
        makers += one && *one;
    }
    EXPECT_EQ(makers, 1);
    EXPECT_EQ(contents(), whole);
    EXPECT_EQ(leftOver(), QStringList());
}

TEST_F(SetUp, KilledAnywhereLeavesNothingThatIsTakenForAnInstallation) {
    int halfMade = 0;
    for (int microseconds = 0; microseconds < 400'000; microseconds += 50'000) {
        QDir(folders.program()).removeRecursively();
        QDir().mkpath(folders.program());
        const pid_t pc = fork();
        if (pc == 0)
            _exit(make() ? 0 : 1);
        usleep(useconds_t(microseconds));
        kill(pc, SIGKILL);
        waitpid(pc, nullptr, 0);
        halfMade += !isInstalled();
        EXPECT_TRUE(!isInstalled() || contents() == whole) << microseconds;
        EXPECT_TRUE(contents().isNull() || contents() == whole) << contents().toStdString();
        const Result<bool> finished = make();
        EXPECT_TRUE(finished) << finished.reason().toStdString();
        EXPECT_TRUE(isInstalled());
        EXPECT_EQ(contents(), whole);
        EXPECT_EQ(leftOver(), QStringList());
    }
    EXPECT_GT(halfMade, 1);
}

TEST_F(SetUp, AFullDiskOrAnUnwritableFolderIsToldAndNothingIsHalfMade) {
    ASSERT_TRUE(make());
    QFile::remove(file());
    QFile::remove(folders.program() + u"/adodb.ini"_s);
    {
        const SmallDisk disk(60'000);
        const Result<bool> refused = make();
        EXPECT_TRUE(refused.reason().contains(u"何も作成していません。"_s)) << refused.reason().toStdString();
    }
    EXPECT_FALSE(isInstalled());
    EXPECT_EQ(contents(), QString());
    EXPECT_EQ(leftOver(), QStringList());

    answers.file = folders.program() + u"/Massage.ini/unten/douisho.db"_s;
    EXPECT_EQ(setup::tryConnection(answers).reason(),
              u"「"_s + folders.program() +
                  u"/Massage.ini」はフォルダではありません。別の場所を指定してください。"_s);
    EXPECT_FALSE(make());
    EXPECT_FALSE(isInstalled());
}

TEST_F(SetUp, WhatIsNoDatabaseOfOursIsLeftAlone) {
    answers.file = folders.program() + u"/photo.jpg"_s;
    QFile photo(answers.file);
    ASSERT_TRUE(photo.open(QIODevice::WriteOnly));
    photo.write(QByteArray(5000, 'x'));
    photo.close();
    EXPECT_TRUE(setup::tryConnection(answers).reason().contains(u"データベースファイルではありません。"_s));
    EXPECT_FALSE(make());
    EXPECT_FALSE(isInstalled());
    EXPECT_EQ(photo.size(), 5000);
}

TEST_F(SetUp, ConnectionStringsAreReadBackAsTyped) {
    answers.server = u"db.example,5433"_s;
    answers.database = u"同意 書"_s;
    answers.user = u"u'ser"_s;
    answers.password = u" p\"a;s=s "_s;
    for (const Engine engine : {Engine::PostgreSql, Engine::SqlServer}) {
        answers.engine = engine;
        const ConnectionString read(*setup::connectionOf(answers));
        ASSERT_TRUE(read.isValid()) << read.reason().toStdString();
        EXPECT_EQ(read.value(u"Password"), answers.password);
        EXPECT_EQ(read.value(u"User ID"), answers.user);
    }
    answers.user.clear();
    EXPECT_TRUE(setup::connectionOf(answers)->endsWith(u";Integrated Security=SSPI"_s));
    answers.server.clear();
    EXPECT_EQ(setup::tryConnection(answers).reason(), u"サーバーの名前を入力してください。"_s);
}
