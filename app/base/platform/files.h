#pragma once

#include <QFile>
#include <QFileInfo>

/// What the systems do differently with files.
namespace platform {

/// Waits until the disk has what was written to an open file. The system's reason when it has not, empty when
/// it is done; a file system that cannot tell counts as done.
QString syncToDisk(QFile &file);

/// Marks an open file as being written until it is closed, also by the end of the process.
void claim(QFile &file);

/// Whether another process has claimed the file; nothing where the file system cannot tell.
enum class Claimed { No, Yes, Unknown };
Claimed claimOf(const QString &path);

/// Opens a new file that other users are to leave alone, and makes such a folder. Where folders hand their
/// own rights down, these hold.
bool openOwn(QFile &file, QIODevice::OpenMode mode);
bool makeOwnFolder(const QString &path);

/// Removes a file, also one that another program looks at for a moment. Whether it is gone.
bool removeFile(const QString &path);

/// Moves an open file over another in one step. The system's reason when it refuses, empty when it is done.
QString moveOver(QFile &file, const QString &place);

/// Whether a folder's marks say that nothing is to be written into it.
bool isReadOnlyFolder(const QFileInfo &folder);

/// The file of a program by its path without an ending: "…/wfrfv10" may be "…/wfrfv10.exe".
QString programFile(const QString &program);

/// Puts a program's file into an installation, under the suite's name for it. False when it cannot.
bool placeProgram(const QString &file, const QString &place);

/// Whether a file lies on another machine, where locks and shared memory of several PCs cannot be trusted.
bool isOnNetworkDrive(const QString &path);

/// The same of a file system's kind as the system names it: nfs4, cifs, fuse.sshfs.
bool isNetworkFileSystem(QByteArrayView kind);

} // namespace platform
