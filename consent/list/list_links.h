#pragma once

#include "app/base/settings.h"
#include "consent/rules/list_advisor.h"

#include <span>

/// A link option of the list: its menu entry, where it is kept and what it changes.
struct ListLink {
    QString command;
    Setting setting;
    bool LinkOptions::*flag;
};

std::span<const ListLink> listLinks();

/// Stores the option of a menu entry and, once that is done, lets it hold.
/// @param reason filled when it cannot be stored; nothing changes then
bool switchLink(const QString &command, bool on, LinkOptions &links, const Folders &folders, QString *reason);
