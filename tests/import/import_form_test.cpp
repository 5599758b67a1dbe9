#include "import/import_form.h"

#include "tests/import/import_fixture.h"
#include "widgets/grid.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Without a window system's focus shortcuts are pressed through the window.
void press(frmDataImport &form, const QString &button) {
    form.findChild<QPushButton *>(button)->click();
}

class ImportForms : public ImportTest {
protected:
    ImportForms() : form(environment, database.db) {
        form.iInit();
        form.show();
    }
    QString write(const QString &text) const {
        QFile file(database.folder() + u"/名簿.csv"_s);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
        return file.fileName();
    }
    void read(const QString &text) {
        auto *path = form.findChild<QLineEdit *>(u"txtPath"_s);
        path->setText(write(text));
        QTest::keyClick(path, Qt::Key_Return);
    }
    Grid &trial() { return *form.findChild<Grid *>(u"ssTrial"_s); }
    QString cell(int row, int column) { return trial().model()->index(row, column).data().toString(); }
    QString summary() { return form.findChild<QLabel *>(u"lblSummary"_s)->text(); }
    bool enabled(const QString &name) { return form.findChild<QPushButton *>(name)->isEnabled(); }

    frmDataImport form;
};

const QString awkward = u"氏名,生年月日\n新田一,1950/1/1\n,x\n森正,1960/1/3\n林茂,y\n"_s;

} // namespace

TEST_F(ImportForms, LeadFromRefusedRowToRefusedRowAndWriteTheRightOnes) {
    read(awkward);
    EXPECT_EQ(summary(), u"新規 2　変更 0　同じ 0　取込不可 2"_s);
    EXPECT_FALSE(enabled(u"cmdWrite"_s));
    press(form, u"cmdNextRefused"_s);
    EXPECT_EQ(trial().currentIndex().row(), 1);
    EXPECT_EQ(form.findChild<QLabel *>(u"lblReason"_s)->text(), u"「生年月日」が日付ではありません：x"_s);
    press(form, u"cmdNextRefused"_s);
    press(form, u"cmdNextRefused"_s);
    EXPECT_EQ(trial().currentIndex().row(), 1) << "from the last to the first";
    form.findChild<QCheckBox *>(u"chkRefused"_s)->click();
    EXPECT_EQ(cell(0, 0) + cell(1, 0), u"35"_s) << "lines of the file";
    EXPECT_EQ(trial().model()->rowCount(), 2);
    press(form, u"cmdWriteRight"_s);
    EXPECT_TRUE(form.written());
    EXPECT_TRUE(summary().contains(u"新規 2"_s) && summary().contains(u"名簿_未取込.csv"_s))
        << summary().toStdString();
    EXPECT_EQ(database.value(u"SELECT COUNT(*) FROM RIYOUSHA WHERE nIDNo > 9"_s), u"1"_s);
    EXPECT_FALSE(enabled(u"cmdWriteRight"_s));
    form.reject();
    EXPECT_FALSE(form.isVisible());
}

TEST_F(ImportForms, ColumnsThatNobodyKnowsAreAssignedByHandAndKept) {
    read(u"なまえ\t生まれ\n新田一\t1950/1/1\n"_s);
    EXPECT_EQ(messages.notes.value(0), u"「氏名」の列を選んでください。"_s);
    EXPECT_EQ(form.findChild<QTabWidget *>(u"tabPages"_s)->currentIndex(), 1);
    form.findChild<QCheckBox *>(u"chkHeaded"_s)->click();
    auto *field = form.findChild<QComboBox *>(u"cmbField"_s);
    for (const QString &item : {u"氏名"_s, u"生年月日"_s}) {
        field->setCurrentText(item);
        Q_EMIT field->activated(field->currentIndex());
    }
    EXPECT_EQ(summary(), u"新規 1　変更 0　同じ 0　取込不可 0"_s);
    auto *type = form.findChild<QComboBox *>(u"cmbType"_s);
    type->setCurrentText(u"手書き"_s);
    press(form, u"cmdKeepType"_s);
    messages.answers = {Answer::No};
    form.reject();
    EXPECT_TRUE(form.isVisible()) << "what was only tried is asked about";

    frmDataImport next(environment, database.db);
    next.iInit();
    next.findChild<QLineEdit *>(u"txtPath"_s)->setText(form.findChild<QLineEdit *>(u"txtPath"_s)->text());
    next.show();
    press(next, u"cmdTry"_s);
    press(next, u"cmdWrite"_s);
    EXPECT_TRUE(next.written());
    EXPECT_EQ(database.value(u"SELECT tBirthday FROM RIYOUSHA WHERE cName = '新田一'"_s), u"1950/01/01"_s);
}

TEST_F(ImportForms, WhatCannotBeReadIsSaidAndNothingCanBeWritten) {
    read(u"氏名,生年月日\n\"新田一,1950/1/1\n"_s);
    EXPECT_TRUE(summary().contains(u"2 行目で始まる「\"」が閉じていません"_s)) << summary().toStdString();
    EXPECT_FALSE(enabled(u"cmdWrite"_s) || enabled(u"cmdWriteRight"_s));
    read(awkward);
    database.run(
        u"INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, tBirthday) VALUES (1, 1, 50, '森正', '1960/01/03')"_s);
    press(form, u"cmdWriteRight"_s);
    EXPECT_FALSE(form.written());
    EXPECT_EQ(summary(), u"新規 1　変更 0　同じ 1　取込不可 2"_s);
    EXPECT_TRUE(messages.notes.back().contains(u"もう一度確かめてください"_s));
}
