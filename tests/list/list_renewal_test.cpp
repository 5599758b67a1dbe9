// Renewing what was received, beside a colleague, and restarting deformity-correction periods.

#include "consent/list/list_renewal_form.h"
#include "consent/record/renewal.h"
#include "tests/list/list_form_fixture.h"
#include "widgets/date_box.h"

#include <QAction>
#include <QLabel>
#include <QProgressBar>

using namespace Qt::Literals::StringLiterals;

class ListRenewalTest : public ListTest {
protected:
    // Three received rows with their answers, in a list whose renewal is permitted.
    ListRenewalTest() {
        database.run(u"INSERT INTO KYOTEN (iKyotenCd, iKyotenEb) VALUES (1, 1);"
                     "INSERT INTO CORP_SUB (iKyotenCd, iKyotenEb, iDouiUpdatePermitDay) VALUES (1, 1, 1)"_s);
        for (const int number : {1, 2, 3}) {
            patient(number, u"利用者%1"_s.arg(number), QStringList{u"ｱ"_s, u"ｲ"_s, u"ｳ"_s}[number - 1]);
            consent(number, u"2026/12/31"_s, ready);
        }
        list.filter().order = ListOrder::Patient;
        list.filter().from = QDate(2026, 10, 1);
        found();
    }
    void meanwhile(const QString &set, int number = 1) {
        database.run(u"UPDATE RIYOUSHA_DOUI_REC SET %1 WHERE nIDNo = %2"_s.arg(set).arg(number));
    }
    /// Answers the question and gives what was said at the end.
    Message renew(cT_ADODB &db) {
        messages.shown.clear();
        messages.answers = {Answer::Yes};
        QProgressBar progress;
        renewReceived({environment, db, model, list.readFilter().from,
                       [this] { return list.save().kind == SaveOutcome::Saved; }, progress, nullptr});
        return messages.shown.back();
    }
    Message renew() { return renew(database.db); }
    /// Patients with a consent of the answer's date.
    QStringList renewed(int deformity = 0) const {
        return database.rows(u"SELECT nIDNo FROM RIYOUSHA_DOUI_REC WHERE nDate = 20261120"
                             " AND iNewestFlg = 1 AND iHenkeiFlg = %1 ORDER BY nIDNo"_s.arg(deformity));
    }

    const QString ready = u"iGetFlg = 1, iReceptDisabledFlg = 0, tSaiDouiDay = '2026/11/20',"
                          " tSaiDouiKaryoS = '2027/01/01', tSaiDouiKaryoE = '2027/05/31'"_s;
};

TEST_F(ListRenewalTest, ARowThatAColleagueChangedIsNotRenewed) {
    const struct {
        const char *what;
        QString set, back;
    } cases[] = {
        {"taken back", u"iGetFlg = 0"_s, u"iGetFlg = 1"_s},
        {"period", u"tDouiKaryoE = '2026/11/30'"_s, u"tDouiKaryoE = '2026/12/31'"_s},
        {"doctor", u"cIsiCd = '2'"_s, u"cIsiCd = '1'"_s},
        {"doctor's name", u"cDouiIsiName = '別'"_s, u"cDouiIsiName = NULL"_s},
        {"remark", u"cItiranBikou = '電話済'"_s, u"cItiranBikou = NULL"_s},
        {"claims", u"iReceptDisabledFlg = 1"_s, u"iReceptDisabledFlg = 0"_s},
        {"anything, by its time", u"iOnan = 1, tUpDateTime = '2026/11/21 09:00:00'"_s,
         u"iOnan = 0, tUpDateTime = '2026/11/21 08:00:00'"_s},
    };
    database.run(u"DELETE FROM RIYOUSHA_DOUI_REC WHERE nIDNo <> 1;"
                 "UPDATE RIYOUSHA_DOUI_REC SET tUpDateTime = '2026/11/21 08:00:00'"_s);
    for (const auto &c : cases) {
        found();
        meanwhile(c.set);
        const Message said = renew();
        EXPECT_EQ(said.icon, MessageIcon::Exclamation);
        EXPECT_TRUE(
            said.text.contains(u"1 利用者1　この同意は、一覧を表示した後に他のＰＣで変更されています。"_s))
            << c.what << said.text.toStdString();
        EXPECT_EQ(renewed(), QStringList()) << c.what;
        meanwhile(c.back);
    }
    found();
    renew();
    EXPECT_EQ(renewed(), QStringList{u"1"_s});
}

