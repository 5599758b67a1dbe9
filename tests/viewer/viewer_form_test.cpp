#include "tests/viewer/report_files.h"
#include "viewer/command/job_document.h"
#include "viewer/window/page_printer.h"
#include "viewer/window/page_view.h"
#include "viewer/window/thumbnail_list.h"
#include "viewer/window/viewer_form.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QSpinBox>
#include <QtTest/QTest>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class Viewer : public testing::Test {
protected:
    Viewer() {
        m_files.writeForm();
        QStringList names;
        for (int i = 1; i <= 30; ++i)
            names.append(i % 10 == 0 ? u"佐藤ガク%1"_s.arg(i) : u"患者%1"_s.arg(i));
        m_files.writeNames(u"data.csv"_s, names);
        Job job;
        job.reports.push_back({u"form.wfd"_s, {}, {{u"D"_s, u"data.csv"_s, {}}}, {}, {}});
        Problem problem;
        const auto document = loadDocument(job, m_files.at(u"."_s), &problem);
        EXPECT_TRUE(document) << problem.sentence().toStdString();
        m_document = document.value_or(Document());
        m_form = std::make_unique<ViewerForm>(m_document, PrintAdjustment(),
                                              QStringList{u"帳票2：ありません。"_s});
        m_form->resize(900, 700);
        m_form->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(m_form.get()));
        m_pages = m_form->findChild<PageView *>();
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    int page() const { return m_form->findChild<QSpinBox *>(u"page"_s)->value(); }
    QString answer() const { return m_form->findChild<QLabel *>(u"searchAnswer"_s)->text(); }

    ReportFiles m_files;
    Document m_document;
    std::unique_ptr<ViewerForm> m_form;
    PageView *m_pages = nullptr;
};

TEST_F(Viewer, TurnsPagesByKeys) {
    EXPECT_EQ(m_form->windowTitle(), u"様式"_s); // the layout's, for a command file without one
    EXPECT_TRUE(m_pages->hasFocus());
    press(Qt::Key_PageDown);
    press(Qt::Key_PageDown);
    EXPECT_EQ(page(), 3);
    EXPECT_EQ(m_form->findChild<ThumbnailList *>()->currentIndex().row(), 2);
    press(Qt::Key_End);
    EXPECT_EQ(page(), 30);
    press(Qt::Key_PageDown);
    press(Qt::Key_PageUp);
    EXPECT_EQ(page(), 29);
    press(Qt::Key_Home);
    EXPECT_EQ(page(), 1);
    press(Qt::Key_G, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), u"17"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(m_pages->currentPage(), 16);
    EXPECT_TRUE(m_pages->hasFocus());
    m_form->findChild<ThumbnailList *>()->setCurrentIndex(
        m_form->findChild<ThumbnailList *>()->model()->index(4, 0));
    EXPECT_EQ(page(), 5);
}

TEST_F(Viewer, SaysWhatIsMissingBesideThePages) {
    const auto notes = [&] { return m_form->findChild<QLabel *>(u"notesText"_s); };
    ASSERT_TRUE(QTest::qWaitFor([&] { return notes() != nullptr; }));
    EXPECT_EQ(notes()->text(), u"注意 1 件： 帳票2：ありません。"_s);
    EXPECT_FALSE(QApplication::activeModalWidget());
}

