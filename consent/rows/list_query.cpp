#include "consent/rows/list_query.h"

#include "app/base/name_variants.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// The alias stands behind each column because RIYOUSHA has columns of the same names.
const QString consentColumns = u" RIYOUSHA_DOUI_REC.nDate AS DKnDate"
                               " ,RIYOUSHA_DOUI_REC.iHenkeiFlg AS DKiHenkeiFlg"
                               " ,RIYOUSHA_DOUI_REC.nHenkeiDouiDate AS DKnHenkeiDouiDate"
                               " ,RIYOUSHA_DOUI_REC.tDouiDay AS DKtDouiDay1"
                               " ,RIYOUSHA_DOUI_REC.tDouiKaryoS AS DKtDouiKaryoS1"
                               " ,RIYOUSHA_DOUI_REC.tDouiKaryoE AS DKtDouiKaryoE1"
                               " ,RIYOUSHA_DOUI_REC.nDouiUpMonth AS DKnDouiUpMonth"
                               " ,RIYOUSHA_DOUI_REC.cDouiIsiKikan AS DKcDouiIsiKikan1"
                               " ,RIYOUSHA_DOUI_REC.cDouiIsiName AS DKcDouiIsiName1"
                               " ,RIYOUSHA_DOUI_REC.cDouiByoumei AS DKcDouiByoumei"
                               " ,RIYOUSHA_DOUI_REC.tHenkeSday AS DKtDouiHenkeS1"
                               " ,RIYOUSHA_DOUI_REC.tHenKeEday AS DKtDouiHenkeE1"
                               " ,RIYOUSHA_DOUI_REC.tOnanSday AS DKtDouiOnanS1"
                               " ,RIYOUSHA_DOUI_REC.tDenkiSday AS DKtDouiDenkiS1"
                               " ,RIYOUSHA_DOUI_REC.tHKHariSday AS DKtDouiHKHariS1"
                               " ,RIYOUSHA_DOUI_REC.tHKKyuSday AS DKtDouiHKKyuS1"
                               " ,RIYOUSHA_DOUI_REC.tHKDenkiSday AS DKtDouiHKDenkiS1"
                               " ,RIYOUSHA_DOUI_REC.iSejutuBui1 AS DKiSejutuBui1"
                               " ,RIYOUSHA_DOUI_REC.iSejutuBui2 AS DKiSejutuBui2"
                               " ,RIYOUSHA_DOUI_REC.iSejutuBui3 AS DKiSejutuBui3"
                               " ,RIYOUSHA_DOUI_REC.iSejutuBui4 AS DKiSejutuBui4"
                               " ,RIYOUSHA_DOUI_REC.iSejutuBui5 AS DKiSejutuBui5"
                               " ,RIYOUSHA_DOUI_REC.iOnan AS DKiOnan"
                               " ,RIYOUSHA_DOUI_REC.iDenki AS DKiDenki"
                               " ,RIYOUSHA_DOUI_REC.iHKHariUmu AS DKiHKHariUmu"
                               " ,RIYOUSHA_DOUI_REC.iHKKyuUmu AS DKiHKKyuUmu"
                               " ,RIYOUSHA_DOUI_REC.iHKDekiUmu AS DKiHKDekiUmu"
                               " ,RIYOUSHA_DOUI_REC.iDouiShubetsu AS DKiDouiShubetsu"
                               " ,RIYOUSHA_DOUI_REC.iSendFlg AS DKiSendFlg"
                               " ,RIYOUSHA_DOUI_REC.iRenrakuFlg AS DKiRenrakuFlg"
                               " ,RIYOUSHA_DOUI_REC.iOutputFlg AS DKiOutputFlg"
                               " ,RIYOUSHA_DOUI_REC.iGetFlg AS DKiGetFlg"
                               " ,RIYOUSHA_DOUI_REC.iOutputFlgHenkei AS DKiOutputFlgHenkei"
                               " ,RIYOUSHA_DOUI_REC.iGetFlgHenkei AS DKiGetFlgHenkei"
                               " ,RIYOUSHA_DOUI_REC.iDouiHospOutFlg AS DKiDouiHospOutFlg"
                               " ,RIYOUSHA_DOUI_REC.iDouiIsiOutFlg AS DKiDouiIsiOutFlg"
                               " ,RIYOUSHA_DOUI_REC.tSaiDouiDay AS DKtSaiDouiDay"
                               " ,RIYOUSHA_DOUI_REC.tSaiDouiKaryoS AS DKtSaiDouiKaryoS"
                               " ,RIYOUSHA_DOUI_REC.tSaiDouiKaryoE AS DKtSaiDouiKaryoE"
                               " ,RIYOUSHA_DOUI_REC.tDouiDayTempHenkei AS DKtDouiDayTempHenkei"
                               " ,RIYOUSHA_DOUI_REC.tdouiKaryoSTempHenkei AS DKtdouiKaryoSTempHenkei"
                               " ,RIYOUSHA_DOUI_REC.tdouiKaryoETempHenkei AS DKtdouiKaryoETempHenkei"
                               " ,RIYOUSHA_DOUI_REC.iDouiIraiType AS DKiDouiIraiType"
                               " ,RIYOUSHA_DOUI_REC.cKobetuDouiIrai AS DKcKobetuDouiIrai"
                               " ,RIYOUSHA_DOUI_REC.cItiranBikou AS DKcItiranBikou"
                               " ,RIYOUSHA_DOUI_REC.tUpDateTime AS DKtUpDateTime"
                               " ,RIYOUSHA_DOUI_REC.cIsiCd AS DKcIsiCd"
                               " ,RIYOUSHA_DOUI_REC.iReceptDisabledFlg AS DKiReceptDisabledFlg"_s;

