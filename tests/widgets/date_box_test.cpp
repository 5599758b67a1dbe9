#include "widgets/date_box.h"

#include "tests/support/test_environment.h"
#include "tests/widgets/form_keys.h"
#include "widgets/date_delegate.h"
#include "widgets/grid.h"

#include <QAction>
#include <QListWidget>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QVBoxLayout>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A date box beside another one to leave to.
struct DateForm : QWidget {
    DateForm() {
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(&box);
        layout->addWidget(&other);
        showActive(*this);
        box.setFocus();
    }
    bool marked() const { return box.actions().constFirst()->isVisible(); }

    DateBox box;
    QLineEdit other;
};

const QDate Day(2026, 11, 21);
FixedClock theClock(Day);

} // namespace

TEST(DateBox, TakesEveryNotationAndShowsOne) {
    struct Case {
        QString typed;
        QString shown;
    };
    const Case cases[] = {{u"2026/11/21"_s, u"2026/11/21"_s},
                          {u"20261121"_s, u"2026/11/21"_s},
                          {u"２０２６１１２１"_s, u"2026/11/21"_s},
                          {u"R8.11.21"_s, u"2026/11/21"_s},
                          {u"令和8年11月21日"_s, u"2026/11/21"_s},
                          {u" 2026/1/5 "_s, u"2026/01/05"_s},
                          {u"  "_s, QString()}};
    DateForm form;
    for (const Case &c : cases) {
        form.box.clear();
        typeText(&form.box, c.typed);
        QTest::keyClick(&form.box, Qt::Key_Return);
        EXPECT_EQ(form.box.text(), c.shown) << c.typed.toStdString();
        EXPECT_FALSE(form.marked()) << c.typed.toStdString();
    }
}

TEST(DateBox, KeepsMarksAndExplainsWhatIsNoDate) {
    for (const QString &typed : {u"2026/02/30"_s, u"20261301"_s, u"あした"_s, u"R8.11"_s, u"'"_s}) {
        DateForm form;
        QSignalSpy rejected(&form.box, &DateBox::inputRejected);
        typeText(&form.box, typed);
        EXPECT_FALSE(form.marked()) << "while typing";
        QTest::keyClick(&form.box, Qt::Key_Tab);

        EXPECT_EQ(form.box.text(), typed);
        EXPECT_TRUE(form.marked()) << typed.toStdString();
        EXPECT_TRUE(form.box.toolTip().contains(u"R8.11.21")) << "an example of what can be typed";
        EXPECT_FALSE(form.box.date().isValid());
        EXPECT_EQ(rejected.count(), 1);

        form.box.setText(u"20261121"_s);
        EXPECT_FALSE(form.marked());
        EXPECT_TRUE(form.box.settle());
    }
}

TEST(DateBox, StepsByKeys) {
    struct Case {
        QDate from;
        Qt::Key key;
        QDate to;
    };
    const Case cases[] = {{Day, Qt::Key_Up, {2026, 11, 22}},
                          {{2026, 1, 1}, Qt::Key_Down, {2025, 12, 31}},
                          {{2026, 1, 31}, Qt::Key_PageUp, {2026, 2, 28}},
                          {{2024, 3, 31}, Qt::Key_PageDown, {2024, 2, 29}}};
    DateForm form;
    for (const Case &c : cases) {
        form.box.setDate(c.from);
        QTest::keyClick(&form.box, c.key);
        EXPECT_EQ(form.box.date(), c.to);
        EXPECT_EQ(form.box.text(), c.to.toString(u"yyyy/MM/dd"));
    }
    form.box.setDate({});
    QTest::keyClick(&form.box, Qt::Key_Up);
    EXPECT_EQ(form.box.text(), QString()) << "no day is known to begin at";
    form.box.setClock(theClock);
    QTest::keyClick(&form.box, Qt::Key_Up);
    EXPECT_EQ(form.box.date(), Day);

    form.box.setText(u"2026/02/30"_s);
    QTest::keyClick(&form.box, Qt::Key_Up);
    EXPECT_EQ(form.box.text(), u"2026/02/30"_s) << "a step must not take wrong input away";
}

TEST(DateBox, TellsWhatAShortDateMeansAndAsksWhichOfTwo) {
    DateForm form;
    FixedClock overnight(Day);
    form.box.setClock(overnight);
    const auto *lines = [&] {
        typeText(&form.box, u"30"_s);
        return form.findChild<QListWidget *>();
    }();
    ASSERT_TRUE(lines && lines->isVisible());
    EXPECT_EQ(lines->item(0)->text(), u"2026/11/30　令和8年11月30日（月）"_s);
    QTest::keyClick(&form.box, Qt::Key_Return);
    EXPECT_EQ(form.box.text(), u"2026/11/30"_s);
    EXPECT_FALSE(lines->isVisible());

    overnight.set({2026, 12, 1}); // the program stays open
    form.box.clear();
    typeText(&form.box, u"今日"_s);
    EXPECT_EQ(form.box.date(), QDate(2026, 12, 1));
    form.box.clear();
    QTest::keyClick(&form.box, Qt::Key_Up);
    EXPECT_EQ(form.box.date(), QDate(2026, 12, 1));

    const struct {
        QList<Qt::Key> keys;
        QString text;
        bool held;
    } ways[] = {{{Qt::Key_Return}, u"17/4/1"_s, true},
                {{Qt::Key_Return, Qt::Key_Return}, u"2035/04/01"_s, false},
                {{Qt::Key_Return, Qt::Key_Down, Qt::Key_Return}, u"2017/04/01"_s, false},
                {{Qt::Key_Down, Qt::Key_Down, Qt::Key_Tab}, u"2017/04/01"_s, false},
                {{Qt::Key_Tab}, u"17/4/1"_s, true}};
    for (const auto &way : ways) {
        form.box.setFocus();
        form.box.clear();
        typeText(&form.box, u"17/4/1"_s);
        EXPECT_EQ(lines->count(), 2);
        for (const Qt::Key key : way.keys)
            QTest::keyClick(&form.box, key);
        EXPECT_EQ(form.box.text(), way.text);
        EXPECT_EQ(form.box.hasWrongInput(), way.held) << "nothing is taken that nobody chose";
        EXPECT_EQ(lines->isVisible(), form.box.hasFocus() && way.held);
    }
}

