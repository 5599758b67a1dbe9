#include "widgets/layout_preview.h"

#include "app/base/codepage932.h"

#include <QFile>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class LayoutPreviewTest : public testing::Test {
protected:
    QString put(const QString &name, const QByteArray &bytes) {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
    void click(const QString &name) {
        auto *button = preview.findChild<QToolButton *>(name);
        ASSERT_TRUE(button && button->isEnabled());
        QTest::mouseClick(button, Qt::LeftButton);
    }

    QTemporaryDir folder;
    LayoutPreview preview;
};

TEST_F(LayoutPreviewTest, ShowsPagesAndWhatStandsInTheirWay) {
    put(u"帳票.wfd"_s,
        "<layout version='1' paper='A4'><page><rect x='5' y='5' w='200' h='287' fill='#000000'/>"
        "</page></layout>");
    put(u"壊.wfd"_s, "<layout version='1'>\n<page x='1'/></layout>");
    const QString data = put(u"データ.csv"_s, "a\r\n1\r\n2\r\n3\r\n");
    const auto command = [&](const QString &layout) {
        return put(u"Com.dat"_s,
                   encode932(u"FileName,\"%1\"\r\nSetDataText,\"d\",\"データ.csv\"\r\nShowWindow,2\r\n"_s.arg(
                                 layout))
                       .bytes);
    };
    preview.resize(300, 500);
    preview.show();
    ASSERT_TRUE(preview.showCommandFile(command(u"帳票.wfd"_s))) << preview.problem().toStdString();
    QCoreApplication::processEvents();
    EXPECT_EQ(preview.pageCount(), 3);
    const QImage picture = preview.grab().toImage();
    EXPECT_LT(qGray(picture.pixel(picture.width() / 2, picture.height() / 2)), 50);
    click(u"nextPage"_s);
    EXPECT_EQ(preview.currentPage(), 1);
    click(u"zoomIn"_s);
    click(u"optZoom_0"_s);
    click(u"previousPage"_s);
    EXPECT_EQ(preview.currentPage(), 0);
    EXPECT_FALSE(preview.showCommandFile(command(u"壊.wfd"_s)));
    EXPECT_TRUE(preview.problem().contains(u"（2行 7文字目）"_s)) << preview.problem().toStdString();
    EXPECT_FALSE(preview.showCommandFile(folder.filePath(u"無.dat"_s)));
    EXPECT_FALSE(preview.problem().isEmpty());
    EXPECT_TRUE(preview.showCommandFile(command(u"帳票.wfd"_s)));
    EXPECT_EQ(preview.problem(), QString());
}

} // namespace
