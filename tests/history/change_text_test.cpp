#include "consent/entry/entry.h"
#include "consent/entry/history.h"
#include "history/screens/change_history.h"
#include "tests/history/history_fixture.h"

namespace {

class ChangeTextTest : public HistoryTest {
protected:
    ConsentRowKey row(int day) const { return {{1, 1, 7}, day, 0, 0}; }

    std::vector<ChangeText> read(HistoryScope scope, const LogQuestion &question = {},
                                 const ConsentRowKey &of = {{1, 1, 7}, 20260401, 0, 0}) {
        ChangeHistory history(database.db, folders, {1, 1}, of);
        const Result<> read = history.read(scope, question);
        EXPECT_TRUE(read) << read.reason().toStdString();
        return history.texts();
    }
    QStringList summaries(HistoryScope scope, const LogQuestion &question = {}) {
        QStringList texts;
        for (const ChangeText &text : read(scope, question))
            texts += text.summary;
        return texts;
    }
    /// The PCs' numbers of the records found, newest first.
    QString found(const LogQuestion &question) {
        QString numbers;
        for (const ChangeText &text : read(HistoryScope::All, question))
            numbers += text.pc.mid(2);
        return numbers;
    }
};

} // namespace

TEST_F(ChangeTextTest, EachChangeReadsAsTheOfficeSpeaksOfIt) {
    const auto list = u"RIYOUSHA_DOUI_REC"_s, doctor = u"DOCTOR"_s, forms = u"RIYOUSHA_SUB"_s,
               periods = u"DOUIKIROKU"_s;
    const struct {
        QString table, changes, text;
    } cases[] = {
        {list, u"\"iOutputFlg\":[\"0\",\"1\"],\"tSaiDouiDay\":[null,\"2026-04-01 00:00:00.000\"]"_s,
         u"再同意日：未入力 → 2026/04/01、依頼：未 → 済"_s},
        {list, u"\"cIsiCd\":[\"1\",\"2\"],\"cPcName\":[\"A\",\"B\"]"_s, u"医師：1 阿部 → 2 馬場"_s},
        {list, u"\"iDouiIraiType\":[\"0\",\"2\"]"_s, u"依頼方法：未入力 → FAX"_s},
        {list, u"\"iDouiShubetsu\":[null,\"1\"],\"nDouiUpMonth\":[\"3\",\"6\"]"_s,
         u"月数：3か月 → 6か月、手順：書面 → 口頭"_s},
        {list, u"\"iKousyukuHidarihiza\":[null,\"1\"]"_s, u"左膝の拘縮：なし → あり"_s},
        {list, u"\"cItiranBikou\":[null,\"\"],\"iGetFlg\":[null,\"0\"]"_s,
         u"表示する項目の変更はありません"_s},
        {list, u"\"tDouiDay\":[\"いつか\",null],\"cNew\":[\"1\",\"2\"]"_s,
         u"同意日：いつか → 未入力、cNew：1 → 2"_s},
        {doctor, u"\"cNameKana\":[\"アベ\",\"アベイ\"]"_s, u"医師名のカナ：アベ → アベイ"_s},
        {forms, u"\"iSaiDouiON\":[\"0\",\"1\"],\"iIsiCd2\":[null,\"2\"]"_s,
         u"医師2：未入力 → 2 馬場、再同意書を個別に設定する：なし → あり"_s},
        {periods, u"\"iKikanCalcType\":[null,\"2\"]"_s, u"期間：未入力 → 翌月1日から"_s},
        {u"UNKNOWN"_s, u"\"x\":[null,\"1\"]"_s, u"x：未入力 → 1"_s},
    };
    QStringList expected;
    for (const auto &it : cases) {
        record({.changes = u'{' + it.changes + u'}', .table = it.table});
        expected.prepend(it.text);
    }
    EXPECT_EQ(summaries(HistoryScope::All), expected);
}

TEST_F(ChangeTextTest, ADamagedRecordIsShownAsItStandsAndHidesNoOther) {
    for (const QString &damaged :
         {u"kaputt"_s, u""_s, u"[1]"_s, u"{\"iGetFlg\":\"1\"}"_s, u"{\"iGetFlg\":[{},7]}"_s})
        record({.changes = damaged, .kind = 9, .key = u"?"_s});
    record({.changes = u"{\"iGetFlg\":[\"0\",\"1\"]}"_s});
    const QStringList texts = summaries(HistoryScope::Patient);
    ASSERT_EQ(texts.size(), 6);
    EXPECT_EQ(texts[0], u"受領：未 → 済"_s);
    EXPECT_EQ(texts[2], u"変更内容を読めません：{\"iGetFlg\":\"1\"}"_s);
    EXPECT_EQ(texts[5], u"変更内容を読めません：kaputt"_s);
}

