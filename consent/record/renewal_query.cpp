#include "consent/record/renewal_query.h"

#include "db/adodb.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"

#include <QHash>
#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView tableName = u"RIYOUSHA_DOUI_REC";

// In the order in which a complete row is copied.
constexpr QStringView copiedColumns =
    u"iKyotenCd iKyotenEb nIDNo nDate iSejutuBui1 iSejutuBui2 iSejutuBui3 iSejutuBui4 iSejutuBui5 "
    u"iOnan iDenki iHKHariUmu iHKKyuUmu iHKDekiUmu iHKDispDenkiHariUmu iHKDispDenkiOnKyuUmu "
    u"iHKDispDenkiKousenUmu tOnanSday tOnanEday tDenkiSday tDenkiEday tHenkeSday tHenKeEday "
    u"tHKHariSday tHKHariEday tHKKyuSday tHKKyuEday tHKDenkiSday tHKDenkiEday cIsiCd cDouiIsiName "
    u"cDouiIsiKikan cDouiIsiAdd cDouiByoumei tDouiDay tDouiKaryoS tDouiKaryoE nDouiUpMonth cByoumeiM "
    u"iHKSyobyou01Flg iHKSyobyou02Flg iHKSyobyou03Flg iHKSyobyou04Flg iHKSyobyou05Flg "
    u"iHKSyobyou06Flg iHKSyobyou07Flg cByoumeiH iHKSyobyouChkL iHKSyobyouChkR iNewestFlg tSaiDouiDay "
    u"tSaiDouiKaryoS tSaiDouiKaryoE cKobetuDouiIrai iDouiIraiType iDouiHospOutFlg iDouiIsiOutFlg "
    u"cItiranBikou iDouishoSaishutokuKikan iOutputFlg iGetFlg iOutputFlgHenkei iGetFlgHenkei "
    u"tDouiDayTempHenkei tdouiKaryoSTempHenkei tdouiKaryoETempHenkei iHenkeiFlg nHenkeiDouiDate "
    u"iDouiShubetsu iReceptDisabledFlg iRenrakuFlg iSendFlg iMahiKukan iMahiMigiue iMahiHidariue "
    u"iMahiMigishita iMahiHidarishita iKousyukuMigikata iKousyukuMigihiji iKousyukuMigitekubi "
    u"iKousyukuMigikokannsetu iKousyukuMigihiza iKousyukuMigiashikubi iKousyukuHidarikata "
    u"iKousyukuHidarihiji iKousyukuHidaritekubi iKousyukuHidarikokannsetu iKousyukuHidarihiza "
    u"iKousyukuHidariashikubi iKousyukuSonota cKousyukuSonotaStr cSyoujyouSonotaStr";

bool leftBehindByHenkei(QStringView column) {
    return column == u"cKobetuDouiIrai" || column == u"cItiranBikou" || column == u"iDouiIraiType";
}

// Columns that do not simply take the source's value.
QHash<QStringView, QString> changedColumns(const ConsentRowKey &target, ReConsentColumns columns) {
    const bool own = columns == ReConsentColumns::Own;
    const QString none = u"Null"_s;
    const QString unmarked = u"0"_s;
    return {{u"nDate", sqlNumber(target.nDate)},
            {u"tDouiDay", own ? u"tSaiDouiDay"_s : u"tDouiDayTempHenkei"_s},
            {u"tDouiKaryoS", own ? u"tSaiDouiKaryoS"_s : u"tdouiKaryoSTempHenkei"_s},
            {u"tDouiKaryoE", own ? u"tSaiDouiKaryoE"_s : u"tdouiKaryoETempHenkei"_s},
            {u"tSaiDouiDay", none},
            {u"tSaiDouiKaryoS", none},
            {u"tSaiDouiKaryoE", none},
            {u"tDouiDayTempHenkei", none},
            {u"tdouiKaryoSTempHenkei", none},
            {u"tdouiKaryoETempHenkei", none},
            {u"iNewestFlg", unmarked},
            {u"iOutputFlg", unmarked},
            {u"iGetFlg", unmarked},
            {u"iOutputFlgHenkei", unmarked},
            {u"iGetFlgHenkei", unmarked},
            {u"iDouiHospOutFlg", unmarked},
            {u"iDouiIsiOutFlg", unmarked},
            {u"iHenkeiFlg", sqlNumber(target.iHenkeiFlg)},
            {u"nHenkeiDouiDate", sqlNumber(target.nHenkeiDouiDate)}};
}

QString column(QStringView name) {
    return u"RIYOUSHA_DOUI_REC."_s.append(name);
}

QString equals(QStringView name, qint64 value) {
    return u" and "_s + column(name) + u" = "_s + sqlNumber(value);
}

QString ofKind(const PatientKey &patient, short iHenkeiFlg) {
    return u" WHERE "_s + sqlWhere(patient, tableName) + equals(u"iHenkeiFlg", iHenkeiFlg);
}

// On massage rows nHenkeiDouiDate says nothing.
QString ofRow(const ConsentRowKey &row) {
    const QString where = ofKind(row.patient, row.iHenkeiFlg) + equals(u"nDate", row.nDate);
    return row.iHenkeiFlg == 0 ? where : where + equals(u"nHenkeiDouiDate", row.nHenkeiDouiDate);
}

QString audit(const QString &computer) {
    return u", cPcName = "_s + sqlText(computer) + u", tUpDateTime = GetDate()"_s;
}

