#include "consent/batches/written_rows.h"

#include <QHash>
#include <QStringList>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Nothing where the record was written by hand and is of no use.
std::optional<ConsentRowKey> consentKey(const BatchRecord &record) {
    const QStringList parts = record.key.split(u'/');
    if (record.table != u"RIYOUSHA_DOUI_REC" || !record.cells || parts.size() != 3 ||
        record.kind < ChangeKind::New || record.kind > ChangeKind::Deleted)
        return {};
    bool dateRead = false, kindRead = false, ownRead = false;
    const ConsentRowKey key{record.patient, parts[0].toInt(&dateRead), parts[1].toShort(&kindRead),
                            parts[2].toInt(&ownRead)};
    return dateRead && kindRead && ownRead ? std::optional(key) : std::nullopt;
}

/// What stood in a column before is what its first record says.
void add(WrittenRow &row, const BatchRecord &record) {
    if (!consentKey(record))
        row.consent.reset();
    for (const CellChange &cell : record.cells.value_or(QList<CellChange>())) {
        const auto known = row.values.find(cell.column);
        if (known == row.values.end())
            row.values.insert(cell.column, {cell.before, cell.after});
        else
            known->after = cell.after;
    }
    row.isThere = record.kind != ChangeKind::Deleted;
    row.time = record.time;
}

bool isAsBefore(const WrittenRow &row) {
    return row.consent && !row.cameOrWent() &&
           (!row.isThere || std::ranges::all_of(row.values, [](const WrittenValue &value) {
               return isSameValue(value.before, value.after);
           }));
}

} // namespace

QString identityOf(const QString &table, const PatientKey &patient, const QString &key) {
    return u"%1/%2/%3/%4/%5"_s.arg(table)
        .arg(patient.iKyotenCd)
        .arg(patient.iKyotenEb)
        .arg(patient.nIDNo)
        .arg(key);
}

QString WrittenRow::identity() const {
    return identityOf(table, patient, key);
}

std::vector<WrittenRow> writtenRows(const std::vector<BatchRecord> &records) {
    std::vector<WrittenRow> rows;
    QHash<QString, size_t> places;
    for (const BatchRecord &record : records) {
        const QString identity = identityOf(record.table, record.patient, record.key);
        if (!places.contains(identity)) {
            places.insert(identity, rows.size());
            rows.push_back({.table = record.table,
                            .patient = record.patient,
                            .key = record.key,
                            .consent = consentKey(record),
                            .wasThere = record.kind != ChangeKind::New});
        }
        add(rows[places[identity]], record);
    }
    std::erase_if(rows, isAsBefore);
    return rows;
}
