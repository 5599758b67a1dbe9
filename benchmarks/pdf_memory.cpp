#include "benchmarks/pdf_memory.h"

#include "benchmarks/figures.h"
#include "viewer/command/job_document.h"
#include "viewer/output/pdf.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <cstdio>
#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double allowed = 300; // MB

/// In kilobytes.
long peakMemory() {
#ifdef Q_OS_UNIX
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
#else
    return 0;
#endif
}

} // namespace

void toPdf(const QString &command, const QString &path) {
    Job job;
    Problem problem;
    const std::optional<Document> document = loadCommandFile(command, &job, &problem);
    if (!document)
        stop(problem.sentence());
    if (const Result<PagesEnd> written = writePdf(*document, path); !written)
        stop(written.reason());
}

void checkPdfMemory(Figures &figures, const char *name, const QString &command, const QString &path) {
    QProcess process;
    const double time = millisecondsOf([&] {
        process.start(QCoreApplication::applicationFilePath(), {u"--pdf"_s, command, path});
        if (!process.waitForFinished(300'000) || process.exitCode() != 0)
            stop(u"The PDF was not written."_s);
    });
    const double peak = process.readAllStandardOutput().trimmed().toDouble() / 1024;
    std::printf("%s: at most %.0f MB of memory (allowed %.0f MB), %.1f s, file %.1f MB\n", name, peak,
                allowed, time / 1000, double(QFile(path).size()) / 1e6);
#ifdef Q_OS_UNIX
    figures.check("  memory", peak > 0 && peak < allowed);
#endif
}

std::optional<int> asPdfWriter(const QStringList &arguments) {
    if (arguments.size() != 4 || arguments[1] != "--pdf"_L1)
        return {};
    toPdf(arguments[2], arguments[3]);
    std::printf("%ld\n", peakMemory());
    return 0;
}
