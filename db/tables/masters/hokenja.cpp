#include "db/tables/masters/hokenja.h"

using namespace Qt::Literals::StringLiterals;

template class Table<cD_HOKENJA>;

namespace {

constexpr TableColumn<cD_HOKENJA> columns[] = {
    {u"cHokenNo", &cD_HOKENJA::cHokenNo, ColumnUse::Key},
    {u"cHokenJName", &cD_HOKENJA::cHokenJName},
    {u"cHokenJNameKana", &cD_HOKENJA::cHokenJNameKana},
    {u"iHoken", &cD_HOKENJA::iHoken},
    {u"cYubinNo", &cD_HOKENJA::cYubinNo},
    {u"cAddress1", &cD_HOKENJA::cAddress1},
    {u"cAddress2", &cD_HOKENJA::cAddress2},
    {u"cTelNo", &cD_HOKENJA::cTelNo},
    {u"cFaxNo", &cD_HOKENJA::cFaxNo},
    {u"cPcName", &cD_HOKENJA::cPcName, ColumnUse::PcName},
    {u"tUpDateTime", &cD_HOKENJA::tUpDateTime, ColumnUse::UpDateTime},
};
constexpr TableDefinition<cD_HOKENJA> definition{u"HOKENJA", columns};

} // namespace

const TableDefinition<cD_HOKENJA> &cD_HOKENJA::table() {
    return definition;
}

short cT_HOKENJA::iDataReadGrid() {
    return read(u"  order by      cHokenNo"_s);
}
