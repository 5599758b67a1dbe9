#pragma once

#include <QByteArray>
#include <QString>

/// Writes a file whole beside its place and moves it over, so that a crash leaves the old or the new file,
/// never half of one. Keeps the permissions of an existing file.
/// @param reason filled with a sentence for the user that names the file, when it fails
bool writeFileWhole(const QString &path, const QByteArray &bytes, QString *reason);

/// Writes a file in its place. For a batch's many files, which nobody reads before all are written and which
/// the next batch writes anew: making a file beside and waiting for the disk take a hundred times as long.
bool writeFileInPlace(const QString &path, const QByteArray &bytes, QString *reason);

/// One of the two.
using WriteFile = bool (*)(const QString &path, const QByteArray &bytes, QString *reason);
