#include "db/tables/patient/riyousha_doui_rec.h"

#include "db/tables/keys_query.h"

using namespace Qt::Literals::StringLiterals;

template class Table<cD_RIYOUSHA_DOUI_REC>;

namespace {

constexpr TableColumn<cD_RIYOUSHA_DOUI_REC> columns[] = {
    {u"iKyotenCd", &cD_RIYOUSHA_DOUI_REC::iKyotenCd, ColumnUse::Key},
    {u"iKyotenEb", &cD_RIYOUSHA_DOUI_REC::iKyotenEb, ColumnUse::Key},
    {u"nIDNo", &cD_RIYOUSHA_DOUI_REC::nIDNo, ColumnUse::Key},
    {u"nDate", &cD_RIYOUSHA_DOUI_REC::nDate, ColumnUse::Key},
    {u"iSejutuBui1", &cD_RIYOUSHA_DOUI_REC::iSejutuBui1},
    {u"iSejutuBui2", &cD_RIYOUSHA_DOUI_REC::iSejutuBui2},
    {u"iSejutuBui3", &cD_RIYOUSHA_DOUI_REC::iSejutuBui3},
    {u"iSejutuBui4", &cD_RIYOUSHA_DOUI_REC::iSejutuBui4},
    {u"iSejutuBui5", &cD_RIYOUSHA_DOUI_REC::iSejutuBui5},
    {u"iOnan", &cD_RIYOUSHA_DOUI_REC::iOnan},
    {u"iDenki", &cD_RIYOUSHA_DOUI_REC::iDenki},
    {u"iHKHariUmu", &cD_RIYOUSHA_DOUI_REC::iHKHariUmu},
    {u"iHKKyuUmu", &cD_RIYOUSHA_DOUI_REC::iHKKyuUmu},
    {u"iHKDekiUmu", &cD_RIYOUSHA_DOUI_REC::iHKDekiUmu},
    {u"iHKDispDenkiHariUmu", &cD_RIYOUSHA_DOUI_REC::iHKDispDenkiHariUmu},
    {u"iHKDispDenkiOnKyuUmu", &cD_RIYOUSHA_DOUI_REC::iHKDispDenkiOnKyuUmu},
    {u"iHKDispDenkiKousenUmu", &cD_RIYOUSHA_DOUI_REC::iHKDispDenkiKousenUmu},
    {u"tOnanSday", &cD_RIYOUSHA_DOUI_REC::tOnanSday},
    {u"tOnanEday", &cD_RIYOUSHA_DOUI_REC::tOnanEday},
    {u"tDenkiSday", &cD_RIYOUSHA_DOUI_REC::tDenkiSday},
    {u"tDenkiEday", &cD_RIYOUSHA_DOUI_REC::tDenkiEday},
    {u"tHenkeSday", &cD_RIYOUSHA_DOUI_REC::tHenkeSday},
    {u"tHenKeEday", &cD_RIYOUSHA_DOUI_REC::tHenKeEday},
    {u"tHKHariSday", &cD_RIYOUSHA_DOUI_REC::tHKHariSday},
    {u"tHKHariEday", &cD_RIYOUSHA_DOUI_REC::tHKHariEday},
    {u"tHKKyuSday", &cD_RIYOUSHA_DOUI_REC::tHKKyuSday},
    {u"tHKKyuEday", &cD_RIYOUSHA_DOUI_REC::tHKKyuEday},
    {u"tHKDenkiSday", &cD_RIYOUSHA_DOUI_REC::tHKDenkiSday},
    {u"tHKDenkiEday", &cD_RIYOUSHA_DOUI_REC::tHKDenkiEday},
    {u"cIsiCd", &cD_RIYOUSHA_DOUI_REC::cIsiCd},
    {u"cDouiIsiName", &cD_RIYOUSHA_DOUI_REC::cDouiIsiName},
    {u"cDouiIsiKikan", &cD_RIYOUSHA_DOUI_REC::cDouiIsiKikan},
    {u"cDouiIsiAdd", &cD_RIYOUSHA_DOUI_REC::cDouiIsiAdd},
    {u"cDouiByoumei", &cD_RIYOUSHA_DOUI_REC::cDouiByoumei},
    {u"tDouiDay", &cD_RIYOUSHA_DOUI_REC::tDouiDay},
    {u"tDouiKaryoS", &cD_RIYOUSHA_DOUI_REC::tDouiKaryoS},
    {u"tDouiKaryoE", &cD_RIYOUSHA_DOUI_REC::tDouiKaryoE},
    {u"nDouiUpMonth", &cD_RIYOUSHA_DOUI_REC::nDouiUpMonth},
    {u"cByoumeiM", &cD_RIYOUSHA_DOUI_REC::cByoumeiM},
    {u"iHKSyobyou01Flg", &cD_RIYOUSHA_DOUI_REC::iHKSyobyou01Flg},
    {u"iHKSyobyou02Flg", &cD_RIYOUSHA_DOUI_REC::iHKSyobyou02Flg},
    {u"iHKSyobyou03Flg", &cD_RIYOUSHA_DOUI_REC::iHKSyobyou03Flg},
    {u"iHKSyobyou04Flg", &cD_RIYOUSHA_DOUI_REC::iHKSyobyou04Flg},
    {u"iHKSyobyou05Flg", &cD_RIYOUSHA_DOUI_REC::iHKSyobyou05Flg},
    {u"iHKSyobyou06Flg", &cD_RIYOUSHA_DOUI_REC::iHKSyobyou06Flg},
    {u"iHKSyobyou07Flg", &cD_RIYOUSHA_DOUI_REC::iHKSyobyou07Flg},
    {u"cByoumeiH", &cD_RIYOUSHA_DOUI_REC::cByoumeiH},
    {u"iHKSyobyouChkL", &cD_RIYOUSHA_DOUI_REC::iHKSyobyouChkL},
    {u"iHKSyobyouChkR", &cD_RIYOUSHA_DOUI_REC::iHKSyobyouChkR},
    {u"iNewestFlg", &cD_RIYOUSHA_DOUI_REC::iNewestFlg},
    {u"tSaiDouiDay", &cD_RIYOUSHA_DOUI_REC::tSaiDouiDay},
    {u"tSaiDouiKaryoS", &cD_RIYOUSHA_DOUI_REC::tSaiDouiKaryoS},
    {u"tSaiDouiKaryoE", &cD_RIYOUSHA_DOUI_REC::tSaiDouiKaryoE},
    {u"cKobetuDouiIrai", &cD_RIYOUSHA_DOUI_REC::cKobetuDouiIrai},
    {u"iDouiIraiType", &cD_RIYOUSHA_DOUI_REC::iDouiIraiType},
    {u"iDouiHospOutFlg", &cD_RIYOUSHA_DOUI_REC::iDouiHospOutFlg},
    {u"iDouiIsiOutFlg", &cD_RIYOUSHA_DOUI_REC::iDouiIsiOutFlg},
    {u"cItiranBikou", &cD_RIYOUSHA_DOUI_REC::cItiranBikou},
    {u"iDouishoSaishutokuKikan", &cD_RIYOUSHA_DOUI_REC::iDouishoSaishutokuKikan},
    {u"iOutputFlg", &cD_RIYOUSHA_DOUI_REC::iOutputFlg},
    {u"iGetFlg", &cD_RIYOUSHA_DOUI_REC::iGetFlg},
    {u"iOutputFlgHenkei", &cD_RIYOUSHA_DOUI_REC::iOutputFlgHenkei},
    {u"iGetFlgHenkei", &cD_RIYOUSHA_DOUI_REC::iGetFlgHenkei},
    {u"tDouiDayTempHenkei", &cD_RIYOUSHA_DOUI_REC::tDouiDayTempHenkei},
    {u"tDouiKaryoSTempHenkei", &cD_RIYOUSHA_DOUI_REC::tDouiKaryoSTempHenkei},
    {u"tDouiKaryoETempHenkei", &cD_RIYOUSHA_DOUI_REC::tDouiKaryoETempHenkei},
    {u"iHenkeiFlg", &cD_RIYOUSHA_DOUI_REC::iHenkeiFlg, ColumnUse::Key},
    {u"nHenkeiDouiDate", &cD_RIYOUSHA_DOUI_REC::nHenkeiDouiDate, ColumnUse::Key},
    {u"iDouiShubetsu", &cD_RIYOUSHA_DOUI_REC::iDouiShubetsu},
    {u"iReceptDisabledFlg", &cD_RIYOUSHA_DOUI_REC::iReceptDisabledFlg},
    {u"iRenrakuFlg", &cD_RIYOUSHA_DOUI_REC::iRenrakuFlg},
    {u"iSendFlg", &cD_RIYOUSHA_DOUI_REC::iSendFlg},
    {u"iMahiKukan", &cD_RIYOUSHA_DOUI_REC::iMahiKukan},
    {u"iMahiMigiue", &cD_RIYOUSHA_DOUI_REC::iMahiMigiue},
    {u"iMahiHidariue", &cD_RIYOUSHA_DOUI_REC::iMahiHidariue},
    {u"iMahiMigishita", &cD_RIYOUSHA_DOUI_REC::iMahiMigishita},
    {u"iMahiHidarishita", &cD_RIYOUSHA_DOUI_REC::iMahiHidarishita},
    {u"iKousyukuMigikata", &cD_RIYOUSHA_DOUI_REC::iKousyukuMigikata},
    {u"iKousyukuMigihiji", &cD_RIYOUSHA_DOUI_REC::iKousyukuMigihiji},
    {u"iKousyukuMigitekubi", &cD_RIYOUSHA_DOUI_REC::iKousyukuMigitekubi},
    {u"iKousyukuMigikokannsetu", &cD_RIYOUSHA_DOUI_REC::iKousyukuMigikokannsetu},
    {u"iKousyukuMigihiza", &cD_RIYOUSHA_DOUI_REC::iKousyukuMigihiza},
    {u"iKousyukuMigiashikubi", &cD_RIYOUSHA_DOUI_REC::iKousyukuMigiashikubi},
    {u"iKousyukuHidarikata", &cD_RIYOUSHA_DOUI_REC::iKousyukuHidarikata},
    {u"iKousyukuHidarihiji", &cD_RIYOUSHA_DOUI_REC::iKousyukuHidarihiji},
    {u"iKousyukuHidaritekubi", &cD_RIYOUSHA_DOUI_REC::iKousyukuHidaritekubi},
    {u"iKousyukuHidarikokannsetu", &cD_RIYOUSHA_DOUI_REC::iKousyukuHidarikokannsetu},
    {u"iKousyukuHidarihiza", &cD_RIYOUSHA_DOUI_REC::iKousyukuHidarihiza},
    {u"iKousyukuHidariashikubi", &cD_RIYOUSHA_DOUI_REC::iKousyukuHidariashikubi},
    {u"iKousyukuSonota", &cD_RIYOUSHA_DOUI_REC::iKousyukuSonota},
    {u"cKousyukuSonotaStr", &cD_RIYOUSHA_DOUI_REC::cKousyukuSonotaStr},
    {u"cSyoujyouSonotaStr", &cD_RIYOUSHA_DOUI_REC::cSyoujyouSonotaStr},
    {u"tShinsatsuDay", &cD_RIYOUSHA_DOUI_REC::tShinsatsuDay},
    {u"cMasByoumei", &cD_RIYOUSHA_DOUI_REC::cMasByoumei},
    {u"cPcName", &cD_RIYOUSHA_DOUI_REC::cPcName, ColumnUse::PcName},
    {u"tUpDateTime", &cD_RIYOUSHA_DOUI_REC::tUpDateTime, ColumnUse::UpDateTime},
};
constexpr TableDefinition<cD_RIYOUSHA_DOUI_REC> definition{u"RIYOUSHA_DOUI_REC", columns};

} // namespace

const TableDefinition<cD_RIYOUSHA_DOUI_REC> &cD_RIYOUSHA_DOUI_REC::table() {
    return definition;
}

ConsentRowKey cD_RIYOUSHA_DOUI_REC::key() const {
    return {*this, nDate, iHenkeiFlg, nHenkeiDouiDate};
}

short cT_RIYOUSHA_DOUI_REC::iDataReadGrid(const PatientKey &patient) {
    return read(u" where "_s + sqlWhere(patient, u"RIYOUSHA_DOUI_REC") +
                u" ORDER BY  nDate, iHenkeiFlg, nHenkeiDouiDate"_s);
}

short cT_RIYOUSHA_DOUI_REC::iDataReadGrid(const Branch &branch, const std::set<qint32> &patients) {
    return read(u" where "_s + sqlWhere(branch, u"RIYOUSHA_DOUI_REC") +
                sqlAndAmong(u"RIYOUSHA_DOUI_REC.nIDNo", patients) +
                u" ORDER BY nIDNo, nDate, iHenkeiFlg, nHenkeiDouiDate"_s);
}

short cT_RIYOUSHA_DOUI_REC::iDataRead(const ConsentRowKey &key) {
    return read(u" where "_s + sqlWhere(key));
}
