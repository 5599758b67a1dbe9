#include "db/tables/patient/douikiroku.h"

#include "db/sql_text.h"
#include "db/tables/keys_query.h"

using namespace Qt::Literals::StringLiterals;

template class Table<cD_DOUIKIROKU>;

namespace {

constexpr TableColumn<cD_DOUIKIROKU> columns[] = {
    {u"iKyotenCd", &cD_DOUIKIROKU::iKyotenCd, ColumnUse::Key},
    {u"iKyotenEb", &cD_DOUIKIROKU::iKyotenEb, ColumnUse::Key},
    {u"nIDNo", &cD_DOUIKIROKU::nIDNo, ColumnUse::Key},
    {u"tDouiYM", &cD_DOUIKIROKU::tDouiYM, ColumnUse::Key},
    {u"iDouiNo", &cD_DOUIKIROKU::iDouiNo, ColumnUse::Key},
    {u"cDouiIsiName1", &cD_DOUIKIROKU::cDouiIsiName1},
    {u"cDouiIsiKikan1", &cD_DOUIKIROKU::cDouiIsiKikan1},
    {u"cDouiIsiAdd1", &cD_DOUIKIROKU::cDouiIsiAdd1},
    {u"cDouiByoumei1", &cD_DOUIKIROKU::cDouiByoumei1},
    {u"tDouiDay1", &cD_DOUIKIROKU::tDouiDay1},
    {u"tDouiKaryoS1", &cD_DOUIKIROKU::tDouiKaryoS1},
    {u"tDouiKaryoE1", &cD_DOUIKIROKU::tDouiKaryoE1},
    {u"iDouiShubetsu1", &cD_DOUIKIROKU::iDouiShubetsu1},
    {u"cDouiIsiName2", &cD_DOUIKIROKU::cDouiIsiName2},
    {u"cDouiIsiKikan2", &cD_DOUIKIROKU::cDouiIsiKikan2},
    {u"cDouiIsiAdd2", &cD_DOUIKIROKU::cDouiIsiAdd2},
    {u"cDouiByoumei2", &cD_DOUIKIROKU::cDouiByoumei2},
    {u"tDouiDay2", &cD_DOUIKIROKU::tDouiDay2},
    {u"tDouiKaryoS2", &cD_DOUIKIROKU::tDouiKaryoS2},
    {u"tDouiKaryoE2", &cD_DOUIKIROKU::tDouiKaryoE2},
    {u"iDouiShubetsu2", &cD_DOUIKIROKU::iDouiShubetsu2},
    {u"iSejutuBui1", &cD_DOUIKIROKU::iSejutuBui1},
    {u"iSejutuBui2", &cD_DOUIKIROKU::iSejutuBui2},
    {u"iSejutuBui3", &cD_DOUIKIROKU::iSejutuBui3},
    {u"iSejutuBui4", &cD_DOUIKIROKU::iSejutuBui4},
    {u"iSejutuBui5", &cD_DOUIKIROKU::iSejutuBui5},
    {u"iSejutuBui11", &cD_DOUIKIROKU::iSejutuBui11},
    {u"iSejutuBui12", &cD_DOUIKIROKU::iSejutuBui12},
    {u"iSejutuBui13", &cD_DOUIKIROKU::iSejutuBui13},
    {u"iSejutuBui14", &cD_DOUIKIROKU::iSejutuBui14},
    {u"iSejutuBui15", &cD_DOUIKIROKU::iSejutuBui15},
    {u"iHenke", &cD_DOUIKIROKU::iHenke},
    {u"iOnan", &cD_DOUIKIROKU::iOnan},
    {u"iDenki", &cD_DOUIKIROKU::iDenki},
    {u"iHenke1", &cD_DOUIKIROKU::iHenke1},
    {u"iOnan1", &cD_DOUIKIROKU::iOnan1},
    {u"iDenki1", &cD_DOUIKIROKU::iDenki1},
    {u"tOnanSday", &cD_DOUIKIROKU::tOnanSday},
    {u"tOnanEday", &cD_DOUIKIROKU::tOnanEday},
    {u"tDenkiSday", &cD_DOUIKIROKU::tDenkiSday},
    {u"tDenkiEday", &cD_DOUIKIROKU::tDenkiEday},
    {u"tHenkeSday", &cD_DOUIKIROKU::tHenkeSday},
    {u"tHenKeEday", &cD_DOUIKIROKU::tHenKeEday},
    {u"tHKHariSday", &cD_DOUIKIROKU::tHKHariSday},
    {u"tHKHariEday", &cD_DOUIKIROKU::tHKHariEday},
    {u"tHKKyuSday", &cD_DOUIKIROKU::tHKKyuSday},
    {u"tHKKyuEday", &cD_DOUIKIROKU::tHKKyuEday},
    {u"tHKDenkiSday", &cD_DOUIKIROKU::tHKDenkiSday},
    {u"tHKDenkiEday", &cD_DOUIKIROKU::tHKDenkiEday},
    {u"tOnanSday2", &cD_DOUIKIROKU::tOnanSday2},
    {u"tOnanEday2", &cD_DOUIKIROKU::tOnanEday2},
    {u"tDenkiSday2", &cD_DOUIKIROKU::tDenkiSday2},
    {u"tDenkiEday2", &cD_DOUIKIROKU::tDenkiEday2},
    {u"tHenkeSday2", &cD_DOUIKIROKU::tHenkeSday2},
    {u"tHenKeEday2", &cD_DOUIKIROKU::tHenKeEday2},
    {u"tHKHariSday2", &cD_DOUIKIROKU::tHKHariSday2},
    {u"tHKHariEday2", &cD_DOUIKIROKU::tHKHariEday2},
    {u"tHKKyuSday2", &cD_DOUIKIROKU::tHKKyuSday2},
    {u"tHKKyuEday2", &cD_DOUIKIROKU::tHKKyuEday2},
    {u"tHKDenkiSday2", &cD_DOUIKIROKU::tHKDenkiSday2},
    {u"tHKDenkiEday2", &cD_DOUIKIROKU::tHKDenkiEday2},
    {u"iHKHariUmu", &cD_DOUIKIROKU::iHKHariUmu},
    {u"iHKKyuUmu", &cD_DOUIKIROKU::iHKKyuUmu},
    {u"iHKDekiUmu", &cD_DOUIKIROKU::iHKDekiUmu},
    {u"iHKHari1Umu", &cD_DOUIKIROKU::iHKHari1Umu},
    {u"iHKKyu1Umu", &cD_DOUIKIROKU::iHKKyu1Umu},
    {u"iHKDeki1Umu", &cD_DOUIKIROKU::iHKDeki1Umu},
    {u"cDouiDairiNin", &cD_DOUIKIROKU::cDouiDairiNin},
    {u"cDouiDairiNin2", &cD_DOUIKIROKU::cDouiDairiNin2},
    {u"cBikou", &cD_DOUIKIROKU::cBikou},
    {u"cBikou2", &cD_DOUIKIROKU::cBikou2},
    {u"cItiranBikou", &cD_DOUIKIROKU::cItiranBikou},
    {u"tDouishoSaishutokuFrom", &cD_DOUIKIROKU::tDouishoSaishutokuFrom},
    {u"tDouishoSaishutokuTo", &cD_DOUIKIROKU::tDouishoSaishutokuTo},
    {u"iDouishoSaishutokuKikan", &cD_DOUIKIROKU::iDouishoSaishutokuKikan},
    {u"iDouiKikan1", &cD_DOUIKIROKU::iDouiKikan1},
    {u"iKikanUpdate1", &cD_DOUIKIROKU::iKikanUpdate1},
    {u"iDouiKikan2", &cD_DOUIKIROKU::iDouiKikan2},
    {u"iKikanUpdate2", &cD_DOUIKIROKU::iKikanUpdate2},
    {u"iDoui1CalcType", &cD_DOUIKIROKU::iDoui1CalcType},
    {u"iDoui2CalcType", &cD_DOUIKIROKU::iDoui2CalcType},
    {u"iKikanCalcType", &cD_DOUIKIROKU::iKikanCalcType},
    {u"iOutputFlg", &cD_DOUIKIROKU::iOutputFlg},
    {u"iGetFlg", &cD_DOUIKIROKU::iGetFlg},
    {u"tDouiDayTemp", &cD_DOUIKIROKU::tDouiDayTemp},
    {u"tdouiKaryoSTemp", &cD_DOUIKIROKU::tdouiKaryoSTemp},
    {u"tdouiKaryoETemp", &cD_DOUIKIROKU::tdouiKaryoETemp},
    {u"iOutputFlgHenkei", &cD_DOUIKIROKU::iOutputFlgHenkei},
    {u"iGetFlgHenkei", &cD_DOUIKIROKU::iGetFlgHenkei},
    {u"tDouiDayTempHenkei", &cD_DOUIKIROKU::tDouiDayTempHenkei},
    {u"tdouiKaryoSTempHenkei", &cD_DOUIKIROKU::tdouiKaryoSTempHenkei},
    {u"tdouiKaryoETempHenkei", &cD_DOUIKIROKU::tdouiKaryoETempHenkei},
    {u"iDouiHospOutFlg", &cD_DOUIKIROKU::iDouiHospOutFlg},
    {u"iDouiIsiOutFlg", &cD_DOUIKIROKU::iDouiIsiOutFlg},
    {u"iDouiIraiType", &cD_DOUIKIROKU::iDouiIraiType},
    {u"cKobetuDouiIrai", &cD_DOUIKIROKU::cKobetuDouiIrai},
    {u"cPcName", &cD_DOUIKIROKU::cPcName, ColumnUse::PcName},
    {u"tUpDateTime", &cD_DOUIKIROKU::tUpDateTime, ColumnUse::UpDateTime},
};
constexpr TableDefinition<cD_DOUIKIROKU> definition{u"DOUIKIROKU", columns};

} // namespace

const TableDefinition<cD_DOUIKIROKU> &cD_DOUIKIROKU::table() {
    return definition;
}

short cT_DOUIKIROKU::iDataReadGrid(const PatientKey &patient, const QString &tDouiYM) {
    return read(u" where "_s + sqlWhere(patient, u"DOUIKIROKU") + u" and tDouiYM = "_s + sqlText(tDouiYM) +
                u"  order by      iDouiNo"_s);
}
