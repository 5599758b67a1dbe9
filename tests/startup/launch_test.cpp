#include "app/launch.h"

#include "app/base/codepage932.h"
#include "app/base/folders.h"
#include "db/adodb.h"
#include "tests/support/test_database.h"
#include "tests/support/test_environment.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

/// What happened in a run, in order, over all ports.
using Transcript = QStringList;

class TranscribedMessages : public Messages {
public:
    TranscribedMessages(Transcript &log, std::optional<Answer> answer) : m_log(log), m_answer(answer) {}
    Answer show(const Message &message) override {
        static const QStringList icons{u"plain"_s, u"information"_s, u"question"_s, u"exclamation"_s,
                                       u"critical"_s};
        m_log.append(icons[int(message.icon)] + u" ["_s + message.title + u"] "_s + message.text);
        return m_answer.value_or(message.defaultAnswer);
    }

private:
    Transcript &m_log;
    std::optional<Answer> m_answer;
};

class TranscribedProcesses : public RecordedProcesses {
public:
    TranscribedProcesses(Transcript &log, const bool &works) : m_log(log), m_works(works) {}
    bool start(const QString &program, const QStringList &arguments, const QString &folder, qint64 *,
               WindowStyle) override {
        m_log.append(
            (QStringList{u"start"_s, QDir(folder).relativeFilePath(program)} + arguments).join(u' '));
        return m_works;
    }

private:
    Transcript &m_log;
    const bool &m_works;
};

/// Both kinds of screen, and the background.
class TranscribedScreens : public ScreenFactory, public TextInput {
public:
    explicit TranscribedScreens(Transcript &log) : m_log(log) {}

    short status = 0;
    QString error;
    QString answer;

    QString ask(const QString &prompt, const QString &title, const QString &proposal) override {
        m_log.append(u"ask ["_s + title + u"] "_s + prompt + u" ("_s + proposal + u')');
        return answer;
    }
    void showBackground() override { m_log.append(u"background"_s); }
    std::unique_ptr<ConsentListScreen> makeConsentList() override { return std::make_unique<List>(*this); }
    std::unique_ptr<ConsentPrintScreen> makePrintScreen() override { return std::make_unique<Print>(*this); }
    bool setUp() override {
        m_log.append(u"set up"_s);
        return installs && installs();
    }
    std::function<bool()> installs; ///< what the user makes of it; without it, it is left

private:
    template <class Kind> class Shown : public Kind {
    public:
        Shown(TranscribedScreens &owner, const QString &name) : m_owner(owner), m_name(name) {}
        ~Shown() override { add(u"unloaded"_s); }
        QString sErrMsg() const override { return m_owner.error; }
        void showModal() override { add(u"shown"_s); }

    protected:
        short init(const cT_ADODB &db, const QString &arguments) {
            add(db.isConnected() ? u"iInit "_s + arguments : u"not connected"_s);
            return m_owner.status;
        }

    private:
        void add(const QString &what) { m_owner.m_log.append(m_name + u' ' + what); }

        TranscribedScreens &m_owner;
        QString m_name;
    };
    struct List : Shown<ConsentListScreen> {
        explicit List(TranscribedScreens &owner) : Shown(owner, u"list"_s) {}
        short iInit(cT_ADODB &db, short n) override { return init(db, QString::number(n)); }
    };
    struct Print : Shown<ConsentPrintScreen> {
        explicit Print(TranscribedScreens &owner) : Shown(owner, u"print"_s) {}
        short iInit(cT_ADODB &db, const QString &a, const QString &b, const QString &c, short n) override {
            return init(db, u"[%1%2%3] %4"_s.arg(a, b, c).arg(n));
        }
    };

    Transcript &m_log;
};

class LaunchTest : public testing::Test {
protected:
    LaunchTest() {
        suite.run(u"INSERT INTO KYOTEN (iKyotenCd, iKyotenEb, iUsedFlg) VALUES"
                  " (1, 0, 1), (1, 1, 0), (2, 3, 2), (2, 4, 1)"_s);
        writeConnection(suite.connectionString());
        write(u"Massage.ini"_s, {});
    }

    void write(const QString &name, const QByteArray &bytes) const {
        QFile file(suite.folder() + u'/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    void writeConnection(const QString &value) const {
        write(u"adodb.ini"_s, encode932(u"[接続情報]\r\n接続情報="_s + value + u"\r\n"_s).bytes);
    }

    Transcript run(const QString &commandLine) {
        log.clear();
        Folders folders(suite.folder());
        FixedClock clock(QDate(2026, 11, 21));
        TranscribedMessages messages(log, offered);
        TranscribedProcesses processes(log, menuStarts);
        Environment environment{folders, clock, messages, processes, {}};
        exitCode = Launch(environment, screens, screens).run(commandLine);
        branch = environment.branch;
        return log;
    }

    TestDatabase suite;
    Transcript log;
    TranscribedScreens screens{log};
    bool menuStarts = true;
    std::optional<Answer> offered;
    int exitCode = -1;
    Branch branch;
};

const QString wrongMode = u"exclamation [　エラー！！] 処理モードが設定されていません。"_s;
const QString cannotStart = u"critical [] 起動できません！"_s;
const QString label = u"\r\niGetKanjaData() でエラー"_s;

} // namespace

