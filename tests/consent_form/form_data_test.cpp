#include "print/consent_form/form_columns.h"
#include "print/consent_form/form_files.h"
#include "print/consent_form/qr_code.h"
#include "print/engine/wfd_print_exe.h"
#include "tests/consent_form/practice.h"

#include <QFileInfo>
#include <QImage>
#include <gtest/gtest.h>
#include <numeric>
#include <zbar.h>

using namespace Qt::Literals::StringLiterals;

namespace {

using Expected = QList<std::pair<QString, QString>>;

void expectValues(const ConsentForm &form, const Expected &expected) {
    for (const auto &[column, value] : expected)
        EXPECT_EQ(Practice::value(form, column), value) << column.toStdString();
}

/// What an independent reader finds in a picture file.
QString readCode(const QString &path) {
    const QImage picture = QImage(path).convertToFormat(QImage::Format_Grayscale8);
    QByteArray grey;
    for (int row = 0; row < picture.height(); ++row)
        grey += QByteArray(reinterpret_cast<const char *>(picture.constScanLine(row)), picture.width());
    zbar::Image image(unsigned(picture.width()), unsigned(picture.height()), "Y800", grey.constData(),
                      size_t(grey.size()));
    zbar::ImageScanner scanner;
    scanner.scan(image);
    return image.symbol_begin() == image.symbol_end()
               ? QString()
               : QString::fromStdString(image.symbol_begin()->get_data());
}

TEST(ConsentFormData, WhatIsNotKnown) {
    Practice practice;
    expectValues(practice.form(2), {{u"生年月日"_s, u"\"64年1月7日\""_s}, // the last day of its era
                                    {u"施術種類"_s, u"\"鍼灸\""_s},
                                    {u"発病年月日"_s, u"\"不詳\""_s},
                                    {u"発病年月日元号"_s, u"\"\""_s},
                                    {u"発病日付判定"_s, u"0"_s},
                                    {u"鍼灸傷病コード"_s, u"2"_s},
                                    {u"鍼灸傷病名"_s, u"\"リウマチ、腰痛症\""_s},
                                    {u"傷病名"_s, u"\"リウマチ、腰痛症、その他\""_s},
                                    {u"往療の必要性"_s, u"2"_s},
                                    {u"主担当ID"_s, u"\"\""_s},
                                    {u"再同意フラグ"_s, u"0"_s}});
    expectValues(practice.form(4), {{u"住所"_s, u"\"\""_s},
                                    {u"生年月日"_s, u"\"\""_s},
                                    {u"生年月日元号"_s, u"\"\""_s},
                                    {u"部位1"_s, u"0"_s},
                                    {u"傷病名"_s, u"\"腰痛\""_s},
                                    {u"麻痺"_s, u"\"\""_s},
                                    {u"備考"_s, u"\"\""_s},
                                    {u"保険医氏名"_s, u"\"\""_s},
                                    {u"提出年月日"_s, u"\"\""_s},
                                    {u"要加療期間・開始日"_s, u"\"\""_s},
                                    {u"施術師名"_s, u"\"\""_s},
                                    {u"病院ID"_s, u"\"\""_s},
                                    {u"施術場所番号"_s, u"\"\""_s},
                                    {u"往療の必要性"_s, u"0"_s},
                                    {u"次回同意期間"_s, u"\"\""_s},
                                    {u"再同意フラグ"_s, u"0"_s},
                                    {u"性別"_s, u"\"\""_s},
                                    {u"要介護度"_s, u"\"\""_s}});
}

// Under 病名 stand numbers, and words only beside the seventh.
TEST(ConsentFormData, ADiseaseWithANumberIsRinged) {
    Practice practice;
    practice.database.run(
        u"update RIYOUSHA_DOUI_REC set cSyoujyouSonotaStr = '坐骨神経痛' where nIDNo = 2"_s);
    expectValues(practice.form(2), {{u"症状その他(内容)"_s, u"\"坐骨神経痛\""_s},
                                    {u"傷病名"_s, u"\"リウマチ、腰痛症、坐骨神経痛\""_s}});
    practice.database.run(u"update RIYOUSHA_DOUI_REC set iHKSyobyou02Flg = 0, iHKSyobyou05Flg = 0,"
                          " iHKSyobyou07Flg = 0, cSyoujyouSonotaStr = Null, cByoumeiH = '五十肩　坐骨神経痛'"
                          " where nIDNo = 2"_s);
    expectValues(practice.form(2), {{u"鍼灸傷病コード"_s, u"4"_s},
                                    {u"鍼灸傷病名"_s, u"\"五十肩\""_s},
                                    {u"鍼灸傷病4"_s, u"1"_s},
                                    {u"鍼灸傷病5"_s, u"0"_s},
                                    {u"鍼灸傷病7"_s, u"1"_s},
                                    {u"症状その他(内容)"_s, u"\"坐骨神経痛\""_s},
                                    {u"傷病名"_s, u"\"五十肩　坐骨神経痛\""_s}});
    expectValues(practice.form(2, {.treatmentContent = false}),
                 {{u"鍼灸傷病4"_s, u"0"_s}, {u"鍼灸傷病7"_s, u"0"_s}, {u"症状その他(内容)"_s, u"\"\""_s}});
}

TEST(ConsentFormData, FilesWithAwkwardTextsAndACodeThatAnotherReaderReads) {
    Practice practice;
    const std::vector<ConsentForm> forms = practice.gather({.patients = {5, 1}}).forms;
    ASSERT_EQ(forms.size(), 2u);
    cls_WfdPrintExe engine(practice.environment);
    const Result<> done = writeConsentFormData(forms, engine);
    ASSERT_TRUE(done) << done.reason().toStdString();
    const QStringList lines = practice.written(u"同意書データ.csv"_s).split(u"\r\n"_s);
    ASSERT_EQ(lines.size(), 4);
    EXPECT_TRUE(lines[0].startsWith(u"\"患者ID\",\"患者名\""_s));
    EXPECT_TRUE(lines[1].startsWith(u"1,\"髙橋　花子\","_s));
    EXPECT_TRUE(lines[2].startsWith(u"5,\"吉田＂二＂ 三\","_s)) << lines[2].toStdString();
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(lines[i].count(u','), 99) << i;

    const QString picture = engine.files().folder() + u"/1_QR.bmp"_s;
    EXPECT_TRUE(lines[1].contains(picture));
    EXPECT_EQ(readCode(picture), u"DOUISHO:1:1-1-1:20260501:2"_s);
}

TEST(ConsentFormData, ABatchFileIsWrittenOverALongerOne) {
    Practice practice;
    PrintFiles files(practice.environment);
    ASSERT_TRUE(files.write(u"1_同意書データ.csv"_s, QByteArray(9000, 'x')));
    const Result<QString> path = writeConsentFormData(practice.form(1), files);
    ASSERT_TRUE(path) << path.reason().toStdString();
    const QString data = practice.written(QDir(practice.work({})).relativeFilePath(*path));
    EXPECT_EQ(data.count(u"\r\n"_s), 2);
    EXPECT_TRUE(data.endsWith(u"\r\n"_s)) << data.right(40).toStdString();
}

TEST(ConsentFormData, TheFormOfEachPatient) {
    struct Case {
        const char *name;
        qint32 patient;
        std::function<void(ConsentFormOptions &)> ask;
        QString sql; ///< run first
        QString layout;
        QString shown; ///< re-consent, treatment content, patient number
    };
    using O = ConsentFormOptions &;
    const auto nothing = [](O) {};
    const QString own =
        u"update RIYOUSHA_SUB set iSaiDouiON = 1, iSaiDouiMasTypeNo = 1, iDouiDispSejyutu = 0, "
        "iDouiDispRiyouNo = 1 where nIDNo = 1"_s;
    const QString doctors =
        u"update DOCTOR set iSaiDouiON = 1, iSaiDouiMasTypeNo = 5, iDouiDispSejyutu = 0"_s;
    const QString branch = u"insert into CORP_SUB (iKyotenCd, iKyotenEb, iSyokaiDouiON, "
                           u"iSyokaiDouiMasTypeNo, iSyokaiDouiHariTypeNo, "
                           "iDouiDispRiyouNo) values (1, 1, 1, 5, 4, 1)"_s;
    const Case cases[] = {
        {"the patient's number", 1, nothing, {}, u"M再.wfd"_s, u"110"_s},
        {"own settings", 1, nothing, own, u"M初回.wfd"_s, u"101"_s},
        {"own settings not wanted", 1, [](O o) { o.patientSettings = false; }, own, u"M再.wfd"_s, u"110"_s},
        {"no settings wanted", 1, [](O o) { o.ignoreLayoutSettings = true; }, own, u"M再.wfd"_s, u"110"_s},
        {"own settings for the other consent", 1, [](O o) { o.style = FormStyle::First; }, own,
         u"M初回.wfd"_s, u"010"_s},
        {"own settings that name no form", 1, nothing,
         u"update RIYOUSHA_SUB set iSaiDouiON = 1, iSaiDouiMasTypeNo = 7"_s, u"M再.wfd"_s, u"110"_s},
        {"doctor's settings", 1, [](O o) { o.doctorSettings = true; }, doctors, u"M口頭.wfd"_s, u"100"_s},
        {"doctor's settings not wanted", 1, nothing, doctors, u"M再.wfd"_s, u"110"_s},
        {"own before the doctor's", 1, [](O o) { o.doctorSettings = true; }, own + u';' + doctors,
         u"M初回.wfd"_s, u"101"_s},
        {"a withdrawn form", 1, nothing, u"update RIYOUSHA_SUB set iDouishoId = 7"_s, u"M再.wfd"_s, u"110"_s},
        {"no number: the branch's", 4, nothing, branch, u"M口頭.wfd"_s, u"011"_s},
        {"no number, first consent", 4, nothing, {}, u"M初回.wfd"_s, u"010"_s},
        {"acupuncture, first consent", 2, nothing, {}, u"H再_B5.wfd"_s, u"010"_s},
        {"asked for", 2, [](O o) { o.style = FormStyle::First; }, {}, u"H初回.wfd"_s, u"010"_s},
        {"by word of mouth: none", 3, nothing, {}, u""_s, u""_s},
        {"by word of mouth: own",
         3,
         [](O o) { o.oral = OralForms::OwnLayout; },
         {},
         u"M口頭.wfd"_s,
         u"110"_s},
        {"by word of mouth: fixed",
         3,
         [](O o) { o.oral = OralForms::Saitama; },
         {},
         u"埼玉口頭同意M.wfd"_s,
         u"110"_s},
        {"by word of mouth: fixed, acupuncture", 2, [](O o) { o.oral = OralForms::Saitama; },
         u"update RIYOUSHA_DOUI_REC set iDouiShubetsu = 1 where nIDNo = 2"_s, u"埼玉口頭同意H.wfd"_s,
         u"010"_s},
        {"own settings, acupuncture", 2, nothing,
         u"update RIYOUSHA_SUB set iSyokaiDouiON = 1, iSyokaiDouiMasTypeNo = 1, iSyokaiDouiHariTypeNo = 3"_s,
         u"H初回.wfd"_s, u"010"_s},
        {"own settings, acupuncture again", 2, [](O o) { o.style = FormStyle::Again; },
         u"update RIYOUSHA_SUB set iSaiDouiON = 1, iSaiDouiMasTypeNo = 1, iSaiDouiHariTypeNo = 3"_s,
         u"H初回.wfd"_s, u"110"_s},
        {"no number, acupuncture again", 2, [](O o) { o.style = FormStyle::Again; },
         u"update RIYOUSHA_SUB set iDouishoId = Null"_s, u"H再_B5.wfd"_s, u"110"_s},
        {"treated, and no day of consent", 4, nothing, u"update RIYOUSHA set tSyoryoDay = '2025/01/01'"_s,
         u"M再.wfd"_s, u"110"_s},
        {"a fixed oral layout is no form of a kind", 4, nothing,
         u"update SHINSEISYO set cFileName = '埼玉口頭同意M.wfd' where nIDNo = 1"_s, u"M再.wfd"_s, u"010"_s},
        {"branch 0", 1, [](O o) { o.master = FormMaster::Practice; },
         u"update SHINSEISYO set cFileName = '全社.wfd' where iKyotenCd = 0 and nIDNo = 2"_s, u"全社.wfd"_s,
         u"110"_s},
    };
    for (const Case &c : cases) {
        Practice practice;
        if (!c.sql.isEmpty())
            practice.database.run(c.sql);
        ConsentFormOptions options;
        c.ask(options);
        const ConsentForm form = practice.form(c.patient, options);
        EXPECT_EQ(form.layout, c.layout) << c.name;
        if (form.layout.isEmpty())
            continue;
        QString shown;
        for (const QString &column : {u"再同意フラグ"_s, u"施術内容表示"_s, u"利用者ID表示"_s})
            shown += Practice::value(form, column);
        EXPECT_EQ(shown, c.shown) << c.name;
    }
    Practice practice;
    practice.database.run(own + u"; update RIYOUSHA_SUB set iDouiDispIshidata = 0"_s);
    EXPECT_EQ(Practice::value(practice.form(1), u"保険医氏名"_s), u"\"\""_s)
        << "own settings, without doctor's block";
}

/// Patient numbers in order; who is left out by word of mouth is "o3", for want of a form "n3".
QString who(Practice &practice, const ConsentFormOptions &options) {
    const GatheredForms gathered = practice.gather(options);
    QString numbers;
    for (const ConsentForm &form : gathered.forms)
        numbers += QString::number(form.patient.nIDNo);
    for (const LeftOutPatient &patient : gathered.leftOut)
        numbers +=
            (patient.why == LeftOutPatient::Why::Oral ? u'o' : u'n') + QString::number(patient.patient.nIDNo);
    return numbers;
}

TEST(ConsentFormData, WhoGetsAForm) {
    Practice practice;
    EXPECT_EQ(who(practice, {.order = FormOrder::Kana}), u"2145o3"_s);
    EXPECT_EQ(who(practice, {.patients = {5, 1, 5, 6}, .order = FormOrder::AsChosen}), u"51"_s);
    EXPECT_EQ(who(practice, {.patients = {1, 2, 4, 5}}), u"1245"_s);
    std::vector<qint32> many(3000, 2);
    many.resize(6000, 99);
    std::iota(many.begin() + 3000, many.end(), 100);
    EXPECT_EQ(who(practice, {.patients = many}), u"2"_s);
    EXPECT_EQ(who(practice, {.patients = {99}}), u""_s);
    practice.database.run(u"delete from SHINSEISYO where iSejutsuKubun = 0"_s);
    EXPECT_EQ(who(practice, {}), u"2n1o3n4n5"_s);
}

// Patient 2 has no kind of treatment stored, patient 8 no consent; 4 to 7 are not treated any more.
TEST(ConsentFormData, FiltersAndOrders) {
    Practice practice;
    practice.database.run(uR"(
delete from RIYOUSHA_DOUI_REC; delete from RIYOUSHA; delete from RIYOUSHA_SUB;
insert into SISETSU (nIDNo, cShameiKana1) values (90, 'ア'), (91, 'イ');
insert into DOCTOR (cIDNo, iSisetsuCode) values ('21', 91), ('22', 90), ('23', 90);
insert into RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cNameKana, iSejutsuKubun, iTenki, tExpireDay, nTantou, nDouiIsiCd) values
  (1, 1, 1, 'オ', 0, Null, Null, 2, 22), (1, 1, 2, 'エ', Null, 0, Null, 2, 21), (1, 1, 3, 'ウ', 1, 2, Null, 3, 21),
  (1, 1, 4, 'イ', 0, 1, Null, 1, 21), (1, 1, 5, 'イ', 0, 3, Null, 1, 21), (1, 1, 6, 'イ', 0, 15, Null, 1, 21),
  (1, 1, 7, 'イ', 0, 0, '2026/01/01', 1, 21), (1, 1, 8, 'ア', 0, 0, Null, 1, 21);
insert into RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg, nHenkeiDouiDate, iNewestFlg, tDouiKaryoE,
  cIsiCd) values (1, 1, 1, 20250901, 0, 0, 1, '2026/02/28', '21'), (1, 1, 2, 20250801, 0, 0, 1, '2026/01/31', '22'),
  (1, 1, 3, 20251001, 0, 0, 1, '2026/03/31', '23');
)"_s);
    const QDate end(2026, 2, 28);
    EXPECT_EQ(who(practice, {}), u"1238"_s);
    EXPECT_EQ(who(practice, {.kind = TreatmentKind::Massage}), u"128"_s);
    EXPECT_EQ(who(practice, {.kind = TreatmentKind::Acupuncture}), u"3"_s);
    EXPECT_EQ(who(practice, {.staff = 2}), u"12"_s);
    EXPECT_EQ(who(practice, {.doctor = u"21"_s}), u"18"_s);
    EXPECT_EQ(who(practice, {.periodEndFrom = end}), u"13"_s);
    EXPECT_EQ(who(practice, {.periodEndTo = end}), u"12"_s);
    EXPECT_EQ(who(practice, {.order = FormOrder::Kana}), u"8321"_s);
    EXPECT_EQ(who(practice, {.order = FormOrder::Hospital}), u"2381"_s);
    EXPECT_EQ(who(practice, {.order = FormOrder::Staff}), u"8213"_s);
    EXPECT_EQ(who(practice, {.order = FormOrder::PeriodEnd}), u"8213"_s);
}

