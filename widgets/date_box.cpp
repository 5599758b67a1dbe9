#include "widgets/date_box.h"

#include "app/base/dates.h"

#include <QAction>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QStyle>
#include <QToolTip>

using namespace Qt::Literals::StringLiterals;

namespace {

// Of the eras. An earlier one is a slip of the keys, and the server's dates end not much further back.
constexpr int firstYear = 1868;

} // namespace

DateBox::DateBox(QWidget *parent)
    : QLineEdit(parent),
      m_mark(addAction(style()->standardIcon(QStyle::SP_MessageBoxWarning), TrailingPosition)) {
    m_mark->setVisible(false);
    setInputMethodHints(Qt::ImhPreferNumbers);
    connect(this, &QLineEdit::textChanged, this, &DateBox::readText);
}

void DateBox::setDate(const QDate &date) {
    setText(shown(date));
    announce();
}

bool DateBox::hasWrongInput() const {
    return !m_date.isValid() && !text().trimmed().isEmpty();
}

void DateBox::setUnit(Unit unit) {
    const QDate held = m_date;
    m_unit = unit;
    setDate(held);
}

bool DateBox::settle() {
    if (hasWrongInput()) {
        mark(true);
        QToolTip::showText(mapToGlobal(rect().bottomLeft()), toolTip(), this);
        Q_EMIT inputRejected(text());
        return false;
    }
    if (const QString wanted = shown(m_date); text() != wanted)
        setText(wanted);
    announce();
    return true;
}

QSize DateBox::sizeHint() const {
    const int surplus = QLineEdit::sizeHint().width() - 17 * fontMetrics().horizontalAdvance(u'x');
    const int icon = style()->pixelMetric(QStyle::PM_LineEditIconSize, nullptr, this);
    const int digits = fontMetrics().horizontalAdvance(m_unit == Unit::Day ? u"0000/00/00"_s : u"0000/00"_s);
    return {digits + icon + icon / 2 + qMax(surplus, fontMetrics().horizontalAdvance(u'国')),
            QLineEdit::sizeHint().height()};
}

void DateBox::keyPressEvent(QKeyEvent *event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && !settle()) {
        selectAll();
        return; // accepted: Enter does not leave wrong input
    }
    if (event->modifiers() == Qt::NoModifier && !isReadOnly()) {
        const bool ofDays = m_unit == Unit::Day;
        switch (event->key()) {
        case Qt::Key_Up:
            return step(ofDays ? 1 : 0, ofDays ? 0 : 1);
        case Qt::Key_Down:
            return step(ofDays ? -1 : 0, ofDays ? 0 : -1);
        case Qt::Key_PageUp:
            return step(0, 1);
        case Qt::Key_PageDown:
            return step(0, -1);
        default:
            break;
        }
    }
    QLineEdit::keyPressEvent(event);
}

void DateBox::focusOutEvent(QFocusEvent *event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        settle();
}

QDate DateBox::parse(const QString &text) const {
    const QString typed = text.trimmed();
    QDate day = dateFromInput(typed);
    if (day.year() < firstYear)
        day = {};
    if (m_unit == Unit::Day || typed.isEmpty())
        return day;
    if (day.isValid())
        return {day.year(), day.month(), 1};
    // A month is a date whose day was left out, in whichever of the notations.
    for (const QString &first : {u"/01"_s, u"-01"_s, u".01"_s, u"01"_s, u"01日"_s}) {
        if (const QDate month = dateFromInput(typed + first); month.isValid())
            return month;
    }
    return {};
}

QString DateBox::shown(const QDate &date) const {
    return m_unit == Unit::Day ? dateText(date) : dateText(date).left(7);
}

QString DateBox::explanation() const {
    if (hasWrongInput())
        return m_unit == Unit::Day ? u"日付として読めません。入力例：2026/11/21、20261121、R8.11.21"_s
                                   : u"年月として読めません。入力例：2026/11、202611、R8.11"_s;
    if (!m_date.isValid())
        return {};
    return m_unit == Unit::Day ? formatDate(m_date, u"ggge年m月d日") + u"（"_s + weekdayText(m_date) + u"）"_s
                               : formatDate(m_date, u"ggge年m月");
}

void DateBox::step(int days, int months) {
    QDate to = m_date.addDays(days).addMonths(months);
    if (text().trimmed().isEmpty())
        to = m_today;
    if (!to.isValid())
        return;
    setDate(m_unit == Unit::Day ? to : QDate(to.year(), to.month(), 1));
    selectAll();
}

void DateBox::readText() {
    m_date = parse(text());
    mark(false);
}

void DateBox::mark(bool wrong) {
    m_mark->setVisible(wrong);
    if (font().italic() != wrong) {
        QFont marked = font();
        marked.setItalic(wrong);
        setFont(marked);
    }
    // The era of a date takes the calendar; it is looked up when somebody asks.
    setToolTip(wrong ? explanation() : QString());
    m_mark->setToolTip(toolTip());
    setAccessibleDescription(toolTip());
}

bool DateBox::event(QEvent *event) {
    if (event->type() == QEvent::ToolTip)
        setToolTip(explanation());
    return QLineEdit::event(event);
}

void DateBox::announce() {
    if (m_announced == m_date)
        return;
    m_announced = m_date;
    Q_EMIT dateChanged(m_date);
}
