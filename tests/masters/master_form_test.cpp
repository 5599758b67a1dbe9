#include "masters/master_input_form.h"
#include "masters/master_list_form.h"

#include "app/base/codepage932.h"
#include "app/base/settings.h"
#include "search/master_search_form.h"
#include "search/patient_search_form.h"
#include "tests/export/csv_dialog.h"
#include "tests/masters/practice.h"
#include "tests/widgets/form_keys.h"
#include "widgets/grid.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QPlainTextEdit>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

class MasterForms : public MasterPractice {
protected:
    MasterForms() {
        writePostalCodes(encode932(uR"(1,"9","9921010","ﾐﾄﾞﾘｶﾜｹﾝ","ﾜｶﾊﾞｼ","ﾁｭｳｵｳ","緑川県","若葉市","中央"
1,"9","9921110","ﾐﾄﾞﾘｶﾜｹﾝ","ﾜｶﾊﾞｼ","ｻｸﾗﾀﾞｲ","緑川県","若葉市","桜台")"_s)
                             .bytes);
    }

    static QLineEdit &box(const QWidget &form, const QString &name) {
        return *form.findChild<QLineEdit *>(name);
    }
    static void type(const QWidget &form, const QString &name, const QString &text) {
        QLineEdit &line = box(form, name);
        line.setFocus();
        line.selectAll();
        text.isEmpty() ? line.clear() : typeText(&line, text);
    }
    static void press(const QWidget &form, const QString &button) {
        form.findChild<QPushButton *>(button)->click();
    }
    static QString shown(const QWidget &form, int column = 0, const QString &name = u"grdData"_s) {
        const auto *model = form.findChild<Grid *>(name)->model();
        QStringList cells;
        for (int row = 0; row < model->rowCount(); ++row)
            cells << model->index(row, column).data().toString();
        return cells.join(u' ');
    }
    static QString current(const QWidget &form, const QString &name = u"grdData"_s) {
        return form.findChild<Grid *>(name)->currentIndex().siblingAtColumn(0).data().toString();
    }
    /// Works the next modal window of that name, and closes it if the work has not.
    template <class Work> void next(const QString &name, Work work) {
        QTimer::singleShot(0, [name, work] {
            QWidget *form = QApplication::activeModalWidget();
            ASSERT_TRUE(form && form->objectName() == name);
            work(*form);
            form->close();
        });
    }
    QString said(int last = 1) const { return messages.shown.value(messages.shown.size() - last).text; }

    MasterEditor editor{environment, database.db};
};

} // namespace

TEST_F(MasterForms, ANewDoctorIsEnteredByPostalCode) {
    MasterInputForm form(editor, MasterKind::Doctor);
    ASSERT_EQ(form.iInit(), 0);
    showActive(form);
    EXPECT_EQ(box(form, u"cIDNo"_s).text(), u"121"_s);
    EXPECT_EQ(form.iDataSave(), -1);
    EXPECT_EQ(said(), u"医師名を入力してください。"_s);
    type(form, u"cName"_s, u"緑川　蛍"_s);
    type(form, u"cYubinNo"_s, u"９９２１１１０"_s);
    EXPECT_EQ(box(form, u"cYubinNo"_s).text(), u"992-1110"_s);
    press(form, u"btnYubin"_s);
    EXPECT_EQ(box(form, u"cAddress1"_s).text(), u"緑川県若葉市桜台"_s);
    EXPECT_EQ(box(form, u"cAddressKana"_s).text(), u"ミドリカワケンワカバシサクラダイ"_s);
    typeText(&box(form, u"cAddress1"_s), u"３－４"_s);
    EXPECT_EQ(form.iDataSave(), 0);
    EXPECT_EQ(said(2), u"内容を登録しますか？"_s);
    EXPECT_EQ(messages.shown[messages.shown.size() - 2].title, u"登録確認"_s);
    EXPECT_EQ(messages.notes, QStringList{u"登録しました。"_s});
    EXPECT_EQ(
        database.value(u"SELECT cName || cYubinNo || cAddress1 || IFNULL(cTelNo, '-') FROM DOCTOR WHERE "
                       "cIDNo = '121'"_s),
        u"緑川　蛍992-1110緑川県若葉市桜台３－４-"_s);
}

