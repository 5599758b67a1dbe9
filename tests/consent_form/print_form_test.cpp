// The printing screen, worked by keys and by its controls.

#include "app/base/ini_file.h"
#include "print/consent_form/consent_print_form.h"
#include "tests/consent_form/practice.h"
#include "tests/widgets/form_keys.h"
#include "widgets/date_box.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QRadioButton>
#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

class PrintForm : public testing::Test {
protected:
    PrintForm() {
        for (const QString &ini : {u"印刷設定.ini"_s, u"患者管理設定.ini"_s})
            practice.addFile(practice.data(ini), "\r\n");
        practice.processes.act = [this](const RecordedProcesses::Start &start) {
            practice.addFile(start.arguments.at(0));
            return ProcessEnd{ProcessEnd::Exited, 0};
        };
    }
    void open() {
        form = std::make_unique<frm同意書印刷>(practice.environment);
        ASSERT_EQ(form->iInit(practice.database.db, {}, {}, {}, 0), 0);
        showActive(*form);
    }
    template <class W> W *control(const QString &name) { return form->findChild<W *>(name); }
    void enter(const QString &box, const QString &text) {
        auto *edit = control<QLineEdit>(box);
        edit->setFocus();
        edit->selectAll();
        typeText(edit, text);
        QTest::keyClick(edit, Qt::Key_Return);
    }
    QString stored(const QString &key) const {
        clsOplIniFile ini;
        ini.iInit(practice.data(u"印刷設定.ini"_s));
        return ini.csGetProfileString(u"同意書"_s, key);
    }

    Practice practice;
    std::unique_ptr<frm同意書印刷> form;
};

TEST_F(PrintForm, PrintsOnePatientAndKeepsTheChoices) {
    open();
    enter(u"txtcRiyoushaNo"_s, u"1"_s);
    pressButton(*form, Qt::Key_F9);
    EXPECT_EQ(practice.said(), QStringList());
    EXPECT_EQ(practice.commands(),
              u"FileName,\"M再.wfd\"\r\nTitle,\"同意書印刷\"\r\n"
              "SetDataText,\"同意書データ\",\"同意書データ.csv\"\r\nPrintPaper, A4\r\nShowWindow,2\r\n"_s);
    EXPECT_TRUE(practice.written(u"同意書データ.csv"_s).contains(u"\"髙橋　花子\""_s));
    EXPECT_EQ(practice.processes.started.size(), 1);

    enter(u"txtcRiyoushaNo"_s, u"2"_s);
    control<QComboBox>(u"cmbYoushiki"_s)->setCurrentIndex(int(FormStyle::Again));
    control<QCheckBox>(u"chkNaiyou"_s)->setChecked(false);
    control<QCheckBox>(u"chkTeisyutuDate"_s)->setChecked(true);
    enter(u"imD_Teisyutu"_s, u"R8.12.1"_s);
    pressButton(*form, Qt::Key_F11);
    EXPECT_EQ(practice.said(), QStringList());
    EXPECT_TRUE(practice.commands().startsWith(u"FileName,\"H再_B5.wfd\""_s));
    EXPECT_TRUE(practice.commands().endsWith(u"PrintPaper, B5\r\nPrintOutFromDialog\r\n"_s));
    EXPECT_TRUE(practice.written(u"同意書データ.csv"_s).contains(u"令和8年12月1日"_s));

    open();
    EXPECT_EQ(control<QLineEdit>(u"txtcRiyoushaName"_s)->text(), u"佐藤　一"_s);
    EXPECT_EQ(control<QComboBox>(u"cmbYoushiki"_s)->currentIndex(), int(FormStyle::Again));
    EXPECT_FALSE(control<QCheckBox>(u"chkNaiyou"_s)->isChecked());
    EXPECT_TRUE(control<QCheckBox>(u"chkTeisyutuDate"_s)->isChecked());
}

TEST_F(PrintForm, SaysWhyNothingIsPrinted) {
    open();
    pressButton(*form, Qt::Key_F9);
    EXPECT_EQ(practice.said(), QStringList{u"利用者を指定してください。"_s});

    enter(u"txtcRiyoushaNo"_s, u"1"_s);
    practice.processes.missing = QStringList{u"wfrfv10.exe"_s};
    pressButton(*form, Qt::Key_F9);
    const QString failed = practice.said().join(u'|');
    EXPECT_TRUE(
        failed.startsWith(u"帳票の印刷に失敗しました。[帳票プログラム「wfrfv10.exe」が見つかりません。"_s));
    practice.processes.missing.clear();

    ASSERT_TRUE(QFile::remove(practice.system(u"M再.wfd"_s)));
    pressButton(*form, Qt::Key_F9);
    EXPECT_EQ(practice.messages.shown.last().title, u"ファイルエラー"_s);
    EXPECT_EQ(practice.said(), QStringList{u"同意書（M再.wfd）が存在しません。\r\n処理を中止します。"_s});

    control<QRadioButton>(u"optTaisyo_1"_s)->click();
    control<QLineEdit>(u"txtcSejutsuNo"_s)->setText(u"6"_s);
    practice.messages.answers = {Answer::Ok};
    pressButton(*form, Qt::Key_F11);
    EXPECT_EQ(practice.said().value(1), u"同意書（M再.wfd）が存在しません。\r\n処理を中止します。"_s)
        << "of all who match";
    control<QRadioButton>(u"optTaisyo_0"_s)->click();

    enter(u"txtcRiyoushaNo"_s, u"3"_s);
    pressButton(*form, Qt::Key_F9);
    const QStringList oral = practice.said();
    ASSERT_EQ(oral.size(), 2);
    EXPECT_TRUE(oral[0].contains(u"3　口頭　太郎"_s));
    EXPECT_EQ(oral[1], u"該当する同意書データがありません。"_s);

    practice.database.run(u"DELETE FROM SHINSEISYO"_s);
    enter(u"txtcRiyoushaNo"_s, u"1"_s);
    pressButton(*form, Qt::Key_F11);
    EXPECT_EQ(practice.messages.shown.last().title, u"同意書未登録エラー"_s);
    EXPECT_EQ(practice.said(), QStringList{u"マッサージ用の同意書が、登録されていません。\r\n"
                                           "帳票管理マスタ画面で登録してください。"_s});
    practice.database.run(u"DROP TABLE SHINSEISYO"_s);
    pressButton(*form, Qt::Key_F11);
    EXPECT_TRUE(practice.said().join(u'|').startsWith(u"患者データの取得に失敗しました。"_s));
    EXPECT_TRUE(practice.processes.started.isEmpty());
}

