// The screens of consent-form settings, by their controls: company, doctor and patient.

#include "app/base/codepage932.h"
#include "print/consent_screens/consent_screens.h"
#include "print/consent_screens/consent_screens_query.h"
#include "print/consent_screens/doctor_consent_form.h"
#include "print/consent_screens/patient_consent_form.h"
#include "tests/consent_form/practice.h"
#include "tests/widgets/form_keys.h"
#include "widgets/layout_preview.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString twelve =
    u"iSyokaiDouiON, iSyokaiDouiMasTypeNo, iSyokaiDouiHariTypeNo, iSaiDouiON, iSaiDouiMasTypeNo, "
    "iSaiDouiHariTypeNo, iDouiiraiON, iDouiiraiMasTypeNo, iDouiiraiHariTypeNo, iDouiDispSejyutu, "
    "iDouiDispIshidata, iDouiDispRiyouNo"_s;

class ConsentScreens : public testing::Test {
protected:
    ConsentScreens() {
        practice.keepPrintFiles();
        practice.addFile(data(u"印刷設定.ini"_s), encode932(u"[同意書]\r\n提出日付=1\r\n"_s).bytes);
        storeCompany(u"1  "_s);
        const QByteArray layout =
            "<layout version='1' paper='A4'><page><rect x='5' y='5' w='200' h='287' fill='#000000' "
            "when='施術内容表示' equals='1'/>"
            "</page></layout>";
        for (const QString &file :
             {u"M初回.wfd"_s, u"M再.wfd"_s, u"H初回.wfd"_s, u"H再_B5.wfd"_s, u"依頼.wfd"_s})
            practice.addFile(practice.system(file), layout);
        practice.database.run(
            u"insert into CORP_SUB (iKyotenCd, iKyotenEb, iDouiUpdatePermitDay) values (1, 1, 9);"
            "update DOCTOR set iSaiDouiMasTypeNo = 5, iDouiDispIshidata = 0, cTelNo = '0999-8' "
            "where cIDNo = '12'"_s);
    }
    QString data(const QString &file) const { return QDir(practice.folders.data()).filePath(file); }
    void storeCompany(const QString &position) {
        practice.addFile(data(u"患者管理設定.ini"_s),
                         encode932(u"[同意記録]\r\n同意印刷本社No=%1\r\n"_s.arg(position)).bytes);
    }
    void openDoctor(const ConsentLayoutSettings &settings, short mode = frmDouiSubmainIshi::Doctor) {
        doctor = std::make_unique<frmDouiSubmainIshi>(practice.environment);
        ASSERT_EQ(doctor->iInit(practice.database.db, settings, mode), 0);
        showActive(*doctor);
        QApplication::processEvents();
        form = doctor.get();
    }
    short beginPatient(qint32 number, const QString &code = u"12"_s) {
        patient = std::make_unique<frmDouiSubmain>(practice.environment);
        form = patient.get();
        return patient->iInit(practice.database.db, {1, 1, number}, code, 1);
    }
    void openPatient(qint32 number, const QString &code = u"12"_s) {
        ASSERT_EQ(beginPatient(number, code), 0);
        showActive(*patient);
        QApplication::processEvents();
    }
    template <class W> W *control(const QString &name) const { return form->findChild<W *>(name); }
    void click(const QString &name) { control<QAbstractButton>(name)->click(); }
    void choose(int combo, int row) {
        auto *box = control<QComboBox>(u"cbDouiFormat_%1"_s.arg(combo));
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Home);
        for (int i = 0; i < row; ++i)
            QTest::keyClick(box, Qt::Key_Down);
    }
    QString text(const QString &name) const { return control<QLineEdit>(name)->text(); }
    const LayoutPreview &preview() const { return *control<LayoutPreview>(u"wfdImage"_s); }
    /// 0 black to 255 white.
    int middleOfPreview() const {
        QApplication::processEvents();
        const QImage picture = control<LayoutPreview>(u"wfdImage"_s)->grab().toImage();
        return qGray(picture.pixel(picture.width() / 2, picture.height() / 2));
    }
    static QString numbers(const ConsentLayoutSettings &settings) {
        QStringList texts;
        for (const auto member : ConsentLayoutSettings::members)
            texts += QString::number(settings.*member);
        return texts.join(u'|');
    }
    QString stored(const QString &table, const QString &where) const {
        return practice.database.value(u"select %1 from %2 where %3"_s.arg(twelve, table, where));
    }
    /// Cells of a data file's only record.
    QStringList cells(const QString &file, const QStringList &columns) const {
        const QStringList lines = practice.written(file).split(u"\r\n"_s, Qt::SkipEmptyParts);
        QStringList found;
        for (const QString &column : columns)
            found +=
                lines.value(1).split(u',').value(lines.value(0).split(u',').indexOf(u'"' + column + u'"'));
        EXPECT_EQ(lines.size(), 2);
        return found;
    }
    QStringList said() {
        QStringList texts;
        for (const Message &message : practice.messages.shown)
            texts += message.title.isEmpty() ? message.text : message.title + u'：' + message.text;
        practice.messages.shown.clear();
        return texts;
    }
    void answer(const std::deque<Answer> &answers) { practice.messages.answers = answers; }
    /// Works the modal screen that opens next, then closes it by its key.
    void meanwhile(const std::function<void()> &work, Qt::Key last) {
        QTimer::singleShot(50, [=, this] {
            form = QApplication::activeModalWidget();
            ASSERT_TRUE(form);
            work();
            pressButton(*form, last);
        });
    }

    Practice practice;
    std::unique_ptr<frmDouiSubmainIshi> doctor;
    std::unique_ptr<frmDouiSubmain> patient;
    QWidget *form = nullptr; ///< the screen that is worked
    const PatientKey first{1, 1, 1};
};

