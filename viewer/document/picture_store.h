#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

struct Report;

/// Pictures that travel inside a finished document, by their full path.
using PictureStore = QHash<QString, QByteArray>;

/// Full path of a picture as a layout or the data name it: backslashes separate folders, a relative name
/// counts from `folder`.
QString picturePath(const QString &folder, const QString &name);

/// The picture's bytes, from the finished document that carries it, else from its file; empty when there is
/// none, or more than 64 MB of it.
QByteArray pictureBytes(const Report &report, const QString &name);
