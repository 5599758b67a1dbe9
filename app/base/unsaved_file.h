#pragma once

#include "app/base/result.h"

#include <QByteArray>
#include <QLockFile>
#include <memory>
#include <vector>

/// A file of the user's own in which a run keeps what it holds unsaved, for the case that it ends without
/// saving it. Only its owner can read it. A lock file beside it tells whether its run goes on: of several
/// runs each has its own.
class UnsavedFile {
public:
    /// A run's own; nothing is made before it is written.
    /// @param folder made when it is missing
    /// @param name of files that belong together, such as those of one database
    UnsavedFile(const QString &folder, const QString &name);

    /// Those that ended runs have left, oldest first. They are this run's as long as the objects live.
    static std::vector<std::unique_ptr<UnsavedFile>> left(const QString &folder, const QString &name);

    const QString &path() const { return m_path; }
    /// What it holds. Fails where that is not what was written.
    Result<QByteArray> read() const;
    /// Writes it whole; it is on the disk then. A failure names the file.
    Result<> write(const QByteArray &content);
    void remove();
    /// Moves a file that cannot be used out of the way, where nobody looks for it any more. Gives its new
    /// path.
    QString setAside();

private:
    explicit UnsavedFile(const QString &path);

    QString m_path;
    QLockFile m_lock;
};
