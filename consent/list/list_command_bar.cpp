#include "consent/list/list_command_bar.h"

#include <QAction>
#include <QGridLayout>
#include <QMenuBar>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

ListCommandBar::ListCommandBar(QWidget *window) : QWidget(window), m_menuBar(new QMenuBar(window)) {
    for (int menu = ListCommand::Consent; menu <= ListCommand::Leave; ++menu) {
        m_menus[menu] = m_menuBar->addMenu(listMenuCaption(ListCommand::Menu(menu)));
        m_menus[menu]->setToolTipsVisible(true);
    }
    auto *layout = new QGridLayout(this);
    layout->setContentsMargins({});
    for (const ListCommand &command : listCommands()) {
        QAction *action = makeAction(command, window);
        if (!command.button.isEmpty())
            addButton(command, action, layout);
    }
}

QAction *ListCommandBar::makeAction(const ListCommand &command, QWidget *window) {
    auto *action = new QAction(command.caption, window);
    action->setObjectName(command.action.isEmpty() ? command.button + u"_action"_s : command.action);
    action->setShortcut(QKeySequence(command.key));
    action->setEnabled(command.ready);
    action->setCheckable(command.checkable);
    action->setToolTip(command.hint);
    window->addAction(action);
    m_menus[command.menu]->addAction(action);
    const QString id = command.button.isEmpty() ? command.action : command.button;
    m_actions.insert(id, action);
    connect(action, &QAction::triggered, this, [this, id] { Q_EMIT triggered(id); });
    return action;
}

void ListCommandBar::addButton(const ListCommand &command, QAction *action, QGridLayout *layout) {
    constexpr int inRow = 12;
    const QString caption = command.key.isEmpty() ? command.caption : command.caption + u" "_s + command.key;
    auto *button = new QPushButton(caption, this);
    button->setObjectName(command.button);
    button->setToolTip(command.hint);
    button->setEnabled(command.ready);
    button->setAutoDefault(false);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QPushButton::clicked, action, &QAction::trigger);
    connect(action, &QAction::enabledChanged, button, &QPushButton::setEnabled);
    const int placed = layout->count();
    layout->addWidget(button, placed / inRow, placed % inRow);
}
