#include "consent/record/renewal.h"

#include "tests/consent/consent_rows.h"
#include "tests/support/failing_provider.h"
#include "tests/support/test_environment.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const PatientKey patient{1, 2, 77};
const ConsentRowKey massage{patient, 20251120, 0, 0};
const ConsentRowKey massageRenewed{patient, 20260520, 0, 0};
const ConsentRowKey deformity{patient, 20251121, 1, 20251122};

QMap<QString, QString> with(QMap<QString, QString> literals, const QMap<QString, QString> &more) {
    literals.insert(more);
    return literals;
}

const QMap<QString, QString> current = {{u"iNewestFlg"_s, u"1"_s}, {u"tDouiDay"_s, u"'2025/11/20'"_s}};

class Renewal : public testing::Test {
protected:
    void insertMassage(const QMap<QString, QString> &literals = {}) {
        rows.insert(massage, with(with(current, answered(u"2026/05/20"_s, u"2026/06/01"_s, u"2026/11/30"_s)),
                                  literals));
    }
    void insertDeformity(const QMap<QString, QString> &literals = {}) {
        rows.insert(
            deformity,
            with(with(current, answered(u"2026/05/21"_s, u"2026/06/02"_s, u"2026/06/30"_s, true)), literals));
    }

    // Checks a renewed row column by column against its source as it was.
    void expectCopied(const ConsentRows::Row &source, const ConsentRows::Row &renewed,
                      const QMap<QString, QString> &changed) {
        ASSERT_FALSE(renewed.isEmpty());
        for (auto cell = source.begin(); cell != source.end(); ++cell) {
            if (cell.key() == u"tUpDateTime"_s)
                EXPECT_NE(renewed[cell.key()], cell.value());
            else
                EXPECT_EQ(renewed[cell.key()], changed.value(cell.key(), cell.value()))
                    << cell.key().toStdString();
        }
    }
    static QMap<QString, QString> withoutMarks() {
        QMap<QString, QString> changed;
        for (const QString &flag : {u"iOutputFlg"_s, u"iGetFlg"_s, u"iOutputFlgHenkei"_s, u"iGetFlgHenkei"_s,
                                    u"iDouiHospOutFlg"_s, u"iDouiIsiOutFlg"_s})
            changed[flag] = u"0"_s;
        return changed;
    }
    QMap<QString, QString> unmarked() {
        QMap<QString, QString> changed = withoutMarks();
        changed[u"cPcName"_s] = database.db.csGetComputerName();
        changed[u"iNewestFlg"_s] = u"1"_s;
        for (const QString &empty : {u"tShinsatsuDay"_s, u"cMasByoumei"_s, u"tSaiDouiDay"_s,
                                     u"tSaiDouiKaryoS"_s, u"tSaiDouiKaryoE"_s, u"tDouiDayTempHenkei"_s,
                                     u"tDouiKaryoSTempHenkei"_s, u"tDouiKaryoETempHenkei"_s})
            changed[empty] = u"NULL"_s;
        return changed;
    }

    TestDatabase database;
    ConsentRows rows{database};
    ConsentRenewal renewal{database.db};
};

} // namespace

TEST_F(Renewal, MassageRowIsCopiedWithItsAnswerAsConsent) {
    insertMassage({{u"cItiranBikou"_s, u"'%1'"_s.arg(QString(4000, u'備'))}});
    const ConsentRows::Row before = rows.read(massage);
    ASSERT_EQ(renewal.iDataNewDouiMake(patient, massage.nDate, {2026, 5, 20}), 0)
        << renewal.sErrMsg().toStdString();

    expectCopied(before, rows.read(massageRenewed),
                 with(unmarked(), {{u"nDate"_s, u"20260520"_s},
                                   {u"tDouiDay"_s, u"2026/05/20"_s},
                                   {u"tDouiKaryoS"_s, u"2026/06/01"_s},
                                   {u"tDouiKaryoE"_s, u"2026/11/30"_s}}));
    // The old row keeps everything but its mark.
    expectCopied(before, rows.read(massage),
                 {{u"iNewestFlg"_s, u"0"_s}, {u"cPcName"_s, database.db.csGetComputerName()}});
    EXPECT_EQ(rows.newest(patient), QStringList{u"20260520/0/0"_s});
}

