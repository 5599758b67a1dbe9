// Set printing, by its screen and from the list.

#include "app/base/codepage932.h"
#include "consent/screens/consent_list_form.h"
#include "print/set_print/set_print_form.h"
#include "tests/consent_form/practice.h"
#include "tests/widgets/form_keys.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

class SetPrint : public testing::Test {
protected:
    SetPrint() {
        practice.keepPrintFiles();
        for (const QString &ini : {u"印刷設定.ini"_s, u"患者管理設定.ini"_s, u"nippou.ini"_s})
            practice.addFile(practice.data(ini), "\r\n");
        for (const QString &layout : {u"依頼.wfd"_s, u"封筒印刷.wfd"_s, u"封筒印刷角2.wfd"_s})
            practice.addFile(practice.system(layout));
        practice.processes.act = [this](const RecordedProcesses::Start &start) {
            practice.addFile(start.arguments.at(0));
            return ProcessEnd{ProcessEnd::Exited, builderExit};
        };
    }
    void open(SetPrintStart start = SetPrintStart::AsLastTime) {
        std::vector<ConsentRowKey> keys;
        for (const LetterOrder &order : orders)
            keys.push_back(order.row);
        form = std::make_unique<frmSetInsatsuDoui>(practice.environment, practice.database.db);
        ASSERT_EQ(form->iInit(keys,
                              {letter,
                               [this] {
                                   ++asked;
                                   return orders;
                               },
                               [this](const std::vector<LetterMark> &letters, const Operation &) {
                                   for (const LetterMark &mark : letters)
                                       marked += mark.who.section(u' ', 0, 0) +
                                                 (mark.row.iHenkeiFlg == 1 ? u"h"_s : QString());
                                   return std::optional<Message>();
                               }},
                              start),
                  0)
            << form->sErrMsg().toStdString();
        showActive(*form);
    }
    static LetterOrder order(qint32 number, qint32 date, short deformity = 0) {
        return {.row = {{1, 1, number}, date, deformity, deformity == 1 ? date : 0},
                .layout = u"依頼.wfd"_s,
                .who = QString::number(number)};
    }
    /// Ticked: 2 (no known doctor), 1 (two rows of two doctors in one hospital), 3 (oral, the same hospital).
    std::vector<LetterOrder> orders{order(2, 20261020), order(1, 20260501), order(1, 20261101, 1),
                                    order(3, 20260601)};
    void choose(const QStringList &documents) {
        for (const QString &box : {u"chkDouisyo"_s, u"chkIrai"_s, u"chkFutou"_s})
            form->findChild<QCheckBox *>(box)->setChecked(documents.contains(box));
    }
    /// Which documents the last chunk holds: layout and, behind a colon, a column of the data.
    QStringList documents(const QString &column = {}) const {
        QStringList files;
        QString file;
        for (const QString &line : practice.written(u"DouiCom.dat"_s).split(u"\r\n"_s)) {
            if (line.startsWith(u"SetDataText"))
                file = QFileInfo(line.section(u'"', 1, 1)).fileName();
            if (line.startsWith(u"SetReport"))
                files += QFileInfo(line.section(u'"', 1, 1)).fileName() +
                         (column.isEmpty() ? QString() : u':' + practice.cells(file, {column}).value(0));
        }
        return files;
    }
    void print(const std::deque<Answer> &answers, Qt::Key key = Qt::Key_F11) {
        practice.messages.answers = answers;
        pressButton(*form, key);
    }
    /// Of the patients, "1h" a correction.
    QStringList letterMarks() { return std::exchange(marked, {}); }

    Practice practice;
    LetterOptions letter;
    QStringList marked;
    int asked = 0;
    std::unique_ptr<frmSetInsatsuDoui> form;
    int builderExit = 0;
};

