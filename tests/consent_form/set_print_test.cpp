// Set printing, by its screen and from the list.

#include "consent/screens/consent_list_form.h"
#include "print/set_print/set_print_form.h"
#include "tests/consent_form/practice.h"
#include "tests/widgets/form_keys.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QPushButton>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

class SetPrint : public testing::Test {
protected:
    SetPrint() {
        for (const QString &ini : {u"印刷設定.ini"_s, u"患者管理設定.ini"_s, u"nippou.ini"_s})
            practice.addFile(data(ini), "\r\n");
        for (const QString &layout : {u"依頼.wfd"_s, u"封筒印刷.wfd"_s, u"封筒印刷角2.wfd"_s})
            practice.addFile(practice.system(layout));
        practice.processes.act = [this](const RecordedProcesses::Start &start) {
            practice.addFile(start.arguments.at(0));
            return ProcessEnd{ProcessEnd::Exited, builderExit};
        };
    }
    void open(SetPrintStart start = SetPrintStart::AsLastTime) {
        form = std::make_unique<frmSetInsatsuDoui>(practice.environment, practice.database.db);
        ASSERT_EQ(form->iInit(rows(), {}, start), 0) << form->sErrMsg().toStdString();
        showActive(*form);
    }
    /// Ticked: 2 (no known doctor), 1 (two rows of two doctors in one hospital), 3 (oral, the same hospital).
    static std::vector<LetterOrder> rows() {
        const auto row = [](qint32 number, qint32 date, short deformity, qint32 deformityDate) {
            return LetterOrder{{{1, 1, number}, date, deformity, deformityDate}, {}, false, u"依頼.wfd"_s};
        };
        return {row(2, 20261020, 0, 0), row(1, 20260501, 0, 0), row(1, 20261101, 1, 20261101),
                row(3, 20260601, 0, 0)};
    }
    void choose(const QStringList &documents) {
        for (const QString &box : {u"chkDouisyo"_s, u"chkIrai"_s, u"chkFutou"_s})
            form->findChild<QCheckBox *>(box)->setChecked(documents.contains(box));
    }
    /// Which documents the batch holds, by data file and layout.
    QStringList documents() const {
        QStringList files;
        for (const QString &line : practice.written(u"DouiCom.dat"_s).split(u"\r\n"_s))
            if (line.startsWith(u"SetReport"))
                files += QFileInfo(line.section(u'"', 1, 1)).fileName();
        return files;
    }
    QString marks() const {
        return practice.database
            .rows(u"SELECT ifnull(iOutputFlg, 0) || ifnull(iOutputFlgHenkei, 0) FROM RIYOUSHA_DOUI_REC"
                  " WHERE iNewestFlg = 1 AND nIDNo < 4 ORDER BY nIDNo, nDate"_s)
            .join(u' ');
    }
    QString data(const QString &file) const { return QDir(practice.folders.data()).filePath(file); }
    QStringList said() {
        QStringList texts;
        for (const Message &message : practice.messages.shown)
            texts += message.text;
        practice.messages.shown.clear();
        return texts;
    }

    Practice practice;
    std::unique_ptr<frmSetInsatsuDoui> form;
    int builderExit = 0;
};

