#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

/// The bytes of one initialisation file, read and edited after the rules of the platform's private-profile
/// interface. Code page 932, or UTF-16LE or UTF-8 when the bytes begin with such a mark. Pure functions: an
/// edit gives the new bytes back and leaves every line but its own as it was.
namespace profile {

/// The whole file as text, without its mark.
QString decoded(const QByteArray &file);

/// The value of a key, stripped of blanks and one pair of quotes; nothing when section or key is missing.
std::optional<QString> value(const QByteArray &file, const QString &section, const QString &key);

/// The number at the front of a value, kept to 32 bits: 0 when there is none.
qint32 number(QStringView value);

struct Edited {
    QByteArray bytes;
    bool touched = false; ///< the file's encoding lacks a character, which was replaced
};

/// The file with the value in place of the old one, or with the key or section added.
Edited withValue(const QByteArray &file, const QString &section, const QString &key, const QString &value);

/// The file without the key's line; as it was when there is none.
QByteArray withoutKey(const QByteArray &file, const QString &section, const QString &key);

/// The file without the section's header and keys; comments and blank lines stay.
QByteArray withoutSection(const QByteArray &file, const QString &section);

} // namespace profile
