#include "consent/entry/time_line_view.h"

#include "app/desktop/signal_colours.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QtMath>

using namespace Qt::Literals::StringLiterals;

namespace {} // namespace

TimeLineView::TimeLineView(QWidget *parent) : QWidget(parent) {
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void TimeLineView::setLine(const TimeLine &line, const QStringList &tips, const QDate &today) {
    m_line = line;
    m_tips = tips;
    m_today = today;
    QStringList said;
    for (const TimeLineLane &lane : m_line.lanes)
        said.append(coverText(lane, today));
    setAccessibleDescription(said.join(u"\n"_s));
    updateGeometry();
    update();
}

void TimeLineView::select(int row) {
    m_selected = row;
    update();
}

// The same height with one lane or two, so that the grid above does not jump from patient to patient.
QSize TimeLineView::sizeHint() const {
    return {lineHeight() * 30, 2 * (lineHeight() + barsHeight()) + lineHeight() * 2};
}

int TimeLineView::barsHeight() const {
    return lineHeight() * 3 / 2;
}

int TimeLineView::axisTop() const {
    return int(m_line.lanes.size()) * (lineHeight() + barsHeight());
}

std::vector<TimeLineView::Place> TimeLineView::places() const {
    std::vector<Place> places;
    int top = 0;
    for (const TimeLineLane &lane : m_line.lanes) {
        places.push_back({lane, top, top + lineHeight()});
        top += lineHeight() + barsHeight();
    }
    return places;
}

double TimeLineView::at(const QDate &day) const {
    const double days = double(m_line.shown.start.daysTo(m_line.shown.end)) + 1;
    return double(m_line.shown.start.daysTo(day)) / days * (width() - 1);
}

QRectF TimeLineView::barOf(const Place &place, const TimeLineSpan &span) const {
    const double high = double(barsHeight() - 4) / place.lane.tracks;
    return {at(span.period.start), place.bars + 2 + high * span.track,
            at(span.period.end.addDays(1)) - at(span.period.start), high};
}

QRectF TimeLineView::barOf(const Place &place, const Period &gap) const {
    return {at(gap.start), double(place.bars + 2), qMax(2.0, at(gap.end.addDays(1)) - at(gap.start)),
            double(barsHeight() - 4)};
}

const TimeLineSpan *TimeLineView::spanAt(const QPoint &point) const {
    for (const Place &place : places())
        for (const TimeLineSpan &span : place.lane.spans)
            if (barOf(place, span).contains(point))
                return &span;
    return nullptr;
}

QString TimeLineView::tipAt(const QPoint &point) const {
    if (const TimeLineSpan *span = spanAt(point))
        return m_tips.value(span->row);
    for (const Place &place : places())
        for (const Period &gap : place.lane.gaps)
            if (barOf(place, gap).adjusted(-2, 0, 2, 0).contains(point))
                return gapText(gap);
    return {};
}

bool TimeLineView::event(QEvent *event) {
    if (event->type() == QEvent::ToolTip) {
        const auto &help = *static_cast<QHelpEvent *>(event);
        QToolTip::showText(help.globalPos(), tipAt(help.pos()), this);
        return true;
    }
    return QWidget::event(event);
}

void TimeLineView::mousePressEvent(QMouseEvent *event) {
    if (const TimeLineSpan *span = spanAt(event->pos()))
        Q_EMIT chosen(span->row);
}

void TimeLineView::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    if (m_line.lanes.empty()) {
        painter.drawText(rect(), Qt::AlignCenter, u"要加療期間のある同意がありません。"_s);
        return;
    }
    paintAxis(painter);
    for (const Place &place : places())
        paintLane(painter, place);
    paintToday(painter);
}

void TimeLineView::paintLane(QPainter &painter, const Place &place) const {
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(QRect(0, place.caption, width(), lineHeight()), Qt::AlignVCenter | Qt::AlignLeft,
                     coverText(place.lane, m_today));
    for (const Period &gap : place.lane.gaps)
        painter.fillRect(barOf(place, gap), signalInk(Signal::Wrong, palette()));
    const QColor covered = palette().color(QPalette::Highlight);
    for (const TimeLineSpan &span : place.lane.spans) {
        const bool selected = span.row == m_selected;
        const QRectF bar = barOf(place, span).adjusted(0.5, 0.5, -0.5, -0.5);
        QColor fill = covered;
        fill.setAlpha(selected ? 230 : 90);
        painter.setPen(
            QPen(palette().color(selected ? QPalette::WindowText : QPalette::Mid), selected ? 2 : 1));
        painter.setBrush(span.covers ? QBrush(fill)
                                     : QBrush(palette().color(QPalette::Mid), Qt::BDiagPattern));
        painter.drawRect(bar);
    }
}

// Months between two marks of the axis, as few as there is room for their words.
int TimeLineView::axisStep() const {
    const double month = at(m_line.shown.start.addMonths(1)) - at(m_line.shown.start);
    const int number = fontMetrics().horizontalAdvance(u"00 "_s);
    for (const int step : {1, 3})
        if (month * step >= number)
            return step;
    const int year = fontMetrics().horizontalAdvance(u"0000年 "_s);
    return 12 * qMax(1, qCeil(year / (month * 12)));
}

void TimeLineView::paintAxis(QPainter &painter) const {
    const Period &shown = m_line.shown;
    const int step = axisStep();
    const int fromMark = (shown.start.year() * 12 + shown.start.month() - 1) % step;
    for (QDate mark = shown.start.addMonths((step - fromMark) % step); mark <= shown.end;
         mark = mark.addMonths(step))
        paintMark(painter, mark, step);
    const bool roomBeforeJanuary = shown.start.month() < 11 && shown.start.daysTo(shown.end) > 60;
    if (step < 12 && shown.start.month() > 1 && roomBeforeJanuary)
        paintYear(painter, shown.start);
}

void TimeLineView::paintMark(QPainter &painter, const QDate &mark, int step) const {
    const double x = at(mark);
    const int top = axisTop();
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(QPointF(x, top), QPointF(x, top + lineHeight()));
    for (const Place &place : places())
        painter.drawLine(QPointF(x, place.bars), QPointF(x, place.bars + barsHeight()));
    painter.setPen(palette().color(QPalette::WindowText));
    if (step < 12)
        painter.drawText(QPointF(x + 2, top + fontMetrics().ascent()), QString::number(mark.month()));
    if (mark.month() == 1)
        paintYear(painter, mark);
}

void TimeLineView::paintYear(QPainter &painter, const QDate &mark) const {
    painter.drawText(QPointF(at(mark) + 2, axisTop() + lineHeight() + fontMetrics().ascent()),
                     u"%1年"_s.arg(mark.year()));
}

void TimeLineView::paintToday(QPainter &painter) const {
    const double x = (at(m_today) + at(m_today.addDays(1))) / 2;
    painter.setPen(QPen(palette().color(QPalette::WindowText), 2));
    for (const Place &place : places())
        painter.drawLine(QPointF(x, place.bars - 2), QPointF(x, place.bars + barsHeight() + 2));
    painter.drawLine(QPointF(x, axisTop()), QPointF(x, axisTop() + lineHeight()));
    const QString word = u"本日"_s;
    const int wide = fontMetrics().horizontalAdvance(word);
    painter.drawText(QPointF(qBound(0.0, x - wide / 2.0, double(width() - wide)),
                             axisTop() + lineHeight() * 2 - fontMetrics().descent()),
                     word);
}
