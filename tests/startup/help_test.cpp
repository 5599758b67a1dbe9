#include "app/desktop/dark_outlines.h"
#include "app/desktop/foot_line.h"
#include "app/desktop/key_help.h"
#include "app/desktop/key_list.h"
#include "app/desktop/message_form.h"
#include "tests/support/test_environment.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QShortcut>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

void show(QDialog &window) {
    window.setModal(true);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

/// A window with a command on F1, keys of every kind, and some that cannot be used.
struct Window : QDialog {
    Window() {
        setWindowTitle(u"見本"_s);
        auto *layout = new QVBoxLayout(this);
        auto *bar = new QMenuBar(this);
        QMenu *menu = bar->addMenu(u"同意(&A)"_s);
        QAction *create = menu->addAction(u"新規"_s);
        create->setShortcut(Qt::Key_F1);
        connect(create, &QAction::triggered, this, [this] { ++created; });
        layout->setMenuBar(bar);
        auto *save = new QPushButton(u"保存(F5)"_s, this);
        save->setShortcut(Qt::Key_F5);
        auto *greyed = new QPushButton(u"削除"_s, this);
        greyed->setShortcut(Qt::Key_F3);
        greyed->setEnabled(false);
        auto *hidden = new QPushButton(u"印刷(&P)"_s, this);
        auto *label = new QLabel(u"名前(&N)"_s, this);
        auto *name = new QLineEdit(this);
        label->setBuddy(name);
        (new QShortcut(Qt::Key_F12, this))->setWhatsThis(u"閉じる"_s);
        for (QWidget *part : std::initializer_list<QWidget *>{save, greyed, hidden, label, name})
            layout->addWidget(part);
        hidden->hide();
        name->setFocus();
    }
    int created = 0;
};

QStringList texts(const QWidget &window) {
    QStringList lines;
    for (const KeyGroup &group : keysOf(window))
        for (const KeyLine &line : group.lines)
            lines.append(group.title + u'|' + line.keys + u'|' + line.what);
    return lines;
}

} // namespace

TEST(FootLine, SaysInTheWindowInUseAndGoesOnBelowIt) {
    QDialog below;
    new QVBoxLayout(&below);
    show(below);
    QtMessages messages;
    {
        QDialog above(&below);
        auto *input = new QLineEdit(&above);
        (new QVBoxLayout(&above))->addWidget(input);
        show(above);
        messages.note(u"登録しました。"_s);
        ASSERT_NE(above.findChild<FootLine *>(), nullptr);
        EXPECT_EQ(above.findChild<FootLine *>()->text(), u"登録しました。"_s);
        QTest::keyClick(input, Qt::Key_A);
        QTest::qWait(20);
        EXPECT_FALSE(above.findChild<FootLine *>()->text().isEmpty()) << "nobody can have read it";
        above.accept();
    }
    FootLine *line = below.findChild<FootLine *>();
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->text(), u"登録しました。"_s);
    QTest::qWait(1600);
    QTest::keyClick(&below, Qt::Key_A);
    EXPECT_TRUE(QTest::qWaitFor([&] { return line->text().isEmpty(); }, 1000));
}

TEST(KeyHelp, NamesWhatTheWindowAnswers) {
    Window window;
    show(window);
    EXPECT_EQ(texts(window), (QStringList{u"同意（Alt+A）|F1|新規"_s, u"この画面|F5|保存"_s,
                                          u"この画面|F12|閉じる"_s, u"ボタン・項目|Alt+N|名前"_s}));
}

TEST(KeyHelp, F1IsTheCommandUntilItIsHeld) {
    Window window;
    show(window);
    const KeyHelp help;
    const auto sheet = [&] { return window.findChild<KeySheet *>(); };
    QWidget *input = window.findChild<QLineEdit *>();

    QTest::keyClick(input, Qt::Key_F1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.created == 1; }, 1000));
    EXPECT_EQ(sheet(), nullptr);

    QTest::keyPress(input, Qt::Key_F1);
    QTest::keyRelease(input, Qt::Key_F1); // as some displays repeat
    QTest::keyPress(input, Qt::Key_F1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return sheet() != nullptr; }, 2000));
    QTest::keyRelease(input, Qt::Key_F1);
    EXPECT_EQ(window.created, 1);
    QTest::keyClick(sheet(), Qt::Key_Down);
    EXPECT_TRUE(QTest::qWaitFor([&] { return sheet() == nullptr; }, 1000));

    QTest::keyClick(input, Qt::Key_F1, Qt::ShiftModifier);
    ASSERT_NE(sheet(), nullptr);
    EXPECT_TRUE(sheet()->rect().isValid());
    QTest::mouseClick(sheet(), Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return sheet() == nullptr; }, 1000));
    EXPECT_EQ(window.created, 1);
}

TEST(DarkOutlines, ShowWhereAnInputIsOnABlackWindow) {
    DarkOutlines style(u"fusion"_s);
    QLineEdit input;
    input.setStyle(&style);
    input.setPalette(QPalette(Qt::white, Qt::black, Qt::white, Qt::black, Qt::gray, Qt::white, Qt::black));
    const QImage shown = input.grab().toImage();
    int brightest = 0;
    for (int y = 0; y < shown.height() / 2; ++y)
        brightest = qMax(brightest, shown.pixelColor(shown.width() / 2, y).lightness());
    EXPECT_GT(brightest, 100);

    QPalette palette = input.palette();
    palette.setColor(QPalette::PlaceholderText, Qt::black);
    style.polish(palette);
    EXPECT_GT(palette.color(QPalette::PlaceholderText).lightness(), 100);
    palette.setColor(QPalette::PlaceholderText, Qt::yellow);
    style.polish(palette);
    EXPECT_EQ(palette.color(QPalette::PlaceholderText), QColor(Qt::yellow)) << "which can be read";
}
