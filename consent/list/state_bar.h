#pragma once

#include "consent/list/list_states.h"

#include <QHash>
#include <QWidget>

class QAction;
class QLabel;
class QToolButton;

/// The line over the grid: a tab for each state with the number of its rows, a button for
/// each range, and a band that says that the
/// rows are not those that the filter asks for.
class StateBar : public QWidget {
    Q_OBJECT
public:
    explicit StateBar(QWidget *parent = nullptr);

    /// Puts a state's checkable action in as the next tab.
    void addState(RowState state, QAction *action);
    /// Puts a range's action in behind the tabs.
    void addRange(QAction *action);
    void showCounts(const StateCounts &counts, RowState chosen);
    /// Why the rows are not those asked for; empty: they are.
    void showStale(const QString &text);

private:
    QToolButton *addButton(QAction *action, QWidget *to);

    QWidget *m_tabs;
    QWidget *m_ranges;
    QHash<RowState, QToolButton *> m_states;
    QLabel *m_stale;
};
