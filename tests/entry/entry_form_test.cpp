// The screens of history, entry and remark, worked by their controls.

#include "app/base/codepage932.h"
#include "consent/entry/entry_form.h"
#include "consent/entry/history_form.h"
#include "consent/entry/remark_form.h"
#include "tests/entry/entry_fixture.h"
#include "widgets/code_box.h"
#include "widgets/date_box.h"
#include "widgets/grid.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

class EntryFormTest : public EntryTest {
protected:
    template <class W> static W *in(QWidget &form, const QString &name) {
        W *found = form.findChild<W *>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }
    static void show(QDialog &form) {
        form.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    }
    // Types into a box as it stands and leaves it by Enter.
    static void type(QLineEdit *box, const QString &text) {
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, text);
        QTest::keyClick(box, Qt::Key_Return);
    }
    // A button clicks a moment after its key.
    static void press(QWidget &form, Qt::Key key) {
        QTest::keyClick(&form, key);
        ASSERT_TRUE(QTest::qWaitFor([&form] {
            const auto buttons = form.findChildren<QPushButton *>();
            return std::none_of(buttons.begin(), buttons.end(),
                                [](auto *button) { return button->isDown(); });
        }));
    }
    // Presses these buttons in the window of the row that was overtaken.
    void decideBy(const QStringList &buttons) {
        m_decides.disconnect();
        QObject::connect(&m_decides, &QTimer::timeout, [this, buttons] {
            QWidget *window = QApplication::activeModalWidget();
            if (!window || window->objectName() != u"frmKasanari")
                return;
            m_decides.stop();
            for (const QString &button : buttons)
                in<QPushButton>(*window, button)->click();
        });
        m_decides.start(0);
    }
    QString said() const { return messages.shown.isEmpty() ? QString() : messages.shown.back().text; }

private:
    QTimer m_decides;
};

TEST_F(EntryFormTest, AFirstConsentIsEnteredByKeyboard) {
    frmDouiRecordEdit form(environment);
    ASSERT_EQ(form.iInit(database.db, massagePatient), 0) << form.sErrMsg().toStdString();
    show(form);
    press(form, Qt::Key_F5);
    EXPECT_EQ(said(), u"施術内容が未設定です。"_s);
    EXPECT_EQ(messages.shown.back().title, u"登録データ：チェック"_s);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), u"iSejutuBui1"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    type(in<QLineEdit>(form, u"cDouiByoumei"_s), u"stroke"_s);
    EXPECT_EQ(in<QLineEdit>(form, u"cByoumeiM"_s)->text(), u"stroke"_s);

    auto *examined = in<DateBox>(form, u"tShinsatsuDay"_s);
    type(examined, u"2026/02/30"_s);
    press(form, Qt::Key_F5);
    EXPECT_EQ(QApplication::focusWidget(), examined) << "what is no date is not registered";
    type(examined, u"R8.11.17"_s);
    type(in<DateBox>(form, u"tDouiDay"_s), u"20261118"_s);
    EXPECT_EQ(in<DateBox>(form, u"idKaryouStart01"_s)->text(), u"2026/11/18"_s);
    EXPECT_EQ(in<DateBox>(form, u"tDouiKaryoE"_s)->text(), u"2027/05/31"_s);
    type(in<CodeBox>(form, u"txtIsiCd"_s), u"2"_s);
    EXPECT_EQ(in<QLineEdit>(form, u"cDouiIsiKikan"_s)->text(), u"馬場医院"_s);

    press(form, Qt::Key_F5);
    EXPECT_EQ(form.result(), QDialog::Accepted) << said().toStdString();
    EXPECT_EQ(stored(20261117, u"iNewestFlg, tDouiDay, tDouiKaryoE, cIsiCd, cDouiIsiName, iSejutuBui1,"
                               "iSejutuBui2, nDouiUpMonth, iReceptDisabledFlg"_s),
              u"1|2026/11/18|2027/05/31|2|馬場|1|0|6|0"_s);
}

