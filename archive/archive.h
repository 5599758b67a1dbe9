#pragma once

#include "app/base/result.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

class Folders;

/// What was sent, kept for years in the folder 保管 of the data folder: each content once, compressed, under
/// the check sum of what it holds. All PCs write into it at once. Nothing here has a time limit: who cannot
/// wait for a slow drive calls it on a thread of its own.
class Archive {
public:
    explicit Archive(const Folders &folders);

    const QString &folder() const { return m_folder; }
    /// SHA-256 in hexadecimal digits, by which the content is found again.
    static QString nameOf(const QByteArray &content);

    /// Keeps a content. One that lies there is kept longer, and mended where it is damaged.
    Result<> store(const QByteArray &content) const;
    /// Exactly what was stored, or why it cannot be had.
    Result<QByteArray> read(const QString &name) const;

    struct Size {
        int documents = 0;
        qint64 bytes = 0; ///< on the disk
    };
    Size size() const;

    /// Removes what nobody has stored for so many months; looks once a week, whichever PC comes first.
    /// @param months 0: nothing ever goes
    /// @return how many went
    int tidy(int months, const QDateTime &now) const;

private:
    QString pathOf(const QString &name) const;

    QString m_data;
    QString m_folder;
};
