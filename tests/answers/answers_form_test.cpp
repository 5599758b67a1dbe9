// The pile of answers, worked by keys: what is written, what is said in the line, and that nobody's work is
// lost.

#include "app/base/settings.h"
#include "consent/answers/answers_form.h"
#include "consent/record/grid_save.h"
#include "tests/list/list_fixture.h"
#include "widgets/date_box.h"
#include "widgets/grid.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

class AnswersFormTest : public ListTest {
protected:
    AnswersFormTest() {
        patient(1, u"山田 太郎"_s, u"ﾔﾏﾀﾞ ﾀﾛｳ"_s);
        patient(2, u"佐藤 花子"_s, u"サトウ ハナコ"_s);
        patient(3, u"山本 次郎"_s, u"ヤマモト ジロウ"_s);
        patient(4, u"田中 去子"_s, u"ﾀﾅｶ ｻﾘｺ"_s, u"tExpireDay = '2026/10/01'"_s);
        patient(5, u"林 三郎"_s, u"ﾊﾔｼ ｻﾌﾞﾛｳ"_s);
        patient(6, u"森 外"_s, u"ﾓﾘ ｿﾄ"_s, u"iTenki = 3"_s);
        consent(1, u"2026/11/30"_s);
        consent(2, u"2026/11/30"_s, u"iOutputFlg = 1"_s);
        consent(2, u"2026/11/30"_s,
                u"iHenkeiFlg = 1, nHenkeiDouiDate = 20260601, iOutputFlgHenkei = 1, nDouiUpMonth = 1"_s);
        consent(3, u"2026/10/31"_s, u"iOutputFlg = 1"_s);
        consent(4, u"2026/11/30"_s,
                u"iGetFlg = 1, tSaiDouiDay = '2026/11/18', tSaiDouiKaryoS = '2026/12/01',"
                " tSaiDouiKaryoE = '2027/05/31'"_s);
        consent(6, u"2026/11/30"_s);
    }
    void open() {
        form = std::make_unique<AnswersForm>(environment, database.db);
        ASSERT_EQ(form->iInit(), 0) << form->sErrMsg().toStdString();
        form->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
    }
    // Every key goes where the focus is, as a user's does; a button clicks a moment after its key.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        // Without a window manager nobody gives the keys back when another window has closed.
        if (form->isVisible() && !QApplication::focusWidget()) {
            form->activateWindow();
            ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::focusWidget() != nullptr; }));
        }
        const auto buttons = form->findChildren<QPushButton *>();
        EXPECT_TRUE(QTest::qWaitFor([&] { return std::ranges::none_of(buttons, &QPushButton::isDown); }));
    }
    void type(const QString &text) {
        for (const QChar sign : text)
            QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown, sign, {});
        press(Qt::Key_Return);
    }
    template <class W> W *in(const QString &name) const { return form->findChild<W *>(name); }
    QString said() const { return in<QLabel>(u"lblSaid"_s)->text(); }
    QString focus() const { return QApplication::focusWidget()->objectName(); }
    QString stored(int number, bool deformity = false) const {
        return database.value(
            (deformity ? u"SELECT iGetFlgHenkei, tDouiDayTempHenkei, tDouiKaryoSTempHenkei,"
                         " tDouiKaryoETempHenkei"_s
                       : u"SELECT iGetFlg, tSaiDouiDay, tSaiDouiKaryoS, tSaiDouiKaryoE"_s) +
            u" FROM RIYOUSHA_DOUI_REC WHERE nIDNo = %1 AND iHenkeiFlg = %2"_s.arg(number).arg(
                int(deformity)));
    }
    QString logged(int row, AnswerLogModel::Column column) const {
        return in<Grid>(u"ssHenji"_s)->model()->index(row, column).data().toString();
    }

    std::unique_ptr<AnswersForm> form;
};

