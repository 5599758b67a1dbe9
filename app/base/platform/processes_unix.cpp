#include "app/base/platform/processes.h"

#include <QFile>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/prctl.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace platform {

namespace {
/// A killed program may stay stuck in the system, as on a lost network drive.
constexpr int killedWithinMs = 3000;
} // namespace

/// Descriptors that a library opened without the mark would be held open by everything that is started.
void keepFilesToThisProcess() {
    if (close_range(3, ~0U, CLOSE_RANGE_CLOEXEC) == 0)
        return;
    const int end = int(sysconf(_SC_OPEN_MAX));
    for (int descriptor = 3; descriptor < end; ++descriptor)
        fcntl(descriptor, F_SETFD, FD_CLOEXEC);
}

void setWindowStyle(QProcess &, WindowStyle) {}

bool runs(qint64 id) {
    if (id <= 0)
        return false;
    // What has ended and waits to be taken off the list does nothing any more.
    QFile state(u"/proc/%1/stat"_s.arg(id));
    if (state.open(QIODevice::ReadOnly)) {
        const QByteArray text = state.readAll();
        return text.mid(text.lastIndexOf(')') + 2, 1) != "Z";
    }
    return ::kill(pid_t(id), 0) == 0 || errno == EPERM;
}

struct ProcessTree::Native {};

ProcessTree::ProcessTree(QProcess &process) : m_process(process) {
    // A group of its own, by which it can be killed with its children.
    process.setChildProcessModifier([parent = getpid()] {
        setpgid(0, 0);
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent)
            _exit(EXIT_FAILURE); // killed before that
    });
}

ProcessTree::~ProcessTree() = default;

void ProcessTree::start() {
    m_process.start();
}

void ProcessTree::kill() {
    if (m_process.processId() > 0)
        ::kill(-pid_t(m_process.processId()), SIGKILL);
    m_process.kill();
    m_process.waitForFinished(killedWithinMs);
}

} // namespace platform
