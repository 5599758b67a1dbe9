#include "print/engine/work_folder.h"

#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/ini_file.h"
#include "app/base/job_ticket.h"
#include "app/base/processes.h"
#include "print/engine/engine_programs.h"
#include "print/engine/folder_clock.h"
#include "print/engine/print_files.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QThread>
#include <atomic>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::milliseconds betweenLooks{10};
/// After it, the lock of a PC that was switched off is taken away. A builder is ended long before.
constexpr std::chrono::minutes lockIsOld{15};
/// A lock is without its owner's name for an instant.
constexpr std::chrono::seconds namelessFor{5};
/// A viewer that gives no sign may be reading its files as long as this.
constexpr std::chrono::minutes mayBeRead{10};
/// What another PC left; whether its programs run cannot be seen from here. A PDF in place of paper as well.
constexpr std::chrono::hours day{24};

/// Whether nobody needs a run's folder any more, "douisho-PC-process-number".
bool isLeft(const Processes &processes, const QFileInfo &folder, FolderClock &clock) {
    const QStringList parts = folder.fileName().split(u'-');
    const qint64 process = parts.value(parts.size() - 2).toLongLong();
    if (folder.fileName().startsWith(PrintFiles::folderStart() + computerInNames() + u'-')) {
        const qint64 viewer = PrintFiles::viewerOf(folder.filePath());
        return !processes.runs(viewer) &&
               (viewer != 0 || (process != QCoreApplication::applicationPid() && !processes.runs(process)));
    }
    return clock.ageOf(folder) > day;
}

/// Removes a ticket that nobody needs any more. One that cannot be read may be needed until it is old.
void clearTicket(const Processes &processes, const QFileInfo &entry, FolderClock &clock) {
    const QString commandFile = entry.path() + u'/' + entry.completeBaseName();
    const JobTicket ticket = JobTicket::read(commandFile);
    const bool old = clock.ageOf(entry) > mayBeRead;
    if (old || viewerHasEnded(processes, ticket))
        ticket.wasRead(commandFile);
    if (ticket.id.isEmpty() && (old || !ticket.unreadable)) // its writer was killed over it
        QFile::remove(entry.filePath());
}

/// Documents that were claimed and not begun; whoever does that holds the lock.
void removeClaims(const QDir &folder) {
    for (const QFileInfo &document : folder.entryInfoList({u"Output????.wfd"_s}, QDir::Files))
        if (document.size() == 0 && !QFile::exists(JobTicket::pathFor(document.filePath())))
            QFile::remove(document.filePath());
}

void removeOlder(const QDir &folder, const QStringList &names, std::chrono::milliseconds age,
                 FolderClock &clock) {
    for (const QFileInfo &file : folder.entryInfoList(names, QDir::Files))
        if (clock.ageOf(file) > age)
            QFile::remove(file.filePath());
}

/// The lock of a program that was killed before it could write its name into it: it would lie there long.
void removeNameless(QLockFile &file, FolderClock &clock) {
    const auto isNameless = [&] {
        const QFileInfo lock(file.fileName());
        return lock.exists() && lock.size() == 0 && clock.ageOf(lock) > namelessFor;
    };
    if (!isNameless())
        return;
    // Of two that see it, the second must not remove the lock of the first. The class's own name for this.
    QLockFile alone(file.fileName() + u".rmlock"_s);
    if (alone.tryLock(0) && isNameless())
        file.removeStaleLockFile();
}

QString holderOf(const QLockFile &file) {
    qint64 process = 0;
    QString computer, program;
    if (!file.getLockInfo(&process, &computer, &program) || computer.isEmpty())
        return u"他のプログラム"_s;
    return computer == QSysInfo::machineHostName() ? u"この端末の他のプログラム"_s
                                                   : u"他の端末「%1」"_s.arg(computer);
}

} // namespace

QString computerInNames(const QString &host) {
    QString name;
    for (const QChar c : host)
        name += (c.isLetterOrNumber() && c.unicode() < 0x80) ? c : QChar(u'_');
    const QByteArray hash = QCryptographicHash::hash(host.toUtf8(), QCryptographicHash::Sha256);
    return name + u'_' + QString::fromLatin1(hash.toHex().left(8));
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

bool viewerHasEnded(const Processes &processes, const JobTicket &ticket) {
    return ticket.computer == computerInNames() && ticket.viewer != JobTicket::starting &&
           !processes.runs(ticket.viewer);
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
    FolderClock clock(folder);
    while (!file->tryLock(0)) {
        if (file->error() != QLockFile::LockFailedError)
            break;
        if (deadline.hasExpired() || (goOn && !goOn()))
            return Failure{
                u"%1が作業フォルダ「%2」で印刷しています。\r\nしばらくしてから、もう一度実行してください。"_s
                    .arg(holderOf(*file), QDir::toNativeSeparators(folder))};
        removeNameless(*file, clock);
        QThread::msleep(betweenLooks.count());
    }
    return WorkFolderLock(std::move(file));
}

void clearWorkFolder(const Environment &environment) {
    const QDir folder(engineWorkFolder(environment));
    if (!folder.exists() || keepsPrintFiles(environment.folders))
        return;
    FolderClock clock(folder.path());
    for (const QFileInfo &run : folder.entryInfoList({PrintFiles::folderStart() + u'*'}, QDir::Dirs))
        if (isLeft(environment.processes, run, clock))
            QDir(run.filePath()).removeRecursively();
    const QStringList tickets{u"*.ticket"_s};
    const QStringList ofTheLock{u"Com.dat"_s, u"DouiCom.dat"_s, u"err.txt"_s};
    const QStringList ofAViewer{u"Output????.wfd"_s, u"cmdSetPrint*.dat"_s, u"WfdCom.dat"_s};
    const QStringList ofPeople{u"Output????*.pdf"_s, u"WfdCom*.pdf"_s, u"同意依頼書*.pdf"_s};
    // A lock is written through to the disk: a start does not wait for that where nothing is left.
    if (folder.entryList(tickets + ofTheLock + ofAViewer + ofPeople, QDir::Files).isEmpty())
        return;
    // A program that is just handing over its job holds the lock; then the next run clears.
    const Result<WorkFolderLock> lock = WorkFolderLock::take(environment, [] { return false; });
    if (!lock)
        return;
    for (const QFileInfo &ticket : folder.entryInfoList(tickets, QDir::Files))
        clearTicket(environment.processes, ticket, clock);
    removeClaims(folder);
    if (!QDir(folder.path()).entryList(tickets).isEmpty())
        return; // somebody may be reading
    removeOlder(folder, ofTheLock, {}, clock);
    removeOlder(folder, ofAViewer, mayBeRead, clock);
    if (folder != QDir(environment.folders.program()))
        removeOlder(folder, ofPeople, day, clock);
}
