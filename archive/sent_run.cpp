#include "archive/sent_run.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/messages.h"
#include "app/base/settings.h"
#include "print/engine/engine_programs.h"
#include "viewer/command/job_document.h"
#include "viewer/finished/document_file.h"
#include "viewer/output/pdf_name.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The finished document that a command names without data; empty where it is none.
QByteArray finishedBytes(const ReportOrder &report, const QString &folder) {
    QFile file(jobPath(folder, report.layout));
    return report.sources.empty() && report.values.empty() && file.open(QIODevice::ReadOnly) ? file.readAll()
                                                                                             : QByteArray();
}

/// What a command file shows, as finished documents: those that it names, else the one that the image builder
/// would make of it.
Result<std::vector<QByteArray>> documentsOf(const QString &commandFile) {
    Problem problem;
    const std::optional<Job> job = loadJob(commandFile, &problem);
    if (!job)
        return Failure{problem.sentence()};
    const QString folder = QFileInfo(commandFile).absolutePath();
    std::vector<QByteArray> documents;
    for (const ReportOrder &report : job->reports)
        if (QByteArray bytes = finishedBytes(report, folder); isDocumentFile(bytes))
            documents.push_back(std::move(bytes));
    if (documents.size() == job->reports.size())
        return documents;
    const std::optional<Document> document = loadDocument(*job, folder, &problem);
    return document ? Result(std::vector{documentFileBytes({*document, {}})}) : Failure{problem.sentence()};
}

QString unkept(const QString &why) {
    return why.isEmpty() ? QString() : u"　保管なし：%1"_s.arg(QString(why).replace(u"\r\n"_s, u"　"_s));
}

} // namespace

SentRun::SentRun(const Environment &environment, cT_ADODB &db, QString kind, std::chrono::milliseconds limit)
    : m_environment(environment),
      m_db(db),
      m_kind(std::move(kind)),
      m_limit(limit),
      m_archive(environment.folders) {}

bool SentRun::begin() {
    if (!m_begun) {
        m_begun = true;
        Result<std::optional<Batch>> batch = Batch::begin(m_db, m_environment.branch, m_kind);
        m_trouble = batch.reason();
        if (batch)
            m_batch = std::move(*batch);
    }
    return m_batch.has_value();
}

Operation SentRun::operation() {
    begin();
    return operationOf(m_batch, m_kind);
}

// Pages of another engine could be shown by nobody but it.
void SentRun::read(const QString &commandFile) {
    if (!isOwnViewer(m_environment))
        return;
    Result<std::vector<QByteArray>> documents = documentsOf(commandFile);
    m_read = documents ? std::move(*documents) : std::vector<QByteArray>();
    m_unread = documents ? QStringList() : QStringList(documents.reason());
}

void SentRun::handed() {
    if (!begin())
        return;
    for (const QString &why : std::exchange(m_unread, {}))
        m_kept.emplace_back([kept = Kept{.title = m_kind, .why = why}] { return kept; });
    for (const QByteArray &content : std::exchange(m_read, {}))
        keep({}, content);
}

void SentRun::addMail(const QString &to, const QByteArray &message) {
    if (begin())
        keep(to, message);
}

/// @param title empty: as the document says
void SentRun::keep(const QString &title, const QByteArray &content) {
    m_kept.emplace_back([title, content, kind = m_kind, archive = m_archive] {
        Kept kept{title, 0};
        Problem problem;
        if (isDocumentFile(content)) {
            const std::optional<FinishedDocument> finished = parseDocumentFile(content, kind, &problem);
            const Document document = finished ? finished->document : Document();
            const QString common = documentKind(document);
            kept = {(common.isEmpty() ? kind : common) + u'　' + documentSpan(document),
                    document.pageCount()};
        }
        const Result<> stored = archive.store(content);
        kept.why = stored.reason();
        if (stored)
            kept.name = Archive::nameOf(content);
        return kept;
    });
}

QString SentRun::finish(qint64 rows, qint64 documents) {
    if (!m_batch)
        return unkept(m_trouble);
    const auto end = std::chrono::steady_clock::now() + m_limit;
    qint64 pages = 0;
    QString why;
    for (const Apart<Kept> &work : std::exchange(m_kept, {})) {
        const Kept kept = work.resultBy(end).value_or(Kept{
            .title = m_kind, .why = u"保管フォルダ「%1」から応答がありません。"_s.arg(m_archive.folder())});
        const Result<> written = m_batch->addDocument(kept.title, kept.pages, kept.name);
        pages += kept.pages;
        if (why.isEmpty())
            why = kept.why.isEmpty() ? written.reason() : kept.why;
    }
    if (const Result<> ended = m_batch->finish(rows, documents, pages); !ended && why.isEmpty())
        why = ended.reason();
    const int months = Settings(m_environment.folders).number(Setting::保管月数);
    Apart<int>(
        [archive = m_archive, months, now = m_environment.clock.now()] { return archive.tidy(months, now); });
    return unkept(why);
}

void noteUnkept(Messages &messages, const QString &unkept) {
    if (!unkept.isEmpty())
        messages.note(unkept.trimmed());
}
