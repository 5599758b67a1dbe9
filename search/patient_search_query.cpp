#include "search/patient_search_query.h"

#include "app/base/dates.h"
#include "db/sql_text.h"
#include "search/search_conditions.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString ofOffice(const Branch &office) {
    return u" AND iKyotenCd = "_s + sqlNumber(office.iKyotenCd) + u" AND iKyotenEb = "_s +
           sqlNumber(office.iKyotenEb);
}

/// One condition in brackets of its own: the alternatives must not reach the conditions around it.
QString notEnded(const QDate &today, const QDate &endMonth) {
    const QString open = u" AND (tExpireDay IS NULL  OR tExpireDay >= "_s + sqlDate(today);
    if (!endMonth.isValid())
        return open + u")"_s;
    return open + u" OR ('"_s + formatDate(endMonth, u"yyyy/mm") +
           u"' <= SUBSTRING(CONVERT(VARCHAR, tExpireDay, 111),1,7)))"_s;
}

QString ofStaff(qint64 staff) {
    const QString number = sqlNumber(staff);
    return u" AND (nTantou="_s + number + u" OR nTantou2="_s + number + u" OR nTantou3="_s + number +
           u" OR nTantou4="_s + number + u" OR nTantou5="_s + number + u") "_s;
}

} // namespace

QString patientListSql(const PatientConditions &conditions, const Branch &office, bool allOffices,
                       const QDate &today) {
    QString sql = u"SELECT   iKyotenCd, iKyotenEb, "
                  " nIDNo, cName, cNameKana, cNameRyaku, "
                  " cTelNo, cAdress1, cAdress2 "
                  " FROM RIYOUSHA "
                  " WHERE nIDNo >= 0 "_s;
    if (!allOffices || conditions.staff <= 0)
        sql += ofOffice(office);
    const auto contains = [&sql](const QString &column, const QString &text) {
        if (!text.isEmpty())
            sql += u" AND "_s + sqlContains(column, text);
    };
    contains(u"cName"_s, conditions.name);
    contains(u"cNameKana"_s, conditions.kana);
    contains(u"cTelNo"_s, conditions.tel);
    if (!conditions.ended)
        sql += notEnded(today, conditions.endMonth);
    if (conditions.staff > 0)
        sql += ofStaff(conditions.staff);
    if (conditions.kind == 0 || conditions.kind == 1)
        sql += u" AND iSejutsuKubun="_s + sqlNumber(conditions.kind);
    if (conditions.number > 0)
        sql += u" AND nIDNo="_s + sqlNumber(conditions.number);
    return sql + u" ORDER BY nIDNo "_s;
}

QString patientNameSql(qint64 number, const Branch &office) {
    return u"SELECT nIDNo, cName, cNameKana FROM RIYOUSHA WHERE nIDNo="_s + sqlNumber(number) +
           ofOffice(office);
}

QString staffPickListSql(const Branch &office) {
    return u"SELECT nIDNo, cName, cNameRyaku "
           " FROM STAFF "
           " WHERE nIDNo >= 0 "_s +
           ofOffice(office) + u" ORDER BY nIDNo "_s;
}