TEST_F(PrintForm, TextsThatThePaperCannotSayAreToldBefore) {
    open();
    enter(u"txtcRiyoushaNo"_s, u"5"_s);
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        practice.messages.answers = {answer};
        pressButton(*form, Qt::Key_F11);
        const QStringList texts = practice.said();
        ASSERT_EQ(texts.size(), 1);
        EXPECT_TRUE(texts[0].contains(u"𠮷田"_s));
        EXPECT_EQ(practice.processes.started.size(), answer == Answer::Yes ? 1 : 0);
    }
}

TEST_F(PrintForm, PrintsAllWhoMatchAsABatch) {
    open();
    control<QRadioButton>(u"optTaisyo_1"_s)->click();
    control<QRadioButton>(u"optSejutuKbn_2"_s)->click();
    control<QComboBox>(u"cmbSort"_s)->setCurrentIndex(int(FormOrder::Kana));
    practice.messages.answers = {Answer::Cancel};
    pressButton(*form, Qt::Key_F11);
    const QStringList asked = practice.said();
    ASSERT_EQ(asked.size(), 1);
    EXPECT_TRUE(asked[0].contains(u"3　口頭　太郎"_s));
    EXPECT_TRUE(practice.processes.started.isEmpty());

    practice.messages.answers = {Answer::Ok, Answer::No};
    pressButton(*form, Qt::Key_F11);
    const QString question = practice.said().value(1);
    EXPECT_TRUE(question.contains(u"𠮷田"_s)) << "a text that would have to be changed";
    EXPECT_TRUE(question.endsWith(u"対象 4 件：同意書 4 通を印刷します。よろしいですか？"_s))
        << "and how many, in one box";
    EXPECT_TRUE(practice.processes.started.isEmpty());

    practice.messages.answers = {Answer::Ok, Answer::Yes, Answer::Ok};
    pressButton(*form, Qt::Key_F11);
    const QStringList all = practice.said();
    EXPECT_EQ(all.size(), 2) << "no box behind the viewer";
    EXPECT_EQ(control<QLabel>(u"lblState"_s)->text(), u"同意書 4 件を出力しました。"_s);
    // By kana: 2, 1, 4, 5.
    EXPECT_TRUE(
        practice.commands(u"Com.dat"_s)
            .remove(QRegularExpression(u"douisho-[^/]*/"_s))
            .startsWith(
                u"SetTitle,\"同意書1\"\r\nSetImageField,\"QRコード\"\r\n"
                "SetDataText,同意書データ,\"2_同意書データ.csv\"\r\nSetReport,\"H再_B5.wfd\"\r\nAddReport\r\n"_s));
    EXPECT_TRUE(practice.commands(u"cmdSetPrint.dat"_s).endsWith(u"PrintPaper, A4\r\nPrintOut\r\n"_s));
    EXPECT_EQ(stored(u"施術区分"_s), u"2"_s);
    EXPECT_EQ(stored(u"ソート順"_s), u"1"_s);

    enter(u"imD_KikanFrom"_s, u"2030/01/01"_s);
    pressButton(*form, Qt::Key_F11);
    EXPECT_EQ(practice.said(), QStringList{u"該当する患者データがありません。"_s});
    enter(u"imD_KikanTo"_s, u"2029/01/01"_s);
    pressButton(*form, Qt::Key_F11);
    EXPECT_EQ(practice.said(), QStringList{u"期間終了日の範囲を正しく指定してください。"_s});
}

TEST_F(PrintForm, FixedLayoutsOfOralConsentsAreASettingOfTheSuite) {
    practice.addFile(practice.system(u"埼玉口頭同意M.wfd"_s));
    open();
    control<QAction>(u"mnDouiOpt"_s)->trigger();
    EXPECT_FALSE(control<QComboBox>(u"cmbYoushiki2"_s)->isEnabled());
    open();
    EXPECT_TRUE(control<QAction>(u"mnDouiOpt"_s)->isChecked());
    enter(u"txtcRiyoushaNo"_s, u"3"_s);
    pressButton(*form, Qt::Key_F9);
    EXPECT_EQ(practice.said(), QStringList());
    EXPECT_TRUE(practice.commands().startsWith(u"FileName,\"埼玉口頭同意M.wfd\""_s));
}

TEST_F(PrintForm, OpensWithoutSettings) {
    ASSERT_TRUE(QFile::remove(practice.data(u"印刷設定.ini"_s)));
    open();
    const QStringList texts = practice.said();
    ASSERT_EQ(texts.size(), 1);
    EXPECT_TRUE(texts[0].startsWith(u"印刷条件の取得に失敗しました。"_s));
    EXPECT_TRUE(control<QCheckBox>(u"chkNaiyou"_s)->isChecked());
}

} // namespace
