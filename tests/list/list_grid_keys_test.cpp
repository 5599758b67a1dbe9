// Keys of the consent list's grid, and taking back what was entered by them.

#include "tests/list/list_form_fixture.h"
#include "widgets/code_box.h"
#include "widgets/date_box.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

TEST_F(ListFormTest, WhatWasEnteredIsTakenBackStepByStep) {
    consent(3, u"2026/12/31"_s, u"iHenkeiFlg = 1, nHenkeiDouiDate = 20260601"_s);
    open();
    for (const QString &link : {u"mnPeriodNotFollowByHenkei"_s, u"mnSameDouiDay"_s})
        form->findChild<QAction *>(link)->trigger();
    const auto all = [&] {
        QStringList cells;
        for (int row = 0; row < grid->model()->rowCount(); ++row)
            for (const ListColumn column : {ListColumn::Target, ListColumn::Received, ListColumn::Reconsent,
                                            ListColumn::NextStart, ListColumn::NextEnd, ListColumn::Remark})
                cells += at(row, column) +
                         grid->model()->index(row, int(column)).data(Qt::CheckStateRole).toString();
        return cells;
    };
    QList<QStringList> states{all()};
    const auto enter = [&](const std::function<void()> &how) {
        how();
        states += all();
        ASSERT_NE(states.back(), states[states.size() - 2]);
    };
    go(1, ListColumn::Remark);
    enter([&] { type(u"memo"_s); });
    enter([&] { QTest::keyClick(form.get(), Qt::Key_F8); }); // with the dates and periods proposed
    EXPECT_EQ(at(0, ListColumn::Reconsent), u"2026/12/01"_s);
    go(2, ListColumn::Name);
    enter([&] {
        QTest::keyClick(grid, Qt::Key_Up, Qt::ShiftModifier);
        QTest::keyClick(grid, Qt::Key_Space);
    });
    EXPECT_TRUE(isTarget(1) && isTarget(2) && !isTarget(0)) << "the rows chosen";
    go(1, ListColumn::Number);
    enter([&] { QTest::keyClick(form.get(), Qt::Key_U, Qt::ControlModifier); });
    EXPECT_EQ(at(1, ListColumn::Remark), QString()) << "one row as it was read";

    // Reading again takes nothing back, and what was done can still be.
    QTest::keyClick(form.get(), Qt::Key_F4, Qt::ShiftModifier);
    for (qsizetype i = states.size() - 2; i >= 0; --i) {
        QTest::keyClick(form.get(), Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(all(), states[i]) << i;
    }
    EXPECT_EQ(messages.notes.back(), u"元に戻しました：備考（2 利用者2）"_s);
    QTest::keyClick(form.get(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(messages.notes.back(), u"元に戻す操作はありません。"_s);
    for (const QStringList &state : states.mid(1)) {
        QTest::keyClick(form.get(), Qt::Key_Y, Qt::ControlModifier);
        EXPECT_EQ(all(), state);
    }

    // A box has its own undoing; a save is not taken back, nor a colleague's change written over.
    auto *kana = control<QLineEdit>(u"txt_SiboriKana"_s);
    kana->setFocus();
    QTest::keyClicks(kana, u"x"_s);
    QTest::keyClick(kana, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(kana->text(), QString());
    QTest::keyClick(form.get(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(kana->text(), u"x"_s);
    kana->clear();
    EXPECT_EQ(all(), states.back());
    grid->setFocus();
    QTest::keyClick(form.get(), Qt::Key_Z, Qt::ControlModifier);
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET cItiranBikou = '同僚', tUpDateTime = '1' WHERE nIDNo = 2"_s);
    messages.answers = {Answer::Yes};
    QTimer::singleShot(
        0, [] { QApplication::activeModalWidget()->findChild<QPushButton *>(u"cmdEnd"_s)->click(); });
    QTest::keyClick(form.get(), Qt::Key_F4, Qt::ShiftModifier);
    form->activateWindow(); // so that the keys below reach it
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
    for (const Qt::Key key : {Qt::Key_Y, Qt::Key_Z})
        QTest::keyClick(form.get(), key, Qt::ControlModifier);
    EXPECT_EQ(at(1, ListColumn::Remark), u"同僚"_s);
    QTest::keyClick(form.get(), Qt::Key_F5);
    const QStringList saved = all();
    QTest::keyClick(form.get(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(all(), saved);
}

TEST_F(ListFormTest, KeysStayInTheListAndNeverLeaveIt) {
    open();
    const auto press = [](Qt::Key key, Qt::KeyboardModifiers with = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, with);
        QApplication::processEvents();
    };
    const auto cell = [&] {
        return std::pair(grid->currentIndex().row(), ListColumn(grid->currentIndex().column()));
    };
    auto *kana = control<QLineEdit>(u"txt_SiboriKana"_s);
    go(2, ListColumn::Name);
    kana->setFocus();
    kana->insert(u"ﾔﾏ"_s);
    EXPECT_EQ(cell(), std::pair(0, ListColumn::Name)) << "where the first hit is";
    press(Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget(), grid);
    press(Qt::Key_Escape);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(kana->text(), u"ﾔﾏ"_s);
    EXPECT_EQ(grid->model()->rowCount(), 2);
    go(1, ListColumn::Name);
    kana->clear();
    EXPECT_EQ(at(cell().first, ListColumn::Number), u"3"_s) << "the cursor stays with its row";
    for (QWidget *box :
         {static_cast<QWidget *>(kana), static_cast<QWidget *>(control<CodeBox>(u"txtcDoctorNo"_s))}) {
        go(2, ListColumn::Name);
        box->setFocus();
        box == kana ? press(Qt::Key_Return) : press(Qt::Key_Down, Qt::ControlModifier);
        EXPECT_EQ(QApplication::focusWidget(), grid);
        EXPECT_EQ(cell(), std::pair(0, ListColumn::Name));
    }

    // Tab goes through what can be edited, on into the next row and into the next date while one is typed.
    go(0, ListColumn::Received);
    press(Qt::Key_Tab);
    EXPECT_EQ(cell(), std::pair(0, ListColumn::Reconsent));
    press(Qt::Key_Return);
    QTest::keyClicks(QApplication::focusWidget(), u"20261210"_s);
    press(Qt::Key_Tab);
    EXPECT_EQ(at(0, ListColumn::Reconsent), u"2026/12/10"_s);
    EXPECT_EQ(cell(), std::pair(0, ListColumn::NextStart));
    EXPECT_NE(QApplication::focusWidget(), grid);
    press(Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget(), grid) << "Esc leaves the cell";
    EXPECT_EQ(at(0, ListColumn::NextStart), u"2027/01/01"_s);
    go(1, ListColumn::Target);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(cell().first, 0);
    press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_NE(QApplication::focusWidget(), grid) << "Ctrl+Tab goes out";

    go(1, ListColumn::Number);
    for (const QString &first : {u"1"_s, u"3"_s, u"1"_s}) {
        QTest::keyClick(form.get(), Qt::Key_F9, Qt::ShiftModifier);
        EXPECT_EQ(at(0, ListColumn::Number), first);
        EXPECT_EQ(cell(), std::pair(0, ListColumn::Number));
    }
    QTest::keyClick(form.get(), Qt::Key_F11, Qt::ShiftModifier);
    EXPECT_FALSE(kana->isVisible());
    form.reset();
    open();
    EXPECT_FALSE(control<QLineEdit>(u"txt_SiboriKana"_s)->isVisible()) << "folded as it was left";
    EXPECT_TRUE(control<QLabel>(u"lblScope"_s)->text().contains(u"2026/11/01～2027/04/30"_s));
    const auto *from = control<DateBox>(u"imD_KikanFrom"_s);
    press(Qt::Key_K, Qt::AltModifier);
    EXPECT_TRUE(from->hasFocus()) << "a key of the filter brings it back";
    control<DateBox>(u"imD_KikanTo"_s)->setDate(QDate(2026, 10, 1));
    QTest::keyClick(form.get(), Qt::Key_F11, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), grid);
    QTest::keyClick(form.get(), Qt::Key_F4);
    EXPECT_TRUE(from->hasFocus()) << "and so does what is to be mended there";
}
