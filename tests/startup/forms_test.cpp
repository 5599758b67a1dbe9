#include "app/base/folders.h"
#include "app/base/version.h"
#include "app/forms/back_form.h"
#include "app/forms/input_box.h"
#include "tests/support/test_environment.h"
#include "widgets/qt_messages.h"
#include "widgets/version_form.h"
#include "widgets/wait_message_form.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Runs `act` once the next modal window is up; closes it afterwards if `act` left it open.
void whenShown(const std::function<void(QWidget *)> &act) {
    QTimer::singleShot(0, qApp, [act] {
        QWidget *window = QApplication::activeModalWidget();
        ASSERT_NE(window, nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
        act(window);
        // A mnemonic presses its button for a moment before it counts.
        if (!QTest::qWaitFor([window] { return !window->isVisible(); }, 2000)) {
            ADD_FAILURE() << "still open";
            window->close();
        }
    });
}

template <class T> T *control(const QWidget &form, QStringView name) {
    T *found = form.findChild<T *>(name.toString());
    EXPECT_NE(found, nullptr) << name.toUtf8().constData();
    return found;
}

} // namespace

TEST(QtMessages, AnswersKeysAndSpeaksJapanese) {
    struct Case {
        MessageButtons buttons;
        Answer byDefault;
        Qt::Key key;
        Answer answer;
        QStringList captions;
    };
    const QString ok = u"OK"_s, cancel = u"キャンセル"_s, yes = u"はい(&Y)"_s, no = u"いいえ(&N)"_s;
    for (const Case &c : {
             Case{MessageButtons::Ok, Answer::Ok, Qt::Key_Escape, Answer::Ok, {ok}},
             Case{MessageButtons::OkCancel, Answer::Ok, Qt::Key_Return, Answer::Ok, {ok, cancel}},
             Case{MessageButtons::OkCancel, Answer::Ok, Qt::Key_Escape, Answer::Cancel, {ok, cancel}},
             Case{MessageButtons::YesNo, Answer::Yes, Qt::Key_Return, Answer::Yes, {yes, no}},
             Case{MessageButtons::YesNo, Answer::No, Qt::Key_Return, Answer::No, {yes, no}},
             Case{MessageButtons::YesNo, Answer::Yes, Qt::Key_N, Answer::No, {yes, no}},
             Case{MessageButtons::YesNo, Answer::Yes, Qt::Key_Escape, Answer::No, {yes, no}},
             Case{MessageButtons::YesNoCancel, Answer::No, Qt::Key_Y, Answer::Yes, {yes, no, cancel}},
             Case{
                 MessageButtons::YesNoCancel, Answer::Yes, Qt::Key_Escape, Answer::Cancel, {yes, no, cancel}},
         }) {
        QStringList captions;
        whenShown([&](QWidget *box) {
            for (const QPushButton *button : box->findChildren<QPushButton *>())
                captions.append(button->text());
            QTest::keyClick(box, c.key);
        });
        const Answer answer =
            QtMessages().show({u"?"_s, MessageIcon::Question, u"確認"_s, c.buttons, c.byDefault});
        EXPECT_EQ(answer, c.answer) << int(c.buttons) << ' ' << c.key;
        captions.sort();
        QStringList expected = c.captions;
        expected.sort();
        EXPECT_EQ(captions, expected);
    }
}

TEST(QtMessages, ShowsTextTitleAndIconAsGiven) {
    QString text, title;
    auto icon = QMessageBox::NoIcon;
    Qt::TextInteractionFlags flags;
    whenShown([&](QWidget *window) {
        const auto *box = qobject_cast<QMessageBox *>(window);
        ASSERT_NE(box, nullptr);
        text = box->text();
        title = box->windowTitle();
        icon = box->icon();
        flags = box->textInteractionFlags();
        QTest::keyClick(window, Qt::Key_Return);
    });
    QtMessages().warn(u"\rConnection State=0\r<b>&x</b>\r\n終わり"_s, u"　エラー！！"_s);
    EXPECT_EQ(text, u"Connection State=0\n<b>&x</b>\n終わり"_s);
    EXPECT_EQ(title, u"　エラー！！"_s);
    EXPECT_EQ(icon, QMessageBox::Warning);
    EXPECT_TRUE(flags & Qt::TextSelectableByMouse);
}

