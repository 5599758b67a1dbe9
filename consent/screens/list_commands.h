#pragma once

#include <QString>
#include <span>

/// A command of the consent list, as its button and its menu entry show it.
struct ListCommand {
    enum Menu { Consent, Request, Print, Settings, Help, Leave };

    QString button; ///< objectName of the button; empty: menu only
    QString action; ///< objectName of the menu entry; empty: no entry of its own
    QString caption;
    QString key; ///< shortcut, portable text; may be empty
    QString hint;
    Menu menu;
    bool ready; ///< false: greyed, its screen is not built yet
    bool checkable = false;
};

/// All commands in the order of buttons and menus.
std::span<const ListCommand> listCommands();

/// Caption of a menu, with its mnemonic.
QString listMenuCaption(ListCommand::Menu menu);

/// What the list's marks mean and which keys it answers, for the user.
QString listHelp();
