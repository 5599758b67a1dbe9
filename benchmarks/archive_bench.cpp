// What keeping costs the print of 1,000 forms, and how soon their pages stand on the screen again.

#include "benchmarks/figures.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/messages.h"
#include "app/base/processes.h"
#include "archive/sent_documents.h"
#include "archive/sent_run.h"
#include "db/adodb.h"
#include "print/batch/batch_print.h"
#include "print/consent_form/form_files.h"
#include "sample/installation.h"
#include "viewer/command/job_document.h"
#include "viewer/window/page_view.h"
#include "viewer/window/viewer_form.h"

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <cstdio>

using namespace Qt::Literals::StringLiterals;

namespace {

const QDate day(2026, 11, 21);
constexpr int patients = 2000; ///< three of five belong to the branch
constexpr int wanted = 1000;
constexpr int repetitions = 5;

class NoMessages : public Messages {
public:
    Answer show(const Message &message) override { return message.defaultAnswer; }
};

/// The system's programs; of the viewer only what it would be started with is noted.
class NoViewer : public SystemProcesses {
public:
    bool start(const QString &, const QStringList &arguments, const QString &, qint64 *,
               WindowStyle) override {
        commands = arguments.back();
        return true;
    }
    QString commands;
};

/// Notes that a widget has been painted.
class PaintWatch : public QObject {
public:
    bool painted = false;

protected:
    bool eventFilter(QObject *, QEvent *event) override {
        painted = painted || event->type() == QEvent::Paint;
        return false;
    }
};

/// As the viewer does, from its command file to the painted page.
void openPages(const QString &commands, int pages) {
    Job job;
    Problem problem;
    const std::optional<Document> document = loadCommandFile(commands, &job, &problem);
    if (!document || document->pageCount() < pages)
        stop(u"The document has not the pages that it should have. "_s + problem.sentence());
    ViewerForm form(*document, {}, {});
    PaintWatch watch;
    form.findChild<PageView *>()->viewport()->installEventFilter(&watch);
    form.show();
    while (!watch.painted)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

/// A sample practice with its forms.
class Practice {
public:
    explicit Practice(const QString &root) : folders(root) {
        db.iInit(u"Provider=SQLite;Data Source="_s + root + u"/DATA/douisho.db"_s);
        ConsentFormOptions options{
            .branch = {1, 1}, .master = FormMaster::Practice, .oral = OralForms::OwnLayout};
        for (int number = 1; number <= wanted; ++number)
            options.patients.push_back(number);
        Result<GatheredForms> gathered = gatherConsentForms(db, options, day);
        if (!gathered)
            stop(gathered.reason());
        forms = std::move(gathered->forms);
    }

    /// The command file stays while this object lives, like a viewer's that is open.
    void print(bool preview, SentRun *run) {
        BatchOrder order;
        order.preview = preview;
        order.sent = run;
        const BatchResult result =
            BatchPrint(environment, order)
                .run({int(forms.size()),
                      [&](int position, PrintFiles &files) {
                          return makeFormReport(folders, forms[size_t(position)], files);
                      }},
                     {});
        if (!result.allPrinted())
            stop(result.chunks.empty() ? u"no chunk"_s : result.chunks.front().reason);
        if (run)
            if (const QString unkept = run->finish(result.reports(), result.reports()); !unkept.isEmpty())
                stop(unkept);
    }

    Folders folders;
    Clock clock;
    NoMessages messages;
    NoViewer processes;
    Environment environment{folders, clock, messages, processes, {1, 1}};
    cT_ADODB db;
    std::vector<ConsentForm> forms;
};

void measureKeeping(Figures &figures, Practice &practice) {
    std::vector<double> plain, kept;
    for (int i = 0; i <= repetitions; ++i) {
        plain.push_back(millisecondsOf([&] { practice.print(false, nullptr); }));
        kept.push_back(millisecondsOf([&] {
            SentRun run(practice.environment, practice.db, u"同意書印刷"_s);
            practice.print(false, &run);
        }));
        if (i == 0) { // warms the caches, and makes the tables
            plain.clear();
            kept.clear();
        }
    }
    figures.compare("printing 1,000 forms, kept", median(kept), "not kept", median(plain), 1.5);
}

void measureOpening(Figures &figures, Practice &practice) {
    SentRun run(practice.environment, practice.db, u"同意書印刷"_s);
    practice.print(true, &run);
    const QString made = practice.processes.commands;
    const Result<std::vector<SentDocument>> documents =
        readSentDocuments(practice.db, run.operation().batch.value_or(0));
    if (!documents || documents->empty())
        stop(documents.reason());
    const int pages = int(practice.forms.size());
    const Archive archive(practice.folders);
    std::vector<double> first, again;
    for (int i = 0; i <= repetitions; ++i) {
        first.push_back(millisecondsOf([&] { openPages(made, pages); }));
        again.push_back(millisecondsOf([&] {
            std::vector<QByteArray> contents;
            for (const SentDocument &document : *documents)
                contents.push_back(*keptContent(archive, document));
            if (const Result<> shown = showPages(practice.environment, contents, u"保管"_s); !shown)
                stop(shown.reason());
            openPages(practice.processes.commands, pages);
        }));
        if (i == 0) {
            first.clear();
            again.clear();
        }
    }
    figures.compare("first page of a kept batch of 1,000", median(again), "when it was made", median(first),
                    1.5);
    const Archive::Size size = archive.size();
    std::printf("%d documents kept, %.1f MB\n", size.documents, double(size.bytes) / (1 << 20));
}

} // namespace

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    const QTemporaryDir place;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, place.path());
    const QString root = place.filePath(u"installation"_s);
    const sample::SampleResult made =
        sample::makeInstallation({.folder = root,
                                  .day = day,
                                  .patients = patients,
                                  .programs = QCoreApplication::applicationDirPath()});
    if (made.outcome != sample::SampleOutcome::Made)
        stop(made.sentence);
    Figures figures;
    Practice practice(root);
    measureKeeping(figures, practice);
    measureOpening(figures, practice);
    return figures.exitCode();
}
