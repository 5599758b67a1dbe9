// Measures how reports become PDF files and pages on the screen.
#include "benchmarks/bare_pages.h"
#include "benchmarks/figures.h"
#include "benchmarks/pdf_memory.h"
#include "benchmarks/report_sample.h"
#include "viewer/command/job_document.h"
#include "viewer/output/pdf.h"

#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <cstdio>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int forms = 1000;
constexpr int browserPages = 100;
constexpr int manyPages = 10'000;
constexpr int rounds = 5;

Document load(const QString &command) {
    Job job;
    Problem problem;
    std::optional<Document> document = loadCommandFile(command, &job, &problem);
    if (!document)
        stop(problem.sentence());
    return *std::move(document);
}

double bestOf(const std::function<void()> &work) {
    double best = millisecondsOf(work);
    for (int i = 1; i < rounds; ++i)
        best = std::min(best, millisecondsOf(work));
    return best;
}

void measureForms(const ReportSample &sample, const QString &folder, Figures &figures) {
    const QString pdf = folder + u"/forms.pdf"_s;
    const BarePages bare(load(sample.batchCommand()), forms);
    // Taken in turns, so that both see the same machine.
    double ours = 1e9, theirs = 1e9;
    for (int i = 0; i < rounds; ++i) {
        ours = std::min(ours, millisecondsOf([&] { toPdf(sample.batchCommand(), pdf); }));
        theirs = std::min(theirs, millisecondsOf([&] { bare.writePdf(folder + u"/bare.pdf"_s); }));
    }
    figures.compare("1,000 consent forms from data files to one PDF", ours,
                    "the same texts drawn with the toolkit's PDF writer", theirs, 2);
    std::printf("  %.1f MB, the bare texts %.1f MB\n", double(QFile(pdf).size()) / 1e6,
                double(QFile(folder + u"/bare.pdf"_s).size()) / 1e6);
}

/// How long the browser takes to print pages; 0 when it fails.
double browserTime(const QString &browser, const QByteArray &html, const QString &folder) {
    const QString page = folder + u"/pages.html"_s;
    const QString pdf = folder + u"/pages.pdf"_s;
    QFile file(page);
    if (!file.open(QIODevice::WriteOnly) || file.write(html) != html.size())
        stop(file.errorString());
    file.close();
    QFile::remove(pdf);
    const double time = millisecondsOf([&] {
        QProcess process;
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(browser, {u"--headless"_s, u"--no-sandbox"_s, u"--disable-gpu"_s,
                                u"--no-pdf-header-footer"_s, u"--user-data-dir="_s + folder + u"/browser"_s,
                                u"--print-to-pdf="_s + pdf, u"file://"_s + page});
        process.waitForFinished(120'000);
    });
    return QFile(pdf).size() > 0 ? time : 0;
}

void measureBrowser(const ReportSample &sample, const QString &folder, Figures &figures) {
    const QString browser = QStandardPaths::findExecutable(u"chromium"_s);
    if (browser.isEmpty()) {
        std::printf("There is no chromium here: printing from HTML is not compared.\n");
        return;
    }
    const Document document = load(sample.batchCommand());
    const double start = browserTime(browser, BarePages(document, 1).html(), folder);
    const double all = browserTime(browser, BarePages(document, browserPages).html(), folder);
    if (start <= 0 || all <= 0) {
        std::printf("chromium printed nothing: printing from HTML is not compared.\n");
        return;
    }
    const double ours = bestOf([&] { toPdf(sample.listCommand(browserPages), folder + u"/100.pdf"_s); });
    figures.compare("100 consent forms to one PDF", ours, "printed from HTML by chromium", all, 0.1);
    figures.note("of which chromium takes for one page", start);
}

void measureFirstPage(const ReportSample &sample, Figures &figures) {
    const auto show = [](const QString &command) {
        const Document document = load(command);
        QImage screen((document.pageSize(0) * 96 / 25.4).toSize(), QImage::Format_RGB32);
        screen.fill(Qt::white);
        QPainter painter(&screen);
        painter.scale(96 / 25.4, 96 / 25.4);
        document.paint(painter, 0);
    };
    const QString one = sample.listCommand(1), many = sample.listCommand(forms);
    show(one);
    double first = 1e9, ofMany = 1e9;
    for (int i = 0; i < 3 * rounds; ++i) {
        first = std::min(first, millisecondsOf([&] { show(one); }));
        ofMany = std::min(ofMany, millisecondsOf([&] { show(many); }));
    }
    figures.compare("load and paint the first of 1,000 pages", ofMany, "of one page", first, 1.5);
}

} // namespace

int main(int argc, char **argv) {
    QGuiApplication app(argc, argv);
    if (const std::optional<int> done = asPdfWriter(app.arguments()))
        return *done;
    const QTemporaryDir folder;
    const ReportSample sample(folder.path(), forms);
    Figures figures;
    measureForms(sample, folder.path(), figures);
    measureFirstPage(sample, figures);
    checkPdfMemory(figures, "10,000 pages to PDF", sample.listCommand(manyPages),
                   folder.filePath(u"many.pdf"_s));
    measureBrowser(sample, folder.path(), figures);
    return figures.exitCode();
}
