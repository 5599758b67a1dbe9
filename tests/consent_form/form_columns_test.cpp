// Where each of the 100 columns comes from: every source holds its own name, so that no two can be swapped,
// and is long, so that none can be cut.

#include "db/column_names.h"
#include "print/consent_form/form_columns.h"
#include "tests/consent_form/practice.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The text that a source holds.
QString held(const QString &source) {
    return source + u"の長い値がどこまでも続く"_s.repeated(8);
}
QString quoted(const QString &text) {
    return u'"' + text + u'"';
}
/// The value of a column: texts of sources with a full-width blank between them.
QString texts(const QStringList &sources) {
    QStringList values;
    for (const QString &source : sources)
        values += held(source);
    return quoted(values.join(u'　'));
}

struct Row {
    QString name; ///< in the test
    QString table;
    QString where;
    QString columns;
};

const QList<Row> rows = {
    {u"patient"_s, u"RIYOUSHA"_s, u"nIDNo = 1"_s, u"cName cAdress1 cAdress2 cZokugara cOuryouRiyuuSonota"_s},
    {u"consent"_s, u"RIYOUSHA_DOUI_REC"_s, u"nIDNo = 1 and nDate = 20260501"_s,
     u"cByoumeiM cByoumeiH cDouiByoumei cDouiIsiName cDouiIsiKikan cDouiIsiAdd cKousyukuSonotaStr "
     "cSyoujyouSonotaStr"_s},
    {u"doctor"_s, u"DOCTOR"_s, u"cIDNo = '12'"_s, u"cName cKikan cAddress1 cAddress2 cTelNo"_s},
    {u"hospital"_s, u"SISETSU"_s, u"nIDNo = 70"_s, u"cShamei1 cAddress1 cAddress2 cTelNo"_s},
    {u"home"_s, u"SISETSU"_s, u"nIDNo = 80"_s, u"cAddress1 cAddress2"_s},
    {u"staff"_s, u"STAFF"_s, u"iKyotenCd = 1"_s, u"cName"_s},
    {u"branch"_s, u"KYOTEN"_s, u"iKyotenCd = 1"_s, u"cKyotenName cYubinNo cAddress1 cAddress2 cTelNo"_s},
    {u"practice"_s, u"CORP"_s, u"nIDNo = 1"_s, u"cShamei1 cShamei2 cYubinNo cAddress1 cAddress2 cTelNo"_s},
    {u"sender"_s, u"CORP"_s, u"nIDNo = 2"_s,
     u"cShamei1 cShamei2 cYubinNo cAddress1 cAddress2 cTelNo cFaxNo cDaihyo cMailDestination"_s},
    {u"walking"_s, u"CODE"_s, u"nIDNo = 3"_s, u"cName"_s},
};

class ConsentFormColumns : public testing::Test {
protected:
    ConsentFormColumns() {
        practice.database.run(
            u"delete from STAFF; insert into STAFF (iKyotenCd, iKyotenEb, nIDNo, cName) values"
            " (0, 1, 6, 'another branch'), (1, 1, 6, Null)"_s);
        for (const Row &row : rows)
            for (const QString &column : row.columns.split(u' '))
                set(row, column, u'\'' + held(row.name + u'.' + column) + u'\'');
        practice.database.run(uR"(
update RIYOUSHA set tBirthday = '1926/12/24', tHatsubyou = '1989/01/08', tSyoryoDay = '2026/02/03',
  tDouishoSaishutokuFrom = '2026/03/04', tDouishoSaishutokuTo = '2026/04/05';
update RIYOUSHA_DOUI_REC set tDouiKaryoS = '2026/05/06', tDouiKaryoE = '2026/06/07', tSaiDouiDay = '2026/07/08',
  tSaiDouiKaryoS = '2026/08/09', tSaiDouiKaryoE = '2026/09/10', tHenkeSday = '2026/10/11', tHenKeEday = '2026/11/12',
  iKousyukuSonota = 1 where nDate = 20260501;
insert into CODE (iBunrui, nIDNo, nIDIndex, cName) values (5, 3, 1, 'another list'))"_s);
    }
    void set(const Row &row, const QString &column, const QString &value) {
        practice.database.run(u"update "_s + row.table + u" set "_s + column + u" = "_s + value +
                              u" where "_s + row.where);
    }
    void clear(const QString &name, const QStringList &columns) {
        for (const Row &row : rows)
            for (const QString &column : row.name == name ? columns : QStringList())
                set(row, column, u"Null"_s);
    }
    /// Every column by its name.
    QHash<QString, QString> form(ConsentFormOptions options = {}) {
        options.submitted = QDate(2026, 12, 13);
        if (options.company)
            options.company = 1;
        const ConsentForm made = practice.form(1, options);
        QHash<QString, QString> values;
        for (const QString &column : consentFormColumns())
            values.insert(column, Practice::value(made, column));
        return values;
    }
    static void expect(const QHash<QString, QString> &form,
                       const QList<std::pair<QString, QString>> &expected) {
        for (const auto &[column, value] : expected)
            EXPECT_EQ(form.value(column), value) << column.toStdString();
    }