TEST_F(MasterForms, ANumberIsTheSameWithZerosBeforeIt) {
    MasterInputForm doctor(editor, MasterKind::Doctor);
    ASSERT_EQ(doctor.iInit(), 0);
    type(doctor, u"cIDNo"_s, u"012"_s);
    type(doctor, u"cName"_s, u"緑川　蛍"_s);
    EXPECT_EQ(doctor.iDataSave(), -1);
    EXPECT_EQ(said(), u"同じIDのデータが存在します。 "_s);

    MasterInputForm facility(editor, MasterKind::Facility);
    ASSERT_EQ(facility.iInit(), 0);
    type(facility, u"nIDNo"_s, u"077"_s);
    type(facility, u"cShamei1"_s, u"若葉診療所"_s);
    EXPECT_EQ(facility.iDataSave(), 0) << said().toStdString();
    EXPECT_EQ(database.value(u"SELECT cShamei1 FROM SISETSU WHERE nIDNo = 77"_s), u"若葉診療所"_s);
}

TEST_F(MasterForms, AnAddressFindsItsPostalCodeAndAFoundOneKeepsTheHouse) {
    MasterInputForm form(editor, MasterKind::Facility);
    ASSERT_EQ(form.iInit(u"5"_s), 0);
    showActive(form);
    type(form, u"cAddress1"_s, u"緑川県若葉市桜台９"_s);
    press(form, u"btnAdd"_s);
    EXPECT_EQ(box(form, u"cYubinNo"_s).text(), u"992-1110"_s);
    press(form, u"btnYubin"_s);
    EXPECT_EQ(box(form, u"cAddress1"_s).text(), u"緑川県若葉市桜台９"_s);
    // Another address goes only when the user says so; of several places one is chosen.
    type(form, u"cYubinNo"_s, u"992"_s);
    messages.answers = {Answer::No};
    next(u"frmYubin"_s, [](QWidget &list) {
        EXPECT_EQ(list.windowTitle(), u"住所検索"_s);
        EXPECT_EQ(shown(list, 0, u"ssList"_s), u"992-1010 992-1110"_s);
        QTest::keyClick(list.findChild<Grid *>(u"ssList"_s), Qt::Key_Return);
    });
    press(form, u"btnYubin"_s);
    EXPECT_TRUE(said().contains(u"「緑川県若葉市中央」に置き換えます"_s)) << said().toStdString();
    EXPECT_EQ(box(form, u"cAddress1"_s).text(), u"緑川県若葉市桜台９"_s);
    QFile::remove(folders.data() + u"/郵便番号/KEN_ALL.CSV"_s);
    press(form, u"btnAdd"_s);
    EXPECT_EQ(messages.shown.constLast().title, u"郵便番号検索"_s);
    EXPECT_TRUE(said().contains(u"KEN_ALL.CSV"_s));
}

TEST_F(MasterForms, AChangeIsCopiedWhenTheUserWantsIt) {
    MasterInputForm form(editor, MasterKind::Doctor);
    ASSERT_EQ(form.iInit(u"12"_s), 0);
    showActive(form);
    EXPECT_EQ(box(form, u"SISETSUSHAMEI"_s).text(), u"甲病院"_s);
    EXPECT_EQ(box(form, u"cAddress1"_s).text(), u"自宅"_s);
    type(form, u"cName"_s, u"医師乙"_s);
    messages.answers = {Answer::Yes, Answer::Cancel};
    EXPECT_EQ(form.iDataSave(), -1);
    EXPECT_EQ(doctor(u"cName"_s), u"医師'甲"_s);
    messages.answers = {Answer::Yes, Answer::Yes};
    EXPECT_EQ(form.iDataSave(), 0);
    EXPECT_TRUE(said(2).startsWith(u"この医師は、同意記録 3 件、利用者 3 名 で使われています。"_s));
    EXPECT_EQ(database.value(u"SELECT COUNT(*) FROM RIYOUSHA WHERE cDouiIsiName1 = '医師乙'"_s), u"2"_s);
}

