// The fees' screen, worked by its controls.

#include "fees/fees_form.h"
#include "tests/fees/practice.h"
#include "tests/widgets/form_keys.h"
#include "widgets/date_box.h"
#include "widgets/grid.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

class FeesFormTest : public FeesTest {
protected:
    FeesFormTest() {
        price(u"2022/06/01"_s, u"2024/09/30"_s, u"1, 1, 350"_s);
        price(u"2024/10/01"_s, u"2099/12/31"_s, u"1, 1, 1450"_s);
        band(u"2022/06/01"_s, u"2024/09/30"_s, u"0, 4000, 2300"_s);
        band(u"2024/10/01"_s, u"2099/12/31"_s, u"0, 2000, 2400"_s);
        band(u"2024/10/01"_s, u"2099/12/31"_s, u"2000, 16000, 2550"_s);
        EXPECT_EQ(form.iInit(), 0) << form.sErrMsg().toStdString();
        showActive(form);
    }
    template <class W> W *control(const QString &name) { return form.findChild<W *>(name); }
    QString label(const QString &name) { return control<QLabel>(name)->text(); }
    QString massage() { return control<Grid>(u"ssTanka"_s)->model()->index(0, 1).data().toString(); }
    void enter(const QString &box, const QString &text) {
        auto *line = control<QLineEdit>(box);
        line->setFocus();
        line->selectAll();
        typeText(line, text);
        QTest::keyClick(line, Qt::Key_Return);
    }
    void typeInto(int row, int column, const QString &text) {
        grid->setFocus();
        grid->goTo(row, column);
        QTest::keyClick(grid, Qt::Key_F2);
        auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
        ASSERT_TRUE(editor);
        editor->selectAll();
        typeText(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents(); // the cell takes the text a moment after the key
    }
    QStringList stored() const {
        return database.rows(
            u"select cStartDate, cEndDate, dMinLen, dMaxLen, nMinLen, nMaxLen, nKingakuOuryou"
            " from 往療費区分 order by 1, nMinLen"_s);
    }

    FeesForm form{environment, database.db};
    Grid *grid = control<Grid>(u"ssKubun"_s);
};

TEST_F(FeesFormTest, AMonthShowsWhatIsInForceAndADistanceItsFee) {
    EXPECT_EQ(label(u"lblGengou"_s), u"令和8年11月の料金"_s);
    EXPECT_EQ(massage(), u"1,450"_s);
    const struct {
        QString typed;
        QString shown;
    } distances[] = {{u"2000"_s, u"往療料 2,400 円"_s},
                     {u"１，９９９"_s, u"往療料 2,400 円"_s},
                     {u"20000"_s, u"往療料 2,550 円（16,000 m として計算）"_s},
                     {u"2147483647"_s, u"往療料 2,550 円（16,000 m として計算）"_s},
                     {u"0"_s, u"往療料 0 円"_s},
                     {u"-5"_s, u"0～2,147,483,647 の整数をメートルで入力してください"_s},
                     {u"2147483648"_s, u"0～2,147,483,647 の整数をメートルで入力してください"_s}};
    for (const auto &d : distances) {
        enter(u"txtKyori"_s, d.typed);
        EXPECT_EQ(label(u"lblOuryohi"_s), d.shown) << d.typed.toStdString();
    }
    enter(u"txtKyori"_s, u"9000"_s);
    control<QCheckBox>(u"chkSaigo"_s)->click();
    EXPECT_EQ(label(u"lblOuryohi"_s), u"往療料 2,400 円"_s);
    enter(u"imD_Tsuki"_s, u"R6.9"_s);
    EXPECT_EQ(massage(), u"350"_s);
    EXPECT_EQ(label(u"lblOuryohi"_s), u"往療料 2,300 円（4,000 m として計算）"_s);
    const auto mark = [&](int row) {
        return grid->model()->index(row, BandsModel::InForce).data().toString();
    };
    EXPECT_EQ(mark(0) + mark(1), u"●"_s);
    enter(u"imD_Tsuki"_s, u"202205"_s);
    EXPECT_EQ(said(), u"単価データがありません。"_s);
    EXPECT_EQ(massage(), QString());
    EXPECT_EQ(label(u"lblOuryohi"_s), u"この年月には往療費の区分がありません"_s);
}

TEST_F(FeesFormTest, WhatIsShownSaysOfWhichMonth) {
    enter(u"imD_Tsuki"_s, u"202613"_s);
    EXPECT_TRUE(control<DateBox>(u"imD_Tsuki"_s)->hasWrongInput());
    EXPECT_EQ(label(u"lblGengou"_s), u"令和8年11月の料金"_s);
    EXPECT_EQ(massage(), u"1,450"_s);
    enter(u"imD_Tsuki"_s, u"2024/9"_s);
    EXPECT_EQ(label(u"lblGengou"_s), u"令和6年9月の料金"_s);
    EXPECT_EQ(massage(), u"350"_s);
    enter(u"imD_Tsuki"_s, u" "_s);
    EXPECT_EQ(label(u"lblGengou"_s) + massage(), QString());
}

TEST_F(FeesFormTest, BandsAreAddedChangedAndDeletedByKeyboard) {
    typeInto(2, BandsModel::To, u"５０００"_s);
    grid->goTo(2, BandsModel::To);
    pressButton(form, Qt::Key_F1);
    typeInto(3, BandsModel::To, u"9,000"_s);
    typeInto(3, BandsModel::Fee, u"2700"_s);
    typeInto(0, BandsModel::End, u"R6.8.31"_s);
    EXPECT_TRUE(label(u"lblTrouble"_s).contains(u"2024/09～2024/09　往療費の区分がありません。"_s));
    messages.answers = {Answer::No, Answer::Yes};
    const QStringList before = stored();
    pressButton(form, Qt::Key_F5);
    EXPECT_EQ(stored(), before) << "the gap was not wanted";
    pressButton(form, Qt::Key_F5);
    EXPECT_EQ(stored(), (QStringList{u"2022/06/01|2024/08/31|NULL|NULL|0|4000|2300"_s,
                                     u"2024/10/01|2099/12/31|NULL|NULL|0|2000|2400"_s,
                                     u"2024/10/01|2099/12/31|NULL|5|2000|5000|2550"_s,
                                     u"2024/10/01|2099/12/31|5|9|5000|9000|2700"_s}));
    enter(u"txtKyori"_s, u"8000"_s);
    EXPECT_EQ(label(u"lblOuryohi"_s), u"往療料 2,700 円"_s) << "what was saved counts at once";
    grid->goTo(0, BandsModel::Start);
    pressButton(form, Qt::Key_F3);
    pressButton(form, Qt::Key_F5);
    EXPECT_EQ(stored().size(), 3);
    EXPECT_EQ(messages.shown.size(), 2) << why();
}

TEST_F(FeesFormTest, WhatCannotBeSavedStaysOnTheScreen) {
    typeInto(1, BandsModel::Fee, u"abc"_s);
    EXPECT_TRUE(said().contains(u"「abc」"_s));
    typeInto(1, BandsModel::To, u"0"_s);
    pressButton(form, Qt::Key_F5);
    EXPECT_TRUE(said().contains(u"2 行目　距離の上限には"_s)) << why();
    typeInto(1, BandsModel::To, u"1000"_s);
    typeInto(2, BandsModel::From, u"1000"_s);
    // A colleague was faster.
    database.run(u"update 往療費区分 set nKingakuOuryou = 9 where nMinLen = 2000"_s);
    const QStringList theirs = stored();
    pressButton(form, Qt::Key_F5);
    EXPECT_TRUE(said().contains(u"他の端末で変更"_s)) << why();
    EXPECT_EQ(stored(), theirs);
    messages.answers = {Answer::Cancel, Answer::No};
    pressButton(form, Qt::Key_F12);
    EXPECT_TRUE(form.isVisible());
    pressButton(form, Qt::Key_F12);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(stored(), theirs);
}

TEST_F(FeesFormTest, FeesAmongOtherOfficesBandsAreTold) {
    EXPECT_EQ(label(u"lblTrouble"_s), QString());
    band(u"2024/10/01"_s, u"2099/12/31"_s, u"0, 1000, 7"_s, 2);
    enter(u"imD_Tsuki"_s, u"202612"_s);
    EXPECT_TRUE(label(u"lblTrouble"_s).contains(u"ほかの拠点の区分も含めた 3 区分"_s));
}
