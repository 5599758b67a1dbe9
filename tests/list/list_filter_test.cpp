// Which rows the list's window shows: they follow the filter, lapsed ones are not forgotten, states count
// them.

#include "tests/list/list_form_fixture.h"
#include "widgets/code_box.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalSpy>

class ListFilterTest : public ListFormTest {
protected:
    /// Patients 4 and 5 lapsed before the range, 6 within it; 2 and 3 have been asked, 3 has answered.
    ListFilterTest() {
        for (const int number : {4, 5, 6})
            patient(number, u"利用者%1"_s.arg(number), u"ソト"_s);
        consent(4, u"2026/10/15"_s);
        consent(5, u"2026/10/31"_s, u"iOutputFlg = 1, iGetFlg = 1"_s);
        consent(6, u"2026/11/20"_s, u"iRenrakuFlg = 1"_s);
        database.run(u"UPDATE RIYOUSHA SET iSejutsuKubun = 1 WHERE nIDNo IN (3, 5);"
                     "UPDATE RIYOUSHA_DOUI_REC SET iOutputFlg = 1 WHERE nIDNo IN (2, 3);"
                     "UPDATE RIYOUSHA_DOUI_REC SET iGetFlg = 1 WHERE nIDNo = 3"_s);
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    QStringList numbers() const {
        QStringList numbers;
        for (int row = 0; row < grid->model()->rowCount(); ++row)
            numbers += at(row, ListColumn::Number);
        return numbers;
    }
    /// The tabs from 期限切れ on.
    QStringList counts() const {
        QStringList counts;
        for (int tab = 1; tab <= 7; ++tab)
            counts += form->findChild<QAction *>(u"mnState%1"_s.arg(tab))->text().section(u' ', -1);
        return counts;
    }
    int ticked() const { return int(static_cast<ConsentListModel *>(grid->model())->targetKeys().size()); }
    QString stale() {
        return control<QLabel>(u"lblStale"_s)->isVisible() ? control<QLabel>(u"lblStale"_s)->text()
                                                           : QString();
    }
    bool shows(const QStringList &expected) {
        return QTest::qWaitFor([&] { return numbers() == expected; });
    }
};

TEST_F(ListFilterTest, ABurstOfChoicesIsOneQueryAndTheFocusStays) {
    open();
    const QSignalSpy reads(static_cast<ConsentListModel *>(grid->model()), &ConsentListModel::loaded);
    auto *remark = control<QLineEdit>(u"txtIraiHouhou"_s);
    remark->setFocus();
    control<QRadioButton>(u"optSejutuKbn_1"_s)->setChecked(true);
    control<QRadioButton>(u"optTejun_1"_s)->setChecked(true);
    EXPECT_TRUE(shows({u"1"_s, u"2"_s, u"6"_s}));
    EXPECT_EQ(reads.count(), 1);
    control<QRadioButton>(u"optSejutuKbn_0"_s)->setChecked(true);
    go(0, ListColumn::Remark);
    QTest::keyClicks(grid, u"x"_s);
    QTest::qWait(600);
    EXPECT_EQ(QApplication::focusWidget()->property("text"), u"x"_s) << "what is being typed stays";
    press(Qt::Key_Escape);
    EXPECT_TRUE(shows({u"1"_s, u"2"_s, u"3"_s, u"6"_s}));
    remark->setFocus();
    QTest::keyClicks(remark, u"tel"_s);
    EXPECT_TRUE(shows({}));
    EXPECT_EQ(reads.count(), 3);
    EXPECT_EQ(QApplication::focusWidget(), remark);
    control<QRadioButton>(u"optTejun_0"_s)->setChecked(true);
    control<QRadioButton>(u"optTejun_1"_s)->setChecked(true);
    QTest::qWait(300);
    EXPECT_EQ(reads.count(), 3) << "the same question as before";

    database.run(u"ALTER TABLE SOUDAN RENAME TO AWAY"_s);
    remark->clear();
    EXPECT_TRUE(QTest::qWaitFor([&] { return stale().startsWith(u"検索できませんでした。"_s); }));
    QTest::qWait(600);
    EXPECT_EQ(messages.shown.size(), 1) << "told once";
}

TEST_F(ListFilterTest, RowsOfAnotherQuestionAreNeitherTickedNorPrinted) {
    open();
    go(0, ListColumn::Remark);
    type(u"x"_s);
    control<QRadioButton>(u"optSejutuKbn_2"_s)->setChecked(true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return stale().contains(u"F4 で検索します"_s); }));
    EXPECT_TRUE(messages.shown.isEmpty());
    ASSERT_EQ(numbers().size(), 4) << "the rows with the edit stay";
    for (const QString &command : {u"cmdAllCheck"_s, u"CmdPrintDouisho"_s, u"cmdCsv"_s, u"cmdGet"_s}) {
        messages.shown.clear();
        messages.answers = {Answer::Cancel};
        control<QPushButton>(command)->click();
        ASSERT_EQ(messages.shown.size(), 1) << command.toStdString();
        EXPECT_TRUE(messages.shown[0].text.startsWith(u"変更されています。保存しますか？"_s));
        EXPECT_EQ(ticked(), 0);
    }
    messages.answers = {Answer::No};
    press(Qt::Key_F7);
    EXPECT_EQ(numbers(), QStringList{u"3"_s}) << "read by the filter first";
    EXPECT_EQ(ticked(), 1);
    EXPECT_EQ(stale(), QString());

    // A code that is being typed is a question too, and a wrong one is no reason to take the old rows.
    auto *doctor = control<CodeBox>(u"txtcDoctorNo"_s);
    doctor->setFocus();
    QTest::keyClicks(doctor, u"777"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return stale().startsWith(u"条件を入力中です。"_s); }));
    press(Qt::Key_F7);
    EXPECT_EQ(ticked(), 1) << "not taken away either";
    doctor->clear();
    QTest::keyClicks(doctor, u"1"_s);
    press(Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return stale().isEmpty(); }));
}