TEST_F(MasterForms, AColleaguesWriteAndUnsavedInputAreTold) {
    MasterInputForm form(editor, MasterKind::Doctor);
    ASSERT_EQ(form.iInit(u"12"_s), 0);
    showActive(form);
    press(form, u"btnEnd"_s);
    EXPECT_FALSE(form.isVisible());
    EXPECT_TRUE(messages.shown.isEmpty()); // nothing was touched
    form.show();
    type(form, u"cTelNo"_s, u"1"_s);
    database.run(u"UPDATE DOCTOR SET tUpDateTime = '2026/01/02 00:00:00' WHERE cIDNo = '12'"_s);
    EXPECT_EQ(form.iDataSave(), -1);
    EXPECT_EQ(said(), u"他のＰＣからデータが更新されてますので保存できません｡ "_s);
    EXPECT_EQ(messages.shown.size(), 1);
    messages.answers = {Answer::No};
    press(form, u"btnEnd"_s);
    EXPECT_TRUE(form.isVisible());
    MasterInputForm other(editor, MasterKind::Doctor);
    EXPECT_EQ(other.iInit(u"999"_s), -1);
    EXPECT_EQ(other.sErrMsg(), u"該当の医師データが取得できませんでした。"_s);
}

// A doctor who moves to another institution takes its address over, but keeps a telephone of his own.
TEST_F(MasterForms, AnotherInstitutionBringsItsAddress) {
    database.run(u"UPDATE SISETSU SET cAddress1 = '乙の住所', cTelNo = '0999-6' WHERE nIDNo = 6;"
                 "UPDATE DOCTOR SET cTelNo = '090-3' WHERE cIDNo = '3'"_s);
    MasterInputForm form(editor, MasterKind::Doctor);
    ASSERT_EQ(form.iInit(u"3"_s), 0);
    showActive(form);
    type(form, u"iSisetsuCode"_s, u"6"_s);
    QTest::keyClick(&box(form, u"iSisetsuCode"_s), Qt::Key_Return);
    EXPECT_EQ(box(form, u"cKikan"_s).text(), u"乙荘"_s);
    EXPECT_EQ(box(form, u"cAddress1"_s).text(), u"乙の住所"_s);
    EXPECT_EQ(box(form, u"cTelNo"_s).text(), u"090-3"_s);
    messages.answers = {Answer::Yes, Answer::No};
    EXPECT_EQ(form.iDataSave(), 0);
    EXPECT_EQ(doctor(u"iSisetsuCode"_s, 3), u"6"_s);
    EXPECT_EQ(database.value(u"SELECT cDouiIsiName1 FROM RIYOUSHA WHERE nIDNo = 4"_s), u"三浦 一"_s);
}

TEST_F(MasterForms, ConsentFormSettingsAreStoredWithTheDoctor) {
    database.run(u"UPDATE DOCTOR SET iSaiDouiON = 0, iDouiDispRiyouNo = 1 WHERE cIDNo = '12'"_s);
    MasterInputForm form(editor, MasterKind::Doctor);
    ASSERT_EQ(form.iInit(u"12"_s), 0);
    showActive(form);
    next(u"frmDouiSubmainIshi"_s, [](QWidget &settings) {
        EXPECT_FALSE(settings.findChild<QCheckBox *>(u"chkDouiAri_1"_s)->isChecked());
        settings.findChild<QCheckBox *>(u"chkDouiAri_1"_s)->setChecked(true);
        press(settings, u"btnRegist"_s);
    });
    press(form, u"btnDouiSyosikiSet"_s);
    EXPECT_EQ(doctor(u"iSaiDouiON"_s), u"0"_s);
    EXPECT_EQ(form.iDataSave(), 0) << said().toStdString();
    EXPECT_EQ(doctor(u"iSaiDouiON || iDouiDispRiyouNo"_s), u"11"_s);
}

TEST_F(MasterForms, ConsentFormSettingsThatCannotBeReadAreTold) {
    MasterInputForm form(editor, MasterKind::Doctor);
    ASSERT_EQ(form.iInit(u"12"_s), 0);
    database.run(u"DROP TABLE SHINSEISYO"_s);
    press(form, u"btnDouiSyosikiSet"_s);
    EXPECT_EQ(messages.shown.constLast().title, u"同意書式設定画面：初期化エラー"_s);
    EXPECT_TRUE(said().endsWith(u"getDouiData() でエラー"_s)) << said().toStdString();
}

