#include "print/consent_form/form_columns.h"
#include "print/consent_form/form_files.h"
#include "print/consent_form/qr_code.h"
#include "tests/consent_form/practice.h"

#include <QImage>
#include <gtest/gtest.h>
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

TEST(ConsentFormData, MassagePatient) {
    Practice practice;
    ConsentFormOptions options;
    options.submitted = QDate(2026, 11, 24);
    options.company = 1;
    expectValues(practice.form(1, options),
                 {{u"患者ID"_s, u"1"_s},
                  {u"患者名"_s, u"\"髙橋　花子\""_s},
                  {u"住所"_s, u"\"若葉1　荘2\""_s},
                  {u"生年月日"_s, u"\"25年3月10日\""_s},
                  {u"生年月日元号"_s, u"\"S\""_s},
                  {u"部位1"_s, u"1"_s},
                  {u"部位2"_s, u"0"_s},
                  {u"部位5"_s, u"1"_s},
                  {u"温按法あり"_s, u"1"_s},
                  {u"傷病名"_s, u"\"脳梗塞後遺症\""_s},
                  {u"麻痺"_s, u"\"躯幹、左上肢\""_s},
                  {u"拘縮"_s, u"\"右膝、頸部\""_s},
                  {u"施術種類"_s, u"\"マッサージ\""_s},
                  {u"発病年月日"_s, u"\"1年5月1日\""_s},
                  {u"発病年月日元号"_s, u"\"R\""_s},
                  {u"備考"_s, u"\"変形徒手矯正術　令和8年11月1日～令和8年11月30日\""_s},
                  {u"保険医療機関名"_s, u"\"緑病院\""_s},
                  {u"保険医師所在地"_s, u"\"病院町1　2階\""_s},
                  {u"保険医氏名"_s, u"\"山田'一\""_s},
                  {u"提出年月日"_s, u"\"令和8年11月24日\""_s},
                  {u"初診年月日"_s, u"\"7年5月7日\""_s},
                  {u"要加療期間・終了日"_s, u"\"令和8年10月31日\""_s},
                  {u"施術師名"_s, u"\"施術　花\""_s},
                  {u"施術所名称"_s, u"\"ひなた　若葉\""_s},
                  {u"コメント"_s, u"\"返送先　〒992-2000　港町私書箱\""_s},
                  {u"保険医電話番号"_s, u"\"0999-50-0001\""_s},
                  {u"病院ID"_s, u"70"_s},
                  {u"施術場所番号"_s, u"80"_s},
                  {u"施術場所住所"_s, u"\"荘町8\""_s},
                  {u"往療の必要性"_s, u"1"_s},
                  {u"筋萎縮"_s, u"1"_s},
                  {u"症状その他(内容)"_s, u"\"疼痛\""_s},
                  {u"次回同意期間"_s, u"\"令和8年11月1日～令和9年4月30日\""_s},
                  {u"同意書再取得予定期間"_s, u"\"令和8年10月1日～令和8年10月15日\""_s},
                  {u"印刷社名"_s, u"\"本社\""_s},
                  {u"印刷年月日"_s, u"\"令和8年11月21日\""_s},
                  {u"発病日付判定"_s, u"1"_s},
                  {u"再同意フラグ"_s, u"1"_s},
                  {u"性別"_s, u"\"女\""_s},
                  {u"歩行状態"_s, u"\"車椅子\""_s},
                  {u"要介護度"_s, u"\"要介護3\""_s},
                  {u"拘縮右膝"_s, u"1"_s},
                  {u"拠点名"_s, u"\"若葉院\""_s}});
}

TEST(ConsentFormData, AcupuncturePatientWithTheDoctorOfTheRecord) {
    Practice practice;
    ConsentFormOptions options;
    options.company.reset();
    expectValues(practice.form(2, options), {{u"生年月日"_s, u"\"64年1月7日\""_s},
                                             {u"傷病名"_s, u"\"腰痛症など\""_s},
                                             {u"施術種類"_s, u"\"鍼灸\""_s},
                                             {u"発病年月日"_s, u"\"不詳\""_s},
                                             {u"発病年月日元号"_s, u"\"\""_s},
                                             {u"発病日付判定"_s, u"0"_s},
                                             {u"保険医療機関名"_s, u"\"記録の医院\""_s},
                                             {u"保険医師所在地"_s, u"\"記録の住所\""_s},
                                             {u"保険医氏名"_s, u"\"記録の医師\""_s},
                                             {u"鍼灸傷病コード"_s, u"2"_s},
                                             {u"鍼灸傷病名"_s, u"\"リウマチ、腰痛症\""_s},
                                             {u"鍼灸傷病7"_s, u"1"_s},
                                             {u"往療の必要性"_s, u"2"_s},
                                             {u"主担当ID"_s, u"\"\""_s},
                                             {u"同意書再取得予定期間"_s, u"\"6ヶ月\""_s},
                                             {u"印刷社名"_s, u"\"\""_s},
                                             {u"コメント"_s, u"\"\""_s},
                                             {u"再同意フラグ"_s, u"0"_s}});
}

