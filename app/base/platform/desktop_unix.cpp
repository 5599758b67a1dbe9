#include "app/base/platform/desktop.h"

#include <QProcess>
#include <QStandardPaths>
#include <QSysInfo>

using namespace Qt::Literals::StringLiterals;

namespace platform {

QString computerName() {
    return QSysInfo::machineHostName().section(u'.', 0, 0).left(15);
}

bool hasDisplay() {
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

void useCallersConsole() {}

bool opensPdf() {
    const QString query = QStandardPaths::findExecutable(u"xdg-mime"_s);
    if (query.isEmpty())
        return true; // another system's desktop, which tells when it opens
    QProcess asked;
    asked.start(query, {u"query"_s, u"default"_s, u"application/pdf"_s});
    return asked.waitForFinished(3000) && !asked.readAllStandardOutput().trimmed().isEmpty();
}

QString folderProgram() {
    return u"xdg-open"_s;
}

} // namespace platform