    Practice practice;
};

TEST_F(ConsentFormColumns, TakeTheirOwnSource) {
    const QHash<QString, QString> made = form();
    const QList<std::pair<QString, QString>> expected = {
        {u"患者ID"_s, u"1"_s},
        {u"患者名"_s, texts({u"patient.cName"_s})},
        {u"住所"_s, texts({u"patient.cAdress1"_s, u"patient.cAdress2"_s})},
        {u"生年月日"_s, u"\"15年12月24日\""_s},
        {u"生年月日元号"_s, u"\"T\""_s},
        {u"傷病名"_s, texts({u"consent.cByoumeiM"_s})},
        {u"麻痺"_s, u"\"躯幹、左上肢\""_s},
        {u"拘縮"_s, quoted(u"右膝、"_s + held(u"consent.cKousyukuSonotaStr"_s))},
        {u"施術種類"_s, u"\"マッサージ\""_s},
        {u"発病年月日"_s, u"\"1年1月8日\""_s},
        {u"発病年月日元号"_s, u"\"H\""_s},
        {u"備考"_s, u"\"変形徒手矯正術　令和8年10月11日～令和8年11月12日\""_s},
        {u"保険医療機関名"_s, texts({u"doctor.cKikan"_s})},
        {u"保険医師所在地"_s, texts({u"doctor.cAddress1"_s, u"doctor.cAddress2"_s})},
        {u"保険医氏名"_s, texts({u"doctor.cName"_s})},
        {u"提出年月日"_s, u"\"令和8年12月13日\""_s},
        {u"施術内容表示"_s, u"1"_s},
        {u"鍼灸傷病コード"_s, u"0"_s},
        {u"鍼灸傷病名"_s, u"\"\""_s},
        {u"初診年月日"_s, u"\"8年2月3日\""_s},
        {u"初診年月日元号"_s, u"\"R\""_s},
        {u"要加療期間・開始日"_s, u"\"令和8年5月6日\""_s},
        {u"要加療期間・終了日"_s, u"\"令和8年6月7日\""_s},
        {u"施術師名"_s, texts({u"staff.cName"_s})},
        {u"施術所名称"_s, texts({u"practice.cShamei1"_s, u"practice.cShamei2"_s})},
        {u"所在地"_s, texts({u"practice.cAddress1"_s, u"practice.cAddress2"_s})},
        {u"コメント"_s, quoted(u"返送先　〒992-2000　"_s + held(u"sender.cMailDestination"_s))},
        {u"保険医電話番号"_s, texts({u"doctor.cTelNo"_s})},
        {u"施術所郵便番号"_s, texts({u"practice.cYubinNo"_s})},
        {u"施術所電話番号"_s, texts({u"practice.cTelNo"_s})},
        {u"病院ID"_s, u"70"_s},
        {u"施術場所番号"_s, u"80"_s},
        {u"施術場所住所"_s, texts({u"home.cAddress1"_s, u"home.cAddress2"_s})},
        {u"往療の必要性"_s, u"1"_s},
        {u"歩行タイプ"_s, u"3"_s},
        {u"筋萎縮"_s, u"1"_s},
        {u"症状その他CHK"_s, u"1"_s},
        {u"症状その他(内容)"_s, texts({u"consent.cSyoujyouSonotaStr"_s})},
        {u"次回同意年月日"_s, u"\"令和8年7月8日\""_s},
        {u"次回要加療期間開始"_s, u"\"令和8年8月9日\""_s},
        {u"次回要加療期間終了"_s, u"\"令和8年9月10日\""_s},
        {u"次回同意期間"_s, u"\"令和8年8月9日～令和8年9月10日\""_s},
        {u"主担当ID"_s, u"6"_s},
        {u"同意書再取得予定期間"_s, u"\"令和8年3月4日～令和8年4月5日\""_s},
        {u"印刷社名〒"_s, texts({u"sender.cYubinNo"_s})},
        {u"印刷社名電話"_s, texts({u"sender.cTelNo"_s})},
        {u"印刷社名住所"_s, texts({u"sender.cAddress1"_s, u"sender.cAddress2"_s})},
        {u"印刷社名"_s, texts({u"sender.cShamei1"_s, u"sender.cShamei2"_s})},
        {u"印刷社名代表"_s, texts({u"sender.cDaihyo"_s})},
        {u"印刷年月日"_s, u"\"令和8年11月21日\""_s},
        {u"発病日付判定"_s, u"1"_s},
        {u"印刷社名FAX"_s, texts({u"sender.cFaxNo"_s})},
        {u"利用者続柄"_s, texts({u"patient.cZokugara"_s})},
        {u"再同意フラグ"_s, u"1"_s},
        {u"性別"_s, u"\"女\""_s},
        {u"歩行状態"_s, texts({u"walking.cName"_s})},
        {u"要介護度"_s, u"\"要介護3\""_s},
        {u"理由その他"_s, texts({u"patient.cOuryouRiyuuSonota"_s})},
        {u"拘縮その他"_s, texts({u"consent.cKousyukuSonotaStr"_s})},
        {u"症状その他"_s, texts({u"consent.cSyoujyouSonotaStr"_s})},
        {u"拠点名"_s, texts({u"branch.cKyotenName"_s})},
        {u"利用者ID表示"_s, u"0"_s}};
    expect(made, expected);

    // What a source lacks comes from the next.
    clear(u"doctor"_s, {u"cKikan"_s, u"cAddress1"_s, u"cAddress2"_s, u"cTelNo"_s});
    clear(u"home"_s, {u"cAddress1"_s, u"cAddress2"_s});
    clear(u"consent"_s, {u"cByoumeiM"_s});
    practice.database.run(u"delete from CORP where nIDNo = 1"_s);
    expect(form(), {{u"保険医療機関名"_s, texts({u"hospital.cShamei1"_s})},
                    {u"保険医師所在地"_s, texts({u"hospital.cAddress1"_s, u"hospital.cAddress2"_s})},
                    {u"保険医電話番号"_s, texts({u"hospital.cTelNo"_s})},
                    {u"施術場所住所"_s, texts({u"patient.cAdress1"_s, u"patient.cAdress2"_s})},
                    {u"傷病名"_s, texts({u"consent.cDouiByoumei"_s})},
                    {u"施術所名称"_s, texts({u"branch.cKyotenName"_s})},
                    {u"所在地"_s, texts({u"branch.cAddress1"_s, u"branch.cAddress2"_s})},
                    {u"施術所郵便番号"_s, texts({u"branch.cYubinNo"_s})},
                    {u"施術所電話番号"_s, texts({u"branch.cTelNo"_s})}});
    clear(u"doctor"_s, {u"cName"_s});
    clear(u"hospital"_s, {u"cShamei1"_s, u"cAddress1"_s, u"cAddress2"_s, u"cTelNo"_s});
    practice.database.run(u"update RIYOUSHA set iSejutsuKubun = 1"_s);
    expect(form(), {{u"保険医療機関名"_s, texts({u"consent.cDouiIsiKikan"_s})},
                    {u"保険医師所在地"_s, texts({u"consent.cDouiIsiAdd"_s})},
                    {u"保険医氏名"_s, texts({u"consent.cDouiIsiName"_s})},
                    {u"保険医電話番号"_s, u"\"\""_s},
                    {u"傷病名"_s, texts({u"consent.cByoumeiH"_s})}});
}