TEST_F(EntryFormTest, ANewConsentLikeTheLastOneWantsItsDateAlone) {
    consent(20260520);
    frmDouiRecordEdit form(environment);
    ASSERT_EQ(form.iInit(database.db, massagePatient), 0) << form.sErrMsg().toStdString();
    show(form);
    const auto enter = [](const QString &text) {
        QTest::keyClicks(QApplication::focusWidget(), text);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    };
    enter({});
    EXPECT_EQ(QApplication::focusWidget()->objectName(), u"tDouiDay"_s);
    enter(u"2226/11/20"_s);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), u"btnRegist"_s);
    QTest::keyClick(&form, Qt::Key_Return);
    EXPECT_TRUE(said().contains(u"同意日 2226/11/20（月）は、今日より約200年先です。"_s))
        << said().toStdString();
    EXPECT_EQ(QApplication::focusWidget()->objectName(), u"tDouiDay"_s) << "nothing was registered";
    messages.shown.clear();
    enter(u"1120"_s);
    QTest::keyClick(&form, Qt::Key_Return);
    EXPECT_EQ(form.result(), QDialog::Accepted);
    EXPECT_EQ(messages.shown.size(), 1) << "that it is registered, and no question: " << said().toStdString();
    EXPECT_EQ(stored(20261120, u"tDouiKaryoS, tDouiKaryoE, cDouiByoumei"_s),
              stored(20261120, u"'2026/11/20', '2027/05/31'"_s) + u'|' + stored(20260520, u"cDouiByoumei"_s));
}

TEST_F(EntryFormTest, UnreadableSettingsAreSaidOnceAndNoPeriodIsProposed) {
    QDir(programFolder.path()).mkdir(u"患者管理設定.ini"_s);
    frmDouiRecordEdit form(environment);
    ASSERT_EQ(form.iInit(database.db, massagePatient), 0) << form.sErrMsg().toStdString();
    show(form);
    EXPECT_TRUE(said().endsWith(u"\r\ndataLoadRiyousha()でエラー"_s)) << said().toStdString();
    type(in<DateBox>(form, u"tDouiDay"_s), u"20261118"_s);
    EXPECT_EQ(in<DateBox>(form, u"idKaryouStart01"_s)->text(), QString()) << "it could be a holiday";
    type(in<DateBox>(form, u"idKaryouStart01"_s), u"20261118"_s);
    EXPECT_EQ(in<DateBox>(form, u"tDouiKaryoE"_s)->text(), QString());
    EXPECT_EQ(messages.shown.size(), 1);
}

TEST_F(EntryFormTest, LeavingWithChangesAsksAndLookingChangesNothing) {
    consent(20260520, u"cDouiIsiKikan = ''"_s, 8);
    frmDouiRecordEdit form(environment);
    ASSERT_EQ(form.iInit(database.db, ConsentRowKey{acupuncturePatient, 20260520, 0, 0}), 0);
    show(form);
    EXPECT_EQ(in<QTabWidget>(form, u"tabKind"_s)->currentWidget()->objectName(), u"pageHari"_s);
    for (int i = 0; i < 60; ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible()) << "nothing was changed, nothing is asked";
    EXPECT_TRUE(messages.shown.isEmpty()) << said().toStdString();

    show(form);
    QTest::mouseClick(in<QCheckBox>(form, u"iHKHariUmu"_s), Qt::LeftButton);
    EXPECT_EQ(in<DateBox>(form, u"tHKHariSday"_s)->text(), u"2026/05/20"_s);
    messages.answers = {Answer::No, Answer::Yes};
    press(form, Qt::Key_F12);
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(messages.shown.back().title, u"終了問合せ"_s);
    EXPECT_TRUE(said().endsWith(u"よろしいですか？"_s));
    press(form, Qt::Key_F12);
    EXPECT_FALSE(form.isVisible());
}

