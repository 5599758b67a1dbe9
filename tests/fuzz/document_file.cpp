#include "viewer/finished/document_content.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    Problem problem;
    // As a whole file, and behind the check sum that no random bytes would pass.
    if (!parseDocumentFile(bytes, QStringLiteral("tmp.wfd"), &problem) && problem.text.isEmpty())
        std::abort();
    const std::optional<FinishedDocument> finished =
        readDocumentContent(bytes, QStringLiteral("tmp.wfd"), &problem);
    if (!finished && problem.text.isEmpty())
        std::abort();
    // What is read can be written and read again.
    if (finished && !readDocumentContent(documentContent(*finished), QStringLiteral("tmp.wfd"), &problem))
        std::abort();
    return 0;
}
