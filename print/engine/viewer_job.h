#pragma once

#include "app/base/file_write.h"
#include "app/base/job_ticket.h"
#include "app/base/result.h"

#include <QString>
#include <QStringList>
#include <chrono>
#include <functional>

class CommandFile;
class FolderClock;
class PrintFiles;
enum class EngineProgram;
struct Environment;

/// Takes the documents of a run as they are handed over, from whatever screen: see ViewerJob::hand.
class HandedDocuments {
public:
    virtual ~HandedDocuments() = default;
    /// A command file that will be handed over: what it names is there and goes soon afterwards.
    virtual void read(const QString &commandFile) = 0;
    /// A viewer was started with what was read last.
    virtual void handed() = 0;
};

/// A command file on its way to a viewer, with what nobody needs once it was read.
class ViewerJob {
public:
    /// A viewer that takes no ticket away has read its files after this time.
    static constexpr std::chrono::seconds readingLimit{10};

    /// @param commandFile full path
    /// @param sent is told of what leaves; may be null
    ViewerJob(const Environment &environment, QString commandFile, HandedDocuments *sent = nullptr);

    /// A file that goes when the viewer has read the job.
    void addTemporary(const QString &path) { m_ticket.files += path; }

    /// Waits for the viewer of the job before, takes over what it left, and puts down a ticket: from here on
    /// the command file and the temporary files are this job's, and go if this program is killed. The caller
    /// holds the work folder's lock where their names are given.
    Result<> announce();
    /// Takes the ticket away with the temporary files, or without them.
    ///@{
    void drop();
    void keepFiles();
    ///@}

    /// Announces the job, writes the command file and starts the viewer with it.
    /// @param left goes when the viewer has ended; may be null
    Result<> hand(const CommandFile &commands, EngineProgram program, const QStringList &arguments,
                  PrintFiles *left = nullptr, FileWriter how = writeFileWhole);

    /// Waits until the viewer has read the job, or, of a job that is printed at once, until it has left; not
    /// longer than `limit` after it was handed over.
    void waitUntilTaken(std::chrono::milliseconds limit = readingLimit,
                        const std::function<void()> &meanwhile = {}) const;

private:
    void takeOver();
    Result<> putTicket(qint64 viewer);
    bool isTaken(std::chrono::milliseconds limit, FolderClock &clock) const;
    void noteViewer(qint64 viewer);

    const Environment &m_environment;
    QString m_commandFile;
    HandedDocuments *m_sent;
    JobTicket m_ticket; ///< its identity is set when it is put down
};
