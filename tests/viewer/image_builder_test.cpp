#include "app/base/codepage932.h"
#include "app/base/unicode_twin.h"
#include "tests/viewer/report_files.h"
#include "viewer/finished/document_file.h"
#include "viewer/programs/image_builder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class ImageBuilder : public testing::Test {
protected:
    ImageBuilder() {
        m_files.writeForm();
        for (int i = 1; i <= 3; ++i)
            m_files.writeNames(u"%1_同意書データ.csv"_s.arg(i), {u"患者%1"_s.arg(i)});
    }

    /// The batch's command file with these layouts.
    void writeBatch(const QStringList &layouts) {
        QStringList blocks;
        for (int i = 1; i <= layouts.size(); ++i)
            blocks.append(
                u"SetTitle,\"同意書%1\"\r\nSetImageField,\"QR\"\r\n"
                "SetDataText,同意書データ,\"%2\"\r\nSetReport,\"%3\"\r\n"_s.arg(
                    QString::number(i), m_files.at(u"%1_同意書データ.csv"_s.arg(i)), layouts[i - 1]));
        m_files.writeText(u"Com.dat"_s, blocks.join(u"AddReport\r\n"_s));
    }
    Ended build() {
        return runProgram(u"wfrimg10"_s, {m_files.at(u"Output0001.wfd"_s), u"/c"_s, m_files.at(u"Com.dat"_s),
                                          u"/ERR"_s, m_files.at(u"err.txt"_s)});
    }
    QString errors() { return decode932(m_files.read(u"err.txt"_s)); }
    FinishedDocument output() {
        Problem problem;
        auto read = readDocumentFile(m_files.at(u"Output0001.wfd"_s), &problem);
        EXPECT_TRUE(read) << problem.sentence().toStdString();
        return read.value_or(FinishedDocument());
    }

    ReportFiles m_files;
};

TEST_F(ImageBuilder, MergesIntoADocumentThatNeedsNoOtherFile) {
    writeBatch({m_files.at(u"FORM.WFD"_s), u"form.wfd"_s, u".\\Form.wfd"_s});
    m_files.write(u"err.txt"_s, "of an earlier run");
    const Ended ended = build();
    EXPECT_EQ(ended.exitCode, int(BuildResult::Built)) << ended.errors.toStdString();
    EXPECT_EQ(errors(), QString());
    for (const QString &name : {u"Output0001.wfd"_s, u"err.txt"_s})
        EXPECT_FALSE(QFile::permissions(m_files.at(name)) & (QFile::ReadGroup | QFile::ReadOther));

    for (const QString &name : QDir(m_files.at(u"."_s)).entryList({u"*.csv"_s, u"*.png"_s, u"form.wfd"_s}))
        QFile::remove(m_files.at(name));
    const FinishedDocument read = output();
    EXPECT_EQ(read.document.title(), u"同意書1"_s);
    ASSERT_EQ(read.document.pageCount(), 3);
    EXPECT_EQ(read.document.reports()[0].layout, read.document.reports()[2].layout);
    EXPECT_EQ(read.document.warnings(), QStringList());

    m_files.writeText(u"show.dat"_s, u"FileName,\"Output0001.wfd\"\r\nTitle,\"束\"\r\nShowWindow,2\r\n"_s);
    EXPECT_EQ(runProgram(u"wfrfv10"_s, {u"/c"_s, m_files.at(u"show.dat"_s)}).exitCode, 0);
    const QStringList pages = textOfPdf(m_files.at(u"Output0001.pdf"_s)).split(u'\f');
    ASSERT_EQ(pages.size(), 4);
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(pages[i].contains(u"患者%1"_s.arg(i + 1))) << pages[i].toStdString();

    // Several documents are one, its pages counted over all.
    m_files.write(u"Output0002.wfd"_s, m_files.read(u"Output0001.wfd"_s));
    m_files.writeText(
        u"show.dat"_s,
        u"FileName,\"Output0001.wfd\"\r\nAddReport\r\nFileName,\"Output0002.wfd\"\r\nShowWindow,2\r\n"_s);
    EXPECT_EQ(runProgram(u"wfrfv10"_s, {u"/c"_s, m_files.at(u"show.dat"_s)}).exitCode, 0);
    EXPECT_EQ(textOfPdf(m_files.at(u"show.pdf"_s)).count(u'\f'), 6);
}

