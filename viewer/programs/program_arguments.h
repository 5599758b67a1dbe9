#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>

/// The arguments of viewer and image builder: a file in front and values behind switches. A path with blanks
/// may come in pieces.
struct ProgramArguments {
    QString file;                    ///< before the first switch
    QHash<QString, QString> options; ///< by switch in lower case, with its slash

    QString option(const QString &name) const { return options.value(name); }
};

/// @param known switches, such as "/c"; their case is ignored
/// @return none when a switch stands twice or has nothing behind it
std::optional<ProgramArguments> parseArguments(const QStringList &arguments, const QStringList &known);