const QString masterColumns = u" ,DOCTOR.cIDno AS cIsiNo"
                              " ,DOCTOR.cName AS cIsiName1"
                              " ,DOCTOR.cKikan AS cIsiKikan"
                              " ,DOCTOR.cAddress1 AS cAddress1"
                              " ,DOCTOR.cAddress2 AS cAddress2"
                              " ,DOCTOR.cYubinNo AS cYubinNo1"
                              " ,RIYOUSHA_SUB.iSisetsuCode AS nSisetsuCode1"
                              " ,DOCTOR.iSisetsuCode AS nSisetsuCodeNew"
                              " ,SISETSU1.cShamei1 AS cSisetsuName1"
                              " ,SISETSU1.cDouiIrai AS DouiIrai1"
                              " ,STAFF1.cName AS StaffName"
                              " ,STAFF2.cName AS StaffName2"
                              " ,STAFF3.cName AS StaffName3"
                              " ,STAFF4.cName AS StaffName4"
                              " ,STAFF5.cName AS StaffName5"
                              " ,SOUDAN.cName AS SoudanName"
                              " ,RIYOUSHA_SUB.cYubinNoS0Ryosyu AS cYubinNoS0Ryosyu"
                              " ,RIYOUSHA_SUB.cJusyo1S0Ryosyu AS cJusyo1S0Ryosyu"
                              " ,RIYOUSHA_SUB.cJusyo2S0Ryosyu AS cJusyo2S0Ryosyu"
                              " ,RIYOUSHA_SUB.cTelS0Ryosyu AS cTelS0Ryosyu"
                              " ,RIYOUSHA_SUB.cFaxS0Ryosyu AS cFaxS0Ryosyu"
                              " ,RIYOUSHA_SUB.cKeitaiS0Ryosyu AS cKeitaiS0Ryosyu"
                              " ,RIYOUSHA_SUB.cAtenaS0Ryosyu AS cAtenaS0Ryosyu"
                              " ,RIYOUSHA_SUB.cYubinNoS0Renraku AS cYubinNoS0Renraku"
                              " ,RIYOUSHA_SUB.cJusyo1S0Renraku AS cJusyo1S0Renraku"
                              " ,RIYOUSHA_SUB.cJusyo2S0Renraku AS cJusyo2S0Renraku"
                              " ,RIYOUSHA_SUB.cTelS0Renraku AS cTelS0Renraku"
                              " ,RIYOUSHA_SUB.cFaxS0Renraku AS cFaxS0Renraku"
                              " ,RIYOUSHA_SUB.cKeitaiS0Renraku AS cKeitaiS0Renraku"
                              " ,RIYOUSHA_SUB.cAtenaS0Renraku AS cAtenaS0Renraku"_s;

