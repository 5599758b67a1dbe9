#pragma once

#include "app/base/processes.h"

#include <QProcess>
#include <memory>

/// What the systems do differently with processes.
namespace platform {

/// Sees to it that a program that is started next holds none of this program's files.
void keepFilesToThisProcess();

/// Asks for the first window's looks, where the system has a way to.
void setWindowStyle(QProcess &process, WindowStyle style);

/// Whether a program with that number runs on this PC.
bool runs(qint64 id);

/// A program with all that it starts: they can be killed together, and end when this program is killed, since
/// nobody waits then for what they would write into files that others have by then.
class ProcessTree {
public:
    /// @param process not yet started
    explicit ProcessTree(QProcess &process);
    ~ProcessTree();
    ProcessTree(const ProcessTree &) = delete;
    ProcessTree &operator=(const ProcessTree &) = delete;

    void start();
    /// Ends the program and what it started, and takes it off the system's list.
    void kill();

private:
    struct Native;
    QProcess &m_process;
    std::unique_ptr<Native> m_native;
};

} // namespace platform
