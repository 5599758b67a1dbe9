// The patients' period types and the practice's defaults: what is read, checked, saved, and overtaken.

#include "app/base/settings.h"
#include "consent/list/list_grid.h"
#include "consent/rules/period_basis.h"
#include "consent/screens/consent_list_form.h"
#include "consent/settings/period_settings_form.h"
#include "consent/settings/period_types_model.h"
#include "consent/settings/period_types_query.h"
#include "tests/list/list_fixture.h"
#include "widgets/grid.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

class PeriodSettingsTest : public ListTest {
protected:
    PeriodSettingsTest() {
        patient(1, u"青木"_s, u"ｱｵｷ"_s);
        patient(2, u"馬場"_s, u"ﾊﾞﾊﾞ"_s);
        patient(3, u"千葉"_s, u"ﾁﾊﾞ"_s); // without a row
        patient(14, u"土井"_s, u"ﾄﾞｲ"_s);
        // The patients' own row has columns of the same names.
        database.run(u"UPDATE RIYOUSHA SET iKikanCalcType = 9"_s);
        types(1, u"2026/05"_s, u"1, 1, 1"_s);
        types(1, u"2026/11"_s, u"1, 2, 2"_s);
        types(2, u"2026/11"_s, u"1, 1, 1"_s);
        types(14, u"2026/11"_s, u"NULL, 0, 1"_s);
        database.run(u"INSERT INTO DOUIKIROKU (iKyotenCd, iKyotenEb, nIDNo, tDouiYM, iDouiNo, iDoui1CalcType)"
                     " VALUES (2, 1, 1, '2026/11', 1, 1)"_s);
        Settings(folders).iWrite(Setting::同意書自動計算デフォルト, u"1,1,2"_s);
    }
    void types(int number, const QString &month, const QString &values) {
        database.run(u"INSERT INTO DOUIKIROKU (iKyotenCd, iKyotenEb, nIDNo, tDouiYM, iDouiNo, iDoui1CalcType,"
                     " iDoui2CalcType, iKikanCalcType) VALUES (1, 1, %1, '%2', 1, %3)"_s.arg(number)
                         .arg(month, values));
    }
    QString stored(int number, const QString &month = u"2026/11"_s) {
        QStringList texts;
        for (const QString &column : {u"iDoui1CalcType"_s, u"iDoui2CalcType"_s, u"iKikanCalcType"_s})
            texts += database.value(
                u"SELECT %1 FROM DOUIKIROKU WHERE iKyotenCd = 1 AND nIDNo = %2 AND tDouiYM = '%3'"_s
                    .arg(column)
                    .arg(number)
                    .arg(month));
        return texts.join(u',');
    }
    QString defaults() const { return Settings(folders).text(Setting::同意書自動計算デフォルト); }
    void open() {
        form = std::make_unique<frm同意書管理設定>(environment, database.db);
        ASSERT_EQ(form->iInit(), 0) << form->sErrMsg().toStdString();
        form->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
        grid = form->findChild<Grid *>(u"ssDouiData"_s);
        def = form->findChild<Grid *>(u"ssDef"_s);
    }
    QString shown(int row) const {
        QStringList texts;
        for (int column = 1; column < 6; ++column)
            texts += grid->model()->index(row, column).data().toString();
        return texts.join(u' ');
    }
    void press(const QString &button) {
        QTest::mouseClick(form->findChild<QPushButton *>(button), Qt::LeftButton);
    }
    static void type(Grid *into, int row, int column, const QString &text) {
        into->setFocus();
        into->goTo(row, column);
        QTest::keyClicks(into, text.left(1));
        QTest::keyClicks(QApplication::focusWidget(), text.mid(1));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QApplication::processEvents();
    }

    std::unique_ptr<frm同意書管理設定> form;
    Grid *grid = nullptr;
    Grid *def = nullptr;
};

