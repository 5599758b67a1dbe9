#pragma once

#include <QSettings>
#include <QString>
#include <QStringView>

/// What the systems' desktops do differently.
namespace platform {

/// The computer's name as the system gives it to programs that have 15 characters for it.
QString computerName();

/// Whether windows would be seen by somebody.
bool hasDisplay();

/// Lets a program that has no console of its own speak to the one that it was started from.
void useCallersConsole();

/// Whether the desktop knows a program for PDF files. What opens a file tells nothing of it.
bool opensPdf();

/// The name of the program that shows a folder that it is given.
QString folderProgram();

/// What this user keeps for the next run, under a name: "windows", "viewer".
QSettings userSettings(const QString &name);

} // namespace platform