TEST_F(AnswersFormTest, APileIsEnteredAndAnAnswerTakenBackByKeys) {
    open();
    type(u"ﾔﾏ"_s); // the awaited one, not the first by kana
    EXPECT_EQ(in<QLineEdit>(u"txtRiyousha"_s)->text(), u"3 山本 次郎"_s);
    EXPECT_TRUE(said().contains(u"2026/10/31 に終了"_s)) << said().toStdString();
    type(u"1120"_s);
    EXPECT_EQ(stored(3), u"1|2026/11/20|2026/11/20|2027/05/31"_s) << said().toStdString();
    EXPECT_EQ(focus(), u"txtRiyousha"_s);

    type(u"1"_s);
    press(Qt::Key_Return); // the pile's date
    EXPECT_EQ(stored(1), u"1|2026/11/20|2026/12/01|2027/05/31"_s);

    // Two are awaited: which is meant is asked in the line. Its own months count for a correction.
    type(u"さとう"_s);
    EXPECT_EQ(focus(), u"cmbDoui"_s);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    type(u"8/11/19"_s);
    EXPECT_EQ(stored(2, true), u"1|2026/11/19|2026/12/01|2026/12/31"_s);
    EXPECT_EQ(stored(2), u"NULL|NULL|NULL|NULL"_s);

    EXPECT_EQ(logged(0, AnswerLogModel::Kind), u"変形徒手"_s);
    EXPECT_EQ(logged(0, AnswerLogModel::Before), u"返事待ち"_s);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(stored(2, true), u"NULL|NULL|NULL|NULL"_s);
    EXPECT_EQ(logged(0, AnswerLogModel::State), u"取り消し済み"_s);
    in<Grid>(u"ssHenji"_s)->setFocus();
    in<Grid>(u"ssHenji"_s)->goTo(2, 0);
    press(Qt::Key_Delete);
    EXPECT_EQ(stored(3), u"NULL|NULL|NULL|NULL"_s) << "the row chosen, not the last";
    EXPECT_EQ(in<QLabel>(u"lblCounts"_s)->text(), u"登録 1 件　取り消し 2 件"_s);

    // Typing can be undone without taking an answer back.
    in<QLineEdit>(u"txtRiyousha"_s)->setFocus();
    QTest::keyClicks(QApplication::focusWidget(), u"12"_s);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(stored(1), u"NULL|NULL|NULL|NULL"_s);
    EXPECT_TRUE(form->written());
    EXPECT_TRUE(messages.shown.isEmpty()) << "all is said in the line";
}

TEST_F(AnswersFormTest, AMassageAnswerGoesForTheDeformityCorrectionAndBothComeBack) {
    ASSERT_EQ(Settings(folders).iSwitch(Setting::変形連動, true), 0);
    open();
    type(u"2"_s);
    press(Qt::Key_Return); // massage
    type(u"1120"_s);
    EXPECT_EQ(stored(2), u"1|2026/11/20|2026/12/01|2027/05/31"_s);
    EXPECT_EQ(stored(2, true), u"NULL|2026/11/20|2026/12/01|2026/12/31"_s) << "the tick is its own";
    EXPECT_EQ(logged(0, AnswerLogModel::Kind), u"マッサ・変形徒手"_s);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(stored(2) + stored(2, true), u"NULL|NULL|NULL|NULLNULL|NULL|NULL|NULL"_s);
}

TEST_F(AnswersFormTest, WhatIsUnusualIsSaidInTheLine) {
    open();
    const struct {
        QString typed, says;
    } cases[] = {
        {u"ぬぬ"_s, u"該当する利用者がいません"_s},
        {u"ﾊﾔｼ"_s, u"同意がありません"_s},
        {u"森"_s, u"終了した利用者です"_s},
        {u"ﾀﾅｶ"_s,
         u"2026/10/01 に施術を終了した利用者です。　受領済み：再同意日 2026/11/18、次回 2026/12/01～"_s},
    };
    for (const auto &c : cases) {
        type(c.typed);
        EXPECT_TRUE(said().startsWith(c.says)) << said().toStdString();
        in<QLineEdit>(u"txtRiyousha"_s)->setFocus();
        press(Qt::Key_Escape);
        EXPECT_TRUE(form->isVisible());
    }
    // An answer in place of another, and dates that are hardly meant, want Enter twice.
    type(u"ﾀﾅｶ"_s);
    type(u"1119"_s);
    EXPECT_TRUE(said().contains(u"再同意日 2026/11/18"_s) && said().contains(u"もう一度 Enter"_s));
    EXPECT_TRUE(stored(4).startsWith(u"1|2026/11/18"_s));
    press(Qt::Key_Return);
    EXPECT_TRUE(stored(4).startsWith(u"1|2026/11/19"_s));

    type(u"1"_s);
    type(u"2226/11/20"_s);
    EXPECT_TRUE(said().contains(u"再同意日 2226/11/20"_s)) << said().toStdString();
    EXPECT_EQ(stored(1), u"NULL|NULL|NULL|NULL"_s);
    in<DateBox>(u"imD_Saidoui"_s)->selectAll();
    type(u"1120"_s);
    EXPECT_EQ(stored(1), u"1|2026/11/20|2026/12/01|2027/05/31"_s) << "another date is another question";

    type(u"3"_s);
    in<DateBox>(u"imD_KaryoE"_s)->setFocus();
    in<DateBox>(u"imD_KaryoE"_s)->selectAll();
    type(u"2026/11/01"_s);
    press(Qt::Key_Return);
    EXPECT_TRUE(said().contains(u"要加療終了が要加療開始より前の日付です"_s)) << said().toStdString();
    press(Qt::Key_F12);
    EXPECT_TRUE(form->isVisible()) << "an answer stands in the line";
    press(Qt::Key_F12);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(stored(3), u"NULL|NULL|NULL|NULL"_s);
    EXPECT_TRUE(messages.shown.isEmpty());
}

