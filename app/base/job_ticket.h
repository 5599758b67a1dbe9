#pragma once

#include <QString>
#include <QStringList>

/// A note beside a command file that was handed to a viewer and may not be read yet. While it lies there,
/// nobody writes the command file or its data anew. The viewer takes it away once it has read everything; one
/// that knows nothing of tickets leaves it, and it grows old.
struct JobTicket {
    QString id;       ///< no other ticket has it
    QString computer; ///< on which the viewer was started
    /// Its process, or that of the program that prepares the job; one of the two below.
    qint64 viewer = 0;
    static constexpr qint64 starting = 0; ///< whether it was started is not known yet
    static constexpr qint64 unknown = -1; ///< it runs under a number that nobody knows
    QStringList files;                    ///< nobody needs them any more once they were read
    QString folder; ///< goes with all that is in it when the viewer has ended; may be empty
    /// It lies there and cannot be opened: whose it is and whether it is needed is not known.
    bool unreadable = false;

    /// In the environment of the viewer, the id of the ticket that it was started for.
    static constexpr const char *variable = "DOUISHO_TICKET";

    /// The ticket's place.
    static QString pathFor(const QString &commandFile) { return commandFile + QStringLiteral(".ticket"); }
    /// Reads the ticket of a command file; an empty one when there is none.
    static JobTicket read(const QString &commandFile);
    QByteArray bytes() const;

    /// Removes the files, then the ticket, unless another one lies there by now. Only what lies beside the
    /// command file or below is touched.
    void wasRead(const QString &commandFile) const;
    /// Removes the folder.
    void hasEnded(const QString &commandFile) const;
};