TEST_F(SetPrint, PutsTogetherWhatGoesIntoOneEnvelope) {
    open();
    choose({u"chkDouisyo"_s, u"chkIrai"_s, u"chkFutou"_s});
    form->findChild<QComboBox *>(u"cmbFutou"_s)->setCurrentIndex(1);
    form->findChild<QCheckBox *>(u"chkPaper256"_s)->setChecked(true);
    practice.messages.answers = {Answer::Ok, Answer::Yes, Answer::Ok};
    pressButton(*form, Qt::Key_F9);
    const QStringList texts = said();
    ASSERT_EQ(texts.size(), 3);
    EXPECT_EQ(texts[0], u"同意手順：口頭の場合は、同意書が印刷されませんので、ご注意ください。"_s);
    EXPECT_TRUE(texts[1].contains(u"3　口頭　太郎"_s));
    EXPECT_TRUE(texts[2].startsWith(u"9 件中 9 件を出力しました。"_s));
    EXPECT_EQ(documents(),
              (QStringList{u"封筒印刷角2.wfd"_s, u"依頼.wfd"_s, u"H再_B5.wfd"_s, u"封筒印刷角2.wfd"_s,
                           u"依頼.wfd"_s, u"依頼.wfd"_s, u"依頼.wfd"_s, u"M再.wfd"_s, u"M再.wfd"_s}));
    EXPECT_EQ(practice.written(u"封筒1.csv"_s).section(u"\r\n"_s, 1),
              u"\"\",\"\",\"記録の医院\",\"書類ご担当者様\",\"記録の住所\",\"\"\r\n"_s);
    EXPECT_TRUE(practice.written(u"cmdSetPrint.dat"_s).endsWith(u"PrintPaper, #256\r\nShowWindow,2\r\n"_s));
    EXPECT_EQ(marks(), u"00 00 00 00"_s) << "a preview marks nothing";
    EXPECT_EQ(form->ihehe(), 0);

    practice.messages.answers = {Answer::Ok, Answer::Yes, Answer::Ok};
    pressButton(*form, Qt::Key_F11);
    EXPECT_EQ(marks(), u"10 01 10 10"_s);
    EXPECT_TRUE(form->written());

    open();
    EXPECT_TRUE(form->findChild<QCheckBox *>(u"chkIrai"_s)->isChecked()) << "as it was last";
    EXPECT_EQ(form->findChild<QComboBox *>(u"cmbFutou"_s)->currentIndex(), 1);
    open(SetPrintStart::ConsentForms);
    EXPECT_FALSE(form->findChild<QCheckBox *>(u"chkIrai"_s)->isChecked());
}

TEST_F(SetPrint, MarksNothingWhenADocumentFailed) {
    open();
    choose({u"chkIrai"_s});
    builderExit = 2;
    pressButton(*form, Qt::Key_F11);
    const QStringList texts = said();
    ASSERT_EQ(texts.size(), 2);
    EXPECT_TRUE(texts[0].startsWith(u"4 件中 0 件を出力しました。"_s));
    EXPECT_EQ(marks(), u"00 00 00 00"_s);
    EXPECT_EQ(form->ihehe(), -1);
}

TEST_F(SetPrint, SaysWhyNothingIsPrinted) {
    open();
    choose({});
    pressButton(*form, Qt::Key_F11);
    EXPECT_EQ(said(), QStringList{u"出力する帳票を選択してください。"_s});
    practice.database.run(u"DELETE FROM SHINSEISYO"_s);
    choose({u"chkDouisyo"_s});
    practice.messages.answers = {Answer::Ok};
    pressButton(*form, Qt::Key_F11);
    EXPECT_EQ(said().value(1), u"出力するデータがありません。"_s);

    ASSERT_TRUE(QFile::remove(data(u"nippou.ini"_s)));
    frmSetInsatsuDoui without(practice.environment, practice.database.db);
    EXPECT_EQ(without.iInit(rows(), {}, SetPrintStart::AsLastTime), -1);
    EXPECT_EQ(without.sErrMsg(), u"iControlInitでエラー:nippou.iniが見つかりません。"_s);
}

TEST_F(SetPrint, IsOpenedFromTheListForItsTickedRows) {
    frm同意書管理 list(practice.environment);
    ASSERT_EQ(list.iInit(practice.database.db, 0), 0) << list.sErrMsg().toStdString();
    showActive(list);
    said();
    auto *button = list.findChild<QPushButton *>(u"CmdPrintSet"_s);
    button->click();
    EXPECT_EQ(said(), QStringList{u"印刷する利用者を指定してください。"_s});
    QTest::keyClick(&list, Qt::Key_F7);
    QString shown;
    QTimer::singleShot(0, &list, [&] {
        QWidget *screen = QApplication::activeModalWidget();
        shown = screen->objectName();
        screen->close();
    });
    button->click();
    EXPECT_EQ(shown, u"frmSetInsatsuDoui"_s) << said().join(u'|').toStdString();
}

} // namespace