TEST_F(ListRenewalTest, WhatIsRenewedIsWhatTheUserSawBeforeTheQuestion) {
    // An edit of row 1 makes the list save and read again before it renews.
    meanwhile(u"iGetFlg = 0"_s, 2);
    found();
    EXPECT_TRUE(edit(1, ListColumn::Remark, u"備考"_s));
    meanwhile(u"iGetFlg = 1"_s, 2);
    meanwhile(u"cIsiCd = '2'"_s, 3);
    const QString said = renew().text;
    EXPECT_EQ(renewed(), QStringList{u"1"_s}) << "not 2, which is not ticked here, nor 3, changed since";
    EXPECT_TRUE(said.contains(u"3 利用者3　この同意は、"_s)) << said.toStdString();
    EXPECT_FALSE(said.contains(u"利用者2"_s)) << said.toStdString();
}

TEST_F(ListRenewalTest, WhatIsNarrowedAwayIsNotRenewed) {
    model.narrow({}, u"ｲ"_s);
    const QString said = renew().text;
    EXPECT_EQ(renewed(), QStringList{u"2"_s});
    EXPECT_TRUE(said.contains(u"絞り込みで表示していない受領 2 件は、更新していません。"_s))
        << said.toStdString();
}

TEST_F(ListRenewalTest, ARowWhoseSuccessorWouldNotBecomeTheNewestIsRefused) {
    meanwhile(u"iReceptDisabledFlg = NULL"_s, 1);
    meanwhile(u"iReceptDisabledFlg = 1"_s, 2);
    meanwhile(u"iReceptDisabledFlg = 2"_s, 3);
    found();
    const QStringList before = database.rows(u"SELECT * FROM RIYOUSHA_DOUI_REC"_s);
    const Message said = renew();
    EXPECT_TRUE(said.text.contains(u"1 利用者1　請求に使用するかどうかが未設定の同意のため"_s))
        << said.text.toStdString();
    EXPECT_TRUE(said.text.contains(u"2 利用者2　請求に使用しない同意のため"_s));
    EXPECT_TRUE(said.text.contains(u"3 利用者3　請求に使用しない同意のため"_s));
    EXPECT_EQ(database.rows(u"SELECT * FROM RIYOUSHA_DOUI_REC"_s), before);
}

// Old data: two newest rows of one kind.
TEST_F(ListRenewalTest, OfTwoNewestRowsTheLaterIsRenewedAndTheOtherToldTheTruth) {
    database.run(u"DELETE FROM RIYOUSHA_DOUI_REC WHERE nIDNo <> 1"_s);
    consent(1, u"2026/12/31"_s, u"nDate = 20260701, "_s + ready);
    for (const bool both : {false, true}) {
        database.run(u"UPDATE RIYOUSHA_DOUI_REC SET iGetFlg = %1 WHERE nDate = 20260701"_s.arg(both ? 1 : 0));
        found();
        const QString said = renew().text;
        EXPECT_TRUE(
            said.contains(u"この利用者には、より新しい同意（2026/07/01）があるため、更新できません。"_s))
            << said.toStdString();
        EXPECT_EQ(renewed(), both ? QStringList{u"1"_s} : QStringList());
    }
    EXPECT_EQ(database.rows(u"SELECT nDate FROM RIYOUSHA_DOUI_REC ORDER BY nDate"_s),
              (QStringList{u"20260601"_s, u"20260701"_s, u"20261120"_s}));
}

