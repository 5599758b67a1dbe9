#include "app/base/platform/processes.h"

#include "app/base/platform/native.h"

namespace platform {

namespace {

/// A killed program may stay stuck in the system, as on a lost network drive.
constexpr int killedWithinMs = 3000;

struct HandleCloser {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, HandleCloser>;

/// @param limit 0 or JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE
void setLimit(HANDLE job, DWORD limit) {
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = limit;
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
}

} // namespace

// A file is inherited here only where it was opened for that.
void keepFilesToThisProcess() {}

void setWindowStyle(QProcess &process, WindowStyle style) {
    if (style == WindowStyle::AsItLikes)
        return;
    // The system counts the styles as the engine does.
    process.setCreateProcessArgumentsModifier([style](QProcess::CreateProcessArguments *start) {
        start->startupInfo->dwFlags |= STARTF_USESHOWWINDOW;
        start->startupInfo->wShowWindow = WORD(style);
    });
}

bool runs(qint64 id) {
    if (id <= 0)
        return false;
    const Handle process(OpenProcess(SYNCHRONIZE, FALSE, DWORD(id)));
    if (!process)
        return GetLastError() == ERROR_ACCESS_DENIED;
    return WaitForSingleObject(process.get(), 0) == WAIT_TIMEOUT;
}

struct ProcessTree::Native {
    Handle job{CreateJobObjectW(nullptr, nullptr)};
};

ProcessTree::ProcessTree(QProcess &process) : m_process(process), m_native(new Native) {
    setLimit(m_native->job.get(), JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE);
}

// What outlives the program by its own wish may go on.
ProcessTree::~ProcessTree() {
    setLimit(m_native->job.get(), 0);
}

void ProcessTree::start() {
    m_process.start();
    const Handle program(
        OpenProcess(PROCESS_SET_QUOTA | PROCESS_TERMINATE, FALSE, DWORD(m_process.processId())));
    if (program)
        AssignProcessToJobObject(m_native->job.get(), program.get());
}

void ProcessTree::kill() {
    TerminateJobObject(m_native->job.get(), EXIT_FAILURE);
    m_process.kill();
    m_process.waitForFinished(killedWithinMs);
}

} // namespace platform