TEST(DateBox, TellsOfChangesOnceTheyStand) {
    DateForm form;
    QSignalSpy changed(&form.box, &DateBox::dateChanged);
    typeText(&form.box, u"2026/11/21"_s);
    EXPECT_EQ(form.box.date(), Day) << "readable before Enter, for commands by function key";
    EXPECT_EQ(changed.count(), 0) << "2026/11/2 is a date, too";
    QTest::keyClick(&form.box, Qt::Key_Return);
    QTest::keyClick(&form.box, Qt::Key_Return);
    EXPECT_EQ(changed.count(), 1);
    QHelpEvent hover(QEvent::ToolTip, {}, {});
    QApplication::sendEvent(&form.box, &hover);
    EXPECT_EQ(form.box.toolTip(), u"令和8年11月21日（土）"_s);
    form.box.clear();
    QTest::keyClick(&form.box, Qt::Key_Tab);
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(form.box.toolTip(), QString());
}

TEST(DateBox, OfMonthsHoldsTheFirst) {
    DateForm form;
    form.box.setUnit(DateBox::Unit::Month);
    for (const QString &typed :
         {u"2026/11"_s, u"202611"_s, u"2026-11"_s, u"R8.11"_s, u"令和8年11月"_s, u"2026/11/21"_s}) {
        form.box.clear();
        typeText(&form.box, typed);
        QTest::keyClick(&form.box, Qt::Key_Return);
        EXPECT_EQ(form.box.text(), u"2026/11"_s) << typed.toStdString();
        EXPECT_EQ(form.box.date(), QDate(2026, 11, 1));
    }
    QTest::keyClick(&form.box, Qt::Key_Up);
    EXPECT_EQ(form.box.text(), u"2026/12"_s);
    form.box.setClock(theClock);
    form.box.setText(u"8/11"_s);
    EXPECT_EQ(form.box.date(), QDate(2026, 11, 1)) << "a year and a month here, a month and a day elsewhere";
}

namespace {

/// A grid of two date cells, the first one being edited.
struct DateGrid {
    DateGrid() {
        model.setItem(0, 0, new QStandardItem);
        model.setItem(1, 0, new QStandardItem);
        model.setData(cell(0), Day, Qt::EditRole);
        grid.setModel(&model);
        grid.setItemDelegate(&delegate);
        showActive(grid);
        grid.goTo(0, 0);
        grid.edit(cell(0));
    }
    QModelIndex cell(int row) const { return model.index(row, 0); }
    DateBox *box() const { return grid.findChild<DateBox *>(); }
    void pressEnter() {
        QTest::keyClick(box(), Qt::Key_Return);
        QCoreApplication::processEvents(); // the view takes the editor's value after the key
    }

    QStandardItemModel model;
    DateDelegate delegate;
    Grid grid;
};

} // namespace

TEST(DateDelegate, WritesDatesAndKeepsTheEditorOpenOnWrongInput) {
    DateGrid g;
    ASSERT_TRUE(g.box());
    EXPECT_EQ(g.box()->text(), u"2026/11/21"_s);
    g.box()->selectAll();
    typeText(g.box(), u"2026/13/01"_s);
    g.pressEnter();
    ASSERT_TRUE(g.box()) << "Enter left wrong input";
    EXPECT_EQ(g.box()->text(), u"2026/13/01"_s);
    g.delegate.setClock(theClock);
    g.box()->setClock(theClock);
    g.box()->selectAll();
    typeText(g.box(), u"17/4/1"_s);
    g.pressEnter();
    ASSERT_TRUE(g.box()) << "which of two days is still to be said";
    g.box()->selectAll();
    typeText(g.box(), u"1201"_s);
    g.pressEnter();
    EXPECT_EQ(g.cell(0).data(Qt::EditRole).toDate(), QDate(2026, 12, 1));
}

TEST(DateDelegate, TellsOfInputThatAClickElsewhereDropped) {
    DateGrid g;
    QSignalSpy rejected(&g.delegate, &DateDelegate::rejected);
    g.box()->selectAll();
    typeText(g.box(), u"あした"_s);
    QTest::mouseClick(g.grid.viewport(), Qt::LeftButton, {}, g.grid.visualRect(g.cell(1)).center());
    ASSERT_EQ(rejected.count(), 1);
    EXPECT_EQ(rejected.at(0).at(0).toString(), u"あした"_s);
    EXPECT_EQ(g.cell(0).data(Qt::EditRole).toDate(), Day);
}

TEST(DateDelegate, AnEmptiedBoxEmptiesTheCell) {
    DateGrid g;
    g.box()->clear();
    g.pressEnter();
    EXPECT_FALSE(g.cell(0).data(Qt::EditRole).toDate().isValid());
}
