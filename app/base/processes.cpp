#include "app/base/processes.h"

#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/messages.h"
#include "app/base/platform/processes.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::milliseconds betweenLooks{20};
QStringList searchFolders(const QString &first) {
    const QStringList path = qEnvironmentVariable("PATH").split(QDir::listSeparator(), Qt::SkipEmptyParts);
    return QStringList{first} + path + QStringList{QCoreApplication::applicationDirPath()};
}

void prepare(QProcess &process, const QString &program, const QStringList &arguments, const QString &folder,
             WindowStyle style) {
    process.setProgram(program);
    process.setArguments(arguments);
    process.setWorkingDirectory(folder);
    process.setStandardInputFile(QProcess::nullDevice());
    platform::setWindowStyle(process, style);
    platform::keepFilesToThisProcess();
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
                            qint64 *id, WindowStyle style) {
    if (!QFileInfo(program).isExecutable())
        return false;
    QProcess process;
    prepare(process, program, arguments, folder, style);
    return process.startDetached(id);
}

bool SystemProcesses::runs(qint64 id) const {
    return platform::runs(id);
}

ProcessEnd SystemProcesses::run(const QString &program, const QStringList &arguments, const QString &folder,
                                std::chrono::milliseconds timeOut, const std::function<bool()> &goOn) {
    const QDeadlineTimer deadline(timeOut);
    QProcess process;
    prepare(process, program, arguments, folder, WindowStyle::Minimized);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    platform::ProcessTree tree(process);
    tree.start();
    while (!process.waitForFinished(int(betweenLooks.count()))) {
        // The callback may have run the event loop, which notices the end as well.
        const bool wanted = !goOn || goOn();
        if (process.state() == QProcess::NotRunning)
            break;
        if (wanted && !deadline.hasExpired())
            continue;
        tree.kill();
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
