// The renewal list's screen, worked by its controls.

#include "app/base/ini_file.h"
#include "app/base/unicode_twin.h"
#include "consent/screens/consent_list_form.h"
#include "print/renewal_list/renewal_list_form.h"
#include "tests/renewal_list/renewals.h"
#include "tests/widgets/form_keys.h"
#include "widgets/date_box.h"

#include <QAction>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

class RenewalListForm : public testing::Test {
protected:
    RenewalListForm() {
        for (const QString &layout : {u"同意書更新チェックリスト.wfd"_s, u"同意管更新管理表.wfd"_s})
            practice.addFile(practice.system(layout));
    }
    void open(const std::vector<qint32> &patients = {101, 102, 103, 104, 102}) {
        form = std::make_unique<frm同意書更新リスト印刷>(practice.environment);
        ASSERT_EQ(form->Init(practice.database.db, patients), 0);
        showActive(*form);
    }
    void choose(const QString &name, int position) {
        form->findChild<QComboBox *>(name)->setCurrentIndex(position);
    }
    void month(const QString &typed) {
        auto *box = form->findChild<DateBox *>(u"imD_Tsuki"_s);
        box->selectAll();
        typeText(box, typed);
    }
    QString file() const { return practice.written(u"同意書更新データ.csv"_s); }

    Renewals practice;
    std::unique_ptr<frm同意書更新リスト印刷> form;
};

TEST_F(RenewalListForm, PrintsEitherLayoutAndKeepsTheChoices) {
    open();
    EXPECT_EQ(form->findChild<QLabel *>(u"lblTaisyo"_s)->text(), u"対象の利用者 4 人"_s);
    EXPECT_EQ(form->findChild<DateBox *>(u"imD_Tsuki"_s)->text(), u"2026/11"_s);
    pressButton(*form, Qt::Key_F9);
    EXPECT_EQ(practice.said(), QStringList());
    EXPECT_EQ(practice.commands(),
              u"FileName,\"同意書更新チェックリスト.wfd\"\r\nTitle,\"同意書書更新リスト印刷\"\r\n"
              "SetDataText,\"同意データ\",\"同意書更新データ.csv\"\r\nPrintPaper, A4\r\nShowWindow,2\r\n"_s);
    EXPECT_EQ(file().count(u"\r\n"_s), 6) << "the heading and five lines";

    choose(u"cmbPattern"_s, 1);
    choose(u"cmbJouken"_s, 1);
    choose(u"cmbKaiPage"_s, 2);
    choose(u"cmbSort"_s, 3);
    pressButton(*form, Qt::Key_F11);
    EXPECT_TRUE(practice.commands().startsWith(u"FileName,\"同意管更新管理表.wfd\""_s));
    EXPECT_TRUE(practice.commands().endsWith(u"PrintOutFromDialog\r\n"_s));
    EXPECT_EQ(file().count(u"（令和08年11月末日まで）\",\"相談員\""_s), 3);

    open();
    pressButton(*form, Qt::Key_F9);
    EXPECT_TRUE(practice.commands().startsWith(u"FileName,\"同意管更新管理表.wfd\""_s));
    EXPECT_EQ(file().count(u"（令和08年11月末日まで）\",\"相談員\""_s), 3);
    clsOplIniFile ini;
    ini.iInit(practice.data(u"印刷設定.ini"_s));
    const QString section = u"同意書更新リスト"_s;
    EXPECT_EQ(ini.csGetProfileString(section, u"帳票様式"_s) +
                  ini.csGetProfileString(section, u"リスト抽出条件"_s) +
                  ini.csGetProfileString(section, u"改ページ条件"_s) +
                  ini.csGetProfileString(section, u"並び順"_s),
              u"1123"_s);
}

TEST_F(RenewalListForm, TakesAMonthAsPeopleWriteIt) {
    open();
    for (const QString &typed : {u"R8.12"_s, u"令和8年12月"_s, u"202612"_s, u"２０２６／１２"_s}) {
        month(u"2026/11"_s);
        month(typed);
        pressButton(*form, Qt::Key_F9);
        EXPECT_EQ(practice.said(), QStringList()) << typed.toStdString();
        EXPECT_EQ(file().count(u"\"令和08年12月\""_s), 2) << typed.toStdString();
    }
    for (const QString &wrong : {u"R8.13"_s, u"昭和65年1月"_s, u""_s}) {
        month(wrong.isEmpty() ? u" "_s : wrong);
        pressButton(*form, Qt::Key_F9);
        EXPECT_TRUE(practice.said().value(0).startsWith(u"何月分かを入力してください。"_s))
            << wrong.toStdString();
    }
}

