#include "app/base/processes.h"

#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/messages.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>
#endif
#ifdef Q_OS_LINUX
#include <linux/close_range.h>
#include <sys/prctl.h>
#endif

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::milliseconds betweenLooks{20};
/// A killed program may stay stuck in the system, as on a lost network drive.
constexpr int killedWithinMs = 3000;

QStringList searchFolders(const QString &first) {
    const QStringList path = qEnvironmentVariable("PATH").split(QDir::listSeparator(), Qt::SkipEmptyParts);
    return QStringList{first} + path + QStringList{QCoreApplication::applicationDirPath()};
}

/// Descriptors that a library opened without the mark would be held open by everything that is started.
void keepDescriptorsToThisProcess() {
#ifdef Q_OS_LINUX
    if (close_range(3, ~0U, CLOSE_RANGE_CLOEXEC) == 0)
        return;
#endif
#ifdef Q_OS_UNIX
    const int end = int(sysconf(_SC_OPEN_MAX));
    for (int descriptor = 3; descriptor < end; ++descriptor)
        fcntl(descriptor, F_SETFD, FD_CLOEXEC);
#endif
}

void prepare(QProcess &process, const QString &program, const QStringList &arguments, const QString &folder) {
    process.setProgram(program);
    process.setArguments(arguments);
    process.setWorkingDirectory(folder);
    process.setStandardInputFile(QProcess::nullDevice());
    keepDescriptorsToThisProcess();
}

/// Ends a program and what it started, and takes it off the system's list.
void kill(QProcess &process) {
#ifdef Q_OS_UNIX
    if (process.processId() > 0)
        ::kill(-pid_t(process.processId()), SIGKILL);
#endif
    process.kill();
    process.waitForFinished(killedWithinMs);
}

} // namespace

QString SystemProcesses::find(const QString &name, const QString &folder) const {
    QStringList names{name};
    if (name.endsWith(u".exe", Qt::CaseInsensitive))
        names.append(name.chopped(4));
    else
        names.append(name + u".exe"_s);
    for (const QString &place : searchFolders(folder))
        for (const QString &spelling : names) {
            const QFileInfo file(Folders::file(place, spelling));
            if (file.isFile() && file.isExecutable())
                return file.absoluteFilePath();
        }
    return {};
}

bool SystemProcesses::start(const QString &program, const QStringList &arguments, const QString &folder,
                            qint64 *id) {
    if (!QFileInfo(program).isExecutable())
        return false;
    QProcess process;
    prepare(process, program, arguments, folder);
    return process.startDetached(id);
}

bool SystemProcesses::runs(qint64 id) const {
    if (id <= 0)
        return false;
#ifdef Q_OS_LINUX
    // What has ended and waits to be taken off the list does nothing any more.
    QFile state(u"/proc/%1/stat"_s.arg(id));
    if (state.open(QIODevice::ReadOnly)) {
        const QByteArray text = state.readAll();
        return text.mid(text.lastIndexOf(')') + 2, 1) != "Z";
    }
#endif
#ifdef Q_OS_UNIX
    return ::kill(pid_t(id), 0) == 0 || errno == EPERM;
#else
    return true;
#endif
}

ProcessEnd SystemProcesses::run(const QString &program, const QStringList &arguments, const QString &folder,
                                std::chrono::milliseconds timeOut, const std::function<bool()> &goOn) {
    const QDeadlineTimer deadline(timeOut);
    QProcess process;
    prepare(process, program, arguments, folder);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
#ifdef Q_OS_UNIX
    // A group of its own, by which it can be killed with its children. When this program is killed, nobody
    // waits for what it would write into files that others have by then.
    process.setChildProcessModifier([parent = getpid()] {
        setpgid(0, 0);
#ifdef Q_OS_LINUX
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent)
            _exit(EXIT_FAILURE); // killed before that
#endif
    });
#endif
    process.start();
    while (!process.waitForFinished(int(betweenLooks.count()))) {
        // The callback may have run the event loop, which notices the end as well.
        const bool wanted = !goOn || goOn();
        if (process.state() == QProcess::NotRunning)
            break;
        if (wanted && !deadline.hasExpired())
            continue;
        kill(process);
        return {wanted ? ProcessEnd::TimedOut : ProcessEnd::GivenUp};
    }
    if (process.error() == QProcess::FailedToStart)
        return {ProcessEnd::NotStarted};
    if (process.exitStatus() == QProcess::CrashExit)
        return {ProcessEnd::Crashed};
    return {ProcessEnd::Exited, process.exitCode()};
}

bool startSibling(Environment &environment, const QString &fileName, const QStringList &arguments) {
    const QString &folder = environment.folders.program();
    if (environment.processes.start(Folders::file(folder, fileName), arguments, folder))
        return true;
    environment.messages.fail(u"実行ファイルが見つかりません。"_s, u"実行ファイルエラー！"_s);
    return false;
}
