#include "viewer/document/items.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The source whose records are printed; null when there is none.
const ReportSource *printedSource(const Report &report) {
    const auto named =
        std::find_if(report.sources.begin(), report.sources.end(), [&report](const ReportSource &source) {
            return source.name == report.layout->dataName;
        });
    if (named != report.sources.end())
        return &*named;
    return report.sources.empty() ? nullptr : &report.sources.front();
}

} // namespace

Items::Items(const Report &report) : m_hasSources(!report.sources.empty()) {
    const QString &wanted = report.layout->dataName;
    if (const ReportSource *source = printedSource(report)) {
        m_records = source->table;
        if (!wanted.isEmpty() && source->name != wanted)
            m_missing.append(u"データ「%1」"_s.arg(wanted));
    }
    for (const QString &item : report.layout->items()) {
        if (const auto origin = find(report, item))
            m_origins.insert(item, *origin);
    }
    for (const QString &item : report.layout->neededItems())
        if (!m_origins.contains(item))
            m_missing.append(u"項目「%1」"_s.arg(item));
}

std::optional<Items::Origin> Items::find(const Report &report, const QString &item) const {
    if (item == "#page"_L1)
        return Origin{Kind::Page, -1, {}};
    if (item == "#pages"_L1)
        return Origin{Kind::Pages, -1, {}};
    if (item == "#record"_L1)
        return Origin{Kind::Record, -1, {}};
    if (item == "#today"_L1)
        return Origin{Kind::Today, -1, {}};
    for (const ItemValue &value : report.values)
        if (value.name == item)
            return Origin{Kind::Text, -1, value.value};
    return findInSources(report, item);
}

std::optional<Items::Origin> Items::findInSources(const Report &report, const QString &item) const {
    if (const int column = m_records ? m_records->column(item) : -1; column >= 0)
        return Origin{Kind::Column, column, {}};
    for (const ReportSource &source : report.sources) {
        if (!source.table)
            continue;
        const bool named = item.startsWith(source.name + u'.');
        const int column = source.table->column(named ? item.mid(source.name.size() + 1) : item);
        if (column < 0)
            continue;
        if (source.table == m_records)
            return Origin{Kind::Column, column, {}};
        return Origin{Kind::Text, -1, source.table->value(0, column)};
    }
    return {};
}

int Items::recordCount() const {
    if (!m_hasSources)
        return 1;
    return m_records ? m_records->rowCount() : 0;
}

RecordValues::RecordValues(const Items &items, int row, const PageFacts &facts)
    : m_items(items), m_row(row), m_facts(facts) {
    if (items.records())
        m_record = items.records()->record(row);
}

QString RecordValues::operator()(const QString &item) const {
    const auto origin = m_items.m_origins.constFind(item);
    if (origin == m_items.m_origins.constEnd())
        return {};
    switch (origin->kind) {
    case Items::Kind::Text:
        return origin->text;
    case Items::Kind::Column:
        return m_record.value(origin->column);
    case Items::Kind::Page:
        return QString::number(m_facts.page);
    case Items::Kind::Pages:
        return QString::number(m_facts.pages);
    case Items::Kind::Record:
        return QString::number(m_row + 1);
    case Items::Kind::Today:
        return m_facts.today.toString(u"yyyy/MM/dd");
    }
    return {};
}

bool holds(const ShowWhen &when, const RecordValues &values) {
    const QString value = values(when.item);
    if (when.values.isEmpty())
        return value.isEmpty() == when.inverted;
    return when.values.contains(value) != when.inverted;
}
