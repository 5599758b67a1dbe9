#pragma once

#include <QDate>
#include <QLineEdit>

class QAction;

/// Entry of a date by keyboard: 2026/11/21, 20261121, R8.11.21 or 令和8年11月21日, shown as yyyy/mm/dd with
/// the day of the week and the era on hover. Up and Down step a day, PageUp and PageDown a month. The box may
/// be empty. Text that is no date is kept, marked by an icon and explained. Fit as an item delegate's editor.
class DateBox : public QLineEdit {
    Q_OBJECT
    Q_PROPERTY(QDate date READ date WRITE setDate NOTIFY dateChanged USER true)

public:
    /// A box of months shows yyyy/mm, steps months and holds the month's first day.
    enum class Unit { Day, Month };

    explicit DateBox(QWidget *parent = nullptr);

    /// What the text says now, also while it is being typed; invalid when it is empty or no date.
    QDate date() const { return m_date; }
    void setDate(const QDate &date);

    /// The box holds text that is no date.
    bool hasWrongInput() const;

    void setUnit(Unit unit);
    /// Where Up and Down begin in an empty box; without it they leave it empty.
    void setToday(const QDate &today) { m_today = today; }

    /// Takes the typed text as it stands, as Enter does: rewrites a date as yyyy/mm/dd, marks text that is
    /// none.
    /// @return false for wrong input
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
    void focusOutEvent(QFocusEvent *event) override;

private:
    QDate parse(const QString &text) const;
    QString shown(const QDate &date) const;
    QString explanation() const;
    void step(int days, int months);
    void readText();
    void mark(bool wrong);
    void announce();

    Unit m_unit = Unit::Day;
    QDate m_date;
    QDate m_announced;
    QDate m_today;
    QAction *m_mark;
};
