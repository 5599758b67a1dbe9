#include "history/log_entries.h"

#include <QHash>
#include <algorithm>
#include <iterator>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString consents = u"RIYOUSHA_DOUI_REC"_s;

// Who wrote it and when stands beside the changes.
bool isAudit(const QString &column) {
    return column.compare("cPcName"_L1, Qt::CaseInsensitive) == 0 ||
           column.compare("tUpDateTime"_L1, Qt::CaseInsensitive) == 0;
}

LogEntry::Kind kindOf(qint64 kind) {
    return kind >= LogEntry::New && kind <= LogEntry::Deleted ? LogEntry::Kind(kind) : LogEntry::Unknown;
}

LogEntry entryOf(const LogRecord &record) {
    const std::optional<QList<CellChange>> cells = changesOf(record.changes);
    LogEntry entry{record, kindOf(record.kind), {}, {}, cells.has_value()};
    if (cells)
        std::ranges::remove_copy_if(*cells, std::back_inserter(entry.changes), isAudit, &CellChange::column);
    return entry;
}

// Both list their columns in one order.
LogEntry moved(const LogEntry &gone, const LogEntry &come) {
    LogEntry entry = come;
    entry.kind = LogEntry::Moved;
    entry.keyBefore = gone.record.key;
    for (const CellChange &before : gone.changes) {
        const auto after = std::ranges::find(entry.changes, before.column, &CellChange::column);
        if (after == entry.changes.end())
            entry.changes.append(before);
        else if (after->after == before.before)
            entry.changes.erase(after);
        else
            after->before = before.before;
    }
    return entry;
}

/// Where one transaction leaves and makes consents of one patient.
struct Sides {
    QList<size_t> gone, come;

    bool isMove() const { return gone.size() == 1 && come.size() == 1; }
};

QString placeOf(const LogRecord &record) {
    return u"%1/%2/%3/%4"_s.arg(record.write)
        .arg(record.patient.iKyotenCd)
        .arg(record.patient.iKyotenEb)
        .arg(record.patient.nIDNo);
}

} // namespace

std::vector<LogEntry> entriesOf(const LogRecords &read) {
    std::vector<LogEntry> entries;
    QHash<QString, Sides> sides;
    for (const LogRecord &record : read.records) {
        LogEntry entry = entryOf(record);
        if (record.table == consents && entry.readable) {
            if (entry.kind == LogEntry::Deleted)
                sides[placeOf(record)].gone.append(entries.size());
            else if (entry.kind == LogEntry::New)
                sides[placeOf(record)].come.append(entries.size());
        }
        entries.push_back(std::move(entry));
    }
    std::vector<size_t> told;
    for (const Sides &side : std::as_const(sides))
        if (side.isMove()) {
            entries[side.come[0]] = moved(entries[side.gone[0]], entries[side.come[0]]);
            told.push_back(side.gone[0]);
        }
    std::ranges::sort(told, std::greater());
    for (const size_t at : told)
        entries.erase(entries.begin() + qsizetype(at));
    return entries;
}

std::vector<LogEntry> entriesOfRow(const std::vector<LogEntry> &entries, const ConsentRowKey &row) {
    std::vector<LogEntry> ofRow;
    QString key = logKey(row);
    for (const LogEntry &entry : entries) {
        if (entry.record.table != consents || entry.record.key != key)
            continue;
        ofRow.push_back(entry);
        if (entry.kind == LogEntry::Moved)
            key = entry.keyBefore;
    }
    return ofRow;
}
