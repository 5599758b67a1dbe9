#include "app/base/folders.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace {

QString withSlashes(QString path) {
    return path.replace(u'\\', u'/');
}

/// The entry's name as the folder spells it; the given one when there is none.
QString spelledIn(const QString &folder, const QString &name) {
    const QDir directory(folder);
    if (name == u"." || name == u".." || QFileInfo::exists(directory.filePath(name)))
        return name;
    const QStringList entries = directory.entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString &entry : entries)
        if (entry.compare(name, Qt::CaseInsensitive) == 0)
            return entry;
    return name;
}

} // namespace

Folders::Folders(const QString &program)
    : m_program(QDir::cleanPath(QDir(withSlashes(program)).absolutePath())), m_settings(m_program) {}

QString Folders::programFolderOfThisRun() {
    const QString folder = qEnvironmentVariable("DOUISHO_FOLDER");
    if (!folder.isEmpty())
        return folder;
    const QString own = QCoreApplication::applicationDirPath();
    if (own != QStringLiteral(DOUISHO_INSTALLED_IN))
        return own;
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/douisho"_s;
}

QString Folders::systemFolder(QStringView key) const {
    const QString value = withSlashes(m_settings.value(key).value_or(QString()));
    return QDir::isAbsolutePath(value) ? QDir::cleanPath(value) : file(m_program, value);
}

QString Folders::file(const QString &folder, const QString &name) {
    QString path = folder;
    for (const QString &part : withSlashes(name).split(u'/', Qt::SkipEmptyParts)) {
        const QString spelled = spelledIn(path, part);
        if (!path.endsWith(u'/'))
            path += u'/';
        path += spelled;
    }
    return QDir::cleanPath(path);
}