// Each flag alone sets its own column alone, and the words that go with it.
TEST_F(ConsentFormColumns, FlagsSetTheirOwnColumn) {
    struct Flag {
        QString stored, column;
        QString words{}, wordsColumn{};
    };
    const QString joint = u"拘縮"_s, part = u"麻痺"_s, disease = u"鍼灸傷病名"_s;
    const Flag flags[] = {
        {u"iSejutuBui1"_s, u"部位1"_s},
        {u"iSejutuBui2"_s, u"部位2"_s},
        {u"iSejutuBui3"_s, u"部位3"_s},
        {u"iSejutuBui4"_s, u"部位4"_s},
        {u"iSejutuBui5"_s, u"部位5"_s},
        {u"iOnan"_s, u"温按法あり"_s},
        {u"iDenki"_s, u"電気あり"_s},
        {u"iHKHariUmu"_s, u"はりあり"_s},
        {u"iHKKyuUmu"_s, u"きゅうあり"_s},
        {u"iHKDekiUmu"_s, u"鍼灸電気あり"_s},
        {u"iHKSyobyou01Flg"_s, u"鍼灸傷病1"_s, u"神経痛"_s, disease},
        {u"iHKSyobyou02Flg"_s, u"鍼灸傷病2"_s, u"リウマチ"_s, disease},
        {u"iHKSyobyou03Flg"_s, u"鍼灸傷病3"_s, u"頸腕症候群"_s, disease},
        {u"iHKSyobyou04Flg"_s, u"鍼灸傷病4"_s, u"五十肩"_s, disease},
        {u"iHKSyobyou05Flg"_s, u"鍼灸傷病5"_s, u"腰痛症"_s, disease},
        {u"iHKSyobyou06Flg"_s, u"鍼灸傷病6"_s, u"頸椎捻挫後遺症"_s, disease},
        {u"iHKSyobyou07Flg"_s, u"鍼灸傷病7"_s},
        {u"iMahiKukan"_s, u"麻痺躯幹"_s, u"躯幹"_s, part},
        {u"iMahiMigiue"_s, u"麻痺右上肢"_s, u"右上肢"_s, part},
        {u"iMahiHidariue"_s, u"麻痺左上肢"_s, u"左上肢"_s, part},
        {u"iMahiMigishita"_s, u"麻痺右下肢"_s, u"右下肢"_s, part},
        {u"iMahiHidarishita"_s, u"麻痺左下肢"_s, u"左下肢"_s, part},
        {u"iKousyukuMigikata"_s, u"拘縮右肩"_s, u"右肩"_s, joint},
        {u"iKousyukuMigihiji"_s, u"拘縮右肘"_s, u"右肘"_s, joint},
        {u"iKousyukuMigitekubi"_s, u"拘縮右手首"_s, u"右手首"_s, joint},
        {u"iKousyukuMigikokannsetu"_s, u"拘縮右股関節"_s, u"右股関節"_s, joint},
        {u"iKousyukuMigihiza"_s, u"拘縮右膝"_s, u"右膝"_s, joint},
        {u"iKousyukuMigiashikubi"_s, u"拘縮右足首"_s, u"右足首"_s, joint},
        {u"iKousyukuHidarikata"_s, u"拘縮左肩"_s, u"左肩"_s, joint},
        {u"iKousyukuHidarihiji"_s, u"拘縮左肘"_s, u"左肘"_s, joint},
        {u"iKousyukuHidaritekubi"_s, u"拘縮左手首"_s, u"左手首"_s, joint},
        {u"iKousyukuHidarikokannsetu"_s, u"拘縮左股関節"_s, u"左股関節"_s, joint},
        {u"iKousyukuHidarihiza"_s, u"拘縮左膝"_s, u"左膝"_s, joint},
        {u"iKousyukuHidariashikubi"_s, u"拘縮左足首"_s, u"左足首"_s, joint},
    };
    QString none = u"iKousyukuSonota = 0"_s;
    for (const Flag &flag : flags)
        none += u", "_s + flag.stored + u" = 0"_s;
    for (const Flag &flag : flags) {
        practice.database.run(u"update RIYOUSHA_DOUI_REC set "_s + none +
                              u"; update RIYOUSHA_DOUI_REC set "_s + flag.stored + u" = 1"_s);
        const QHash<QString, QString> made = form();
        for (const Flag &other : flags)
            EXPECT_EQ(made.value(other.column), flag.column == other.column ? u"1"_s : u"0"_s)
                << flag.stored.toStdString() << ' ' << other.column.toStdString();
        for (const QString &column : {joint, part, disease})
            EXPECT_EQ(made.value(column), quoted(flag.wordsColumn == column ? flag.words : QString()))
                << flag.stored.toStdString();
        EXPECT_EQ(made.value(u"筋萎縮"_s), flag.wordsColumn == part ? u"1"_s : u"0"_s)
            << flag.stored.toStdString();
    }
    for (int reason = 1; reason <= 3; ++reason) {
        practice.database.run(u"update RIYOUSHA set iOuryouRiyuu1 = %1 = 1, iOuryouRiyuu2 = %1 = 2,"
                              " iOuryouRiyuu3 = %1 = 3"_s.arg(reason));
        const QHash<QString, QString> made = form();
        for (int column = 1; column <= 3; ++column)
            EXPECT_EQ(made.value(u"往療理由%1"_s.arg(column)), QString::number(column == reason)) << column;
    }
}

