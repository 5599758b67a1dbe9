#pragma once

#include <QByteArray>

/// Widths and order of the list's columns from this user's last run; empty when there was none, and when the
/// list had other columns then. They are the user's own, not the practice's.
QByteArray keptColumns();
void keepColumns(const QByteArray &state);