TEST_F(ListRenewalTest, ALaterRowThatIsNotUsableDoesNotStandInTheWay) {
    consent(1, u"2026/12/31"_s, u"nDate = 20260701, "_s + ready);
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET iReceptDisabledFlg = 1 WHERE nDate = 20260701"_s);
    found();
    const QString said = renew().text;
    EXPECT_EQ(renewed(), (QStringList{u"1"_s, u"2"_s, u"3"_s})) << said.toStdString();
    EXPECT_TRUE(said.contains(u"1 利用者1　請求に使用しない同意のため"_s)) << said.toStdString();
}

TEST_F(ListRenewalTest, ADeformityRowAnsweredAsMassageIsRenewed) {
    consent(2, u"2026/12/31"_s, u"iHenkeiFlg = 1, nHenkeiDouiDate = 20260601, iGetFlgHenkei = 1, "_s + ready);
    found();
    EXPECT_EQ(cell(2, ListColumn::Reconsent, true).data().toString(), u"2026/11/20"_s);
    // An edit takes the answer to the row's own columns.
    EXPECT_TRUE(edit(2, ListColumn::NextEnd, QDate(2027, 1, 31), true));
    ASSERT_EQ(list.save().kind, SaveOutcome::Saved);
    EXPECT_EQ(database.value(u"SELECT tDouiDayTempHenkei, tDouiKaryoETempHenkei, tSaiDouiDay FROM"
                             " RIYOUSHA_DOUI_REC WHERE iHenkeiFlg = 1"_s),
              u"2026/11/20|2027/01/31|NULL"_s);
    database.run(
        u"UPDATE RIYOUSHA_DOUI_REC SET tDouiDayTempHenkei = NULL, %1 WHERE iHenkeiFlg = 1"_s.arg(ready));
    found();
    renew();
    EXPECT_EQ(renewed(1), QStringList{u"2"_s});
}

TEST_F(ListRenewalTest, ARestartIsMadeOnWhatTheUserSaw) {
    const ReadRow seen = model.seenRow(recordOf(1));
    ConsentRenewal restart(database.db);
    meanwhile(u"cItiranBikou = '電話済'"_s);
    const Period period{{2027, 1, 1}, {2027, 1, 31}};
    EXPECT_EQ(restart.iDataHenkeiDouiMake(seen.key.patient, seen.key.nDate, period, &seen), -1);
    EXPECT_TRUE(restart.refused());
    EXPECT_EQ(database.value(u"SELECT iGetFlg FROM RIYOUSHA_DOUI_REC WHERE nIDNo = 1"_s), u"1"_s);
    meanwhile(u"cItiranBikou = NULL"_s);
    EXPECT_EQ(restart.iDataHenkeiDouiMake(seen.key.patient, seen.key.nDate, period, &seen), 0);
    EXPECT_EQ(database.value(u"SELECT iGetFlg, tHenKeEday FROM RIYOUSHA_DOUI_REC WHERE nIDNo = 1"_s),
              u"0|2027/01/31"_s);
}

TEST_F(ListRenewalTest, ARestartOfTheListLeavesTheOtherRowsOfTheDayAlone) {
    consent(1, u"2026/12/31"_s, u"iHenkeiFlg = 1, nHenkeiDouiDate = 20260601, iGetFlgHenkei = 1"_s);
    found();
    const ReadRow seen = model.seenRow(recordOf(1, true));
    const Period period{{2027, 1, 1}, {2027, 1, 31}};
    ASSERT_EQ(
        ConsentRenewal(database.db).iDataHenkeiDouiMake(seen.key.patient, seen.key.nDate, period, &seen), 0);
    EXPECT_EQ(database.rows(u"SELECT iGetFlg, iGetFlgHenkei, tHenKeEday FROM RIYOUSHA_DOUI_REC"
                            " WHERE nIDNo = 1 ORDER BY iHenkeiFlg"_s),
              (QStringList{u"1|NULL|NULL"_s, u"0|0|2027/01/31"_s}));
}

