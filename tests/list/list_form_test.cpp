// The consent list's form, worked by keys and by its controls.

#include "consent/list/list_grid.h"
#include "consent/screens/consent_list_form.h"
#include "tests/list/list_fixture.h"
#include "widgets/code_box.h"
#include "widgets/date_box.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

class ListFormTest : public ListTest {
protected:
    ListFormTest() {
        for (const int number : {1, 2, 3}) {
            patient(number, u"利用者%1"_s.arg(number),
                    QStringList{u"ﾔﾏﾀﾞ"_s, u"スズキ"_s, u"やまもと"_s}[number - 1]);
            consent(number, u"2026/12/31"_s);
        }
    }
    // Opened as the launcher does, but not waiting.
    void open() {
        form = std::make_unique<frm同意書管理>(environment);
        ASSERT_EQ(form->iInit(database.db, 0), 0) << form->sErrMsg().toStdString();
        form->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
        grid = form->findChild<ListGrid *>(u"ssDouiD"_s);
    }
    template <class W> W *control(const QString &name) {
        W *found = form->findChild<W *>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }
    QString at(int row, ListColumn column) const {
        return grid->model()->index(row, int(column)).data().toString();
    }
    void go(int row, ListColumn column) {
        grid->setFocus();
        grid->goTo(row, int(column));
    }
    // Types into the current cell and leaves its editor by Enter.
    void type(const QString &text) {
        QTest::keyClicks(grid, text.left(1));
        QWidget *editor = QApplication::focusWidget();
        QTest::keyClicks(editor, text.mid(1));
        QTest::keyClick(editor, Qt::Key_Return);
        // The editor hands its value over after the key has been dealt with.
        QApplication::processEvents();
    }
    QString stored(int number, const QString &column) const {
        return database.value(u"SELECT %1 FROM RIYOUSHA_DOUI_REC WHERE nIDNo = %2"_s.arg(column).arg(number));
    }

    std::unique_ptr<frm同意書管理> form;
    ListGrid *grid = nullptr;
};

TEST_F(ListFormTest, FindsTicksEditsAndSavesByKeyboard) {
    open();
    EXPECT_EQ(control<DateBox>(u"imD_KikanFrom"_s)->text(), u"2026/11/01"_s);
    EXPECT_EQ(control<DateBox>(u"imD_KikanTo"_s)->text(), u"2027/04/30"_s);
    ASSERT_EQ(grid->model()->rowCount(), 3);
    control<DateBox>(u"imD_KikanFrom"_s)->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), u"imD_KikanTo"_s) << "Enter moves on";

    go(0, ListColumn::Received);
    QTest::keyClick(grid, Qt::Key_Space);
    go(0, ListColumn::Reconsent);
    type(u"R8.12.10"_s);
    EXPECT_EQ(at(0, ListColumn::Reconsent), u"2026/12/10"_s);
    EXPECT_EQ(grid->currentIndex().row(), 1) << "on to the next answer";
    EXPECT_EQ(at(0, ListColumn::NextStart), u"2027/01/01"_s) << "the day after the running period";
    EXPECT_EQ(at(0, ListColumn::NextEnd), u"2027/05/31"_s);
    go(0, ListColumn::Remark);
    type(u"FAX"_s);
    EXPECT_TRUE(control<QLabel>(u"lblStatus"_s)->text().contains(u"1 行"_s));

    messages.answers = {Answer::Yes};
    QTest::keyClick(form.get(), Qt::Key_F5);
    ASSERT_FALSE(messages.shown.isEmpty());
    EXPECT_EQ(messages.shown.front().text, u"変更分を更新します。よろしいですか？"_s);
    EXPECT_EQ(stored(1, u"tSaiDouiDay"_s), u"2026/12/10"_s);
    EXPECT_EQ(stored(1, u"cItiranBikou"_s), u"FAX"_s);
    EXPECT_EQ(stored(1, u"iGetFlg"_s), u"1"_s);
}

