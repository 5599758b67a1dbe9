// Entering, registering and erasing consents in a real database.

#include "app/base/codepage932.h"
#include "app/base/settings.h"
#include "consent/entry/diagnosis_list.h"
#include "consent/entry/entry.h"
#include "consent/entry/history.h"
#include "consent/record/entry_save.h"
#include "consent/rules/list_advisor.h"
#include "tests/entry/entry_fixture.h"
#include "tests/support/failing_provider.h"

#include "app/base/dates.h"

#include <QDir>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

class ConsentEntryTest : public EntryTest {
protected:
    QString period() const {
        return dateText(entry.draft().tDouiKaryoS) + u'-' + dateText(entry.draft().tDouiKaryoE);
    }
    void enterDate(QStringView column, int day) { EXPECT_EQ(entry.enter(column, dateFromKey(day)), 0); }
    std::optional<DraftProblem> check() {
        const auto checked = entry.check();
        EXPECT_TRUE(checked) << checked.reason().toStdString();
        return *checked;
    }

    ConsentEntry entry{environment, database.db};
};

TEST_F(ConsentEntryTest, ANewConsentTakesOverWhatTheLastOneSaid) {
    consent(20251110, u"iOnan = 1, tOnanSday = '2025/11/10', cKousyukuSonotaStr = '指',"
                      "iMahiKukan = 1, nDouiUpMonth = 6, cItiranBikou = 'FAX', iOutputFlg = 1,"
                      "cDouiIsiName = '旧姓'"_s);
    consent(20260515, u"iHenkeiFlg = 1, cDouiByoumei = '変形'"_s);
    ASSERT_EQ(entry.iNew(massagePatient), 0) << entry.sErrMsg().toStdString();
    const ConsentDraft &draft = entry.draft();
    EXPECT_EQ(draft.cDouiByoumei, u"脳梗塞"_s);
    EXPECT_EQ(draft.cKousyukuSonotaStr, u"指"_s);
    EXPECT_EQ(draft.iSejutuBui2, 1);
    EXPECT_EQ(draft.cDouiIsiName, u"阿部"_s) << "the doctor's data as they are now";
    EXPECT_EQ(draft.cDouiIsiKikan, u"中央病院"_s);
    EXPECT_FALSE(draft.tDouiDay.isValid() || draft.tOnanSday.isValid());
    EXPECT_TRUE(draft.cItiranBikou.isNull());
    EXPECT_FALSE(entry.isChanged());

    // The new period follows the running one; treatments follow the period.
    enterDate(u"tDouiDay", 20260420);
    EXPECT_EQ(period(), u"2026/05/10-2026/10/31"_s);
    EXPECT_EQ(draft.tOnanSday, draft.tDouiKaryoS);
    EXPECT_EQ(draft.nDouiUpMonth, 6);
    EXPECT_TRUE(entry.isChanged());
    EXPECT_EQ(check(), std::nullopt);
    ASSERT_EQ(entry.save().kind, RowOutcome::Done);
    EXPECT_EQ(keys(), QStringList({u"20251110/0/0/0"_s, u"20260420/0/0/1"_s, u"20260515/1/0/1"_s}));
    EXPECT_EQ(stored(20260420, u"iMahiKukan, cItiranBikou, iOutputFlg, cPcName"_s),
              u"1|NULL|0|"_s + database.db.csGetComputerName());
}

TEST_F(ConsentEntryTest, ProposesThePeriodByThePatientsRuleAndLetsTheUserOverruleIt) {
    database.run(u"INSERT INTO DOUIKIROKU (iKyotenCd, iKyotenEb, nIDNo, tDouiYM, iDouiNo, iDouiKikan1,"
                 " iKikanCalcType) VALUES (1, 1, 7, '2026/05', 1, 3, 2)"_s);
    ASSERT_EQ(entry.iNew(massagePatient), 0);
    enterDate(u"tDouiDay", 20180930);
    EXPECT_EQ(period(), u"2018/10/01-2018/12/31"_s) << "three months before the law changed";
    enterDate(u"tDouiDay", 20260520);
    EXPECT_EQ(period(), u"2026/06/01-2026/11/30"_s);
    EXPECT_EQ(entry.draft().nDouiUpMonth, 6);
    EXPECT_FALSE(entry.explainPeriod().contains(u"規則と異なります"_s));

    enterDate(u"tDouiKaryoE", 20261031);
    EXPECT_EQ(period(), u"2026/06/01-2026/10/31"_s);
    EXPECT_TRUE(entry.explainPeriod().contains(u"規則と異なります"_s));
    enterDate(u"tDouiKaryoS", 20260615);
    EXPECT_EQ(period(), u"2026/06/15-2026/11/30"_s) << "the end counts from the first of the start's month";
    EXPECT_EQ(entry.enter(u"nDouiUpMonth", 2), 0);
    EXPECT_EQ(period(), u"2026/06/01-2026/07/31"_s);

    EXPECT_EQ(entry.enter(u"iHenkeiFlg", 1), 0);
    EXPECT_EQ(period(), u"2026/06/01-2026/06/30"_s) << "a correction runs a month";
    EXPECT_EQ(entry.draft().tHenkeSday, QDate(2026, 6, 1));
    EXPECT_EQ(entry.enter(u"iHenkeiFlg", 0), 0);
    EXPECT_EQ(period(), u"2026/06/01-2026/11/30"_s);
    EXPECT_FALSE(entry.draft().tHenkeSday.isValid()) << "nothing of the correction stays";
}

