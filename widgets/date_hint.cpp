#include "widgets/date_hint.h"

#include <QToolTip>

DateHint::DateHint(QWidget &box) : QListWidget(box.window()), m_box(box) {
    hide();
    setObjectName(QStringLiteral("lstDateHint"));
    setAccessibleName(QStringLiteral("入力した日付の意味"));
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFont(box.font());
    QPalette tip = QToolTip::palette();
    tip.setColor(QPalette::Base, tip.color(QPalette::ToolTipBase));
    tip.setColor(QPalette::Text, tip.color(QPalette::ToolTipText));
    setPalette(tip);
}

void DateHint::say(const QStringList &lines) {
    clear();
    if (lines.isEmpty())
        return hide();
    addItems(lines);
    place();
    show();
    raise();
}

// Under the box, over it where the window ends.
void DateHint::place() {
    const int frame = 2 * frameWidth();
    resize(sizeHintForColumn(0) + frame + fontMetrics().horizontalAdvance(u'国'),
           sizeHintForRow(0) * count() + frame);
    QPoint at = m_box.mapTo(window(), QPoint(0, m_box.height()));
    if (at.y() + height() > window()->height())
        at.ry() -= m_box.height() + height();
    at.setX(qMax(0, qMin(at.x(), window()->width() - width())));
    move(at);
}
