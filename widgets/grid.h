#pragma once

#include <QTableView>

/// A table for keyboard work over a model of any size: one current cell, rows as high as the font asks,
/// alternate rows shaded, columns that can be moved and sorted. Tab leaves it. Where whole rows are selected,
/// Home and End go to the first and last row. A text that does not fit its cell is shown whole on hover.
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

    /// Makes the cell current and visible; a row or column out of bounds is drawn inside.
    void goTo(int row, int column);

    /// Writes an open editor's value into the model and closes it: commands by key leave it open.
    /// @return false when it holds text that is no date: it stays open
    bool commitEditor();

    /// Type-ahead would walk through 100,000 rows; narrowing is the forms' business.
    void keyboardSearch(const QString &) override {}

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    void sizeRows();
    bool showWholeText(const QHelpEvent &event);
};