// What a newest row must be when it is marked.
QString usable() {
    return u"(RIYOUSHA_DOUI_REC.iReceptDisabledFlg <> 1 or RIYOUSHA_DOUI_REC.iReceptDisabledFlg is null)"_s;
}

} // namespace

QString sqlLockPatient(const PatientKey &patient) {
    return u"UPDATE RIYOUSHA_DOUI_REC SET iNewestFlg = iNewestFlg WHERE "_s + sqlWhere(patient, tableName);
}

QString sqlRenewalSource(const ConsentRowKey &source) {
    return u"SELECT tDouiDay, iNewestFlg, tSaiDouiDay, tSaiDouiKaryoS, tSaiDouiKaryoE, tDouiDayTempHenkei,"
           " tdouiKaryoSTempHenkei, tdouiKaryoETempHenkei FROM RIYOUSHA_DOUI_REC"_s +
           ofRow(source);
}

RenewalRow sourceRow(const Recordset &rows, const ConsentRowKey &key, ReConsentColumns &columns) {
    const bool temporary = key.iHenkeiFlg != 0 && rows.date(0, 5).isValid();
    columns = temporary ? ReConsentColumns::TemporaryHenkei : ReConsentColumns::Own;
    const int first = temporary ? 5 : 2;
    return {.key = key,
            .name = {},
            .consentDate = rows.date(0, 0),
            .reConsent = {rows.date(0, first), {rows.date(0, first + 1), rows.date(0, first + 2)}},
            .newest = rows.number(0, 1) == 1};
}

QString sqlCountTarget(const ConsentRowKey &target) {
    return u"SELECT count(*) FROM RIYOUSHA_DOUI_REC"_s + ofRow(target);
}

QString sqlDeleteTarget(const ConsentRowKey &target) {
    return u"DELETE FROM RIYOUSHA_DOUI_REC"_s + ofRow(target);
}

QString sqlRenewedCopy(const ConsentRowKey &source, const ConsentRowKey &target, ReConsentColumns columns,
                       const QString &computer) {
    const QHash<QStringView, QString> changed = changedColumns(target, columns);
    QStringList into, values;
    for (const QStringView name : copiedColumns.split(u' ')) {
        if (source.iHenkeiFlg != 0 && leftBehindByHenkei(name))
            continue;
        into.append(name.toString());
        values.append(changed.value(name, name.toString()));
    }
    into << u"cPcName"_s << u"tUpDateTime"_s;
    values << sqlText(computer) << u"GetDate()"_s;
    return u"INSERT INTO RIYOUSHA_DOUI_REC ("_s + into.join(u", ") + u") SELECT "_s + values.join(u", ") +
           u" FROM RIYOUSHA_DOUI_REC"_s + ofRow(source);
}

QString sqlRestartHenkei(const PatientKey &patient, qint32 nDate, const Period &period,
                         const QString &computer) {
    return u"UPDATE RIYOUSHA_DOUI_REC SET iOutputFlg = 0, iGetFlg = 0, iDouiHospOutFlg = 0,"
           " iDouiIsiOutFlg = 0, iOutputFlgHenkei = 0, iGetFlgHenkei = 0, tHenkeSday = "_s +
           sqlDate(period.start) + u", tHenKeEday = "_s + sqlDate(period.end) + audit(computer) +
           u" WHERE "_s + sqlWhere(patient, tableName) + equals(u"nDate", nDate);
}

QString sqlFindNewest(const PatientKey &patient, short iHenkeiFlg) {
    return u"SELECT TOP 1 RIYOUSHA_DOUI_REC.* FROM RIYOUSHA_DOUI_REC"_s + ofKind(patient, iHenkeiFlg) +
           u" and RIYOUSHA_DOUI_REC.iReceptDisabledFlg = 0 ORDER BY nDate DESC"_s;
}

bool newestRow(const Recordset &rows, const PatientKey &patient, short iHenkeiFlg, ConsentRowKey &key) {
    if (rows.rowCount() == 0)
        return false;
    key = {patient, qint32(rows.number(0, rows.column(u"nDate"))), iHenkeiFlg,
           qint32(rows.number(0, rows.column(u"nHenkeiDouiDate")))};
    return true;
}

QString sqlClearNewest(const ConsentRowKey &newest, const QString &computer) {
    const QString found =
        u" and not (RIYOUSHA_DOUI_REC.nDate = "_s + sqlNumber(newest.nDate) +
        (newest.iHenkeiFlg == 0 ? QString() : equals(u"nHenkeiDouiDate", newest.nHenkeiDouiDate)) +
        u" and "_s + usable() + u')';
    return u"UPDATE RIYOUSHA_DOUI_REC SET iNewestFlg = 0"_s + audit(computer) +
           ofKind(newest.patient, newest.iHenkeiFlg) +
           u" and (RIYOUSHA_DOUI_REC.iNewestFlg <> 0 or RIYOUSHA_DOUI_REC.iNewestFlg is null)"_s + found;
}

QString sqlMarkNewest(const ConsentRowKey &newest, const QString &computer) {
    return u"UPDATE RIYOUSHA_DOUI_REC SET iNewestFlg = 1"_s + audit(computer) + ofRow(newest) + u" and "_s +
           usable() + u" and (RIYOUSHA_DOUI_REC.iNewestFlg <> 1 or RIYOUSHA_DOUI_REC.iNewestFlg is null)"_s;
}
