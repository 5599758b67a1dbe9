// The consent list as a file, by its command.

#include "app/base/codepage932.h"
#include "consent/list/list_grid.h"
#include "consent/screens/consent_list_form.h"
#include "tests/export/csv_dialog.h"
#include "tests/export/csv_reader.h"
#include "tests/list/list_fixture.h"
#include "tests/widgets/form_keys.h"

#include <QDirIterator>
#include <QFile>
#include <QHeaderView>
#include <QLineEdit>

using namespace Qt::Literals::StringLiterals;

namespace {

class ListExportTest : public ListTest {
protected:
    void open() {
        form = std::make_unique<frm同意書管理>(environment);
        ASSERT_EQ(form->iInit(database.db, 0), 0) << form->sErrMsg().toStdString();
        showActive(*form);
        grid = form->findChild<ListGrid *>(u"ssDouiD"_s);
    }
    std::vector<QStringList> exported() {
        const QTemporaryDir folder;
        const CsvDialog dialog([&](QDialog &opened) {
            CsvDialog::box(opened, u"txtFileName"_s).setText(u"一覧"_s);
            CsvDialog::pressSave(opened, folder.path());
        });
        form->findChild<QPushButton *>(u"cmdCsv"_s)->click();
        QFile file(folder.filePath(u"一覧.csv"_s));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return readCsv(decode932(file.readAll()), u',').value_or(std::vector<QStringList>());
    }

    std::unique_ptr<frm同意書管理> form;
    ListGrid *grid = nullptr;
};

TEST_F(ListExportTest, SavesWhatIsShownAsItIsShown) {
    patient(1, u"山田 太郎"_s, u"ﾔﾏﾀﾞ"_s);
    patient(2, u"鈴木 花子"_s, u"スズキ"_s);
    patient(3, u"山本 \"次郎\""_s, u"やまもと"_s);
    consent(1, u"2026/12/31"_s, u"iGetFlg = 1"_s);
    consent(2, u"2026/12/31"_s);
    consent(3, u"2026/12/31"_s, u"cKobetuDouiIrai = 'FAX'"_s);
    open();
    for (int column = 0; column < int(ListColumn::Count); ++column)
        grid->setColumnHidden(column, true);
    for (const ListColumn column : {ListColumn::Received, ListColumn::Number, ListColumn::Name,
                                    ListColumn::OwnMethods, ListColumn::Remark, ListColumn::Letter})
        grid->showColumn(int(column));
    QHeaderView &header = *grid->horizontalHeader();
    header.moveSection(header.visualIndex(int(ListColumn::Remark)), 0);
    grid->sortByColumn(int(ListColumn::Number), Qt::DescendingOrder);
    form->findChild<QLineEdit *>(u"txt_SiboriName"_s)->setText(u"山"_s);
    ASSERT_EQ(grid->model()->rowCount(), 2);
    grid->model()->setData(grid->model()->index(1, int(ListColumn::Remark)), u"急ぎ, 午後"_s);

    EXPECT_EQ(exported(),
              (std::vector<QStringList>{
                  {u"備考"_s, u"IDNo."_s, u"利用者名"_s, u"受領"_s, u"依頼ボタン"_s, u"同意依頼書種別"_s},
                  {u""_s, u"3"_s, u"山本 \"次郎\""_s, u""_s, u"FAX"_s, u"マッサージ継続"_s},
                  {u"急ぎ, 午後"_s, u"1"_s, u"山田 太郎"_s, u"○"_s, u""_s, u"マッサージ継続"_s}}));
    EXPECT_EQ(messages.shown.back().title, u"出力完了"_s);
    EXPECT_EQ(database.value(u"SELECT cItiranBikou FROM RIYOUSHA_DOUI_REC WHERE nIDNo = 1"_s), u"NULL"_s)
        << "nothing is saved by it";
}

TEST_F(ListExportTest, PrintsWhatIsShownWithItsFilterAndOrder) {
    for (const int number : {1, 2, 3}) {
        patient(number, u"山田 %1"_s.arg(number), u"ﾔﾏﾀﾞ"_s);
        consent(number, u"2026/12/31"_s);
    }
    open();
    for (int column = 0; column < int(ListColumn::Count); ++column)
        grid->setColumnHidden(column, column != int(ListColumn::Number) && column != int(ListColumn::Name));
    grid->sortByColumn(int(ListColumn::Number), Qt::DescendingOrder);
    form->findChild<QLineEdit *>(u"txt_SiboriName"_s)->setText(u"山田"_s);
    QTest::keyClick(form.get(), Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_EQ(processes.started.size(), 1);

    QFile data(folders.temporary() + u"/一覧データ.csv"_s);
    ASSERT_TRUE(data.open(QIODevice::ReadOnly));
    EXPECT_EQ(
        decode932(data.readAll()),
        u"\"帯\",\"列1\",\"列2\"\r\n1,\"3\",\"山田 3\"\r\n1,\"2\",\"山田 2\"\r\n1,\"1\",\"山田 1\"\r\n"_s);
    QDirIterator layouts(programFolder.path(), {u"一覧.wfd"_s}, QDir::Files, QDirIterator::Subdirectories);
    ASSERT_TRUE(layouts.hasNext());
    QFile layout(layouts.next());
    ASSERT_TRUE(layout.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(layout.readAll());
    for (const QString &note : {u"対象期間：2026/11/01～2027/04/30　　氏名の絞り込み：山田"_s, u"表示 3 件"_s,
                                u"並び順：IDNo.（降順）"_s})
        EXPECT_TRUE(text.contains(note)) << note.toStdString();
}

} // namespace
