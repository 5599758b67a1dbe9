#pragma once

#include "viewer/document/items.h"

#include <vector>

/// Where a page comes from.
struct PagePlace {
    int report = 0;
    int section = -1;  ///< of a form: the page section
    int row = 0;       ///< the first record on it
    int rowEnd = 0;    ///< behind the last
    bool first = true; ///< of its report
};

/// How a list runs over its sheets: which records stand together and which group headings before each.
class ListFlow {
public:
    ListFlow(const Layout &layout, const Items &items, QSizeF sheet);

    /// The first record of every sheet; one sheet when there are no records.
    std::vector<int> sheets() const;
    /// The group sections that stand before a record.
    std::vector<const Section *> groupsBefore(int row, bool firstOnSheet) const;

private:
    /// The outermost group whose value changes at a record; the number of groups when none does.
    size_t changedGroup(int row) const;
    double heightOf(int row, bool firstOnSheet, size_t changed) const;
    bool isShown(size_t group, int row, bool firstOnSheet, size_t changed) const;

    const Items &m_items;
    std::vector<const Section *> m_groups;
    double m_detail = 0;             ///< mm, of a record
    double m_firstRoom, m_otherRoom; ///< mm, for records on the first sheet and on the others
};

/// The pages of all reports. Forms are counted by a multiplication; for lists the first record of every sheet
/// is kept.
class Pages {
public:
    explicit Pages(const std::vector<Report> &reports);

    int count() const { return m_count; }
    PagePlace at(int page) const;
    /// The paper of a report as it lies.
    static QSizeF sheetSize(const Report &report);

private:
    struct ReportPages {
        int first = 0; ///< page
        int count = 0;
        int once = 0;            ///< page sections of a form that are not repeated
        int sections = 0;        ///< page sections of a form; 0 for a list
        std::vector<int> sheets; ///< of a list: the first record of each
        int records = 0;
    };

    static ReportPages pagesOf(const Report &report);

    std::vector<ReportPages> m_reports;
    int m_count = 0;
};