TEST_F(Renewal, DeformityRowLeavesRequestMethodAndRemarkBehind) {
    insertDeformity();
    const ConsentRows::Row before = rows.read(deformity);
    ASSERT_EQ(renewal.iDataNewHenkeiMake(deformity, {2026, 5, 21}, 20260522), 0)
        << renewal.sErrMsg().toStdString();
    expectCopied(before, rows.read({patient, 20260521, 1, 20260522}),
                 with(unmarked(), {{u"nDate"_s, u"20260521"_s},
                                   {u"nHenkeiDouiDate"_s, u"20260522"_s},
                                   {u"tDouiDay"_s, u"2026/05/21"_s},
                                   {u"tDouiKaryoS"_s, u"2026/06/02"_s},
                                   {u"tDouiKaryoE"_s, u"2026/06/30"_s},
                                   {u"cKobetuDouiIrai"_s, u"NULL"_s},
                                   {u"cItiranBikou"_s, u"NULL"_s},
                                   {u"iDouiIraiType"_s, u"NULL"_s}}));
    EXPECT_EQ(rows.newest(patient), QStringList{u"20260521/1/20260522"_s});
}

TEST_F(Renewal, DeformityRowWithoutRequestAnswerTakesTheReConsentFields) {
    insertDeformity(with(answered({}, u"2026/06/02"_s, u"2026/06/30"_s, true),
                         answered(u"2026/05/25"_s, u"2026/06/03"_s, u"2026/07/31"_s)));
    ASSERT_EQ(renewal.iDataNewHenkeiMake(deformity, {2026, 5, 25}, 20260525), 0);
    const ConsentRows::Row renewed = rows.read({patient, 20260525, 1, 20260525});
    EXPECT_EQ(renewed[u"tDouiDay"_s], u"2026/05/25"_s);
    EXPECT_EQ(renewed[u"tDouiKaryoE"_s], u"2026/07/31"_s);
}

TEST_F(Renewal, KindsOfOnePatientDoNotTouchEachOther) {
    insertMassage();
    insertDeformity();
    rows.insert({patient, 20260520, 1, 20260101}, {{u"iNewestFlg"_s, u"0"_s}});
    rows.insert({{1, 2, 78}, 20260520, 0, 0}, {{u"iNewestFlg"_s, u"0"_s}});
    const ConsentRows::Row other = rows.read({patient, 20260520, 1, 20260101});
    const ConsentRows::Row stranger = rows.read({{1, 2, 78}, 20260520, 0, 0});
    ASSERT_EQ(renewal.iDataNewDouiMake(patient, massage.nDate, {2026, 5, 20}), 0);
    EXPECT_EQ(rows.read({{1, 2, 78}, 20260520, 0, 0}), stranger);
    // Of the other kind only the mark moves, to its latest row.
    EXPECT_EQ(rows.newest(patient), (QStringList{u"20260520/0/0"_s, u"20260520/1/20260101"_s}));
    EXPECT_EQ(rows.read({patient, 20260520, 1, 20260101})[u"cItiranBikou"_s], other[u"cItiranBikou"_s]);
}

TEST_F(Renewal, RowOfTheNewKeyIsReplacedWhole) {
    insertMassage();
    rows.insert(massageRenewed,
                {{u"cItiranBikou"_s, u"'former'"_s}, {u"tShinsatsuDay"_s, u"'2026/05/19'"_s}});
    ASSERT_EQ(renewal.iDataNewDouiMake(patient, massage.nDate, {2026, 5, 20}), 0);
    const ConsentRows::Row renewed = rows.read(massageRenewed);
    EXPECT_EQ(renewed[u"cItiranBikou"_s], rows.read(massage)[u"cItiranBikou"_s]);
    EXPECT_EQ(renewed[u"tShinsatsuDay"_s], u"NULL"_s);
    EXPECT_EQ(rows.all().size(), 2);
}

