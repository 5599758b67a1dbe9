#include "db/tables/masters/corp.h"

#include "db/sql_text.h"
#include "db/tables/keys_query.h"

using namespace Qt::Literals::StringLiterals;

template class Table<cD_CORP>;

namespace {

constexpr TableColumn<cD_CORP> columns[] = {
    {u"iKyotenCd", &cD_CORP::iKyotenCd, ColumnUse::Key},
    {u"iKyotenEb", &cD_CORP::iKyotenEb, ColumnUse::Key},
    {u"nIDNo", &cD_CORP::nIDNo, ColumnUse::Key},
    {u"iType", &cD_CORP::iType},
    {u"cShamei1", &cD_CORP::cShamei1},
    {u"cShamei2", &cD_CORP::cShamei2},
    {u"cShameiKana1", &cD_CORP::cShameiKana1},
    {u"cShameiKana2", &cD_CORP::cShameiKana2},
    {u"cDaihyo", &cD_CORP::cDaihyo},
    {u"cDaihyoKana", &cD_CORP::cDaihyoKana},
    {u"cYubinNo", &cD_CORP::cYubinNo},
    {u"cAddress1", &cD_CORP::cAddress1},
    {u"cAddress2", &cD_CORP::cAddress2},
    {u"cAddressKana", &cD_CORP::cAddressKana},
    {u"cTelNo", &cD_CORP::cTelNo},
    {u"cFaxNo", &cD_CORP::cFaxNo},
    {u"cEmail", &cD_CORP::cEmail},
    {u"cMailDestination", &cD_CORP::cMailDestination},
    {u"cMailDestinationZipNo", &cD_CORP::cMailDestinationZipNo},
    {u"cJigyousyoNo", &cD_CORP::cJigyousyoNo},
    {u"cJigyousyoNo2", &cD_CORP::cJigyousyoNo2},
    {u"cJigyouReceiptName", &cD_CORP::cJigyouReceiptName},
    {u"cHokenTourokuKubetsu", &cD_CORP::cHokenTourokuKubetsu},
    {u"cKokuhoTourokuNo", &cD_CORP::cKokuhoTourokuNo},
    {u"iKyotenToshiNo", &cD_CORP::iKyotenToshiNo},
    {u"cKinyuNo", &cD_CORP::cKinyuNo},
    {u"cKinyuName", &cD_CORP::cKinyuName},
    {u"cKinyuSitenNo", &cD_CORP::cKinyuSitenNo},
    {u"cKinyuSiten", &cD_CORP::cKinyuSiten},
    {u"iKinSiten", &cD_CORP::iKinSiten},
    {u"iKinSyubetsu", &cD_CORP::iKinSyubetsu},
    {u"iKozaKubun", &cD_CORP::iKozaKubun},
    {u"iKozaType", &cD_CORP::iKozaType},
    {u"cKozaBangou", &cD_CORP::cKozaBangou},
    {u"cKozaKana", &cD_CORP::cKozaKana},
    {u"cKozaMeigi1", &cD_CORP::cKozaMeigi1},
    {u"cKozaMeigi2", &cD_CORP::cKozaMeigi2},
    {u"cPersonalNumberCorp", &cD_CORP::cPersonalNumberCorp},
    {u"nLat", &cD_CORP::nLat},
    {u"nLon", &cD_CORP::nLon},
    {u"cPcName", &cD_CORP::cPcName, ColumnUse::PcName},
    {u"tUpDateTime", &cD_CORP::tUpDateTime, ColumnUse::UpDateTime},
};
constexpr TableDefinition<cD_CORP> definition{u"CORP", columns};

const QString listOrder = u"  order by      CORP.iKyotenCd, CORP.iKyotenEb, CORP.nIDNo"_s;

QString conditionsOf(const cD_CORP &filter) {
    QStringList conditions;
    if (filter.iKyotenCd != 0)
        conditions += sqlWhere(filter.branch(), u"CORP");
    if (!filter.iType.isNull())
        conditions += u"CORP.iType = "_s + sqlNumber(filter.iType);
    if (!filter.cShamei1.isEmpty())
        conditions += sqlContains(u"CORP.cShamei1"_s, filter.cShamei1);
    if (!filter.cShameiKana1.isEmpty())
        conditions += sqlContains(u"CORP.cShameiKana1"_s, filter.cShameiKana1);
    return conditions.join(u" and "_s);
}

} // namespace

const TableDefinition<cD_CORP> &cD_CORP::table() {
    return definition;
}

short cT_CORP::iGetMaxIDNo(qint32 &result, const Branch &branch) {
    return readMax(result, maxSql(text(), u"nIDNo") + u" where "_s + sqlWhere(branch, u"CORP"));
}

short cT_CORP::iDataReadGrid() {
    return read(listOrder);
}

short cT_CORP::iDataReadGrid_Jouken(const cD_CORP *filter) {
    if (!filter)
        return failInvalid();
    const QString conditions = conditionsOf(*filter);
    return read((conditions.isEmpty() ? QString() : u" where "_s + conditions) + listOrder);
}

short cT_CORP::iDataReadChk(const cD_CORP *company, bool &exists) {
    if (!company)
        return failInvalid();
    return readExists(exists, u"SELECT CORP.nIDNo FROM CORP WHERE "_s + sqlWhere(company->branch(), u"CORP") +
                                  u" and CORP.nIDNo = "_s + sqlNumber(company->nIDNo));
}