QString joins() {
    return u" FROM RIYOUSHA LEFT JOIN RIYOUSHA_DOUI_REC ON "_s +
           sqlSamePatient(u"RIYOUSHA_DOUI_REC", u"RIYOUSHA") + u" LEFT JOIN RIYOUSHA_SUB ON "_s +
           sqlSamePatient(u"RIYOUSHA_SUB", u"RIYOUSHA") +
           u" LEFT JOIN DOCTOR ON RIYOUSHA_DOUI_REC.cIsiCd = DOCTOR.cIDno"
           " LEFT JOIN DOCTOR AS DOCTOR2 ON RIYOUSHA_SUB.iIsiCd2 = DOCTOR2.cIDno"
           " LEFT JOIN SISETSU AS SISETSU2 ON SISETSU2.nIDNo = DOCTOR2.iSisetsuCode"
           " LEFT JOIN SISETSU AS SISETSU1 ON SISETSU1.nIDNo = DOCTOR.iSisetsuCode"_s +
           sqlPractitionerJoins() + u" LEFT JOIN SOUDAN ON RIYOUSHA_SUB.iSoudaninId = SOUDAN.nIDNo AND "_s +
           sqlSameBranch(u"SOUDAN", u"RIYOUSHA");
}

// What has lapsed comes along by one span of the index, from the first era that dates are taken of; the days
// between today and a range that begins later are passed over.
QString endWhere(const ListFilter &filter) {
    const auto end = [](const QString &comparison, const QDate &day) {
        return u"RIYOUSHA_DOUI_REC.tDouiKaryoE "_s + comparison + sqlDate(day);
    };
    if (filter.view == ListView::History || !filter.lapsedBefore.isValid())
        return end(u">= "_s, filter.from) + u" AND "_s + end(u"<= "_s, filter.to);
    const QString all = end(u">= "_s, QDate(1868, 1, 1)) + u" AND "_s +
                        end(u"<= "_s, qMax(filter.to, filter.lapsedBefore.addDays(-1)));
    if (filter.from <= filter.lapsedBefore)
        return all;
    return all + u" AND ("_s + end(u">= "_s, filter.from) + u" OR "_s + end(u"< "_s, filter.lapsedBefore) +
           u")"_s;
}

// The branch and the newest mark of the consent are given outright, not only through the join, so that one
// index serves branch, mark and end of period.
QString alwaysWhere(const Branch &branch, const ListFilter &filter) {
    return u" WHERE "_s + sqlWhere(branch, u"RIYOUSHA") + u" AND "_s +
           sqlWhere(branch, u"RIYOUSHA_DOUI_REC") + u" AND RIYOUSHA_DOUI_REC.iNewestFlg = "_s +
           sqlNumber(filter.view == ListView::Newest ? 1 : 0) + u" AND "_s + endWhere(filter) + u" AND "_s +
           sqlIsListed();
}

QString numberIs(const QString &column, qint32 number) {
    return number == 0 ? QString() : u" AND "_s + column + u" = "_s + sqlNumber(number);
}

QString textIs(const QString &column, const QString &text) {
    return text.isEmpty() ? QString() : u" AND "_s + column + u" = "_s + sqlText(text);
}

QString requestMethodIs(const QString &text) {
    if (text.isEmpty())
        return {};
    const QString remark = u"replace(replace(RIYOUSHA_DOUI_REC.cItiranBikou, ' ', ''), '\u3000', '')"_s;
    return u" AND charindex("_s + sqlText(withOrdinaryNames(text)) + u", "_s + sqlOrdinary(remark, text) +
           u") > 0"_s;
}

QString facilityIs(qint32 facility) {
    if (facility == 0)
        return {};
    return u" AND (RIYOUSHA_SUB.iAddressSisetsuCd = %1 OR RIYOUSHA_SUB.iAddressSisetsuCd2 = %1"
           " OR RIYOUSHA_SUB.iAddressSisetsuCd3 = %1)"_s.arg(sqlNumber(facility));
}

