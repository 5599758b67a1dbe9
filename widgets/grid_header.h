#pragma once

#include <QHeaderView>

/// A grid's header. The columns frozen at the left stay in sight however far the grid is scrolled; the mouse
/// works on what is seen.
class GridHeader : public QHeaderView {
public:
    explicit GridHeader(QWidget *parent);

    void setFrozen(int columns);
    /// How many shown columns from the left stay; fewer than asked for where they would take too much of the
    /// window.
    int frozen() const;
    /// Width of those columns, pixels.
    int frozenWidth() const { return widthOf(frozen()); }
    bool isFrozen(int column) const;
    /// They lie over other columns: the grid is scrolled.
    bool covers() const { return offset() > 0 && frozenWidth() > 0; }

    QSize sizeHint() const override;

protected:
    /// Captions are measured in the font that they are shown in. The base class allows for the bold face that
    /// it gives to the current section; to load that face is a good part of showing the first window.
    QSize sectionSizeFromContents(int section) const override;
    void paintEvent(QPaintEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    int widthOf(int columns) const;
    int offsetAt(const QPointF &position) const;
    bool passOn(QMouseEvent &event);

    int m_frozen = 0;
    bool m_heldFrozen = false; ///< the mouse was pressed on a frozen section
};