TEST_F(ListFormTest, WrongEntriesAreSaidAndNothingIsLost) {
    open();
    go(1, ListColumn::Reconsent);
    QTest::keyClicks(grid, u"2"_s);
    QWidget *editor = QApplication::focusWidget();
    QTest::keyClicks(editor, u"026/02/30"_s);
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), editor) << "an impossible date is not left";
    for (const Qt::Key command : {Qt::Key_F5, Qt::Key_F12}) {
        QTest::keyClick(form.get(), command);
        EXPECT_TRUE(form->isVisible());
        EXPECT_EQ(QApplication::focusWidget(), editor) << "what is typed stays, to be mended";
    }
    EXPECT_EQ(messages.shown.size(), 2);
    messages.shown.clear();
    QTest::keyClick(editor, Qt::Key_Escape);
    EXPECT_EQ(at(1, ListColumn::Reconsent), u""_s);

    auto *to = control<DateBox>(u"imD_KikanTo"_s);
    to->setFocus();
    to->selectAll();
    QTest::keyClicks(to, u"20261031"_s);
    QTest::keyClick(form.get(), Qt::Key_F4);
    ASSERT_EQ(messages.shown.size(), 1);
    EXPECT_TRUE(messages.shown.back().text.contains(u"対象期間を設定しなおしてください。"_s));
    EXPECT_EQ(grid->model()->rowCount(), 3) << "the list stays";

    auto *doctor = control<CodeBox>(u"txtcDoctorNo"_s);
    doctor->setFocus();
    QTest::keyClicks(doctor, u"777"_s);
    QTest::keyClick(doctor, Qt::Key_Return);
    EXPECT_EQ(messages.shown.size(), 2);
    EXPECT_EQ(QApplication::focusWidget(), doctor);
}

TEST_F(ListFormTest, FiltersStayUntilCleared) {
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET cIsiCd = '2' WHERE nIDNo = 2"_s);
    open();
    auto *doctor = control<CodeBox>(u"txtcDoctorNo"_s);
    doctor->setFocus();
    QTest::keyClicks(doctor, u"2"_s);
    QTest::keyClick(doctor, Qt::Key_Return);
    EXPECT_EQ(control<QLineEdit>(u"txtcDoctorName"_s)->text(), u"馬場"_s);
    QTest::keyClick(form.get(), Qt::Key_F4);
    EXPECT_EQ(grid->model()->rowCount(), 1);
    go(0, ListColumn::Remark);
    type(u"x"_s);
    messages.answers = {Answer::Yes};
    QTest::keyClick(form.get(), Qt::Key_F5);
    QTest::keyClick(form.get(), Qt::Key_F4, Qt::ShiftModifier);
    EXPECT_EQ(doctor->text(), u"2"_s);
    EXPECT_EQ(grid->model()->rowCount(), 1);

    QTest::mouseClick(control<QPushButton>(u"but_Clear"_s), Qt::LeftButton);
    EXPECT_EQ(doctor->text(), u""_s);
    EXPECT_EQ(grid->model()->rowCount(), 3);

    auto *kana = control<QLineEdit>(u"txt_SiboriKana"_s);
    kana->setFocus();
    QTest::keyClicks(kana, u"yama"_s);
    EXPECT_EQ(grid->model()->rowCount(), 0);
    kana->clear();
    kana->setText(u"ヤマ"_s);
    EXPECT_EQ(grid->model()->rowCount(), 2);
    EXPECT_TRUE(control<QLabel>(u"lblCount"_s)->text().contains(u"2 / 3 件"_s));
}

TEST_F(ListFormTest, LeavingWithChangesAsks) {
    struct Case {
        Answer answer;
        bool leaves;
        QString stored;
    };
    for (const Case &c : {Case{Answer::Cancel, false, u"NULL"_s}, Case{Answer::No, true, u"NULL"_s},
                          Case{Answer::Yes, true, u"x"_s}}) {
        open();
        go(0, ListColumn::Remark);
        // Typed, but the editor is still open: it counts.
        QTest::keyClicks(grid, u"x"_s);
        messages.shown.clear();
        messages.answers = {c.answer};
        form->reject();
        ASSERT_EQ(messages.shown.size(), 1);
        EXPECT_EQ(messages.shown.back().text,
                  u"変更されています。保存しますか？\r\nいいえを選んだ場合、変更分はキャンセルされます。"_s);
        EXPECT_EQ(form->isVisible(), !c.leaves);
        EXPECT_EQ(stored(1, u"cItiranBikou"_s), c.stored);
    }
}

