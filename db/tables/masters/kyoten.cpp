#include "db/tables/masters/kyoten.h"

using namespace Qt::Literals::StringLiterals;

template class Table<cD_KYOTEN>;

namespace {

constexpr TableColumn<cD_KYOTEN> columns[] = {
    {u"iKyotenCd", &cD_KYOTEN::iKyotenCd, ColumnUse::Key},
    {u"iKyotenEb", &cD_KYOTEN::iKyotenEb, ColumnUse::Key},
    {u"cKyotenName", &cD_KYOTEN::cKyotenName},
    {u"iUsedFlg", &cD_KYOTEN::iUsedFlg},
    {u"cYubinNo", &cD_KYOTEN::cYubinNo},
    {u"cAddress1", &cD_KYOTEN::cAddress1},
    {u"cAddress2", &cD_KYOTEN::cAddress2},
    {u"cTelNo", &cD_KYOTEN::cTelNo},
    {u"cFaxNo", &cD_KYOTEN::cFaxNo},
    {u"cPcName", &cD_KYOTEN::cPcName, ColumnUse::PcName},
    {u"tUpDateTime", &cD_KYOTEN::tUpDateTime, ColumnUse::UpDateTime},
};
constexpr TableDefinition<cD_KYOTEN> definition{u"KYOTEN", columns};

} // namespace

const TableDefinition<cD_KYOTEN> &cD_KYOTEN::table() {
    return definition;
}

short cT_KYOTEN::iDataReadGrid() {
    return read(u" WHERE  ( KYOTEN.iUsedFlg = 1 or KYOTEN.iUsedFlg = 2 )  AND KYOTEN.iKyotenEb<>0"
                u" ORDER BY KYOTEN.iKyotenCd,KYOTEN.iKyotenEb"_s);
}
