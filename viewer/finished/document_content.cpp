#include "viewer/finished/document_content.h"

#include "viewer/layout/layout_reader.h"

#include <QDataStream>
#include <QIODevice>
#include <set>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto streamVersion = QDataStream::Qt_6_4;
constexpr double largestPaper = 5000; // mm

/// Things that are stored once, in the order in which they were met.
template <typename Key> class Pool {
public:
    quint32 indexOf(const Key &key) {
        const auto found = m_index.constFind(key);
        if (found != m_index.cend())
            return *found;
        m_keys.push_back(key);
        return m_index[key] = quint32(m_keys.size() - 1);
    }
    const std::vector<Key> &keys() const { return m_keys; }

private:
    QHash<Key, quint32> m_index;
    std::vector<Key> m_keys;
};

void addValues(const Report &report, const QString &item, std::set<QString> *values) {
    for (const ItemValue &value : report.values)
        if (value.name == item)
            values->insert(value.value);
    for (const ReportSource &source : report.sources) {
        const QString prefix = source.name + u'.';
        const int column =
            source.table->column(item.startsWith(prefix) ? QStringView(item).sliced(prefix.size()) : item);
        for (int row = 0; column >= 0 && row < source.table->rowCount(); ++row)
            values->insert(source.table->value(row, column));
    }
}

/// The pictures that a report may show, as its layout and data name them.
std::set<QString> pictureNames(const Report &report) {
    std::set<QString> names;
    for (const Section &section : report.layout->sections)
        for (const Element &element : section.elements)
            if (const auto *image = std::get_if<ImageBox>(&element.shape)) {
                names.insert(image->file);
                if (!image->item.isEmpty())
                    addValues(report, image->item, &names);
            }
    names.erase(QString());
    return names;
}

class ContentWriter {
public:
    ContentWriter() : m_reports(&m_reportBytes, QIODevice::WriteOnly) { m_reports.setVersion(streamVersion); }

    void add(const Report &report) {
        m_reports << m_layouts.indexOf({report.layout->source, report.layout->name}) << report.title
                  << report.folder << qint32(report.repeatStart) << report.fallbackPaper;
        m_reports << quint32(report.sources.size());
        for (const ReportSource &source : report.sources)
            m_reports << source.name << m_tables.indexOf(source.table.get());
        m_reports << quint32(report.values.size());
        for (const ItemValue &value : report.values)
            m_reports << value.name << value.value;
        addPictures(report);
        ++m_count;
    }

    QByteArray content(const QString &title, const QStringList &notes) const {
        QByteArray bytes;
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out.setVersion(streamVersion);
        out << title << quint32(notes.size());
        for (const QString &note : notes)
            out << note;
        out << quint32(m_layouts.keys().size());
        for (const auto &[source, name] : m_layouts.keys())
            out << source << name;
        out << quint32(m_tables.keys().size());
        for (const DataTable *table : m_tables.keys())
            out << table->bytes() << table->format().separator << table->format().quote
                << table->format().header << table->format().utf8;
        out << quint32(m_pictures.keys().size());
        for (const QByteArray &picture : m_pictures.keys())
            out << picture;
        out << m_count;
        return bytes + m_reportBytes;
    }

private:
    void addPictures(const Report &report) {
        const std::set<QString> names = pictureNames(report);
        m_reports << quint32(names.size());
        for (const QString &name : names)
            m_reports << picturePath(report.folder, name) << m_pictures.indexOf(pictureBytes(report, name));
    }

    Pool<std::pair<QByteArray, QString>> m_layouts;
    Pool<const DataTable *> m_tables;
    Pool<QByteArray> m_pictures;
    QByteArray m_reportBytes;
    QDataStream m_reports;
    quint32 m_count = 0;
};

/// Reads without trust: a count is only believed as far as there are bytes.
class ContentReader {
public:
    ContentReader(const QByteArray &content, const QString &name, Problem *problem)
        : m_in(content), m_name(name), m_problem(problem) {
        m_in.setVersion(streamVersion);
    }

    std::optional<FinishedDocument> read() {
        FinishedDocument finished;
        QString title;
        m_in >> title;
        std::vector<Report> reports;
        const bool sound = forEach([&] { finished.notes.append(text()); }) &&
                           forEach([&] { readOneLayout(); }) && forEach([&] { readTable(); }) &&
                           forEach([&] { m_pictures.push_back(bytes()); }) &&
                           forEach([&] { reports.push_back(readReport()); });
        if (!sound || !m_in.atEnd()) {
            if (m_problem->text.isEmpty())
                *m_problem = {m_name, 0, 0, u"作成済み文書が壊れています。もう一度印刷してください。"_s};
            return std::nullopt;
        }
        finished.document = Document(std::move(reports), title);
        return finished;
    }

private:
    bool isSound() const { return !m_broken && m_in.status() == QDataStream::Ok; }

    template <typename Step> bool forEach(Step step) {
        quint32 count = 0;
        m_in >> count;
        for (; count > 0 && isSound(); --count)
            step();
        return isSound();
    }

    QString text() {
        QString value;
        m_in >> value;
        return value;
    }
    QByteArray bytes() {
        QByteArray value;
        m_in >> value;
        return value;
    }
    template <typename T> T one(const std::vector<T> &things) {
        quint32 index = 0;
        m_in >> index;
        if (isSound() && index < things.size())
            return things[index];
        m_broken = true;
        return {};
    }

    void readOneLayout() {
        const QByteArray source = bytes();
        const QString name = text();
        if (!isSound())
            return;
        std::optional<Layout> layout = readLayout(source, name, m_problem);
        m_broken = !layout;
        if (layout)
            m_layouts.push_back(std::make_shared<const Layout>(std::move(*layout)));
    }

    void readTable() {
        const QByteArray records = bytes();
        DataFormat format;
        m_in >> format.separator >> format.quote >> format.header >> format.utf8;
        if (!isSound())
            return;
        m_tables.push_back(DataTable::fromBytes(records, m_name, format, m_problem));
        m_broken = !m_tables.back();
    }

    Report readReport() {
        Report report;
        report.layout = one(m_layouts);
        qint32 repeatStart = 0;
        m_in >> report.title >> report.folder >> repeatStart >> report.fallbackPaper;
        report.repeatStart = std::max(0, repeatStart);
        m_broken = m_broken || !isPaper(report.fallbackPaper);
        forEach([&] {
            QString name = text();
            report.sources.push_back({name, one(m_tables)});
        });
        forEach([&] {
            QString name = text();
            report.values.push_back({name, text()});
        });
        auto pictures = std::make_shared<PictureStore>();
        forEach([&] {
            const QString path = text();
            pictures->insert(path, one(m_pictures));
        });
        report.pictures = pictures;
        return report;
    }

    static bool isPaper(QSizeF size) {
        return !size.isValid() || (size.width() <= largestPaper && size.height() <= largestPaper);
    }

    QDataStream m_in;
    QString m_name;
    Problem *m_problem;
    bool m_broken = false;
    std::vector<std::shared_ptr<const Layout>> m_layouts;
    std::vector<std::shared_ptr<const DataTable>> m_tables;
    std::vector<QByteArray> m_pictures;
};

} // namespace

QByteArray documentContent(const FinishedDocument &document) {
    ContentWriter writer;
    for (const Report &report : document.document.reports())
        writer.add(report);
    return writer.content(document.document.title(), document.notes);
}

std::optional<FinishedDocument> readDocumentContent(const QByteArray &content, const QString &name,
                                                    Problem *problem) {
    *problem = {};
    return ContentReader(content, name, problem).read();
}
