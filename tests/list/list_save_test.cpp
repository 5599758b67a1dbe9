// What saving writes, and that nothing is lost between colleagues.

#include "tests/list/list_fixture.h"

using namespace Qt::Literals::StringLiterals;

class ListSaveTest : public ListTest {
protected:
    ListSaveTest() {
        for (const int number : {1, 2, 3}) {
            patient(number, u"利用者%1"_s.arg(number), u"ﾘﾖｳｼｬ"_s);
            consent(number, u"2026/12/31"_s);
        }
        list.filter().order = ListOrder::Patient;
        found();
    }
    /// Files made before the engine was told what a date is hold what is none.
    void asOfAnEarlierProgram() { database.db.iExecSQL(u"PRAGMA ignore_check_constraints = ON"_s); }
    QString stored(int number, const QString &columns, int deformity = 0) const {
        return database.value(
            u"SELECT %1 FROM RIYOUSHA_DOUI_REC WHERE nIDNo = %2 AND iHenkeiFlg = %3"_s.arg(columns)
                .arg(number)
                .arg(deformity));
    }
};

TEST_F(ListSaveTest, WritesTheEditedValuesAndLeavesNullsAlone) {
    const QString remark = QString(3900, u'備') + u"'; DELETE FROM RIYOUSHA; -- 髙𠮷ﾔﾏﾀﾞ"_s;
    EXPECT_TRUE(edit(1, ListColumn::Reconsent, QDate(2026, 11, 20)));
    EXPECT_TRUE(edit(1, ListColumn::NextEnd, QDate(2027, 5, 31)));
    EXPECT_TRUE(edit(1, ListColumn::Remark, remark));
    EXPECT_TRUE(edit(1, ListColumn::Method, 2));
    EXPECT_TRUE(tick(1, ListColumn::Received, true));
    ASSERT_TRUE(model.hasChanges());

    ASSERT_EQ(list.save().kind, SaveOutcome::Saved);
    EXPECT_FALSE(model.hasChanges());
    EXPECT_EQ(stored(1, u"iOutputFlg, iGetFlg, tSaiDouiDay, tSaiDouiKaryoS, tSaiDouiKaryoE, iRenrakuFlg,"
                        " iDouiHospOutFlg, iDouiIsiOutFlg, iDouiIraiType, cKobetuDouiIrai"_s),
              u"NULL|1|2026/11/20|2026/11/21|2027/05/31|NULL|NULL|NULL|2|NULL"_s);
    EXPECT_EQ(stored(1, u"cItiranBikou"_s), remark);
    EXPECT_NE(stored(1, u"tUpDateTime"_s), u"NULL"_s);
    EXPECT_NE(stored(1, u"cPcName"_s), u"NULL"_s);
    EXPECT_EQ(stored(2, u"tUpDateTime"_s), u"NULL"_s) << "an unchanged row is not written";

    // Saved rows can be edited and saved again at once, and emptied.
    EXPECT_TRUE(edit(1, ListColumn::Reconsent, QDate()));
    EXPECT_TRUE(edit(1, ListColumn::Remark, u""_s));
    ASSERT_EQ(list.save().kind, SaveOutcome::Saved);
    EXPECT_EQ(stored(1, u"tSaiDouiDay, tSaiDouiKaryoS, tSaiDouiKaryoE, cItiranBikou"_s),
              u"NULL|NULL|NULL|NULL"_s);
}

TEST_F(ListSaveTest, DeformityRowHasColumnsOfItsOwn) {
    consent(1, u"2026/12/31"_s, u"iHenkeiFlg = 1, nHenkeiDouiDate = 20260601"_s);
    found();
    EXPECT_FALSE(edit(1, ListColumn::Remark, u"x"_s, true));
    EXPECT_FALSE(edit(1, ListColumn::Method, 1, true));
    EXPECT_FALSE(tick(1, ListColumn::Contact, true, true));
    EXPECT_TRUE(edit(1, ListColumn::Reconsent, QDate(2026, 11, 20), true));
    EXPECT_TRUE(tick(1, ListColumn::Received, true, true));
    EXPECT_TRUE(tick(1, ListColumn::Requested, true, true));
    ASSERT_EQ(list.save().kind, SaveOutcome::Saved);
    const QString columns = u"iOutputFlgHenkei, iGetFlgHenkei, tDouiDayTempHenkei, tDouiKaryoSTempHenkei,"
                            " tDouiKaryoETempHenkei, tSaiDouiDay, iGetFlg"_s;
    EXPECT_EQ(stored(1, columns, 1), u"1|1|2026/11/20|2026/11/21|2026/11/30|NULL|NULL"_s);
    EXPECT_EQ(stored(1, columns, 0), u"NULL|NULL|NULL|NULL|NULL|NULL|NULL"_s)
        << "the row of the same key date";
}