TEST_F(Renewal, WhatCannotBeRenewedIsRefusedAndNothingChanges) {
    const QString notLater = u"再同意日が同意日（%1）より後ではないため、更新できません。"_s;
    const QString notAfterSource =
        u"再同意日が更新元の同意の日付（2025/11/20）以前のため、更新できません。"_s;
    const struct {
        QMap<QString, QString> literals;
        QString message;
        QDate newDate{2026, 5, 20};
    } cases[] = {
        {{{u"tSaiDouiDay"_s, u"NULL"_s}}, u"再同意日が入力されていません。"_s},
        {{{u"tSaiDouiDay"_s, u"'2026/02/30'"_s}}, u"再同意日が入力されていません。"_s},
        {{}, u"再同意日が入力されていません。"_s, QDate()},
        {{{u"tSaiDouiKaryoS"_s, u"NULL"_s}}, u"要加療期間が入力されていません。"_s},
        {{{u"tSaiDouiKaryoE"_s, u"NULL"_s}}, u"要加療期間が入力されていません。"_s},
        {{{u"tSaiDouiKaryoE"_s, u"'2026/05/31'"_s}}, u"要加療期間の終了日が開始日より前になっています。"_s},
        {{{u"tSaiDouiDay"_s, u"'2025/11/20'"_s}}, notLater.arg(u"2025/11/20"_s), {2025, 11, 20}},
        {{{u"tSaiDouiDay"_s, u"'2025/11/20'"_s}}, notLater.arg(u"2025/11/20"_s)},
        {{{u"tDouiDay"_s, u"'2026/05/20'"_s}}, notLater.arg(u"2026/05/20"_s)},
        // The key equals the source's own, or lies before it, though the consent date does not tell.
        {{{u"tDouiDay"_s, u"NULL"_s}}, notAfterSource, {2025, 11, 20}},
        {{{u"tDouiDay"_s, u"'2025/10/01'"_s}}, notAfterSource, {2025, 11, 19}},
    };
    for (const auto &c : cases) {
        database.run(u"DELETE FROM RIYOUSHA_DOUI_REC"_s);
        insertMassage(c.literals);
        rows.insert(massageRenewed);
        const QStringList before = rows.all();
        EXPECT_EQ(renewal.iDataNewDouiMake(patient, massage.nDate, c.newDate), -1);
        EXPECT_TRUE(renewal.refused());
        EXPECT_EQ(renewal.sErrMsg(), c.message);
        EXPECT_EQ(rows.all(), before);
    }
}

TEST_F(Renewal, DeformityKeyEqualToTheSourcesIsRefused) {
    insertDeformity({{u"tDouiDay"_s, u"NULL"_s}});
    const QStringList before = rows.all();
    EXPECT_EQ(renewal.iDataNewHenkeiMake(deformity, {2025, 11, 21}, 20251122), -1);
    EXPECT_EQ(rows.all(), before);
    // Under one nDate there may be several.
    EXPECT_EQ(renewal.iDataNewHenkeiMake(deformity, {2025, 11, 21}, 20260521), 0);
    EXPECT_EQ(rows.all().size(), 2);
}

TEST_F(Renewal, SourceThatIsGoneIsNamedAndTheTargetStays) {
    rows.insert(massageRenewed);
    const QStringList before = rows.all();
    const QString gone = u"RIYOUSHA_DOUI_REC元データ取得時にエラーが発生しました。"_s;
    EXPECT_EQ(renewal.iDataNewDouiMake(patient, massage.nDate, {2026, 5, 20}), -1);
    EXPECT_EQ(renewal.sErrMsg(), gone);
    EXPECT_EQ(renewal.iDataNewHenkeiMake(deformity, {2026, 5, 20}, 20260520), -1);
    EXPECT_EQ(renewal.sErrMsg(), gone);
    EXPECT_EQ(renewal.iDataHenkeiDouiMake(patient, massage.nDate, {{2026, 6, 1}, {2026, 6, 30}}), -1);
    EXPECT_EQ(renewal.sErrMsg(), gone);
    EXPECT_EQ(rows.all(), before);
}

TEST_F(Renewal, TwoRowsOfOneDateAreRefused) {
    insertMassage();
    rows.insert({patient, massage.nDate, 0, 5}, answered(u"2026/05/20"_s, u"2026/06/01"_s, u"2026/11/30"_s));
    const QStringList before = rows.all();
    EXPECT_EQ(renewal.iDataNewDouiMake(patient, massage.nDate, {2026, 5, 20}), -1);
    EXPECT_TRUE(renewal.refused());
    EXPECT_EQ(rows.all(), before);
}

