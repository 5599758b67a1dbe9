#pragma once

#include <QString>
#include <QStringList>

struct Environment;

/// Starts another program of the suite, which lies in the program folder, in that folder and without waiting
/// for it. When it is missing or cannot be started the user is told.
/// @param fileName e.g. "Main.exe"
bool startSibling(Environment &environment, const QString &fileName, const QStringList &arguments = {});
