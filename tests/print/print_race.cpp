// Several programs print into one work folder at once, and one of them is killed again and again:
//   print_race [--rounds=100] [--seed=1]
// As "print_race print <folder> <tag> <rounds> <seed>" it is one of them. Under the names of the engine's
// programs it stands in for them: what they find in their files is written down beside the work folder.

#include "app/base/clock.h"
#include "app/base/codepage932.h"
#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/job_ticket.h"
#include "app/base/processes.h"
#include "print/batch/batch_print.h"
#include "print/engine/data_file.h"
#include "print/engine/wfd_print_exe.h"
#include "tests/support/test_environment.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QThread>
#include <gtest/gtest.h>
#include <random>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int programs = 4;
constexpr int reportsInBatch = 3;
const char *const owner = "PRINT_RACE_OWNER";

int rounds = 5;
unsigned seed = std::random_device()();

QString textOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? decode932(file.readAll()) : u"(no file)"_s;
}

void dawdle(std::mt19937 &random, int longest) {
    QThread::msleep(std::uniform_int_distribution<unsigned long>(0, unsigned(longest))(random));
}

// The engine's programs: slow, and of their files they know only what the commands name.

/// What the data files of a command file say.
QString contentOf(const QString &commands) {
    QString content;
    for (const QString &line : commands.split(u"\r\n"_s))
        if (line.startsWith(u"SetDataText,"))
            content += textOf(line.section(u'"', -2, -2));
        else if (line.startsWith(u"FileName,") && line.contains(u"Output"))
            content += textOf(line.section(u'"', 1, 1));
    return content;
}

int view(const QString &commandFile) {
    std::mt19937 random{std::random_device()()};
    dawdle(random, 60);
    const JobTicket ticket = JobTicket::read(commandFile);
    const QString content = contentOf(textOf(commandFile));
    // One that takes no ticket away is seen to have ended.
    if (random() % 2 == 0)
        ticket.wasRead(commandFile);
    QFile log(QFileInfo(commandFile).path() + u"/../LOG/%1"_s.arg(QCoreApplication::applicationPid()));
    return log.open(QIODevice::WriteOnly | QIODevice::Append) &&
                   log.write(qgetenv(owner) + ' ' + content.toUtf8().simplified() + '\n') > 0
               ? 0
               : 1;
}

int build(const QStringList &arguments) {
    std::mt19937 random{std::random_device()()};
    dawdle(random, 20);
    const QString commands = textOf(arguments.value(3));
    dawdle(random, 20);
    QFile document(arguments.value(1));
    return document.open(QIODevice::WriteOnly) && document.write(encode932(contentOf(commands)).bytes) > 0
               ? 0
               : 1;
}

// A program that prints. Every text of a round is "<tag:round>".

DataFile dataOf(const QString &mark) {
    DataFile data({u"患者名"_s});
    data.add(std::vector<DataValue>{mark});
    return data;
}

Result<> printOne(const Environment &environment, const QString &mark) {
    cls_WfdPrintExe engine(environment);
    engine.iInit(u"/form.wfd"_s, {});
    if (engine.iWriteData(1, u"同意書データ"_s, dataOf(mark)) != 0 || engine.iPreview(0) != 0)
        return Failure{engine.sErrMsg()};
    return {};
}

Result<> printSet(Environment &environment, const QString &mark) {
    const auto make = [&](int position, PrintFiles &files) -> Result<BatchReport> {
        const Result<QString> file = files.write(u"依頼書%1.csv"_s.arg(position + 1), dataOf(mark));
        if (!file)
            return Failure{file.reason()};
        return BatchReport{mark,  u"依頼書"_s, u"同意依頼書"_s,
                           *file, {},          environment.folders.program() + u"/form.wfd"_s};
    };
    const BatchResult result =
        BatchPrint(environment, {.commandFile = u"DouiCom.dat"_s}).run({reportsInBatch, make}, {});
    return result.allPrinted() ? Result<>() : Failure{result.chunks.empty() ? mark : result.chunks[0].reason};
}

int print(const QString &folder, const QString &tag, int times, unsigned from) {
    std::mt19937 random{from};
    Folders folders(folder);
    const Clock clock;
    RecordedMessages messages;
    SystemProcesses processes;
    Environment environment{folders, const_cast<Clock &>(clock), messages, processes, {1, 1}};
    qputenv(owner, tag.toUtf8());
    for (int round = 0; round < times; ++round) {
        const QString mark = u"<%1:%2>"_s.arg(tag).arg(round);
        const Result<> printed =
            random() % 2 == 0 ? printOne(environment, mark) : printSet(environment, mark);
        if (!printed) {
            std::fprintf(stderr, "%s: %s\n", qPrintable(mark), printed.reason().toUtf8().constData());
            return 1;
        }
        dawdle(random, 30);
    }
    return 0;
}

// The judge.

class Program : public QProcess {
public:
    Program(const QString &folder, const QString &tag, int times, unsigned from) {
        setProcessChannelMode(QProcess::ForwardedErrorChannel);
        start(QCoreApplication::applicationFilePath(),
              {u"print"_s, folder, tag, QString::number(times), QString::number(from)});
    }
    ~Program() override {
        kill();
        waitForFinished();
    }
};

