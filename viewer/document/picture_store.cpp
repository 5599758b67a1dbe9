#include "viewer/document/picture_store.h"

#include "viewer/document/document.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr qint64 largestPicture = 64 << 20; // bytes

} // namespace

QString picturePath(const QString &folder, const QString &name) {
    QString path = name;
    path.replace(u'\\', u'/');
    return QDir::cleanPath(QDir(folder).absoluteFilePath(path));
}

QByteArray pictureBytes(const Report &report, const QString &name) {
    const QString path = picturePath(report.folder, name);
    if (report.pictures)
        return report.pictures->value(path);
    QFile file(path);
    const bool readable = QFileInfo(path).isFile() && file.size() <= largestPicture;
    return readable && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