ConsentLayoutSettings settingsOf(std::array<short, 12> values) {
    ConsentLayoutSettings settings;
    for (size_t i = 0; i < values.size(); ++i)
        settings.*ConsentLayoutSettings::members[i] = values[i];
    return settings;
}

TEST_F(ConsentScreens, ADoctorsSettingsComeBackWhereTheyAreRegistered) {
    // Layout 7 is deleted and 99 was never there.
    const ConsentLayoutSettings given = settingsOf({0, 7, 3, 1, 5, 99, 0, 11, 0, 1, 0, 1});
    openDoctor(given);
    EXPECT_EQ(control<QLabel>(u"lbMode"_s)->text(), u"医師に対する同意書の設定を行います。"_s);
    EXPECT_EQ(control<QComboBox>(u"cbDouiFormat_1"_s)->currentIndex(), 1);
    choose(1, 0);
    click(u"chkDouiAri_0"_s);
    click(u"chkChkView_1"_s);
    answer({Answer::No});
    pressButton(*form, Qt::Key_F5);
    EXPECT_TRUE(doctor->isVisible());
    EXPECT_FALSE(doctor->isRegistered());
    said();
    answer({Answer::Yes});
    pressButton(*form, Qt::Key_F5);
    EXPECT_EQ(said(), QStringList{u"確認：登録してもよろしいですか？"_s});
    EXPECT_FALSE(doctor->isVisible());
    EXPECT_TRUE(doctor->isRegistered());
    // What was gone became the first of its list; acupuncture has no letter.
    EXPECT_EQ(numbers(doctor->settings()), u"1|1|3|1|2|4|0|11|0|1|1|1"_s);

    openDoctor(given);
    choose(1, 0);
    answer({Answer::No});
    pressButton(*form, Qt::Key_F12);
    EXPECT_EQ(said(), QStringList{u"登録確認：内容を登録しますか？"_s});
    EXPECT_FALSE(doctor->isRegistered());
    EXPECT_TRUE(doctor->settings().same(given));
    openDoctor(given);
    answer({Answer::Yes});
    QTest::keyClick(form, Qt::Key_Escape);
    EXPECT_TRUE(doctor->isRegistered());
    EXPECT_EQ(frmDouiSubmainIshi(practice.environment).iInit(practice.database.db, given, 2), -1);
}