TEST_F(PeriodSettingsTest, ThoseThatDifferGetTheDefaults) {
    open();
    ASSERT_EQ(grid->model()->rowCount(), 3) << "one line a patient, none without a row";
    EXPECT_EQ(shown(0), u"1 青木 1 2 2"_s) << "the latest month";
    EXPECT_EQ(shown(2), u"14 土井   1"_s);
    auto *filter = form->findChild<QLineEdit *>(u"txtSibori"_s);
    filter->setText(u"１"_s);
    EXPECT_EQ(grid->model()->rowCount(), 2) << "1 and 14";
    filter->setText(u"馬"_s);
    EXPECT_EQ(shown(0), u"2 馬場 1 1 1"_s);
    filter->clear();
    def->model()->setData(def->model()->index(0, PeriodTypesModel::PeriodType), u"１"_s);
    form->findChild<QCheckBox *>(u"chkChigai"_s)->setChecked(true);
    ASSERT_EQ(grid->model()->rowCount(), 2);
    EXPECT_EQ(shown(0), u"1 青木 1 2 2"_s);

    press(u"cmdAllCheck"_s);
    press(u"cmdSetData"_s);
    EXPECT_EQ(shown(1), u"14 土井 1 1 1"_s);
    messages.answers = {Answer::Yes};
    press(u"btnSave"_s);
    ASSERT_EQ(messages.shown.size(), 2);
    EXPECT_EQ(messages.shown[0].text, u"設定を保存しますか？"_s);
    EXPECT_EQ(messages.shown[1].text, u"設定を保存しました。"_s);
    EXPECT_EQ(stored(1), u"1,1,1"_s);
    EXPECT_EQ(stored(14), u"1,1,1"_s);
    EXPECT_EQ(defaults(), u"1,1,1"_s);
    EXPECT_EQ(database.value(u"SELECT iDoui2CalcType FROM DOUIKIROKU WHERE iKyotenCd = 2"_s), u"NULL"_s)
        << "another branch's patient of the same number";
    PeriodBasisReader basis(folders, environment.branch, database.db);
    EXPECT_EQ(basis.of(1, false)->settings.iKikanCalcType, 1) << "periods go by it";
    messages.shown.clear();
    form->reject();
    EXPECT_FALSE(form->isVisible());
    EXPECT_TRUE(messages.shown.isEmpty()) << "nothing is left to save";
}

TEST_F(PeriodSettingsTest, WrongTypesAreShownByCellAndNothingIsSaved) {
    types(3, u"2026/11"_s, u"1, 7, 1"_s);
    open();
    type(grid, 0, PeriodTypesModel::FirstType, u"2"_s);
    form->findChild<QLineEdit *>(u"txtSibori"_s)->setText(u"青木"_s);
    for (const QString &leave : {u"btnSave"_s, u"cmdEnd"_s}) {
        messages.shown.clear();
        messages.answers = {Answer::Yes};
        press(leave);
        EXPECT_EQ(messages.shown.back().text, u"設定にエラーが発生しています。エラーを修正してください。"_s);
        EXPECT_TRUE(form->isVisible());
        EXPECT_EQ(grid->currentIndex().data(), u"7"_s) << "shown again though narrowed away";
        EXPECT_TRUE(grid->currentIndex().data(Qt::BackgroundRole).isValid());
    }
    EXPECT_EQ(messages.shown.front().text, u"設定が変更されています。保存しますか？"_s);
    EXPECT_EQ(stored(1), u"1,2,2"_s);
    type(grid, grid->currentIndex().row(), PeriodTypesModel::SecondType, u"1"_s);
    type(def, 0, PeriodTypesModel::FirstType, u"3"_s);
    press(u"btnSave"_s);
    EXPECT_EQ(def->currentIndex().column(), int(PeriodTypesModel::FirstType));
    type(def, 0, PeriodTypesModel::FirstType, u"2"_s);
    messages.answers = {Answer::Yes};
    press(u"btnSave"_s);
    EXPECT_EQ(stored(1), u"2,2,2"_s);
    EXPECT_EQ(stored(3), u"1,1,1"_s);
    EXPECT_EQ(stored(14), u"NULL,0,1"_s) << "an empty type that nobody touched stays, and is no error";
}