TEST_F(ListSaveTest, AColleaguesChangeIsNeverOverwritten) {
    struct Case {
        const char *what;
        QString before; ///< puts row 1 into the state that is read
        QString meanwhile;
    };
    const Case cases[] = {
        {"a value, without an update time", {}, u"cItiranBikou = '同僚'"_s},
        {"from Null to 0", {}, u"iGetFlg = 0"_s},
        {"the update time", u"tUpDateTime = '2026/11/20 10:00:00.000'"_s,
         u"iSendFlg = 1, tUpDateTime = '2026/11/21 08:00:00.000'"_s},
        {"renewed: no longer the newest", {}, u"iNewestFlg = 0"_s},
    };
    for (const Case &c : cases) {
        database.run(u"UPDATE RIYOUSHA_DOUI_REC SET iNewestFlg = 1, cItiranBikou = NULL, tUpDateTime = NULL,"
                     " iGetFlg = NULL, tSaiDouiDay = NULL, tSaiDouiKaryoS = NULL, tSaiDouiKaryoE = NULL"_s);
        if (!c.before.isEmpty())
            database.run(u"UPDATE RIYOUSHA_DOUI_REC SET %1 WHERE nIDNo = 1"_s.arg(c.before));
        found();
        EXPECT_TRUE(edit(1, ListColumn::Reconsent, QDate(2026, 11, 19)));
        EXPECT_TRUE(edit(2, ListColumn::Reconsent, QDate(2026, 11, 20)));
        EXPECT_TRUE(tick(3, ListColumn::Target, true));
        database.run(u"UPDATE RIYOUSHA_DOUI_REC SET %1 WHERE nIDNo = 1"_s.arg(c.meanwhile));

        const SaveOutcome outcome = list.save();
        EXPECT_EQ(outcome.kind, SaveOutcome::Conflict) << c.what;
        ASSERT_EQ(outcome.overtaken.size(), 1u) << c.what;
        EXPECT_EQ(outcome.overtaken[0].who, u"1 利用者1"_s) << c.what;
        EXPECT_EQ(stored(2, u"tSaiDouiDay"_s), u"NULL"_s) << c.what << ": all or nothing";

        std::vector<TypedRow> dropped;
        ASSERT_EQ(list.iReread(&dropped), 0);
        ASSERT_EQ(dropped.size(), 1u) << c.what;
        EXPECT_EQ(dropped[0].now.reconsent, QDate(2026, 11, 19)) << c.what;
        EXPECT_EQ(cell(2, ListColumn::Reconsent).data(Qt::EditRole).toDate(), QDate(2026, 11, 20)) << c.what;
        EXPECT_EQ(model.targetRecords().size(), 1u) << c.what;
        EXPECT_EQ(list.save().kind, SaveOutcome::Saved) << c.what;
        EXPECT_EQ(stored(2, u"tSaiDouiDay"_s), u"2026/11/20"_s) << c.what;
        EXPECT_EQ(stored(1, u"tSaiDouiDay"_s), u"NULL"_s) << c.what;
    }
}

TEST_F(ListSaveTest, EndBeforeStartIsNotSaved) {
    EXPECT_TRUE(edit(2, ListColumn::Reconsent, QDate(2026, 11, 20)));
    EXPECT_TRUE(edit(2, ListColumn::NextEnd, QDate(2026, 11, 1)));
    const SaveOutcome outcome = list.save();
    EXPECT_EQ(outcome.kind, SaveOutcome::Wrong);
    EXPECT_EQ(outcome.record, recordOf(2));
    EXPECT_TRUE(outcome.text.contains(u"利用者2"_s));
    EXPECT_TRUE(model.hasChanges());
    EXPECT_EQ(stored(2, u"tSaiDouiDay"_s), u"NULL"_s);
}

TEST_F(ListSaveTest, AFailingDatabaseKeepsRowsAndEdits) {
    EXPECT_TRUE(edit(1, ListColumn::Reconsent, QDate(2026, 11, 20)));
    EXPECT_TRUE(edit(2, ListColumn::Reconsent, QDate(2026, 11, 20)));
    database.run(u"CREATE TRIGGER refuse BEFORE UPDATE ON RIYOUSHA_DOUI_REC WHEN new.nIDNo = 2"
                 " BEGIN SELECT RAISE(ABORT, 'refused'); END"_s);
    const SaveOutcome outcome = list.save();
    EXPECT_EQ(outcome.kind, SaveOutcome::Failed);
    EXPECT_TRUE(outcome.text.contains(u"refused"_s)) << outcome.text.toStdString();
    EXPECT_EQ(stored(1, u"tSaiDouiDay"_s), u"NULL"_s);
    EXPECT_EQ(model.changedRows().size(), 2u);

    database.run(u"DROP TRIGGER refuse; ALTER TABLE STAFF RENAME TO STAFF_AWAY"_s);
    EXPECT_EQ(list.iSearch(), -1);
    EXPECT_TRUE(list.sErrMsg().contains(u"STAFF"_s)) << list.sErrMsg().toStdString();
    EXPECT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.changedRows().size(), 2u);
    database.run(u"ALTER TABLE STAFF_AWAY RENAME TO STAFF"_s);
    EXPECT_EQ(list.save().kind, SaveOutcome::Saved);
    EXPECT_EQ(stored(2, u"tSaiDouiDay"_s), u"2026/11/20"_s);
}