TEST_F(SetPrint, PutsTogetherWhatGoesIntoOneEnvelope) {
    open();
    choose({u"chkDouisyo"_s, u"chkIrai"_s, u"chkFutou"_s});
    form->findChild<QComboBox *>(u"cmbFutou"_s)->setCurrentIndex(1);
    form->findChild<QCheckBox *>(u"chkPaper256"_s)->setChecked(true);
    print({Answer::Yes}, Qt::Key_F9);
    const QStringList texts = practice.said();
    ASSERT_EQ(texts.size(), 1);
    EXPECT_TRUE(texts[0].contains(u"3　口頭　太郎"_s));
    EXPECT_EQ(form->findChild<QLabel *>(u"lblState"_s)->text(), u"9 枚のプレビューを表示しました。"_s);
    EXPECT_EQ(documents(u"宛先住所１"_s),
              (QStringList{u"封筒印刷角2.wfd:記録の住所"_s, u"依頼.wfd:"_s, u"H再_B5.wfd:"_s,
                           u"封筒印刷角2.wfd:病院町1"_s, u"依頼.wfd:"_s, u"依頼.wfd:"_s, u"依頼.wfd:"_s,
                           u"M再.wfd:"_s, u"M再.wfd:"_s}));
    EXPECT_TRUE(practice.written(u"cmdSetPrint.dat"_s).endsWith(u"PrintPaper, #256\r\nShowWindow,2\r\n"_s));
    EXPECT_EQ(letterMarks(), QStringList()) << "a preview marks nothing";
    EXPECT_EQ(form->ihehe(), 0);

    print({Answer::Yes});
    EXPECT_TRUE(practice.said().value(0).startsWith(
        u"同意手順：口頭の場合は、同意書が印刷されませんので、ご注意ください。\r\n\r\n"_s))
        << "all in one box";
    EXPECT_EQ(letterMarks(), (QStringList{u"2"_s, u"1"_s, u"1h"_s, u"3"_s}));
}

TEST_F(SetPrint, APatientsFormGoesToTheDoctorOfItsRow) {
    practice.database.run(u"UPDATE DOCTOR SET cAddress1 = '別町2', cAddress2 = '南棟' WHERE cIDNo = '13'"_s);
    orders = {order(1, 20260501), order(1, 20261101, 1)};
    open();
    choose({u"chkDouisyo"_s, u"chkFutou"_s});
    print({Answer::Yes});
    EXPECT_EQ(documents(u"宛先住所２"_s),
              (QStringList{u"封筒印刷.wfd:2階"_s, u"M再.wfd:"_s, u"封筒印刷.wfd:南棟"_s, u"M再.wfd:"_s}))
        << "the same institution at another address";
    EXPECT_EQ(documents(u"傷病名"_s)[3], u"M再.wfd:変形"_s);
    orders.erase(orders.begin());
    open();
    choose({u"chkDouisyo"_s, u"chkFutou"_s});
    print({Answer::Yes});
    EXPECT_EQ(documents(u"宛先住所１"_s), (QStringList{u"封筒印刷.wfd:別町2"_s, u"M再.wfd:"_s}));
}

TEST_F(SetPrint, AFormBesideAContinuationLetterIsAReconsent) {
    orders = {order(2, 20261020)};
    orders[0].continues = true;
    open();
    choose({u"chkDouisyo"_s});
    print({Answer::Ok, Answer::Ok});
    EXPECT_EQ(documents(u"再同意フラグ"_s), QStringList{u"H再_B5.wfd:0"_s}) << "the patient's first consent";
    choose({u"chkDouisyo"_s, u"chkIrai"_s});
    print({Answer::Yes});
    EXPECT_EQ(documents(u"再同意フラグ"_s).value(1), u"H再_B5.wfd:1"_s);
}

TEST_F(SetPrint, WhatLeftIsMarkedAndWhatDidNotIsNamed) {
    QFile::remove(practice.system(u"封筒印刷.wfd"_s));
    open();
    choose({u"chkIrai"_s, u"chkFutou"_s});
    print({Answer::Yes});
    EXPECT_TRUE(practice.said().last().contains(u"封筒　緑病院"_s)) << "its layout is missing";
    EXPECT_EQ(letterMarks(), (QStringList{u"2"_s, u"1"_s, u"1h"_s, u"3"_s}));

    orders.clear();
    practice.database.run(
        u"WITH RECURSIVE n (i) AS (SELECT 101 UNION ALL SELECT i + 1 FROM n WHERE i < 250)"
        " INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, nTantou)"
        " SELECT 1, 1, i, '多', 6 FROM n; INSERT INTO RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb,"
        " nIDNo, nDate, iHenkeiFlg, nHenkeiDouiDate, iNewestFlg, cIsiCd) SELECT 1, 1, nIDNo,"
        " 20260701, 0, 0, 1, '12' FROM RIYOUSHA WHERE nIDNo > 100"_s);
    for (int number = 101; number <= 250; ++number)
        orders.push_back(order(number, 20260701));
    int chunk = 0;
    practice.processes.act = [&](const RecordedProcesses::Start &start) {
        practice.addFile(start.arguments.at(0));
        return ProcessEnd{ProcessEnd::Exited, ++chunk == 1 ? 0 : 2};
    };
    open();
    choose({u"chkIrai"_s});
    print({Answer::Ok, Answer::Ok});
    const QStringList left = letterMarks();
    EXPECT_EQ(left.size(), 100);
    EXPECT_EQ(left.value(99), u"200"_s);
    const QString summary = practice.said().last();
    EXPECT_TRUE(summary.contains(u"「依頼」の印を付けていない利用者：\r\n201 多\r\n"_s))
        << summary.toStdString();
    EXPECT_TRUE(summary.contains(u"\r\n250 多"_s));
}

