// Saving a grid by its button and the dialog's controls.

#include "app/base/codepage932.h"
#include "app/base/folders.h"
#include "app/base/platform/desktop.h"
#include "export/save_grid.h"
#include "tests/export/csv_dialog.h"
#include "tests/export/csv_reader.h"
#include "tests/support/test_environment.h"
#include "tests/widgets/form_keys.h"
#include "widgets/grid.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QStandardItemModel>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

class SaveGridTest : public testing::Test, protected TestInstallation {
protected:
    SaveGridTest() {
        model.setHorizontalHeaderLabels({u"対象"_s, u"IDNo."_s, u"氏名"_s, u"備考"_s});
        for (const QString &name : {u"山田"_s, u"鈴木"_s}) {
            auto *tick = new QStandardItem;
            tick->setCheckState(name == u"山田"_s ? Qt::Checked : Qt::Unchecked);
            model.appendRow({tick, new QStandardItem(QString::number(model.rowCount() + 1)),
                             new QStandardItem(name), new QStandardItem});
        }
        grid = new Grid(&window);
        grid->setModel(&model);
        auto *end = new QPushButton(u"閉じる"_s);
        auto *row = new QHBoxLayout;
        row->addWidget(end);
        auto *layout = new QVBoxLayout(&window);
        layout->addWidget(grid);
        layout->addLayout(row);
        (new CsvButton(environment, *grid, u"一覧"_s))->insert(*row, *end);
    }

    /// Presses the button and works the dialog; gives how often it was shown.
    int save(const std::function<void(QDialog &)> &work) {
        const CsvDialog dialog(work);
        window.findChild<QPushButton *>(u"cmdCsv"_s)->click();
        return dialog.shown;
    }
    static QLineEdit &box(QDialog &dialog, const QString &name) { return CsvDialog::box(dialog, name); }
    void pressSave(QDialog &dialog) { CsvDialog::pressSave(dialog, folder.path()); }
    QByteArray saved(const QString &name) const {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;
    QStandardItemModel model;
    QWidget window;
    Grid *grid;
};

TEST_F(SaveGridTest, SavesTheShownColumnsInTheirOrderByKey) {
    grid->horizontalHeader()->moveSection(2, 0);
    grid->hideColumn(1);
    showActive(window);
    const CsvDialog opened([&](QDialog &dialog) {
        EXPECT_EQ(box(dialog, u"txtFileName"_s).text(), u"一覧_20261121.CSV"_s);
        pressSave(dialog);
    });
    grid->setCurrentIndex(model.index(1, 3));
    grid->edit(grid->currentIndex());
    typeText(grid->viewport()->findChild<QLineEdit *>(), u"急ぎ"_s);
    QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !messages.shown.isEmpty(); }));
    EXPECT_EQ(messages.shown.back().text,
              u"下記のフォルダにファイルを出力しました。\r\n（%1/一覧_20261121.CSV）"_s.arg(folder.path()));
    EXPECT_EQ(messages.shown.back().title, u"出力完了"_s);
    EXPECT_EQ(messages.shown.back().icon, MessageIcon::Information);
    EXPECT_EQ(*readCsv(decode932(saved(u"一覧_20261121.CSV"_s)), u','),
              (std::vector<QStringList>{{u"氏名"_s, u"対象"_s, u"備考"_s},
                                        {u"山田"_s, u"○"_s, u""_s},
                                        {u"鈴木"_s, u""_s, u"急ぎ"_s}}));
    EXPECT_TRUE(processes.started.isEmpty()) << "the folder is opened when asked for";
}

TEST_F(SaveGridTest, RefusesWhatIsNoNameOrFolderAndKeepsTheFile) {
    QFile old(folder.filePath(u"ある.csv"_s));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
    old.close();
    struct Case {
        QString name, folder, text, title;
    };
    const Case cases[] = {
        {u" "_s, folder.path(), u"保存時のファイル名を入力して下さい。"_s, u"ファイルエラー"_s},
        {u"a/b"_s, folder.path(), u"ファイル名に次の文字は使えません。\r\n\\ / : * ? \" < > |"_s,
         u"ファイルエラー"_s},
        {u"長"_s.repeated(300), folder.path(), u"ファイル名が長すぎます。短くして下さい。"_s,
         u"ファイルエラー"_s},
        {u"x"_s, u""_s, u"選択したフォルダが存在しません。"_s, u"フォルダエラー"_s},
        {u"x"_s, folder.filePath(u"ない"_s), u"選択したフォルダが存在しません。"_s, u"フォルダエラー"_s},
        {u"ある"_s, folder.path(), u"既に同じ名前のファイルが存在します。\r\n上書きしてもよろしいですか？"_s,
         u"上書き確認"_s},
    };
    for (const Case &c : cases)
        save([&](QDialog &dialog) {
            box(dialog, u"txtFileName"_s).setText(c.name);
            box(dialog, u"txtFolder"_s).setText(c.folder);
            dialog.findChild<QPushButton *>(u"cmdOk"_s)->click();
            EXPECT_TRUE(dialog.isVisible());
            EXPECT_EQ(messages.shown.back().text, c.text);
            EXPECT_EQ(messages.shown.back().title, c.title);
        });
    EXPECT_EQ(saved(u"ある.csv"_s), "old");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);

    messages.answers = {Answer::Yes};
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    save([&](QDialog &dialog) {
        box(dialog, u"txtFileName"_s).setText(u"ある"_s);
        pressSave(dialog);
    });
    EXPECT_TRUE(saved(u"ある.csv"_s).contains("1")) << "the user agreed";
    EXPECT_EQ(old.readAll(), "old") << "the new one was written beside it";
}

