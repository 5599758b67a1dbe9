#include "app/base/unsaved_file.h"

#include "app/base/file_write.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QUuid>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString ending = u".unsaved"_s;
const QByteArray firstLine = "douisho unsaved 1\n";

QByteArray sumOf(const QByteArray &content) {
    return QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex() + '\n';
}

QString ownPath(const QString &folder, const QString &name) {
    return folder + u'/' + name + u'-' + QUuid::createUuid().toString(QUuid::WithoutBraces) + ending;
}

/// A folder that nobody else may enter.
void makeFolder(const QString &folder) {
    if (!QFileInfo::exists(folder) && QDir().mkpath(folder))
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace

UnsavedFile::UnsavedFile(const QString &folder, const QString &name) : UnsavedFile(ownPath(folder, name)) {}

// A run that was killed leaves its lock: it is stale when the process has gone, however young it is.
UnsavedFile::UnsavedFile(const QString &path) : m_path(path), m_lock(path + u".lock"_s) {
    m_lock.setStaleLockTime(0);
}

std::vector<std::unique_ptr<UnsavedFile>> UnsavedFile::left(const QString &folder, const QString &name) {
    std::vector<std::unique_ptr<UnsavedFile>> files;
    const QDir there(folder);
    for (const QString &entry :
         there.entryList({name + u"-*"_s + ending}, QDir::Files, QDir::Time | QDir::Reversed)) {
        std::unique_ptr<UnsavedFile> file(new UnsavedFile(there.filePath(entry)));
        // Another start may have been quicker, and be done with it by now.
        if (file->m_lock.tryLock() && QFileInfo::exists(file->m_path))
            files.push_back(std::move(file));
    }
    return files;
}

Result<QByteArray> UnsavedFile::read() const {
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return Failure{file.errorString()};
    if (file.readLine() != firstLine)
        return Failure{u"このプログラムの控えではありません。"_s};
    const QByteArray sum = file.readLine();
    const QByteArray content = file.readAll();
    if (sum != sumOf(content))
        return Failure{u"内容が壊れています。"_s};
    return content;
}

Result<> UnsavedFile::write(const QByteArray &content) {
    makeFolder(QFileInfo(m_path).path());
    if (!m_lock.isLocked() && !m_lock.tryLock())
        return Failure{u"「%1」に書き込めません。"_s.arg(QDir::toNativeSeparators(m_path))};
    return writeFileWhole(m_path, firstLine + sumOf(content) + content, FileUse::Private);
}

void UnsavedFile::remove() {
    QFile::remove(m_path);
    m_lock.unlock();
}

QString UnsavedFile::setAside() {
    const QString aside = m_path + u".damaged"_s;
    QFile::rename(m_path, aside);
    m_lock.unlock();
    return aside;
}