TEST_F(Viewer, KeepsThePageWhenItZooms) {
    m_pages->goToPage(11);
    press(Qt::Key_0, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(m_pages->zoom(), 1);
    press(Qt::Key_Plus);
    EXPECT_DOUBLE_EQ(m_pages->zoom(), 1.1);
    press(Qt::Key_Minus);
    press(Qt::Key_Minus);
    EXPECT_DOUBLE_EQ(m_pages->zoom(), 0.9);
    EXPECT_EQ(m_form->findChild<QComboBox *>(u"zoom"_s)->currentText(), u"90%"_s);
    EXPECT_EQ(page(), 12);
    press(Qt::Key_1, Qt::ControlModifier);
    const double whole = m_pages->zoom();
    m_form->resize(900, 500);
    EXPECT_LT(m_pages->zoom(), whole);
    EXPECT_EQ(page(), 12);
    press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_GT(m_pages->zoom(), whole);
    EXPECT_EQ(page(), 12);
}

TEST_F(Viewer, FindsTextWhateverItsWidth) {
    press(Qt::Key_F, Qt::ControlModifier);
    m_form->findChild<QLineEdit *>(u"searchText"_s)->setText(u"ｶﾞｸ２０"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return page() == 20; })) << page();
    auto *text = m_form->findChild<QLineEdit *>(u"searchText"_s);
    text->setText(u"がく"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return answer() == u"20 ページ"_s; })) << answer().toStdString();
    for (const int expected : {30, 10, 20}) { // round the end
        press(Qt::Key_F3);
        EXPECT_TRUE(QTest::qWaitFor([&] { return page() == expected; })) << expected;
    }
    press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return page() == 10; })) << page();
    text->setText(u"無い名前"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return answer() == u"見つかりません。"_s; }));
    press(Qt::Key_Escape);
    EXPECT_FALSE(text->isVisible());
    EXPECT_TRUE(m_form->isVisible());
    press(Qt::Key_Escape);
    EXPECT_FALSE(m_form->isVisible());
}

TEST_F(Viewer, CopiesWhatIsSelected) {
    m_pages->goToPage(2);
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), u"見出し 患者3"_s);

    m_form->resize(1300, 700); // wider than a page
    press(Qt::Key_0, Qt::ControlModifier);
    press(Qt::Key_Home);
    const std::vector<TextRun> runs = m_document.texts(0);
    ASSERT_FALSE(runs.empty());
    const QRectF mark = partOfRun(runs[0], 0, 3); // 見出し
    const auto at = [&](QPointF millimetres) {
        const double left = (m_pages->viewport()->width() - 210 * 96 / 25.4) / 2;
        return (QPointF(qMax(left, PageGeometry::gap), PageGeometry::lead) + millimetres * 96 / 25.4)
            .toPoint();
    };
    ASSERT_DOUBLE_EQ(m_pages->zoom(), 1);
    ASSERT_EQ(m_pages->logicalDpiX(), 96);
    QTest::mousePress(m_pages->viewport(), Qt::LeftButton, {}, at(mark.topLeft() - QPointF(2, 2)));
    QTest::mouseMove(m_pages->viewport(), at(mark.bottomRight() + QPointF(0.2, 2)));
    QTest::mouseRelease(m_pages->viewport(), Qt::LeftButton, {}, at(mark.bottomRight()));
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), u"見出し"_s);
}

/// Left edge of the first word on a page of a PDF, mm.
double firstWordLeft(const QString &pdf, int page) {
    QProcess process;
    process.start(u"pdftotext"_s,
                  {u"-bbox"_s, u"-f"_s, QString::number(page), u"-l"_s, QString::number(page), pdf, u"-"_s});
    process.waitForFinished();
    const auto found = QRegularExpression(u"<word xMin=\"([0-9.]+)\""_s)
                           .match(QString::fromUtf8(process.readAllStandardOutput()));
    EXPECT_TRUE(found.hasMatch());
    return found.captured(1).toDouble() * 25.4 / 72;
}

TEST_F(Viewer, PrintsWithOffsetsZoomAndRange) {
    const auto print = [&](const QString &name, const PrintAdjustment &adjustment) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(m_files.at(name));
        choosePaper(printer, m_document.pageSize(0));
        printer.setPrintRange(QPrinter::PageRange);
        printer.setFromTo(2, 4);
        const Result<PagesEnd> end =
            printPages(m_document, printer, adjustment, 0, [](int, int) { return true; });
        EXPECT_TRUE(end && *end == PagesEnd::All) << end.reason().toStdString();
        EXPECT_EQ(textOfPdf(m_files.at(name)).count(u'\f'), 3);
        return firstWordLeft(m_files.at(name), 2);
    };
    const double plain = print(u"plain.pdf"_s, {});
    EXPECT_NEAR(plain, 20, 1);
    EXPECT_NEAR(print(u"moved.pdf"_s, {-55, 30, 2}), plain - 5.5, 0.1);
    EXPECT_NEAR(print(u"small.pdf"_s, {100, 0, 50}), 10 + plain / 2, 0.1);
}

} // namespace
