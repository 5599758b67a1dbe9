#include "app/base/codepage932.h"
#include "app/base/folders.h"
#include "app/base/job_ticket.h"
#include "app/base/near_characters.h"
#include "app/base/unicode_twin.h"
#include "print/engine/data_file.h"
#include "print/engine/paper.h"
#include "print/engine/viewer_document.h"
#include "print/engine/viewer_job.h"
#include "print/engine/wfd_print_exe.h"
#include "print/engine/work_folder.h"
#include "tests/support/test_environment.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

int secondsAhead = 0; ///< this PC's clock

const QString layout = u"/SYS/同意書_A5.wfd"_s;

class Engine : public testing::Test {
protected:
    Engine() {
        QFile ini(m_folder.filePath(u"Massage.ini"_s));
        EXPECT_TRUE(ini.open(QIODevice::WriteOnly));
        ini.write("[SYSTEM]\r\nSYSTEM_TMP=WORK\r\n");
        ini.close();
        EXPECT_TRUE(QDir(m_folder.path()).mkpath(u"WORK"_s));
        m_folders.emplace(m_folder.path());
        m_environment.emplace(Environment{*m_folders, m_clock, m_messages, m_processes, {}});
    }
    void write(const QString &name, const QByteArray &bytes, int secondsOld = 0) const {
        QFile file(work(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush());
        if (secondsOld > 0)
            file.setFileTime(QDateTime::currentDateTime().addSecs(-secondsOld),
                             QFileDevice::FileModificationTime);
    }
    QString work(const QString &name) const { return m_folder.filePath(u"WORK/"_s + name); }
    QByteArray read(const QString &name) const {
        QFile file(work(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// The command file's text, the folder written as "W/".
    QString commands() const {
        QFile file(work(u"WfdCom.dat"_s));
        return file.open(QIODevice::ReadOnly) ? decode932(file.readAll()).replace(work(u""_s), u"W/"_s)
                                              : QString();
    }
    QStringList startsOf(qsizetype i) const {
        const RecordedProcesses::Start &start = m_processes.started[i];
        EXPECT_EQ(start.folder, m_folder.path());
        EXPECT_EQ(start.style, start.program.endsWith(u"WrVb6Viewer.exe") ? WindowStyle::Maximized
                                                                          : WindowStyle::Minimized);
        return (QStringList{QFileInfo(start.program).fileName()} + start.arguments)
            .replaceInStrings(work(u""_s), u"W/"_s);
    }

    QTemporaryDir m_folder;
    std::optional<Folders> m_folders;
    FixedClock m_clock{QDate(2026, 11, 21)};
    RecordedMessages m_messages;
    RecordedProcesses m_processes;
    std::optional<Environment> m_environment;
};

TEST_F(Engine, WritesTheCommandFileToTheByte) {
    struct Case {
        const char *what;
        std::function<void(cls_WfdPrintExe &)> set;
        short paper;
        QString lines; ///< between the file name and the action
    };
    const auto data = [](cls_WfdPrintExe &e) { e.iSetDataText(1, u"同意書データ"_s, u"同意書データ.csv"_s); };
    const QString source = u"SetDataText,\"同意書データ\",\"W/同意書データ.csv\"\r\n"_s;
    const std::vector<Case> cases = {
        {"nothing set", [](auto &) {}, 0, u"PrintPaper, A4\r\n"_s},
        {"no title to repeat", [](auto &) {}, -1, u"FileName,\"/SYS/同意書_A5.wfd\"\r\n"_s},
        {"a slot", data, 1, source + u"PrintPaper, A5\r\n"_s},
        {"a slot without a name", [](auto &e) { e.iSetDataText(2, {}, u"x.csv"_s); }, 2,
         u"PrintPaper, B5\r\n"_s},
        {"slots in order, unchanged path",
         [&](auto &e) {
             e.iSetDataTextNoTitle(5, u"見出し無し"_s, u"x.csv"_s);
             data(e);
         },
         7, source + u"SetDataText,\"見出し無し\",\"x.csv\",,,1\r\nPrintPaper, A4\r\n"_s},
        {"data repeated", data, -1, source + source},
        {"placement",
         [](auto &e) {
             e.iSetOffset(-15, 20);
             e.iSetPrintZoom(95);
             e.iSetRepeatStart(2);
         },
         0,
         u"PrintOffsetX, -15\r\nPrintOffsetY, 20\r\nPrintZoom, 95\r\nSectionRepeatStart, 2\r\nPrintPaper, A4\r\n"_s},
        {"one offset, repeated", [](auto &e) { e.iSetOffset(0, 3); }, -1,
         u"PrintOffsetY, 3\r\nPrintOffsetY, 3\r\n"_s},
        {"values",
         [](auto &e) {
             e.iSetItemValue(u"頁"_s, u"  "_s, u"社名"_s, u"髙橋\r\n\"鍼灸\"院"_s);
             e.iSetItemValue(u"頁"_s, u"頭"_s, u"日付"_s, {});
         },
         0,
         u"PrintPaper, A4\r\nSetItemValue,\"頁.社名\",\"髙橋 ＂鍼灸＂院\"\r\n"
         "SetItemValue,\"頁.頭.日付\",\"\"\r\n"_s},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        cls_WfdPrintExe engine(*m_environment);
        ASSERT_EQ(engine.iInit(layout, {}), 0);
        c.set(engine);
        EXPECT_EQ(engine.iPreview(c.paper), 0) << engine.sErrMsg().toStdString();
        EXPECT_EQ(commands(), u"FileName,\"/SYS/同意書_A5.wfd\"\r\n"_s + c.lines + u"ShowWindow,2\r\n"_s);
    }
}

TEST_F(Engine, StartsTheProgramOfEachOperation) {
    struct Case {
        std::function<short(cls_WfdPrintExe &)> start;
        QString end;
        QStringList started;
    };
    const QStringList viewer{u"wfrfv10.exe"_s, u"/c"_s, u"W/WfdCom.dat"_s};
    const std::vector<Case> cases = {
        {[](auto &e) { return e.iPreview(2); }, u"PrintPaper, B5\r\nShowWindow,2\r\n"_s, viewer},
        {[](auto &e) { return e.iPrintBk(); }, u"PrintPaper, A4\r\nPrintOut\r\n"_s, viewer},
        {[](auto &e) { return e.iPrintDialog(-1); }, u"Title,\"表題\"\r\nPrintOutFromDialog\r\n"_s, viewer},
        {[](auto &e) { return e.iPreviewData(); }, u"PrintPaper, A4\r\nShowWindow,2\r\n"_s, {}},
        {[](auto &e) { return e.iPreviewActX(); },
         u"PrintPaper, A4\r\nShowWindow,2\r\n"_s,
         {u"WrVb6Viewer.exe"_s, u"/c"_s, u"./TMP\\WfdCom.dat"_s}},
    };
    for (const Case &c : cases) {
        m_processes.started.clear();
        cls_WfdPrintExe engine(*m_environment);
        engine.iInit(layout, u"表題"_s);
        EXPECT_EQ(c.start(engine), 0);
        EXPECT_EQ(commands(), u"FileName,\"/SYS/同意書_A5.wfd\"\r\nTitle,\"表題\"\r\n"_s + c.end);
        ASSERT_EQ(m_processes.started.size(), c.started.isEmpty() ? 0 : 1);
        if (!c.started.isEmpty()) {
            EXPECT_EQ(startsOf(0), c.started);
        }
    }
}

TEST_F(Engine, MergesReports) {
    // The commands as they are when the builder is started.
    class Watching : public RecordedProcesses {
    public:
        std::function<void()> look;
        bool start(const QString &program, const QStringList &arguments, const QString &folder, qint64 *id,
                   WindowStyle style) override {
            look();
            return RecordedProcesses::start(program, arguments, folder, id, style);
        }
    } processes;
    QStringList seen;
    QFile earlier(work(u"tmp.wfd"_s));
    ASSERT_TRUE(earlier.open(QIODevice::WriteOnly));
    earlier.close();
    processes.look = [&] {
        seen.append(commands());
        EXPECT_FALSE(earlier.exists());
    };
    Environment watched{*m_folders, m_clock, m_messages, processes, {}};
    cls_WfdPrintExe merging(watched);
    const std::array<short, 2> flags{0, 1};
    ASSERT_EQ(merging.addPrint_addCSV(2, u"依頼"_s, {u"/a.csv"_s, u"/b.csv"_s}, u"別紙"_s, {{}, u"/c.csv"_s},
                                      {u"/1.wfd"_s, u"/2.wfd"_s}, flags, u"表題"_s),
              0);
    const QString tail = u",\",\", \"\"\"\", True\r\n"_s;
    EXPECT_EQ(seen, (QStringList{
                        u"setTitle,\"表題\"\r\nSetDataText,\"依頼\",\"/a.csv\""_s + tail +
                            u"setreport,\"/1.wfd\"\r\nAddReport\r\nSetDataText,\"依頼\",\"/b.csv\""_s + tail +
                            u"SetDataText,\"別紙\",\"/c.csv\""_s + tail + u"setreport,\"/2.wfd\"\r\n"_s,
                        u"Title,\"表題\"\r\nFileName,\"W/tmp.wfd\"\r\nPrintOutFromDialog\r\n"_s}));
    m_processes.started = processes.started;
    EXPECT_EQ(startsOf(0), (QStringList{u"wfrimg10.exe"_s, u"W/tmp.wfd"_s, u"/c"_s, u"W/WfdCom.dat"_s}));
    EXPECT_EQ(startsOf(1), (QStringList{u"wfrfv10.exe"_s, u"/c"_s, u"W/WfdCom.dat"_s}));

    seen.clear();
    EXPECT_EQ(merging.addPrint(1, u"依頼"_s, {u"/a.csv"_s}, {u"/1.wfd"_s}, u"表題"_s), 0);
    EXPECT_FALSE(seen[0].contains(u"AddReport"_s));
    EXPECT_EQ(merging.addPrint(2, u"依頼"_s, {u"/a.csv"_s}, {u"/1.wfd"_s, u"/2.wfd"_s}, {}), -1);
    EXPECT_EQ(merging.addPrint(0, u"依頼"_s, {}, {}, {}), -1);
}

TEST_F(Engine, FailsQuietlyAndSaysWhy) {
    cls_WfdPrintExe engine(*m_environment);
    engine.iInit(layout, {});
    for (const short slot : std::array<short, 3>{-1, 0, 6})
        EXPECT_EQ(engine.iSetDataText(slot, u"x"_s, u"x"_s), -1);
    m_processes.missing = QStringList{u"wfrfv10.exe"_s};
    EXPECT_EQ(engine.iPreview(0), -1);
    EXPECT_TRUE(engine.sErrMsg().contains(u"「wfrfv10.exe」が見つかりません"_s));
    EXPECT_EQ(commands(), u"FileName,\"/SYS/同意書_A5.wfd\"\r\nPrintPaper, A4\r\nShowWindow,2\r\n"_s);
    m_processes.missing.clear();

    engine.iInit(u"/SYS/\"同意書\".wfd"_s, {});
    EXPECT_EQ(engine.iPreview(0), -1);
    engine.iInit(u"/SYS/💊.wfd"_s, {});
    EXPECT_EQ(engine.iPreview(0), -1);
    EXPECT_TRUE(engine.sErrMsg().contains(u"💊.wfd"_s));

    engine.iInit(layout, {});
    ASSERT_TRUE(QDir(m_folder.filePath(u"WORK"_s)).removeRecursively());
    EXPECT_EQ(engine.iPrintBk(), -1);
    EXPECT_TRUE(engine.sErrMsg().contains(u"WfdCom.dat"_s));
    EXPECT_EQ(engine.addPrint(1, u"依頼"_s, {u"/a.csv"_s}, {u"/1.wfd"_s}, {}), -1);
    EXPECT_TRUE(m_processes.started.isEmpty());
    EXPECT_TRUE(m_messages.shown.isEmpty());
}

TEST_F(Engine, WritesDataThatNoValueCanBreak) {
    DataFile data({u"患者名"_s, u"部位1"_s, u"備考"_s});
    data.add(std::vector<DataValue>{u"髙橋\"花子\""_s, qint64(1), u"一行\r\n二行\n三行\r"_s});
    data.add(std::vector<DataValue>{u"𠮷田,♥"_s, qint64(-2), QString()});
    ASSERT_TRUE(data.write(work(u"x.csv"_s), *m_folders));
    const QString first = u"\"患者名\",\"部位1\",\"備考\"\r\n"
                          "\"髙橋＂花子＂\",1,\"一行 二行 三行 \"\r\n"_s;
    EXPECT_EQ(decode932(read(u"x.csv"_s)), first + u"\"吉田,〓\",-2,\"\"\r\n"_s);
    EXPECT_EQ(data.count(), 2);
    ASSERT_EQ(data.replaced().size(), 1u);
    EXPECT_EQ(data.replaced()[0].whose, u"𠮷田,♥"_s);
    EXPECT_TRUE(data.write(work(u"none/x.csv"_s), *m_folders).reason().contains(u"x.csv"_s));

    // What the engine's file cannot say stands in its twin, as long as it is that file's.
    const auto twin = [&] {
        return QString::fromUtf8(UnicodeTwin::textBeside(work(u"x.csv"_s), read(u"x.csv"_s)));
    };
    EXPECT_EQ(twin(), first + u"\"𠮷田,♥\",-2,\"\"\r\n"_s);
    write(u"x.csv"_s, read(u"x.csv"_s).replace("-2", "-3"));
    EXPECT_EQ(twin(), QString());
}

TEST_F(Engine, NearCharactersAreThePracticesOwn) {
    EXPECT_EQ(NearCharacters::builtIn().faults, QStringList());
    QFile file(m_folder.filePath(NearCharacters::fileName()));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(u"\uFEFF# 院の表\r\n♥=（ハート）\r\n𠮷=よし\r\n髙=高\r\n한=한\r\n鴎外=鷗\r\n"_s.toUtf8());
    file.close();
    const NearCharacters near = NearCharacters::read(*m_folders);
    EXPECT_EQ(nearText932(u"𠮷髙﨑♥塚㉑鷗한"_s, near.texts), u"よし髙﨑（ハート）塚21鴎한"_s);
    EXPECT_EQ(replacements932(u"𠮷か\u3099한葛\U000E0100"_s, near.texts).join(u' '),
              u"「𠮷」→「よし」 「한」→「〓」 「葛\U000E0100」→「葛」"_s);
    ASSERT_EQ(near.faults.size(), 3) << near.faults.join(u'/').toStdString();
    EXPECT_TRUE(near.faults[0].startsWith(u"4 行目「髙=高」"_s));
}

TEST_F(Engine, PatientsDataAreTheOwnersAloneAndGo) {
    const auto owners = [](const QString &path) {
        return int(QFileInfo(path).permissions() & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser));
    };
    DataFile data({u"患者名"_s});
    data.add(std::vector<DataValue>{u"𠮷橋"_s});
    const auto show = [&](QString &folder) {
        cls_WfdPrintExe engine(*m_environment);
        engine.iInit(layout, {});
        const Result<QString> picture = engine.files().write(u"QR.bmp"_s, "QR");
        ASSERT_TRUE(picture) << picture.reason().toStdString();
        ASSERT_EQ(engine.iWriteData(1, u"同意書データ"_s, data), 0);
        ASSERT_EQ(engine.iPreview(0), 0) << engine.sErrMsg().toStdString();
        folder = engine.files().folder();
        for (const QString &file :
             {*picture, work(u"同意書データ.csv"_s), work(u"同意書データ.csv.utf8"_s), work(u"WfdCom.dat"_s)})
            EXPECT_EQ(owners(file), QFile::ReadOwner | QFile::WriteOwner) << file.toStdString();
        EXPECT_EQ(owners(folder), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    };
    QString folder;
    show(folder);
    EXPECT_TRUE(QFile::exists(folder)) << "the viewer may still read it";
    clearWorkFolder(*m_environment); // the viewer has ended
    EXPECT_FALSE(QFile::exists(folder));
    EXPECT_FALSE(QFile::exists(work(u"同意書データ.csv"_s)) ||
                 QFile::exists(work(u"同意書データ.csv.utf8"_s)));

    QFile ini(m_folder.filePath(u"douisho.ini"_s));
    ASSERT_TRUE(ini.open(QIODevice::WriteOnly));
    ini.write(encode932(u"[印刷]\r\n作業ファイルを残す=1\r\n"_s).bytes);
    ini.close();
    show(folder);
    clearWorkFolder(*m_environment);
    EXPECT_TRUE(QFile::exists(folder) && QFile::exists(work(u"同意書データ.csv"_s))) << "for a support case";
    QFile::remove(work(u"同意書データ.csv"_s));
    m_processes.missing = {u"wfrfv10.exe"_s};
    cls_WfdPrintExe failing(*m_environment);
    failing.iInit(layout, {});
    ASSERT_EQ(failing.iWriteData(1, u"同意書データ"_s, data), 0);
    EXPECT_EQ(failing.iPreview(0), -1);
    EXPECT_TRUE(QFile::exists(work(u"同意書データ.csv"_s))) << "what failed is what is looked into";
}

TEST_F(Engine, SaysWhoHoldsTheWorkFolder) {
    const Result<WorkFolderLock> held = WorkFolderLock::take(*m_environment);
    ASSERT_TRUE(held);
    const Result<WorkFolderLock> second =
        WorkFolderLock::take(*m_environment, {}, std::chrono::milliseconds(50));
    EXPECT_TRUE(second.reason().startsWith(u"この端末の他のプログラムが"_s)) << second.reason().toStdString();
}

TEST_F(Engine, ALockThatNamesNobodyIsNoLock) {
    write(u"douisho.lock"_s, {}, 60);
    EXPECT_TRUE(WorkFolderLock::take(*m_environment, {}, std::chrono::milliseconds(500)));
    write(u"douisho.lock"_s, {});
    EXPECT_FALSE(WorkFolderLock::take(*m_environment, {}, std::chrono::milliseconds(50)))
        << "somebody is just writing his name";
}

TEST_F(Engine, PCsAreToldApart) {
    EXPECT_NE(computerInNames(u"受付PC"_s), computerInNames(u"院長PC"_s));
    EXPECT_NE(computerInNames(u"A-1"_s), computerInNames(u"A_1"_s));
    EXPECT_FALSE(computerInNames(u"A-1"_s).contains(u'-'));
}

// Of a PC whose clock is ahead of the file server's, or of a user who may not read the ticket.
TEST_F(Engine, AFreshJobIsLeftToItsViewer) {
    const ViewerJob next(*m_environment, work(u"WfdCom.dat"_s));
    // Long beside what a busy machine keeps a process waiting.
    constexpr std::chrono::milliseconds limit(800);
    const auto waits = [&] {
        QElapsedTimer timer;
        timer.start();
        next.waitUntilTaken(limit);
        return timer.elapsed() >= limit.count();
    };
    EXPECT_FALSE(waits());
    const QByteArray ticket = JobTicket{u"1"_s, u"B"_s, 1, {}, {}}.bytes();
    write(u"WfdCom.dat.ticket"_s, ticket);
    write(u"Output0001.wfd"_s, "x");
    secondsAhead = 3600;
    const bool waited = waits();
    clearWorkFolder(*m_environment);
    secondsAhead = 0;
    EXPECT_TRUE(waited);
    EXPECT_TRUE(QFile::exists(work(u"WfdCom.dat.ticket"_s)));
    EXPECT_TRUE(QFile::exists(work(u"Output0001.wfd"_s)));
    write(u"Output0001.wfd"_s, "x", 3600);
    clearWorkFolder(*m_environment);
    EXPECT_TRUE(QFile::exists(work(u"Output0001.wfd"_s))) << "a slow viewer may still want it";

    // An administrator may read every file: he looks as nobody.
    write(u"WfdCom.dat.ticket"_s, ticket);
    chmod(qUtf8Printable(work(u"WfdCom.dat.ticket"_s)), 0);
    chmod(qUtf8Printable(m_folder.path()), 0755);
    chmod(qUtf8Printable(work({})), 0777);
    const uid_t user = geteuid();
    EXPECT_TRUE(user != 0 || seteuid(65534) == 0);
    const bool waitedForUnreadable = waits();
    EXPECT_EQ(seteuid(user), 0);
    EXPECT_TRUE(waitedForUnreadable);
}

TEST_F(Engine, AJobTakesOverWhatAViewerLeft) {
    write(u"依頼書データ.csv"_s, "x");
    const JobTicket left{u"1"_s, u"B"_s, 1, {work(u"依頼書データ.csv"_s)}, {}};
    write(u"WfdCom.dat.ticket"_s, left.bytes(), 60);
    cls_WfdPrintExe engine(*m_environment);
    engine.iInit(layout, {});
    ASSERT_EQ(engine.iPreview(0), 0) << engine.sErrMsg().toStdString();
    EXPECT_TRUE(QFileInfo(work(u"WfdCom.dat.ticket"_s)).permissions() & QFile::ReadOther);
    for (const QString &name : {u"Com.dat"_s, u"err.txt"_s, u"cmdSetPrint.dat"_s})
        write(name, "x", 660);
    clearWorkFolder(*m_environment);
    EXPECT_EQ(QDir(work({})).entryList(QDir::Files), QStringList{u"WfdCom.dat"_s}) << "just written";
}

TEST_F(Engine, DrivesTheViewerThroughTheDocumentObject) {
    cls_WfdPrint print(ViewerDocument::maker(*m_environment));
    EXPECT_EQ(print.iPreview(), -1) << "nothing was made yet";
    ASSERT_EQ(print.iInit(u"履歴"_s), 0);
    EXPECT_EQ(print.iSetDataText(u"甲"_s, u"/a.csv"_s), 0);
    EXPECT_EQ(print.iSetDataTextNoTitle(u"乙"_s, u"/b.csv"_s), 0);
    EXPECT_EQ(print.iOpen(layout), 0);
    const QString head =
        u"FileName,\"/SYS/同意書_A5.wfd\"\r\nTitle,\"履歴\"\r\nSetDataText,\"甲\",\"/a.csv\"\r\n"
        "SetDataText,\"乙\",\"/b.csv\",,,1\r\n"_s;
    EXPECT_EQ(print.iPreview(), 0);
    EXPECT_EQ(commands(), head + u"ShowWindow,2\r\n"_s);
    EXPECT_EQ(print.iPrintBk(), 0);
    EXPECT_EQ(commands(), head + u"PrintOut\r\n"_s);
    m_processes.missing = QStringList{u"wfrfv10.exe"_s};
    EXPECT_EQ(print.iPrintDialog(), -1);
    EXPECT_FALSE(print.sErrMsg().isEmpty());
}

TEST(Paper, FollowsTheNameOfTheLayoutFile) {
    EXPECT_EQ(paperCodeOf(u"/SYS_B5/同意書.wfd"_s), 0);
    EXPECT_EQ(paperCodeOf(u"/SYS/同意書_B5.wfd"_s), 2);
    EXPECT_EQ(paperCodeOf(u"同意書_A5_B5.wfd"_s), 2);
    EXPECT_EQ(paperCodeOf(u"同意書_a5.wfd"_s), 1);
}

} // namespace

/// The PC's clock as the toolkit reads it.
extern "C" int gettimeofday(timeval *now, void *) noexcept {
    timespec real{};
    clock_gettime(CLOCK_REALTIME, &real);
    *now = {real.tv_sec + secondsAhead, real.tv_nsec / 1000};
    return 0;
}
