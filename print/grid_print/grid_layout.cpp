#include "print/grid_print/grid_layout.h"

#include "app/base/text.h"
#include "print/engine/engine_text.h"

#include <QXmlStreamWriter>
#include <algorithm>
#include <numeric>

using namespace Qt::Literals::StringLiterals;

namespace {

// Millimetres.
constexpr double sheetWidth = 277; // A4 landscape between its margins
constexpr double padding = 0.7;    // of a cell, at each side
constexpr double point = 25.4 / 72;
constexpr double titleHeight = 9;
constexpr double noteHeight = 4.5;
constexpr double headingHeight = 8;

constexpr double sizes[] = {9, 8.5, 8, 7.5, 7, 6.5};
constexpr double bandSize = 7;
constexpr double widestStretch = 2; // of a table that is narrower than the sheet

const QString bandItem = u"帯"_s;

QString columnItem(size_t place) {
    return u"列%1"_s.arg(place + 1);
}

/// Full-width characters that a column needs; what is longer is set smaller. Long headings take two lines.
double charactersOf(const GridTable &table, size_t column) {
    constexpr double fewest = 2, most = 16, oneLine = 4;
    const auto characters = [](const QString &text) { return double(byteLength932(text)) / 2; };
    const double heading = characters(table.columns[column].heading);
    double widest = heading <= oneLine ? heading : std::max(oneLine, heading / 2 + 0.5);
    for (const QStringList &row : table.rows)
        widest = std::max(widest, characters(row[qsizetype(column)]));
    return std::clamp(widest, fewest, most);
}

std::vector<double> widthsAt(double size, const std::vector<double> &characters) {
    std::vector<double> widths;
    for (const double wanted : characters)
        widths.push_back(wanted * size * point + 2 * padding);
    return widths;
}

double sum(const std::vector<double> &widths) {
    return std::accumulate(widths.begin(), widths.end(), 0.0);
}

/// Columns from `next` on, as many as a sheet holds, at least one; `next` goes behind them.
GridBand takeBand(const std::vector<double> &widths, const std::vector<int> &keys, size_t &next) {
    GridBand band;
    double used = 0;
    const auto take = [&](int column) {
        band.columns.push_back(column);
        band.widths.push_back(widths[size_t(column)]);
        used += widths[size_t(column)];
    };
    if (next > 0)
        std::ranges::for_each(keys, take);
    const size_t first = next;
    for (; next < widths.size(); ++next) {
        if (std::ranges::find(band.columns, int(next)) != band.columns.end())
            continue;
        if (next > first && used + widths[next] > sheetWidth)
            break;
        take(int(next));
    }
    return band;
}

void stretch(GridBand &band) {
    const double factor = std::min(widestStretch, sheetWidth / sum(band.widths));
    for (double &width : band.widths)
        width *= factor;
}

/// Writes the elements of a layout.
class LayoutWriter {
public:
    LayoutWriter(const GridDocument &document, const GridPlan &plan)
        : m_document(document), m_plan(plan), m_xml(&m_bytes) {}

    QByteArray write() {
        m_xml.setAutoFormatting(true);
        m_xml.writeStartDocument();
        open(u"layout"_s, {{u"version"_s, u"1"_s},
                           {u"title"_s, engineText(m_document.title)},
                           {u"paper"_s, u"A4"_s},
                           {u"orientation"_s, u"landscape"_s},
                           {u"margins"_s, u"10 10 8 10"_s},
                           {u"font"_s, u"ゴシック"_s},
                           {u"data"_s, gridDataName()}});
        writeHead();
        writeHeadings();
        writeDetail();
        m_xml.writeEndDocument();
        return m_bytes;
    }

private:
    using Attributes = QList<std::pair<QString, QString>>;

    static QString mm(double length) { return QString::number(length, 'f', 2); }
    static Attributes box(double x, double y, double w, double h) {
        return {{u"x"_s, mm(x)}, {u"y"_s, mm(y)}, {u"w"_s, mm(w)}, {u"h"_s, mm(h)}};
    }
    /// A user's text among the layout's own.
    static QString literal(const QString &text) { return engineText(text).replace(u'{', u"{{"_s); }

    void open(const QString &name, const Attributes &attributes) {
        m_xml.writeStartElement(name);
        for (const auto &[key, value] : attributes)
            m_xml.writeAttribute(key, value);
    }
    void text(Attributes attributes, double size, const Attributes &more, const QString &content) {
        attributes += {{u"size"_s, QString::number(size)}, {u"shrink"_s, u"yes"_s}};
        open(u"text"_s, attributes + more);
        m_xml.writeCharacters(content);
        m_xml.writeEndElement();
    }
    void rect(Attributes attributes, const Attributes &more) {
        open(u"rect"_s, attributes + more);
        m_xml.writeEndElement();
    }