TEST_F(ListFilterTest, WhatHasLapsedOutsideTheRangeIsCountedAndShownByAKey) {
    consent(1, u"2026/11/30"_s, u"nDate = 20260602"_s);
    open();
    const auto *foot = control<QLabel>(u"lblKigengai"_s);
    EXPECT_EQ(numbers().size(), 5);
    EXPECT_TRUE(foot->text().contains(u"対象期間外の期限切れ 2 件"_s));
    press(Qt::Key_F7);
    EXPECT_EQ(ticked(), 5) << "hidden rows are not ticked";
    control<QLineEdit>(u"txt_SiboriKana"_s)->setFocus();
    press(Qt::Key_2, Qt::AltModifier);
    EXPECT_EQ(numbers(), (QStringList{u"4"_s, u"5"_s, u"6"_s}));
    EXPECT_EQ(foot->text(), QString());

    // A range that begins later passes over the days before it that have not gone by.
    press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(numbers().size(), 3) << "the range, not what has lapsed whatever the range";
    EXPECT_EQ(static_cast<ConsentListModel *>(grid->model())->targetRecords().size(), 3U)
        << "ticks stay on rows that are still there";
    EXPECT_TRUE(foot->text().contains(u"対象期間外の期限切れ 3 件"_s));
    control<QRadioButton>(u"optSejutuKbn_2"_s)->setChecked(true);
    EXPECT_TRUE(shows({u"3"_s}));
    EXPECT_TRUE(foot->text().contains(u"対象期間外の期限切れ 1 件"_s)) << "the other filters hold for them";
    control<QRadioButton>(u"optRireki_1"_s)->setChecked(true);
    EXPECT_TRUE(shows({}));
    EXPECT_EQ(foot->text(), QString());
}

TEST_F(ListFilterTest, StatesCountTheRowsWithTheirEditsAndLimitWhatIsPrinted) {
    consent(3, u"2026/12/31"_s,
            u"iHenkeiFlg = 1, nHenkeiDouiDate = 20260601, iOutputFlgHenkei = 1, iGetFlgHenkei = 1"_s);
    open();
    press(Qt::Key_5, Qt::AltModifier);
    press(Qt::Key_1, Qt::AltModifier);
    EXPECT_EQ(at(grid->currentIndex().row(), ListColumn::Number), u"2"_s) << "the cursor keeps its row";
    EXPECT_EQ(counts(), u"5 3 0 2 1 2 3"_s.split(u' '));
    press(Qt::Key_4, Qt::AltModifier);
    EXPECT_EQ(numbers(), (QStringList{u"1"_s, u"6"_s}));
    go(0, ListColumn::Requested);
    press(Qt::Key_Space);
    EXPECT_EQ(counts(), u"5 3 0 1 2 2 3"_s.split(u' '));
    EXPECT_EQ(numbers().size(), 2) << "nothing jumps away under the hand";
    press(Qt::Key_4, Qt::AltModifier);
    EXPECT_EQ(numbers(), QStringList{u"6"_s});
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(counts(), u"5 3 0 2 1 2 3"_s.split(u' '));
    EXPECT_EQ(messages.notes.back(), u"元に戻しました：依頼（1 利用者1）　表示していない行です。"_s);
    press(Qt::Key_Y, Qt::ControlModifier);
    press(Qt::Key_F7);
    messages.answers = {Answer::Yes};
    QString rows;
    QTimer::singleShot(0, form.get(), [&] {
        QWidget *screen = QApplication::activeModalWidget();
        rows = screen->findChild<QLabel *>(u"lblState"_s)->text();
        screen->close();
    });
    control<QPushButton>(u"CmdDouishoList"_s)->click();
    EXPECT_EQ(rows, u"対象 1 件"_s);
    control<QLineEdit>(u"txt_SiboriKana"_s)->setText(u"スズキ"_s);
    EXPECT_EQ(counts(), u"1 0 0 0 1 0 1"_s.split(u' ')) << "of what narrowing leaves";
    control<QLineEdit>(u"txt_SiboriKana"_s)->clear();
    form->findChild<QAction *>(u"mnState2"_s)->trigger();
    go(0, ListColumn::Received);
    QTest::keyClick(grid, Qt::Key_Space);
    form->findChild<QAction *>(u"mnState1"_s)->trigger();
    EXPECT_EQ(static_cast<ConsentListModel *>(grid->model())->receivedOutOfSight(), 1)
        << "what was entered is not forgotten where it is not shown";
}

TEST_F(ListFilterTest, RangeAndStateAreKeptForTheUserAndClearingGivesTheFirstOnes) {
    consent(1, u"2026/11/30"_s, u"nDate = 20260602"_s);
    open();
    press(Qt::Key_4, Qt::ControlModifier);
    EXPECT_EQ(numbers(), (QStringList{u"6"_s, u"1"_s, u"1"_s, u"2"_s, u"3"_s})) << "soonest first";
    press(Qt::Key_5, Qt::AltModifier);
    form->reject();
    open();
    EXPECT_EQ(control<QLineEdit>(u"imD_KikanTo"_s)->text(), u"2026/12/31"_s);
    EXPECT_EQ(numbers(), QStringList{u"2"_s});
    control<QPushButton>(u"but_Clear"_s)->click();
    EXPECT_EQ(control<QLineEdit>(u"imD_KikanTo"_s)->text(), u"2027/04/30"_s);
    EXPECT_EQ(numbers().front(), u"1"_s) << "and the practice's order";
    form->reject();
    open();
    EXPECT_EQ(numbers().size(), 5);
}
