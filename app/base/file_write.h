#pragma once

#include "app/base/result.h"

#include <QByteArray>
#include <QFile>

/// Who may read a file.
enum class FileUse {
    Common, ///< whoever may: an existing file keeps its permissions
    Private ///< its owner alone: data of patients
};

/// A file that is written whole beside its place and then moved over it, so that a crash leaves the old or
/// the new one, never half of one:
///
///     WholeFile file(path);
///     if (const Result<> opened = file.open(); !opened)
///         return opened;
///     write(file.device());
///     return file.commit();
///
/// What a killed run left beside the same place is removed on the way.
class WholeFile {
public:
    explicit WholeFile(const QString &path, FileUse use = FileUse::Common);
    /// What was not committed is dropped.
    ~WholeFile();
    WholeFile(const WholeFile &) = delete;
    WholeFile &operator=(const WholeFile &) = delete;

    Result<> open();
    QFile &device() { return m_file; }
    /// Moves the file to its place once the disk has it. A failure names the file and leaves the old one.
    Result<> commit();

private:
    Result<> failure(const QString &why) const;

    QString m_path;
    QString m_place; ///< of the file itself where the path is a link
    FileUse m_use;
    QFile m_file;        ///< beside the place
    bool m_lies = false; ///< something lies there
};

/// Writes a file whole. A failure is a sentence for the user that names the file.
Result<> writeFileWhole(const QString &path, const QByteArray &bytes, FileUse use = FileUse::Common);

/// Writes a file in its place. For a batch's many files, which nobody reads before all are written and which
/// the next batch writes anew: making a file beside and waiting for the disk take a hundred times as long.
Result<> writeFileInPlace(const QString &path, const QByteArray &bytes, FileUse use = FileUse::Common);

/// One of the two.
using FileWriter = Result<> (*)(const QString &path, const QByteArray &bytes, FileUse use);
