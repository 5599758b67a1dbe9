#include "app/base/platform/files.h"

#include "app/base/platform/native.h"

#include <QDir>
#include <QStorageInfo>
#include <io.h>

namespace platform {

namespace {

LPCWSTR wide(const QString &text) {
    return reinterpret_cast<LPCWSTR>(text.utf16());
}

/// Another program looks at the file just now: a reader, a virus scanner, an indexer.
bool passes(DWORD error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED || error == ERROR_LOCK_VIOLATION;
}

} // namespace

QString syncToDisk(QFile &file) {
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(file.handle())); // NOLINT
    if (FlushFileBuffers(handle))
        return {};
    const DWORD error = GetLastError();
    const bool cannotTell = error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED;
    return cannotTell ? QString() : qt_error_string(int(error));
}

// A file that is open cannot be removed here.
void claim(QFile &) {}

Claimed claimOf(const QString &) {
    return Claimed::No;
}

QString moveOver(QFile &file, const QString &place) {
    file.close(); // no open file is moved here
    const QString from = QDir::toNativeSeparators(file.fileName());
    const QString to = QDir::toNativeSeparators(place);
    constexpr int tries = 20;
    constexpr DWORD betweenMs = 50;
    for (int i = 1; !MoveFileExW(wide(from), wide(to), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
         ++i) {
        const DWORD error = GetLastError();
        if (i == tries || !passes(error))
            return qt_error_string(int(error));
        Sleep(betweenMs);
    }
    return {};
}

/// A folder's read-only mark says here that it looks of its own: the user's documents bear it.
bool isReadOnlyFolder(const QFileInfo &) {
    return false;
}

QString programFile(const QString &program) {
    return program + QStringLiteral(".exe");
}

bool placeProgram(const QString &file, const QString &place) {
    if (QFileInfo(file) == QFileInfo(place)) // installed into the suite's own folder
        return QFileInfo::exists(file);
    QFile::remove(place);
    return QFile::copy(file, place);
}

bool isOnNetworkDrive(const QString &path) {
    const QString root = QDir::toNativeSeparators(QStorageInfo(path).rootPath());
    return QDir::fromNativeSeparators(path).startsWith(QStringLiteral("//")) ||
           GetDriveTypeW(wide(root)) == DRIVE_REMOTE;
}

} // namespace platform
