#pragma once

#include "viewer/document/document.h"

#include <QDate>
#include <QHash>

/// Where the value of each item of a report comes from, found out once.
class Items {
public:
    explicit Items(const Report &report);

    /// Records printed: those of the layout's source; 1, without values, for a report without sources.
    int recordCount() const;
    const DataTable *records() const { return m_records.get(); }
    /// Items that are no value of anything, and the layout's source when the report lacks it.
    const QStringList &missing() const { return m_missing; }

private:
    friend class RecordValues;
    enum class Kind { Text, Column, Page, Pages, Record, Today };
    struct Origin {
        Kind kind = Kind::Text;
        int column = -1;
        QString text;
    };

    std::optional<Origin> find(const Report &report, const QString &item) const;
    std::optional<Origin> findInSources(const Report &report, const QString &item) const;

    std::shared_ptr<const DataTable> m_records;
    bool m_hasSources;
    QHash<QString, Origin> m_origins;
    QStringList m_missing;
};

/// What the built-in items tell.
struct PageFacts {
    int page = 1;
    int pages = 1;
    QDate today;
};

/// The values of one record as a page shows them.
class RecordValues {
public:
    RecordValues(const Items &items, int row, const PageFacts &facts);

    QString operator()(const QString &item) const;

private:
    const Items &m_items;
    DataRecord m_record;
    int m_row;
    PageFacts m_facts;
};

/// Whether a condition holds.
bool holds(const ShowWhen &when, const RecordValues &values);
