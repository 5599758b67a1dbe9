#include "consent/record/list_save_query.h"

#include "db/sql_text.h"
#include "db/tables/keys_query.h"

#include <QStringList>
#include <vector>

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

std::vector<Written> deformityColumns(const ConsentRowValues &now, const ReadRow &row) {
    const ConsentRowValues &read = row.values;
    return {flag(u"iOutputFlgHenkei"_s, now.requested, read.requested),
            flag(u"iGetFlgHenkei"_s, now.received, read.received),
            day(u"tDouiDayTempHenkei"_s, now.reconsent, read.reconsent, row.oddReconsent),
            day(u"tdouiKaryoSTempHenkei"_s, now.nextStart, read.nextStart, row.oddStart),
            day(u"tdouiKaryoETempHenkei"_s, now.nextEnd, read.nextEnd, row.oddEnd)};
}

QString unchangedCondition(const std::vector<Written> &columns) {
    QStringList conditions;
    for (const Written &column : columns)
        conditions.append(column.unchanged);
    return conditions.join(u" AND "_s);
}

} // namespace

QString saveRowSql(const ReadRow &read, const ConsentRowValues &now, const QString &computer) {
    const std::vector<Written> columns =
        read.key.iHenkeiFlg == 1 ? deformityColumns(now, read) : massageColumns(now, read);
    QStringList sets;
    for (const Written &column : columns)
        sets.append(column.column + u" = "_s + column.value);
    sets.append(u"cPcName = "_s + sqlText(computer));
    sets.append(u"tUpDateTime = GetDate()"_s);
    return u"UPDATE RIYOUSHA_DOUI_REC SET "_s + sets.join(u", "_s) + u" WHERE "_s + sqlWhere(read.key) +
           u" AND iNewestFlg = 1 AND "_s +
           (read.updateTime.isEmpty() ? unchangedCondition(columns)
                                      : u"tUpDateTime = "_s + sqlText(read.updateTime));
}
