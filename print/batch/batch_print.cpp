#include "print/batch/batch_print.h"

#include "app/base/environment.h"
#include "app/base/platform/files.h"
#include "print/batch/batch_documents.h"
#include "print/engine/command_file.h"
#include "print/engine/engine_programs.h"
#include "print/engine/image_builder.h"
#include "print/engine/viewer_job.h"
#include "print/engine/work_folder.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <algorithm>
#include <deque>
#include <optional>

using namespace Qt::Literals::StringLiterals;
using State = BatchChunk::State;

namespace {

/// Between two looks at the builder.
constexpr qint64 sliceMs = 20;

/// The viewer's command file. Chunks after the first have one with their number and the run's name, so that
/// none waits for a viewer that gives no sign of having read its own.
QString viewerCommands(int chunk, const QString &run) {
    return chunk == 1 ? u"cmdSetPrint.dat"_s
                      : u"cmdSetPrint%1-%2.dat"_s.arg(chunk, 4, 10, QChar(u'0')).arg(run);
}

/// How long a chunk waits for the viewer of the one before, which may take minutes to print. A viewer's
/// window tells little of the order in which paper comes.
std::chrono::seconds orderLimit(const BatchOrder &order) {
    return order.preview ? std::chrono::seconds(2) : std::chrono::minutes(5);
}

/// Whether an error text names a file; 1_x.csv is not named by 11_x.csv.
bool isNamed(const QString &errors, const QString &file) {
    for (qsizetype at = errors.indexOf(file); at >= 0; at = errors.indexOf(file, at + 1))
        if (at == 0 || !errors[at - 1].isLetterOrNumber())
            return true;
    return false;
}

State stateOf(BuilderEnd::Kind kind) {
    switch (kind) {
    case BuilderEnd::Built:
        return State::Done;
    case BuilderEnd::SomeLeftOut:
        return State::SomeFailed;
    case BuilderEnd::TimedOut:
        return State::BuilderHung;
    case BuilderEnd::Missing:
        return State::BuilderMissing;
    case BuilderEnd::Failed:
    case BuilderEnd::GivenUp:
        break;
    }
    return State::BuilderFailed;
}

/// One batch on its way.
class Run {
public:
    Run(Environment &environment, const BatchOrder &order, const BatchDocument &document,
        const BatchPrint::Progress &goOn)
        : m_environment(environment),
          m_order(order),
          m_document(document),
          m_goOn(goOn),
          m_work(engineWorkFolder(environment)),
          m_together(order.preview && isOwnViewer(environment)),
          m_files(environment),
          m_documents(m_work) {
        const bool oneChunk = order.preview && !m_together;
        m_result.asked = oneChunk ? std::min(document.count, BatchPrint::reportsInChunk) : document.count;
    }

    BatchResult print() {
        clearWorkFolder(m_environment);
        while (m_position < m_result.asked && !m_over) {
            if (!goOn()) {
                m_result.cancelled = true;
                break;
            }
            printChunk();
            m_done = m_position;
        }
        if (!m_built.documents.isEmpty())
            hand(m_result.chunks.back());
        return std::move(m_result);
    }

private:
    /// A report of the current chunk.
    struct Report {
        int position;
        QString subject;
        QString file; ///< name of its data file
    };

    /// Documents that wait for a viewer.
    struct Built {
        QStringList documents;
        std::vector<ViewerJob> jobs; ///< not a viewer's yet, but they go if this program is killed
        std::vector<int> positions;
    };

    void printChunk() {
        BatchChunk chunk;
        chunk.number = int(m_result.chunks.size()) + 1;
        CommandFile commands;
        chunk.state = gather(chunk, commands);
        if (chunk.state == State::Done && chunk.reports == 0)
            return; // every layout was missing
        if (chunk.state == State::Done)
            chunk.state = build(chunk, commands);
        if (m_result.cancelled)
            return;
        if (chunk.state == State::Done || chunk.state == State::SomeFailed)
            takeBuilt(chunk);
        m_over = chunk.endsBatch();
        m_result.chunks.push_back(std::move(chunk));
    }

    /// Takes the reports of the chunk into its commands.
    State gather(BatchChunk &chunk, CommandFile &commands) {
        m_inChunk.clear();
        while (m_position < m_result.asked && chunk.reports < BatchPrint::reportsInChunk) {
            if (m_ready.empty() && !prepare()) {
                chunk.reason = m_fault;
                return State::NotWritten;
            }
            const BatchReport report = std::move(m_ready.front());
            m_ready.pop_front();
            if (hasLayout(report))
                addBlock(commands, report, chunk);
            ++m_position;
        }
        return State::Done;
    }

