#pragma once

#include "consent/screens/list_commands.h"

#include <QHash>
#include <QWidget>

class QAction;
class QLayout;
class QMenu;
class QMenuBar;

/// The list's commands as buttons and as a menu. A command is one action wherever it is shown, and is named
/// by its button, or by its menu entry where it has no button.
class ListCommandBar : public QWidget {
    Q_OBJECT
public:
    /// @param window whose keys the commands answer
    explicit ListCommandBar(QWidget *window);

    QMenuBar *menuBar() const { return m_menuBar; }
    QAction *action(const ListCommand &command) const { return m_actions.value(command.name()); }
    /// Greys what cannot be done in the view.
    void showView(bool newest);

Q_SIGNALS:
    void triggered(const ListCommand &command);

private:
    QAction *makeAction(const ListCommand &command, QWidget *window);
    void addButton(const ListCommand &command, QAction *action, QLayout *layout);

    QMenuBar *m_menuBar;
    QHash<int, QMenu *> m_menus;
    QHash<QString, QAction *> m_actions;
};
