#pragma once

#include <QByteArray>
#include <QString>

/// Writes a file whole beside its place and moves it over, so that a crash leaves the old or the new file,
/// never half of one. Keeps the permissions of an existing file.
/// @param reason filled with a sentence for the user that names the file, when it fails
bool writeFileWhole(const QString &path, const QByteArray &bytes, QString *reason);