TEST_F(ConsentScreens, SamplesAreShownAndPutOut) {
    openDoctor(settingsOf({1, 1, 3, 1, 2, 4, 1, 11, 0, 0, 1, 0}));
    EXPECT_EQ(preview().pageCount(), 1) << preview().problem().toStdString();
    EXPECT_GT(middleOfPreview(), 200);
    click(u"chkChkView_0"_s); // what is printed changes the sample at once
    EXPECT_LT(middleOfPreview(), 50);
    click(u"chkChkView_0"_s);
    choose(1, 1); // its layout file is missing
    EXPECT_TRUE(preview().problem().contains(u"M口頭.wfd"_s));
    EXPECT_EQ(preview().pageCount(), 0);
    click(u"btnPrintDoui_1"_s);
    EXPECT_EQ(said(), QStringList{u"書式ファイルなし：選択された書式が、システムに存在しません。"_s});
    click(u"btnPreviewDoui_5"_s);
    EXPECT_EQ(said(), QStringList{u"同意書未設定：有効な同意書が設定されていません。"_s});
    EXPECT_TRUE(practice.processes.started.isEmpty());

    click(u"btnPreviewDoui_4"_s);
    EXPECT_EQ(practice.commands(),
              u"FileName,\"H再_B5.wfd\"\r\nTitle,\"同意書印刷\"\r\n"
              "SetDataText,\"同意書データ\",\"同意書データ.csv\"\r\nPrintPaper, B5\r\nShowWindow,2\r\n"_s);
    const QStringList columns{u"患者名"_s, u"施術種類"_s, u"再同意フラグ"_s,
                              u"腰痛"_s,   u"はりあり"_s, u"見本フラグ"_s};
    EXPECT_EQ(cells(u"同意書データ.csv"_s, columns),
              (QStringList{u"\"見本　花子\""_s, u"\"鍼灸\""_s, u"1"_s, {}, u"0"_s, u"1"_s}));
    click(u"chkChkView_0"_s);
    click(u"btnPrintDoui_3"_s);
    EXPECT_EQ(cells(u"同意書データ.csv"_s, columns),
              (QStringList{u"\"見本　花子\""_s, u"\"鍼灸\""_s, u"0"_s, {}, u"1"_s, u"1"_s}));
    EXPECT_TRUE(practice.commands().endsWith(u"PrintOutFromDialog\r\n"_s));
    click(u"btnPrintDoui_2"_s);
    EXPECT_EQ(cells(u"同意依頼書データ.csv"_s, {u"患者氏名"_s, u"施術区分"_s, u"病院名"_s, u"見本フラグ"_s}),
              (QStringList{u"\"見本　花子\""_s, u"\"(マッサージ)\""_s, u"\"見本病院\""_s, u"1"_s}));
    practice.processes.missing = {u"wfrfv10.exe"_s, u"wfrfv10"_s};
    click(u"btnPrintDoui_2"_s);
    EXPECT_TRUE(said().value(0).startsWith(u"マッサージ：同意依頼書：帳票の印刷に失敗しました。["_s));
}

TEST_F(ConsentScreens, TheCompanysSettingsAreStoredAndColleaguesKept) {
    cT_ADODB &db = practice.database.db;
    const auto change = [this] { click(u"chkDouiAri_1"_s); };
    answer({Answer::Yes});
    meanwhile(change, Qt::Key_F5);
    setCompanyConsentForms(practice.environment, db, nullptr);
    const QString company = u"iKyotenCd = 1 and iKyotenEb = 1"_s;
    EXPECT_EQ(stored(u"CORP_SUB"_s, company), u"0|1|3|1|2|4|0|11|0|1|1|0"_s);
    EXPECT_EQ(practice.database.value(u"select iDouiUpdatePermitDay from CORP_SUB"_s), u"9"_s);
    said();

    answer({Answer::Yes});
    meanwhile(
        [&] {
            change();
            practice.database.run(u"update CORP_SUB set iSaiDouiMasTypeNo = 5, iDouiUpdatePermitDay = 10"_s);
        },
        Qt::Key_F5);
    setCompanyConsentForms(practice.environment, db, nullptr);
    EXPECT_TRUE(said().value(1).startsWith(u"同意書の設定は、他の端末で変更されています。"_s));
    EXPECT_EQ(stored(u"CORP_SUB"_s, company), u"0|1|3|1|5|4|0|11|0|1|1|0"_s);

    // A branch without a row gets one; two connections cannot both store over what they saw.
    cT_ADODB other;
    ASSERT_EQ(other.iInit(practice.database.connectionString()), 0);
    practice.database.run(u"insert into KYOTEN (iKyotenCd, iKyotenEb) values (2, 1)"_s);
    const Branch branch{2, 1};
    const ConsentLayoutSettings none, mine = settingsOf({1, 1, 3, 1, 2, 4, 1, 11, 0, 1, 1, 1});
    const Result<bool> stored1 = storeCompanyLayouts(db, branch, none, mine);
    ASSERT_TRUE(stored1) << stored1.reason().toStdString();
    EXPECT_TRUE(*stored1);
    const Result<bool> stored2 = storeCompanyLayouts(other, branch, none, settingsOf({}));
    ASSERT_TRUE(stored2) << stored2.reason().toStdString();
    EXPECT_FALSE(*stored2);
    EXPECT_EQ(numbers(*readCompanyLayouts(other, branch)), numbers(mine));
}

