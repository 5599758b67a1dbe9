#include "db/tables/masters/soudan.h"

#include "db/tables/keys_query.h"

using namespace Qt::Literals::StringLiterals;

template class Table<cD_SOUDAN>;

namespace {

constexpr TableColumn<cD_SOUDAN> columns[] = {
    {u"iKyotenCd", &cD_SOUDAN::iKyotenCd, ColumnUse::Key},
    {u"iKyotenEb", &cD_SOUDAN::iKyotenEb, ColumnUse::Key},
    {u"nIDNo", &cD_SOUDAN::nIDNo, ColumnUse::Key},
    {u"cName", &cD_SOUDAN::cName},
    {u"cNameKana", &cD_SOUDAN::cNameKana},
    {u"nSisetsuCode", &cD_SOUDAN::nSisetsuCode},
    {u"cYubinNo", &cD_SOUDAN::cYubinNo},
    {u"cAdress1", &cD_SOUDAN::cAdress1},
    {u"cAdress2", &cD_SOUDAN::cAdress2},
    {u"cTelNo", &cD_SOUDAN::cTelNo},
    {u"cFaxNo", &cD_SOUDAN::cFaxNo},
    {u"cMobNo", &cD_SOUDAN::cMobNo},
    {u"cMail1", &cD_SOUDAN::cMail1},
    {u"cMail2", &cD_SOUDAN::cMail2},
    {u"iChusiFlg", &cD_SOUDAN::iChusiFlg},
    {u"cPcName", &cD_SOUDAN::cPcName, ColumnUse::PcName},
    {u"tUpDateTime", &cD_SOUDAN::tUpDateTime, ColumnUse::UpDateTime},
};
constexpr TableDefinition<cD_SOUDAN> definition{u"SOUDAN", columns};

} // namespace

const TableDefinition<cD_SOUDAN> &cD_SOUDAN::table() {
    return definition;
}

short cT_SOUDAN::iGetMaxIDNo(qint32 &result, const Branch &branch) {
    return readMax(result, maxSql(text(), u"nIDNo") + u" where "_s + sqlWhere(branch, u"SOUDAN"));
}

short cT_SOUDAN::iDataReadGrid(const Branch &branch) {
    return read(u" where "_s + sqlWhere(branch, u"SOUDAN") + u"  order by      nIDNo"_s);
}