TEST_F(AnswersFormTest, TwoPcsNeverOverwriteEachOther) {
    TestInstallation elsewhere;
    cT_ADODB other;
    ASSERT_EQ(other.iInit(database.connectionString()), 0);
    ASSERT_EQ(other.iConnect(), 0);
    AnswerDesk colleague(elsewhere.environment, other);
    ASSERT_TRUE(colleague.begin());
    const ReConsent theirs{{2026, 11, 18}, {{2026, 12, 1}, {2027, 5, 31}}};

    open();
    type(u"1"_s);
    // Both have the patient before them; the colleague is quicker.
    ASSERT_TRUE(colleague.open(*colleague.find(u"1"_s, 1).front()));
    ASSERT_EQ(colleague.record(0, theirs).kind, AnswerOutcome::Written);
    // Beside each other first; left, what was typed stays in the line.
    QString pressed;
    QTimer decides;
    QObject::connect(&decides, &QTimer::timeout, [&] {
        QWidget *window = QApplication::activeModalWidget();
        if (window && window->objectName() == u"frmKasanari")
            window->findChild<QPushButton *>(pressed)->click();
    });
    decides.start(0);
    pressed = u"cmdEnd"_s;
    type(u"1120"_s);
    EXPECT_TRUE(said().contains(u"今の内容：マッサ 受領済み：再同意日 2026/11/18"_s)) << said().toStdString();
    EXPECT_TRUE(stored(1).startsWith(u"1|2026/11/18"_s));
    EXPECT_EQ(in<DateBox>(u"imD_Saidoui"_s)->date(), QDate(2026, 11, 20)) << "what was typed stays";
    press(Qt::Key_Return);
    EXPECT_TRUE(said().contains(u"もう一度 Enter"_s));
    press(Qt::Key_Return);
    EXPECT_TRUE(stored(1).startsWith(u"1|2026/11/20"_s)) << said().toStdString();
    EXPECT_TRUE(logged(0, AnswerLogModel::Before).startsWith(u"受領済み：再同意日 2026/11/18"_s));

    // The colleague's way back is closed by now, ours by a remark of theirs that the answer knows nothing of.
    const AnswerOutcome theirBack = colleague.takeBack(0);
    EXPECT_EQ(theirBack.kind, AnswerOutcome::Overtaken);
    EXPECT_TRUE(theirBack.text.contains(u"再同意日 2026/11/20"_s)) << theirBack.text.toStdString();
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET cItiranBikou = '確認済' WHERE nIDNo = 1"_s);
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET tUpDateTime = '2026/11/21 12:00:00.000' WHERE nIDNo = 1"_s);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(said().contains(u"取り消していません"_s)) << said().toStdString();
    EXPECT_TRUE(stored(1).startsWith(u"1|2026/11/20"_s));

    // Decided for what was typed, the answer is written over theirs, and its taking back gives theirs.
    type(u"3"_s);
    ASSERT_TRUE(colleague.open(*colleague.find(u"3"_s, 1).front()));
    ASSERT_EQ(colleague.record(0, theirs).kind, AnswerOutcome::Written);
    pressed = u"cmdTyped"_s;
    QObject::connect(&decides, &QTimer::timeout, [&] {
        if (QWidget *window = QApplication::activeModalWidget())
            window->findChild<QPushButton *>(u"cmdSave"_s)->click();
    });
    type(u"1120"_s);
    EXPECT_TRUE(stored(3).startsWith(u"1|2026/11/20"_s)) << said().toStdString();
    EXPECT_TRUE(logged(0, AnswerLogModel::Before).startsWith(u"受領済み：再同意日 2026/11/18"_s));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(stored(3).startsWith(u"1|2026/11/18"_s)) << said().toStdString();
    decides.stop();
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET iGetFlg = NULL, tSaiDouiDay = NULL WHERE nIDNo = 3"_s);

    // Renewed meanwhile: there is nothing left to answer.
    type(u"3"_s);
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET iNewestFlg = 0 WHERE nIDNo = 3"_s);
    press(Qt::Key_Return);
    EXPECT_TRUE(said().contains(u"更新または削除されました"_s)) << said().toStdString();
    EXPECT_TRUE(messages.shown.isEmpty());
}