TEST_F(ConsentEntryTest, EachStepOpensALostConnectionAnew) {
    const auto lose = [&] { database.db.iDisConnect(); };
    lose();
    ASSERT_EQ(entry.iNew(massagePatient), 0);
    lose();
    EXPECT_EQ(entry.enter(u"cIsiCd", u"3"_s), 0) << entry.sErrMsg().toStdString();
    lose();
    EXPECT_TRUE(entry.check());
    lose();
    EXPECT_EQ(entry.save().kind, RowOutcome::Done);
}

TEST_F(ConsentEntryTest, AConsentThatIsNotUsedForClaimsIsNoPredecessor) {
    consent(20251110);
    consent(20260115, u"iReceptDisabledFlg = 1"_s);
    ASSERT_EQ(entry.iNew(massagePatient), 0);
    enterDate(u"tDouiDay", 20260420);
    EXPECT_EQ(entry.draft().tDouiKaryoS, QDate(2026, 5, 10)) << "after 2026/05/09, not after 2026/07/14";
}

TEST_F(ConsentEntryTest, ProposesWhatTheListProposes) {
    consent(20251110);
    database.run(u"INSERT INTO HOLIDAY (iKyotenCd, iKyotenEb, iYear, iMonth, iDay, iChkCalendar) VALUES"
                 " (1, 1, 2026, 5, 10, 1), (1, 1, 2026, 5, 11, 1)"_s);
    QDir(programFolder.path()).mkpath(u"DATA"_s);
    QStringList proposed;
    for (const QString &types : {u""_s, u"1,1,1"_s, u"2,1,2"_s, u"1,1,2"_s})
        for (const QString &own : {u"0, 0, 0, 0"_s, u"4, 2, 1, 1"_s, u"4, 2, 0, 2"_s, u"4, 2, 2, 0"_s})
            for (const bool daysOff : {false, true}) {
                Settings settings(folders);
                ASSERT_EQ(settings.iWrite(Setting::同意書自動計算デフォルト, types), 0);
                ASSERT_EQ(settings.iSwitch(Setting::祝日考慮, daysOff), 0);
                database.run(u"DELETE FROM DOUIKIROKU; INSERT INTO DOUIKIROKU (iKyotenCd, iKyotenEb, nIDNo,"
                             " tDouiYM, iDouiNo, iDouiKikan1, iDouiKikan2, iDoui1CalcType, iKikanCalcType)"
                             " VALUES (1, 1, 7, '2026/05', 1, %1)"_s.arg(own));
                ASSERT_EQ(entry.iNew(massagePatient), 0);
                enterDate(u"tDouiDay", 20260420);
                ListAdvisor list(folders, {1, 1}, database.db);
                list.links.holidays = daysOff;
                const Period next = list.nextPeriod(
                    {massagePatient, false, 0, {2025, 11, 10}, {{2025, 11, 10}, {2026, 5, 9}}},
                    {2026, 4, 20});
                EXPECT_EQ(period(), dateText(next.start) + u'-' + dateText(next.end))
                    << types.toStdString() << " / " << own.toStdString() << " / " << daysOff;
                proposed.append(period());
            }
    proposed.removeDuplicates();
    EXPECT_GE(proposed.size(), 6) << "the cases differ";
}

TEST_F(ConsentEntryTest, ATextIsAsLongAsItsColumnAtMost) {
    consent(20260520);
    ASSERT_EQ(entry.iOpen(key(20260520)), 0);
    const QStringList others = {u"cIsiCd"_s, u"cKobetuDouiIrai"_s, u"cItiranBikou"_s, u"cPcName"_s};
    QList<SuiteColumn> columns = suiteColumns(u"RIYOUSHA_DOUI_REC"_s);
    columns.removeIf([&](const SuiteColumn &c) { return c.length == 0 || others.contains(c.name); });
    ASSERT_EQ(columns.size(), 9);
    for (const auto &[name, length] : columns) {
        const QString longest(length, u'ア');
        EXPECT_EQ(entry.enter(name, longest), 0);
        EXPECT_EQ(check(), std::nullopt) << name.toStdString();
        EXPECT_EQ(entry.enter(name, longest + u'ア'), 0);
        const std::optional<DraftProblem> problem = check();
        ASSERT_TRUE(problem) << name.toStdString();
        EXPECT_EQ(problem->column, name);
        EXPECT_EQ(entry.enter(name, u"ア"_s), 0);
    }
}

