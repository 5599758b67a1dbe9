#include "widgets/grid.h"

#include "tests/support/test_environment.h"
#include "tests/widgets/form_keys.h"
#include "widgets/tick_delegate.h"

#include <QHeaderView>
#include <QStandardItemModel>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Ticks in the first column, the second of them locked; texts in the others.
struct TickGrid {
    TickGrid() : model(40, 3), delegate(picture(Qt::red), picture(Qt::blue)) {
        for (int row = 0; row < model.rowCount(); ++row) {
            auto *tick = new QStandardItem;
            tick->setCheckable(row != 1);
            tick->setEditable(false);
            if (row == 1)
                tick->setData(Qt::Unchecked, Qt::CheckStateRole);
            model.setItem(row, 0, tick);
            model.setItem(row, 1, new QStandardItem(u"利用者 %1"_s.arg(row)));
        }
        grid.setModel(&model);
        grid.setItemDelegateForColumn(0, &delegate);
        grid.resize(600, 300);
        showActive(grid);
        grid.goTo(0, 0);
    }
    static QPixmap picture(Qt::GlobalColor colour) {
        QPixmap pixmap(4, 4);
        pixmap.fill(colour);
        return pixmap;
    }
    Qt::CheckState tick(int row) const {
        return model.index(row, 0).data(Qt::CheckStateRole).value<Qt::CheckState>();
    }
    void click(int row) {
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(model.index(row, 0)).center());
    }
    QColor middle(int row) {
        return grid.viewport()->grab().toImage().pixelColor(grid.visualRect(model.index(row, 0)).center());
    }

    QStandardItemModel model;
    TickDelegate delegate;
    Grid grid;
};

} // namespace

TEST(TickDelegate, TogglesByClickAndSpaceAndShowsItsPictures) {
    TickGrid g;
    EXPECT_GT(g.middle(0).red(), 200);
    g.click(0);
    EXPECT_EQ(g.tick(0), Qt::Checked);
    EXPECT_GT(g.middle(0).blue(), 200);
    QTest::keyClick(&g.grid, Qt::Key_Space);
    EXPECT_EQ(g.tick(0), Qt::Unchecked);
    QTest::keyClick(&g.grid, Qt::Key_Down);
    QTest::keyClick(&g.grid, Qt::Key_Space);
    g.click(1);
    EXPECT_EQ(g.tick(1), Qt::Unchecked) << "a cell that may not be ticked";
    QTest::keyClick(&g.grid, Qt::Key_A);
    EXPECT_EQ(g.tick(1), Qt::Unchecked);
}

TEST(Grid, HomeAndEndGoToTheFirstAndLastRowWhereRowsAreSelected) {
    TickGrid g;
    QTest::keyClick(&g.grid, Qt::Key_End);
    EXPECT_EQ(g.grid.currentIndex().row(), 0) << "cells: the last column";
    g.grid.setSelectionBehavior(QAbstractItemView::SelectRows);
    QTest::keyClick(&g.grid, Qt::Key_End);
    EXPECT_EQ(g.grid.currentIndex().row(), 39);
    QTest::keyClick(&g.grid, Qt::Key_Home);
    EXPECT_EQ(g.grid.currentIndex().row(), 0);
    QTest::keyClick(&g.grid, Qt::Key_PageDown);
    EXPECT_GT(g.grid.currentIndex().row(), 3);
}

TEST(Grid, LayoutOutlivesTheGrid) {
    TickGrid first;
    first.grid.setSortingEnabled(true);
    first.grid.setColumnWidth(1, 123);
    first.grid.horizontalHeader()->moveSection(2, 0);
    first.grid.sortByColumn(1, Qt::DescendingOrder);
    TickGrid second;
    second.grid.setSortingEnabled(true);
    ASSERT_TRUE(second.grid.restoreLayout(first.grid.layoutState()));
    EXPECT_EQ(second.grid.columnWidth(1), 123);
    EXPECT_EQ(second.grid.horizontalHeader()->visualIndex(2), 0);
    EXPECT_EQ(second.grid.horizontalHeader()->sortIndicatorSection(), 1);
    EXPECT_EQ(second.model.item(0, 1)->text(), u"利用者 9"_s) << "sorted, not only marked as sorted";
}