TEST_F(ImageBuilder, CharactersBeyondTheCodePageAreKeptByATwinOfTheData) {
    const QByteArray data = m_files.read(u"2_同意書データ.csv"_s);
    const QByteArray unicode = decode932(data).replace(u"患者2"_s, u"𠮷田 한\uFFFD"_s).toUtf8();
    m_files.write(u"2_同意書データ.csv.utf8"_s, UnicodeTwin::of(data, unicode));
    m_files.write(u"3_同意書データ.csv.utf8"_s, UnicodeTwin::of(data, unicode)); // another's
    const QByteArray first = m_files.read(u"1_同意書データ.csv"_s);
    m_files.write(u"1_同意書データ.csv.utf8"_s, UnicodeTwin::of(first, unicode).chopped(9)); // cut off
    writeBatch({u"form.wfd"_s, u"form.wfd"_s, u"form.wfd"_s});
    EXPECT_EQ(build().exitCode, int(BuildResult::Built));
    m_files.writeText(u"show.dat"_s, u"FileName,\"Output0001.wfd\"\r\nShowWindow,2\r\n"_s);
    const Ended viewer = runProgram(u"wfrfv10"_s, {u"/c"_s, m_files.at(u"show.dat"_s)});
    EXPECT_EQ(viewer.exitCode, 0) << viewer.errors.toStdString();
    const QStringList pages = textOfPdf(m_files.at(u"Output0001.pdf"_s)).split(u'\f');
    EXPECT_TRUE(pages.value(1).contains(u"𠮷田 한"_s)) << pages.value(1).toStdString();
    EXPECT_TRUE(pages.value(0).contains(u"患者1"_s));
    EXPECT_TRUE(pages.value(2).contains(u"患者3"_s));
}

TEST_F(ImageBuilder, LeavesOutWhatFailsAndNamesIt) {
    writeBatch({u"form.wfd"_s, u"無い.wfd"_s, u"form.wfd"_s});
    EXPECT_EQ(build().exitCode, int(BuildResult::SomeLeftOut));
    EXPECT_EQ(output().document.pageCount(), 2);
    EXPECT_EQ(errors().count(u"\r\n"_s), 1);
    EXPECT_TRUE(errors().startsWith(u"帳票2「同意書2」（2_同意書データ.csv）："_s)) << errors().toStdString();
    EXPECT_TRUE(errors().contains(u"無い.wfd"_s));

    QFile::remove(m_files.at(u"1_同意書データ.csv"_s));
    m_files.write(u"3_同意書データ.csv"_s, "\"氏名\",\"QR\"\r\n\"a\",\"b\",\"c\"\r\n");
    EXPECT_EQ(build().exitCode, int(BuildResult::NothingBuilt));
    EXPECT_EQ(errors().count(u"\r\n"_s), 3);
    EXPECT_EQ(output().notes.size(), 3);
}

TEST_F(ImageBuilder, TellsOfACommandFileThatWasReplaced) {
    writeBatch({u"form.wfd"_s});
    ASSERT_EQ(build().exitCode, 0);
    m_files.writeText(u"Com.dat"_s, u"Title,\"まとめ\"\r\nFileName,\"%1\"\r\nPrintOutFromDialog\r\n"_s.arg(
                                        m_files.at(u"OUTPUT0001.wfd"_s)));
    EXPECT_EQ(build().exitCode, int(BuildResult::NothingBuilt));
    EXPECT_TRUE(errors().contains(u"書き換えられました"_s)) << errors().toStdString();
    // The viewer that waits for the document shows the reason, not the pages of the earlier run.
    const Ended viewer = runProgram(u"wfrfv10"_s, {u"/c"_s, m_files.at(u"Com.dat"_s)});
    EXPECT_EQ(viewer.exitCode, 1);
    EXPECT_TRUE(viewer.errors.contains(u"書き換えられました"_s)) << viewer.errors.toStdString();
}

TEST_F(ImageBuilder, RefusesWhatItCannotUse) {
    EXPECT_EQ(runProgram(u"wfrimg10"_s, {}).exitCode, int(BuildResult::WrongUsage));
    EXPECT_EQ(runProgram(u"wfrimg10"_s, {m_files.at(u"a.wfd"_s), u"/c"_s}).exitCode,
              int(BuildResult::WrongUsage));
    EXPECT_EQ(build().exitCode, int(BuildResult::NothingBuilt)); // no command file
    EXPECT_TRUE(errors().contains(u"Com.dat"_s));
    writeBatch({u"form.wfd"_s});
    const QByteArray layout = m_files.read(u"form.wfd"_s);
    const Ended ended =
        runProgram(u"wfrimg10"_s, {m_files.at(u"form.wfd"_s), u"/c"_s, m_files.at(u"Com.dat"_s)});
    EXPECT_EQ(ended.exitCode, int(BuildResult::NothingBuilt));
    EXPECT_EQ(m_files.read(u"form.wfd"_s), layout);
}

TEST_F(ImageBuilder, DamagedDocumentsAreTold) {
    writeBatch({u"form.wfd"_s, u"form.wfd"_s});
    ASSERT_EQ(build().exitCode, 0);
    const QByteArray sound = m_files.read(u"Output0001.wfd"_s);
    Problem problem;
    ASSERT_TRUE(parseDocumentFile(sound, u"x"_s, &problem));
    for (qsizetype length = 0; length < sound.size(); length += 7)
        EXPECT_FALSE(parseDocumentFile(sound.first(length), u"x"_s, &problem)) << length;
    for (qsizetype at = 0; at < sound.size(); at += 5) {
        QByteArray changed = sound;
        changed[at] = char(changed[at] ^ 0x10);
        EXPECT_FALSE(parseDocumentFile(changed, u"x"_s, &problem)) << at;
        EXPECT_FALSE(problem.text.isEmpty());
    }
}

} // namespace
