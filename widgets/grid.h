#pragma once

#include <QTableView>

class GridHeader;

/// A table for keyboard work over a model of any size: one current cell, rows as high as the font asks,
/// alternate rows shaded, columns that can be moved and sorted. Tab leaves it. Where whole rows are selected,
/// Home and End go to the first and last row; elsewhere the row of the current cell is marked across. A text
/// that does not fit its cell is shown whole on hover.
class Grid : public QTableView {
    Q_OBJECT

public:
    explicit Grid(QWidget *parent = nullptr);

    /// Widens every visible column to its caption and to the first rows' contents, at most `widest`
    /// full-width characters.
    void fitColumns(int widest = 40);

    /// Width in pixels of `characters` full-width characters and a cell's margins.
    int widthOf(int characters) const;

    /// Column widths, order, hidden columns and sort as one value, for the next grid of the same columns.
    QByteArray layoutState() const;
    bool restoreLayout(const QByteArray &state);

    /// Keeps so many of the columns shown in sight at the left, however far the grid is scrolled; fewer where
    /// they would leave less than a third of the window to the others.
    void setFrozenColumns(int columns);

    /// Makes the cell current and visible; a row or column out of bounds is drawn inside, and in place of a
    /// hidden column goes the next one that is shown.
    void goTo(int row, int column);

    /// Writes an open editor's value into the model and closes it: commands by key leave it open.
    /// @return false when it holds text that is no date: it stays open
    bool commitEditor();

    bool isEditing() const { return state() == EditingState; }

    /// Type-ahead would walk through 100,000 rows; narrowing is the forms' business.
    void keyboardSearch(const QString &) override {}

    QRect visualRect(const QModelIndex &index) const override;
    QModelIndex indexAt(const QPoint &position) const override;
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;

protected:
    void dataChanged(const QModelIndex &first, const QModelIndex &last,
                     const QList<int> &roles = {}) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void paintEvent(QPaintEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    QRegion visualRegionForSelection(const QItemSelection &selection) const override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    int shownColumn(int column) const;
    void refreshFrozen();
    QRect frozenArea() const;
    void paintFrozen(QPainter &painter);
    void paintCell(QPainter &painter, const QModelIndex &index);
    void markRow(QPainter &painter);
    void sizeRows();
    bool showWholeText(const QHelpEvent &event);

    GridHeader *m_header;
};
