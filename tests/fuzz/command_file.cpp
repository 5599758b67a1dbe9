#include "viewer/command/command_file.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    Problem problem;
    const std::optional<Job> job = readCommandFile(bytes, QStringLiteral("WfdCom.dat"), &problem);
    // Either there is something to do, or a reason why not.
    if (job ? job->reports.empty() : problem.text.isEmpty() || problem.column < 0)
        std::abort();
    return 0;
}
