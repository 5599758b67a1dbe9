#include "app/base/platform/files.h"

#include <QStorageInfo>
#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>

#ifdef Q_OS_UNIX
#include <sys/file.h>
#include <unistd.h>
#else
#include <io.h>
#include <windows.h>
#endif

namespace platform {

namespace {

/// Pipes, some network drives.
bool cannotTell(int error) {
    return error == EINVAL || error == ENOSYS || error == ENOTSUP;
}

std::filesystem::path pathOf(const QString &path) {
    return {path.toStdU16String()};
}

} // namespace

bool syncToDisk(QFile &file) {
#ifdef Q_OS_UNIX
    return fsync(file.handle()) == 0 || cannotTell(errno);
#else
    return _commit(file.handle()) == 0 || cannotTell(errno);
#endif
}

#ifdef Q_OS_UNIX

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

#else

// A file that is open cannot be removed there.
void claim(QFile &) {}

Claimed claimOf(const QString &) {
    return Claimed::No;
}

#endif

QString moveOver(QFile &file, const QString &place) {
#ifndef Q_OS_UNIX
    file.close(); // no open file is moved there
#endif
    std::error_code error;
    std::filesystem::rename(pathOf(file.fileName()), pathOf(place), error);
    return error ? qt_error_string(error.value()) : QString();
}

#ifdef Q_OS_UNIX

bool isOnNetworkDrive(const QString &path) {
    return isNetworkFileSystem(QStorageInfo(path).fileSystemType());
}

#else

bool isOnNetworkDrive(const QString &path) {
    const std::wstring root = QStorageInfo(path).rootPath().toStdWString();
    return path.startsWith(QStringLiteral("//")) || GetDriveTypeW(root.c_str()) == DRIVE_REMOTE;
}

#endif

bool isNetworkFileSystem(QByteArrayView kind) {
    static constexpr std::array<QByteArrayView, 22> known = {
        "nfs",   "nfs4",   "cifs",   "smb2",      "smb3",       "smbfs",    "smbnetfs",    "sshfs",
        "ncpfs", "afs",    "coda",   "ceph",      "9p",         "vboxsf",   "vmhgfs-fuse", "prl_fs",
        "davfs", "davfs2", "rclone", "glusterfs", "gvfsd-fuse", "curlftpfs"};
    const QByteArrayView bridge = "fuse.";
    return std::ranges::find(known, kind.startsWith(bridge) ? kind.sliced(bridge.size()) : kind) !=
           known.end();
}

} // namespace platform