TEST(ConsentFormData, EmptyStaysEmpty) {
    Practice practice;
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

// The doctor of patient 5 writes by hand.
TEST(ConsentFormData, BlocksThatAreNotPrintedAreEmpty) {
    Practice practice;
    ConsentFormOptions options;
    options.treatmentContent = false;
    options.doctorBlock = false;
    const Expected noDoctor = {{u"保険医療機関名"_s, u"\"\""_s},
                               {u"保険医師所在地"_s, u"\"\""_s},
                               {u"保険医氏名"_s, u"\"\""_s},
                               {u"保険医電話番号"_s, u"\"\""_s},
                               {u"病院ID"_s, u"\"\""_s}};
    const ConsentForm form = practice.form(1, options);
    expectValues(form, noDoctor);
    expectValues(form, {{u"施術内容表示"_s, u"0"_s},
                        {u"部位1"_s, u"0"_s},
                        {u"温按法あり"_s, u"0"_s},
                        {u"麻痺"_s, u"\"\""_s},
                        {u"麻痺躯幹"_s, u"0"_s},
                        {u"拘縮"_s, u"\"\""_s},
                        {u"拘縮その他"_s, u"\"\""_s},
                        {u"筋萎縮"_s, u"0"_s},
                        {u"症状その他CHK"_s, u"0"_s},
                        {u"備考"_s, u"\"\""_s},
                        {u"傷病名"_s, u"\"脳梗塞後遺症\""_s}});
    expectValues(practice.form(5), noDoctor);
}

TEST(ConsentFormData, FilesWithAwkwardTextsAndACodeThatAnotherReaderReads) {
    Practice practice;
    const std::vector<ConsentForm> forms = practice.gather({.patients = {5, 1}}).forms;
    ASSERT_EQ(forms.size(), 2u);
    QStringList touched;
    const Result<> done = writeConsentFormData(practice.environment, forms, touched);
    ASSERT_TRUE(done) << done.reason().toStdString();
    const QStringList lines = practice.written(u"同意書データ.csv"_s).split(u"\r\n"_s);
    ASSERT_EQ(lines.size(), 4);
    EXPECT_TRUE(lines[0].startsWith(u"\"患者ID\",\"患者名\""_s));
    EXPECT_TRUE(lines[1].startsWith(u"1,\"髙橋　花子\","_s));
    EXPECT_TRUE(lines[2].startsWith(u"5,\"〓田＂二＂ 三\","_s)) << lines[2].toStdString();
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(lines[i].count(u','), 99) << i;
    EXPECT_EQ(touched.size(), 1);

    EXPECT_TRUE(lines[1].contains(practice.work(u"1_QR.bmp"_s)));
    EXPECT_EQ(readCode(practice.work(u"1_QR.bmp"_s)), u"DOUISHO:1:1-1-1:20260501:2"_s);
}

TEST(ConsentFormData, ABatchFileIsWrittenOverALongerOne) {
    Practice practice;
    practice.addFile(practice.work(u"1_同意書データ.csv"_s), QByteArray(9000, 'x'));
    QStringList touched;
    PrintFiles files(practice.environment);
    const Result<QString> path = writeConsentFormData(practice.form(1), files, touched);
    ASSERT_TRUE(path) << path.reason().toStdString();
    EXPECT_EQ(*path, practice.work(u"1_同意書データ.csv"_s));
    const QString data = practice.written(u"1_同意書データ.csv"_s);
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
}

TEST(ConsentFormData, WhoGetsAForm) {
    Practice practice;
    practice.database.run(u"update RIYOUSHA set iTenki = 3 where nIDNo = 5"_s);
    const auto who = [&](const ConsentFormOptions &options) {
        const GatheredForms gathered = practice.gather(options);
        QString numbers;
        for (const ConsentForm &form : gathered.forms)
            numbers += QString::number(form.patient.nIDNo);
        for (const LeftOutPatient &patient : gathered.leftOut)
            numbers += (patient.why == LeftOutPatient::Why::Oral ? u'o' : u'n') +
                       QString::number(patient.patient.nIDNo);
        return numbers;
    };
    EXPECT_EQ(who({}), u"124o3"_s);
    EXPECT_EQ(who({.kind = FormKind::Acupuncture}), u"2"_s);
    EXPECT_EQ(who({.order = FormOrder::Kana}), u"214o3"_s);
    EXPECT_EQ(who({.staff = 6}), u"1o3"_s);
    EXPECT_EQ(who({.doctor = u"12"_s}), u"1o3"_s);
    EXPECT_EQ(who({.periodEndFrom = QDate(2026, 10, 31), .periodEndTo = QDate(2026, 10, 31)}), u"1"_s);
    EXPECT_EQ(who({.patients = {5, 1, 5, 6}, .order = FormOrder::AsChosen}), u"51"_s);
    EXPECT_EQ(who({.patients = std::vector<qint32>(3000, 2)}), u"2"_s);
    EXPECT_EQ(who({.patients = {99}}), u""_s);
    practice.database.run(u"delete from SHINSEISYO where iSejutsuKubun = 0"_s);
    EXPECT_EQ(who({}), u"2n1o3n4"_s);
}

} // namespace
