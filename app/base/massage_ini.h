#pragma once

#include <QString>

class Messages;

/// Reads one line of Massage.ini (code page 932; each line split at its first "=", both sides trimmed of
/// blanks). Not the private-profile interface: no sections, no quotes, no length limit.
/// @param folder program folder in which Massage.ini lies
/// @param fallback given back when the file or the line is missing
/// @param warn when given, a missing file or line is reported through it
QString readMassageIni(const QString &folder, const QString &key, const QString &fallback,
                       Messages *warn = nullptr);
