#include "print/consent_form/form_query.h"

#include "db/sql_text.h"
#include "db/tables/keys_query.h"
#include "print/consent_form/form_record.h"

#include <set>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView columns[] = {
    // patient
    u"RIYOUSHA.iKyotenCd",
    u"RIYOUSHA.iKyotenEb",
    u"RIYOUSHA.nIDNo",
    u"RIYOUSHA.cName",
    u"RIYOUSHA.cAdress1",
    u"RIYOUSHA.cAdress2",
    u"RIYOUSHA.tBirthday",
    u"RIYOUSHA.iSexKubun",
    u"RIYOUSHA.cZokugara",
    u"RIYOUSHA.iSejutsuKubun",
    u"RIYOUSHA.tSyoryoDay",
    u"RIYOUSHA.tHatsubyou",
    u"RIYOUSHA.iOuryouUmu",
    u"RIYOUSHA.iOuryouRiyuu1",
    u"RIYOUSHA.iOuryouRiyuu2",
    u"RIYOUSHA.iOuryouRiyuu3",
    u"RIYOUSHA.cOuryouRiyuuSonota",
    u"RIYOUSHA.iHokouType",
    u"RIYOUSHA.iKaigodo",
    u"RIYOUSHA.nTantou",
    u"RIYOUSHA.cDouiByoumei1",
    u"RIYOUSHA.tDouishoSaishutokuFrom",
    u"RIYOUSHA.tDouishoSaishutokuTo",
    // consent
    u"RIYOUSHA_DOUI_REC.nDate",
    u"RIYOUSHA_DOUI_REC.iHenkeiFlg",
    u"RIYOUSHA_DOUI_REC.nHenkeiDouiDate",
    u"RIYOUSHA_DOUI_REC.cIsiCd",
    u"RIYOUSHA_DOUI_REC.tDouiDay",
    u"RIYOUSHA_DOUI_REC.tDouiKaryoS",
    u"RIYOUSHA_DOUI_REC.tDouiKaryoE",
    // A correction is answered in columns of its own, where their date is entered.
    u"CASE WHEN RIYOUSHA_DOUI_REC.iHenkeiFlg = 1 AND RIYOUSHA_DOUI_REC.tDouiDayTempHenkei IS NOT NULL"
    " THEN RIYOUSHA_DOUI_REC.tDouiDayTempHenkei ELSE RIYOUSHA_DOUI_REC.tSaiDouiDay END",
    u"CASE WHEN RIYOUSHA_DOUI_REC.iHenkeiFlg = 1 AND RIYOUSHA_DOUI_REC.tDouiDayTempHenkei IS NOT NULL"
    " THEN RIYOUSHA_DOUI_REC.tDouiKaryoSTempHenkei ELSE RIYOUSHA_DOUI_REC.tSaiDouiKaryoS END",
    u"CASE WHEN RIYOUSHA_DOUI_REC.iHenkeiFlg = 1 AND RIYOUSHA_DOUI_REC.tDouiDayTempHenkei IS NOT NULL"
    " THEN RIYOUSHA_DOUI_REC.tDouiKaryoETempHenkei ELSE RIYOUSHA_DOUI_REC.tSaiDouiKaryoE END",
    u"RIYOUSHA_DOUI_REC.iDouiShubetsu",
    u"RIYOUSHA_DOUI_REC.iDouishoSaishutokuKikan",
    u"RIYOUSHA_DOUI_REC.cByoumeiM",
    u"RIYOUSHA_DOUI_REC.cByoumeiH",
    u"RIYOUSHA_DOUI_REC.cDouiByoumei",
    u"RIYOUSHA_DOUI_REC.cDouiIsiName",
    u"RIYOUSHA_DOUI_REC.cDouiIsiKikan",
    u"RIYOUSHA_DOUI_REC.cDouiIsiAdd",
    u"RIYOUSHA_DOUI_REC.iSejutuBui1",
    u"RIYOUSHA_DOUI_REC.iSejutuBui2",
    u"RIYOUSHA_DOUI_REC.iSejutuBui3",
    u"RIYOUSHA_DOUI_REC.iSejutuBui4",
    u"RIYOUSHA_DOUI_REC.iSejutuBui5",
    u"RIYOUSHA_DOUI_REC.iOnan",
    u"RIYOUSHA_DOUI_REC.iDenki",
    u"RIYOUSHA_DOUI_REC.iHKHariUmu",
    u"RIYOUSHA_DOUI_REC.iHKKyuUmu",
    u"RIYOUSHA_DOUI_REC.iHKDekiUmu",
    u"RIYOUSHA_DOUI_REC.iHKSyobyou01Flg",
    u"RIYOUSHA_DOUI_REC.iHKSyobyou02Flg",
    u"RIYOUSHA_DOUI_REC.iHKSyobyou03Flg",
    u"RIYOUSHA_DOUI_REC.iHKSyobyou04Flg",
    u"RIYOUSHA_DOUI_REC.iHKSyobyou05Flg",
    u"RIYOUSHA_DOUI_REC.iHKSyobyou06Flg",
    u"RIYOUSHA_DOUI_REC.iHKSyobyou07Flg",
    u"RIYOUSHA_DOUI_REC.iMahiKukan",
    u"RIYOUSHA_DOUI_REC.iMahiMigiue",
    u"RIYOUSHA_DOUI_REC.iMahiHidariue",
    u"RIYOUSHA_DOUI_REC.iMahiMigishita",
    u"RIYOUSHA_DOUI_REC.iMahiHidarishita",
    u"RIYOUSHA_DOUI_REC.iKousyukuMigikata",
    u"RIYOUSHA_DOUI_REC.iKousyukuMigihiji",
    u"RIYOUSHA_DOUI_REC.iKousyukuMigitekubi",
    u"RIYOUSHA_DOUI_REC.iKousyukuMigikokannsetu",
    u"RIYOUSHA_DOUI_REC.iKousyukuMigihiza",
    u"RIYOUSHA_DOUI_REC.iKousyukuMigiashikubi",
    u"RIYOUSHA_DOUI_REC.iKousyukuHidarikata",
    u"RIYOUSHA_DOUI_REC.iKousyukuHidarihiji",
    u"RIYOUSHA_DOUI_REC.iKousyukuHidaritekubi",
    u"RIYOUSHA_DOUI_REC.iKousyukuHidarikokannsetu",
    u"RIYOUSHA_DOUI_REC.iKousyukuHidarihiza",
    u"RIYOUSHA_DOUI_REC.iKousyukuHidariashikubi",
    u"RIYOUSHA_DOUI_REC.iKousyukuSonota",
    u"RIYOUSHA_DOUI_REC.cKousyukuSonotaStr",
    u"RIYOUSHA_DOUI_REC.cSyoujyouSonotaStr",
    u"RIYOUSHA_DOUI_REC.tHenkeSday",
    u"RIYOUSHA_DOUI_REC.tHenKeEday",
    // doctor and hospital
    u"DOCTOR.cName",
    u"DOCTOR.cKikan",
    u"DOCTOR.cAddress1",
    u"DOCTOR.cAddress2",
    u"DOCTOR.cTelNo",
    u"DOCTOR.iHandWritingFlg",
    u"DOCTOR.iSisetsuCode",
    u"HOSPITAL.cShamei1",
    u"HOSPITAL.cAddress1",
    u"HOSPITAL.cAddress2",
    u"HOSPITAL.cTelNo",
    // where the patient is treated
    u"HOME.nIDNo",
    u"HOME.cAddress1",
    u"HOME.cAddress2",
    // staff and branch
    u"STAFF.cName",
    u"KYOTEN.cKyotenName",
    u"KYOTEN.cYubinNo",
    u"KYOTEN.cAddress1",
    u"KYOTEN.cAddress2",
    u"KYOTEN.cTelNo",
    // layouts
    u"DOUISHO.nIDNo",
    u"DOUISHO.cFileName",
    u"DOUISHO.iKubun",
    u"DOUISHOKOUTOU.nIDNo",
    u"DOUISHOKOUTOU.cFileName",
};
static_assert(std::size(columns) == size_t(F::PatientSettings));