TEST_F(PeriodSettingsTest, AColleaguesChangeIsNotOverwritten) {
    open();
    type(grid, 0, PeriodTypesModel::PeriodType, u"1"_s);
    type(grid, 1, PeriodTypesModel::PeriodType, u"2"_s);
    type(def, 0, PeriodTypesModel::PeriodType, u"1"_s);
    database.run(u"UPDATE DOUIKIROKU SET iDoui1CalcType = 2 WHERE nIDNo = 1"_s);
    messages.answers = {Answer::Yes, Answer::Yes};
    press(u"btnSave"_s);
    EXPECT_TRUE(messages.shown.back().text.contains(u"1　青木"_s) ||
                messages.shown.back().text.contains(u"青木"_s));
    EXPECT_FALSE(messages.shown.back().text.contains(u"馬場"_s));
    EXPECT_EQ(stored(1), u"2,2,2"_s);
    EXPECT_EQ(stored(2), u"1,1,1"_s) << "all or nothing";
    EXPECT_EQ(defaults(), u"1,1,2"_s);
    EXPECT_EQ(shown(0), u"1 青木 2 2 2"_s) << "as it stands now";
    EXPECT_EQ(shown(1), u"2 馬場 1 1 2"_s) << "the other edit stays";
    EXPECT_EQ(def->model()->index(0, int(PeriodTypesModel::PeriodType)).data(), u"1"_s);

    Settings(folders).iWrite(Setting::同意書自動計算デフォルト, u"2,2,2"_s);
    messages.answers = {Answer::Yes, Answer::Yes};
    press(u"btnSave"_s);
    EXPECT_TRUE(messages.shown.back().text.contains(u"既定の計算方法"_s));
    EXPECT_EQ(stored(2), u"1,1,1"_s);
    EXPECT_EQ(defaults(), u"2,2,2"_s);
    messages.answers = {Answer::Yes};
    press(u"btnSave"_s);
    EXPECT_EQ(stored(2), u"1,1,2"_s) << "what was left is saved after reading again";
}

TEST_F(PeriodSettingsTest, AFileThatCannotBeWrittenLeavesTheRows) {
    open();
    type(grid, 0, PeriodTypesModel::PeriodType, u"1"_s);
    type(def, 0, PeriodTypesModel::FirstType, u"2"_s);
    const QString path = programFolder.filePath(u"患者管理設定.ini"_s);
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner));
    messages.answers = {Answer::Yes};
    press(u"btnSave"_s);
    EXPECT_EQ(messages.shown.back().title, u"DB-error"_s);
    EXPECT_TRUE(messages.shown.back().text.contains(u"何も保存されていません。"_s));
    EXPECT_EQ(stored(1), u"1,2,2"_s);
    EXPECT_EQ(shown(0), u"1 青木 1 2 1"_s) << "the edit is kept";
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
    // The other way round: the rows cannot be written, and the file stays.
    database.run(u"CREATE TRIGGER refused BEFORE UPDATE ON DOUIKIROKU WHEN NEW.iKikanCalcType = 1 AND"
                 " OLD.iKikanCalcType = 2 BEGIN SELECT RAISE(ABORT, 'no room'); END"_s);
    messages.answers = {Answer::Yes};
    press(u"btnSave"_s);
    EXPECT_TRUE(messages.shown.back().text.contains(u"no room"_s));
    EXPECT_EQ(defaults(), u"1,1,2"_s);
    QFile::remove(path);
    QDir().mkdir(path);
    frm同意書管理設定 again(environment, database.db);
    EXPECT_EQ(again.iInit(), -1);
    EXPECT_TRUE(again.sErrMsg().endsWith(u"dataLoadRiyousha()でエラー"_s));
}

TEST_F(PeriodSettingsTest, TheListProposesByTheNewTypes) {
    consent(2, u"2026/12/31"_s);
    frm同意書管理 window(environment);
    ASSERT_EQ(window.iInit(database.db, 0), 0);
    window.show();
    auto *rows = window.findChild<ListGrid *>(u"ssDouiD"_s);
    const auto proposed = [&] {
        const auto cell = [&](ListColumn column) { return rows->model()->index(0, int(column)); };
        rows->model()->setData(cell(ListColumn::Reconsent), QDate(2027, 1, 10), Qt::EditRole);
        const QString period = cell(ListColumn::NextStart).data().toString() + u"～"_s +
                               cell(ListColumn::NextEnd).data().toString();
        rows->model()->setData(cell(ListColumn::Reconsent), QDate(), Qt::EditRole);
        return period;
    };
    EXPECT_EQ(proposed(), u"2027/01/10～2027/06/30"_s) << "to the month's end";
    messages.answers = {Answer::Yes};
    QTimer::singleShot(0, [] {
        QWidget *dialog = QApplication::activeModalWidget();
        QAbstractItemModel *patients = dialog->findChild<Grid *>(u"ssDouiData"_s)->model();
        patients->setData(patients->index(1, PeriodTypesModel::PeriodType), u"2"_s);
        QTest::mouseClick(dialog->findChild<QPushButton *>(u"btnSave"_s), Qt::LeftButton);
        QTest::mouseClick(dialog->findChild<QPushButton *>(u"cmdEnd"_s), Qt::LeftButton);
    });
    window.findChild<QAction *>(u"mnDouiSettei"_s)->trigger();
    EXPECT_EQ(proposed(), u"2027/02/01～2027/07/31"_s) << "from the next month's first day";
}
