#include "search/staff_search_query.h"

#include "db/sql_text.h"
#include "search/search_conditions.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

QString staffWhere(const StaffConditions &conditions) {
    QStringList terms;
    if (!conditions.name.isEmpty())
        terms << u' ' + sqlContains(u"cName"_s, conditions.name);
    if (!conditions.kana.isEmpty())
        terms << u' ' + sqlContains(u"cNameKana"_s, conditions.kana);
    if (!conditions.suspended)
        terms << u" (iChusiFlg = 0 OR iChusiFlg IS NULL)"_s;
    if (conditions.number > 0)
        terms << u" nIDNo = "_s + sqlNumber(conditions.number);
    if (!conditions.allOffices)
        terms << u" iKyotenCd = "_s + sqlNumber(conditions.office.iKyotenCd) + u" and iKyotenEb = "_s +
                     sqlNumber(conditions.office.iKyotenEb);
    return terms.isEmpty() ? QString() : u" where"_s + terms.join(u" and"_s);
}

QString ofConsultation(const StaffConditions &conditions) {
    return u"      left join"
           "         ("
           "         select"
           "              nIDNo as SoudanID"
           "             ,iStaffKyotenCd"
           "             ,iStaffKyotenEb "
           "             ,nStaffIDNo "
           "         from "
           "              SOUDAN_TANTOU"
           "         where"
           "              iStaffKyotenCd = "_s +
           sqlNumber(conditions.office.iKyotenCd) + u"         and  iStaffKyotenEb = "_s +
           sqlNumber(conditions.office.iKyotenEb) +
           u"      )soudan"
           "      on"
           "          staff.nIDNo = soudan.nStaffIDNo"
           "      and staff.iKyotenCd = soudan.iStaffKyotenCd"
           "      and staff.iKyotenEb = soudan.iStaffKyotenEb"
           " where"
           "      soudan.SoudanID = "_s +
           sqlNumber(conditions.consultation);
}

} // namespace

QString officeListSql(bool searchedOnly) {
    return u" SELECT "
           " KYOTEN.iKyotenCd,"
           " KYOTEN.iKyotenEb,"
           " KYOTEN.cKyotenName"
           " FROM KYOTEN "
           " WHERE "_s +
           (searchedOnly ? u" ( KYOTEN.iUsedFlg = 1 or KYOTEN.iUsedFlg = 2 ) "_s
                         : u" KYOTEN.iUsedFlg = 1"_s) +
           u" AND KYOTEN.iKyotenEb<>0"
           " ORDER BY KYOTEN.iKyotenCd,KYOTEN.iKyotenEb"_s;
}

QString staffListSql(const StaffConditions &conditions) {
    QString sql = u" select"
                  " staff.nIDNo, staff.iKyotenCd, staff.iKyotenEb, staff.cName, staff.cNameRyaku, "
                  "staff.cNameKana"
                  " from"
                  "      ("
                  " select"
                  " distinct"
                  " nIDNo, iKyotenCd, iKyotenEb, cName, cNameRyaku, cNameKana"
                  " from"
                  " STAFF"_s +
                  staffWhere(conditions) + u"      )staff"_s;
    if (conditions.consultation >= 0)
        sql += ofConsultation(conditions);
    return sql + u" order by"
                 "     nIDNo"
                 "    ,cName "_s;
}

QString staffCheckSql(qint64 number, const Branch &office) {
    return u"SELECT cName, iChusiFlg FROM STAFF  WHERE nIDNo = "_s + sqlNumber(number) +
           u" AND iKyotenCd = "_s + sqlNumber(office.iKyotenCd) + u" AND iKyotenEb = "_s +
           sqlNumber(office.iKyotenEb);
}
