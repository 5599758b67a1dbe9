// The list's columns: shown and hidden, in order, frozen at the left.

#include "consent/list/list_grid.h"
#include "consent/rows/column_settings.h"
#include "consent/screens/consent_list_form.h"
#include "export/save_grid.h"
#include "tests/list/list_fixture.h"

#include <QAccessible>
#include <QApplication>
#include <QDir>
#include <QHeaderView>
#include <QPushButton>
#include <QScrollBar>
#include <QSettings>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

class ListColumnsTest : public ListTest {
protected:
    ListColumnsTest() {
        QDir(programFolder.path()).mkdir(u"DATA"_s);
        for (const int number : {1, 2, 3}) {
            patient(number, u"利用者%1"_s.arg(number), u"ﾔﾏﾀﾞ"_s);
            consent(number, u"2026/12/31"_s, u"cKobetuDouiIrai = 'FAX', iDouiHospOutFlg = 1"_s);
        }
    }
    ~ListColumnsTest() override { forgetUser(); }
    static void forgetUser() {
        QSettings(QSettings::IniFormat, QSettings::UserScope, u"douisho"_s, u"windows"_s).clear();
    }
    void open() {
        form = std::make_unique<frm同意書管理>(environment);
        ASSERT_EQ(form->iInit(database.db, 0), 0) << form->sErrMsg().toStdString();
        form->resize(800, 500);
        form->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
        grid = form->findChild<ListGrid *>(u"ssDouiD"_s);
    }
    int x(ListColumn column, int row = 0) const { return grid->visualRect(cell(row, column)).left(); }
    QModelIndex cell(int row, ListColumn column) const { return grid->model()->index(row, int(column)); }
    bool isHidden(ListColumn column) const { return grid->isColumnHidden(int(column)); }
    void store(const ColumnSettings &settings) {
        const Result<> written = writeColumnSettings(folders, settings);
        ASSERT_TRUE(written) << written.reason().toStdString();
    }
    static ColumnSettings::Column &of(ColumnSettings &settings, ListColumn column) {
        return *std::ranges::find(settings.columns, column, &ColumnSettings::Column::column);
    }

    std::unique_ptr<frm同意書管理> form;
    ListGrid *grid = nullptr;
};

TEST_F(ListColumnsTest, SettingsComeBackAsTheyWereStoredAndDamageIsMended) {
    EXPECT_EQ(*readColumnSettings(folders), ColumnSettings::first()) << "nothing is stored yet";
    ColumnSettings settings = ColumnSettings::first();
    std::swap(settings.columns[3], settings.columns[30]);
    of(settings, ListColumn::ConsentEnd).shown = false;
    of(settings, ListColumn::OwnRequest).width = 37;
    settings.frozen = 2;
    store(settings);
    EXPECT_EQ(*readColumnSettings(folders), settings);

    const QString path = programFolder.filePath(u"DATA/同意管理表示設定.ini"_s);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[\x93\xaf\x88\xd3\x8bL\x98^\x8d\x80\x96\xda]\r\n\x95\x5c\x8e\xa6=0,x,,1\r\n"
               "\x8c\xc5\x92\xe8\x97\xf1\x90\x94=-5\r\n");
    file.close();
    const Result<ColumnSettings> mended = readColumnSettings(folders);
    ASSERT_TRUE(mended);
    ColumnSettings expected = ColumnSettings::first();
    expected.columns[0].shown = false;
    expected.frozen = 0;
    EXPECT_EQ(*mended, expected);
    file.remove();
    QDir().mkdir(path);
    EXPECT_TRUE(readColumnSettings(folders).reason().contains(path));
}

