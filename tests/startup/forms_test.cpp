#include "app/base/folders.h"
#include "app/base/settings.h"
#include "app/desktop/japanese.h"
#include "app/desktop/message_form.h"
#include "app/forms/back_form.h"
#include "app/forms/input_box.h"
#include "tests/support/test_environment.h"
#include "widgets/version_form.h"
#include "widgets/wait_message_form.h"

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QFontDatabase>
#include <QIcon>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QTranslator>
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
    QString text, title, copied;
    QImage icon;
    whenShown([&](QWidget *window) {
        text = control<QTextEdit>(*window, u"txtMessage"_s)->toPlainText();
        title = window->windowTitle();
        icon = control<QLabel>(*window, u"imgIcon"_s)->pixmap().toImage();
        QTest::keyClick(window, Qt::Key_C, Qt::ControlModifier);
        copied = QGuiApplication::clipboard()->text();
        QTest::keyClick(window, Qt::Key_Return);
    });
    QtMessages().warn(u"\rConnection State=0\r<b>&x</b>\r\n終わり"_s, u"　エラー！！"_s);
    EXPECT_EQ(text, u"Connection State=0\n<b>&x</b>\n終わり"_s);
    EXPECT_EQ(copied, text);
    EXPECT_EQ(title, u"　エラー！！"_s);
    const QIcon warning = QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
    EXPECT_EQ(icon, warning.pixmap(icon.width()).toImage());
}

TEST(QtMessages, NeverOutgrowTheScreen) {
    QStringList lines;
    for (int i = 1; i <= 400; ++i)
        lines.append(u"%1 利用者"_s.arg(i));
    const QString list = lines.join(u'\n');
    const QString question = u"よろしいですか？"_s, path = u"C:\\"_s + QString(300, u'x');
    struct Case {
        QString text;
        bool scrolls, lastApart;
    };
    const QFont before = QApplication::font();
    for (const QString &family : {u"Noto Sans CJK JP"_s, u"IPAexGothic"_s}) {
        ASSERT_TRUE(QFontDatabase::hasFamily(family)) << family.toStdString();
        for (const int points : {9, 22})
            for (const auto &[text, scrolls, lastApart] :
                 {Case{question, false, false}, Case{path + u'\n' + question, false, false},
                  Case{QString(1'200, u'あ'), points == 22, false}, Case{QString(20'000, u'あ'), true, false},
                  Case{list + u'\n' + question, true, true},
                  Case{list + u'\n' + QString(40, u'あ'), true, true},
                  Case{list + u'\n' + path, true, points == 9}, Case{list + u"\n　"_s, true, false}}) {
                SCOPED_TRACE(family.toStdString() + ' ' + std::to_string(points) + ' ' +
                             text.right(9).toStdString());
                QApplication::setFont(QFont(family, points));
                MessageForm form({text, MessageIcon::Question, {}, MessageButtons::YesNo, Answer::Yes},
                                 nullptr);
                form.show();
                ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
                const QSize screen = form.screen()->availableGeometry().size();
                EXPECT_LE(form.height(), screen.height() * 9 / 10) << "room for the frame";
                EXPECT_LE(form.width(), screen.width());
                for (const QPushButton *button : form.findChildren<QPushButton *>())
                    EXPECT_TRUE(form.rect().contains(
                        button->geometry().translated(button->parentWidget()->mapTo(&form, QPoint()))));

                auto *shown = control<QTextEdit>(form, u"txtMessage"_s);
                auto *last = control<QTextEdit>(form, u"txtLast"_s);
                for (QTextEdit *part : {shown, last})
                    EXPECT_LE(part->document()->idealWidth(), part->viewport()->width()) << "cut";
                EXPECT_EQ(last->isVisible(), lastApart);
                EXPECT_TRUE(!lastApart || last->document()->size().height() <= last->viewport()->height())
                    << "cut below";
                EXPECT_EQ(lastApart ? shown->toPlainText() + u'\n' + last->toPlainText()
                                    : shown->toPlainText(),
                          text);
                const QScrollBar &bar = *shown->verticalScrollBar();
                EXPECT_EQ(bar.maximum() > 0, scrolls);
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
                EXPECT_EQ(bar.value(), bar.maximum());
            }
    }
    QApplication::setFont(before);
}

TEST(InterfaceFont, IsJapaneseByName) {
    EXPECT_EQ(interfaceFamily(u"Sans Serif"_s), u"Noto Sans CJK JP"_s) << "an alias may stand for anything";
    EXPECT_EQ(interfaceFamily(u"DejaVu Sans"_s), u"Noto Sans CJK JP"_s) << "no Japanese signs";
    EXPECT_EQ(interfaceFamily(u"Noto Serif CJK SC"_s), u"Noto Sans CJK JP"_s) << "Chinese shapes";
    EXPECT_EQ(interfaceFamily(u"IPAexGothic"_s), u"IPAexGothic"_s) << "somebody has chosen it";
    const QFont before = QApplication::font();
    QTranslator translator;
    speakJapanese(translator);
    EXPECT_EQ(QFontInfo(QApplication::font()).family(), u"Noto Sans CJK JP"_s);
    EXPECT_EQ(QApplication::font().pointSizeF(), before.pointSizeF()) << "the desktop's size";
    QApplication::setFont(before);
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
