#include "viewer/command/job_document.h"

#include "app/base/folders.h"
#include "viewer/finished/document_file.h"
#include "viewer/layout/layout_reader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Loads the reports of one job; a layout or data file that several of them name is read once.
class JobLoader {
public:
    JobLoader(const Job &job, const QString &folder) : m_job(job), m_folder(folder) {}

    LoadedJob load() {
        m_loaded.title = m_job.title;
        for (size_t i = 0; i < m_job.reports.size(); ++i) {
            Problem problem;
            if (loadReport(m_job.reports[i], &problem))
                continue;
            if (m_loaded.failures.isEmpty())
                m_loaded.first = problem;
            m_loaded.failures.append(nameOf(i) + problem.sentence());
        }
        return std::move(m_loaded);
    }

private:
    struct LayoutFile {
        std::shared_ptr<const Layout> layout;
        std::optional<FinishedDocument> finished;
        Problem problem; ///< when it is neither
    };

    /// With the data file, whose name tells the patient.
    QString nameOf(size_t i) const {
        if (m_job.reports.size() == 1)
            return {};
        const ReportOrder &order = m_job.reports[i];
        QString name = u"帳票%1"_s.arg(i + 1);
        if (!order.title.isEmpty())
            name += u"「%1」"_s.arg(order.title);
        if (!order.sources.empty())
            name += u"（%1）"_s.arg(QFileInfo(jobPath(m_folder, order.sources[0].path)).fileName());
        return name + u"："_s;
    }

    bool loadReport(const ReportOrder &order, Problem *problem) {
        const LayoutFile &file = layoutFile(jobPath(m_folder, order.layout));
        if (file.finished) {
            addFinished(*file.finished, order);
            return true;
        }
        if (!file.layout) {
            *problem = file.problem;
            return false;
        }
        Report report;
        report.layout = file.layout;
        report.title = order.title;
        report.folder = QFileInfo(jobPath(m_folder, order.layout)).path();
        report.values = order.values;
        report.repeatStart = m_job.repeatStart;
        report.fallbackPaper = m_job.paperSize();
        for (const SourceOrder &source : order.sources) {
            report.sources.push_back({source.name, table(source, problem)});
            if (!report.sources.back().table)
                return false;
        }
        if (m_loaded.title.isEmpty())
            m_loaded.title = titleOf(*file.layout);
        m_loaded.reports.push_back(std::move(report));
        return true;
    }

    static QString titleOf(const Layout &layout) {
        return layout.title.isEmpty() ? QFileInfo(layout.name).completeBaseName() : layout.title;
    }

    void addFinished(const FinishedDocument &finished, const ReportOrder &order) {
        for (Report report : finished.document.reports()) {
            report.values.insert(report.values.end(), order.values.begin(), order.values.end());
            m_loaded.reports.push_back(std::move(report));
        }
        m_loaded.notes += finished.notes;
        if (m_loaded.title.isEmpty())
            m_loaded.title = finished.document.title();
    }

    const LayoutFile &layoutFile(const QString &path) {
        const auto found = m_layouts.constFind(path);
        return found != m_layouts.cend() ? *found : *m_layouts.insert(path, readLayoutFile(path));
    }

    static LayoutFile readLayoutFile(const QString &path) {
        LayoutFile read;
        QFile file(path);
        const QString name = QDir::toNativeSeparators(path);
        if (!file.open(QIODevice::ReadOnly)) {
            read.problem = {name, 0, 0,
                            file.exists() ? u"レイアウトファイルを開けません。"_s + file.errorString()
                                          : u"レイアウトファイルがありません。"_s};
            return read;
        }
        const QByteArray bytes = file.readAll();
        if (isDocumentFile(bytes)) {
            read.finished = parseDocumentFile(bytes, name, &read.problem);
            if (read.finished && read.finished->document.reports().empty()) {
                read.problem = {name, 0, 0, read.finished->notes.join(u"\r\n"_s)};
                read.finished.reset();
            }
        } else if (std::optional<Layout> layout = readLayout(bytes, name, &read.problem)) {
            read.layout = std::make_shared<const Layout>(std::move(*layout));
        }
        return read;
    }

    std::shared_ptr<const DataTable> table(const SourceOrder &source, Problem *problem) {
        const DataFormat &format = source.format;
        const QString path = jobPath(m_folder, source.path);
        const QString key = QString(format.separator) + format.quote + (format.header ? u'1' : u'0') + path;
        std::shared_ptr<const DataTable> &kept = m_tables[key];
        if (!kept)
            kept = DataTable::open(path, format, problem);
        return kept;
    }

    const Job &m_job;
    QString m_folder;
    LoadedJob m_loaded;
    QHash<QString, LayoutFile> m_layouts;
    QHash<QString, std::shared_ptr<const DataTable>> m_tables;
};

} // namespace

QString jobPath(const QString &folder, const QString &name) {
    const QString path = picturePath(folder, name);
    // A drive's or server's folders ignore case themselves.
    return path.startsWith(u'/') && !path.startsWith(u"//") ? Folders::file(u"/"_s, path) : path;
}

LoadedJob loadReports(const Job &job, const QString &folder) {
    return JobLoader(job, folder).load();
}

std::optional<Document> loadDocument(const Job &job, const QString &folder, Problem *problem) {
    const LoadedJob loaded = loadReports(job, folder);
    if (loaded.failures.isEmpty())
        return loaded.document();
    *problem = loaded.first;
    return std::nullopt;
}

std::optional<Job> loadJob(const QString &path, Problem *problem) {
    QFile file(path);
    const QString name = QDir::toNativeSeparators(path);
    if (file.open(QIODevice::ReadOnly))
        return readCommandFile(file.readAll(), name, problem);
    *problem = {name, 0, 0, u"コマンドファイルを開けません。"_s + file.errorString()};
    return std::nullopt;
}

std::optional<Document> loadCommandFile(const QString &path, Job *job, Problem *problem) {
    const std::optional<Job> read = loadJob(path, problem);
    if (!read)
        return std::nullopt;
    *job = *read;
    return loadDocument(*job, QFileInfo(path).absolutePath(), problem);
}