TEST_F(ConsentScreens, APatientIsShownWithHisOwnSettingsBeforeTheDoctors) {
    openPatient(1);
    EXPECT_EQ(text(u"numIDNo"_s) + text(u"txtName"_s) + text(u"txtSejutsu"_s), u"1髙橋　花子マッサージ"_s);
    EXPECT_EQ(text(u"txtSyoryoDay"_s), u"令和０７年０５月０７日"_s);
    EXPECT_EQ(text(u"txtDouiDay"_s), u"令和０８年０５月０１日"_s);
    EXPECT_EQ(text(u"txtKaryouDay"_s), u"令和０８年０５月０１日～令和０８年１０月３１日"_s);
    EXPECT_EQ(text(u"txtIsiCd1"_s) + text(u"txtDouiIsiName1"_s) + text(u"txtDouiIsiKikan1"_s),
              u"12山田'一緑病院"_s);
    EXPECT_EQ(control<QComboBox>(u"cmbCorp"_s)->currentText(), u"本社"_s);
    EXPECT_EQ(control<QComboBox>(u"cbDouiFormat_1"_s)->currentData(), 5) << "the doctor's";
    EXPECT_FALSE(control<QCheckBox>(u"chkChkView_1"_s)->isChecked());
    EXPECT_TRUE(control<QCheckBox>(u"chkTeisyutuDate"_s)->isChecked());
    EXPECT_FALSE(preview().problem().isEmpty())
        << "a treated patient sees the re-consent form, whose file is missing";

    practice.database.run(
        u"update RIYOUSHA_SUB set iSaiDouiON = 1, iSaiDouiMasTypeNo = 2, iDouiDispIshidata = 1;"
        "insert into RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo) values (1, 1, 4)"_s);
    openPatient(1);
    EXPECT_EQ(control<QComboBox>(u"cbDouiFormat_1"_s)->currentData(), 2) << "his own";
    EXPECT_TRUE(control<QCheckBox>(u"chkChkView_1"_s)->isChecked());
    EXPECT_EQ(preview().pageCount(), 1);

    for (const QString &position : {QString(), u"2"_s, u"-1"_s}) {
        storeCompany(position);
        openPatient(4, {});
        EXPECT_EQ(control<QComboBox>(u"cmbCorp"_s)->currentIndex(), 0) << position.toStdString();
    }
    EXPECT_EQ(text(u"txtDouiDay"_s) + text(u"txtKaryouDay"_s) + text(u"txtSyoryoDay"_s),
              u"未設定未設定未設定"_s);
    EXPECT_EQ(control<QLabel>(u"lblMihon"_s)->text(), u"見本：M初回.wfd"_s) << "never treated";
    EXPECT_TRUE(said().isEmpty());
}

TEST_F(ConsentScreens, APatientWhoCannotBeShownIsRefused) {
    EXPECT_EQ(beginPatient(4), -1); // has no row of settings
    EXPECT_EQ(said(), QStringList{u"データ取得エラー：データが取得できませんでした。"_s});
    QFile::remove(data(u"患者管理設定.ini"_s));
    EXPECT_EQ(beginPatient(1), -1);
    EXPECT_TRUE(said().value(0).endsWith(u"\r\ninit()でエラー"_s));
    practice.database.run(u"delete from CORP"_s);
    EXPECT_EQ(beginPatient(1), -1);
    EXPECT_EQ(said(), QStringList{u"本社データがありません。"_s});
    practice.database.run(u"drop table RIYOUSHA_SUB"_s);
    EXPECT_EQ(beginPatient(1), -1);
    EXPECT_TRUE(said().value(0).endsWith(u"\r\nreadDouiData()でエラー。"_s));
}