// The list and the restart must look at the same columns.
TEST_F(ListRenewalTest, ADeformityRowWithAPeriodAndNoAnswerYetIsRestarted) {
    consent(1, u"2026/12/31"_s,
            u"iHenkeiFlg = 1, nHenkeiDouiDate = 20260601, tdouiKaryoSTempHenkei = '2026/12/01'"_s);
    found();
    const ReadRow seen = model.seenRow(recordOf(1, true));
    ConsentRenewal restart(database.db);
    const Period period{{2027, 1, 1}, {2027, 1, 31}};
    EXPECT_EQ(restart.iDataHenkeiDouiMake(seen.key.patient, seen.key.nDate, period, &seen), 0)
        << restart.sErrMsg().toStdString();
}

TEST_F(ListRenewalTest, AConsentThatIsNotUsableYetIsNotReplaced) {
    consent(1, u"2026/12/31"_s, u"nDate = 20261120, iNewestFlg = 0, iReceptDisabledFlg = 1"_s);
    consent(2, u"2026/12/31"_s, u"nDate = 20261120, iNewestFlg = 0"_s);
    found();
    const QString said = renew().text;
    for (const char16_t *who : {u"1 利用者1", u"2 利用者2"})
        EXPECT_TRUE(said.contains(QString::fromUtf16(who) +
                                  u"　再同意日（2026/11/20）の同意がすでに登録されているため"_s))
            << said.toStdString();
    EXPECT_EQ(renewed(), QStringList{u"3"_s});
    EXPECT_EQ(database.rows(u"SELECT iReceptDisabledFlg FROM RIYOUSHA_DOUI_REC"
                            " WHERE nDate = 20261120 ORDER BY nIDNo"_s),
              (QStringList{u"1"_s, u"NULL"_s, u"0"_s}));
}

TEST_F(ListRenewalTest, AFailureOfTheDatabaseIsToldAsOne) {
    database.run(u"CREATE TRIGGER refuse BEFORE INSERT ON RIYOUSHA_DOUI_REC WHEN new.nIDNo > 1"
                 " BEGIN SELECT RAISE(ABORT, 'refused'); END"_s);
    const Message said = renew();
    EXPECT_EQ(said.icon, MessageIcon::Critical);
    EXPECT_TRUE(said.text.contains(u"refused"_s) && said.text.contains(u"iDataNewDouiMake() でエラー"_s))
        << said.text.toStdString();
    EXPECT_TRUE(said.text.endsWith(u"\r\n3 利用者3　同上"_s)) << "said once";
    EXPECT_EQ(renewed(), QStringList{u"1"_s});
}

TEST_F(ListFormTest, RenewsWhatWasReceivedAndTellsWhatWasNot) {
    // Row 1 has its answer, row 2 no date, row 3 a date but no period; the edit on row 1 is saved first.
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET iGetFlg = 1, iReceptDisabledFlg = 0;"
                 "UPDATE RIYOUSHA_DOUI_REC SET tSaiDouiDay = '2026/11/20' WHERE nIDNo = 3"_s);
    open();
    QTest::keyClick(form.get(), Qt::Key_F6);
    ASSERT_EQ(messages.shown.size(), 1);
    EXPECT_EQ(messages.shown[0].text, u"選択された同意書の更新を行うことはできません。\r\n"
                                      "更新基準日(11日)を過ぎてから更新可能となります。\r\n\r\n"
                                      "表示している対象期間の同意は、2026/12/11（金）から更新できます。"_s);
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Critical);

    control<DateBox>(u"imD_KikanFrom"_s)->setDate(QDate(2026, 10, 1));
    control<DateBox>(u"imD_KikanTo"_s)->setDate(QDate(2027, 5, 31));
    QTest::keyClick(form.get(), Qt::Key_F4);
    for (const int row : {0, 1}) {
        go(row, ListColumn::Target);
        QTest::keyClick(grid, Qt::Key_Space);
    }
    go(0, ListColumn::Reconsent);
    type(u"20261118"_s);
    // Another row has taken the place of row 2's meanwhile.
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET nDate = 20260602 WHERE nIDNo = 2"_s);
    messages.shown.clear();
    messages.answers = {Answer::No};
    QTest::keyClick(form.get(), Qt::Key_F6);
    ASSERT_EQ(messages.shown.size(), 1);
    EXPECT_TRUE(messages.shown[0].text.startsWith(u"更新しない同意：2 件\r\n2 "_s))
        << messages.shown[0].text.toStdString();
    EXPECT_TRUE(messages.shown[0].text.endsWith(
        u"\r\n\r\n同意受領分の更新を行います。よろしいですか？\r\n更新 1 件"_s));
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
    ASSERT_EQ(at(0, ListColumn::Period), u"2027/01/01～2027/05/31"_s);
    EXPECT_TRUE(isTarget(0)) << "the row that has taken its place";
    EXPECT_FALSE(isTarget(1)) << "a colleague's row";
}