TEST_F(ChangeTextTest, AConsentIsFollowedToTheDatesThatItHadBefore) {
    record({.changes = u"{\"tDouiDay\":[null,\"2026/03/01\"],\"cDouiByoumei\":[null,\"脳梗塞\"],"
                       "\"tDouiKaryoS\":[null,\"2026/03/02\"],\"tDouiKaryoE\":[null,\"2026/08/31\"],"
                       "\"iGetFlg\":[null,\"0\"]}"_s,
            .kind = 1,
            .key = u"20260301/0/0"_s});
    record({.changes = u"{\"iGetFlg\":[\"0\",\"1\"]}"_s}); // of one that had the date before
    record({.changes = u"{\"tDouiDay\":[\"2026/02/01\",null]}"_s, .kind = 3, .key = u"20260201/0/0"_s});
    record({.changes = u"{\"tDouiDay\":[\"2026/03/01\",null],\"cDouiByoumei\":[\"脳梗塞\",null]}"_s,
            .kind = 3,
            .key = u"20260301/0/0"_s,
            .write = u"m"_s});
    record({.changes = u"{\"tDouiDay\":[null,\"2026/04/01\"],\"cDouiByoumei\":[null,\"脳梗塞\"]}"_s,
            .kind = 1,
            .write = u"m"_s});
    EXPECT_EQ(summaries(HistoryScope::Row),
              (QStringList{u"記録：同意 2026/03/01 → 同意 2026/04/01、同意日：2026/03/01 → 2026/04/01"_s,
                           u"同意日 2026/03/01、要加療期間 2026/03/02～2026/08/31、傷病名 脳梗塞"_s}));
    const std::vector<ChangeText> all = read(HistoryScope::Patient);
    ASSERT_EQ(all.size(), 4u);
    EXPECT_EQ(all[1].kind + all[1].subject, u"削除7 山田　同意 2026/02/01"_s);
}

// What the program itself writes, from the entry's screen to the history's.
TEST_F(ChangeTextTest, AConsentEnteredUnderAnotherDateIsOneChangeAndItsDeletionIsFound) {
    database.run(u"INSERT INTO RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg,"
                 " nHenkeiDouiDate, tDouiDay, tDouiKaryoS, tDouiKaryoE, cDouiByoumei, iSejutuBui2) VALUES"
                 " (1, 1, 7, 20260301, 0, 0, '2026/03/01', '2026/03/01', '2026/08/31', '脳梗塞', 1)"_s);
    ConsentEntry entry(environment, database.db);
    ASSERT_EQ(entry.iOpen(row(20260301)), 0);
    entry.enter(u"tDouiDay", QDate(2026, 4, 1));
    entry.enter(u"cDouiByoumei", u"脳出血"_s);
    const RowOutcome saved = entry.save();
    ASSERT_EQ(saved.kind, RowOutcome::Done) << saved.text.toStdString();
    const std::vector<ChangeText> texts = read(HistoryScope::Row);
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_TRUE(texts[0].summary.startsWith(
        u"記録：同意 2026/03/01 → 同意 2026/04/01、同意日：2026/03/01 → 2026/04/01、"_s))
        << texts[0].summary.toStdString();
    EXPECT_TRUE(texts[0].summary.contains(u"、傷病名：脳梗塞 → 脳出血"_s)) << texts[0].summary.toStdString();

    ConsentHistory consents(database.db);
    ASSERT_EQ(consents.iRead({1, 1, 7}), 0);
    ASSERT_EQ(consents.erase(0).kind, RowOutcome::Done);
    EXPECT_EQ(read(HistoryScope::Patient)[0].kind, u"削除"_s);
}

TEST_F(ChangeTextTest, EachConditionNarrowsAndTheBranchAlways) {
    record({.time = u"2026/11/01 23:59:59"_s, .operation = u"同意更新"_s, .batch = u"12"_s});
    record({.patient = u"8"_s, .time = u"2026/11/02 00:00:00"_s});
    record({.table = u"DOCTOR"_s,
            .patient = u"Null"_s,
            .time = u"2026/11/03 12:00:00"_s,
            .branch = u"Null, Null"_s});
    record({.time = u"2026/11/04 12:00:00"_s, .branch = u"2, 1"_s});
    EXPECT_EQ(found({}), u"321"_s);
    EXPECT_EQ(found({.from = QDate(2026, 11, 2)}), u"32"_s);
    EXPECT_EQ(found({.to = QDate(2026, 11, 2)}), u"21"_s);
    EXPECT_EQ(found({.pc = u"c2"_s}), u"2"_s);
    EXPECT_EQ(found({.operation = u"更新"_s}), u"1"_s);
    EXPECT_EQ(found({.patient = u"８"_s}), u"2"_s);
    EXPECT_EQ(found({.patient = u"やま"_s}), u"1"_s);
    EXPECT_EQ(found({.patient = u"鈴木 花"_s}), u"2"_s);
    EXPECT_EQ(found({.batch = 12}), u"1"_s);
}

TEST_F(ChangeTextTest, NoColumnOfAConsentIsCalledByItsName) {
    const QStringList told{u"iKyotenCd"_s,  u"iKyotenEb"_s,       u"nIDNo"_s,   u"nDate"_s,
                           u"iHenkeiFlg"_s, u"nHenkeiDouiDate"_s, u"cPcName"_s, u"tUpDateTime"_s};
    for (const SuiteColumn &column : suiteColumns(u"RIYOUSHA_DOUI_REC"_s))
        EXPECT_NE(told.contains(column.name), !consentCaption(column.name).isEmpty())
            << column.name.toStdString();
}
