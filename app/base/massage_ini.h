#pragma once

#include <QHash>
#include <QString>
#include <optional>

class Messages;

/// The lines of Massage.ini (code page 932; each split at its first "=", both sides trimmed of blanks). Not
/// the private-profile interface: no sections, no quotes, no length limit.
class MassageIni {
public:
    /// @param folder program folder in which Massage.ini lies
    explicit MassageIni(const QString &folder);

    /// Whether the file is there and can be read.
    bool isThere() const { return m_there; }
    /// Tells the user that there is none.
    void warnIfMissing(Messages &messages) const;

    /// The value of the key's first line, ASCII case ignored; nothing when the line is missing.
    std::optional<QString> value(QStringView key) const;

private:
    bool m_there = false;
    QHash<QString, QString> m_values;
};

/// Reads one line of Massage.ini.
/// @param fallback given back when the file or the line is missing
/// @param warn when given, a missing file or line is reported through it
QString readMassageIni(const QString &folder, const QString &key, const QString &fallback,
                       Messages *warn = nullptr);
