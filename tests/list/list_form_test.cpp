// The consent list's form, worked by keys and by its controls.

#include "tests/list/list_form_fixture.h"
#include "tests/support/wrapped_provider.h"
#include "widgets/code_box.h"
#include "widgets/date_box.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QTest>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

TEST_F(ListFormTest, AfterMidnightTodayIsToday) {
    open();
    clock.set({2026, 12, 20});
    form->findChild<QTimer *>(u"timToday"_s)->setInterval(0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return at(0, ListColumn::ConsentEnd).contains(u"あと11日"); }));
    go(0, ListColumn::Reconsent);
    type(u"19"_s);
    EXPECT_EQ(at(0, ListColumn::Reconsent), u"2026/12/19"_s);
}

TEST_F(ListFormTest, ASearchAsksTheServerAtMostThreeTimes) {
    int asked = 0;
    cT_ADODB far([&](const QString &text) {
        return std::make_unique<WrappedProvider>(makeProvider(text), [&](QString &) { return ++asked > 0; });
    });
    far.iInit(database.connectionString());
    frm同意書管理 window(environment);
    ASSERT_EQ(window.iInit(far, 0), 0) << window.sErrMsg().toStdString();
    window.show();
    QTest::qWait(0);
    asked = 0;
    QTest::keyClick(&window, Qt::Key_F4);
    QTest::qWait(50); // the letters of the rows follow when nothing else is to be done
    EXPECT_GE(asked, 1);
    EXPECT_LE(asked, 3);
}

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
    type(u"R8.11.20"_s);
    EXPECT_EQ(at(0, ListColumn::Reconsent), u"2026/11/20"_s);
    EXPECT_EQ(grid->currentIndex().row(), 1) << "on to the next answer";
    EXPECT_EQ(at(0, ListColumn::NextStart), u"2027/01/01"_s) << "the day after the running period";
    EXPECT_EQ(at(0, ListColumn::NextEnd), u"2027/05/31"_s);
    go(0, ListColumn::Remark);
    type(u"FAX"_s);
    EXPECT_TRUE(control<QLabel>(u"lblStatus"_s)->text().contains(u"1 行"_s));

    messages.answers = {Answer::Yes};
    QTest::keyClick(form.get(), Qt::Key_F5);
    ASSERT_FALSE(messages.shown.isEmpty());
    EXPECT_EQ(messages.shown.front().text, u"変更分を更新します。よろしいですか？\r\n変更 1 行"_s);
    EXPECT_EQ(stored(1, u"tSaiDouiDay"_s), u"2026/11/20"_s);
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

