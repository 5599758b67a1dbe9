#pragma once

#include "app/base/result.h"

#include <QDate>
#include <QList>
#include <stop_token>

class Folders;

/// A copy of an embedded database, of one day.
struct Backup {
    QString path;
    QString database; ///< its name without folder and suffix
    QDate day;
    qint64 bytes;
};

/// The copies in the folder バックアップ of the data folder.
class Backups {
public:
    /// @param file the database that is in use
    Backups(const Folders &folders, const QString &file);

    const QString &folder() const { return m_folder; }
    /// Copies of whatever database, newest first.
    QList<Backup> all() const;
    /// The day of the newest copy of this database that is no later than `today`; invalid when there is none.
    QDate newest(const QDate &today) const;

    /// Makes the day's copy unless it is there, or a colleague is making it, and keeps the ten newest. A
    /// failure leaves the older ones.
    Result<> makeDaily(const QDate &today, const std::stop_token &stop) const;

    /// Copies one into a new file beside the database, and gives the new file.
    Result<QString> restore(const Backup &backup) const;

private:
    QList<Backup> own() const;
    Result<> make(const QDate &day, const std::stop_token &stop) const;
    Result<> removeOld() const;

    QString m_file;
    QString m_folder;
};

/// Lets the program's next start use another embedded file: adodb.ini stays as it is but for the file's name.
/// @param file in the folder of the one in use
Result<> useDatabase(const Folders &folders, const QString &file);