TEST_F(ListSaveTest, SavedButNotReadAgainIsSaidAndTheNextEditIsKept) {
    asOfAnEarlierProgram();
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET tUpDateTime = '2026/11/20 10:00:00.000', cItiranBikou = '前',"
                 " tSaiDouiDay = '2026/02/30'"_s);
    consent(2, u"2026/12/31"_s, u"iHenkeiFlg = 1, nHenkeiDouiDate = 20260601, tSaiDouiDay = '2026/11/20'"_s);
    found();
    EXPECT_TRUE(tick(2, ListColumn::Received, true, true));
    EXPECT_TRUE(edit(1, ListColumn::Remark, u""_s));
    database.run(u"ALTER TABLE SOUDAN RENAME TO SOUDAN_AWAY"_s);
    const SaveOutcome outcome = list.save();
    EXPECT_EQ(outcome.kind, SaveOutcome::Saved);
    EXPECT_TRUE(outcome.text.contains(u"SOUDAN"_s)) << outcome.text.toStdString();
    EXPECT_EQ(stored(1, u"cItiranBikou"_s), u"NULL"_s);

    // No date in the first row, an answer that has moved in the second: saved once more unread.
    EXPECT_TRUE(edit(1, ListColumn::Remark, u"間"_s));
    EXPECT_TRUE(tick(2, ListColumn::Received, false, true));
    EXPECT_EQ(list.save().kind, SaveOutcome::Saved);
    EXPECT_EQ(stored(1, u"cItiranBikou, tSaiDouiDay"_s), u"間|2026/02/30"_s);
    EXPECT_EQ(stored(2, u"tDouiDayTempHenkei, iGetFlgHenkei"_s, 1), u"2026/11/20|0"_s);

    EXPECT_TRUE(edit(1, ListColumn::Remark, u"後"_s));
    database.run(u"ALTER TABLE SOUDAN_AWAY RENAME TO SOUDAN"_s);
    std::vector<TypedRow> dropped;
    ASSERT_EQ(list.iReread(&dropped), 0);
    EXPECT_TRUE(dropped.empty());
    EXPECT_EQ(list.save().kind, SaveOutcome::Saved);
    EXPECT_EQ(stored(1, u"cItiranBikou"_s), u"後"_s);
}

TEST_F(ListSaveTest, WhatIsNoDateStaysUntilOneIsEntered) {
    asOfAnEarlierProgram();
    for (const QString &time : {u"NULL"_s, u"'2026/11/20 10:00:00.000'"_s}) {
        database.run(u"UPDATE RIYOUSHA_DOUI_REC SET tSaiDouiDay = '2026/02/30', tUpDateTime = "_s + time);
        found();
        EXPECT_TRUE(edit(1, ListColumn::Remark, u"備考"_s + time.left(1)));
        ASSERT_EQ(list.save().kind, SaveOutcome::Saved) << time.toStdString();
        EXPECT_EQ(stored(1, u"tSaiDouiDay"_s), u"2026/02/30"_s);
    }
    EXPECT_TRUE(edit(1, ListColumn::Reconsent, QDate(2026, 11, 20)));
    ASSERT_EQ(list.save().kind, SaveOutcome::Saved);
    EXPECT_EQ(stored(1, u"tSaiDouiDay"_s), u"2026/11/20"_s);
}

TEST_F(ListSaveTest, WhatIsNoDateGoesAlongWithAnAnswerThatMoves) {
    asOfAnEarlierProgram();
    consent(1, u"2026/12/31"_s,
            u"iHenkeiFlg = 1, nHenkeiDouiDate = 20260601, tSaiDouiDay = '2026/11/20',"
            " tSaiDouiKaryoS = '2027/02/30', tSaiDouiKaryoE = '2027/05/31'"_s);
    found();
    EXPECT_TRUE(tick(1, ListColumn::Requested, true, true));
    ASSERT_EQ(list.save().kind, SaveOutcome::Saved);
    EXPECT_EQ(
        stored(1, u"tDouiDayTempHenkei, tdouiKaryoSTempHenkei, tdouiKaryoETempHenkei, tSaiDouiKaryoS"_s, 1),
        u"2026/11/20|2027/02/30|2027/05/31|NULL"_s);
}