    /// Writes the data of the report behind the prepared ones. False: there is none, or `m_fault` says why
    /// not.
    bool prepare() {
        const int position = m_position + int(m_ready.size());
        if (position >= m_result.asked || !m_fault.isEmpty())
            return false;
        Result<BatchReport> report = m_document.make(position, m_files);
        if (!report) {
            m_fault = report.reason();
            return false;
        }
        m_ready.push_back(std::move(*report));
        return true;
    }

    /// Builder and viewer leave time to write what the next chunk needs.
    void useTheWait() {
        if (!goOn())
            return;
        QElapsedTimer slice;
        slice.start();
        while (int(m_ready.size()) < BatchPrint::reportsInChunk && !slice.hasExpired(sliceMs))
            if (!prepare())
                return;
    }

    bool hasLayout(const BatchReport &report) {
        auto known = m_layouts.constFind(report.layout);
        if (known == m_layouts.constEnd())
            known = m_layouts.insert(report.layout, QFileInfo(report.layout).isFile());
        if (!known.value())
            m_result.missingLayouts += u"%1（%2）"_s.arg(report.subject, QFileInfo(report.layout).fileName());
        return known.value();
    }

    void addBlock(CommandFile &commands, const BatchReport &report, BatchChunk &chunk) {
        if (chunk.reports > 0)
            commands.add(u"AddReport"_s);
        ++chunk.reports;
        ++m_title;
        if (chunk.first.isEmpty())
            chunk.first = report.subject;
        chunk.last = report.subject;
        m_inChunk.push_back({m_position, report.subject, QFileInfo(report.dataFile).fileName()});
        commands.add(u"SetTitle,"_s + CommandFile::text(report.name + QString::number(m_title)));
        if (!report.imageItem.isEmpty())
            commands.add(u"SetImageField,"_s + CommandFile::text(report.imageItem));
        commands.add(u"SetDataText,"_s + report.dataName + u',' + commands.path(report.dataFile));
        commands.add(u"SetReport,"_s + commands.path(report.layout));
    }

    /// From the commands, whose name is given, to the builder's end no other program may use the folder. The
    /// document counts even where reports were left out of it.
    State build(BatchChunk &chunk, const CommandFile &commands) {
        const Result<WorkFolderLock> lock = WorkFolderLock::take(m_environment, [this] { return goOn(); });
        if (!lock) {
            m_over = m_result.cancelled = !m_wanted;
            chunk.reason = lock.reason();
            return State::FolderBusy;
        }
        const QString file = m_work + m_order.commandFile;
        platform::removeFile(file);
        const Result<> written = commands.write(file, writeFileInPlace);
        const Result<QString> document = written ? m_documents.next() : Failure{written.reason()};
        if (!document) {
            chunk.reason = document.reason();
            return State::NotWritten;
        }
        chunk.document = *document;
        m_building.emplace(m_environment, chunk.document);
        m_building->addTemporary(chunk.document);
        if (const Result<> announced = m_building->announce(); !announced) {
            chunk.reason = announced.reason();
            return State::NotWritten;
        }
        const BuilderEnd end =
            runImageBuilder(m_environment, chunk.document, file, m_order.builderTimeout, [this] {
                useTheWait();
                return true;
            });
        chunk.reason = end.reason;
        if (end.kind == BuilderEnd::SomeLeftOut)
            leaveOut(chunk);
        else if (end.kind != BuilderEnd::Built)
            m_building->drop();
        return stateOf(end.kind);
    }

    /// Takes those reports out of the chunk that the builder's errors name; all where they name none.
    void leaveOut(BatchChunk &chunk) {
        const auto named = [&](const Report &report) { return isNamed(chunk.reason, report.file); };
        const auto failed = std::ranges::any_of(m_inChunk, named)
                                ? std::ranges::stable_partition(m_inChunk, std::not_fn(named))
                                : std::ranges::subrange(m_inChunk);
        for (const Report &report : failed)
            chunk.failed += report.subject;
        m_inChunk.erase(failed.begin(), failed.end());
    }

