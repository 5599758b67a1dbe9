#pragma once

#include "consent/entry/time_line.h"

#include <QStringList>
#include <QWidget>

/// Paints a patient's time line: a lane a kind with its periods, the gaps in red, today as a line. Hovering
/// tells what a period or gap is; a click chooses the row of a period.
class TimeLineView : public QWidget {
    Q_OBJECT

public:
    explicit TimeLineView(QWidget *parent = nullptr);

    /// @param tips what each row says on hover, by row
    void setLine(const TimeLine &line, const QStringList &tips, const QDate &today);
    /// Marks the span of a row; −1 for none.
    void select(int row);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    void chosen(int row);

protected:
    bool event(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    struct Place {
        const TimeLineLane &lane;
        int caption; ///< top of the lane's words
        int bars;    ///< top of its bars
    };
    std::vector<Place> places() const;
    int lineHeight() const { return fontMetrics().height(); }
    int barsHeight() const;
    int axisTop() const;

    double at(const QDate &day) const;
    QRectF barOf(const Place &place, const TimeLineSpan &span) const;
    QRectF barOf(const Place &place, const Period &gap) const;
    const TimeLineSpan *spanAt(const QPoint &point) const;
    QString tipAt(const QPoint &point) const;

    void paintLane(QPainter &painter, const Place &place) const;
    int axisStep() const;
    void paintAxis(QPainter &painter) const;
    void paintMark(QPainter &painter, const QDate &mark, int step) const;
    void paintYear(QPainter &painter, const QDate &mark) const;
    void paintToday(QPainter &painter) const;

    TimeLine m_line;
    QStringList m_tips;
    QDate m_today;
    int m_selected = -1;
};
