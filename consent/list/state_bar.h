#pragma once

#include "consent/list/list_states.h"

#include <QHash>
#include <QWidget>

class QAction;
class QLabel;
class QLayout;

/// The line over the grid: a tab for each state with the number of its rows, and a band that says that the
/// rows are not those that the filter asks for.
class StateBar : public QWidget {
    Q_OBJECT
public:
    explicit StateBar(QWidget *parent = nullptr);

    /// Puts a state's checkable action in as the next tab.
    void addState(RowState state, QAction *action);
    void showCounts(const StateCounts &counts, RowState chosen);
    /// Why the rows are not those asked for; empty: they are.
    void showStale(const QString &text);

private:
    QLayout *m_tabs;
    QHash<RowState, QAction *> m_actions;
    QLabel *m_stale;
};
