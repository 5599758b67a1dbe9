// The runs and taking them back, from the list by keys.

#include "tests/list/list_form_fixture.h"
#include "widgets/date_box.h"

#include <QLabel>

class BatchesFormTest : public ListFormTest {
protected:
    BatchesFormTest() {
        database.run(
            u"UPDATE RIYOUSHA_DOUI_REC SET iGetFlg = 1, iReceptDisabledFlg = 0,"
            " tSaiDouiDay = '2026/11/20', tSaiDouiKaryoS = '2027/01/01', tSaiDouiKaryoE = '2027/05/31'"_s);
        before = rows();
        open();
        control<DateBox>(u"imD_KikanFrom"_s)->setDate(QDate(2026, 10, 1));
        control<DateBox>(u"imD_KikanTo"_s)->setDate(QDate(2027, 5, 31));
        QTest::keyClick(form.get(), Qt::Key_F4);
        messages.answers = {Answer::Yes};
        QTest::keyClick(form.get(), Qt::Key_F6);
        database.run(u"UPDATE DOUISHO_LOG_BATCH SET tTime = '2026/11/21 10:32:00'"_s);
        after = rows();
        messages.said();
    }
    QStringList rows() const {
        return database.rows(u"SELECT * FROM RIYOUSHA_DOUI_REC ORDER BY nIDNo, nDate"_s);
    }
    // The message of the renewal's wait took the keys along.
    static void activate(QWidget &window) {
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    // A button that is pressed by its key follows a moment later.
    static void press(QWidget *window, Qt::Key key) {
        for (QPushButton *button : window->findChildren<QPushButton *>())
            if (button->shortcut() == QKeySequence(key))
                button->click();
    }
    void undo() {
        activate(*form);
        grid->setFocus();
        QTest::keyClick(form.get(), Qt::Key_Z, Qt::ControlModifier);
    }
    // Works in 処理の一覧 until it is closed.
    template <class Work> void inBatches(Work work) {
        activate(*form);
        bool worked = false;
        QTimer::singleShot(0, [&] {
            worked = true;
            QWidget *window = QApplication::activeModalWidget();
            work(window, window->findChild<Grid *>(u"ssShori"_s));
            press(window, Qt::Key_F12);
        });
        QTest::keyClick(form.get(), Qt::Key_J, Qt::ControlModifier);
        ASSERT_TRUE(worked);
    }
    static QStringList shown(const Grid &batches) {
        QStringList lines;
        for (int row = 0; row < batches.model()->rowCount(); ++row) {
            QStringList cells;
            for (const int column : {0, 3, 4, 7})
                cells += batches.model()->index(row, column).data().toString();
            lines += cells.join(u'|');
        }
        return lines;
    }

    QStringList before, after;
};

TEST_F(BatchesFormTest, TheLastRunIsTakenBackByOneKeyWhereNothingUnsavedIsLeft) {
    ASSERT_EQ(after.size(), 6);
    go(0, ListColumn::Remark);
    activate(*form);
    type(u"x"_s);
    undo();
    EXPECT_EQ(messages.shown.back().text, u"元に戻しました：備考（1 利用者1）"_s);
    undo();
    const Message &question = messages.shown.back();
    EXPECT_EQ(question.text, u"処理番号1 同意更新（10:32、3件）を取り消します。\r\n"
                             "この処理でできた同意 3 件を消します。\r\n"
                             "この処理で変わった同意 3 件を、印とともに元の内容に戻します。\r\n\r\n"
                             "よろしいですか？"_s);
    EXPECT_EQ(question.defaultAnswer, Answer::No);
    EXPECT_EQ(rows(), after) << "not without a yes";

    messages.answers = {Answer::Yes};
    undo();
    EXPECT_EQ(rows(), before);
    EXPECT_EQ(messages.notes.back(), u"処理番号1 同意更新（10:32、3件）を取り消しました。"_s);
    EXPECT_EQ(at(0, ListColumn::Period), u"2026/06/01～2026/12/31"_s) << "the list shows it";
    undo();
    EXPECT_EQ(messages.notes.back(), u"元に戻す操作はありません。"_s);
    EXPECT_EQ(rows(), before);

    // A colleague's run, and one of yesterday, are taken back from their list alone.
    for (const QString &other : {u"cPcName = '隣のPC'"_s, u"tTime = '2026/11/20 10:32:00'"_s}) {
        database.run(u"UPDATE DOUISHO_LOG_BATCH SET nTakesBack = NULL, "_s + other);
        messages.said();
        undo();
        EXPECT_EQ(messages.said(), QStringList{u"元に戻す操作はありません。"_s});
    }
}

TEST_F(BatchesFormTest, RunsOfSomeDaysAreShownAndTakenBack) {
    database.run(
        u"INSERT INTO DOUISHO_LOG_BATCH SELECT 9, '2026/10/01 09:00:00', cPcName, 1, 1, '一覧印刷', 0, 1, 2,"
        " NULL FROM DOUISHO_LOG_BATCH"_s);
    messages.answers = {Answer::Yes, Answer::Yes};
    inBatches([&](QWidget *window, Grid *batches) {
        EXPECT_EQ(shown(*batches), QStringList{u"1|同意更新|3|"_s});
        press(window, Qt::Key_F3);
        database.run(u"UPDATE DOUISHO_LOG_BATCH SET tTime = '2026/11/21 11:00:00' WHERE nBatch > 9"_s);
        press(window, Qt::Key_F4);
        EXPECT_EQ(shown(*batches),
                  (QStringList{u"10|処理の取消|3|処理1 の取消"_s, u"1|同意更新|3|処理10 で取消"_s}));
        EXPECT_EQ(rows(), before);
        batches->goTo(1, 0);
        messages.said();
        press(window, Qt::Key_F3);
        EXPECT_TRUE(messages.said().value(0).startsWith(
            u"処理番号1 同意更新（10:32、3件）は、すでに取り消されています（処理番号10、11:00 "_s));
        batches->goTo(0, 0);
        press(window, Qt::Key_F3);
        EXPECT_EQ(rows(), after);

        window->findChild<DateBox *>(u"imD_From"_s)->setDate({2026, 10, 1});
        window->findChild<DateBox *>(u"imD_To"_s)->setDate({2026, 10, 1});
        EXPECT_EQ(shown(*batches), QStringList{u"9|一覧印刷||"_s});
        press(window, Qt::Key_F3);
        EXPECT_TRUE(messages.said().contains(
            u"処理番号9 一覧印刷（2026/10/01 09:00、0件）では同意が変わっていないため、取り消すものがありません。"_s));
    });
    ASSERT_EQ(at(0, ListColumn::Period), u"2027/01/01～2027/05/31"_s) << "the list follows";
}