/// "position of the row:consent key layout" of every form; then who is left out of which row, and why.
QString formsOf(Practice &practice, const std::vector<ConsentFormRow> &rows,
                ConsentFormOptions options = {}) {
    options.rows = rows;
    const GatheredForms gathered = practice.gather(options);
    QStringList texts;
    for (const ConsentForm &form : gathered.forms) {
        QStringList served;
        for (const size_t row : form.rows)
            served += QString::number(row);
        texts += served.join(u'+') + u':' + QString::number(form.consent.nDate) + u' ' + form.layout;
    }
    for (const LeftOutPatient &out : gathered.leftOut)
        texts += u"-%1 %2 %3"_s.arg(*out.row).arg(out.name).arg(int(out.why));
    return texts.join(u" | ");
}

ConsentFormRow massage(qint32 patient, qint32 date, FormStyle style = FormStyle::ByPatient) {
    return {{{1, 1, patient}, date, 0, 0}, style};
}
ConsentFormRow correction(qint32 patient, qint32 date, FormStyle style = FormStyle::ByPatient) {
    return {{{1, 1, patient}, date, 1, date}, style};
}

// Patient 1: massage of doctor 12, correction of doctor 13. Patient 2 has no form for a first consent but
// H初回.
TEST(ConsentFormRows, EachRowHasItsOwnForm) {
    Practice practice;
    practice.database.run(
        u"update DOCTOR set iHandWritingFlg = 0; update RIYOUSHA_DOUI_REC set tHenkeSday = Null,"
        " tHenKeEday = Null, tDouiDayTempHenkei = '2026/11/20', cSyoujyouSonotaStr = '変形の症状',"
        " tSaiDouiDay = '2026/01/01' where iHenkeiFlg = 1"_s);
    EXPECT_EQ(
        formsOf(practice, {massage(2, 20261020, FormStyle::First), massage(1, 20260501, FormStyle::First),
                           correction(1, 20261101, FormStyle::Again)}),
        u"0:20261020 H初回.wfd | 1:20260501 M初回.wfd | 2:20261101 M再.wfd"_s)
        << "two doctors, two forms, each as its letter says";
    const GatheredForms alone =
        practice.gather({.rows = std::vector{correction(1, 20261101)}, .kind = TreatmentKind::Acupuncture});
    ASSERT_EQ(alone.forms.size(), 1u);
    expectValues(alone.forms[0], {{u"保険医氏名"_s, u"\"筆　太\""_s},
                                  {u"傷病名"_s, u"\"変形\""_s},
                                  {u"要加療期間・終了日"_s, u"\"令和8年11月30日\""_s},
                                  {u"次回同意年月日"_s, u"\"令和8年11月20日\""_s},
                                  {u"症状その他"_s, u"\"変形の症状\""_s},
                                  {u"備考"_s, u"\"変形徒手矯正術　令和8年11月1日～令和8年11月30日\""_s}});

    // Of one doctor, the massage's form serves both, and states the correction's period.
    practice.database.run(u"update RIYOUSHA_DOUI_REC set cIsiCd = '12' where iHenkeiFlg = 1"_s);
    const std::vector<ConsentFormRow> both = {correction(1, 20261101, FormStyle::Again), massage(5, 20260701),
                                              massage(1, 20260501, FormStyle::First)};
    EXPECT_EQ(formsOf(practice, both), u"1:20260701 M再.wfd | 2+0:20260501 M再.wfd"_s);
    practice.database.run(u"update RIYOUSHA_DOUI_REC set tHenkeSday = Null, tHenKeEday = Null"_s);
    EXPECT_EQ(Practice::value(practice.gather({.rows = both}).forms[1], u"備考"_s),
              u"\"変形徒手矯正術　令和8年11月1日～令和8年11月30日\""_s);

    // By word of mouth, the massage has no form; the correction, in writing, has.
    practice.database.run(
        u"update RIYOUSHA_DOUI_REC set iDouiShubetsu = 1 where nIDNo = 1 and iHenkeiFlg = 0"_s);
    EXPECT_EQ(formsOf(practice, both), u"0:20261101 M再.wfd | 1:20260701 M再.wfd | -2 髙橋　花子 0"_s);
    practice.database.run(u"update RIYOUSHA_DOUI_REC set iDouiShubetsu = iHenkeiFlg where nIDNo = 1"_s);
    EXPECT_EQ(formsOf(practice, both), u"1:20260701 M再.wfd | 2:20260501 M初回.wfd | -0 髙橋　花子 0"_s);

    // A doctor whom no list has is another one where the consent says so.
    practice.database.run(
        u"update RIYOUSHA_DOUI_REC set iDouiShubetsu = 0, cIsiCd = '98', cDouiIsiName = '医師' || iHenkeiFlg"
        " where nIDNo = 1"_s);
    EXPECT_EQ(formsOf(practice, both), u"0:20261101 M再.wfd | 1:20260701 M再.wfd | 2:20260501 M初回.wfd"_s);
}