TEST_F(ConsentFormColumns, NumbersBecomeTheirOwnWords) {
    const QStringList degrees = u" 要支援1 要支援2 要介護1 要介護2 要介護3 要介護4 要介護5 "_s.split(u' ');
    for (int degree = 0; degree < degrees.size(); ++degree) {
        practice.database.run(u"update RIYOUSHA set iKaigodo = %1, iSexKubun = %1"_s.arg(degree));
        const QHash<QString, QString> made = form();
        EXPECT_EQ(made.value(u"要介護度"_s), quoted(degrees[degree]));
        EXPECT_EQ(made.value(u"性別"_s), quoted(degree == 1 ? u"男"_s : degree == 2 ? u"女"_s : QString()));
    }
    practice.database.run(
        u"update RIYOUSHA_DOUI_REC set tSaiDouiKaryoE = Null, iDouishoSaishutokuKikan = 5"_s);
    EXPECT_EQ(form().value(u"次回同意期間"_s), u"\"令和8年8月9日～\""_s);
    EXPECT_EQ(form().value(u"同意書再取得予定期間"_s), u"\"令和8年3月4日～令和8年4月5日\""_s);
    practice.database.run(
        u"update RIYOUSHA set tDouishoSaishutokuFrom = Null, tDouishoSaishutokuTo = Null"_s);
    EXPECT_EQ(form().value(u"同意書再取得予定期間"_s), u"\"5ヶ月\""_s);
}