// The institution's address is mended where it is seen; that this writes the doctor's row is no colleague's
// work.
TEST_F(MasterForms, AnInstitutionIsMendedWhileItsDoctorIsEdited) {
    MasterInputForm form(editor, MasterKind::Doctor);
    ASSERT_EQ(form.iInit(u"3"_s), 0);
    showActive(form);
    type(form, u"cFaxNo"_s, u"0999-7"_s);
    next(u"frm施設検索"_s, [&](QWidget &list) {
        next(u"frmInputSisetsu"_s, [&](QWidget &facility) {
            type(facility, u"cAddress1"_s, u"緑川県若葉市桜台7"_s);
            press(facility, u"btnRegist"_s);
        });
        press(list, u"cmdEdit"_s);
    });
    press(form, u"btnSelSisetsu"_s);
    EXPECT_EQ(doctor(u"cAddress1"_s, 3), u"緑川県若葉市桜台7"_s);
    EXPECT_EQ(box(form, u"cAddress1"_s).text(), u"緑川県若葉市桜台7"_s);
    EXPECT_EQ(box(form, u"cFaxNo"_s).text(), u"0999-7"_s);
    EXPECT_EQ(form.iDataSave(), 0) << said().toStdString();
    EXPECT_EQ(doctor(u"cFaxNo"_s, 3), u"0999-7"_s);
}

TEST_F(MasterForms, TheFacilityFormKeepsWhatItDoesNotShow) {
    database.run(
        u"UPDATE SISETSU SET cComment = '一\r\n二', iType = 1, cSisetsuType = '有料老人ホーム' WHERE nIDNo = 5"_s);
    MasterInputForm form(editor, MasterKind::Facility);
    ASSERT_EQ(form.iInit(u"5"_s), 0);
    showActive(form);
    auto *kind = form.findChild<QComboBox *>(u"cSisetsuType"_s);
    kind->setFocus(Qt::TabFocusReason);
    kind->lineEdit()->selectAll();
    QTest::keyClick(kind, Qt::Key_Return);
    form.findChild<QComboBox *>(u"cDouiIrai"_s)->setEditText(u"電話"_s);
    EXPECT_EQ(form.iDataSave(), 0);
    EXPECT_EQ(
        database.value(
            u"SELECT cDouiIrai || cSisetsuType || cComment || iType || nLat FROM SISETSU WHERE nIDNo = 5"_s),
        u"電話有料老人ホーム一\r\n二135.123456789"_s);
}

TEST_F(MasterForms, TheListNarrowsByNumberAndByLetters) {
    frmMainteIshi02 form(environment, database.db);
    ASSERT_EQ(form.iInit(), 0);
    showActive(form);
    EXPECT_EQ(shown(form), u"3 12 120"_s);
    EXPECT_EQ(shown(form, 6), u"1 2 "_s); // patients, not consents
    type(form, u"txt_SiboriNo"_s, u"１２"_s);
    EXPECT_EQ(shown(form), u"12 120"_s);
    type(form, u"txt_SiboriName"_s, u"いしこう"_s);
    EXPECT_EQ(shown(form), u"12"_s);
    type(form, u"txt_SiboriNo"_s, {});
    type(form, u"txt_SiboriName"_s, u"ﾐｳﾗ"_s);
    EXPECT_EQ(shown(form), u"3"_s);
}