TEST_F(ListFormTest, DatesThatAreHardlyMeantAreAskedAboutOnceForAllRows) {
    open();
    for (const int row : {0, 2}) {
        go(row, ListColumn::Reconsent);
        type(row == 0 ? u"2226/11/20"_s : u"2026/05/20"_s);
        EXPECT_TRUE(messages.notes.back().contains(row == 0 ? u"約200年先"_s : u"今の同意日"_s));
    }
    go(1, ListColumn::Reconsent);
    type(u"2026/11/20"_s);
    messages.shown.clear();
    QTest::keyClick(form.get(), Qt::Key_F5);
    ASSERT_EQ(messages.shown.size(), 2);
    const QString asked = messages.shown.back().text;
    EXPECT_TRUE(asked.contains(u"1 利用者1　再同意日 2226/11/20"_s)) << asked.toStdString();
    EXPECT_TRUE(asked.contains(u"3 利用者3　再同意日 2026/05/20"_s)) << asked.toStdString();
    EXPECT_FALSE(asked.contains(u"利用者2"_s)) << asked.toStdString();
    EXPECT_EQ(stored(1, u"tSaiDouiDay"_s), u"NULL"_s) << "No is the answer to a key too many";
    messages.answers = {Answer::Yes, Answer::Yes};
    QTest::keyClick(form.get(), Qt::Key_F5);
    EXPECT_EQ(stored(1, u"tSaiDouiDay"_s), u"2226/11/20"_s) << "it may be meant";
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

TEST_F(ListFormTest, ADoctorMendedInThePickListIsShownAndEditsStay) {
    open();
    EXPECT_EQ(at(0, ListColumn::Doctor), u"阿部"_s);
    go(0, ListColumn::Remark);
    type(u"memo"_s);
    const auto next = [](const QString &name, const std::function<void(QWidget &)> &work) {
        QTimer::singleShot(0, [=] {
            QWidget *dialog = QApplication::activeModalWidget();
            ASSERT_TRUE(dialog && dialog->objectName() == name);
            work(*dialog);
            dialog->close();
        });
    };
    next(u"frm医師検索"_s, [&](QWidget &doctors) {
        next(u"frmInputIshi02"_s, [&](QWidget &doctor) {
            doctor.findChild<QLineEdit *>(u"cName"_s)->setText(u"新阿部"_s);
            messages.answers = {Answer::Yes, Answer::No};
            doctor.findChild<QPushButton *>(u"btnRegist"_s)->click();
        });
        doctors.findChild<QPushButton *>(u"cmdEdit"_s)->click();
    });
    control<QPushButton>(u"btnSelDoctor"_s)->click();
    EXPECT_EQ(at(0, ListColumn::Doctor), u"新阿部"_s);
    EXPECT_EQ(at(0, ListColumn::Remark), u"memo"_s);
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
    EXPECT_TRUE(messages.shown.back().text.contains(u"今日より"_s)) << "all that is said of it";
    messages.shown.clear();

    QTest::keyClick(form.get(), Qt::Key_F4, Qt::ShiftModifier);
    EXPECT_TRUE(messages.shown.isEmpty()) << "told before";
    QDir(programFolder.path()).rmdir(u"患者管理設定.ini"_s);
    QTest::keyClick(form.get(), Qt::Key_F4, Qt::ShiftModifier);
    go(0, ListColumn::Reconsent);
    type(u"2026/12/11"_s);
    EXPECT_EQ(at(0, ListColumn::NextStart), u"2027/01/01"_s);
    messages.answers = {Answer::No};
}

TEST_F(ListFormTest, AnOrderIsAllThatChoosingItChanges) {
    open();
    go(1, ListColumn::Target);
    QTest::keyClick(grid, Qt::Key_Space);
    grid->sortByColumn(int(ListColumn::Number), Qt::DescendingOrder);
    chooseOrder(Qt::Key_Home, Qt::Key_Escape);
    EXPECT_EQ(at(0, ListColumn::Number), u"3"_s) << "cancelled: the header's order stays";
    for (const Qt::Key order : {Qt::Key_Home, Qt::Key_End}) {
        chooseOrder(order, Qt::Key_Return);
        ASSERT_EQ(grid->model()->rowCount(), 3);
        EXPECT_EQ(at(0, ListColumn::Number), u"1"_s);
        EXPECT_TRUE(isTarget(1));
    }
}

TEST_F(ListFormTest, AJumpThatCannotBeMadeLeavesTheFilterAndOneOverEditsWaits) {
    database.run(u"UPDATE RIYOUSHA SET tDouiKaryoE1 = '2027/08/15' WHERE nIDNo = 2"_s);
    open();
    auto *patient = control<CodeBox>(u"txtcRiyoushaNo"_s);
    const auto *to = control<DateBox>(u"imD_KikanTo"_s);
    const auto jump = [&](const QString &number) {
        patient->setFocus();
        patient->selectAll();
        QTest::keyClicks(patient, number);
        QTest::keyClick(patient, Qt::Key_Return);
    };
    jump(u"3"_s);
    EXPECT_TRUE(messages.shown.back().text.startsWith(u"該当する利用者には要加療期間の入力がない"_s));
    EXPECT_EQ(patient->text(), u""_s);
    EXPECT_EQ(to->text(), u"2027/04/30"_s);
    go(0, ListColumn::Remark);
    type(u"x"_s);
    messages.shown.clear();
    jump(u"2"_s);
    EXPECT_EQ(to->text(), u"2027/08/31"_s);
    EXPECT_TRUE(messages.shown.isEmpty()) << "nothing is asked before the rows are to be read";
    EXPECT_EQ(grid->model()->rowCount(), 3);
    messages.answers = {Answer::No};
    QTest::keyClick(form.get(), Qt::Key_F4);
    EXPECT_EQ(grid->model()->rowCount(), 1);
}

TEST_F(ListFormTest, AWrongRowThatIsNarrowedAwayIsShown) {
    open();
    go(1, ListColumn::NextStart);
    type(u"20270201"_s);
    go(1, ListColumn::NextEnd);
    type(u"20270101"_s);
    control<QLineEdit>(u"txt_SiboriKana"_s)->setText(u"ヤマ"_s);
    ASSERT_EQ(grid->model()->rowCount(), 2);
    messages.answers = {Answer::Yes};
    QTest::keyClick(form.get(), Qt::Key_F5);
    EXPECT_TRUE(messages.shown.back().text.startsWith(u"2 利用者2"_s));
    EXPECT_EQ(at(grid->currentIndex().row(), ListColumn::Number), u"2"_s);
    EXPECT_EQ(grid->currentIndex().column(), int(ListColumn::NextEnd));
    messages.answers = {Answer::No};
}

TEST_F(ListFormTest, NothingIsMadeOfTheHistory) {
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET iNewestFlg = 0 WHERE nIDNo = 1"_s);
    open();
    const QStringList commands{u"cmdIrai"_s,     u"cmdPrint"_s, u"cmdMail"_s, u"CmdPrintDouisho"_s,
                               u"CmdPrintSet"_s, u"cmdGet"_s,   u"cmdBikou"_s};
    for (const bool history : {true, false}) {
        control<QRadioButton>(history ? u"optRireki_1"_s : u"optRireki_0"_s)->setChecked(true);
        QTest::keyClick(form.get(), Qt::Key_F4);
        for (const QString &command : commands)
            EXPECT_EQ(control<QPushButton>(command)->isEnabled(), !history) << command.toStdString();
        QTest::keyClick(form.get(), Qt::Key_F7);
        EXPECT_TRUE(isTarget(0)) << "the tick itself stays";
    }
}

TEST_F(ListFormTest, TheButtonOfARowOpensItsOwnMethods) {
    consent(3, u"2026/12/31"_s, u"iHenkeiFlg = 1, nHenkeiDouiDate = 20260601"_s);
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET cKobetuDouiIrai = '郵送' WHERE nIDNo = 1"_s);
    open();
    EXPECT_EQ(at(0, ListColumn::OwnMethods), u"郵送"_s);
    QStringList opened;
    const auto press = [&](int row, const std::function<void()> &how) {
        go(row, ListColumn::OwnMethods);
        QTimer::singleShot(0, [&] {
            if (QWidget *dialog = QApplication::activeModalWidget(); dialog && dialog != form.get()) {
                opened.append(dialog->findChild<QLineEdit *>(u"txtTgtRow"_s)->text());
                dialog->close();
            }
        });
        how();
        QApplication::processEvents();
    };
    press(0, [&] { QTest::keyClick(grid, Qt::Key_Space); });
    press(1, [&] { QTest::keyClick(grid, Qt::Key_Return); });
    press(2, [&] {
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                          grid->visualRect(grid->currentIndex()).center());
    });
    press(3, [&] { QTest::keyClick(grid, Qt::Key_Space); });
    EXPECT_EQ(opened, QStringList({u"1 利用者1"_s, u"2 利用者2"_s, u"3 利用者3"_s}))
        << "a deformity row has none";
}

