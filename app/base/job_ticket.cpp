#include "app/base/job_ticket.h"

#include "app/base/platform/files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Whether a path lies below the command file's folder: a ticket that somebody made up removes nothing else.
bool liesBeside(const QString &commandFile, const QString &path) {
    const QString folder = QFileInfo(commandFile).canonicalPath();
    return !folder.isEmpty() && QFileInfo(path).canonicalFilePath().startsWith(folder + u'/');
}

} // namespace

JobTicket JobTicket::read(const QString &commandFile) {
    JobTicket ticket;
    QFile file(pathFor(commandFile));
    if (!file.open(QIODevice::ReadOnly)) {
        ticket.unreadable = file.exists();
        return ticket;
    }
    for (const QString &line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        const QString value = line.section(u'=', 1);
        if (line.startsWith(u"id="))
            ticket.id = value;
        else if (line.startsWith(u"computer="))
            ticket.computer = value;
        else if (line.startsWith(u"viewer="))
            ticket.viewer = value.toLongLong();
        else if (line.startsWith(u"file="))
            ticket.files += value;
        else if (line.startsWith(u"folder="))
            ticket.folder = value;
    }
    return ticket;
}

QByteArray JobTicket::bytes() const {
    QString text = u"id=%1\ncomputer=%2\nviewer=%3\n"_s.arg(id, computer).arg(viewer);
    for (const QString &file : files)
        text += u"file=%1\n"_s.arg(file);
    if (!folder.isEmpty())
        text += u"folder=%1\n"_s.arg(folder);
    return text.toUtf8();
}

void JobTicket::wasRead(const QString &commandFile) const {
    if (id.isEmpty() || read(commandFile).id != id)
        return;
    for (const QString &file : files)
        if (liesBeside(commandFile, file))
            platform::removeFile(file);
    platform::removeFile(pathFor(commandFile));
}

void JobTicket::hasEnded(const QString &commandFile) const {
    if (!folder.isEmpty() && liesBeside(commandFile, folder))
        QDir(folder).removeRecursively();
}