TEST_F(ListColumnsTest, ThePracticesColumnsHoldAndTheUsersOwnWidthsOverThem) {
    open();
    EXPECT_TRUE(isHidden(ListColumn::OwnRequest)) << "not at first";
    QTest::keyClick(form.get(), Qt::Key_F4);
    grid->sortByColumn(int(ListColumn::Name), Qt::AscendingOrder);
    EXPECT_TRUE(isHidden(ListColumn::OwnRequest)) << "nor when it is read anew and sorted";
    form->reject();
    ColumnSettings settings = ColumnSettings::first();
    of(settings, ListColumn::OwnRequest).shown = true;
    of(settings, ListColumn::Target).shown = false;
    std::swap(settings.columns[1], settings.columns[7]);
    store(settings);
    open();
    EXPECT_TRUE(isHidden(ListColumn::Target));
    EXPECT_FALSE(isHidden(ListColumn::OwnRequest));
    EXPECT_EQ(cell(0, ListColumn::OwnRequest).data(), u"FAX"_s);
    EXPECT_EQ(cell(0, ListColumn::OnPaper).data(), u"○"_s);
    EXPECT_EQ(cell(0, ListColumn::HospitalMethod).data(), u"FAX"_s);
    EXPECT_EQ(cell(0, ListColumn::ToHospital).data(Qt::CheckStateRole), Qt::Checked);
    EXPECT_EQ(grid->horizontalHeader()->visualIndex(int(ListColumn::Reconsent)), 1);
    EXPECT_EQ(grid->currentIndex().column(), int(ListColumn::Reconsent)) << "the first that is shown";
    grid->setColumnWidth(int(ListColumn::Remark), 321);
    grid->horizontalHeader()->moveSection(2, 5);
    form->reject();
    open();
    EXPECT_EQ(grid->columnWidth(int(ListColumn::Remark)), 321);
    EXPECT_EQ(grid->horizontalHeader()->visualIndex(int(ListColumn::Name)), 5);
    form->reject();
    of(settings, ListColumn::Remark).width = 10;
    std::swap(settings.columns[0], settings.columns[20]);
    store(settings);
    open();
    EXPECT_EQ(grid->columnWidth(int(ListColumn::Remark)), 321) << "the user's own";
    EXPECT_EQ(grid->horizontalHeader()->visualIndex(int(ListColumn::Name)), 2) << "the practice's new order";
}

TEST_F(ListColumnsTest, FrozenColumnsStayInSightAndAreWorkedAsOthers) {
    open();
    ASSERT_EQ(x(ListColumn::Name), grid->columnViewportPosition(int(ListColumn::Name)));
    const int name = x(ListColumn::Name);
    QScrollBar *across = grid->horizontalScrollBar();
    grid->goTo(1, int(ListColumn::Remark));
    EXPECT_GT(across->value(), 0);
    EXPECT_EQ(x(ListColumn::Name), name) << "it has not moved";
    EXPECT_GT(x(ListColumn::Remark), name + grid->columnWidth(int(ListColumn::Name)) - 1);

    // By mouse on what is seen: a tick, the caption, an editor.
    const QModelIndex tick = cell(2, ListColumn::Contact);
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(tick).center());
    EXPECT_EQ(tick.data(Qt::CheckStateRole), Qt::Checked);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(grid)
                  ->tableInterface()
                  ->cellAt(2, tick.column())
                  ->text(QAccessible::Name),
              u"チェックあり");
    EXPECT_EQ(grid->currentIndex(), tick);
    EXPECT_EQ(grid->indexAt({name + 2, 5}), cell(0, ListColumn::Name));
    const int scrolled = across->value();
    EXPECT_GT(scrolled, 0) << "going to a frozen cell scrolls nothing";
    QTest::mouseClick(grid->horizontalHeader()->viewport(), Qt::LeftButton, {}, {name + 5, 5});
    EXPECT_EQ(grid->horizontalHeader()->sortIndicatorSection(), int(ListColumn::Name));
    grid->sortByColumn(-1, Qt::AscendingOrder);

    // By keys: to the left until the cell would lie beneath the frozen ones.
    grid->goTo(0, int(ListColumn::Remark));
    for (int i = 0; i < 6; ++i) {
        QTest::keyClick(grid, Qt::Key_Left);
        const int frozen = x(ListColumn::Name) + grid->columnWidth(int(ListColumn::Name));
        EXPECT_GE(grid->columnViewportPosition(grid->currentIndex().column()), frozen);
    }
    // A frozen cell's editor stands over the cell, and scrolling leaves it there.
    grid->horizontalHeader()->moveSection(grid->horizontalHeader()->visualIndex(int(ListColumn::Remark)), 0);
    across->setValue(across->maximum());
    grid->goTo(0, int(ListColumn::Remark));
    QTest::keyClicks(grid, u"x"_s);
    QWidget *editor = grid->indexWidget(grid->currentIndex());
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->x(), 0);
    across->setValue(0);
    across->setValue(across->maximum());
    EXPECT_EQ(editor->x(), 0);
    EXPECT_TRUE(grid->commitEditor());
    EXPECT_EQ(cell(0, ListColumn::Remark).data(), u"x"_s);

    // A narrow window leaves room to those that scroll.
    grid->setColumnWidth(int(ListColumn::Remark), grid->viewport()->width());
    QApplication::processEvents();
    across->setValue(across->maximum());
    EXPECT_LT(x(ListColumn::State), grid->viewport()->width());
    EXPECT_LT(grid->columnViewportPosition(int(ListColumn::Remark)), 0) << "too wide to be frozen";
}

