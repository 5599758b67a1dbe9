// What the grid's cells show, what may be edited, narrowing and sorting.

#include "tests/list/list_fixture.h"

#include "consent/rules/list_advisor.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

using namespace Qt::Literals::StringLiterals;

class ListModelTest : public ListTest {
protected:
    QString text(int number, ListColumn column, bool deformity = false) const {
        return cell(number, column, deformity).data().toString();
    }
    QStringList shown() const {
        QStringList names;
        for (int row = 0; row < model.rowCount(); ++row)
            names.append(model.index(row, int(ListColumn::Number)).data().toString());
        return names;
    }
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(ListModelTest, CellsSayWhatTheRowHolds) {
    list.setMethods({{u"郵送"_s, u"持参"_s}});
    patient(1, u"髙﨑 𠮷子"_s, u"ﾀｶｻｷ"_s,
            u"tSyoryoDay = '2020/04/01', cAdress1 = '大阪市', cAdress2 = '北区'"_s);
    consent(1, u"2026/12/05"_s,
            u"iSejutuBui1 = 1, iSejutuBui5 = 1, iOnan = 1, iSendFlg = 1, iDouiIraiType = 2"_s);
    consent(1, u"2026/11/20"_s, u"iHenkeiFlg = 1, nHenkeiDouiDate = 20260601, iDouiShubetsu = 1"_s);
    patient(2, u"空"_s, u"ｶﾗ"_s, u"iSejutsuKubun = 1"_s);
    consent(2, u"2026/12/06"_s, u"tDouiDay = NULL, tDouiKaryoS = NULL, cIsiCd = NULL"_s);
    database.run(u"UPDATE RIYOUSHA SET cName = NULL, cNameKana = NULL WHERE nIDNo = 2"_s);
    found();

    EXPECT_EQ(text(1, ListColumn::Name), u"髙﨑 𠮷子"_s);
    EXPECT_EQ(text(1, ListColumn::Kind), u"マッサ"_s);
    EXPECT_EQ(text(1, ListColumn::Kind, true), u"変形徒手"_s);
    EXPECT_EQ(text(2, ListColumn::Kind), u"鍼灸"_s);
    EXPECT_EQ(text(1, ListColumn::Sent), u"送信済"_s);
    EXPECT_EQ(text(2, ListColumn::Sent), u"未送信"_s);
    EXPECT_EQ(text(1, ListColumn::Procedure, true), u"口頭"_s);
    EXPECT_EQ(text(2, ListColumn::Procedure), u"書面"_s);
    EXPECT_EQ(text(1, ListColumn::Method), u"持参"_s);
    EXPECT_EQ(text(1, ListColumn::Method, true), u"（FAX）"_s) << "the hospital's own way";
    EXPECT_EQ(text(1, ListColumn::Treatment), u"躯幹・左下肢・温罨法"_s);
    EXPECT_EQ(text(1, ListColumn::PlaceAddress), u"大阪市 北区"_s);
    EXPECT_EQ(text(1, ListColumn::Hospital), u"中央病院"_s);
    EXPECT_EQ(text(1, ListColumn::Period), u"2026/06/01～2026/12/05"_s);
    EXPECT_EQ(text(2, ListColumn::Hospital), u""_s);

    // 14 days and one day more, and past.
    EXPECT_EQ(text(1, ListColumn::ConsentEnd), u"▲ 2026/12/05 あと14日"_s);
    EXPECT_EQ(text(2, ListColumn::ConsentEnd), u"2026/12/06"_s);
    EXPECT_EQ(text(1, ListColumn::ConsentEnd, true), u"■ 2026/11/20 期限切れ"_s);
}

TEST_F(ListModelTest, AReconsentDateProposesThePeriodAndTheUserOverrulesIt) {
    patient(1, u"甲"_s, u"ｺｳ"_s);
    consent(1, u"2026/12/31"_s);
    found();
    EXPECT_TRUE(edit(1, ListColumn::Reconsent, QDate(2026, 12, 1)));
    EXPECT_EQ(text(1, ListColumn::NextStart), u"2026/12/02"_s);
    EXPECT_EQ(text(1, ListColumn::NextEnd), u"2026/12/11"_s);
    EXPECT_TRUE(edit(1, ListColumn::NextEnd, QDate(2027, 1, 31)));
    EXPECT_TRUE(edit(1, ListColumn::Reconsent, QDate(2026, 12, 1)));
    EXPECT_EQ(text(1, ListColumn::NextEnd), u"2027/01/31"_s) << "the same date proposes nothing anew";
    EXPECT_TRUE(cell(1, ListColumn::NextEnd).data(ConsentListModel::EditedRole).toBool());
    EXPECT_FALSE(cell(1, ListColumn::Remark).data(ConsentListModel::EditedRole).toBool());
    EXPECT_TRUE(edit(1, ListColumn::Reconsent, QDate()));
    EXPECT_EQ(text(1, ListColumn::NextEnd), u""_s);
    EXPECT_FALSE(model.hasChanges()) << "back to what was read";
    EXPECT_EQ(cell(1, ListColumn::Period).data(Qt::ToolTipRole).toString(), u"running"_s);
}

TEST_F(ListModelTest, HistoryIsARecord) {
    patient(1, u"甲"_s, u"ｺｳ"_s);
    consent(1, u"2026/11/20"_s, u"iNewestFlg = 0"_s);
    list.filter().view = ListView::History;
    found();
    EXPECT_EQ(text(1, ListColumn::ConsentEnd), u"2026/11/20"_s) << "what has been followed is not urgent";
    EXPECT_FALSE(edit(1, ListColumn::Remark, u"x"_s));
    EXPECT_FALSE(tick(1, ListColumn::Received, true));
    EXPECT_TRUE(tick(1, ListColumn::Target, true));
}

TEST_F(ListModelTest, NarrowsByNameAndKanaWhateverTheirWriting) {
    const QStringList kana{u"やまだ"_s, u"ヤマモト"_s, u"ﾔﾏﾀﾞ"_s, u"はば"_s, u"ﾊﾊ"_s};
    for (int i = 0; i < kana.size(); ++i) {
        patient(i + 1, i == 0 ? u"山田Ａ"_s : u"人%1"_s.arg(i), kana[i]);
        consent(i + 1, u"2026/12/31"_s);
    }
    list.filter().order = ListOrder::Patient;
    found();
    tick(2, ListColumn::Target, true);
    const auto narrowed = [&](const QString &name, const QString &by) {
        model.narrow(name, by);
        return shown();
    };
    EXPECT_EQ(narrowed({}, u"ﾔﾏﾀﾞ"_s), QStringList({u"1"_s, u"3"_s}));
    EXPECT_EQ(narrowed({}, u"ヤマ"_s), QStringList({u"1"_s, u"2"_s, u"3"_s}));
    EXPECT_EQ(narrowed({}, u"ﾊﾊﾞ"_s), QStringList({u"4"_s})) << "voiced marks are letters of their own";
    EXPECT_EQ(narrowed(u"山田a"_s, u"やま"_s), QStringList({u"1"_s}));
    EXPECT_EQ(narrowed(u" 山　田Ａ"_s, {}), QStringList({u"1"_s})) << "blanks are ignored";
    model.tick(model.shownRecords(), ListColumn::Target, true);
    EXPECT_EQ(narrowed({}, {}).size(), 5);
    EXPECT_EQ(model.targetRecords().size(), 2u) << "ticking all touches shown rows only";
}

TEST_F(ListModelTest, SortsByColumnAndBack) {
    const QStringList kana{u"ﾔﾏﾀﾞ"_s, u"あ"_s, u"イ"_s};
    for (int i = 0; i < kana.size(); ++i) {
        patient(i + 9, u"人%1"_s.arg(i), kana[i]);
        consent(i + 9, u"2026/12/%1"_s.arg(31 - i));
    }
    list.filter().order = ListOrder::Patient;
    found();
    const QPersistentModelIndex current = cell(10, ListColumn::Name);
    model.sort(int(ListColumn::Name), Qt::AscendingOrder);
    EXPECT_EQ(shown(), QStringList({u"10"_s, u"11"_s, u"9"_s}));
    EXPECT_EQ(current.row(), 0);
    model.sort(int(ListColumn::Number), Qt::DescendingOrder);
    EXPECT_EQ(shown(), QStringList({u"11"_s, u"10"_s, u"9"_s})) << "by number, not by its digits";
    model.sort(int(ListColumn::ConsentEnd), Qt::AscendingOrder);
    EXPECT_EQ(shown(), QStringList({u"11"_s, u"10"_s, u"9"_s}));
    model.sort(-1, Qt::AscendingOrder);
    EXPECT_EQ(shown(), QStringList({u"9"_s, u"10"_s, u"11"_s}));
}

TEST_F(ListModelTest, LinksProposeForReceivedAndForDeformityRows) {
    patient(1, u"甲"_s, u"ｺｳ"_s);
    consent(1, u"2026/12/31"_s);
    consent(1, u"2026/12/31"_s, u"iHenkeiFlg = 1, nHenkeiDouiDate = 20260601"_s);
    patient(2, u"乙"_s, u"ｵﾂ"_s);
    consent(2, u"2026/12/31"_s, u"iHenkeiFlg = 1, nHenkeiDouiDate = 20260601"_s);
    found();
    EXPECT_TRUE(tick(1, ListColumn::Received, true));
    EXPECT_EQ(text(1, ListColumn::Reconsent), u""_s);

    tick(1, ListColumn::Received, false);
    advisor.proposedDay = QDate(2026, 12, 1);
    advisor.follows = true;
    EXPECT_TRUE(tick(1, ListColumn::Received, true));
    EXPECT_EQ(text(1, ListColumn::Reconsent), u"2026/12/01"_s);
    EXPECT_EQ(text(1, ListColumn::NextEnd), u"2026/12/11"_s);
    EXPECT_EQ(text(1, ListColumn::Reconsent, true), u"2026/12/01"_s);
    EXPECT_EQ(text(2, ListColumn::Reconsent, true), u""_s) << "another patient's row follows nobody";
    model.dropChanges();
    model.tick(model.shownRecords(), ListColumn::Received, true);
    EXPECT_EQ(text(1, ListColumn::Reconsent), u"2026/12/01"_s) << "ticking all is ticking each";
    EXPECT_TRUE(edit(1, ListColumn::Reconsent, QDate(2026, 12, 3), true));
    EXPECT_EQ(text(1, ListColumn::Reconsent), u"2026/12/01"_s) << "a deformity row leads no other";
}

TEST_F(ListModelTest, WithoutTheSettingsNoPeriodIsGuessed) {
    patient(1, u"甲"_s, u"ｺｳ"_s);
    consent(1, u"2026/12/31"_s);
    database.run(u"INSERT INTO DOUIKIROKU (iKyotenCd, iKyotenEb, nIDNo, tDouiYM, iDouiNo, iDouiKikan1,"
                 " iKikanCalcType) VALUES (1, 1, 1, '2026/11', 1, 1, 2)"_s);
    ListAdvisor real(folders, {1, 1}, database.db);
    ConsentList byRules(environment, database.db, model, real);
    ASSERT_EQ(byRules.iSearch(), 0);
    QSignalSpy troubled(&model, &ConsentListModel::troubled);
    database.run(u"ALTER TABLE DOUIKIROKU RENAME TO AWAY"_s);
    EXPECT_TRUE(edit(1, ListColumn::Reconsent, QDate(2026, 12, 10)));
    EXPECT_EQ(text(1, ListColumn::NextEnd), u""_s);
    ASSERT_EQ(troubled.count(), 1);
    EXPECT_TRUE(troubled[0][0].toString().contains(u"DOUIKIROKU"_s));

    database.run(u"ALTER TABLE AWAY RENAME TO DOUIKIROKU"_s);
    EXPECT_TRUE(edit(1, ListColumn::Reconsent, QDate(2026, 12, 11)));
    EXPECT_EQ(text(1, ListColumn::NextStart), u"2027/01/01"_s);
    EXPECT_EQ(text(1, ListColumn::NextEnd), u"2027/01/31"_s) << "one month, in whole months";
}

// Patient 1 has a massage row with a typed period and no date, and a deformity row that is answered.
TEST_F(ListModelTest, ATickAloneChangesTheTickAlone) {
    patient(1, u"甲"_s, u"ｺｳ"_s);
    consent(1, u"2026/12/31"_s, u"tSaiDouiKaryoS = '2027/01/01', tSaiDouiKaryoE = '2027/05/31'"_s);
    consent(1, u"2026/12/31"_s,
            u"iHenkeiFlg = 1, nHenkeiDouiDate = 20260601, tDouiDayTempHenkei = '2026/11/18',"
            " tDouiKaryoSTempHenkei = '2027/01/01', tDouiKaryoETempHenkei = '2027/01/31'"_s);
    patient(2, u"乙"_s, u"ｵﾂ"_s);
    consent(2, u"2026/12/31"_s, u"iHenkeiFlg = 1, nHenkeiDouiDate = 20260601"_s);
    const auto triple = [&](int number, bool deformity) {
        return QStringList{text(number, ListColumn::Reconsent, deformity),
                           text(number, ListColumn::NextStart, deformity),
                           text(number, ListColumn::NextEnd, deformity)};
    };
    const QStringList answered{u"2026/11/18"_s, u"2027/01/01"_s, u"2027/01/31"_s};
    const QStringList nothing{u""_s, u""_s, u""_s};
    for (const bool all : {false, true}) {
        found();
        advisor.follows = true;
        advisor.proposedDay = QDate();
        const auto ticked = [&] {
            all ? model.tick(model.shownRecords(), ListColumn::Received, true)
                : void(tick(1, ListColumn::Received, true));
        };
        ticked();
        EXPECT_EQ(triple(1, false), QStringList({u""_s, u"2027/01/01"_s, u"2027/05/31"_s})) << all;
        EXPECT_EQ(triple(1, true), answered) << all;
        tick(1, ListColumn::Received, false);
        advisor.proposedDay = QDate(2026, 12, 1);
        ticked();
        EXPECT_EQ(triple(1, false), QStringList({u"2026/12/01"_s, u"2027/01/01"_s, u"2027/05/31"_s})) << all;
        EXPECT_EQ(triple(1, true), answered) << all;
        EXPECT_EQ(triple(2, true), nothing) << "another patient's: " << all;
    }
}

TEST_F(ListModelTest, DeformityRowsFollowUntilTheyAreAnswered) {
    patient(1, u"甲"_s, u"ｺｳ"_s);
    consent(1, u"2026/12/31"_s);
    consent(1, u"2026/12/31"_s, u"iHenkeiFlg = 1, nHenkeiDouiDate = 20260601"_s);
    found();
    advisor.follows = true;
    const auto follower = [&] { return text(1, ListColumn::Reconsent, true); };
    EXPECT_TRUE(edit(1, ListColumn::Reconsent, QDate(2026, 12, 1)));
    EXPECT_TRUE(edit(1, ListColumn::Reconsent, QDate(2026, 12, 2)));
    EXPECT_EQ(follower(), u"2026/12/02"_s) << "a corrected date is followed too";
    EXPECT_TRUE(edit(1, ListColumn::Reconsent, QDate()));
    EXPECT_EQ(follower(), u""_s);
    EXPECT_FALSE(model.hasChanges());
    EXPECT_TRUE(edit(1, ListColumn::Reconsent, QDate(2026, 11, 30), true));
    EXPECT_TRUE(edit(1, ListColumn::Reconsent, QDate(2026, 12, 3)));
    EXPECT_EQ(follower(), u"2026/11/30"_s) << "an answer of its own";

    // A period that was typed into the row before the date came is nobody else's to change.
    model.dropChanges();
    EXPECT_TRUE(edit(1, ListColumn::NextEnd, QDate(2027, 3, 31), true));
    for (const QDate &date : {QDate(2026, 12, 1), QDate()}) {
        EXPECT_TRUE(edit(1, ListColumn::Reconsent, date));
        EXPECT_EQ(follower().isEmpty(), date.isNull());
        EXPECT_EQ(text(1, ListColumn::NextEnd, true), u"2027/03/31"_s);
    }
}

TEST_F(ListModelTest, TroubleIsToldByTheEditThatMetItOnly) {
    patient(1, u"甲"_s, u"ｺｳ"_s);
    consent(1, u"2026/12/31"_s);
    found();
    QSignalSpy troubled(&model, &ConsentListModel::troubled);
    advisor.said = u"読めません"_s;
    EXPECT_TRUE(edit(1, ListColumn::Reconsent, QDate(2026, 12, 1)));
    EXPECT_EQ(troubled.count(), 1);
    EXPECT_TRUE(edit(1, ListColumn::Remark, u"x"_s));
    EXPECT_TRUE(tick(1, ListColumn::Contact, true));
    model.tick(model.shownRecords(), ListColumn::Target, true);
    EXPECT_EQ(troubled.count(), 1);
    advisor.said.clear();
    EXPECT_TRUE(edit(1, ListColumn::Reconsent, QDate(2026, 12, 2)));
    advisor.said = u"読めません"_s;
    EXPECT_TRUE(edit(1, ListColumn::Reconsent, QDate(2026, 12, 3)));
    EXPECT_EQ(troubled.count(), 2);
    EXPECT_EQ(text(1, ListColumn::NextEnd), u"2026/12/12"_s) << "a period is not lost to the trouble";
}

TEST_F(ListModelTest, TroubleWithOneOfManyRowsIsTold) {
    for (const int number : {1, 2, 3}) {
        patient(number, u"甲"_s, u"ｺｳ"_s);
        consent(number, u"2026/12/31"_s);
    }
    found();
    QSignalSpy troubled(&model, &ConsentListModel::troubled);
    advisor.said = u"読めません"_s;
    advisor.troubled = 2;
    advisor.proposedDay = QDate(2026, 12, 1);
    model.tick(model.shownRecords(), ListColumn::Received, true);
    EXPECT_EQ(troubled.count(), 1);
    EXPECT_EQ(text(3, ListColumn::NextEnd), u"2026/12/11"_s);
}

TEST_F(ListModelTest, TheLettersOfManyPatientsAreReadAtOnce) {
    constexpr int many = 301;
    for (int number = 1; number <= many; ++number) {
        patient(number, u"甲"_s, u"ｺｳ"_s);
        consent(number, u"2026/12/31"_s);
    }
    found();
    ASSERT_EQ(list.iReadLetters(many), 0) << list.sErrMsg().toStdString();
    for (const int number : {1, many})
        EXPECT_EQ(text(number, ListColumn::Letter), u"マッサージ継続"_s);
}
