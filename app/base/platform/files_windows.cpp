#include "app/base/platform/files.h"

#include "app/base/platform/native.h"

#include <QDir>
#include <array>
#include <io.h>

namespace platform {

namespace {

/// Here, in what every program is linked with, and before the first regular expression: compiled ones leave
/// each thread a stack of its own, which the compiler's run-time library frees at the thread's end when its
/// memory may be gone already.
[[maybe_unused]] const bool regularExpressionsAreNotCompiled = qputenv("QT_ENABLE_REGEXP_JIT", "0");

LPCWSTR wide(const QString &text) {
    return reinterpret_cast<LPCWSTR>(text.utf16());
}

/// Another program looks at the file just now: a reader, a virus scanner, an indexer.
bool passes(DWORD error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED || error == ERROR_LOCK_VIOLATION;
}

/// Tries for a second until nobody looks. The system's error, 0 when it is done.
template <class Attempt> DWORD whenNobodyLooks(const Attempt &attempt) {
    constexpr int tries = 20;
    constexpr DWORD betweenMs = 50;
    for (int i = 1; !attempt(); ++i) {
        const DWORD error = GetLastError();
        if (i == tries || !passes(error))
            return error;
        Sleep(betweenMs);
    }
    return 0;
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

// A colleague has to be able to replace what this user left in a folder of both: who may read it is said
// there.
bool openOwn(QFile &file, QIODevice::OpenMode mode) {
    return file.open(mode);
}

bool makeOwnFolder(const QString &path) {
    return QDir().mkdir(path);
}

bool removeFile(const QString &path) {
    const QString native = QDir::toNativeSeparators(path);
    const DWORD error = whenNobodyLooks([&] { return DeleteFileW(wide(native)) != 0; });
    return error == 0 || error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

QString moveOver(QFile &file, const QString &place) {
    file.close(); // no open file is moved here
    const QString from = QDir::toNativeSeparators(file.fileName());
    const QString to = QDir::toNativeSeparators(place);
    constexpr DWORD how = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    const DWORD error = whenNobodyLooks([&] { return MoveFileExW(wide(from), wide(to), how) != 0; });
    return error == 0 ? QString() : qt_error_string(int(error));
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
    // Of a folder that is not there yet, too.
    std::array<wchar_t, MAX_PATH> root{};
    const QString native = QDir::toNativeSeparators(path);
    return native.startsWith(QStringLiteral("\\\\")) ||
           (GetVolumePathNameW(wide(native), root.data(), root.size()) &&
            GetDriveTypeW(root.data()) == DRIVE_REMOTE);
}

} // namespace platform