TEST_F(LaunchTest, ServesTheListAndGoesBackToTheMenu) {
    EXPECT_EQ(run(u"1"_s), (Transcript{u"background"_s, u"list iInit 0"_s, u"list shown"_s,
                                       u"list unloaded"_s, u"start Main.exe"_s}));
    EXPECT_EQ(exitCode, 0);
}

TEST_F(LaunchTest, ServesPrintingAndEnds) {
    const Transcript printing{u"background"_s, u"print iInit [] 0"_s, u"print shown"_s, u"print unloaded"_s};
    EXPECT_EQ(run(u"0"_s), printing);
    EXPECT_EQ(run(u"abc"_s), printing);
    EXPECT_EQ(exitCode, 0);
}

TEST_F(LaunchTest, AsksForTheModeWhenTheCommandLineIsEmpty) {
    const QString question = u"ask [起動エラー！！] モード番号を入力してください。\r\n"
                             "処理モードが設定されていません。 (1)"_s;
    screens.answer = u"1"_s;
    EXPECT_EQ(run({}), (Transcript{u"background"_s, question, u"list iInit 0"_s, u"list shown"_s,
                                   u"list unloaded"_s, u"start Main.exe"_s}));
    for (const QString &answer : {QString(), u""_s, u"x"_s, u"2"_s}) {
        screens.answer = answer;
        EXPECT_EQ(run({}),
                  (Transcript{u"background"_s, question, wrongMode, cannotStart, u"start Main.exe"_s}));
        EXPECT_EQ(exitCode, 1);
    }
}

TEST_F(LaunchTest, RefusesOtherModes) {
    const Transcript refused{u"background"_s, wrongMode, cannotStart, u"start Main.exe"_s};
    EXPECT_EQ(run(u"3"_s), refused);
    EXPECT_EQ(run(u"-1"_s), refused);
    EXPECT_EQ(exitCode, 1);
}

TEST_F(LaunchTest, TellsWhenTheMenuCannotBeStarted) {
    menuStarts = false;
    const QString told = u"critical [実行ファイルエラー！] 実行ファイルが見つかりません。"_s;
    EXPECT_EQ(run(u"3"_s).mid(3), (Transcript{u"start Main.exe"_s, told}));
    EXPECT_EQ(run(u"1"_s).mid(4), (Transcript{u"start Main.exe"_s, told}));
}

TEST_F(LaunchTest, EndsWithoutAScreenOrTheMenuWhenThereIsNoConnectionString) {
    const QString none = u"critical [] 接続文字列取得できません。"_s + label;
    for (const QByteArray &content :
         {QByteArray(), QByteArray("\x00\xff\x81[\x00", 5), QByteArray("[x]\r\n"),
          encode932(u"[接続情報]\r\n接続情報=   \r\n"_s).bytes, encode932(u"[接続情報\r\n他=1"_s).bytes}) {
        write(u"adodb.ini"_s, content);
        EXPECT_EQ(run(u"1"_s), (Transcript{u"background"_s, none}))
            << content.toPercentEncoding().toStdString();
        EXPECT_EQ(exitCode, 1);
    }

    const QString path = suite.folder() + u"/adodb.ini"_s;
    QFile::remove(path);
    const QString offer =
        u"question [初期設定] このプログラムはまだ設定されていません。初期設定を始めますか？"_s;
    EXPECT_EQ(run(u"0"_s), (Transcript{u"background"_s, offer, u"set up"_s}));
    offered = Answer::No;
    EXPECT_EQ(run(u"0"_s), (Transcript{u"background"_s, offer,
                                       u"critical [] 指定されたIni（"_s + path +
                                           u"）ファイルが見つかりません。"_s + label}));
}

TEST_F(LaunchTest, GoesOnWithTheListWhenItHasBeenSetUp) {
    QFile::remove(suite.folder() + u"/adodb.ini"_s);
    screens.installs = [this] {
        writeConnection(suite.connectionString());
        return true;
    };
    EXPECT_EQ(run({}).mid(2, 3), (Transcript{u"set up"_s, u"list iInit 0"_s, u"list shown"_s}))
        << "no mode is asked for";
    QFile::remove(suite.folder() + u"/adodb.ini"_s);
    EXPECT_EQ(run(u"--setup"_s).mid(1, 3), (Transcript{u"set up"_s, u"list iInit 0"_s, u"list shown"_s}));
    const QString again = u"question [初期設定] このプログラムは設定済みです。"_s;
    EXPECT_TRUE(run(u"--setup"_s).last().startsWith(again)) << "nothing is set up unasked";
    EXPECT_EQ(exitCode, 0);
}