    void writeHead() {
        const double notes = noteHeight * double(m_document.notes.size());
        open(u"head"_s, {{u"height"_s, mm(titleHeight + notes + 1)}});
        text(box(0, 0, 180, titleHeight - 1), 14, {{u"bold"_s, u"yes"_s}}, literal(m_document.title));
        const QString band = m_plan.bands.size() == 1
                                 ? QString()
                                 : u"横 {%1} ／ %2　"_s.arg(bandItem).arg(m_plan.bands.size());
        text(box(180, 0, sheetWidth - 180, titleHeight - 1), 9, {{u"align"_s, u"right"_s}},
             band + u"{#today} 作成　{#page} / {#pages}"_s);
        double y = titleHeight - 0.5;
        for (const QString &note : m_document.notes) {
            text(box(0, y, sheetWidth, noteHeight), 9, {}, literal(note));
            y += noteHeight;
        }
        m_xml.writeEndElement();
    }

    /// Calls work(band's condition, column, its place in the band, left edge, width) for each cell.
    template <class Work> void forEachCell(Work work) const {
        for (size_t i = 0; i < m_plan.bands.size(); ++i) {
            const GridBand &band = m_plan.bands[i];
            const Attributes when{{u"when"_s, bandItem}, {u"equals"_s, QString::number(i + 1)}};
            double x = 0;
            for (size_t place = 0; place < band.columns.size(); ++place) {
                work(when, size_t(band.columns[place]), place, x, band.widths[place]);
                x += band.widths[place];
            }
        }
    }

    void writeHeadings() {
        open(u"group"_s, {{u"by"_s, bandItem}, {u"height"_s, mm(headingHeight)}, {u"new-page"_s, u"yes"_s}});
        forEachCell([&](const Attributes &when, size_t column, size_t, double x, double width) {
            rect(box(x, 0, width, headingHeight), Attributes{{u"fill"_s, u"#e8e8e8"_s}} + when);
            text(box(x + 0.3, 0, width - 0.6, headingHeight), m_plan.size,
                 Attributes{{u"align"_s, u"center"_s}, {u"wrap"_s, u"yes"_s}, {u"line-height"_s, u"1.1"_s}} +
                     when,
                 literal(m_document.table.columns[column].heading));
        });
        m_xml.writeEndElement();
    }

    void writeDetail() {
        const double height = m_plan.size * point * 1.9;
        open(u"detail"_s, {{u"height"_s, mm(height)}});
        forEachCell([&](const Attributes &when, size_t column, size_t place, double x, double width) {
            rect(box(x, 0, width, height), Attributes{{u"width"_s, u"0.1"_s}} + when);
            const bool right = m_document.table.columns[column].right;
            text(box(x + padding, 0.35, width - 2 * padding, height - 0.7), m_plan.size,
                 Attributes{{u"align"_s, right ? u"right"_s : u"left"_s},
                            {u"wrap"_s, u"yes"_s},
                            {u"line-height"_s, u"1"_s}} +
                     when,
                 u"{%1}"_s.arg(columnItem(place)));
        });
        m_xml.writeEndElement();
    }

    const GridDocument &m_document;
    const GridPlan &m_plan;
    QByteArray m_bytes;
    QXmlStreamWriter m_xml;
};

} // namespace

GridPlan planGrid(const GridDocument &document) {
    std::vector<double> characters;
    for (size_t column = 0; column < document.table.columns.size(); ++column)
        characters.push_back(charactersOf(document.table, column));
    const auto *size = std::ranges::find_if(
        sizes, [&](double points) { return sum(widthsAt(points, characters)) <= sheetWidth; });
    GridPlan plan;
    plan.size = size != std::end(sizes) ? *size : bandSize;
    const std::vector<double> widths = widthsAt(plan.size, characters);
    for (size_t next = 0; next < widths.size();)
        plan.bands.push_back(takeBand(widths, document.keys, next));
    std::ranges::for_each(plan.bands, stretch);
    return plan;
}

QByteArray gridLayout(const GridDocument &document, const GridPlan &plan) {
    return LayoutWriter(document, plan).write();
}

QString gridDataName() {
    return u"一覧データ"_s;
}

DataFile gridData(const GridTable &table, const GridPlan &plan) {
    size_t most = 0;
    for (const GridBand &band : plan.bands)
        most = std::max(most, band.columns.size());
    QStringList header{bandItem};
    for (size_t place = 0; place < most; ++place)
        header += columnItem(place);
    DataFile file(header);
    for (size_t i = 0; i < plan.bands.size(); ++i)
        for (const QStringList &row : table.rows) {
            std::vector<DataValue> record{qint64(i + 1)};
            for (const int column : plan.bands[i].columns)
                record.emplace_back(row[column]);
            record.resize(most + 1, DataValue(QString()));
            file.add(record);
        }
    return file;
}
