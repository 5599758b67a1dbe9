#include "db/tables/patient/riyousha.h"

#include "db/tables/keys_query.h"

using namespace Qt::Literals::StringLiterals;

template class Table<cD_RIYOUSHA>;

namespace {

constexpr TableColumn<cD_RIYOUSHA> columns[] = {
    {u"iKyotenCd", &cD_RIYOUSHA::iKyotenCd, ColumnUse::Key},
    {u"iKyotenEb", &cD_RIYOUSHA::iKyotenEb, ColumnUse::Key},
    {u"nIDNo", &cD_RIYOUSHA::nIDNo, ColumnUse::Key},
    {u"cName", &cD_RIYOUSHA::cName},
    {u"cNameKana", &cD_RIYOUSHA::cNameKana},
    {u"cNameRyaku", &cD_RIYOUSHA::cNameRyaku},
    {u"cName4Tag", &cD_RIYOUSHA::cName4Tag},
    {u"iSexKubun", &cD_RIYOUSHA::iSexKubun},
    {u"tBirthday", &cD_RIYOUSHA::tBirthday},
    {u"cTelNo", &cD_RIYOUSHA::cTelNo},
    {u"cYubinNo", &cD_RIYOUSHA::cYubinNo},
    {u"cAdress1", &cD_RIYOUSHA::cAdress1},
    {u"cAdress2", &cD_RIYOUSHA::cAdress2},
    {u"cZokugara", &cD_RIYOUSHA::cZokugara},
    {u"iSejutsuKubun", &cD_RIYOUSHA::iSejutsuKubun},
    {u"tSyoryoDay", &cD_RIYOUSHA::tSyoryoDay},
    {u"tHatsubyou", &cD_RIYOUSHA::tHatsubyou},
    {u"iTenki", &cD_RIYOUSHA::iTenki},
    {u"tSkikanS", &cD_RIYOUSHA::tSkikanS},
    {u"tSkikanE", &cD_RIYOUSHA::tSkikanE},
    {u"tExpireDay", &cD_RIYOUSHA::tExpireDay},
    {u"iOuryouUmu", &cD_RIYOUSHA::iOuryouUmu},
    {u"iOuryouRiyuu1", &cD_RIYOUSHA::iOuryouRiyuu1},
    {u"iOuryouRiyuu2", &cD_RIYOUSHA::iOuryouRiyuu2},
    {u"iOuryouRiyuu3", &cD_RIYOUSHA::iOuryouRiyuu3},
    {u"cOuryouRiyuuSonota", &cD_RIYOUSHA::cOuryouRiyuuSonota},
    {u"iHokouType", &cD_RIYOUSHA::iHokouType},
    {u"iKaigodo", &cD_RIYOUSHA::iKaigodo},
    {u"nTantou", &cD_RIYOUSHA::nTantou},
    {u"nTantou2", &cD_RIYOUSHA::nTantou2},
    {u"nTantou3", &cD_RIYOUSHA::nTantou3},
    {u"nTantou4", &cD_RIYOUSHA::nTantou4},
    {u"nTantou5", &cD_RIYOUSHA::nTantou5},
    {u"nTantou6", &cD_RIYOUSHA::nTantou6},
    {u"nTantou7", &cD_RIYOUSHA::nTantou7},
    {u"nTantou8", &cD_RIYOUSHA::nTantou8},
    {u"nTantou9", &cD_RIYOUSHA::nTantou9},
    {u"nTantou10", &cD_RIYOUSHA::nTantou10},
    {u"tDouiDay1", &cD_RIYOUSHA::tDouiDay1},
    {u"tDouiKaryoS1", &cD_RIYOUSHA::tDouiKaryoS1},
    {u"tDouiKaryoE1", &cD_RIYOUSHA::tDouiKaryoE1},
    {u"cDouiIsiName1", &cD_RIYOUSHA::cDouiIsiName1},
    {u"cDouiIsiKikan1", &cD_RIYOUSHA::cDouiIsiKikan1},
    {u"cDouiIsiAdd1", &cD_RIYOUSHA::cDouiIsiAdd1},
    {u"cDouiByoumei1", &cD_RIYOUSHA::cDouiByoumei1},
    {u"iDouiShubetsu1", &cD_RIYOUSHA::iDouiShubetsu1},
    {u"iDouiKikan1", &cD_RIYOUSHA::iDouiKikan1},
    {u"iDoui1CalcType", &cD_RIYOUSHA::iDoui1CalcType},
    {u"tDouiDay2", &cD_RIYOUSHA::tDouiDay2},
    {u"tDouiKaryoS2", &cD_RIYOUSHA::tDouiKaryoS2},
    {u"tDouiKaryoE2", &cD_RIYOUSHA::tDouiKaryoE2},
    {u"cDouiIsiName2", &cD_RIYOUSHA::cDouiIsiName2},
    {u"cDouiIsiKikan2", &cD_RIYOUSHA::cDouiIsiKikan2},
    {u"cDouiIsiAdd2", &cD_RIYOUSHA::cDouiIsiAdd2},
    {u"cDouiByoumei2", &cD_RIYOUSHA::cDouiByoumei2},
    {u"iDouiShubetsu2", &cD_RIYOUSHA::iDouiShubetsu2},
    {u"iDouiKikan2", &cD_RIYOUSHA::iDouiKikan2},
    {u"iDoui2CalcType", &cD_RIYOUSHA::iDoui2CalcType},
    {u"nDouiIsiCd", &cD_RIYOUSHA::nDouiIsiCd},
    {u"iDouiIraiType", &cD_RIYOUSHA::iDouiIraiType},
    {u"iDouiIsiOutFlg", &cD_RIYOUSHA::iDouiIsiOutFlg},
    {u"iDouiHospOutFlg", &cD_RIYOUSHA::iDouiHospOutFlg},
    {u"cDouiItiranBikou", &cD_RIYOUSHA::cDouiItiranBikou},
    {u"cDouiDairiNin1", &cD_RIYOUSHA::cDouiDairiNin1},
    {u"cDouiDairiNin2", &cD_RIYOUSHA::cDouiDairiNin2},
    {u"iDouiNo", &cD_RIYOUSHA::iDouiNo},
    {u"tDouiYM", &cD_RIYOUSHA::tDouiYM},
    {u"iKikanCalcType", &cD_RIYOUSHA::iKikanCalcType},
    {u"iKikanUpdate1", &cD_RIYOUSHA::iKikanUpdate1},
    {u"iKikanUpdate2", &cD_RIYOUSHA::iKikanUpdate2},
    {u"iDouishoSaishutokuKikan", &cD_RIYOUSHA::iDouishoSaishutokuKikan},
    {u"tDouishoSaishutokuFrom", &cD_RIYOUSHA::tDouishoSaishutokuFrom},
    {u"tDouishoSaishutokuTo", &cD_RIYOUSHA::tDouishoSaishutokuTo},
    {u"tDouiDayTemp", &cD_RIYOUSHA::tDouiDayTemp},
    {u"tdouiKaryoSTemp", &cD_RIYOUSHA::tdouiKaryoSTemp},
    {u"tdouiKaryoETemp", &cD_RIYOUSHA::tdouiKaryoETemp},
    {u"tDouiDayTempHenkei", &cD_RIYOUSHA::tDouiDayTempHenkei},
    {u"tDouiKaryoSTempHenkei", &cD_RIYOUSHA::tDouiKaryoSTempHenkei},
    {u"tDouiKaryoETempHenkei", &cD_RIYOUSHA::tDouiKaryoETempHenkei},
    {u"cHokenNo", &cD_RIYOUSHA::cHokenNo},
    {u"cHokenNo2", &cD_RIYOUSHA::cHokenNo2},
    {u"nHokenNo", &cD_RIYOUSHA::nHokenNo},
    {u"iHoken", &cD_RIYOUSHA::iHoken},
    {u"iHoken2", &cD_RIYOUSHA::iHoken2},
    {u"cHokenJName", &cD_RIYOUSHA::cHokenJName},
    {u"cHokenJname2", &cD_RIYOUSHA::cHokenJname2},
    {u"cHokenKigouNo", &cD_RIYOUSHA::cHokenKigouNo},
    {u"cHokenKigouNo2", &cD_RIYOUSHA::cHokenKigouNo2},
    {u"tHokenSikakuYmd", &cD_RIYOUSHA::tHokenSikakuYmd},
    {u"tHokenYukouYmd", &cD_RIYOUSHA::tHokenYukouYmd},
    {u"cKaigoHokenNo", &cD_RIYOUSHA::cKaigoHokenNo},
    {u"tKaigoKikanSt", &cD_RIYOUSHA::tKaigoKikanSt},
    {u"tKaigoKikanEd", &cD_RIYOUSHA::tKaigoKikanEd},
    {u"nSisetsuCd", &cD_RIYOUSHA::nSisetsuCd},
    {u"cSisetsuName", &cD_RIYOUSHA::cSisetsuName},
    {u"cSisetsuAddress", &cD_RIYOUSHA::cSisetsuAddress},
    {u"nCareManeCd", &cD_RIYOUSHA::nCareManeCd},
    {u"cCareManeName", &cD_RIYOUSHA::cCareManeName},
    {u"cPcName", &cD_RIYOUSHA::cPcName, ColumnUse::PcName},
    {u"tUpDateTime", &cD_RIYOUSHA::tUpDateTime, ColumnUse::UpDateTime},
};
constexpr TableDefinition<cD_RIYOUSHA> definition{u"RIYOUSHA", columns};

} // namespace

