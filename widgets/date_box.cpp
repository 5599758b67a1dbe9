#include "widgets/date_box.h"

#include "app/base/clock.h"
#include "app/base/dates.h"
#include "app/base/typed_dates.h"
#include "widgets/date_hint.h"

#include <QAction>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>
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

// The window may have taken it along.
DateBox::~DateBox() {
    delete m_hint;
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
    const bool several = m_readings.size() > 1;
    if (const int marked = m_hint && several ? m_hint->currentRow() : -1; marked >= 0) {
        setText(shown(m_readings[marked]));
    } else if (several && hasFocus()) {
        hint();
        choose(0);
        return false;
    }
    if (m_hint)
        m_hint->say({});
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
    const int behind = qMax(icon + icon / 2, fontMetrics().horizontalAdvance(u"(国) "_s));
    return {digits + behind + qMax(surplus, fontMetrics().horizontalAdvance(u'国')),
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

// The question that was left open.
void DateBox::focusInEvent(QFocusEvent *event) {
    QLineEdit::focusInEvent(event);
    if (m_readings.size() > 1)
        hint();
}

void DateBox::focusOutEvent(QFocusEvent *event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason)
        return;
    settle();
    if (m_hint)
        m_hint->say({});
}

void DateBox::paintEvent(QPaintEvent *event) {
    QLineEdit::paintEvent(event);
    if (weekday().isEmpty())
        return;
    QStyleOptionFrame option;
    initStyleOption(&option);
    const QRect place = style()->subElementRect(QStyle::SE_LineEditContents, &option, this);
    constexpr int margin = 2; // the base class leaves it on either side of its text
    const int behind = place.left() + margin + fontMetrics().horizontalAdvance(text() + u' ');
    if (behind + fontMetrics().horizontalAdvance(weekday()) > place.right())
        return;
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(place.adjusted(behind - place.left(), 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     weekday());
}

QDate DateBox::today() const {
    return m_clock ? m_clock->today() : QDate();
}

QList<QDate> DateBox::parse(const QString &text) const {
    QList<QDate> readings =
        m_unit == Unit::Day ? daysFromInput(text, today()) : monthsFromInput(text, today());
    readings.removeIf([](const QDate &day) { return day.year() < firstYear; });
    return readings;
}

QString DateBox::shown(const QDate &date) const {
    return m_unit == Unit::Day ? dateText(date) : dateText(date).left(7);
}

QString DateBox::meaning(const QDate &date) const {
    return m_unit == Unit::Day ? formatDate(date, u"ggge年m月d日") + u"（"_s + weekdayText(date) + u"）"_s
                               : formatDate(date, u"ggge年m月");
}

QString DateBox::explanation() const {
    if (m_readings.size() > 1)
        return u"2とおりに読めます。↑↓ で選んで Enter を押すか、年を 4桁で入力してください"_s;
    if (hasWrongInput())
        return m_unit == Unit::Day ? u"日付として読めません。入力例："_s + dayExamples() + u"、今日、+6m"_s
                                   : u"年月として読めません。入力例：11、8/11、2026/11、202611、R8.11"_s;
    return m_date.isValid() ? meaning(m_date) : QString();
}

// Of a date that stands; what is being typed has its line under the box.
QString DateBox::weekday() const {
    return m_unit == Unit::Day && m_date.isValid() && text() == shown(m_date)
               ? u"("_s + weekdayText(m_date) + u")"_s
               : QString();
}

void DateBox::step(int days, int months) {
    if (m_readings.size() > 1)
        return choose(m_hint && m_hint->currentRow() >= 0 ? m_hint->currentRow() - days - months : 0);
    QDate to = m_date.addDays(days).addMonths(months);
    if (text().trimmed().isEmpty())
        to = today();
    if (!to.isValid())
        return;
    setDate(m_unit == Unit::Day ? to : QDate(to.year(), to.month(), 1));
    selectAll();
}

void DateBox::choose(int reading) {
    hint();
    m_hint->setCurrentRow(qBound(0, reading, int(m_readings.size()) - 1));
}

void DateBox::hint() {
    QStringList lines;
    for (const QDate &reading : m_readings)
        if (m_readings.size() > 1 || shown(reading) != text())
            lines.append(shown(reading) + u"　"_s + meaning(reading));
    if (!m_hint && !lines.isEmpty()) {
        m_hint = new DateHint(*this);
        connect(m_hint, &QListWidget::itemClicked, this, &DateBox::settle);
    }
    if (m_hint)
        m_hint->say(lines);
}

void DateBox::readText() {
    m_readings = parse(text());
    m_date = m_readings.size() == 1 ? m_readings.first() : QDate();
    mark(false);
    if (isModified() && hasFocus())
        hint();
    else if (m_hint)
        m_hint->say({});
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
    setAccessibleDescription(wrong ? toolTip() : weekday());
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

QString dayExamples() {
    return u"1121、8/11/21、2026/11/21、R8.11.21"_s;
}

void setClock(const QWidget &form, const Clock &clock) {
    for (DateBox *box : form.findChildren<DateBox *>())
        box->setClock(clock);
}