constexpr QStringView settings[] = {
    u"iSyokaiDouiON",    u"iSyokaiDouiMasTypeNo", u"iSyokaiDouiHariTypeNo",
    u"iSaiDouiON",       u"iSaiDouiMasTypeNo",    u"iSaiDouiHariTypeNo",
    u"iDouiDispSejyutu", u"iDouiDispIshidata",    u"iDouiDispRiyouNo",
};
static_assert(std::size(settings) == size_t(F::Count) - size_t(F::BranchSettings));

QString selectList() {
    QStringList ofSettings;
    for (const QStringView table : {u"RIYOUSHA_SUB", u"DOCTOR", u"CORP_SUB"})
        for (const QStringView column : settings)
            ofSettings += table.toString() + u'.' + column.toString();
    std::vector<QStringView> all(std::begin(columns), std::end(columns));
    all.insert(all.end(), ofSettings.cbegin(), ofSettings.cend());
    return sqlSelectList(all);
}

QString formJoin(const QString &alias, const QString &number, FormMaster master) {
    const QString branch = master == FormMaster::Practice
                               ? u"%1.iKyotenCd = 0 AND %1.iKyotenEb = 0"_s.arg(alias)
                               : sqlSameBranch(alias, u"RIYOUSHA_SUB");
    return u" LEFT JOIN SHINSEISYO AS %1 ON %2 AND %1.nIDNo = RIYOUSHA_SUB.%3 AND %1.iPrintType = 1"
           " AND (%1.iDelFlg = 0 OR %1.iDelFlg IS NULL)"_s.arg(alias, branch, number);
}

/// The newest rows that forms are made from.
QString newest(bool corrections) {
    return u" AND "_s + sqlNewestOfKind() +
           (corrections ? QString() : u" AND RIYOUSHA_DOUI_REC.iHenkeiFlg = 0"_s);
}