    void takeBuilt(BatchChunk &chunk) {
        m_built.documents += chunk.document;
        m_built.jobs.push_back(std::move(*m_building));
        m_building.reset();
        for (const Report &report : m_inChunk)
            m_built.positions.push_back(report.position);
        if (!m_together)
            hand(chunk);
    }

    CommandFile showCommands() const {
        CommandFile commands;
        for (const QString &document : m_built.documents) {
            if (document != m_built.documents.front())
                commands.add(u"AddReport"_s);
            commands.add(u"FileName,"_s + commands.path(document));
        }
        commands.add(u"Title,"_s + CommandFile::text(u"セット印刷"_s));
        commands.add(m_order.paper == BatchPaper::Custom ? u"PrintPaper, #256"_s : u"PrintPaper, A4"_s);
        commands.add(m_order.preview ? u"ShowWindow,2"_s : u"PrintOut"_s);
        return commands;
    }

    /// Hands what was built to a viewer. @param chunk the last of it
    void hand(BatchChunk &chunk) {
        const int number = m_together ? 1 : chunk.number;
        const QString path = m_work + viewerCommands(number, m_files.run());
        ViewerJob job(m_environment, path, m_order.sent);
        for (const QString &document : std::as_const(m_built.documents))
            job.addTemporary(document);
        if (number > 1)
            job.addTemporary(path);
        // Each viewer is a process of its own: the next one's paper would come first.
        if (m_handed)
            m_handed->waitUntilTaken(orderLimit(m_order), [this] { useTheWait(); });
        const Result<WorkFolderLock> lock = WorkFolderLock::take(m_environment, [this] {
            useTheWait();
            return true;
        });
        job.waitUntilTaken(ViewerJob::readingLimit, [this] { useTheWait(); });
        const Result<> handed =
            lock ? job.hand(showCommands(), EngineProgram::Viewer, {u"/c"_s, path}, nullptr, writeFileInPlace)
                 : Failure{lock.reason()};
        for (ViewerJob &built : m_built.jobs)
            handed ? built.keepFiles() : built.drop();
        if (handed) {
            m_handed.emplace(job);
            std::ranges::copy(m_built.positions, std::back_inserter(m_result.handed));
        } else {
            chunk.reason = handed.reason();
            chunk.state = lock ? State::ViewerMissing : State::FolderBusy;
        }
        m_built = {};
    }

    /// A "no" that comes in the middle of a chunk holds for the next.
    bool goOn() {
        m_wanted = (!m_goOn || m_goOn(m_done, m_result.asked)) && m_wanted;
        return m_wanted;
    }

    Environment &m_environment;
    const BatchOrder &m_order;
    const BatchDocument &m_document;
    const BatchPrint::Progress &m_goOn;
    QString m_work;  ///< with its closing separator
    bool m_together; ///< one window shows all chunks
    PrintFiles m_files;
    BatchDocuments m_documents;
    BatchResult m_result;
    std::deque<BatchReport> m_ready; ///< their data are written; of the next chunk
    QString m_fault;                 ///< why no further data could be written
    std::vector<Report> m_inChunk;
    std::optional<ViewerJob> m_building; ///< of the current chunk's document
    Built m_built;
    std::optional<ViewerJob> m_handed; ///< of the chunk before
    QHash<QString, bool> m_layouts;    ///< a few serve all reports
    int m_position = 0;
    int m_done = 0; ///< in finished chunks
    int m_title = 0;
    bool m_wanted = true;
    bool m_over = false;
};

} // namespace

bool BatchResult::allPrinted() const {
    return !cancelled && reports() == asked &&
           std::all_of(chunks.begin(), chunks.end(),
                       [](const BatchChunk &chunk) { return chunk.state == State::Done; });
}

bool BatchResult::left(int position) const {
    return std::ranges::binary_search(handed, position);
}

BatchPrint::BatchPrint(Environment &environment, BatchOrder order)
    : m_environment(environment), m_order(std::move(order)) {}

QString BatchPrint::previewQuestion(const Environment &environment, int count) {
    if (count <= reportsInChunk || isOwnViewer(environment))
        return {};
    return u"%L1 件のうち、はじめの %2 件を表示します。すべてを出力するには「印刷」を選んでください。\r\n"
           "よろしいですか？"_s.arg(count)
               .arg(reportsInChunk);
}

BatchResult BatchPrint::run(const BatchDocument &document, const Progress &goOn) {
    return Run(m_environment, m_order, document, goOn).print();
}