TEST_F(RenewalListForm, SaysWhyNothingIsPrinted) {
    open();
    month(u"2030/01"_s);
    pressButton(*form, Qt::Key_F9);
    EXPECT_EQ(practice.said(), QStringList{u"印刷対象者が存在しません。"_s});
    month(u"2026/11"_s);

    practice.processes.missing = QStringList{u"wfrfv10.exe"_s};
    pressButton(*form, Qt::Key_F11);
    EXPECT_TRUE(practice.said().value(0).startsWith(u"帳票の印刷に失敗しました。[帳票プログラム"_s));
    practice.processes.missing.clear();

    ASSERT_TRUE(QFile::remove(practice.system(u"同意書更新チェックリスト.wfd"_s)));
    pressButton(*form, Qt::Key_F9);
    EXPECT_EQ(practice.messages.shown.value(0).title, u"ファイルエラー"_s);
    EXPECT_EQ(
        practice.said(),
        QStringList{
            u"同意書書更新リストフォーマットファイル（同意書更新チェックリスト.wfd）が存在しません。\r\n"
            "処理を中止します。"_s});

    open({});
    pressButton(*form, Qt::Key_F9);
    EXPECT_EQ(practice.said(), QStringList{u"印刷対象者が存在しません。"_s});

    practice.database.run(u"ALTER TABLE SOUDAN RENAME TO AWAY"_s);
    open();
    pressButton(*form, Qt::Key_F9);
    EXPECT_TRUE(practice.said().join(u'|').contains(u"SOUDAN"_s));
    EXPECT_TRUE(practice.processes.started.isEmpty());
}

TEST_F(RenewalListForm, OpensForTheRowsThatAreTickedElseForAllThatAreShown) {
    frm同意書管理 list(practice.environment);
    ASSERT_EQ(list.iInit(practice.database.db, 0), 0);
    showActive(list);
    const auto opened = [&](const QString &kana) {
        list.findChild<QLineEdit *>(u"txt_SiboriKana"_s)->setText(kana);
        QString whom;
        QTimer::singleShot(0, &list, [&] {
            QWidget *screen = QApplication::activeModalWidget();
            whom = screen->findChild<QLabel *>(u"lblTaisyo"_s)->text();
            screen->close();
        });
        list.findChild<QAction *>(u"mnKoushinList"_s)->trigger();
        return whom;
    };
    EXPECT_EQ(opened(u"べ"_s), u"対象の利用者 1 人　（一覧に表示しているすべての利用者）"_s) << "of two rows";
    list.findChild<QPushButton *>(u"cmdAllCheck"_s)->click();
    EXPECT_EQ(opened({}), u"対象の利用者 1 人　（「対象」にチェックした利用者）"_s);
    EXPECT_EQ(opened(u"ア"_s), u"対象の利用者 2 人　（一覧に表示しているすべての利用者）"
                               "絞り込みで表示していない対象 2 件は含みません。"_s);
}

TEST_F(RenewalListForm, TellsWhatThePaperCannotSay) {
    practice.database.run(u"UPDATE RIYOUSHA SET cName = '𠮷田「\"」' WHERE nIDNo = 101;"
                          "UPDATE RIYOUSHA SET cName = '〜子' WHERE nIDNo = 102"_s);
    open();
    practice.messages.answers = {Answer::No};
    pressButton(*form, Qt::Key_F11);
    const QString told = practice.said().value(0);
    for (const QString &line : {u"\r\n101　𠮷田「＂」：「𠮷」→「吉」"_s, u"\r\n102　〜子：「〜」→「～」"_s})
        EXPECT_TRUE(told.contains(line)) << told.toStdString();
    EXPECT_TRUE(practice.processes.started.isEmpty());

    practice.messages.answers = {Answer::Yes};
    pressButton(*form, Qt::Key_F11);
    EXPECT_EQ(practice.said().size(), 1) << "nothing after it";
    EXPECT_TRUE(file().contains(u"\"吉田「＂」\""_s));
    EXPECT_EQ(practice.processes.started.size(), 1);

    // A viewer that prints every character leaves nothing to ask.
    QFile viewer(QDir(practice.folders.program()).filePath(u"wfrfv10.exe"_s));
    ASSERT_TRUE(viewer.open(QIODevice::WriteOnly) && viewer.write(UnicodeTwin::mark) > 0);
    viewer.close();
    pressButton(*form, Qt::Key_F11);
    EXPECT_EQ(practice.said(), QStringList());
    EXPECT_EQ(practice.processes.started.size(), 2);
}

} // namespace