TEST_F(ConsentEntryTest, TheListOfDiagnosesIsReadInBothEncodings) {
    const QString path = programFolder.filePath(u"傷病名List.txt"_s);
    const auto read = [&](const QByteArray &bytes) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        file.close();
        const Result<Recordset> rows = readDiagnoses(path);
        return rows ? rows->text(rows->rowCount() - 1, 1) : rows.reason();
    };
    const QString list = u"脳梗塞\r\n\r\n 頸髄損傷"_s;
    EXPECT_EQ(read(encode932(list).bytes), u"頸髄損傷"_s);
    EXPECT_EQ(read("\xEF\xBB\xBF" + list.toUtf8()), u"頸髄損傷"_s);
    const QString damaged = read(encode932(list).bytes + "\r\n\x81");
    EXPECT_TRUE(damaged.contains(path) && damaged.contains(u"4行目"_s)) << damaged.toStdString();
}

TEST_F(ConsentEntryTest, TheDiagnosisFollowsTheTickedDiseasesUntilItIsReworded) {
    ASSERT_EQ(entry.iNew(acupuncturePatient), 0);
    EXPECT_EQ(entry.enter(u"iHKSyobyou01Flg", 1), 0);
    EXPECT_EQ(entry.enter(u"iHKSyobyou07Flg", 1), 0);
    EXPECT_EQ(entry.enter(u"cSyoujyouSonotaStr", u"頭痛"_s), 0);
    EXPECT_EQ(entry.draft().cDouiByoumei, u"神経痛、頭痛"_s);
    EXPECT_EQ(entry.draft().cByoumeiH, u"神経痛、頭痛"_s);
    EXPECT_EQ(entry.enter(u"cByoumeiH", u"片頭痛"_s), 0);
    EXPECT_EQ(entry.enter(u"iHKSyobyou01Flg", 0), 0);
    EXPECT_EQ(entry.draft().cDouiByoumei, u"頭痛"_s);
    EXPECT_EQ(entry.draft().cByoumeiH, u"片頭痛"_s);
}

TEST_F(ConsentEntryTest, ChangingARowsDateMovesTheRowWithItsRequestFields) {
    consent(20260520, u"iNewestFlg = 1, iOutputFlg = 1, cItiranBikou = 'FAX', iSendFlg = 1,"
                      "tSaiDouiDay = '2026/11/18', cKobetuDouiIrai = '', iDouishoSaishutokuKikan = 5"_s);
    consent(20251110);
    ASSERT_EQ(entry.iOpen(key(20260520)), 0);
    // What colleagues write meanwhile to the fields that entry only carries along is carried along.
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET iGetFlg = 1 WHERE nDate = 20260520"_s);
    enterDate(u"tShinsatsuDay", 20251110);
    ASSERT_TRUE(check());
    EXPECT_EQ(check()->text, u"診察日が以前の同意と同じ日付です。"_s);
    EXPECT_EQ(entry.save().kind, RowOutcome::Taken) << "nor when the check was passed a moment before";

    enterDate(u"tShinsatsuDay", 20260518);
    EXPECT_EQ(check(), std::nullopt);
    ASSERT_EQ(entry.save().kind, RowOutcome::Done);
    EXPECT_EQ(entry.savedKey(), key(20260518));
    EXPECT_EQ(keys(), QStringList({u"20251110/0/0/0"_s, u"20260518/0/0/1"_s}));
    EXPECT_EQ(stored(20260518, u"iOutputFlg, iGetFlg, cItiranBikou, iSendFlg, tSaiDouiDay, cKobetuDouiIrai,"
                               "iDouishoSaishutokuKikan"_s),
              u"1|1|FAX|1|2026/11/18||5"_s);
}