TEST_F(ListColumnsTest, TheChoiceIsStoredAndHidesNoEdit) {
    open();
    grid->goTo(0, int(ListColumn::Remark));
    QTest::keyClicks(grid, u"x"_s);
    messages.answers = {Answer::Cancel};
    QTimer::singleShot(0, [] {
        QWidget *dialog = QApplication::activeModalWidget();
        auto *items = dialog->findChild<Grid *>(u"ssKoumoku"_s);
        for (int row = 0; row < items->model()->rowCount(); ++row)
            if (items->model()->index(row, 1).data() == u"備考"_s)
                items->goTo(row, 0);
        QTest::keyClick(items, Qt::Key_Space);
        QTest::keyClick(items, Qt::Key_Escape);
        EXPECT_TRUE(dialog->isVisible()) << "a choice is not dropped unasked";
        QTest::mouseClick(dialog->findChild<QPushButton *>(u"btnUp"_s), Qt::LeftButton);
        dialog->findChild<QSpinBox *>(u"numKotei"_s)->setValue(4);
        QTest::mouseClick(dialog->findChild<QPushButton *>(u"cmdKoumokuEnd"_s), Qt::LeftButton);
    });
    QTest::keyClick(form.get(), Qt::Key_H, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(isHidden(ListColumn::Remark));
    EXPECT_NE(grid->currentIndex().column(), int(ListColumn::Remark));
    const ColumnSettings stored = *readColumnSettings(folders);
    EXPECT_EQ(stored.frozen, 4);
    EXPECT_EQ(stored.columns[int(ListColumn::Remark) - 1].column, ListColumn::Remark) << "one place up";
    EXPECT_FALSE(tableOf(*grid).headings().contains(u"備考"_s)) << "files show what the list shows";
    messages.answers = {Answer::Yes};
    QTest::mouseClick(form->findChild<QPushButton *>(u"cmdSave"_s), Qt::LeftButton);
    EXPECT_EQ(database.value(u"SELECT cItiranBikou FROM RIYOUSHA_DOUI_REC WHERE nIDNo = 1"_s), u"x"_s);

    // What cannot be saved is shown to be mended, hidden or not.
    grid->setColumnHidden(int(ListColumn::NextEnd), true);
    grid->model()->setData(cell(0, ListColumn::NextStart), QDate(2027, 2, 1), Qt::EditRole);
    grid->model()->setData(cell(0, ListColumn::NextEnd), QDate(2027, 1, 1), Qt::EditRole);
    messages.answers = {Answer::Yes};
    QTest::mouseClick(form->findChild<QPushButton *>(u"cmdSave"_s), Qt::LeftButton);
    EXPECT_EQ(grid->currentIndex(), cell(0, ListColumn::NextEnd));
    EXPECT_FALSE(isHidden(ListColumn::NextEnd));
}
