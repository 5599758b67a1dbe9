#include "consent/screens/list_command_bar.h"

#include "widgets/flow_layout.h"

#include <QAction>
#include <QMenuBar>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

ListCommandBar::ListCommandBar(QWidget *window) : QWidget(window), m_menuBar(new QMenuBar(window)) {
    for (int menu = ListCommand::Consent; menu <= ListCommand::Leave; ++menu) {
        m_menus[menu] = m_menuBar->addMenu(listMenuCaption(ListCommand::Menu(menu)));
        m_menus[menu]->setToolTipsVisible(true);
    }
    auto *layout = new FlowLayout(this, FlowLayout::Widths::Uniform);
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
    action->setEnabled(command.isEnabled(true));
    action->setCheckable(command.isCheckable());
    action->setToolTip(command.key.isEmpty() ? command.hint : command.hint + u"（%1）"_s.arg(command.key));
    window->addAction(action);
    m_menus[command.menu]->addAction(action);
    m_actions.insert(command.name(), action);
    connect(action, &QAction::triggered, this, [this, &command] { Q_EMIT triggered(command); });
    return action;
}

void ListCommandBar::addButton(const ListCommand &command, QAction *action, QLayout *layout) {
    // A key alone stands on the button; one with a modifier would make all of them wider.
    const bool plainKey = !command.key.isEmpty() && !command.key.contains(u'+');
    const QString caption = plainKey ? command.caption + u" "_s + command.key : command.caption;
    auto *button = new QPushButton(caption, this);
    button->setObjectName(command.button);
    button->setToolTip(action->toolTip());
    button->setEnabled(command.isEnabled(true));
    button->setAutoDefault(false);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QPushButton::clicked, action, &QAction::trigger);
    connect(action, &QAction::enabledChanged, button, &QPushButton::setEnabled);
    layout->addWidget(button);
}

void ListCommandBar::showView(bool newest) {
    for (const ListCommand &command : listCommands())
        action(command)->setEnabled(command.isEnabled(newest));
}
