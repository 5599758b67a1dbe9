#pragma once

#include <QDate>
#include <QLineEdit>
#include <QPointer>

class Clock;
class DateHint;
class QAction;

/// Entry of a date by keyboard, in full or short as daysFromInput reads it, shown as yyyy/mm/dd with the day
/// of the week behind it and the era on hover. While it is typed a line under the box says what it means;
/// where it means two days, Up and Down mark one of them and Enter takes it. Otherwise Up and Down step a
/// day, PageUp and PageDown a month. The box may be empty. Text that is no date is kept, marked by an icon
/// and explained. Fit as an item delegate's editor.
class DateBox : public QLineEdit {
    Q_OBJECT
    Q_PROPERTY(QDate date READ date WRITE setDate NOTIFY dateChanged USER true)

public:
    /// A box of months shows yyyy/mm, steps months and holds the month's first day.
    enum class Unit { Day, Month };

    explicit DateBox(QWidget *parent = nullptr);
    ~DateBox() override;

    /// What the text says now, also while it is being typed; invalid when it is empty or no date.
    QDate date() const { return m_date; }
    void setDate(const QDate &date);

    /// The box holds text that is no date, or may mean two.
    bool hasWrongInput() const;
    /// Nothing is being typed: the box shows its date as it is written in full, or is empty.
    bool isSettled() const { return !hasWrongInput() && text() == shown(m_date); }

    void setUnit(Unit unit);
    /// Tells the day where short dates are read and Up and Down begin in an empty box; without it only dates
    /// in full are read.
    void setClock(const Clock &clock) { m_clock = &clock; }

    /// Takes the typed text as it stands, as Enter does: rewrites a date as yyyy/mm/dd, marks text that is
    /// none, asks which of two days is meant.
    /// @return false for wrong input and while that is asked
    bool settle();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    /// The date became another one: after Enter, on leaving the box, by a step or by setDate; not while
    /// typing.
    void dateChanged(const QDate &date);
    /// The box was left, or Enter pressed, with text that is no date.
    void inputRejected(const QString &text);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QDate today() const;
    QList<QDate> parse(const QString &text) const;
    QString shown(const QDate &date) const;
    QString meaning(const QDate &date) const;
    QString explanation() const;
    QString weekday() const;
    void step(int days, int months);
    void choose(int reading);
    void hint();
    void readText();
    void mark(bool wrong);
    void announce();

    Unit m_unit = Unit::Day;
    QList<QDate> m_readings; ///< what the text can mean
    QDate m_date;
    QDate m_announced;
    const Clock *m_clock = nullptr;
    QAction *m_mark;
    QPointer<DateHint> m_hint;
};

/// How days can be typed, for messages about one that cannot be read or may mean two.
QString dayExamples();

/// Gives all date boxes of a form the clock.
void setClock(const QWidget &form, const Clock &clock);