TEST(ConsentFormRows, FormsOfARowLieInFilesOfTheirOwn) {
    Practice practice;
    QStringList names;
    PrintFiles files(practice.environment);
    for (const ConsentForm &form :
         practice.gather({.rows = std::vector{massage(1, 20260501), correction(1, 20261101)}}).forms)
        names += QFileInfo(*writeConsentFormData(form, files)).fileName();
    EXPECT_EQ(names, (QStringList{u"1_同意書データ.csv"_s, u"1_変形_同意書データ.csv"_s}));
    EXPECT_EQ(readCode(files.folder() + u"/1_QR.bmp"_s), u"DOUISHO:1:1-1-1:20260501:2"_s);
    EXPECT_EQ(readCode(files.folder() + u"/1_変形_QR.bmp"_s), u"DOUISHO:1:1-1-1:20261101-20261101:2"_s);
}

TEST(ConsentFormRows, RowsThatOthersFollowedAreNamed) {
    Practice practice;
    EXPECT_EQ(formsOf(practice, {}), u""_s) << "no row is not every patient";
    EXPECT_EQ(formsOf(practice, {massage(1, 20250507), massage(1, 20260501), massage(2, 20200101),
                                 massage(99, 20260501)}),
              u"1:20260501 M再.wfd | -0 髙橋　花子 2 | -2 佐藤　一 2 | -3  2"_s);
    EXPECT_EQ(formsOf(practice, std::vector<ConsentFormRow>(3, massage(5, 20260701))),
              u"0+1+2:20260701 M再.wfd"_s);
}

// Old data mark two rows as newest.
TEST(ConsentFormRows, OfTwoNewestRowsTheLaterPrints) {
    Practice practice;
    practice.database.run(
        u"update RIYOUSHA_DOUI_REC set iNewestFlg = 1 where nDate = 20250507;"
        "insert into RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg, nHenkeiDouiDate,"
        " iNewestFlg) values (1, 1, 1, 20270101, 0, 0, 0), (1, 1, 1, 20261101, 1, 20261115, 1)"_s);
    EXPECT_EQ(Practice::value(practice.form(1), u"傷病名"_s), u"\"脳梗塞後遺症\""_s);
    EXPECT_EQ(practice.gather({.staff = 6, .periodEndTo = QDate(2025, 10, 31)}).forms.size(), 0u)
        << "the older one's period is not the patient's";
    EXPECT_EQ(formsOf(practice, {massage(1, 20250507), massage(1, 20260501)}),
              u"1:20260501 M再.wfd | -0 髙橋　花子 2"_s);
    EXPECT_EQ(formsOf(practice, {correction(1, 20261101)}), u"-0 髙橋　花子 2"_s)
        << "one of the 15th follows it";
}

} // namespace