TEST_F(EntryFormTest, WhatIsBeingTypedIsNotLostByEsc) {
    consent(20260520);
    for (const auto &[box, typed] : {std::pair(u"tDouiDay"_s, u"20260521"_s),
                                     {u"tDouiDay"_s, u"2026"_s},
                                     {u"nDouiUpMonth"_s, u"9"_s},
                                     {u"txtIsiCd"_s, u"99"_s}}) {
        frmDouiRecordEdit form(environment);
        ASSERT_EQ(form.iInit(database.db, key(20260520)), 0);
        show(form);
        auto *input = in<QLineEdit>(form, box);
        input->setFocus();
        input->selectAll();
        QTest::keyClicks(input, typed);
        messages.answers = {Answer::No};
        messages.shown.clear();
        QTest::keyClick(&form, Qt::Key_Escape);
        EXPECT_TRUE(form.isVisible()) << box.toStdString();
        ASSERT_EQ(messages.shown.size(), 1) << box.toStdString();
        EXPECT_EQ(messages.shown.back().title, u"終了問合せ"_s);
    }
}

TEST_F(EntryFormTest, EnterLeadsThroughTheWholeForm) {
    consent(20260520);
    frmDouiRecordEdit form(environment);
    ASSERT_EQ(form.iInit(database.db, key(20260520)), 0);
    show(form);
    int strokes = 0;
    for (; QApplication::focusWidget()->objectName() != u"btnRegist"_s && strokes < 60; ++strokes)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_LT(strokes, 60) << QApplication::focusWidget()->objectName().toStdString();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(form.result(), QDialog::Accepted);
}

TEST_F(EntryFormTest, TheHistoryChangesErasesAndKeepsItsRow) {
    for (const int day : {20250512, 20251110, 20260520})
        consent(day);
    frmDouiRecord form(environment);
    EXPECT_EQ(form.g75_Connect(), u"NG"_s);
    EXPECT_EQ(form.iInit(massagePatient), -1);
    EXPECT_TRUE(form.sErrMsg().contains(u"adodb.ini"_s)) << form.sErrMsg().toStdString();
    QFile settings(programFolder.filePath(u"adodb.ini"_s));
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
    settings.write(encode932(u"[接続情報]\r\n接続情報="_s + database.connectionString()).bytes);
    settings.close();
    ASSERT_EQ(form.iInit(massagePatient), 0) << form.sErrMsg().toStdString();
    show(form);
    auto *grid = in<Grid>(form, u"ssDouiD"_s);
    EXPECT_EQ(grid->currentIndex().row(), 2) << "the newest";
    grid->goTo(1, 0);
    QTimer::singleShot(0, [] {
        QWidget *editor = QApplication::activeModalWidget();
        ASSERT_NE(editor, nullptr);
        type(in<DateBox>(*editor, u"tDouiDay"_s), u"20260601"_s);
        QTest::mouseClick(in<QPushButton>(*editor, u"btnRegist"_s), Qt::LeftButton);
    });
    QTest::mouseClick(in<QPushButton>(form, u"btnRegist"_s), Qt::LeftButton);
    EXPECT_EQ(grid->currentIndex().row(), 2) << "the moved row stays current";
    EXPECT_EQ(keys(), QStringList({u"20250512/0/0/0"_s, u"20260520/0/0/0"_s, u"20260601/0/0/1"_s}));

    messages.answers = {Answer::No, Answer::Yes};
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Delete);
    EXPECT_EQ(said(), u"同意履歴データの削除を行います。\r\n削除してもよろしいですか？\r\n"
                      "（削除した同意履歴データは完全に消去されます）"_s);
    EXPECT_EQ(grid->model()->rowCount(), 3);
    QTest::mouseClick(in<QPushButton>(form, u"btnDel"_s), Qt::LeftButton);
    EXPECT_EQ(keys(), QStringList({u"20250512/0/0/0"_s, u"20260520/0/0/1"_s}));
    EXPECT_TRUE(form.isChanged());
    database.run(u"DELETE FROM RIYOUSHA_DOUI_REC"_s);
    EXPECT_EQ(form.iDouiRecordDisp(), 0);
    QTest::mouseClick(in<QPushButton>(form, u"btnDel"_s), Qt::LeftButton);
    EXPECT_EQ(said(), u"削除可能なデータがありません。"_s);
}

