#include "history/watched_tables.h"

#include "db/tables/masters/caremane.h"
#include "db/tables/masters/corp_sub.h"
#include "db/tables/masters/doctor.h"
#include "db/tables/masters/sisetsu.h"
#include "db/tables/masters/soudan.h"
#include "db/tables/masters/staff.h"
#include "db/tables/patient/douikiroku.h"
#include "db/tables/patient/riyousha.h"
#include "db/tables/patient/riyousha_doui_rec.h"
#include "db/tables/patient/riyousha_sub.h"

#include <QHash>
#include <algorithm>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

template <class R> WatchedTable watched(bool ofPatient = false) {
    const TableText text = R::table().text();
    WatchedTable table{text.name, {}, {}, ofPatient};
    for (const ColumnText &column : text.columns) {
        if (column.use != ColumnUse::Joined)
            table.columns += column.name.toString();
        if (column.use == ColumnUse::Key)
            table.keys += column.name.toString();
    }
    return table;
}

/// Positions of a table's key columns.
struct KeyColumns {
    int branch = -1, subBranch = -1, patient = -1;
    std::vector<int> rest;

    explicit KeyColumns(const WatchedTable &table) {
        for (const QString &key : table.keys) {
            const auto position = int(table.columns.indexOf(key));
            if (key == u"iKyotenCd")
                branch = position;
            else if (key == u"iKyotenEb")
                subBranch = position;
            else if (table.ofPatient && key == u"nIDNo")
                patient = position;
            else
                rest.push_back(position);
        }
    }
};

RowChange changeOf(const WatchedTable &table, const KeyColumns &keys, const Recordset &rows, int row,
                   ChangeKind kind) {
    RowChange change{.table = table.name.toString(), .kind = kind};
    if (keys.branch >= 0)
        change.branch = {short(rows.number(row, keys.branch)), short(rows.number(row, keys.subBranch))};
    if (keys.patient >= 0)
        change.patient = qint32(rows.number(row, keys.patient));
    QStringList rest;
    for (const int column : keys.rest)
        rest += rows.text(row, column);
    change.key = rest.isEmpty() ? u""_s : rest.join(u'/');
    return change;
}

/// A text that is not null where the cell is not Null.
QString cellText(const Recordset &rows, int row, int column) {
    const QString text = rows.text(row, column);
    return text.isNull() && !rows.isNull(row, column) ? u""_s : text;
}

QString wholeKey(const KeyColumns &keys, const Recordset &rows, int row) {
    QString key;
    for (const int column : {keys.branch, keys.subBranch, keys.patient})
        if (column >= 0)
            key += rows.text(row, column) + u'/';
    for (const int column : keys.rest)
        key += rows.text(row, column) + u'/';
    return key;
}

} // namespace

QString WatchedTable::selectSql(const QString &where) const {
    return u"SELECT "_s + columns.join(u", ") + u" FROM "_s + name.toString() + u" WHERE "_s + where;
}

std::span<const WatchedTable> watchedTables() {
    static const std::array tables{watched<cD_RIYOUSHA_DOUI_REC>(true),
                                   watched<cD_RIYOUSHA>(true),
                                   watched<cD_RIYOUSHA_SUB>(true),
                                   watched<cD_DOUIKIROKU>(true),
                                   watched<cD_DOCTOR>(),
                                   watched<cD_SISETSU>(),
                                   watched<cD_CAREMANE>(),
                                   watched<cD_SOUDAN>(),
                                   watched<cD_STAFF>(),
                                   watched<cD_CORP_SUB>()};
    return tables;
}

const WatchedTable *watchedTable(QStringView name) {
    const auto found = std::ranges::find(watchedTables(), name, &WatchedTable::name);
    Q_ASSERT(found != watchedTables().end());
    return &*found;
}

QList<RowChange> rowChanges(const WatchedTable &table, const Recordset &before, const Recordset &after) {
    const KeyColumns keys(table);
    const auto columns = int(table.columns.size());
    QHash<QString, int> then;
    then.reserve(before.rowCount());
    for (int row = 0; row < before.rowCount(); ++row)
        then.insert(wholeKey(keys, before, row), row);
    QList<RowChange> changes;
    for (int row = 0; row < after.rowCount(); ++row) {
        const auto was = then.constFind(wholeKey(keys, after, row));
        const bool isNew = was == then.constEnd();
        const int old = isNew ? -1 : *was;
        QList<CellChange> cells;
        for (int column = 0; column < columns; ++column)
            if (isNew ? !after.isNull(row, column) : !Recordset::sameCell(before, old, after, row, column))
                cells.append({table.columns[column], isNew ? QString() : cellText(before, old, column),
                              cellText(after, row, column)});
        if (!isNew)
            then.erase(was);
        if (cells.isEmpty())
            continue;
        changes.append(changeOf(table, keys, after, row, isNew ? ChangeKind::New : ChangeKind::Changed));
        changes.back().cells = std::move(cells);
    }
    std::vector<int> gone(then.cbegin(), then.cend());
    std::ranges::sort(gone);
    for (const int row : gone) {
        changes.append(changeOf(table, keys, before, row, ChangeKind::Deleted));
        for (int column = 0; column < columns; ++column)
            if (!before.isNull(row, column))
                changes.back().cells.append({table.columns[column], cellText(before, row, column), {}});
    }
    return changes;
}