TEST_F(Renewal, RowThatAColleagueRenewedOrChangedIsRefused) {
    insertMassage();
    const RenewalRow seen{massage, {}, {2025, 11, 20}, {{2026, 5, 20}, {{2026, 6, 1}, {2026, 11, 30}}}, true};
    cT_ADODB colleague;
    ASSERT_EQ(colleague.iInit(database.connectionString()), 0);
    ASSERT_EQ(colleague.iConnect(), 0);
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET tSaiDouiKaryoE = '2026/10/31'"_s);
    EXPECT_EQ(renewal.renew(seen), -1);
    EXPECT_EQ(renewal.sErrMsg(), u"他のＰＣで再同意の内容が変更されています。一覧を読み直してください。"_s);

    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET tSaiDouiKaryoE = '2026/11/30'"_s);
    ASSERT_EQ(ConsentRenewal(colleague).renew(seen), 0);
    // What the colleague has entered since on the new row must stay.
    database.run(u"UPDATE RIYOUSHA_DOUI_REC SET cItiranBikou = 'later' WHERE nDate = 20260520"_s);
    const QStringList before = rows.all();
    EXPECT_EQ(renewal.renew(seen), -1);
    EXPECT_TRUE(renewal.refused());
    EXPECT_EQ(renewal.sErrMsg(), u"この同意は、すでに新しい同意に更新されています。"_s);
    // The same from the history, where the old row still holds its answer.
    RenewalRow fromHistory = seen;
    fromHistory.newest = false;
    EXPECT_EQ(renewal.renew(fromHistory), -1);
    EXPECT_EQ(renewal.sErrMsg(), u"この同意は、すでに新しい同意に更新されています。"_s);
    EXPECT_EQ(rows.all(), before);
}

TEST_F(Renewal, RestartClearsTheSixMarksAndSetsThePeriod) {
    insertMassage();
    const ConsentRows::Row before = rows.read(massage);
    ASSERT_EQ(renewal.iDataHenkeiDouiMake(patient, massage.nDate, {{2026, 6, 1}, {2026, 6, 30}}), 0);
    expectCopied(before, rows.read(massage),
                 with(withoutMarks(), {{u"tHenkeSday"_s, u"2026/06/01"_s},
                                       {u"tHenKeEday"_s, u"2026/06/30"_s},
                                       {u"cPcName"_s, database.db.csGetComputerName()}}));

    const QStringList restarted = rows.all();
    EXPECT_EQ(renewal.iDataHenkeiDouiMake(patient, massage.nDate, {{2026, 6, 1}, {}}), -1);
    EXPECT_EQ(renewal.iDataHenkeiDouiMake(patient, massage.nDate, {{2026, 6, 2}, {2026, 6, 1}}), -1);
    EXPECT_TRUE(renewal.refused());
    EXPECT_EQ(rows.all(), restarted);
}

TEST_F(Renewal, WhicheverStatementFailsNothingChanges) {
    const auto fill = [&] {
        database.run(u"DELETE FROM RIYOUSHA_DOUI_REC"_s);
        insertMassage();
        insertDeformity();
        rows.insert(massageRenewed);
        rows.insert({patient, 20260521, 1, 20260521});
    };
    fill();
    const QStringList before = rows.all();
    const auto records = [&] { return database.value(u"SELECT COUNT(*) FROM DOUISHO_LOG"_s); };
    const struct {
        const char *name;
        std::function<short(ConsentRenewal &)> operation;
        QString label;
    } cases[] = {
        {"massage",
         [](auto &r) {
             return r.iDataNewDouiMake(patient, 20251120, {2026, 5, 20});
         },
         u"iDataNewDouiMake() でエラー"_s},
        {"deformity",
         [](auto &r) {
             return r.iDataNewHenkeiMake(deformity, {2026, 5, 21}, 20260521);
         },
         u"iDataNewHenkeiMake() でエラー"_s},
        {"restart",
         [](auto &r) {
             return r.iDataHenkeiDouiMake(patient, 20251120, {{2026, 6, 1}, {2026, 6, 30}});
         },
         u"iDataHenkeiDouiMake() でエラー"_s},
        {"marks", [](auto &r) { return r.setDouiNewestFlg(patient); }, u"setDouiNewestFlg() でエラー"_s},
    };
    for (const auto &c : cases) {
        int nth = 1;
        const QString recorded = records();
        for (;; ++nth) {
            FailingConnection failing(database.connectionString(), nth);
            ConsentRenewal onFailing(failing.db);
            if (c.operation(onFailing) == 0)
                break;
            EXPECT_FALSE(onFailing.refused());
            EXPECT_TRUE(onFailing.sErrMsg().contains(FailingConnection::description));
            const bool inMarks = onFailing.sErrMsg().endsWith(u"\r\nsetDouiNewestFlg() でエラー"_s);
            EXPECT_TRUE(inMarks || onFailing.sErrMsg().endsWith(u"\r\n"_s + c.label));
            ASSERT_EQ(rows.all(), before) << c.name << " statement " << nth;
            ASSERT_EQ(records(), recorded);
        }
        EXPECT_GT(nth, 4) << c.name;
        EXPECT_NE(rows.all(), before) << c.name;
        EXPECT_NE(records(), recorded);
        fill();
        // Audit times aside, everything stands as at the start.
        ASSERT_EQ(rows.all(), before);
    }
}
