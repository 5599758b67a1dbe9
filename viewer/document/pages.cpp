#include "viewer/document/pages.h"

#include <algorithm>
#include <limits>

namespace {

constexpr double slack = 1e-6; // mm; heights are sums

} // namespace

ListFlow::ListFlow(const Layout &layout, const Items &items, QSizeF sheet) : m_items(items) {
    m_firstRoom = m_otherRoom = sheet.height() - layout.margins.top() - layout.margins.bottom();
    for (const Section &section : layout.sections) {
        if (section.kind == Section::Group)
            m_groups.push_back(&section);
        else if (section.kind == Section::Detail)
            m_detail += section.height;
        else if (section.first != Section::NotFirst)
            m_firstRoom -= section.height;
        if (section.kind == Section::Head || section.kind == Section::Foot)
            if (section.first != Section::OnlyFirst)
                m_otherRoom -= section.height;
    }
}

size_t ListFlow::changedGroup(int row) const {
    if (row == 0)
        return 0;
    const PageFacts facts;
    const RecordValues before(m_items, row - 1, facts), here(m_items, row, facts);
    size_t group = 0;
    while (group < m_groups.size() && before(m_groups[group]->by) == here(m_groups[group]->by))
        ++group;
    return group;
}

bool ListFlow::isShown(size_t group, int row, bool firstOnSheet, size_t changed) const {
    const Section &section = *m_groups[group];
    return (group >= changed || (firstOnSheet && section.repeated)) &&
           (!section.when || holds(*section.when, RecordValues(m_items, row, {})));
}

double ListFlow::heightOf(int row, bool firstOnSheet, size_t changed) const {
    double height = m_detail;
    for (size_t i = 0; i < m_groups.size(); ++i)
        if (isShown(i, row, firstOnSheet, changed))
            height += m_groups[i]->height;
    return height;
}

std::vector<int> ListFlow::sheets() const {
    std::vector<int> sheets{0};
    double used = 0;
    for (int row = 0; row < m_items.recordCount(); ++row) {
        const size_t changed = m_groups.empty() ? 0 : changedGroup(row);
        const bool turned = std::any_of(m_groups.begin() + std::ptrdiff_t(changed), m_groups.end(),
                                        [](const Section *group) { return group->newPage; });
        const double room = sheets.size() == 1 ? m_firstRoom : m_otherRoom;
        const bool firstOnSheet = row == sheets.back();
        // A sheet too small for a single record gets one all the same.
        if (!firstOnSheet && (turned || used + heightOf(row, false, changed) > room + slack)) {
            sheets.push_back(row);
            used = 0;
        }
        used += heightOf(row, row == sheets.back(), changed);
    }
    return sheets;
}

std::vector<const Section *> ListFlow::groupsBefore(int row, bool firstOnSheet) const {
    std::vector<const Section *> shown;
    if (m_groups.empty())
        return shown;
    const size_t changed = changedGroup(row);
    for (size_t i = 0; i < m_groups.size(); ++i)
        if (isShown(i, row, firstOnSheet, changed))
            shown.push_back(m_groups[i]);
    return shown;
}

QSizeF Pages::sheetSize(const Report &report) {
    const Layout &layout = *report.layout;
    if (layout.paperGiven)
        return layout.paper;
    const QSizeF upright = report.fallbackPaper.isEmpty() ? QSizeF(210, 297) : report.fallbackPaper;
    return layout.landscape ? upright.transposed() : upright;
}

Pages::ReportPages Pages::pagesOf(const Report &report) {
    ReportPages pages;
    const Items items(report);
    pages.records = items.recordCount();
    if (report.layout->isList()) {
        pages.sheets = ListFlow(*report.layout, items, sheetSize(report)).sheets();
        pages.count = int(pages.sheets.size());
        return pages;
    }
    pages.sections = int(report.layout->sections.size());
    pages.once = std::clamp(report.repeatStart - 1, 0, pages.sections);
    if (pages.records > 0) {
        const qint64 all = pages.once + qint64(pages.records) * (pages.sections - pages.once);
        pages.count = int(std::min<qint64>(all, std::numeric_limits<int>::max()));
    }
    return pages;
}

Pages::Pages(const std::vector<Report> &reports) {
    for (const Report &report : reports) {
        ReportPages pages = pagesOf(report);
        pages.first = m_count;
        pages.count = std::min(pages.count, std::numeric_limits<int>::max() - m_count);
        m_count += pages.count;
        m_reports.push_back(std::move(pages));
    }
}

PagePlace Pages::at(int page) const {
    const auto behind = std::upper_bound(m_reports.begin(), m_reports.end(), page,
                                         [](int p, const ReportPages &pages) { return p < pages.first; });
    const ReportPages &pages = *std::prev(behind);
    PagePlace place;
    place.report = int(std::prev(behind) - m_reports.begin());
    const int index = page - pages.first;
    place.first = index == 0;
    if (pages.sections == 0) {
        const auto sheet = size_t(index);
        place.row = pages.sheets[sheet];
        place.rowEnd = sheet + 1 < pages.sheets.size() ? pages.sheets[sheet + 1] : pages.records;
        return place;
    }
    const int repeated = pages.sections - pages.once;
    if (index < pages.once) {
        place.section = index;
    } else {
        place.row = (index - pages.once) / repeated;
        place.section = pages.once + (index - pages.once) % repeated;
    }
    place.rowEnd = place.row + 1;
    return place;
}
