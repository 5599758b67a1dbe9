#include "db/tables/masters/code.h"

#include "db/sql_text.h"

using namespace Qt::Literals::StringLiterals;

template class Table<cD_CODE>;

namespace {

constexpr TableColumn<cD_CODE> columns[] = {
    {u"iBunrui", &cD_CODE::iBunrui, ColumnUse::Key},
    {u"nIDNo", &cD_CODE::nIDNo, ColumnUse::Key},
    {u"cName", &cD_CODE::cName},
    {u"nIDIndex", &cD_CODE::nIDIndex, ColumnUse::Key},
    {u"iUseFlg", &cD_CODE::iUseFlg},
    {u"cBikou", &cD_CODE::cBikou},
};
constexpr TableDefinition<cD_CODE> definition{u"CODE", columns};

QString inCategory(short iBunrui) {
    return u" where iBunrui = "_s + sqlNumber(iBunrui);
}

QString inUse() {
    return u" and  (iUseFlg = 0 OR iUseFlg IS NULL)"_s;
}

} // namespace

const TableDefinition<cD_CODE> &cD_CODE::table() {
    return definition;
}

short cT_CODE::iGetMaxIDNo(qint32 &result, short iBunrui) {
    return readMax(result, maxSql(text(), u"nIDNo") + inCategory(iBunrui));
}

short cT_CODE::iGetMaxIndexNo(qint32 &result, short iBunrui) {
    return readMax(result, maxSql(text(), u"nIDIndex") + inCategory(iBunrui));
}

short cT_CODE::iDataReadGrid() {
    return read(u" where  (iUseFlg = 0 OR iUseFlg IS NULL)  order by      iBunrui, nIDNo, nIDIndex "_s);
}

short cT_CODE::iDataReadGridBunrui(short iBunrui) {
    return read(inCategory(iBunrui) + inUse() + u"  order by      iBunrui, nIDNo, nIDIndex "_s);
}

short cT_CODE::iDataReadGridBunrui_OrderIndex(short iBunrui, qint32 nIDNo) {
    return read(inCategory(iBunrui) + u" and  nIDNo = "_s + sqlNumber(nIDNo) + inUse() +
                u"  order by      iBunrui, nIDIndex "_s);
}

short cT_CODE::iDataRead(const cD_CODE *key) {
    return readByKey(key, inUse());
}
