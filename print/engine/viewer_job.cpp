#include "print/engine/viewer_job.h"

#include "app/base/environment.h"
#include "app/base/platform/files.h"
#include "print/engine/command_file.h"
#include "print/engine/engine_programs.h"
#include "print/engine/folder_clock.h"
#include "print/engine/print_files.h"
#include "print/engine/work_folder.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>

namespace {
constexpr std::chrono::milliseconds betweenLooks{10};
}

ViewerJob::ViewerJob(const Environment &environment, QString commandFile, HandedDocuments *sent)
    : m_environment(environment), m_commandFile(std::move(commandFile)), m_sent(sent) {}

Result<> ViewerJob::announce() {
    if (m_ticket.id.isEmpty()) {
        waitUntilTaken();
        takeOver();
    }
    return putTicket(QCoreApplication::applicationPid());
}

/// A viewer that gave no sign leaves its ticket: what that names goes with this job. The file may be another
/// user's, who alone may write into it.
void ViewerJob::takeOver() {
    for (const QString &file : JobTicket::read(m_commandFile).files)
        if (!m_ticket.files.contains(file))
            m_ticket.files += file;
    platform::removeFile(JobTicket::pathFor(m_commandFile));
}

Result<> ViewerJob::putTicket(qint64 viewer) {
    m_ticket.id = nextRunName();
    m_ticket.computer = computerInNames();
    m_ticket.viewer = viewer;
    if (keepsPrintFiles(m_environment.folders)) {
        m_ticket.files.clear();
        m_ticket.folder.clear();
    }
    // In its place: a ticket is no loss when the power goes. It names no patient, and all users have to read
    // it.
    const QString place = JobTicket::pathFor(m_commandFile);
    const Result<> written = writeFileInPlace(place, m_ticket.bytes());
    QFile::setPermissions(place, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    return written;
}

void ViewerJob::drop() {
    m_ticket.wasRead(m_commandFile);
}

void ViewerJob::keepFiles() {
    m_ticket.files.clear();
    drop();
}

Result<> ViewerJob::hand(const CommandFile &commands, EngineProgram program, const QStringList &arguments,
                         PrintFiles *left, FileWriter how) {
    if (left)
        m_ticket.folder = left->folder();
    if (const Result<> announced = announce(); !announced)
        return announced;
    if (how == writeFileInPlace)
        platform::removeFile(m_commandFile); // another user's may be written by him alone
    Result<> written = commands.write(m_commandFile, how);
    if (written && m_sent)
        m_sent->read(m_commandFile);
    if (written)
        written = putTicket(JobTicket::starting);
    qputenv(JobTicket::variable, m_ticket.id.toUtf8());
    const Result<qint64> viewer = written ? startEngineProgram(m_environment, program, arguments)
                                          : Result<qint64>(Failure{written.reason()});
    qunsetenv(JobTicket::variable);
    if (!viewer) {
        drop();
        return Failure{viewer.reason()};
    }
    if (left)
        left->leaveTo(*viewer);
    noteViewer(*viewer);
    if (m_sent)
        m_sent->handed();
    return {};
}

void ViewerJob::waitUntilTaken(std::chrono::milliseconds limit,
                               const std::function<void()> &meanwhile) const {
    const QDeadlineTimer deadline(limit);
    FolderClock clock(QFileInfo(m_commandFile).path());
    while (!isTaken(limit, clock) && !deadline.hasExpired()) {
        if (meanwhile)
            meanwhile();
        QThread::msleep(betweenLooks.count());
    }
}

bool ViewerJob::isTaken(std::chrono::milliseconds limit, FolderClock &clock) const {
    const QFileInfo place(JobTicket::pathFor(m_commandFile));
    if (!place.exists())
        return true;
    const JobTicket ticket = JobTicket::read(m_commandFile);
    if (!m_ticket.id.isEmpty() && ticket.id != m_ticket.id)
        return true;                               // another job's by now
    if (ticket.id.isEmpty() && !ticket.unreadable) // its writer was killed over it
        return platform::removeFile(place.filePath());
    if (viewerHasEnded(m_environment.processes, ticket)) {
        ticket.wasRead(m_commandFile);
        return true;
    }
    return clock.ageOf(place) > limit;
}

/// The viewer may have taken the ticket away already: no new one is made.
void ViewerJob::noteViewer(qint64 viewer) {
    QFile file(JobTicket::pathFor(m_commandFile));
    m_ticket.viewer = viewer;
    JobTicket noted = JobTicket::read(m_commandFile);
    noted.viewer = viewer;
    if (!noted.id.isEmpty() && file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly)) {
        const QByteArray bytes = noted.bytes();
        file.write(bytes);
        file.resize(bytes.size());
    }
}
