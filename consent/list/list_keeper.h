#pragma once

#include "app/base/unsaved_file.h"
#include "consent/list/unsaved_rows.h"

#include <QObject>
#include <QThreadPool>
#include <QTimer>
#include <functional>

/// Keeps the list's edits in a file of the user's own while they are unsaved: a crash or a power cut loses no
/// more than the last half second of them. Typing waits for none of it: the file is written beside it.
class ListKeeper : public QObject {
    Q_OBJECT
public:
    /// @param folder of files as UnsavedFile has them
    /// @param database whose rows they are, branch included
    /// @param rows gives what is unsaved now, without rows when nothing is
    ListKeeper(const QString &folder, const QString &database, std::function<UnsavedRows()> rows);
    ~ListKeeper() override;

    /// Something may have become unsaved, or saved: what is saved goes at once.
    void changed(bool anyUnsaved);
    /// Writes what is unsaved now. Fails where it is not on the disk.
    Result<> keepNow();
    /// What runs that ended without saving have left.
    std::vector<std::unique_ptr<UnsavedFile>> left() const;
    const QString &database() const { return m_database; }

Q_SIGNALS:
    /// The edits could not be kept, and why; told once until they could again.
    void failed(const QString &why);

private:
    void write();
    void written(const Result<> &result);

    QString m_folder;
    QString m_database;
    std::function<UnsavedRows()> m_rows;
    UnsavedFile m_file;
    QTimer m_pause;
    QThreadPool m_writer; ///< of one thread: the newest is written last
    bool m_lies = false;  ///< something was written, or is about to be
    bool m_told = false;
};
