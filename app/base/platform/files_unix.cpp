#include "app/base/platform/files.h"

#include <QDir>
#include <QStorageInfo>
#include <cerrno>
#include <filesystem>
#include <sys/file.h>
#include <unistd.h>

namespace platform {

namespace {

/// Pipes, some network drives.
bool cannotTell(int error) {
    return error == EINVAL || error == ENOSYS || error == ENOTSUP;
}

} // namespace

QString syncToDisk(QFile &file) {
    return fsync(file.handle()) == 0 || cannotTell(errno) ? QString() : qt_error_string(errno);
}

void claim(QFile &file) {
    flock(file.handle(), LOCK_EX | LOCK_NB);
}

Claimed claimOf(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
        return Claimed::Unknown;
    if (flock(file.handle(), LOCK_EX | LOCK_NB) == 0)
        return Claimed::No;
    return errno == EWOULDBLOCK ? Claimed::Yes : Claimed::Unknown;
}

bool openOwn(QFile &file, QIODevice::OpenMode mode) {
    return file.open(mode, QFile::ReadOwner | QFile::WriteOwner);
}

bool makeOwnFolder(const QString &path) {
    return QDir().mkdir(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

bool removeFile(const QString &path) {
    return QFile::remove(path) || !QFile::exists(path);
}

QString moveOver(QFile &file, const QString &place) {
    std::error_code error;
    std::filesystem::rename(file.fileName().toStdU16String(), place.toStdU16String(), error);
    return error ? qt_error_string(error.value()) : QString();
}

/// Bits are asked for, not access: an administrator may write into a read-only folder, and should not.
bool isReadOnlyFolder(const QFileInfo &folder) {
    return !(folder.permissions() & (QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther));
}

QString programFile(const QString &program) {
    return program;
}

bool placeProgram(const QString &file, const QString &place) {
    QFile::remove(place);
    return QFileInfo::exists(file) && QFile::link(file, place);
}

bool isOnNetworkDrive(const QString &path) {
    return isNetworkFileSystem(QStorageInfo(path).fileSystemType());
}

} // namespace platform