TEST_F(ListFormTest, ADeformityPeriodIsRestarted) {
    consent(3, u"2026/12/31"_s,
            u"iHenkeiFlg = 1, nHenkeiDouiDate = 20260601, nDate = 20260602, iOutputFlgHenkei = 1,"
            " iGetFlgHenkei = 1, nDouiUpMonth = 2"_s);
    open();
    auto *restart = form->findChild<QAction *>(u"mnHenkeiRestart"_s);
    go(0, ListColumn::Number);
    restart->trigger();
    EXPECT_EQ(messages.shown.back().text, u"変形徒手の行を選択してください。"_s);
    go(3, ListColumn::Number);
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        QTimer::singleShot(0, [] {
            QWidget *dialog = QApplication::activeModalWidget();
            dialog->findChild<DateBox *>(u"idHenkeiFrom"_s)->setDate(QDate(2026, 12, 1));
            QTest::keyClick(dialog, Qt::Key_Return);
        });
        messages.answers = {answer};
        restart->trigger();
        EXPECT_EQ(database.value(u"SELECT tHenkeSday, tHenKeEday, iOutputFlgHenkei, iGetFlgHenkei"
                                 " FROM RIYOUSHA_DOUI_REC WHERE iHenkeiFlg = 1"_s),
                  answer == Answer::Yes ? u"2026/12/01|2027/01/20|0|0"_s : u"NULL|NULL|1|1"_s);
    }
    EXPECT_TRUE(messages.shown.back().text.contains(u"3 利用者3　変形徒手の期間を再開しました。"_s));

    // Saved and not read again: the row is what was saved, not one that a colleague has changed.
    go(3, ListColumn::Received);
    QTest::keyClick(grid, Qt::Key_Space);
    database.run(u"ALTER TABLE SOUDAN RENAME TO SOUDAN_AWAY"_s);
    messages.answers = {Answer::Yes, Answer::Yes};
    control<QPushButton>(u"cmdSave"_s)->click();
    database.run(u"ALTER TABLE SOUDAN_AWAY RENAME TO SOUDAN"_s);
    ASSERT_TRUE(messages.shown[messages.shown.size() - 2].text.contains(u"読み直せませんでした"_s));
    EXPECT_EQ(messages.notes.back(), u"保存しました。"_s);
    QString wrong;
    QTimer::singleShot(0, [&] {
        QWidget *dialog = QApplication::activeModalWidget();
        dialog->findChild<DateBox *>(u"idHenkeiFrom"_s)->setDate({});
        QTest::keyClick(dialog, Qt::Key_Return);
        wrong = dialog->findChild<QLabel *>(u"lblWrong"_s)->text();
        dialog->findChild<DateBox *>(u"idHenkeiFrom"_s)->setDate(QDate(2026, 12, 2));
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    restart->trigger();
    EXPECT_EQ(wrong, u"日付を入力してください。"_s);
    EXPECT_EQ(database.value(u"SELECT tHenkeSday, iGetFlgHenkei FROM RIYOUSHA_DOUI_REC"
                             " WHERE iHenkeiFlg = 1"_s),
              u"2026/12/02|0"_s);

    control<QPushButton>(u"cmdBikou"_s)->click();
    EXPECT_EQ(messages.shown.back().text,
              u"変形徒手の行に備考はありません。マッサージの行を選択してください。"_s);
}