class PrintRace : public testing::Test {
protected:
    PrintRace() {
        for (const QString &name : {u"TMP"_s, u"LOG"_s})
            EXPECT_TRUE(QDir(m_folder.path()).mkdir(name));
        write(u"Massage.ini"_s, "SYSTEM_TMP=TMP\r\n");
        write(u"form.wfd"_s, "x");
        for (const QString &program : {u"wfrfv10.exe"_s, u"wfrimg10.exe"_s})
            EXPECT_TRUE(QFile::link(QCoreApplication::applicationFilePath(), m_folder.filePath(program)));
    }
    void write(const QString &name, const QByteArray &bytes) const {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    /// What every viewer found: by whom it was started, and whose texts.
    QStringList seen() const {
        static const QRegularExpression mark(u"<[^>]*>|\\(no file\\)"_s);
        QStringList all;
        for (const QFileInfo &log : QDir(m_folder.filePath(u"LOG"_s)).entryInfoList(QDir::Files)) {
            QFile file(log.filePath());
            EXPECT_TRUE(file.open(QIODevice::ReadOnly));
            for (const QString &line : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts)) {
                QStringList found;
                for (const QRegularExpressionMatch &match : mark.globalMatch(line))
                    found += match.captured();
                found.removeDuplicates();
                all += line.section(u' ', 0, 0) + u' ' + found.join(u' ');
            }
        }
        all.sort();
        return all;
    }

    /// Waits for all programs that the folder's printing started: their command lines name it.
    bool lastHasEnded() const {
        const auto runs = [this] {
            for (const QString &process : QDir(u"/proc"_s).entryList({u"[0-9]*"_s}, QDir::Dirs)) {
                QFile line(u"/proc/%1/cmdline"_s.arg(process));
                if (line.open(QIODevice::ReadOnly) && line.readAll().contains(m_folder.path().toUtf8()))
                    return true;
            }
            return false;
        };
        const QDeadlineTimer deadline(std::chrono::minutes(2));
        while (runs() && !deadline.hasExpired())
            QThread::msleep(50);
        return !deadline.hasExpired();
    }

    QTemporaryDir m_folder;
};

TEST_F(PrintRace, NobodySeesAnothersPatientsAndNothingIsLost) {
    std::printf("seed %u\n", seed);
    std::mt19937 random{seed};
    std::vector<std::unique_ptr<Program>> all;
    QStringList expected;
    for (int i = 0; i < programs; ++i) {
        const QString tag = QChar(u'A' + i);
        all.push_back(std::make_unique<Program>(m_folder.path(), tag, rounds, unsigned(random())));
        for (int round = 0; round < rounds; ++round)
            expected += u"%1 <%1:%2>"_s.arg(tag).arg(round);
    }
    // Some that are switched off in the midst of it leave the folder to the others.
    for (int kill = 0; kill < rounds; ++kill) {
        Program killed(m_folder.path(), u"killed"_s, rounds, unsigned(random()));
        killed.waitForStarted();
        dawdle(random, 400);
    }
    for (const auto &program : all)
        EXPECT_TRUE(program->waitForFinished(-1) || program->state() == QProcess::NotRunning);
    for (const auto &program : all)
        EXPECT_EQ(program->exitCode(), 0);
    EXPECT_TRUE(lastHasEnded()) << "viewers still run";

    QStringList found = seen();
    expected.sort();
    EXPECT_EQ(found.filter(QRegularExpression(u"^[A-Z] "_s)), expected);
    for (const QString &line : found.filter(u"killed "_s))
        EXPECT_EQ(line.count(u"<"), line.count(u"<killed:")) << line.toStdString();
    for (const QString &line : found)
        EXPECT_LE(line.count(u'<'), 1) << line.toStdString();

    // And nothing of a patient stays.
    Folders folders(m_folder.path());
    FixedClock clock{QDate(2026, 11, 21)};
    RecordedMessages messages;
    SystemProcesses processes;
    clearWorkFolder({folders, clock, messages, processes, {}});
    EXPECT_EQ(
        QDir(folders.temporary())
            .entryList({u"*.csv"_s, u"*.wfd"_s, u"*.ticket"_s, u"douisho-*"_s}, QDir::Files | QDir::Dirs),
        QStringList());
}

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString name = QFileInfo(QString::fromLocal8Bit(argv[0])).fileName();
    if (name == u"wfrfv10.exe")
        return view(arguments.value(2));
    if (name == u"wfrimg10.exe")
        return build(arguments);
    if (arguments.value(1) == u"print")
        return print(arguments[2], arguments[3], arguments[4].toInt(), arguments[5].toUInt());
    testing::InitGoogleTest(&argc, argv);
    for (int i = 1; i < argc; ++i) {
        const QString argument = QString::fromLocal8Bit(argv[i]);
        if (argument.startsWith(u"--rounds="))
            rounds = argument.mid(9).toInt();
        if (argument.startsWith(u"--seed="))
            seed = argument.mid(7).toUInt();
    }
    return RUN_ALL_TESTS();
}
