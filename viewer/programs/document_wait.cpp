#include "viewer/programs/document_wait.h"

#include "viewer/finished/document_file.h"

#include <QDeadlineTimer>
#include <QFile>

namespace {
constexpr qint64 headLength = 64; // bytes, with the length that the document says it has
}

bool isBeingBuilt(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return !file.exists();
    const QByteArray head = file.read(headLength);
    return head.isEmpty() || (isDocumentFile(head) && file.size() < documentFileLength(head));
}

WaitResult waitForDocument(const QString &path, std::chrono::milliseconds limit,
                           const std::function<bool()> &pause) {
    const QDeadlineTimer deadline(limit);
    while (isBeingBuilt(path)) {
        if (deadline.hasExpired())
            return WaitResult::TimedOut;
        if (!pause())
            return WaitResult::Cancelled;
    }
    return WaitResult::Ready;
}