TEST_F(ListFormTest, LettersKindsComeWhileTheListIsLookedAt) {
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET tDouiDay = NULL WHERE nIDNo = 3"_s);
    open();
    grid->sortByColumn(int(ListColumn::Letter), Qt::DescendingOrder);
    EXPECT_EQ(at(0, ListColumn::Number), u"3"_s) << "at once, to sort by them";
    for (const Qt::KeyboardModifier again : {Qt::NoModifier, Qt::ShiftModifier}) {
        QTest::keyClick(form.get(), Qt::Key_F4, again);
        EXPECT_EQ(at(0, ListColumn::Letter), u"新規利用者"_s) << "sorted as the header says";
    }
    grid->sortByColumn(int(ListColumn::Number), Qt::AscendingOrder);
    QTest::keyClick(form.get(), Qt::Key_F4);
    EXPECT_TRUE(QTest::qWaitFor([&] { return at(2, ListColumn::Letter) == u"新規利用者"_s; }));
    EXPECT_EQ(at(1, ListColumn::Letter), u"マッサージ継続"_s);

    QTest::keyClick(form.get(), Qt::Key_F4);
    database.run(u"ALTER TABLE RIYOUSHA_DOUI_REC RENAME TO AWAY"_s);
    QTest::qWait(300);
    control<QLineEdit>(u"txt_SiboriKana"_s)->setText(u"ヤマ"_s);
    QTest::qWait(300);
    ASSERT_EQ(messages.shown.size(), 1) << "told, and once";
    EXPECT_TRUE(messages.shown[0].text.startsWith(u"同意依頼書種別を読み込めませんでした。"_s));
}

TEST_F(ListFormTest, WhatCannotBeKeptIsSaid) {
    open();
    QDir(folders.data()).mkpath(u"患者管理設定.ini"_s);
    auto *holiday = form->findChild<QAction *>(u"mnHoliday"_s);
    holiday->trigger();
    EXPECT_TRUE(messages.shown.back().text.endsWith(u"\r\nmnHoliday_Click()でエラー"_s));
    EXPECT_FALSE(holiday->isChecked());

    const QTemporaryDir windows;
    const QString before =
        QFileInfo(QSettings(QSettings::IniFormat, QSettings::UserScope, u"x"_s).fileName()).path();
    QFile inTheWay(windows.filePath(u"douisho"_s));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, windows.path());
    form->reject();
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, before);
    EXPECT_TRUE(messages.shown.back().text.endsWith(u"\r\ncmdEnd()でエラー"_s));
    EXPECT_FALSE(form->isVisible()) << "and the screen closes all the same";
}

TEST_F(ListFormTest, TheSealProgramIsStartedOrMissed) {
    open();
    QTest::mouseClick(control<QPushButton>(u"cmdSeal"_s), Qt::LeftButton);
    ASSERT_EQ(processes.started.size(), 1);
    EXPECT_TRUE(processes.started[0].program.endsWith(u"Dovrinシール.exe"_s));
    processes.missing = QStringList{u"Dovrinシール.exe"_s};
    QTest::mouseClick(control<QPushButton>(u"cmdSeal"_s), Qt::LeftButton);
    EXPECT_EQ(messages.shown.back().text, u"実行ファイルが見つかりません。"_s);
}