TEST_F(MasterForms, DeletionNamesWhoUsesTheDoctor) {
    frmMainteIshi02 form(environment, database.db);
    ASSERT_EQ(form.iInit(), 0);
    showActive(form);
    form.findChild<Grid *>(u"grdData"_s)->goTo(1, 0);
    messages.answers = {Answer::No};
    pressButton(form, Qt::Key_F3);
    EXPECT_TRUE(said().contains(u"同意記録 3 件、利用者 3 名"_s));
    EXPECT_TRUE(said().endsWith(u"選択行のデータを削除します。\r\nよろしいですか？"_s));
    EXPECT_EQ(messages.shown.constLast().title, u"削除確認"_s);
    form.findChild<Grid *>(u"grdData"_s)->goTo(2, 0);
    pressButton(form, Qt::Key_F3);
    EXPECT_EQ(said(2), u"選択行のデータを削除します。\r\nよろしいですか？"_s);
    EXPECT_EQ(shown(form), u"3 12"_s);
    EXPECT_TRUE(form.written());
    // A colleague was faster.
    database.run(u"DELETE FROM DOCTOR WHERE cIDNo = '12'"_s);
    pressButton(form, Qt::Key_F3);
    EXPECT_EQ(said(), u"該当の医師データが取得できませんでした。"_s);
    EXPECT_EQ(shown(form), u"3"_s);
}

