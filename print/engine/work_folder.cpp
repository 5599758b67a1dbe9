#include "print/engine/work_folder.h"

#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/ini_file.h"
#include "app/base/job_ticket.h"
#include "app/base/processes.h"
#include "print/engine/engine_programs.h"
#include "print/engine/print_files.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QSysInfo>
#include <QThread>
#include <atomic>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::milliseconds betweenLooks{10};
/// After it, the lock of a PC that was switched off is taken away. A builder is ended long before.
constexpr std::chrono::minutes lockIsOld{15};
/// A viewer that gives no sign may be reading its files as long as this.
constexpr qint64 mayBeReadSeconds = 600;
/// What another PC left; whether its programs run cannot be seen from here. A PDF in place of paper as well.
constexpr qint64 daySeconds = 24 * 60 * 60;

bool isOlder(const QFileInfo &entry, qint64 seconds) {
    return entry.lastModified().secsTo(QDateTime::currentDateTime()) > seconds;
}

/// Whether nobody needs a run's folder any more, "douisho-PC-process-number".
bool isLeft(const Processes &processes, const QFileInfo &folder) {
    const QStringList parts = folder.fileName().split(u'-');
    const qint64 process = parts.value(parts.size() - 2).toLongLong();
    if (folder.fileName().startsWith(PrintFiles::folderStart() + computerInNames() + u'-')) {
        const qint64 viewer = PrintFiles::viewerOf(folder.filePath());
        return !processes.runs(viewer) &&
               (viewer != 0 || (process != QCoreApplication::applicationPid() && !processes.runs(process)));
    }
    return isOlder(folder, daySeconds);
}

void clearTicket(const Processes &processes, const QFileInfo &entry) {
    const QString commandFile = entry.path() + u'/' + entry.completeBaseName();
    const JobTicket ticket = JobTicket::read(commandFile);
    if (ticket.id.isEmpty()) // its writer was killed over it
        QFile::remove(entry.filePath());
    const bool ended = ticket.computer == computerInNames() && ticket.viewer != JobTicket::starting &&
                       !processes.runs(ticket.viewer);
    if (ended || isOlder(entry, mayBeReadSeconds))
        ticket.wasRead(commandFile);
}

/// Documents that were claimed and not begun; whoever does that holds the lock.
void removeClaims(const QDir &folder) {
    for (const QFileInfo &document : folder.entryInfoList({u"Output????.wfd"_s}, QDir::Files))
        if (document.size() == 0 && !QFile::exists(JobTicket::pathFor(document.filePath())))
            QFile::remove(document.filePath());
}

void removeOlder(const QDir &folder, const QStringList &names, qint64 seconds) {
    for (const QFileInfo &file : folder.entryInfoList(names, QDir::Files))
        if (isOlder(file, seconds))
            QFile::remove(file.filePath());
}

} // namespace

QString computerInNames() {
    QString name;
    for (const QChar c : QSysInfo::machineHostName())
        name += (c.isLetterOrNumber() && c.unicode() < 0x80) ? c : QChar(u'_');
    return name.isEmpty() ? u"PC"_s : name;
}

QString nextRunName() {
    static std::atomic<int> number = 0;
    return u"%1-%2-%3"_s.arg(computerInNames()).arg(QCoreApplication::applicationPid()).arg(++number);
}

bool keepsPrintFiles(const Folders &folders) {
    clsOplIniFile ini;
    ini.iInit(Folders::file(folders.data(), u"douisho.ini"_s));
    return ini.nGetProfileLong(u"印刷"_s, u"作業ファイルを残す"_s) != 0;
}

WorkFolderLock::WorkFolderLock(std::unique_ptr<QLockFile> file) : m_file(std::move(file)) {}
WorkFolderLock::WorkFolderLock(WorkFolderLock &&) noexcept = default;
WorkFolderLock &WorkFolderLock::operator=(WorkFolderLock &&) noexcept = default;
WorkFolderLock::~WorkFolderLock() = default;

Result<WorkFolderLock> WorkFolderLock::take(const Environment &environment, const std::function<bool()> &goOn,
                                            std::chrono::milliseconds limit) {
    const QString folder = engineWorkFolder(environment);
    auto file = std::make_unique<QLockFile>(folder + u"douisho.lock"_s);
    file->setStaleLockTime(lockIsOld);
    const QDeadlineTimer deadline(limit);
    while (!file->tryLock(0)) {
        if (file->error() != QLockFile::LockFailedError)
            break;
        if (deadline.hasExpired() || (goOn && !goOn())) {
            qint64 process = 0;
            QString computer, program;
            file->getLockInfo(&process, &computer, &program);
            return Failure{
                u"他の端末「%1」が作業フォルダ「%2」で印刷しています。\r\nしばらくしてから、もう一度実行してください。"_s
                    .arg(computer, QDir::toNativeSeparators(folder))};
        }
        QThread::msleep(betweenLooks.count());
    }
    return WorkFolderLock(std::move(file));
}

void clearWorkFolder(const Environment &environment) {
    const QDir folder(engineWorkFolder(environment));
    if (!folder.exists() || keepsPrintFiles(environment.folders))
        return;
    for (const QFileInfo &run : folder.entryInfoList({PrintFiles::folderStart() + u'*'}, QDir::Dirs))
        if (isLeft(environment.processes, run))
            QDir(run.filePath()).removeRecursively();
    // A program that is just handing over its job holds the lock; then the next run clears.
    if (const Result<WorkFolderLock> lock = WorkFolderLock::take(environment, [] { return false; }); lock) {
        for (const QFileInfo &ticket : folder.entryInfoList({u"*.ticket"_s}, QDir::Files))
            clearTicket(environment.processes, ticket);
        removeClaims(folder);
    }
    removeOlder(folder, {u"Output????.wfd"_s, u"cmdSetPrint*-*.dat"_s}, mayBeReadSeconds);
    if (folder != QDir(environment.folders.program()))
        removeOlder(folder, {u"Output????*.pdf"_s, u"WfdCom*.pdf"_s, u"同意依頼書*.pdf"_s}, daySeconds);
}
