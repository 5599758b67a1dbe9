#include "viewer/document/document.h"

#include "viewer/document/sheet_builder.h"
#include "viewer/drawing/sheet_painter.h"

#include <QFileInfo>
#include <QSet>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype mostWarnings = 100;

/// Sentences, each once.
class Sentences {
public:
    void add(const QString &sentence) {
        if (m_seen.contains(sentence))
            return;
        m_seen.insert(sentence);
        m_all.append(sentence);
    }
    QStringList all() const {
        if (m_all.size() <= mostWarnings)
            return m_all;
        return m_all.first(mostWarnings) + QStringList(u"ほか%1件"_s.arg(m_all.size() - mostWarnings));
    }

private:
    QSet<QString> m_seen;
    QStringList m_all;
};

bool hasPicture(const Report &report, const QString &name) {
    const QString path = picturePath(report.folder, name);
    return report.pictures ? report.pictures->contains(path) : QFileInfo(path).isFile();
}

template <class Shape, class Take> void forEach(const Layout &layout, const Take &take) {
    for (const Section &section : layout.sections)
        for (const Element &element : section.elements)
            if (const auto *shape = std::get_if<Shape>(&element.shape))
                take(*shape);
}

/// The pictures that a report's records and layout name.
QStringList picturesOf(const Report &report, const Items &items) {
    QStringList names;
    forEach<ImageBox>(*report.layout, [&](const ImageBox &image) {
        if (image.item.isEmpty()) {
            names.append(image.file);
            return;
        }
        for (int row = 0; row < items.recordCount(); ++row)
            names.append(RecordValues(items, row, {})(image.item));
    });
    names.removeAll(QString());
    names.removeDuplicates();
    return names;
}

} // namespace

struct Document::Workings {
    explicit Workings(const std::vector<Report> &reports) : pages(reports), today(QDate::currentDate()) {}

    const Items &itemsOf(const std::vector<Report> &reports, int report) {
        if (report != itemsReport) {
            items.emplace(reports[size_t(report)]);
            itemsReport = report;
        }
        return *items;
    }

    Pages pages;
    Fonts fonts;
    Pictures pictures;
    QDate today;
    std::optional<Items> items; ///< of the report that was looked at last
    int itemsReport = -1;
};

Document::Document(std::vector<Report> reports, const QString &title)
    : m_title(title), m_reports(std::move(reports)), m_workings(std::make_shared<Workings>(m_reports)) {}

int Document::pageCount() const {
    return m_workings ? m_workings->pages.count() : 0;
}

QSizeF Document::pageSize(int page) const {
    return Pages::sheetSize(m_reports[size_t(m_workings->pages.at(page).report)]);
}

Sheet Document::sheet(int page) const {
    const PagePlace place = m_workings->pages.at(page);
    const Items &items = m_workings->itemsOf(m_reports, place.report);
    const PageFacts facts{page + 1, pageCount(), m_workings->today};
    return SheetBuilder(m_reports[size_t(place.report)], items, {m_workings->fonts, m_workings->pictures},
                        facts)
        .build(place);
}

void Document::paint(QPainter &painter, int page) const {
    paintSheet(painter, sheet(page));
}

std::vector<TextRun> Document::texts(int page) const {
    std::vector<TextRun> runs;
    for (const auto &item : sheet(page).items)
        if (const auto *text = std::get_if<SheetText>(&item))
            runs.push_back({text->area, text->text});
    return runs;
}

QStringList Document::warnings() const {
    Sentences sentences;
    for (size_t i = 0; i < m_reports.size(); ++i) {
        const Report &report = m_reports[i];
        const Items &items = m_workings->itemsOf(m_reports, int(i));
        for (const QString &missing : items.missing())
            sentences.add(u"%1がありません（%2）。"_s.arg(missing, report.layout->name));
        forEach<TextBox>(*report.layout, [&](const TextBox &box) {
            if (!m_workings->fonts.typeface(box.font, box.bold).isInstalled())
                sentences.add(u"フォント「%1」がないので、別のフォントを使います。"_s.arg(box.font));
        });
        for (const QString &name : picturesOf(report, items))
            if (!hasPicture(report, name))
                sentences.add(u"画像「%1」がありません。"_s.arg(name));
    }
    for (const QString &problem : m_workings ? m_workings->pictures.problems() : QStringList())
        sentences.add(problem);
    return sentences.all();
}