TEST_F(MasterForms, TheListIsPrintedSavedAndLeftForTheMenu) {
    frmMainteIshi02 form(environment, database.db);
    ASSERT_EQ(form.iInit(), 0);
    showActive(form);
    pressButton(form, Qt::Key_F11);
    ASSERT_EQ(processes.started.size(), 1);
    EXPECT_TRUE(processes.started[0].program.endsWith(u"Dovrinマスター一覧.exe"_s));
    EXPECT_EQ(processes.started[0].arguments, QStringList{u" 4"_s});
    processes.missing = {u"Dovrinマスター一覧.exe"_s, u"Main.exe"_s};
    pressButton(form, Qt::Key_F11);
    EXPECT_EQ(said(), u"印刷アプリケーションが見つかりません。"_s);
    {
        CsvDialog dialog([&](QDialog &csv) {
            EXPECT_EQ(CsvDialog::box(csv, u"txtFileName"_s).text(), u"医師一覧_20261121.CSV"_s);
            CsvDialog::pressSave(csv, programFolder.path());
        });
        press(form, u"mnCSV"_s);
    }
    QFile file(programFolder.filePath(u"医師一覧_20261121.CSV"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(decode932(file.readAll()).contains(u"\"医師'甲\""_s));
    pressButton(form, Qt::Key_F12);
    EXPECT_EQ(said(), u"実行ファイルが見つかりません。"_s);
    EXPECT_TRUE(form.isVisible());
    processes.missing.clear();
    pressButton(form, Qt::Key_F12);
    EXPECT_FALSE(form.isVisible());
}

TEST_F(MasterForms, APracticeMayKeepTheListFromLeaving) {
    QFile file(folders.data() + u"/患者管理設定.ini"_s);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(encode932(u"[マスタ管理]\r\nCSV出力制限=1\r\n簡易メニュー=1\r\n"_s).bytes);
    file.close();
    frmMainteIshi02 form(environment, database.db);
    ASSERT_EQ(form.iInit(), 0);
    showActive(form);
    for (const QString &name : {u"mnCSV"_s, u"btnPrint"_s})
        EXPECT_FALSE(form.findChild<QPushButton *>(name)->isVisible()) << name.toStdString();
}

TEST_F(MasterForms, APatientsDoctorAndStaffAreEnteredWhereTheyArePicked) {
    MasterInputForm form(editor, MasterKind::Patient);
    ASSERT_EQ(form.iInit({}), 0);
    showActive(form);
    for (const auto &[pick, list] :
         {std::pair(u"btnnDouiIsiCd"_s, u"frm医師検索"_s), std::pair(u"btnnTantou"_s, u"frm施術者検索"_s)}) {
        bool isOffered = false;
        next(list, [&](QWidget &shown) {
            const auto *add = shown.findChild<QPushButton *>(u"cmdNew"_s);
            isOffered = add && add->isVisible();
            shown.close();
        });
        press(form, pick);
        EXPECT_TRUE(isOffered) << list.toStdString();
    }
}

TEST_F(MasterForms, ThePickListTakesANewDoctorAndStaysOnIt) {
    MasterSearch doctors(Master::Doctor, database.db, environment);
    int changes = 0;
    MasterEditor counted(environment, database.db, [&] { ++changes; });
    counted.offer(doctors, MasterKind::Doctor);
    next(u"frm医師検索"_s, [&](QWidget &list) {
        type(list, u"txtShibori"_s, u"三浦"_s);
        next(u"frmInputIshi02"_s, [](QWidget &entry) {
            type(entry, u"cName"_s, u"新しい医師"_s);
            press(entry, u"btnRegist"_s);
        });
        press(list, u"cmdNew"_s);
        EXPECT_EQ(current(list, u"ssList"_s), u"121"_s);
        next(u"frmInputIshi02"_s, [](QWidget &entry) { press(entry, u"btnEnd"_s); });
        press(list, u"cmdEdit"_s);
        QTest::keyClick(list.findChild<Grid *>(u"ssList"_s), Qt::Key_Return);
    });
    EXPECT_EQ(doctors.iDspStart(), 0);
    EXPECT_EQ(doctors.seled().name, u"新しい医師"_s);
    EXPECT_EQ(changes, 1);
}

// By keys alone: short dates, codes of other masters, choices; from the pick list where a consent is begun.
TEST_F(MasterForms, APatientIsEnteredWhereOneIsPicked) {
    database.run(u"INSERT INTO STAFF (iKyotenCd, iKyotenEb, nIDNo, cName) VALUES (1, 1, 8, '施術　花')"_s);
    cls患者検索 patients(database.db, environment);
    editor.offer(patients, MasterKind::Patient);
    next(u"frm患者検索"_s, [&](QWidget &list) {
        next(u"frmInputRiyousha"_s, [&](QWidget &form) {
            EXPECT_EQ(box(form, u"nIDNo"_s).text(), u"5"_s);
            EXPECT_EQ(form.findChild<QComboBox *>(u"iSejutsuKubun"_s)->currentText(), u"マッサージ"_s);
            type(form, u"cName"_s, u"青木"_s);
            type(form, u"tBirthday"_s, u"S25.3.10"_s);
            QTest::keyClick(form.findChild<QComboBox *>(u"iSexKubun"_s), Qt::Key_Down);
            type(form, u"nDouiIsiCd"_s, u"12"_s);
            type(form, u"cHokenNo"_s, u"00139999"_s); // which nobody registered
            type(form, u"nTantou"_s, u"99"_s);        // nobody
            press(form, u"btnRegist"_s);
            EXPECT_TRUE(form.isVisible());
            type(form, u"nTantou"_s, u"8"_s);
            type(form, u"tSyoryoDay"_s, u"13/40"_s);
            press(form, u"btnRegist"_s);
            EXPECT_TRUE(said().contains(u"初療日")) << said().toStdString();
            type(form, u"tSyoryoDay"_s, u"2026/11/2"_s);
            press(form, u"btnRegist"_s);
            EXPECT_FALSE(form.isVisible()) << said().toStdString();
        });
        press(list, u"cmdNew"_s);
        EXPECT_EQ(current(list, u"ssList"_s), u"5"_s);
    });
    ASSERT_EQ(patients.iDspStart(), 0);
    EXPECT_EQ(
        database.rows(
            u"SELECT cName, tBirthday, iSexKubun, cDouiIsiName1, cHokenNo, nTantou, tSyoryoDay FROM RIYOUSHA"
            " WHERE nIDNo = 5"_s),
        QStringList{u"青木|1950/03/10|1|医師'甲|00139999|8|2026/11/02"_s});
}

TEST_F(MasterForms, APatientWithConsentsIsNotDeletedAndNobodyEntersHimWhereTheSuiteDoes) {
    frmMainteRiyousha list(environment, database.db);
    ASSERT_EQ(list.iInit(), 0);
    EXPECT_EQ(shown(list), u"1 2 4"_s);
    press(list, u"cmdDelete"_s);
    EXPECT_TRUE(said().contains(u"同意記録が 2 件")) << said().toStdString();
    EXPECT_EQ(shown(list), u"1 2 4"_s);

    Settings(folders).iSwitch(Setting::利用者登録, false);
    EXPECT_FALSE(editor.mayEdit(MasterKind::Patient));
    EXPECT_TRUE(editor.mayEdit(MasterKind::Doctor));
}
