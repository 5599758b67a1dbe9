#include "consent/record/grid_save.h"

#include "consent/record/record_write.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"

#include <QStringList>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Written {
    QString column;
    QString value;     ///< as SQL
    QString unchanged; ///< condition that the column holds what was read
};

Written written(const QString &column, const QString &now, const QString &read) {
    return {column, now, read == u"Null"_s ? column + u" IS NULL"_s : column + u" = "_s + read};
}

Written flag(const QString &column, const Nullable<short> &now, const Nullable<short> &read) {
    const auto sql = [](const Nullable<short> &value) {
        return value.isNull() ? u"Null"_s : sqlNumber(value);
    };
    return written(column, sql(now), sql(read));
}

// What is no date stays as it stands while nobody enters one.
Written day(const QString &column, const QDate &now, const QDate &read, const QString &odd) {
    const QString readSql = odd.isEmpty() ? sqlDate(read) : sqlText(odd);
    return written(column, now == read ? readSql : sqlDate(now), readSql);
}

// Null and empty are the same to the user, and either may be stored.
Written remark(const QString &column, const QString &now, const QString &read) {
    if (read.isEmpty())
        return {column, sqlTextOrNull(now), u"("_s + column + u" IS NULL OR "_s + column + u" = '')"_s};
    return written(column, sqlTextOrNull(now), sqlText(read));
}

std::vector<Written> massageColumns(const ConsentRowValues &now, const ReadRow &row) {
    const ConsentRowValues &read = row.values;
    return {flag(u"iOutputFlg"_s, now.requested, read.requested),
            flag(u"iGetFlg"_s, now.received, read.received),
            day(u"tSaiDouiDay"_s, now.reconsent, read.reconsent, row.oddReconsent),
            day(u"tSaiDouiKaryoS"_s, now.nextStart, read.nextStart, row.oddStart),
            day(u"tSaiDouiKaryoE"_s, now.nextEnd, read.nextEnd, row.oddEnd),
            flag(u"iRenrakuFlg"_s, now.contact, read.contact),
            remark(u"cItiranBikou"_s, now.remark, read.remark),
            flag(u"iDouiHospOutFlg"_s, now.hospitalOut, read.hospitalOut),
            flag(u"iDouiIsiOutFlg"_s, now.doctorOut, read.doctorOut),
            flag(u"iDouiIraiType"_s, now.method, read.method),
            written(u"cKobetuDouiIrai"_s, sqlText(now.ownRequest), sqlText(read.ownRequest))};
}

// An answer that stands in the massage row's columns moves to the row's own.
std::vector<Written> movedAnswer(const ConsentRowValues &now, const ReadRow &row) {
    const ConsentRowValues &read = row.values;
    const auto to = [](const QString &column, const QDate &then, const QDate &was, const QString &odd) {
        return Written{column, day(column, then, was, odd).value, {}};
    };
    const auto away = [](const QString &column, const QDate &was, const QString &odd) {
        return Written{column, u"Null"_s, day(column, was, was, odd).unchanged};
    };
    return {to(u"tDouiDayTempHenkei"_s, now.reconsent, read.reconsent, row.oddReconsent),
            to(u"tdouiKaryoSTempHenkei"_s, now.nextStart, read.nextStart, row.oddStart),
            to(u"tdouiKaryoETempHenkei"_s, now.nextEnd, read.nextEnd, row.oddEnd),
            away(u"tSaiDouiDay"_s, read.reconsent, row.oddReconsent),
            away(u"tSaiDouiKaryoS"_s, read.nextStart, row.oddStart),
            away(u"tSaiDouiKaryoE"_s, read.nextEnd, row.oddEnd)};
}

std::vector<Written> deformityAnswer(const ConsentRowValues &now, const ReadRow &row) {
    const ConsentRowValues &read = row.values;
    return {day(u"tDouiDayTempHenkei"_s, now.reconsent, read.reconsent, row.oddReconsent),
            day(u"tdouiKaryoSTempHenkei"_s, now.nextStart, read.nextStart, row.oddStart),
            day(u"tdouiKaryoETempHenkei"_s, now.nextEnd, read.nextEnd, row.oddEnd)};
}

std::vector<Written> deformityColumns(const ConsentRowValues &now, const ReadRow &row) {
    std::vector<Written> columns = row.answeredAsMassage ? movedAnswer(now, row) : deformityAnswer(now, row);
    columns.push_back(flag(u"iOutputFlgHenkei"_s, now.requested, row.values.requested));
    columns.push_back(flag(u"iGetFlgHenkei"_s, now.received, row.values.received));
    return columns;
}

QString unchangedCondition(const std::vector<Written> &columns) {
    QStringList conditions;
    for (const Written &column : columns)
        if (!column.unchanged.isEmpty())
            conditions.append(column.unchanged);
    return conditions.join(u" AND "_s);
}

void writeRow(RecordWrite &write, const RowEdit &edit) {
    const std::vector<Written> columns = edit.read.key.iHenkeiFlg == 1 ? deformityColumns(edit.now, edit.read)
                                                                       : massageColumns(edit.now, edit.read);
    QList<ColumnValue> values;
    for (const Written &column : columns)
        values.append({column.column, column.value});
    const QString unchanged = edit.read.updateTime.isEmpty() ? unchangedCondition(columns)
                                                             : sqlUnchangedSince(edit.read.updateTime);
    write.change(sqlWhere(edit.read.key) + u" AND iNewestFlg = 1 AND "_s + unchanged, std::move(values));
}

Result<std::vector<size_t>> saveOnce(cT_ADODB &db, const std::vector<RowEdit> &edits,
                                     const Operation &operation) {
    RecordWrite write(db, operation);
    if (const Result<> locked =
            write.lock(patientsOf(edits, [](const RowEdit &edit) { return edit.read.key.patient; }));
        !locked)
        return Failure{locked.reason()};
    const std::vector<size_t> order =
        inWritingOrder(edits, [](const RowEdit &edit) { return edit.read.key; });
    for (const size_t i : order)
        writeRow(write, edits[i]);
    const Result<QList<qint64>> written = write.send();
    if (!written)
        return Failure{written.reason()};
    std::vector<size_t> overtaken;
    for (size_t place = 0; place < order.size(); ++place)
        if ((*written)[qsizetype(place)] == 0)
            overtaken.push_back(order[place]);
    std::ranges::sort(overtaken);
    if (!overtaken.empty())
        return overtaken;
    if (const Result<> committed = write.commit(); !committed)
        return Failure{committed.reason()};
    return overtaken;
}

} // namespace

Result<std::vector<size_t>> saveRows(cT_ADODB &db, const std::vector<RowEdit> &edits,
                                     const Operation &operation) {
    return againAfterDeadlock(db, [&] { return saveOnce(db, edits, operation); });
}