QString chosenWhere(const ListFilter &filter) {
    QString sql;
    if (filter.kind != TreatmentKind::All)
        sql += u" AND RIYOUSHA.iSejutsuKubun = "_s + sqlNumber(int(filter.kind));
    if (filter.procedure == Procedure::Written)
        sql += u" AND (RIYOUSHA_DOUI_REC.iDouiShubetsu = 0 OR RIYOUSHA_DOUI_REC.iDouiShubetsu IS NULL)"_s;
    if (filter.procedure == Procedure::Oral)
        sql += u" AND RIYOUSHA_DOUI_REC.iDouiShubetsu = 1"_s;
    sql += textIs(u"RIYOUSHA_DOUI_REC.cIsiCd"_s, filter.doctor);
    sql += numberIs(u"DOCTOR.iSisetsuCode"_s, filter.hospital);
    sql += numberIs(u"RIYOUSHA.nTantou"_s, filter.staff);
    if (!filter.staffAmong.empty())
        sql += sqlAndAmong(u"RIYOUSHA.nTantou", {filter.staffAmong.begin(), filter.staffAmong.end()});
    sql += textIs(u"RIYOUSHA.cHokenNo"_s, filter.insurer);
    sql += numberIs(u"RIYOUSHA_SUB.iSoudaninId"_s, filter.counsellor);
    sql += facilityIs(filter.facility);
    sql += numberIs(u"RIYOUSHA.nIDNo"_s, filter.patient);
    sql += requestMethodIs(filter.requestMethod);
    if (!filter.ended)
        sql += u" AND RIYOUSHA.tExpireDay IS NULL"_s;
    return sql;
}

// The doctor of the later of the patient's two consents: a value of the first or the second doctor.
QString ofLaterDoctor(const QString &first, const QString &second) {
    return u"CASE WHEN RIYOUSHA.tDouiDay2 IS NULL THEN %1 ELSE"
           " CASE WHEN RIYOUSHA.tDouiDay1 < RIYOUSHA.tDouiDay2 THEN %2 ELSE %1 END END"_s.arg(first, second);
}

QString orderColumns(ListOrder order, PatientOrder patientOrder) {
    const QString patient =
        patientOrder == PatientOrder::Kana ? u"RIYOUSHA.cNameKana"_s : u"RIYOUSHA.nIDNo"_s;
    const QString doctorName = ofLaterDoctor(u"DOCTOR.cName"_s, u"DOCTOR2.cName"_s);
    switch (order) {
    case ListOrder::HospitalAndDoctor:
        return u"nSisetsuCodeNew , DOCTOR.cIDno , "_s + patient;
    case ListOrder::LaterDoctor:
        return ofLaterDoctor(u"DOCTOR.cKikan"_s, u"DOCTOR2.cKikan"_s) + u" , "_s + doctorName + u" , "_s +
               patient;
    case ListOrder::HospitalKana:
        return ofLaterDoctor(u"SISETSU1.cShameiKana1"_s, u"SISETSU2.cShameiKana1"_s) + u" , "_s + doctorName +
               u" , "_s + patient;
    case ListOrder::EndSoonest:
        return u"RIYOUSHA_DOUI_REC.tDouiKaryoE , "_s + patient;
    case ListOrder::Patient:
        break;
    }
    return patient;
}

QString orderBy(const ListFilter &filter) {
    QStringList columns;
    if (filter.staffOrder && !filter.staffAmong.empty())
        columns.append(sqlOrderAs(u"RIYOUSHA.nTantou"_s, filter.staffAmong));
    columns.append(orderColumns(filter.order, filter.patientOrder));
    if (filter.patientOrder == PatientOrder::Kana)
        columns.append(u"RIYOUSHA.nIDNo"_s);
    // Down to a row's own key: rows must not change places when they are read anew.
    columns.append(u"RIYOUSHA_DOUI_REC.iHenkeiFlg , RIYOUSHA_DOUI_REC.nDate"_s);
    return u"ORDER BY  "_s + columns.join(u" , "_s);
}

} // namespace

QString listSql(const Branch &branch, const ListFilter &filter) {
    return u"SELECT RIYOUSHA.* ,"_s + consentColumns + masterColumns + joins() + alwaysWhere(branch, filter) +
           chosenWhere(filter) + u" "_s + orderBy(filter);
}

QString patientJumpSql(const Branch &branch, qint32 patient) {
    return u"SELECT nIDNo, cName, tDouiKaryoE1, tDouiKaryoE2 FROM RIYOUSHA WHERE "_s +
           sqlWhere(branch, u"RIYOUSHA") + u" AND RIYOUSHA.nIDNo = "_s + sqlNumber(patient);
}