TEST_F(SetPrint, PrintsNoRowThatANewerOneFollows) {
    practice.database.run(
        u"INSERT INTO RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, nDate, iHenkeiFlg,"
        " nHenkeiDouiDate, iNewestFlg, cIsiCd, cByoumeiM) VALUES (1, 1, 1, 20260901, 0, 0, 1, '12',"
        " '後の印')"_s);
    orders = {order(1, 20250507), order(1, 20260501), order(1, 20260901)};
    open();
    choose({u"chkDouisyo"_s, u"chkIrai"_s, u"chkFutou"_s});
    print({Answer::Yes});
    EXPECT_EQ(documents(u"傷病名"_s),
              (QStringList{u"封筒印刷.wfd:"_s, u"依頼.wfd:後の印"_s, u"M再.wfd:後の印"_s}))
        << "of two that are marked newest the later one";
    EXPECT_EQ(letterMarks(), QStringList{u"1"_s});
    const QString question = practice.said().value(0);
    EXPECT_TRUE(question.contains(u"最新の同意でない"_s)) << question.toStdString();
    EXPECT_FALSE(question.contains(u"端末"_s)) << "no colleague is blamed for the history";
}

TEST_F(SetPrint, NamesEnvelopesThatLackAnAddress) {
    practice.database.run(u"UPDATE SISETSU SET cAddress1 = NULL, cAddress2 = NULL;"
                          "UPDATE RIYOUSHA_DOUI_REC SET cIsiCd = NULL WHERE nIDNo = 3"_s);
    open();
    choose({u"chkFutou"_s});
    print({Answer::No});
    const QString question = practice.said().value(0);
    EXPECT_TRUE(question.contains(u"住所がないまま封筒を印刷するあて先：\r\n緑病院\r\n"_s))
        << question.toStdString();
    EXPECT_TRUE(question.contains(u"封筒を印刷しない対象：\r\n3 口頭　太郎"_s)) << question.toStdString();
}

TEST_F(SetPrint, RefusesWhatTheRequestScreenRefuses) {
    open();
    choose({u"chkIrai"_s});
    practice.database.run(u"UPDATE RIYOUSHA SET nTantou = NULL WHERE nIDNo = 2"_s);
    print({Answer::No});
    EXPECT_TRUE(practice.said().value(0).contains(u"施術者データがありません。"_s));
    letter.grouped = true;
    orders[1].layout = orders[3].layout = u"ない.wfd"_s;
    open();
    print({});
    EXPECT_EQ(practice.said().value(0), u"同意書（ない.wfd）が存在しません。\r\n処理を中止します。\r\n\r\n"
                                        "「ない.wfd」を使う利用者：\r\n1 髙橋　花子\r\n3 口頭　太郎"_s);
    practice.database.run(u"DELETE FROM CORP"_s);
    print({});
    EXPECT_EQ(practice.said(), QStringList{u"本社データがありません。"_s});
    EXPECT_TRUE(practice.processes.started.isEmpty());
}

TEST_F(SetPrint, TellsWhatWillBeReplacedBeforeThePaperLeaves) {
    orders = {order(5, 20260701)};
    open(SetPrintStart::ConsentForms);
    print({Answer::No});
    EXPECT_TRUE(practice.said().value(0).contains(u"𠮷田"_s));
    EXPECT_TRUE(practice.processes.started.isEmpty());
    EXPECT_EQ(asked, 0) << "whom letters go to is not asked for forms alone";
}

