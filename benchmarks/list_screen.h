#pragma once

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/messages.h"
#include "app/base/processes.h"
#include "consent/rows/list_columns.h"
#include "consent/screens/consent_list_form.h"

#include <QObject>
#include <functional>
#include <vector>

class ListGrid;

/// The consent list's real form, worked by keys and mouse. Every operation gives the milliseconds from the
/// stroke until the grid has been painted again.
class ListScreen : public QObject {
public:
    /// @param folder program folder of an installation
    ListScreen(const QString &folder, const QDate &today, const Branch &branch, cT_ADODB &db);

    int rowCount() const;

    /// Types the range and presses F4.
    double search(const QDate &from, const QDate &to);
    /// One page down after the other, from the first row to the last: the milliseconds of each.
    std::vector<double> pageDown();
    /// Ctrl+End from the first row.
    double jumpToEnd();
    /// A click on the column's header.
    double clickHeader(ListColumn column);
    /// Types a text to narrow by kana and takes it back: the milliseconds of each stroke.
    std::vector<double> narrowByKana(const QString &text);
    /// F7 on all rows: ticks them, or clears them.
    double tickAll();
    /// Ctrl+Z, or Ctrl+Y.
    double undo(bool back = true);

    /// Waits until nothing is left to be done or painted.
    void settle();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// A message box would stand in the way of every figure.
    class NoMessages : public Messages {
    public:
        Answer show(const Message &message) override;
    };
    class FixedClock : public Clock {
    public:
        explicit FixedClock(const QDate &today) : m_now(today, QTime(9, 0)) {}
        QDateTime now() const override { return m_now; }

    private:
        QDateTime m_now;
    };

    double untilPainted(const std::function<void()> &stroke);

    Folders m_folders;
    FixedClock m_clock;
    NoMessages m_messages;
    SystemProcesses m_processes;
    Environment m_environment;
    frm同意書管理 m_form;
    ListGrid *m_grid = nullptr;
    bool m_painted = false;
};
