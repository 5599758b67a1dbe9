#include "print/engine/viewer_job.h"

#include "app/base/environment.h"
#include "app/base/processes.h"
#include "print/engine/command_file.h"
#include "print/engine/engine_programs.h"
#include "print/engine/print_files.h"
#include "print/engine/work_folder.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>

namespace {
constexpr std::chrono::milliseconds betweenLooks{10};
}

ViewerJob::ViewerJob(const Environment &environment, QString commandFile)
    : m_environment(environment), m_commandFile(std::move(commandFile)) {}

Result<> ViewerJob::announce() {
    if (m_ticket.id.isEmpty())
        waitUntilTaken();
    return putTicket(QCoreApplication::applicationPid());
}

Result<> ViewerJob::putTicket(qint64 viewer) {
    m_ticket.id = nextRunName();
    m_ticket.computer = computerInNames();
    m_ticket.viewer = viewer;
    JobTicket written = m_ticket;
    if (keepsPrintFiles(m_environment.folders)) {
        written.files.clear();
        written.folder.clear();
    }
    // In its place: a ticket is no loss when the power goes.
    return writeFileInPlace(JobTicket::pathFor(m_commandFile), written.bytes(), FileUse::Private);
}

void ViewerJob::drop() {
    m_ticket.wasRead(m_commandFile);
}

void ViewerJob::keepFiles() {
    m_ticket.files.clear();
    drop();
}

Result<> ViewerJob::hand(const CommandFile &commands, EngineProgram program, const QStringList &arguments,
                         PrintFiles *left, WriteFile how) {
    if (left)
        m_ticket.folder = left->folder();
    if (const Result<> announced = announce(); !announced)
        return announced;
    qint64 viewer = JobTicket::unknown;
    QString reason;
    Result<> written = commands.write(m_commandFile, how);
    if (written)
        written = putTicket(JobTicket::starting);
    if (!written || !startEngineProgram(m_environment, program, arguments, &reason, &viewer)) {
        drop();
        return written ? Failure{reason} : written;
    }
    if (left)
        left->leaveTo(viewer);
    noteViewer(viewer);
    return {};
}

void ViewerJob::waitUntilTaken(std::chrono::milliseconds limit,
                               const std::function<void()> &meanwhile) const {
    // The clock of another PC may be wrong: nobody waits longer than the limit.
    const QDeadlineTimer deadline(limit);
    while (!isTaken(limit) && !deadline.hasExpired()) {
        if (meanwhile)
            meanwhile();
        QThread::msleep(betweenLooks.count());
    }
}

bool ViewerJob::isTaken(std::chrono::milliseconds limit) const {
    const QFileInfo place(JobTicket::pathFor(m_commandFile));
    if (!place.exists())
        return true;
    const JobTicket ticket = JobTicket::read(m_commandFile);
    if (!m_ticket.id.isEmpty() && ticket.id != m_ticket.id)
        return true;         // another job's by now
    if (ticket.id.isEmpty()) // its writer was killed over it
        return QFile::remove(place.filePath());
    if (ticket.computer == computerInNames() && ticket.viewer != JobTicket::starting &&
        !m_environment.processes.runs(ticket.viewer)) {
        ticket.wasRead(m_commandFile);
        return true;
    }
    return place.lastModified().msecsTo(QDateTime::currentDateTime()) > limit.count();
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
