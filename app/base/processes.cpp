#include "app/base/processes.h"

#include <QFileInfo>
#include <QProcess>

bool SystemProcesses::start(const QString &program, const QStringList &arguments, const QString &folder) {
    if (!QFileInfo(program).isExecutable())
        return false;
    return QProcess::startDetached(program, arguments, folder);
}