/// A patient without a consent row gets the doctor of the patient's own row.
QString joins(const ConsentFormOptions &options) {
    const FormMaster master = options.master;
    return u" FROM RIYOUSHA LEFT JOIN RIYOUSHA_SUB ON "_s + sqlSamePatient(u"RIYOUSHA_SUB", u"RIYOUSHA") +
           u" LEFT JOIN RIYOUSHA_DOUI_REC ON "_s + sqlSamePatient(u"RIYOUSHA_DOUI_REC", u"RIYOUSHA") +
           newest(options.rows.has_value()) +
           u" LEFT JOIN DOCTOR ON DOCTOR.cIDno = CASE WHEN RIYOUSHA_DOUI_REC.nDate IS NULL"
           " THEN CAST(RIYOUSHA.nDouiIsiCd AS VARCHAR(10)) ELSE RIYOUSHA_DOUI_REC.cIsiCd END"
           " LEFT JOIN SISETSU AS HOSPITAL ON HOSPITAL.nIDNo = DOCTOR.iSisetsuCode"
           " LEFT JOIN SISETSU AS HOME ON HOME.nIDNo = RIYOUSHA_SUB.iAddressSisetsuCd"
           " LEFT JOIN STAFF ON STAFF.nIDNo = RIYOUSHA.nTantou AND "_s +
           sqlSameBranch(u"STAFF", u"RIYOUSHA") + u" LEFT JOIN KYOTEN ON "_s +
           sqlSameBranch(u"KYOTEN", u"RIYOUSHA") + u" LEFT JOIN CORP_SUB ON "_s +
           sqlSameBranch(u"CORP_SUB", u"RIYOUSHA") + formJoin(u"DOUISHO"_s, u"iDouishoId"_s, master) +
           formJoin(u"DOUISHOKOUTOU"_s, u"iDouishoIdKoutou"_s, master);
}

/// The patients asked for, each once.
std::set<qint32> numbers(const ConsentFormOptions &options) {
    if (!options.rows)
        return {options.patients.begin(), options.patients.end()};
    std::set<qint32> patients;
    for (const ConsentFormRow &row : *options.rows)
        patients.insert(row.key.patient.nIDNo);
    return patients;
}

QString matching(const ConsentFormOptions &options) {
    QString sql = u" AND "_s + sqlIsListed() + u" AND RIYOUSHA.tExpireDay IS NULL"_s;
    if (options.staff != 0)
        sql += u" AND RIYOUSHA.nTantou = "_s + sqlNumber(options.staff);
    if (!options.doctor.isEmpty())
        sql += u" AND DOCTOR.cIDno = "_s + sqlText(options.doctor);
    if (options.periodEndFrom.isValid())
        sql += u" AND RIYOUSHA_DOUI_REC.tDouiKaryoE >= "_s + sqlDate(options.periodEndFrom);
    if (options.periodEndTo.isValid())
        sql += u" AND RIYOUSHA_DOUI_REC.tDouiKaryoE <= "_s + sqlDate(options.periodEndTo);
    return sql;
}

QString where(const ConsentFormOptions &options) {
    QString sql = u" WHERE "_s + sqlWhere(options.branch, u"RIYOUSHA");
    const TreatmentKind kind = options.rows ? TreatmentKind::All : options.kind;
    if (kind == TreatmentKind::Massage)
        sql += u" AND (RIYOUSHA.iSejutsuKubun = 0 OR RIYOUSHA.iSejutsuKubun IS NULL)"_s;
    if (kind == TreatmentKind::Acupuncture)
        sql += u" AND RIYOUSHA.iSejutsuKubun <> 0"_s;
    const std::set<qint32> patients = numbers(options);
    if (patients.empty())
        return sql + matching(options);
    return sql + sqlAndAmong(u"RIYOUSHA.nIDNo", patients);
}

QString orderBy(FormOrder order) {
    switch (order) {
    case FormOrder::Kana:
        return u" ORDER BY RIYOUSHA.cNameKana, RIYOUSHA.nIDNo"_s;
    case FormOrder::Hospital:
        return u" ORDER BY HOSPITAL.cShameiKana1, DOCTOR.cIDno, RIYOUSHA.cNameKana, RIYOUSHA.nIDNo"_s;
    case FormOrder::Staff:
        return u" ORDER BY RIYOUSHA.nTantou, RIYOUSHA.cNameKana, RIYOUSHA.nIDNo"_s;
    case FormOrder::PeriodEnd:
        return u" ORDER BY RIYOUSHA_DOUI_REC.tDouiKaryoE, RIYOUSHA.cNameKana, RIYOUSHA.nIDNo"_s;
    case FormOrder::Number:
    case FormOrder::AsChosen:
        break;
    }
    return u" ORDER BY RIYOUSHA.nIDNo"_s;
}

} // namespace

QString consentFormSql(const ConsentFormOptions &options) {
    return u"SELECT "_s + selectList() + joins(options) + where(options) + orderBy(options.order);
}
