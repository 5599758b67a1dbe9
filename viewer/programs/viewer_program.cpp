#include "viewer/programs/viewer_program.h"

#include "app/base/job_ticket.h"
#include "app/base/platform/desktop.h"
#include "app/desktop/message_form.h"
#include "viewer/command/job_document.h"
#include "viewer/output/pdf.h"
#include "viewer/programs/document_wait.h"
#include "viewer/programs/program_arguments.h"
#include "viewer/window/output_dialogs.h"
#include "viewer/window/viewer_form.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QProgressDialog>
#include <QThread>
#include <QTimer>
#include <QUrl>
#include <cstdio>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto usualWait = 60s;
constexpr auto lookAgain = 100ms;
constexpr int failed = 1;
constexpr int wrongUsage = 2;

/// Shown while a finished document is being built.
class WaitWindow {
public:
    explicit WaitWindow(const QString &path)
        : m_dialog(
              u"文書を作成しています。しばらくお待ちください。\n%1"_s.arg(QDir::toNativeSeparators(path)),
              u"中止(&C)"_s, 0, 0) {
        m_dialog.setWindowTitle(u"帳票表示"_s);
        m_dialog.setMinimumDuration(500);
        m_dialog.setValue(0);
    }

    bool pause() {
        QEventLoop loop;
        QTimer::singleShot(lookAgain, &loop, &QEventLoop::quit);
        QObject::connect(&m_dialog, &QProgressDialog::canceled, &loop, &QEventLoop::quit);
        loop.exec();
        m_dialog.setValue(0);
        return !m_dialog.wasCanceled();
    }

private:
    QProgressDialog m_dialog;
};

/// One run of the viewer.
class ViewerProgram {
public:
    explicit ViewerProgram(const ViewerRun &run) : m_run(run) {}

    int run() {
        const auto parsed = parseArguments(m_run.arguments, {u"/c"_s, u"/wait"_s});
        if (!parsed || !parsed->file.isEmpty() || parsed->option(u"/c"_s).isEmpty())
            return fail(u"使い方： wfrfv10 /c コマンドファイル [/wait 秒数]"_s, wrongUsage);
        if (const QString seconds = parsed->option(u"/wait"_s); !seconds.isEmpty())
            m_wait = std::chrono::seconds(qBound(0, seconds.toInt(), 3600));
        m_commandFile = jobPath(QDir::currentPath(), parsed->option(u"/c"_s));
        m_ticket = JobTicket::read(m_commandFile);
        if (isAnothersJob())
            return refuse();
        const int code = carryOut();
        m_ticket.wasRead(m_commandFile);
        m_ticket.hasEnded(m_commandFile);
        return code;
    }

private:
    /// Whether the command file was written anew, perhaps with a colleague's patients, before this viewer
    /// came to read it.
    bool isAnothersJob() const {
        const QString own = qEnvironmentVariable(JobTicket::variable);
        return !own.isEmpty() && JobTicket::read(m_commandFile).id != own;
    }

    /// The other job's ticket stays.
    int refuse() {
        m_ticket = {};
        return fail(u"帳票の表示に時間がかかっている間に、作業フォルダで次の印刷が始まりました。\n"
                    "表示されなかった帳票は、もう一度印刷してください。"_s);
    }

    int carryOut() {
        Problem problem;
        const std::optional<Job> job = loadJob(m_commandFile, &problem);
        if (!job)
            return fail(problem.sentence());
        if (!job->action)
            return fail(u"%1：表示や印刷の命令（ShowWindow、PrintOut、PrintOutFromDialog）がありません。"
                        "ファイルが途中で切れている可能性があります。"_s.arg(
                            QDir::toNativeSeparators(m_commandFile)));
        return load(*job);
    }

    int load(const Job &job) {
        if (isAnothersJob())
            return refuse();
        const QString folder = QFileInfo(m_commandFile).absolutePath();
        QString finished;
        if (job.reports.size() == 1 && job.reports[0].sources.empty()) {
            finished = jobPath(folder, job.reports[0].layout);
            const WaitResult waited = waitFor(finished);
            if (waited == WaitResult::Cancelled)
                return EXIT_SUCCESS;
            if (waited == WaitResult::TimedOut)
                return fail(u"文書「%1」が作成されません（%2秒待ちました）。もう一度印刷してください。"_s.arg(
                    QDir::toNativeSeparators(finished), QString::number(m_wait.count())));
        }
        const LoadedJob loaded = loadReports(job, folder);
        // A finished document has a name of its own; commands and data have not.
        if (finished.isEmpty() && isAnothersJob())
            return refuse();
        if (!loaded.failures.isEmpty())
            return fail(loaded.failures.join(u'\n'));
        m_pdfPath = pdfPathFor(m_commandFile, finished);
        const Document document = loaded.document();
        if (document.pageCount() == 0)
            return fail(u"データがないため、表示するページがありません。（%1）"_s.arg(
                QDir::toNativeSeparators(m_commandFile)));
        // What is printed at once counts as read when it has left: the next document must not overtake it.
        if (job.action != JobAction::Print)
            m_ticket.wasRead(m_commandFile);
        return carryOut(job, document, loaded.notes);
    }

