#pragma once

#include "app/base/settings.h"
#include "app/desktop/key_list.h"
#include "consent/rows/row_states.h"
#include "consent/rules/list_advisor.h"
#include "consent/screens/list_screens.h"

#include <span>
#include <variant>

class ListWork;
class frm同意書管理;

/// A switch: where it is kept, and which link option of the list it changes; none: it says where masters are
/// kept.
struct ListLink {
    Setting setting;
    bool LinkOptions::*flag;
};

/// A command of the consent list: how its button and its menu entry show it, when it can be used and what it
/// does.
struct ListCommand {
    enum Menu { Consent, View, Request, Print, Settings, Help, Leave };
    /// What must be there; a row that is missing is told, all else greys the command.
    enum Needs {
        Nothing,
        Row,
        NewestView, ///< of the history nothing is written from the list itself, asked for or printed
        NewestRow,
        Rows, ///< all rows shown or ticked, which must be those that the filter asks for
        NewestRows
    };
    using Work = void (frm同意書管理::*)();
    using OnList = void (ListWork::*)();

    QString button; ///< objectName of the button; empty: menu only
    QString action; ///< objectName of the menu entry; empty: no entry of its own
    QString caption;
    QString key; ///< shortcut, portable text; may be empty
    QString hint;
    Menu menu;
    Needs needs;
    std::variant<std::monostate, Work, OnList, OpenScreen, ListLink, RowState, QuickRange> does{};

    /// The button's name, or the menu entry's where there is no button.
    const QString &name() const { return button.isEmpty() ? action : button; }
    bool needsRow() const { return needs == Row || needs == NewestRow; }
    bool needsRows() const { return needs == Rows || needs == NewestRows; }
    bool isEnabled(bool newestView) const {
        return newestView || (needs != NewestView && needs != NewestRow && needs != NewestRows);
    }
    bool isCheckable() const {
        return std::holds_alternative<ListLink>(does) || std::holds_alternative<RowState>(does);
    }
};

/// All commands in the order of buttons and menus.
std::span<const ListCommand> listCommands();

/// Caption of a menu, with its mnemonic.
QString listMenuCaption(ListCommand::Menu menu);

/// The keys that the list's rows and cells answer.
QList<KeyLine> listGridKeys();

/// What the list's marks mean and which keys it answers, for the user.
QString listHelp();
