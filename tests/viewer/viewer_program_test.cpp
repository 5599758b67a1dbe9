#include "app/base/job_ticket.h"
#include "tests/viewer/report_files.h"
#include "viewer/programs/viewer_program.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <gtest/gtest.h>
#include <thread>

using namespace Qt::Literals::StringLiterals;

namespace {

class ViewerProgram : public testing::Test {
protected:
    ViewerProgram() {
        m_files.writeForm();
        m_files.writeNames(u"同意書データ.csv"_s, {u"髙橋　花子"_s, u"山田　太郎"_s});
    }
    Ended view(const QString &commands, const QStringList &more = {}) {
        m_files.writeText(u"WfdCom.dat"_s, commands);
        return runProgram(u"wfrfv10"_s, QStringList{u"/c"_s, m_files.at(u"WfdCom.dat"_s)} + more);
    }

    ReportFiles m_files;
};

TEST_F(ViewerProgram, WritesAPdfWithoutADisplay) {
    for (const QString &action : {u"ShowWindow,2"_s, u"PrintOut"_s, u"PrintOutFromDialog"_s}) {
        const Ended ended = view(u"FileName,\"FORM.WFD\"\r\nTitle,\"印刷\"\r\n"
                                 "SetDataText,\"D\",\"同意書データ.csv\"\r\nPrintPaper, B5\r\n"_s +
                                 action);
        EXPECT_EQ(ended.exitCode, 0) << ended.errors.toStdString();
        EXPECT_EQ(ended.out.trimmed(), QDir::toNativeSeparators(m_files.at(u"WfdCom.pdf"_s)));
        const QStringList pages = textOfPdf(m_files.at(u"WfdCom.pdf"_s)).split(u'\f');
        ASSERT_EQ(pages.size(), 3);
        EXPECT_FALSE(QFile::permissions(m_files.at(u"WfdCom.pdf"_s)) & (QFile::ReadGroup | QFile::ReadOther));
        EXPECT_TRUE(pages[1].contains(u"山田 太郎"_s)) << pages[1].toStdString();
        QFile::remove(m_files.at(u"WfdCom.pdf"_s));
    }
}

TEST_F(ViewerProgram, TakesTheTicketAwayWithWhatNobodyNeedsAnyMore) {
    const QTemporaryDir elsewhere;
    QFile stranger(elsewhere.filePath(u"x.csv"_s));
    ASSERT_TRUE(stranger.open(QIODevice::WriteOnly));
    ASSERT_TRUE(QDir().mkdir(m_files.at(u"run"_s)));
    m_files.write(u"run/1_QR.bmp"_s, "QR");
    const QString commands =
        u"FileName,\"form.wfd\"\r\nSetDataText,\"D\",\"同意書データ.csv\"\r\nPrintOut\r\n"_s;
    const JobTicket ticket{
        u"1"_s, u"PC"_s, 1, {m_files.at(u"同意書データ.csv"_s), stranger.fileName()}, m_files.at(u"run"_s)};
    m_files.write(u"WfdCom.dat.ticket"_s, ticket.bytes());
    EXPECT_EQ(view(commands).exitCode, 0);
    EXPECT_TRUE(textOfPdf(m_files.at(u"WfdCom.pdf"_s)).contains(u"山田 太郎"_s));
    for (const QString &gone : {u"WfdCom.dat.ticket"_s, u"同意書データ.csv"_s, u"run"_s})
        EXPECT_FALSE(QFile::exists(m_files.at(gone))) << gone.toStdString();
    EXPECT_TRUE(stranger.exists()) << "only what lies beside the command file";

    m_files.write(u"WfdCom.dat.ticket"_s, ticket.bytes());
    EXPECT_EQ(view(commands).exitCode, 1) << "the data are gone";
    EXPECT_FALSE(QFile::exists(m_files.at(u"WfdCom.dat.ticket"_s))) << "others would wait";
}

TEST_F(ViewerProgram, RefusesTheJobThatTookThePlaceOfItsOwn) {
    const QByteArray newer = JobTicket{u"2"_s, u"PC"_s, 1, {m_files.at(u"同意書データ.csv"_s)}, {}}.bytes();
    m_files.write(u"WfdCom.dat.ticket"_s, newer);
    for (const char *own : {"1", "2"}) {
        qputenv(JobTicket::variable, own);
        const Ended ended =
            view(u"FileName,\"form.wfd\"\r\nSetDataText,\"D\",\"同意書データ.csv\"\r\nPrintOut\r\n"_s);
        const bool mine = *own == '2';
        EXPECT_EQ(ended.exitCode, mine ? 0 : 1) << ended.errors.toStdString();
        EXPECT_EQ(QFile::exists(m_files.at(u"WfdCom.pdf"_s)), mine);
        EXPECT_EQ(QFile::exists(m_files.at(u"WfdCom.dat.ticket"_s)), !mine);
    }
    qunsetenv(JobTicket::variable);
}

TEST_F(ViewerProgram, TellsWhyItShowsNothing) {
    m_files.write(u"utf8.csv"_s, u"\"氏名\",\"QR\"\r\n\"表示\",\"\"\r\n"_s.toUtf8());
    m_files.write(u"few.csv"_s, "\"a\",\"b\"\r\n\"1\",\"2\"\r\n\"1\"\r\n");
    m_files.write(u"none.csv"_s, "\"a\",\"b\"\r\n");
    m_files.write(u"broken.wfd"_s, "<layout version=\"1\">\n<page><text></page></layout>");
    const QString form = u"FileName,\"form.wfd\"\r\n"_s;
    const struct {
        QString commands, told;
    } files[] = {
        {form + u"SetDataText,\"D\",\"同意書データ.csv\"\r\n"_s, u"表示や印刷の命令"_s},
        {form + u"ShowWin"_s, u"（2行）"_s},
        {form + u"SetDataText,\"D\",\"無い.csv\"\r\nShowWindow,2"_s, u"無い.csv"_s},
        {form + u"SetDataText,\"D\",\"utf8.csv\"\r\nShowWindow,2"_s, u"utf8.csv"_s},
        {form + u"SetDataText,\"D\",\"few.csv\"\r\nShowWindow,2"_s, u"few.csv（3行"_s},
        {form + u"SetDataText,\"D\",\"none.csv\"\r\nShowWindow,2"_s, u"データがない"_s},
        {u"FileName,\"broken.wfd\"\r\nSetDataText,\"D\",\"none.csv\"\r\nShowWindow,2"_s,
         u"broken.wfd（2行"_s},
        {u"FileName,\"無い.wfd\"\r\nSetDataText,\"D\",\"none.csv\"\r\nPrintOut"_s, u"無い.wfd"_s},
    };
    for (const auto &file : files) {
        const Ended ended = view(file.commands);
        EXPECT_EQ(ended.exitCode, 1) << file.told.toStdString();
        EXPECT_EQ(ended.out, QString());
        EXPECT_TRUE(ended.errors.contains(file.told))
            << file.told.toStdString() << ": " << ended.errors.toStdString();
    }
    EXPECT_EQ(runProgram(u"wfrfv10"_s, {m_files.at(u"WfdCom.dat"_s)}).exitCode, 2);
}

TEST_F(ViewerProgram, WaitsForADocumentThatIsBeingBuilt) {
    const QString show = u"Title,\"束\"\r\nFileName,\"tmp.wfd\"\r\nPrintOutFromDialog\r\n"_s;
    const Ended late = view(show, {u"/wait"_s, u"1"_s});
    EXPECT_EQ(late.exitCode, 1);
    EXPECT_TRUE(late.errors.contains(u"tmp.wfd"_s)) << late.errors.toStdString();

    m_files.writeText(u"Com.dat"_s, u"SetDataText,\"D\",\"同意書データ.csv\",\",\", \"\"\"\", True\r\n"
                                    "setreport,\"form.wfd\"\r\n"_s);
    ASSERT_EQ(
        runProgram(u"wfrimg10"_s, {m_files.at(u"done.wfd"_s), u"/c"_s, m_files.at(u"Com.dat"_s)}).exitCode,
        0);
    // It comes in two pieces while the viewer waits.
    const QByteArray document = m_files.read(u"done.wfd"_s);
    m_files.write(u"tmp.wfd"_s, document.first(document.size() / 2));
    std::thread writer([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(700));
        m_files.write(u"tmp.wfd"_s, document);
    });
    const Ended ended = view(show);
    writer.join();
    EXPECT_EQ(ended.exitCode, 0) << ended.errors.toStdString();
    EXPECT_EQ(textOfPdf(m_files.at(u"tmp.pdf"_s)).count(u'\f'), 2);
}

} // namespace
