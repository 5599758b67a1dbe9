#pragma once

#include <QString>

/// A message as labels show it: the CR LF of message texts and the lone CR of database errors become line
/// breaks, blank lines at both ends go.
QString displayedText(QString text);