    WaitResult waitFor(const QString &path) const {
        if (m_run.headless)
            return waitForDocument(path, m_wait, [] {
                QThread::msleep(lookAgain.count());
                return true;
            });
        std::unique_ptr<WaitWindow> window;
        return waitForDocument(path, m_wait, [&] {
            if (!window)
                window = std::make_unique<WaitWindow>(path);
            return window->pause();
        });
    }

    int carryOut(const Job &job, const Document &document, const QStringList &notes) {
        if (m_run.headless)
            return writePdfOnly(document, notes);
        const PrintAdjustment adjustment{job.offsetX, job.offsetY, job.zoom};
        if (job.action == JobAction::Show)
            return show(document, adjustment, notes);
        if (!notes.isEmpty())
            QtMessages().warn(u"次の帳票は作成できなかったため、印刷されません。\n"_s + notes.join(u'\n'),
                              u"帳票印刷"_s);
        if (!hasPrinter())
            return leavePdf(document, adjustment, notes);
        return codeOf(job.action == JobAction::Print ? printAtOnce(document, adjustment)
                                                     : printFromDialog(document, adjustment, -1, nullptr));
    }

    static int codeOf(OutputEnd end) { return end == OutputEnd::Failed ? failed : EXIT_SUCCESS; }

    int show(const Document &document, const PrintAdjustment &adjustment, const QStringList &notes) const {
        ViewerForm form(document, adjustment, notes);
        m_run.maximised ? form.showMaximized() : form.show();
        if (form.isMinimized()) // as the suite asks for, which has the engine in mind
            form.showNormal();
        return QApplication::exec();
    }

    int writePdfOnly(const Document &document, const QStringList &notes) const {
        for (const QString &note : notes + document.warnings())
            std::fprintf(stderr, "%s\n", qUtf8Printable(note));
        if (const Result<PagesEnd> written = writePdf(document, m_pdfPath); !written)
            return fail(written.reason());
        std::printf("%s\n", qUtf8Printable(QDir::toNativeSeparators(m_pdfPath)));
        return EXIT_SUCCESS;
    }

    /// Beside documents that were left before: somebody may still open one by its message.
    static QString freePath(const QString &path) {
        const QFileInfo file(path);
        QString free = path;
        for (int number = 2; QFileInfo::exists(free); ++number)
            free = file.dir().filePath(u"%1_%2.pdf"_s.arg(file.completeBaseName()).arg(number));
        return free;
    }

    /// Where there is no printer. A place that cannot be written is not the end of the document.
    int leavePdf(const Document &document, const PrintAdjustment &adjustment, const QStringList &notes) {
        m_pdfPath = freePath(m_pdfPath);
        OutputEnd saved = savePdf(document, m_pdfPath, FileUse::Private, nullptr);
        while (saved == OutputEnd::Failed) {
            const QString path = askPdfPath(u"PDFの保存先"_s, proposedPdfPath(document), nullptr);
            if (path.isEmpty())
                return failed;
            m_pdfPath = path;
            saved = savePdf(document, m_pdfPath, FileUse::Common, nullptr);
        }
        if (saved != OutputEnd::Done)
            return codeOf(saved);
        m_ticket.wasRead(m_commandFile);
        MessageForm form({u"プリンターが見つからないため、PDFを作成しました。\n%1"_s.arg(
                              QDir::toNativeSeparators(m_pdfPath)),
                          MessageIcon::Information, u"帳票印刷"_s, MessageButtons::YesNo, Answer::No},
                         nullptr);
        form.setCaption(Answer::Yes, u"開く(&O)"_s);
        form.setCaption(Answer::No, u"閉じる(&C)"_s);
        form.exec();
        if (form.answer() != Answer::Yes ||
            (platform::opensPdf() && QDesktopServices::openUrl(QUrl::fromLocalFile(m_pdfPath))))
            return EXIT_SUCCESS;
        return show(document, adjustment, notes);
    }

    int fail(const QString &text, int code = failed) const {
        std::fprintf(stderr, "%s\n", qUtf8Printable(text));
        if (!m_run.headless)
            QtMessages().fail(text, u"帳票表示"_s);
        return code;
    }

    ViewerRun m_run;
    QString m_commandFile;
    JobTicket m_ticket; ///< empty where the command file's writer waits for none
    QString m_pdfPath;
    std::chrono::seconds m_wait = usualWait;
};

} // namespace

int runViewer(const ViewerRun &run) {
    return ViewerProgram(run).run();
}

QString pdfPathFor(const QString &commandFile, const QString &finishedDocument) {
    const QString &named = finishedDocument.isEmpty() ? commandFile : finishedDocument;
    return QFileInfo(commandFile).dir().absoluteFilePath(QFileInfo(named).completeBaseName() + u".pdf"_s);
}