TEST_F(SetPrint, KeepsItsOwnChoicesOfTheForms) {
    practice.addFile(practice.data(u"印刷設定.ini"_s), encode932(u"[同意書]\r\n出力様式=1\r\n出力様式2=1\r\n"
                                                                 "同意書式設定を参照しない=1\r\n"_s)
                                                           .bytes);
    open();
    auto *style = form->findChild<QComboBox *>(u"cmbYoushiki"_s);
    auto *oral = form->findChild<QComboBox *>(u"cmbYoushiki2"_s);
    auto *plain = form->findChild<QCheckBox *>(u"chkSansyou"_s);
    EXPECT_EQ(style->currentIndex(), 1) << "the printing screen's, until others are chosen here";
    EXPECT_EQ(oral->currentIndex(), 1);
    EXPECT_TRUE(plain->isChecked());
    practice.addFile(practice.system(u"M口頭.wfd"_s));
    orders = {order(3, 20260601)};
    open(SetPrintStart::ConsentForms);
    print({Answer::Ok, Answer::Ok}, Qt::Key_F9);
    EXPECT_EQ(documents(u"再同意フラグ"_s), QStringList{u"M口頭.wfd:0"_s});
    form->findChild<QComboBox *>(u"cmbYoushiki"_s)->setCurrentIndex(2);
    print({Answer::Ok, Answer::Ok}, Qt::Key_F9);
    EXPECT_EQ(documents(u"再同意フラグ"_s), QStringList{u"M口頭.wfd:1"_s});
    form->findChild<QComboBox *>(u"cmbYoushiki2"_s)->setCurrentIndex(0);
    practice.said();
    print({});
    EXPECT_TRUE(practice.said().value(0).contains(u"3　口頭　太郎"_s)) << "nothing left, and whose it is";
    open();
    EXPECT_EQ(form->findChild<QComboBox *>(u"cmbYoushiki"_s)->currentIndex(), 2) << "as it was last";
    EXPECT_EQ(form->findChild<QComboBox *>(u"cmbYoushiki2"_s)->currentIndex(), 0);
}

TEST_F(SetPrint, SaysWhyNothingIsPrinted) {
    open();
    choose({});
    print({});
    EXPECT_EQ(practice.said(), QStringList{u"出力する帳票を選択してください。"_s});
    practice.database.run(u"DELETE FROM SHINSEISYO"_s);
    choose({u"chkDouisyo"_s});
    print({});
    EXPECT_TRUE(practice.said().value(0).startsWith(u"出力するデータがありません。"_s));

    ASSERT_TRUE(QFile::remove(practice.data(u"nippou.ini"_s)));
    frmSetInsatsuDoui without(practice.environment, practice.database.db);
    EXPECT_EQ(without.iInit({}, {}, SetPrintStart::AsLastTime), -1);
    EXPECT_EQ(without.sErrMsg(), u"iControlInitでエラー:nippou.iniが見つかりません。"_s);
}

TEST_F(SetPrint, PrintsAndMarksTheTickedRowsOfTheList) {
    practice.addFile(practice.system(u"同意依頼書_CARE02_マ継続.wfd"_s));
    practice.database.run(u"UPDATE RIYOUSHA_DOUI_REC SET iNewestFlg = 0 WHERE nIDNo <> 2"_s);
    frm同意書管理 list(practice.environment);
    ASSERT_EQ(list.iInit(practice.database.db, 0), 0) << list.sErrMsg().toStdString();
    showActive(list);
    practice.said();
    auto *button = list.findChild<QPushButton *>(u"CmdPrintSet"_s);
    button->click();
    EXPECT_EQ(practice.said(), QStringList{u"印刷する利用者を指定してください。"_s});
    QTest::keyClick(&list, Qt::Key_F7);
    QTimer::singleShot(0, &list, [&] {
        QWidget *screen = QApplication::activeModalWidget();
        for (const QString &box : {u"chkDouisyo"_s, u"chkIrai"_s})
            screen->findChild<QCheckBox *>(box)->setChecked(true);
        practice.messages.answers = {Answer::Yes};
        screen->findChild<QPushButton *>(u"cmdPrint"_s)->click();
        screen->close();
    });
    button->click();
    EXPECT_EQ(documents(u"再同意フラグ"_s),
              (QStringList{u"同意依頼書_CARE02_マ継続.wfd:"_s, u"H再_B5.wfd:1"_s}))
        << practice.said().join(u"|"_s).toStdString();
    EXPECT_EQ(practice.database.value(u"SELECT iOutputFlg FROM RIYOUSHA_DOUI_REC WHERE nIDNo = 2"_s), u"1"_s);
}

} // namespace
