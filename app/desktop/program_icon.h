#pragma once

#include <QString>

/// Gives a program's windows its picture, and tells the desktop by which entry of its menu they are known.
/// @param picture "douisho" or "viewer"
void showIcon(const QString &picture, const QString &desktopEntry);
