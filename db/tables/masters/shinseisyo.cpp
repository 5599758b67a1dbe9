#include "db/tables/masters/shinseisyo.h"

#include "db/sql_text.h"
#include "db/tables/keys_query.h"

using namespace Qt::Literals::StringLiterals;

template class Table<cD_SHINSEISYO>;

namespace {

constexpr TableColumn<cD_SHINSEISYO> columns[] = {
    {u"iKyotenCd", &cD_SHINSEISYO::iKyotenCd, ColumnUse::Key},
    {u"iKyotenEb", &cD_SHINSEISYO::iKyotenEb, ColumnUse::Key},
    {u"nIDNo", &cD_SHINSEISYO::nIDNo, ColumnUse::Key},
    {u"cFileName", &cD_SHINSEISYO::cFileName},
    {u"cDispName", &cD_SHINSEISYO::cDispName},
    {u"iPrintType", &cD_SHINSEISYO::iPrintType},
    {u"iKubun", &cD_SHINSEISYO::iKubun},
    {u"iSejutsuKubun", &cD_SHINSEISYO::iSejutsuKubun},
    {u"iHokenType", &cD_SHINSEISYO::iHokenType},
    {u"iRiyouHokenKbn", &cD_SHINSEISYO::iRiyouHokenKbn},
    {u"iSinseiTP", &cD_SHINSEISYO::iSinseiTP},
    {u"iSoufushoTP", &cD_SHINSEISYO::iSoufushoTP},
    {u"iDuplexFlg", &cD_SHINSEISYO::iDuplexFlg},
    {u"iStateNo", &cD_SHINSEISYO::iStateNo},
    {u"iTekiyouStaff", &cD_SHINSEISYO::iTekiyouStaff},
    {u"iKanagawaStaffPrint", &cD_SHINSEISYO::iKanagawaStaffPrint},
    {u"iJoseiFutanKiriage", &cD_SHINSEISYO::iJoseiFutanKiriage},
    {u"iDelFlg", &cD_SHINSEISYO::iDelFlg},
    {u"tUpDateTime", &cD_SHINSEISYO::tUpDateTime, ColumnUse::UpDateTime},
};
constexpr TableDefinition<cD_SHINSEISYO> definition{u"SHINSEISYO", columns};

} // namespace

const TableDefinition<cD_SHINSEISYO> &cD_SHINSEISYO::table() {
    return definition;
}

short cT_SHINSEISYO::iGetMaxIDNo(qint32 &result, const Branch &branch) {
    return readMax(result, maxSql(text(), u"nIDNo") + u" where "_s + sqlWhere(branch, u"SHINSEISYO"));
}

short cT_SHINSEISYO::iDataReadGrid(const Branch &branch, short iPrintType) {
    return read(u" where "_s + sqlWhere(branch, u"SHINSEISYO") +
                u" and (iDelFlg = 0 OR iDelFlg IS NULL) and iPrintType = "_s + sqlNumber(iPrintType) +
                u"  order by      nIDNo"_s);
}