TEST(QtMessages, ALongTextLeavesTheButtonsOnTheScreen) {
    QStringList lines;
    for (int i = 1; i <= 400; ++i)
        lines.append(u"%1 利用者"_s.arg(i));
    lines.append(u"よろしいですか？"_s);
    for (const QString &text : {lines.join(u"\r\n"_s), QString(20'000, u'あ')}) {
        QSize size;
        QString shown, whole;
        whenShown([&](QWidget *window) {
            const auto *box = qobject_cast<QMessageBox *>(window);
            ASSERT_NE(box, nullptr);
            size = box->size();
            shown = box->text();
            whole = box->detailedText();
            QTest::keyClick(window, Qt::Key_Return);
        });
        EXPECT_TRUE(QtMessages().ask(text));
        EXPECT_LE(size.height(), 700);
        EXPECT_TRUE(shown.endsWith(text.right(8))) << "the question stays";
        EXPECT_EQ(whole, QString(text).remove(u'\r'));
    }
}

TEST(InputBoxForm, ReplacesTheProposalByWhatIsTyped) {
    InputBox box(u"番号\r\n"_s, u"起動"_s, u"1"_s);
    auto *answer = control<QLineEdit>(box, u"txtAnswer");
    EXPECT_EQ(box.text(), u"1"_s);
    whenShown([&](QWidget *) {
        QTest::keyClicks(answer, u"0"_s);
        QTest::keyClick(answer, Qt::Key_Return);
    });
    EXPECT_EQ(box.exec(), QDialog::Accepted);
    EXPECT_EQ(box.text(), u"0"_s);

    whenShown([&](QWidget *) { QTest::mouseClick(control<QPushButton>(box, u"cmdCancel"), Qt::LeftButton); });
    EXPECT_EQ(box.exec(), QDialog::Rejected);
    whenShown([](QWidget *window) { QTest::keyClick(window, Qt::Key_Escape); });
    EXPECT_EQ(box.exec(), QDialog::Rejected);
}

TEST(WaitMessage, ShowsProgressAndTellsOfACancel) {
    frmWaitMsg form;
    form.showProgress(u"更新中"_s, frmWaitMsg::Cancel::Allowed);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    form.setProgress(50, 50);
    EXPECT_EQ(control<QProgressBar>(form, u"barProgress")->value(), 50);
    EXPECT_FALSE(form.cancelled());
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_TRUE(form.cancelled());
    EXPECT_TRUE(form.isVisible()); // until the work has come to a safe place
    form.showProgress(u"次"_s, frmWaitMsg::Cancel::Allowed);
    EXPECT_FALSE(form.cancelled());
}

TEST(WaitMessage, LetsNobodyStopWhatMustNotBeStopped) {
    frmWaitMsg form;
    form.showProgress(u"更新中"_s);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    QTest::keyClick(&form, Qt::Key_Escape);
    form.close();
    EXPECT_FALSE(form.cancelled());
    EXPECT_TRUE(form.isVisible());
    EXPECT_FALSE(control<QPushButton>(form, u"cmdCancel")->isVisible());
}

TEST(Background, NeverTakesTheKeysFromAScreen) {
    QTemporaryDir folder;
    QImage(4, 4, QImage::Format_RGB32).save(folder.filePath(u"imgwall.png"_s));
    const QString picture = frmBack::findPicture({u"/nowhere"_s, folder.path()});
    EXPECT_TRUE(picture.endsWith(u"imgwall.png"_s));

    frmBack back(picture);
    back.showMaximized();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !control<QLabel>(back, u"ImgWall")->pixmap().isNull(); }));
    QDialog screen;
    screen.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&screen));
    back.close();
    EXPECT_TRUE(back.isVisible());
    EXPECT_EQ(QApplication::activeWindow(), &screen);
}