TEST_F(EntryFormTest, AConsentThatAColleagueChangedIsMergedByColumns) {
    consent(20260520, u"cDouiByoumei = '腰痛症', iSejutuBui1 = 1"_s);
    frmDouiRecordEdit form(environment);
    ASSERT_EQ(form.iInit(database.db, key(20260520)), 0) << form.sErrMsg().toStdString();
    show(form);
    auto *typed = in<QLineEdit>(form, u"cByoumeiM"_s);
    typed->setFocus();
    typed->selectAll();
    QTest::keyClicks(typed, u"typed"_s);
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET cDouiByoumei = '脳梗塞', cItiranBikou = 'kept'"_s);
    decideBy({u"cmdSave"_s});
    messages.answers = {Answer::Yes};
    QTest::mouseClick(in<QPushButton>(form, u"btnRegist"_s), Qt::LeftButton);
    EXPECT_EQ(form.result(), QDialog::Accepted) << said().toStdString();
    EXPECT_EQ(stored(20260520, u"cByoumeiM"_s), u"typed"_s);
    EXPECT_EQ(stored(20260520, u"cDouiByoumei"_s), u"脳梗塞"_s);
    EXPECT_EQ(stored(20260520, u"cItiranBikou"_s), u"kept"_s);
}

TEST_F(EntryFormTest, TheRemarkIsSavedWithItsLineBreaks) {
    consent(20260520, u"cItiranBikou = 'FAX'"_s);
    frmEditBikouDoui form(environment);
    ASSERT_EQ(form.iInit(database.db, key(20260520)), 0);
    show(form);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTest::keyClicks(QApplication::focusWidget(), u"TEL"_s);
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET cItiranBikou = 'mail'"_s);
    decideBy({u"cmdEnd"_s});
    press(form, Qt::Key_F10);
    EXPECT_TRUE(form.isVisible() && form.isOvertaken()) << "a colleague was quicker";
    EXPECT_EQ(stored(20260520, u"cItiranBikou"_s), u"mail"_s);
    decideBy({u"cmdTyped"_s, u"cmdSave"_s});
    in<QPushButton>(form, u"btnKakutei"_s)->click();
    EXPECT_EQ(form.result(), QDialog::Accepted) << said().toStdString();
    EXPECT_EQ(stored(20260520, u"cItiranBikou"_s), u"FAX\r\nTEL"_s);
}

TEST_F(EntryFormTest, TheHistoryIsHandedToTheReportEngine) {
    consent(20260520, u"cDouiIsiName = '髙橋\"誠\"', cDouiIsiKikan = '中央病院'"_s);
    frmDouiRecord form(environment);
    ASSERT_EQ(form.iInit(database.db, massagePatient), 0);
    show(form);
    auto *print = in<QPushButton>(form, u"btnPrint"_s);
    QTest::mouseClick(print, Qt::LeftButton);
    EXPECT_EQ(messages.shown.front().title, u"印刷問合せ"_s);
    EXPECT_TRUE(said().startsWith(u"帳票の印刷に失敗しました。"_s) &&
                said().contains(u"利用者別同意履歴.wfd"_s));
    EXPECT_TRUE(processes.started.isEmpty());

    QFile layout(programFolder.filePath(u"利用者別同意履歴.wfd"_s));
    ASSERT_TRUE(layout.open(QIODevice::WriteOnly));
    QTest::mouseClick(print, Qt::LeftButton);
    ASSERT_EQ(processes.started.size(), 1) << said().toStdString();
    QFile data(programFolder.filePath(u"同意履歴データ.csv"_s));
    ASSERT_TRUE(data.open(QIODevice::ReadOnly));
    EXPECT_EQ(decode932(data.readAll()),
              u"\"利用者ID\",\"利用者名\",\"同意年月日\",\"加療期間開始\",\"加療期間終了\",\"同意医師名\","
              u"\"病院名\"\r\n"
              "7,\"山田\",\"2026/05/20\",\"2026/05/20\",\"2026/11/19\",\"髙橋＂誠＂\",\"中央病院\"\r\n"_s);
    messages.shown.clear();
    QTest::mouseClick(in<QPushButton>(form, u"btnDouiSyosikiSet"_s), Qt::LeftButton);
    EXPECT_EQ(messages.shown.value(0).title, u"保存確認"_s);
    EXPECT_EQ(messages.shown.value(1).text, u"データが取得できませんでした。"_s) << "no row of settings";
}
