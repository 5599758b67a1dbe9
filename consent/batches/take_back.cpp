#include "consent/batches/take_back.h"

#include "history/history_query.h"

#include <algorithm>
#include <iterator>

using namespace Qt::Literals::StringLiterals;

namespace {

QString identityOf(const ConsentRowKey &key) {
    return identityOf({}, key.patient, logKey(key));
}

ConsentRowKey keyOfRow(const Recordset &rows, int row) {
    const auto number = [&](QStringView column) { return rows.number(row, rows.column(column)); };
    return {{short(number(u"iKyotenCd")), short(number(u"iKyotenEb")), qint32(number(u"nIDNo"))},
            qint32(number(u"nDate")),
            short(number(u"iHenkeiFlg")),
            qint32(number(u"nHenkeiDouiDate"))};
}

bool isAsLeft(const WrittenRow &row, const StandingRows &standing, const StandingRows::Place &place) {
    qsizetype filled = 0;
    for (auto value = row.values.begin(); value != row.values.end(); ++value) {
        if (!isSameValue(standing.value(place, value.key()), value->after))
            return false;
        filled += !value->after.isNull();
    }
    // With a row that the batch made all goes that stands in it.
    return row.wasThere || standing.filled(place) == filled;
}

RowStay stayOf(const WrittenRow &row, const StandingRows &standing) {
    const QStringList columns = row.values.keys();
    if (!row.consent ||
        !std::ranges::all_of(columns, [&](const QString &column) { return standing.hasColumn(column); }))
        return RowStay::Unreadable;
    const auto found = standing.find(*row.consent);
    if (!row.isThere)
        return found ? RowStay::ThereAgain : RowStay::None;
    if (!found)
        return RowStay::Gone;
    return isAsLeft(row, standing, *found) ? RowStay::None : RowStay::Overtaken;
}

/// What cannot be read belongs to nothing but itself.
QString unitOf(const WrittenRow &row) {
    return row.consent ? identityOf(row.table, row.patient, QString::number(row.consent->iHenkeiFlg))
                       : row.identity();
}

} // namespace

void StandingRows::add(Recordset rows) {
    for (int column = 0; column < rows.columnCount(); ++column)
        m_columns.insert(rows.columns()[column].toLower(), column);
    for (int row = 0; row < rows.rowCount(); ++row)
        m_places.insert(identityOf(keyOfRow(rows, row)), {m_parts.size(), row});
    m_parts.push_back(std::move(rows));
}

std::optional<StandingRows::Place> StandingRows::find(const ConsentRowKey &key) const {
    const auto place = m_places.constFind(identityOf(key));
    return place == m_places.constEnd() ? std::nullopt : std::optional(*place);
}

QString StandingRows::value(const Place &place, const QString &column) const {
    const Recordset &rows = m_parts[place.part];
    const int at = m_columns.value(column.toLower());
    const QString text = rows.text(place.row, at);
    return text.isNull() && !rows.isNull(place.row, at) ? u""_s : text;
}

qsizetype StandingRows::filled(const Place &place) const {
    const Recordset &rows = m_parts[place.part];
    qsizetype filled = 0;
    for (int column = 0; column < rows.columnCount(); ++column)
        filled += !rows.isNull(place.row, column);
    return filled;
}

std::vector<const TakeBackUnit *> TakeBackPlan::left() const {
    std::vector<const TakeBackUnit *> left;
    for (const TakeBackUnit &unit : units)
        if (!unit.goesBack() && !unit.isDone())
            left.push_back(&unit);
    return left;
}

bool TakeBackPlan::sameAs(const TakeBackPlan &other) const {
    return std::ranges::equal(units, other.units, [](const TakeBackUnit &left, const TakeBackUnit &right) {
        return left.rows == right.rows && left.goesBack() == right.goesBack();
    });
}

TakeBackPlan planTakeBack(std::vector<WrittenRow> rows, const StandingRows &standing,
                          const std::function<bool(const QString &)> &isBack) {
    TakeBackPlan plan{.rows = std::move(rows), .units = {}};
    QHash<QString, size_t> places;
    for (size_t i = 0; i < plan.rows.size(); ++i) {
        WrittenRow &row = plan.rows[i];
        if (const auto place = row.consent ? standing.find(*row.consent) : std::nullopt)
            row.standing = standing.value(*place, u"tUpDateTime"_s);
        const QString name = unitOf(row);
        if (!places.contains(name)) {
            places.insert(name, plan.units.size());
            plan.units.push_back({.patient = row.patient});
        }
        TakeBackUnit &unit = plan.units[places[name]];
        unit.rows.push_back(i);
        const RowStay stay = isBack(row.identity()) ? RowStay::AlreadyBack : stayOf(row, standing);
        // What has gone back has gone back as a whole.
        if (stay != RowStay::None && (unit.goesBack() || stay == RowStay::AlreadyBack)) {
            unit.stay = stay;
            unit.because = i;
        }
    }
    return plan;
}