TEST_F(SaveGridTest, AsksAboutCharactersThatTheCodePageLacksAndAboutFormulas) {
    model.item(0, 2)->setText(u"𠮷田"_s);
    model.item(1, 3)->setText(u"=A1"_s);
    const auto saveAs = [&](const QString &name, const std::deque<Answer> &answers) {
        messages.answers = answers;
        messages.shown.clear();
        save([&](QDialog &dialog) {
            box(dialog, u"txtFileName"_s).setText(name);
            pressSave(dialog);
        });
    };
    saveAs(u"no"_s, {Answer::Cancel});
    EXPECT_TRUE(messages.shown.back().text.contains(u"1 行目 氏名「𠮷田」の「𠮷」→「〓」"_s));
    saveAs(u"no"_s, {Answer::No, Answer::Cancel});
    EXPECT_TRUE(messages.shown.back().text.contains(u"2 行目 備考「=A1」"_s));
    EXPECT_FALSE(QFile::exists(folder.filePath(u"no.csv"_s)));
    saveAs(u"932"_s, {Answer::No, Answer::Ok});
    EXPECT_TRUE(decode932(saved(u"932.csv"_s)).contains(u"\"〓田\""_s));
    saveAs(u"utf8"_s, {Answer::Yes, Answer::Ok});
    EXPECT_TRUE(QString::fromUtf8(saved(u"utf8.csv"_s)).contains(u"\"𠮷田\""_s));
    EXPECT_TRUE(saved(u"utf8.csv"_s).startsWith("\xEF\xBB\xBF"));
    EXPECT_TRUE(saved(u"utf8.csv"_s).contains("\"=A1\"")) << "cells stay as they are";
}

TEST_F(SaveGridTest, KeepsTheChoicesAndOpensTheFolder) {
    save([&](QDialog &dialog) {
        dialog.findChild<QComboBox *>(u"cmbType"_s)->setCurrentIndex(1);
        EXPECT_EQ(box(dialog, u"txtFileName"_s).text(), u"一覧_20261121.txt"_s);
        dialog.findChild<QComboBox *>(u"cmbSection"_s)->setCurrentIndex(1);
        dialog.findChild<QCheckBox *>(u"chkQuote"_s)->setChecked(false);
        dialog.findChild<QCheckBox *>(u"chkHeading"_s)->setChecked(false);
        dialog.findChild<QCheckBox *>(u"chkOpen"_s)->setChecked(true);
        pressSave(dialog);
    });
    EXPECT_EQ(decode932(saved(u"一覧_20261121.txt"_s)), u"○\t1\t山田\t\r\n\t2\t鈴木\t\r\n"_s);
    ASSERT_EQ(processes.started.size(), 1);
    EXPECT_TRUE(processes.started[0].program.endsWith(platform::folderProgram()));
    EXPECT_EQ(processes.started[0].arguments, QStringList{folder.path()});
    messages.answers = {Answer::Yes};
    save([&](QDialog &dialog) {
        EXPECT_EQ(box(dialog, u"txtFolder"_s).text(), folder.path());
        EXPECT_EQ(dialog.findChild<QComboBox *>(u"cmbType"_s)->currentIndex(), 1);
        EXPECT_EQ(dialog.findChild<QComboBox *>(u"cmbSection"_s)->currentIndex(), 1);
        EXPECT_FALSE(dialog.findChild<QCheckBox *>(u"chkQuote"_s)->isChecked());
        EXPECT_TRUE(dialog.findChild<QCheckBox *>(u"chkOpen"_s)->isChecked());
        auto *heading = dialog.findChild<QCheckBox *>(u"chkHeading"_s);
        EXPECT_FALSE(heading->isChecked());
        heading->setChecked(true);
        pressSave(dialog);
    });
    EXPECT_TRUE(decode932(saved(u"一覧_20261121.txt"_s)).startsWith(u"対象\tIDNo."_s));
}

TEST_F(SaveGridTest, AsksAgainWhereTheFileCannotBeWritten) {
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_EQ(save([&](QDialog &dialog) { pressSave(dialog); }), 2) << "and shown again";
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const Message &told = messages.shown.back();
    EXPECT_TRUE(told.text.startsWith(u"ファイルの出力に失敗しました。"_s)) << told.text.toStdString();
    EXPECT_TRUE(told.text.contains(u"読み取り専用のフォルダ"_s));
    EXPECT_EQ(told.title, u"出力失敗"_s);
    EXPECT_EQ(told.icon, MessageIcon::Critical);
}

} // namespace