TEST_F(LaunchTest, CutsTheConnectionStringAtANulAndItsTrailingBlanks) {
    QByteArray bytes = encode932(u"[接続情報]\r\n接続情報="_s + suite.connectionString() + u"  "_s).bytes;
    write(u"adodb.ini"_s, bytes + QByteArray("\0;Nonsense=1\r\n", 14));
    EXPECT_TRUE(run(u"1"_s).contains(u"list shown"_s)) << log.join(u'\n').toStdString();
}

TEST_F(LaunchTest, ShowsTheDatabasesOwnTextWhenItCannotBeOpened) {
    writeConnection(u"Provider=SQLite;Data Source="_s + suite.folder() + u"/none/suite.db"_s);
    const Transcript failed = run(u"1"_s);
    ASSERT_EQ(failed.size(), 2) << failed.join(u'\n').toStdString();
    EXPECT_TRUE(failed[1].startsWith(u"critical [] \rConnection State=0\r"_s)) << failed[1].toStdString();
    EXPECT_TRUE(failed[1].contains(u"none"_s)) << failed[1].toStdString();
    EXPECT_TRUE(failed[1].endsWith(label));
    EXPECT_EQ(exitCode, 1);
}

TEST_F(LaunchTest, LeavesAFileThatIsNotItsDatabaseAsItWas) {
    const QString path = suite.folder() + u"/other.db"_s;
    writeConnection(u"Provider=SQLite;Data Source="_s + path);
    for (const QByteArray &content : {QByteArray(), QByteArray(4000, 'x')}) {
        write(u"other.db"_s, content);
        EXPECT_TRUE(run(u"1"_s).last().contains(path)) << log.join(u'\n').toStdString();
        EXPECT_EQ(exitCode, 1);
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll(), content);
    }
}

TEST_F(LaunchTest, WarnsWhenMassageIniIsMissing) {
    QFile::remove(suite.folder() + u"/Massage.ini"_s);
    EXPECT_EQ(run(u"1"_s).mid(0, 3),
              (Transcript{u"background"_s, u"critical [警告！] システム設定ファイルが見つかりません。"_s,
                          u"list iInit 0"_s}));
}

TEST_F(LaunchTest, TreatsTheModesUnlikeWhenAScreenCannotBeginItsWork) {
    screens.status = -1;
    screens.error = u"一覧を読めません。"_s;
    EXPECT_EQ(run(u"1"_s), (Transcript{u"background"_s, u"list iInit 0"_s, u"plain [] 一覧を読めません。"_s,
                                       u"list unloaded"_s, u"start Main.exe"_s}));
    EXPECT_EQ(run(u"0"_s), (Transcript{u"background"_s, u"print iInit [] 0"_s, u"print unloaded"_s,
                                       u"start Main.exe 2"_s}));
    EXPECT_EQ(exitCode, 1);
}

TEST_F(LaunchTest, TakesTheBranchOfMassageIniOrTheFirstOneInUse) {
    run(u"1"_s);
    EXPECT_EQ(branch, (Branch{2, 3}));
    write(u"Massage.ini"_s, "KYOTEN_CD = 7\r\nKYOTEN_EB=2\r\n");
    run(u"1"_s);
    EXPECT_EQ(branch, (Branch{7, 2}));
}

TEST_F(LaunchTest, ServesNoScreenWithoutABranch) {
    for (const char *line : {"KYOTEN_CD=7\r\n", "KYOTEN_CD=7\r\nKYOTEN_EB=x\r\n"}) {
        write(u"Massage.ini"_s, line);
        EXPECT_EQ(run(u"1"_s).size(), 2);
        EXPECT_TRUE(log.last().contains(u"Massage.ini"_s) && log.last().endsWith(label));
    }
    write(u"Massage.ini"_s, {});
    suite.run(u"UPDATE KYOTEN SET iUsedFlg = 0"_s);
    EXPECT_EQ(run(u"1"_s).last(), u"critical [] 使用中の拠点がKYOTENに登録されていません。"_s + label);
    suite.run(u"DROP TABLE KYOTEN"_s);
    EXPECT_TRUE(run(u"1"_s).last().contains(u"KYOTEN"_s)) << log.last().toStdString();
    EXPECT_EQ(log.size(), 2);
}
