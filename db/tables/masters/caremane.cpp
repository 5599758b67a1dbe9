#include "db/tables/masters/caremane.h"

#include "db/sql_text.h"

using namespace Qt::Literals::StringLiterals;

template class Table<cD_CAREMANE>;

namespace {

constexpr TableColumn<cD_CAREMANE> columns[] = {
    {u"nIDNo", &cD_CAREMANE::nIDNo, ColumnUse::Key},
    {u"cName", &cD_CAREMANE::cName},
    {u"cNameKana", &cD_CAREMANE::cNameKana},
    {u"iSexKubun", &cD_CAREMANE::iSexKubun},
    {u"sBirthday", &cD_CAREMANE::sBirthday},
    {u"nSisetsuCode", &cD_CAREMANE::nSisetsuCode},
    {u"SISETSUSHAMEI", &cD_CAREMANE::SISETSUSHAMEI, ColumnUse::Joined, u"SISETSU.cShamei1"},
    {u"SISETSUSHURUI", &cD_CAREMANE::SISETSUSHURUI, ColumnUse::Joined, u"SISETSU.cSisetsuType"},
    {u"iJigyosyoCode", &cD_CAREMANE::iJigyosyoCode},
    {u"JIGYOSYOSHAMEI", &cD_CAREMANE::JIGYOSYOSHAMEI, ColumnUse::Joined, u"JIGYOSYO.cShamei1"},
    {u"JIGYOSYOSHURUI", &cD_CAREMANE::JIGYOSYOSHURUI, ColumnUse::Joined, u"JIGYOSYO.cSisetsuType"},
    {u"JIGYOSYOADD1", &cD_CAREMANE::JIGYOSYOADD1, ColumnUse::Joined, u"JIGYOSYO.cAddress1"},
    {u"JIGYOSYOADD2", &cD_CAREMANE::JIGYOSYOADD2, ColumnUse::Joined, u"JIGYOSYO.cAddress2"},
    {u"cYubinNo", &cD_CAREMANE::cYubinNo},
    {u"cAdress1", &cD_CAREMANE::cAdress1},
    {u"cAdress2", &cD_CAREMANE::cAdress2},
    {u"cAdressKana", &cD_CAREMANE::cAdressKana},
    {u"cTelNo", &cD_CAREMANE::cTelNo},
    {u"cFaxNo", &cD_CAREMANE::cFaxNo},
    {u"cMobNo", &cD_CAREMANE::cMobNo},
    {u"cMail", &cD_CAREMANE::cMail},
    {u"iChusiFlg", &cD_CAREMANE::iChusiFlg},
    {u"cPcName", &cD_CAREMANE::cPcName, ColumnUse::PcName},
    {u"tUpDateTime", &cD_CAREMANE::tUpDateTime, ColumnUse::UpDateTime},
};
constexpr TableDefinition<cD_CAREMANE> definition{
    u"CAREMANE", columns,
    u" LEFT JOIN SISETSU ON SISETSU.nIDNo = CAREMANE.nSisetsuCode"
    u" LEFT JOIN SISETSU AS JIGYOSYO ON JIGYOSYO.nIDNo = CAREMANE.iJigyosyoCode"};

} // namespace

const TableDefinition<cD_CAREMANE> &cD_CAREMANE::table() {
    return definition;
}

short cT_CAREMANE::iGetMaxIDNo(qint32 &result) {
    return readMax(result, maxSql(text(), u"nIDNo"));
}

short cT_CAREMANE::iDataReadGrid() {
    return read(u"  order by      CAREMANE.nIDNo"_s);
}

short cT_CAREMANE::iDataUpdate_ToRiyousha(const cD_CAREMANE *careManager) {
    if (!careManager)
        return failInvalid();
    return copyTo(u"RIYOUSHA", {{{{u"cCareManeName"_s, sqlText(careManager->cName)}},
                                 u"nCareManeCd = "_s + sqlNumber(careManager->nIDNo)}});
}
