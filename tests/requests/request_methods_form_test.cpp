// The request method screen, worked by keys on the consent list.

#include "app/base/request_methods.h"
#include "consent/list/list_grid.h"
#include "consent/requests/request_methods_form.h"
#include "consent/screens/consent_list_form.h"
#include "tests/list/list_fixture.h"
#include "tests/widgets/form_keys.h"

#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

class RequestMethodsFormTest : public ListTest {
protected:
    RequestMethodsFormTest() {
        QDir(programFolder.path()).mkdir(u"DATA"_s);
        EXPECT_TRUE(writeRequestMethods(folders, {u"郵送"_s, u"FAX"_s}));
        patient(1, u"山田"_s, u"ﾔﾏﾀﾞ"_s);
        consent(1, u"2026/12/31"_s, u"iDouiIraiType = 2"_s);
        EXPECT_EQ(list.iSearch(), 0);
        EXPECT_EQ(form.iInit(MethodsRow{model.records().row(0), u"1 山田"_s}), 0);
        showActive(form);
    }
    template <class W> W *control(const QString &name) { return form.findChild<W *>(name); }
    QString stored(const QString &column) const {
        return database.value(u"SELECT %1 FROM RIYOUSHA_DOUI_REC"_s.arg(column));
    }
    void press(const QString &button) { control<QPushButton>(button)->click(); }
    QStringList inFile() { return readRequestMethods(folders)->texts; }

    RequestMethodsForm form{environment, database.db};
};

TEST_F(RequestMethodsFormTest, AddsChangesAndTicksByKeyboard) {
    auto *grid = control<Grid>(u"ssAddIrai"_s);
    control<QLineEdit>(u"txtIrai"_s)->setFocus();
    typeText(QApplication::focusWidget(), u"手渡し"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    grid->setFocus();
    for (const int entry : {2, 0}) {
        grid->goTo(entry, MethodListModel::Own);
        QTest::keyClick(grid, Qt::Key_Space);
    }
    EXPECT_EQ(control<QLineEdit>(u"txtTgtRow"_s)->text(), u"1 山田"_s);
    EXPECT_EQ(control<QLineEdit>(u"txtKobetu"_s)->text(), u"手渡し,郵送"_s);
    QTest::keyClick(&form, Qt::Key_F5);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !form.isVisible(); }));
    EXPECT_EQ(inFile(), (QStringList{u"郵送"_s, u"FAX"_s, u"手渡し"_s}));
    EXPECT_EQ(stored(u"cKobetuDouiIrai"_s), u"手渡し,郵送"_s);
    EXPECT_TRUE(form.written());
    EXPECT_TRUE(messages.shown.isEmpty());
}

TEST_F(RequestMethodsFormTest, WhatIsStillBeingTypedIsRegisteredToo) {
    auto *grid = control<Grid>(u"ssAddIrai"_s);
    control<QLineEdit>(u"txtIrai"_s)->setText(u"電話"_s);
    const auto retype = [&](const QString &text) {
        grid->setFocus();
        grid->goTo(0, MethodListModel::Text);
        press(u"btnChange"_s);
        typeText(QApplication::focusWidget(), text);
        pressButton(form, Qt::Key_F5);
    };
    retype(u"FAX"_s);
    ASSERT_EQ(messages.shown.size(), 1) << "there is one already";
    EXPECT_TRUE(form.isVisible());
    messages.answers = {Answer::Yes};
    retype(u"郵便"_s);
    EXPECT_EQ(inFile(), (QStringList{u"郵便"_s, u"FAX"_s, u"電話"_s}));
    EXPECT_FALSE(form.isVisible());
}

TEST_F(RequestMethodsFormTest, AskBeforeAUsedNumberMeansSomethingElse) {
    auto *grid = control<Grid>(u"ssAddIrai"_s);
    grid->goTo(1, MethodListModel::Text);
    messages.answers = {Answer::Yes, Answer::No};
    press(u"btnRemove"_s);
    press(u"btnRegist"_s);
    ASSERT_EQ(messages.shown.size(), 2);
    EXPECT_TRUE(messages.shown.back().text.contains(u"FAX → 欠番"_s));
    EXPECT_EQ(inFile().size(), 2);
    EXPECT_TRUE(form.isVisible()) << "the input stays";
    messages.answers = {Answer::Yes};
    press(u"btnRegist"_s);
    EXPECT_EQ(inFile(), (QStringList{u"郵送"_s, u""_s}));
}

TEST_F(RequestMethodsFormTest, ColleaguesChangesAreNotOverwritten) {
    auto *grid = control<Grid>(u"ssAddIrai"_s);
    grid->goTo(0, MethodListModel::Own);
    QTest::keyClick(grid, Qt::Key_Space);
    database.run(u"DELETE FROM RIYOUSHA_DOUI_REC"_s);
    press(u"btnRegist"_s);
    ASSERT_EQ(messages.shown.size(), 1);
    EXPECT_TRUE(messages.shown.back().text.contains(u"1 山田"_s));
    EXPECT_TRUE(form.isVisible());

    ASSERT_TRUE(writeRequestMethods(folders, {u"郵送"_s, u"FAX"_s, u"colleague"_s}));
    control<QLineEdit>(u"txtIrai"_s)->setText(u"電話"_s);
    press(u"btnAdd"_s);
    press(u"btnRegist"_s);
    EXPECT_TRUE(messages.shown.back().text.contains(u"他の端末"_s));
    EXPECT_EQ(inFile().last(), u"colleague"_s);
    messages.answers = {Answer::Cancel, Answer::No};
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_TRUE(form.isVisible());
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
}

TEST_F(ListTest, TheListTakesNewMethodsAtOnce) {
    QDir(programFolder.path()).mkdir(u"DATA"_s);
    patient(1, u"山田"_s, u"ﾔﾏﾀﾞ"_s);
    consent(1, u"2026/12/31"_s, u"iDouiIraiType = 1"_s);
    frm同意書管理 form(environment);
    ASSERT_EQ(form.iInit(database.db, 0), 0);
    showActive(form);
    QTimer::singleShot(0, &form, [] {
        QWidget *screen = QApplication::activeModalWidget();
        screen->findChild<QLineEdit *>(u"txtIrai"_s)->setText(u"郵送"_s);
        screen->findChild<QPushButton *>(u"btnAdd"_s)->click();
        screen->findChild<QPushButton *>(u"btnRegist"_s)->click();
    });
    form.findChild<QPushButton *>(u"cmdAddIrai"_s)->click();
    EXPECT_EQ(form.findChild<ListGrid *>()->model()->index(0, int(ListColumn::Method)).data(), u"郵送"_s);
}