const TableDefinition<cD_RIYOUSHA> &cD_RIYOUSHA::table() {
    return definition;
}

short cT_RIYOUSHA::iInit(cT_ADODB &db) {
    m_monthly.iInit(db);
    return Table::iInit(db);
}

short cT_RIYOUSHA::iGetMaxIDNo(qint32 &result, const Branch &branch) {
    return readMax(result, maxSql(text(), u"nIDNo") + u" where "_s + sqlWhere(branch, u"RIYOUSHA"));
}

short cT_RIYOUSHA::iDataReadGrid(const Branch &branch) {
    return read(u" where "_s + sqlWhere(branch, u"RIYOUSHA") + u"  order by      nIDNo"_s);
}

short cT_RIYOUSHA::iDataReadGrid_Douisho(const Branch &branch) {
    return read(u" where "_s + sqlWhere(branch, u"RIYOUSHA") +
                u" and (iTenki IS NULL OR iTenki NOT IN (1, 3, 15))  order by      nIDNo"_s);
}

short cT_RIYOUSHA::iDataRead(const PatientKey &key) {
    return read(u" where "_s + sqlWhere(key, u"RIYOUSHA"));
}

short cT_RIYOUSHA::iReadDOUIKIROKU(const PatientKey &key, const QString &tDouiYM) {
    return passOn(m_monthly.iDataReadGrid(key, tDouiYM));
}

short cT_RIYOUSHA::iDataUpdateDOUIKIROKU(const cD_DOUIKIROKU *record, int position, bool transaction) {
    return passOn(m_monthly.iDataUpdate(record, position, transaction));
}

short cT_RIYOUSHA::iData削除DOUIKIROKU(const cD_DOUIKIROKU *record, int position, bool transaction) {
    return passOn(m_monthly.iData削除(record, position, transaction));
}

short cT_RIYOUSHA::passOn(short status) {
    return status == 0 ? 0 : fail(m_monthly.sErrMsg());
}