/// The columns that a switch empties, and no others.
TEST_F(ConsentFormColumns, SwitchesEmptyTheirOwn) {
    practice.database.run(
        u"update RIYOUSHA_DOUI_REC set iSejutuBui2 = 1, iSejutuBui3 = 1, iSejutuBui4 = 1, iDenki = 1,"
        " iHKHariUmu = 1, iHKKyuUmu = 1, iHKDekiUmu = 1, iHKSyobyou01Flg = 1, iHKSyobyou07Flg = 1"_s);
    const QHash<QString, QString> full = form();
    const auto emptied = [&](const ConsentFormOptions &options) {
        const QHash<QString, QString> made = form(options);
        QStringList columns;
        for (const QString &column : consentFormColumns())
            if (made.value(column) != full.value(column))
                columns +=
                    column + (made.value(column) == u"0" || made.value(column) == u"\"\"" ? u""_s : u"?"_s);
        return columns.join(u' ');
    };
    EXPECT_EQ(emptied({.company = {}}),
              u"コメント 印刷社名〒 印刷社名電話 印刷社名住所 印刷社名 印刷社名代表 印刷社名FAX"_s);
    EXPECT_EQ(emptied({.doctorBlock = false}),
              u"保険医療機関名 保険医師所在地 保険医氏名 保険医電話番号 病院ID"_s);
    practice.database.run(u"update DOCTOR set iHandWritingFlg = 1"_s);
    EXPECT_EQ(emptied({}), u"保険医療機関名 保険医師所在地 保険医氏名 保険医電話番号 病院ID"_s);
    practice.database.run(u"update DOCTOR set iHandWritingFlg = 0"_s);
    EXPECT_EQ(
        emptied({.treatmentContent = false}),
        u"部位1 部位2 部位3 部位4 部位5 温按法あり 電気あり はりあり きゅうあり 鍼灸電気あり 麻痺 拘縮 備考 "
        u"施術内容表示 鍼灸傷病コード 鍼灸傷病名 筋萎縮 症状その他CHK 症状その他(内容) 鍼灸傷病1 鍼灸傷病7 "
        u"麻痺躯幹 麻痺左上肢 拘縮右膝 拘縮その他 症状その他"_s);
}

} // namespace

// A suite's database may lack them; the rest of the form stands.
TEST_F(ConsentFormColumns, MissingColumnsPrintAsEmpty) {
    const QHash<QString, QString> before = form();
    practice.database.run(u"drop index IX_RIYOUSHA_CAREMANE"_s);
    for (const OptionalColumn &column : optionalColumns())
        practice.database.run(u"alter table %1 drop column %2"_s.arg(column.table, column.column));
    practice.database.db.setColumnNames({}); // which are looked at anew
    const QHash<QString, QString> made = form();
    for (const QString &column : {u"利用者続柄"_s, u"要介護度"_s, u"理由その他"_s}) {
        EXPECT_NE(before.value(column), quoted({})) << column.toStdString();
        EXPECT_EQ(made.value(column), quoted({})) << column.toStdString();
    }
    for (const QString &column : {u"性別"_s, u"保険医氏名"_s})
        EXPECT_EQ(made.value(column), before.value(column)) << column.toStdString();
}
