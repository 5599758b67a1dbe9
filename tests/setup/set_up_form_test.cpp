#include "setup/set_up_form.h"

#include "db/adodb.h"
#include "db/connection_settings.h"
#include "tests/support/test_environment.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The screens by their keys.
class SetUpFormTest : public testing::Test, protected TestInstallation {
protected:
    void open() {
        form = std::make_unique<SetUpForm>(
            environment, QString(), [](const QString &) { return Failure{u"見本は作成しません。"_s}; });
        form->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
    }
    QString title() const { return form->findChild<QLabel *>(u"lblTitle"_s)->text(); }
    /// A button's key, without waiting for its being drawn pressed.
    void press(Qt::Key key) const {
        for (QAbstractButton *button : form->findChildren<QAbstractButton *>())
            if (button->shortcut() == QKeySequence(key) && button->isVisible())
                return button->click();
        ADD_FAILURE() << "nothing has this key";
    }
    void fill(const QString &name, const QString &text) { form->findChild<QLineEdit *>(name)->setText(text); }
    /// To the practice's screen of the embedded database.
    void goToPractice() {
        for (int screen = 0; screen < 3; ++screen)
            press(Qt::Key_F5);
    }
    bool isInstalled() const { return hasConnectionSettings(folders); }

    std::unique_ptr<SetUpForm> form;
};

} // namespace

TEST_F(SetUpFormTest, KeysAloneMakeAnEmbeddedPracticeAndTheNextPcJoinsItInThreeScreens) {
    open();
    goToPractice();
    EXPECT_EQ(title(), u"4／5　事業所"_s);
    press(Qt::Key_F5);
    EXPECT_EQ(messages.said(), QStringList{u"事業所名を入力してください。"_s});
    QTest::keyClicks(QApplication::focusWidget(), u"Aoba"_s);
    for (int inputs = 0; inputs < 3; ++inputs)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTest::keyClicks(QApplication::focusWidget(), u"1234567"_s);
    press(Qt::Key_F5);
    EXPECT_FALSE(isInstalled());
    press(Qt::Key_F5);
    EXPECT_EQ(form->result(), QDialog::Accepted);
    EXPECT_TRUE(isInstalled());
    EXPECT_EQ(folders.data(), folders.program() + u"/DATA"_s) << "as the new Massage.ini says";
    EXPECT_EQ(messages.said(), QStringList{u"初期設定が終わりました。"_s});

    QFile::remove(folders.program() + u"/adodb.ini"_s);
    open();
    press(Qt::Key_F5);
    press(Qt::Key_F5);
    EXPECT_EQ(title(), u"5／5　確認"_s);
    press(Qt::Key_F5);
    EXPECT_TRUE(isInstalled());
    cT_ADODB db;
    db.iInit(*readConnectionString(folders));
    EXPECT_EQ(readRows(db, u"SELECT cYubinNo FROM CORP"_s)->text(0, 0), u"123-4567"_s);
}

TEST_F(SetUpFormTest, LeftHalfWayItGoesOnThereAndBackKeepsWhatWasTyped) {
    open();
    goToPractice();
    fill(u"txtName"_s, u"あおば治療院"_s);
    press(Qt::Key_F3);
    EXPECT_EQ(title(), u"3／5　はじめのデータ"_s);
    press(Qt::Key_F5);
    press(Qt::Key_F12);
    EXPECT_EQ(form->result(), QDialog::Rejected);
    EXPECT_FALSE(isInstalled());
    open();
    EXPECT_EQ(title(), u"4／5　事業所"_s);
    EXPECT_EQ(form->findChild<QLineEdit *>(u"txtName"_s)->text(), u"あおば治療院"_s);
    press(Qt::Key_F5);
    press(Qt::Key_F5);
    EXPECT_TRUE(isInstalled());
}

TEST_F(SetUpFormTest, AConnectionThatFailsIsToldOnItsScreenAndASampleThatFailsLeavesNothing) {
    open();
    const auto choose = [this](const QString &name) {
        form->findChild<QAbstractButton *>(name)->setChecked(true);
    };
    choose(u"optPostgres"_s);
    press(Qt::Key_F5);
    press(Qt::Key_F4);
    const auto tried = [this] { return form->findChild<QLabel *>(u"lblTried"_s)->text(); };
    EXPECT_EQ(tried(), u"サーバーの名前を入力してください。"_s);
    fill(u"txtServer"_s, u"127.0.0.1,1"_s);
    press(Qt::Key_F5);
    EXPECT_EQ(title(), u"2／5　接続先"_s);
    EXPECT_TRUE(tried().startsWith(u"サーバーにつながりません。"_s) && tried().contains(u"127.0.0.1"_s))
        << tried().toStdString();
    press(Qt::Key_F3);
    choose(u"optEmbedded"_s);
    press(Qt::Key_F5);
    press(Qt::Key_F5);
    choose(u"optSample"_s);
    press(Qt::Key_F5);
    EXPECT_EQ(title(), u"5／5　確認"_s) << "the sample brings its own practice";
    press(Qt::Key_F5);
    EXPECT_EQ(messages.said(), QStringList{u"見本は作成しません。"_s});
    EXPECT_FALSE(isInstalled());
    EXPECT_TRUE(form->isVisible());
}
