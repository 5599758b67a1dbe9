#pragma once

#include "app/base/result.h"

#include <QByteArray>
#include <QString>

class DataFile;
class Folders;
struct Environment;

/// The files of one run of printing: data and pictures that the engine reads, in a folder of the run's own
/// below the work folder, which nobody else can read. They go with this object, or with the viewer that they
/// were left to.
class PrintFiles {
public:
    explicit PrintFiles(const Environment &environment);
    ~PrintFiles();
    PrintFiles(const PrintFiles &) = delete;
    PrintFiles &operator=(const PrintFiles &) = delete;

    /// Writes a file and gives its full path, as command and data files name it.
    Result<QString> write(const QString &name, const QByteArray &bytes);

    /// Writes a data file, with its twin where it needs one.
    Result<QString> write(const QString &name, const DataFile &data);

    /// The run's name, for files that have to lie in the work folder itself.
    const QString &run() const { return m_run; }
    /// Full path of the folder; empty when no file was written.
    const QString &folder() const { return m_folder; }
    /// A viewer that was started reads the files; 0 where its number is not known.
    void leaveTo(qint64 viewer);

    /// How the folders' names begin.
    static QString folderStart() { return QStringLiteral("douisho-"); }
    /// The viewer that a folder was left to; 0 for none.
    static qint64 viewerOf(const QString &folder);

private:
    Result<> makeFolder();

    QString placeOf(const QString &name) const;

    const Folders &m_folders;
    QString m_work; ///< with its closing separator
    QString m_run;
    QString m_folder;
    bool m_kept;
};