TEST_F(ConsentEntryTest, NothingIsOverwrittenThatAColleagueChangedOrRemoved) {
    consent(20260520);
    const QString all = u"SELECT * FROM RIYOUSHA_DOUI_REC"_s;
    for (const QString &meanwhile :
         {u"UPDATE RIYOUSHA_DOUI_REC SET cDouiByoumei = '別'"_s,
          u"UPDATE RIYOUSHA_DOUI_REC SET nDate = 20260519"_s, u"DELETE FROM RIYOUSHA_DOUI_REC"_s}) {
        database.run(u"DELETE FROM RIYOUSHA_DOUI_REC"_s);
        consent(20260520, u"cItiranBikou = 'FAX'"_s);
        ConsentHistory history(database.db);
        ASSERT_EQ(history.iRead(massagePatient), 0);
        ASSERT_EQ(entry.iOpen(key(20260520)), 0);
        EXPECT_EQ(entry.enter(u"cDouiIsiAdd", u"本町"_s), 0);
        database.run(meanwhile);
        const QStringList before = database.rows(all);
        EXPECT_EQ(entry.save().kind, RowOutcome::Overtaken) << meanwhile.toStdString();
        EXPECT_EQ(history.erase(0).kind, RowOutcome::Overtaken) << meanwhile.toStdString();
        EXPECT_EQ(database.rows(all), before);
        EXPECT_TRUE(entry.isChanged()) << "the input is still there";
    }
    database.run(u"DELETE FROM RIYOUSHA_DOUI_REC"_s);
    consent(20260520, u"cItiranBikou = 'ＦＡＸ'"_s);
    ASSERT_EQ(entry.iOpen(key(20260520)), 0);
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET cItiranBikou = 'FAX'"_s);
    EXPECT_EQ(saveRemark(database.db, entry.draft(), u"郵送"_s).kind, RowOutcome::Overtaken)
        << "though the database takes both widths for the same";
    EXPECT_EQ(stored(20260520, u"cItiranBikou"_s), u"FAX"_s);
}

TEST_F(ConsentEntryTest, AFailureAtAnyStatementLeavesEverythingAsItWas) {
    consent(20260520, u"iNewestFlg = 1"_s);
    consent(20251110, u"iNewestFlg = 0"_s);
    const QString all = u"SELECT * FROM RIYOUSHA_DOUI_REC ORDER BY nDate"_s;
    const QStringList before = database.rows(all);
    ASSERT_EQ(entry.iOpen(key(20260520)), 0);
    ConsentDraft draft = entry.draft();
    draft.tDouiDay = {2025, 10, 1};
    QStringList titles;
    int nth = 1;
    for (; nth < 30; ++nth) {
        FailingConnection failing(database.connectionString(), nth);
        ConsentRowKey saved;
        const RowOutcome outcome = saveDraft(failing.db, draft, &entry.draft(), saved);
        if (outcome.kind == RowOutcome::Done)
            break;
        EXPECT_EQ(outcome.kind, RowOutcome::Failed) << nth;
        EXPECT_TRUE(outcome.text.contains(FailingConnection::description)) << nth;
        EXPECT_EQ(database.rows(all), before) << nth;
        titles.append(outcome.title);
    }
    EXPECT_TRUE(titles.contains(u"旧データ削除"_s) && titles.contains(u"データ追加"_s));
    EXPECT_GT(nth, 6);
    EXPECT_EQ(keys(), QStringList({u"20251001/0/0/0"_s, u"20251110/0/0/1"_s}));
}

TEST_F(ConsentEntryTest, AnOlderConsentThatBecomesTheNewestIsTold) {
    consent(20251110);
    consent(20260520, u"iNewestFlg = 1"_s);
    ASSERT_EQ(entry.iOpen(key(20260520)), 0);
    EXPECT_EQ(entry.enter(u"cDouiByoumei", u"腰痛"_s), 0);
    EXPECT_EQ(entry.save().text, QString());
    ASSERT_EQ(entry.iOpen(key(20260520)), 0);
    EXPECT_EQ(entry.enter(u"iReceptDisabledFlg", 1), 0);
    EXPECT_EQ(entry.save().text, u"以前の同意（2025/11/10）が、この利用者の最新の同意になりました。"_s);
    EXPECT_EQ(keys(), QStringList({u"20251110/0/0/1"_s, u"20260520/0/0/0"_s}));
}

TEST_F(ConsentEntryTest, ErasingTheNewestHandsItsMarkOn) {
    consent(20251110);
    consent(20260520, u"iNewestFlg = 1"_s);
    ConsentHistory history(database.db);
    ASSERT_EQ(history.iRead(massagePatient), 0);
    const RowOutcome erased = history.erase(1);
    EXPECT_EQ(erased.kind, RowOutcome::Done);
    EXPECT_TRUE(erased.text.contains(u"2025/11/10"_s)) << "an older row that becomes the newest is told";
    EXPECT_EQ(keys(), QStringList({u"20251110/0/0/1"_s}));
    EXPECT_EQ(entry.iOpen(key(20260520)), -1);
    EXPECT_TRUE(entry.sErrMsg().startsWith(u"対象データ無し"_s));
    database.run(u"DELETE FROM RIYOUSHA_DOUI_REC; DROP TABLE CORP_SUB"_s);
    EXPECT_EQ(entry.iNew(massagePatient), -1);
    EXPECT_TRUE(entry.sErrMsg().endsWith(u"\r\nsetMasSyobyo()でエラー"_s)) << entry.sErrMsg().toStdString();
}