TEST_F(ListFormTest, OrdersAndLinksAreKeptForTheNextRun) {
    open();
    QTimer::singleShot(0, [] {
        QWidget *dialog = QApplication::activeModalWidget();
        QTest::keyClick(dialog->findChild<QWidget *>(u"lstOrder"_s), Qt::Key_End);
        QTest::keyClick(dialog->findChild<QWidget *>(u"lstPatientOrder"_s), Qt::Key_End);
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    QTest::mouseClick(control<QPushButton>(u"cmdDspOrder"_s), Qt::LeftButton);
    EXPECT_EQ(at(0, ListColumn::Number), u"2"_s) << "patients by kana";
    form->findChild<QAction *>(u"mnHoliday"_s)->trigger();
    grid->setColumnWidth(int(ListColumn::Remark), 333);
    grid->sortByColumn(int(ListColumn::Number), Qt::AscendingOrder);
    form->reject();
    open();
    EXPECT_EQ(grid->columnWidth(int(ListColumn::Remark)), 333);
    EXPECT_EQ(at(0, ListColumn::Number), u"2"_s);
    EXPECT_TRUE(form->findChild<QAction *>(u"mnHoliday"_s)->isChecked());
    EXPECT_FALSE(form->findChild<QAction *>(u"mnSameDouiDay"_s)->isChecked());
}

TEST_F(ListFormTest, UnreadableSettingsAreSaidOnceAndNoPeriodIsProposed) {
    QDir(programFolder.path()).mkdir(u"患者管理設定.ini"_s);
    open();
    const QString path = programFolder.filePath(u"患者管理設定.ini"_s);
    ASSERT_EQ(messages.shown.size(), 1);
    EXPECT_EQ(messages.shown[0].text,
              u"指定されたIni（%1）ファイルが見つかりません。\r\ndataLoadRiyousha()でエラー"_s.arg(path));
    go(0, ListColumn::Reconsent);
    type(u"2026/12/10"_s);
    EXPECT_EQ(at(0, ListColumn::Reconsent), u"2026/12/10"_s);
    EXPECT_EQ(at(0, ListColumn::NextStart), QString()) << "it could be a holiday";
    EXPECT_EQ(messages.shown.size(), 1);
    messages.answers = {Answer::No};
}

TEST_F(ListFormTest, CommandsOfLaterScreensAreGreyedAndExplained) {
    open();
    const auto *later = control<QPushButton>(u"cmdKeika"_s);
    EXPECT_FALSE(later->isEnabled());
    EXPECT_TRUE(later->toolTip().contains(u"準備中"_s));
    QTest::mouseClick(control<QPushButton>(u"cmdSeal"_s), Qt::LeftButton);
    ASSERT_EQ(processes.started.size(), 1);
    EXPECT_TRUE(processes.started[0].program.endsWith(u"Dovrinシール.exe"_s));
    processes.missing = QStringList{u"Dovrinシール.exe"_s};
    QTest::mouseClick(control<QPushButton>(u"cmdSeal"_s), Qt::LeftButton);
    EXPECT_EQ(messages.shown.back().text, u"実行ファイルが見つかりません。"_s);
}

TEST_F(ListFormTest, RenewsWhatWasReceivedAndTellsWhatWasNot) {
    // Row 1 has its answer, row 2 no date, row 3 a date but no period; the edit on row 1 is saved first.
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET iGetFlg = 1, iReceptDisabledFlg = 0;"
                 "UPDATE RIYOUSHA_DOUI_REC SET tSaiDouiDay = '2026/11/20' WHERE nIDNo = 3"_s);
    open();
    QTest::keyClick(form.get(), Qt::Key_F6);
    ASSERT_EQ(messages.shown.size(), 1);
    EXPECT_EQ(messages.shown[0].text, u"選択された同意書の更新を行うことはできません。\r\n"
                                      "更新基準日(11日)を過ぎてから更新可能となります。"_s);
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Critical);

    control<DateBox>(u"imD_KikanFrom"_s)->setDate(QDate(2026, 10, 1));
    QTest::keyClick(form.get(), Qt::Key_F4);
    go(0, ListColumn::Reconsent);
    type(u"20261118"_s);
    messages.shown.clear();
    messages.answers = {Answer::No};
    QTest::keyClick(form.get(), Qt::Key_F6);
    ASSERT_EQ(messages.shown.size(), 1);
    EXPECT_EQ(messages.shown[0].text, u"同意受領分の更新を行います。よろしいですか？"_s);
    EXPECT_EQ(messages.shown[0].title, u"同意更新の確認"_s);
    EXPECT_EQ(stored(1, u"tSaiDouiDay"_s), u"NULL"_s);

    messages.shown.clear();
    messages.answers = {Answer::Yes};
    go(1, ListColumn::Remark);
    QTest::keyClick(form.get(), Qt::Key_F6);
    EXPECT_EQ(at(grid->currentIndex().row(), ListColumn::Number), u"2"_s) << "the cursor keeps its row";
    ASSERT_EQ(messages.shown.size(), 2);
    const QString text = messages.shown[1].text;
    EXPECT_TRUE(text.startsWith(u"更新が終了しました。"_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(u"更新した同意：1 件"_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(u"2 利用者2　再同意日が入力されていません。"_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(u"3 利用者3　要加療期間が入力されていません。"_s)) << text.toStdString();
    EXPECT_EQ(database.rows(u"SELECT nDate, iNewestFlg, tDouiDay, tDouiKaryoS, tDouiKaryoE, iGetFlg"
                            " FROM RIYOUSHA_DOUI_REC WHERE nIDNo = 1 ORDER BY nDate"_s),
              QStringList({u"20260601|0|2026/06/01|2026/06/01|2026/12/31|1"_s,
                           u"20261118|1|2026/11/18|2027/01/01|2027/05/31|0"_s}));
    EXPECT_EQ(grid->model()->rowCount(), 2) << "read again: the renewed row ends outside the range";
}
