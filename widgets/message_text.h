#pragma once

#include <QString>

/// A message as labels show it: the CR LF of message texts and the lone CR of database errors become line
/// breaks, blank lines at both ends go.
QString displayedText(QString text);

/// A text too long for a message box: what the box shows at once, and the whole for where one can scroll.
struct LongText {
    QString shown;
    QString whole; ///< empty when the box shows everything
};

/// Parts a displayed text of more lines, or more characters, than a box can show on a small screen.
LongText partedText(const QString &displayed);
