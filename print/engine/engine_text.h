#pragma once

#include <QString>

/// A text as it may stand between the double quotes of a data or command file, which know no escape: a double
/// quote becomes ＂, a line break or another control character a blank (CR LF one blank).
QString engineText(const QString &text);
