#include "app/base/codepage932.h"
#include "tests/support/test_environment.h"
#include "tests/viewer/report_fixture.h"
#include "viewer/layout/layout_reader.h"
#include "viewer/output/pdf.h"
#include "viewer/output/pdf_name.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QString run(const QString &program, const QStringList &arguments) {
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        ADD_FAILURE() << program.toStdString() << process.readAllStandardError().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

class Pdf : public testing::Test {
protected:
    QByteArray write(const Document &document) {
        const Result<PagesEnd> written = writePdf(document, path);
        EXPECT_TRUE(written) << written.reason().toStdString();
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;
    QString path = folder.filePath(u"文書.pdf"_s);
};

/// What other programs see in a document. Windows has none of them.
class PdfRead : public Pdf {
protected:
    void SetUp() override {
        if (onWindows())
            GTEST_SKIP();
    }
    QString texts() { return run(u"pdftotext"_s, {path, u"-"_s}); }
};

const QByteArray page = "<page><text x='10' y='10' w='60' h='8'>{名}</text>"
                        "<text x='10' y='20' w='60' h='8' align='justify' bold='yes'>均等割付</text>"
                        "<text x='80' y='20' w='20' h='80' vertical='yes'>縦（ー）書</text>"
                        "<image x='10' y='150' w='20' h='20' item='絵'/>"
                        "<ellipse x='40' y='150' w='20' h='20' fill='#ff0000'/></page>";

TEST_F(PdfRead, CanBeSearchedAndCarriesItsFonts) {
    // The first two have a look-alike that shares their glyph, 𠮷 lies outside the basic plane.
    Report report = reportOf(page, u"名,絵\nx,\n\"一八力 髙﨑\",\n"_s, "paper='A5'");
    report.values = {{u"名"_s, u"一八力 髙﨑 𠮷野"_s}};
    write(Document({report, reportOf("<page/>", {}, "paper='長3'")}, u"題"_s));
    const QString text = texts();
    EXPECT_TRUE(text.contains(u"一八力 髙﨑 𠮷野"_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(u"均等割付"_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(u"縦（ー）書"_s)) << text.toStdString();
    const QStringList fonts = run(u"pdffonts"_s, {path}).split(u'\n', Qt::SkipEmptyParts).mid(2);
    EXPECT_EQ(fonts.size(), 2);
    for (const QString &font : fonts)
        EXPECT_TRUE(font.contains(u"yes yes yes"_s)) << font.toStdString();
    const QString info = run(u"pdfinfo"_s, {u"-l"_s, u"3"_s, path});
    EXPECT_TRUE(info.contains(u"419.528 x 595.276"_s)) << info.toStdString();
    EXPECT_TRUE(info.contains(u"340.157 x 666.142"_s)) << info.toStdString();
}

TEST_F(Pdf, HoldsAPictureOnceForAllPages) {
    QImage noise(300, 300, QImage::Format_RGB32);
    for (int y = 0; y < 300; ++y)
        for (int x = 0; x < 300; ++x)
            noise.setPixel(x, y, QRgb((x * 7919 + y * 104729) * 31 ^ x * y));
    noise.save(folder.filePath(u"絵.png"_s));
    Report report = reportOf(page, u"名,絵\n"_s + u"花子,絵.png\n"_s.repeated(30));
    report.folder = folder.path();
    const Document document({report}, {});
    EXPECT_LT(write(document).size(), 2 * 300 * 300 * 3);
    EXPECT_TRUE(document.warnings().isEmpty());
}

TEST_F(PdfRead, ShowsTheSameAsTheScreen) {
    // Black on the left; the table of its two colours stands the other way round than usual.
    QImage halves(20, 20, QImage::Format_Mono);
    halves.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    halves.fill(0);
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 10; ++x)
            halves.setPixel(x, y, 1);
    halves.save(folder.filePath(u"絵.png"_s));
    Report report = reportOf(page, u"名,絵\n花子,絵.png\n"_s);
    report.folder = folder.path();
    const Document document({report}, {});
    write(document);
    constexpr int dpi = 50;
    QImage screen(413, 585, QImage::Format_RGB32); // A4
    screen.fill(Qt::white);
    {
        QPainter painter(&screen);
        painter.scale(dpi / 25.4, dpi / 25.4);
        document.paint(painter, 0);
    }
    run(u"pdftoppm"_s, {u"-r"_s, QString::number(dpi), u"-png"_s, path, folder.filePath(u"p"_s)});
    const QImage print = QImage(folder.filePath(u"p-1.png"_s)).copy(0, 0, 413, 585);
    // Averages over squares of ten millimetres do not tell one smoothing from another.
    const auto coarse = [](const QImage &image) {
        return image.scaled(21, 29, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    const QImage ours = coarse(screen), theirs = coarse(print);
    int inked = 0;
    for (int y = 0; y < 29; ++y)
        for (int x = 0; x < 21; ++x) {
            inked += qGray(ours.pixel(x, y)) < 250;
            EXPECT_NEAR(qGray(ours.pixel(x, y)), qGray(theirs.pixel(x, y)), 24) << x << ' ' << y;
            EXPECT_NEAR(qRed(ours.pixel(x, y)), qRed(theirs.pixel(x, y)), 24) << x << ' ' << y;
        }
    EXPECT_GT(inked, 10);
}

TEST_F(Pdf, PicturesThatAreNoneAreToldOf) {
    QFile(folder.filePath(u"壊.png"_s)).open(QIODevice::WriteOnly);
    // A header that promises 100,000 × 100,000 pixels.
    const QByteArray bomb =
        QByteArray::fromHex("89504e470d0a1a0a0000000d49484452000186a0000186a001000000008029366500000011494441"
                            "54789c63601805a360140c77000003e80001b3a6d346");
    QFile bombFile(folder.filePath(u"大.png"_s));
    ASSERT_TRUE(bombFile.open(QIODevice::WriteOnly));
    bombFile.write(bomb);
    bombFile.close();
    Report report = reportOf(page, u"名,絵\n甲,無.png\n乙,壊.png\n丙,大.png\n丁,\n"_s);
    report.folder = folder.path();
    const Document document({report}, {});
    write(document);
    const QString warnings = document.warnings().join(u'\n');
    for (const QString &name : {u"無.png"_s, u"壊.png"_s, u"大.png"_s})
        EXPECT_TRUE(warnings.contains(u"「"_s + name)) << warnings.toStdString();
    EXPECT_TRUE(warnings.contains(u"大きすぎます"_s)) << warnings.toStdString();
}

TEST_F(Pdf, LeavesTheOldFileWhenGivenUp) {
    const QByteArray old = write(Document({reportOf("<page/>", {})}, {}));
    const Document document({reportOf("<page/>", u"a\n1\n2\n3\n"_s)}, {});
    int calls = 0;
    const Result<PagesEnd> end = writePdf(document, path, FileUse::Private,
                                          [&](int done, int all) { return ++calls, done < 2 && all == 3; });
    EXPECT_TRUE(end && *end == PagesEnd::GivenUp);
    EXPECT_EQ(calls, 2);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), old);
    EXPECT_TRUE(writePdf(document, u"/nowhere/x.pdf"_s).reason().contains(u"x.pdf"_s));
    EXPECT_FALSE(writePdf(Document(), path));
}

TEST_F(Pdf, IsNamedAfterDocumentPersonAndDay) {
    const auto named = [](const QString &title, const QString &records) {
        Problem problem;
        const auto layout = readLayout(
            u"<layout version=\"1\" title=\"%1\" data=\"D\"><page/></layout>"_s.arg(title).toUtf8(),
            u"x.wfd"_s, &problem);
        EXPECT_TRUE(layout) << problem.sentence().toStdString();
        Report report;
        report.layout = std::make_shared<const Layout>(layout.value_or(Layout()));
        report.sources = {{u"D"_s, DataTable::fromBytes(encode932(records).bytes, u"D"_s, {}, &problem)}};
        return pdfNameOf(Document({report}, u"印刷"_s), QDate(2026, 11, 22));
    };
    EXPECT_EQ(named(u"同意書 1/2"_s, u"患者ID,患者名\r\n7,髙橋　花子\r\n7,髙橋　花子\r\n"_s),
              u"同意書 1_2_髙橋　花子_20261122.pdf"_s);
    EXPECT_EQ(named(u"台帳"_s, u"利用者ID,利用者名\r\n1,山田\r\n2,山田\r\n"_s), u"台帳_2名_20261122.pdf"_s);
    EXPECT_EQ(named(u"\u202E同意書"_s, u"患者ID,患者名\r\n1,%1\r\n"_s.arg(QString(99, u'吉'))),
              u"同意書_%1_20261122.pdf"_s.arg(QString(33, u'吉')))
        << "no longer than a folder takes it";
    EXPECT_EQ(named({}, u"宛名\r\n甲\r\n乙\r\n丙\r\n"_s), u"印刷_3件_20261122.pdf"_s);
}

} // namespace
