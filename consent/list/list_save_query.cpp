#include "consent/list/list_save_query.h"

#include "db/sql_text.h"
#include "db/tables/keys_query.h"

#include <QStringList>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Written {
    QString column;
    QString value; ///< as SQL
    QString read;  ///< as SQL
};

QString sql(const Nullable<short> &value) {
    return value.isNull() ? u"Null"_s : sqlNumber(value);
}

Written flag(const QString &column, const Nullable<short> &now, const Nullable<short> &read) {
    return {column, sql(now), sql(read)};
}

Written day(const QString &column, const QDate &now, const QDate &read) {
    return {column, sqlDate(now), sqlDate(read)};
}

std::vector<Written> massageColumns(const ConsentRowValues &now, const ConsentRowValues &read) {
    return {flag(u"iOutputFlg"_s, now.requested, read.requested),
            flag(u"iGetFlg"_s, now.received, read.received),
            day(u"tSaiDouiDay"_s, now.reconsent, read.reconsent),
            day(u"tSaiDouiKaryoS"_s, now.nextStart, read.nextStart),
            day(u"tSaiDouiKaryoE"_s, now.nextEnd, read.nextEnd),
            flag(u"iRenrakuFlg"_s, now.contact, read.contact),
            {u"cItiranBikou"_s, sqlTextOrNull(now.remark), sqlText(read.remark)},
            flag(u"iDouiHospOutFlg"_s, now.hospitalOut, read.hospitalOut),
            flag(u"iDouiIsiOutFlg"_s, now.doctorOut, read.doctorOut),
            flag(u"iDouiIraiType"_s, now.method, read.method),
            {u"cKobetuDouiIrai"_s, sqlText(now.ownRequest), sqlText(read.ownRequest)}};
}

std::vector<Written> deformityColumns(const ConsentRowValues &now, const ConsentRowValues &read) {
    return {flag(u"iOutputFlgHenkei"_s, now.requested, read.requested),
            flag(u"iGetFlgHenkei"_s, now.received, read.received),
            day(u"tDouiDayTempHenkei"_s, now.reconsent, read.reconsent),
            day(u"tdouiKaryoSTempHenkei"_s, now.nextStart, read.nextStart),
            day(u"tdouiKaryoETempHenkei"_s, now.nextEnd, read.nextEnd)};
}

QString unchangedCondition(const std::vector<Written> &written) {
    QStringList conditions;
    for (const Written &w : written)
        conditions.append(w.read == u"Null"_s ? w.column + u" IS NULL"_s : w.column + u" = "_s + w.read);
    return conditions.join(u" AND "_s);
}

} // namespace

QString saveRowSql(const ReadRow &read, const ConsentRowValues &now, const QString &computer) {
    const std::vector<Written> written =
        read.key.iHenkeiFlg == 1 ? deformityColumns(now, read.values) : massageColumns(now, read.values);
    QStringList sets;
    for (const Written &w : written)
        sets.append(w.column + u" = "_s + w.value);
    sets.append(u"cPcName = "_s + sqlText(computer));
    sets.append(u"tUpDateTime = GetDate()"_s);
    return u"UPDATE RIYOUSHA_DOUI_REC SET "_s + sets.join(u", "_s) + u" WHERE "_s + sqlWhere(read.key) +
           u" AND iNewestFlg = 1 AND "_s +
           (read.updateTime.isEmpty() ? unchangedCondition(written)
                                      : u"tUpDateTime = "_s + sqlText(read.updateTime));
}