TEST_F(ConsentScreens, ThePatientsFormsArePrintedWithTheLayoutChosen) {
    openPatient(1);
    answer({Answer::Yes});
    pressButton(*form, Qt::Key_F10);
    EXPECT_EQ(said(), (QStringList{u"印刷問合せ：同意書の印刷を行います。\r\nよろしいですか？"_s,
                                   u"書式ファイルなし：選択された書式が、システムに存在しません。"_s}));
    choose(1, 0);
    click(u"chkChkView_1"_s);
    answer({Answer::No});
    pressButton(*form, Qt::Key_F10);
    EXPECT_TRUE(practice.processes.started.isEmpty());
    click(u"chkTeisyutuDate"_s);
    answer({Answer::Yes});
    pressButton(*form, Qt::Key_F10);
    EXPECT_TRUE(practice.commands().startsWith(u"FileName,\"M再.wfd\"\r\nTitle,\"同意書印刷\"\r\n"_s));
    EXPECT_TRUE(practice.commands().endsWith(u"ShowWindow,2\r\n"_s));
    const QStringList columns{u"患者名"_s, u"再同意フラグ"_s, u"印刷社名"_s,
                              u"部位1"_s,  u"保険医氏名"_s,   u"提出年月日"_s};
    EXPECT_EQ(cells(u"同意書データ.csv"_s, columns),
              (QStringList{u"\"髙橋　花子\""_s, u"1"_s, u"\"本社\""_s, u"1"_s, u"\"山田'一\""_s, u"\"\""_s}));
    EXPECT_EQ(encode932(u"提出日付=0"_s).bytes, [&] {
        QFile file(data(u"印刷設定.ini"_s));
        return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n').value(1).trimmed() : QByteArray();
    }());

    click(u"chkTeisyutuDate"_s);
    click(u"chkChkView_0"_s);
    control<QComboBox>(u"cmbCorp"_s)->setCurrentIndex(0);
    answer({Answer::Yes});
    pressButton(*form, Qt::Key_F9);
    EXPECT_TRUE(practice.commands().startsWith(u"FileName,\"M初回.wfd\"\r\n"_s));
    EXPECT_EQ(cells(u"同意書データ.csv"_s, columns),
              (QStringList{u"\"髙橋　花子\""_s, u"0"_s, u"\"ひなた　若葉\""_s, u"0"_s, u"\"山田'一\""_s,
                           u"\"令和8年11月21日\""_s}));
}

TEST_F(ConsentScreens, TheLetterAndWhatItNeeds) {
    openPatient(1);
    said();
    answer({Answer::Yes});
    pressButton(*form, Qt::Key_F11);
    EXPECT_EQ(said(), QStringList{u"印刷問合せ：同意依頼書の印刷を行います。\r\nよろしいですか？"_s});
    EXPECT_EQ(
        practice.commands().section(u"\r\n"_s, 0, 2),
        u"FileName,\"依頼.wfd\"\r\nTitle,\"同意依頼書印刷\"\r\nSetDataText,\"同意依頼書\",\"同意依頼書.csv\""_s);
    EXPECT_EQ(cells(u"同意依頼書.csv"_s, {u"患者氏名"_s, u"医者名"_s, u"会社名"_s, u"要加療期間至"_s}),
              (QStringList{u"\"髙橋　花子\""_s, u"\"山田'一　先生御侍史\""_s, u"\"本社\""_s,
                           u"\"令和08年10月31日\""_s}));
    openPatient(2, u"99"_s); // acupuncture has no letter
    answer({Answer::Yes});
    pressButton(*form, Qt::Key_F11);
    EXPECT_EQ(said().value(1), u"同意書未設定：有効な同意書が設定されていません。"_s);

    // Without a consent the doctor's telephone comes from the doctor handed in, over a connection of its own.
    practice.database.run(u"insert into RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo) values (1, 1, 4)"_s);
    openPatient(4);
    click(u"chkChkView_1"_s);
    const QString adodb = QDir(practice.folders.program()).filePath(u"adodb.ini"_s);
    practice.addFile(adodb, "\r\n");
    pressButton(*form, Qt::Key_F9);
    EXPECT_EQ(said().value(1), u"患者データの取得に失敗しました。\r\n接続文字列取得できません。"_s);
    practice.addFile(
        adodb, encode932(u"[接続情報]\r\n接続情報=%1\r\n"_s.arg(practice.database.connectionString())).bytes);
    pressButton(*form, Qt::Key_F9);
    EXPECT_EQ(cells(u"同意書データ.csv"_s, {u"患者名"_s, u"保険医電話番号"_s}),
              (QStringList{u"\"名前　だけ\""_s, u"\"0999-8\""_s}));
    said();
    pressButton(*form, Qt::Key_F11);
    EXPECT_EQ(said().value(1), u"該当する患者データがありません。"_s);
}

TEST_F(ConsentScreens, TheOpenerStoresThePatientsOwnSettings) {
    cT_ADODB &db = practice.database.db;
    const QString where = u"nIDNo = 1"_s;
    answer({Answer::No});
    setPatientConsentForms(practice.environment, db, first, nullptr);
    EXPECT_EQ(said(), QStringList{u"保存確認：内容を保存してもよろしいですか？"_s});

    answer({Answer::Yes});
    meanwhile([] {}, Qt::Key_F12);
    setPatientConsentForms(practice.environment, db, first, nullptr);
    EXPECT_EQ(stored(u"RIYOUSHA_SUB"_s, where).count(u"NULL"_s), 12)
        << "the doctor's settings do not become the patient's";

    answer({Answer::Yes});
    meanwhile(
        [this] {
            choose(1, 0);
            click(u"optChkPrn_1"_s);
        },
        Qt::Key_F12);
    setPatientConsentForms(practice.environment, db, first, nullptr);
    EXPECT_EQ(stored(u"RIYOUSHA_SUB"_s, where),
              u"0|1|NULL|1|2|NULL|0|11|NULL|1|0|0"_s); // the other treatment's stay
    EXPECT_EQ(practice.database.value(u"select iDouishoIdKoutou from RIYOUSHA_SUB where nIDNo = 1"_s),
              u"5"_s);
    said();

    answer({Answer::Yes});
    meanwhile(
        [this] {
            click(u"optChkPrn_0"_s);
            practice.database.run(u"update RIYOUSHA_SUB set iDouiDispRiyouNo = 1 where nIDNo = 1"_s);
        },
        Qt::Key_F12);
    setPatientConsentForms(practice.environment, db, first, nullptr);
    EXPECT_TRUE(said().value(1).startsWith(u"同意書の設定は、他の端末で変更されています。"_s));
    EXPECT_EQ(stored(u"RIYOUSHA_SUB"_s, where), u"0|1|NULL|1|2|NULL|0|11|NULL|1|0|1"_s);

    practice.database.run(u"drop table RIYOUSHA_DOUI_REC"_s);
    answer({Answer::Yes});
    setPatientConsentForms(practice.environment, db, first, nullptr);
    const QString fault = said().value(1);
    EXPECT_TRUE(fault.startsWith(u'(') && fault.endsWith(u") btnDouiSyosikiSet_Click()でエラー"_s))
        << fault.toStdString();
}

TEST_F(ConsentScreens, ADoctorsRowTakesTheChoicesOfOneKindOfTreatment) {
    practice.database.run(
        u"update DOCTOR set iSaiDouiHariTypeNo = 4, iSaiDouiMasTypeNo = 5 where cIDNo = '12'"_s);
    openPatient(1);
    choose(1, 0);
    ASSERT_EQ(patient->updateIshiDoui(), 0);
    EXPECT_EQ(practice.database.rows(
                  u"select iSyokaiDouiMasTypeNo, iSaiDouiMasTypeNo, iSaiDouiHariTypeNo from DOCTOR"_s),
              (QStringList{u"1|2|4"_s, u"NULL|NULL|NULL"_s}));
}

} // namespace
