#include "db/tables/masters/staff.h"

#include "db/sql_text.h"
#include "db/tables/keys_query.h"

using namespace Qt::Literals::StringLiterals;

template class Table<cD_STAFF>;

namespace {

constexpr TableColumn<cD_STAFF> columns[] = {
    {u"nIDNo", &cD_STAFF::nIDNo, ColumnUse::Key},
    {u"iKyotenCd", &cD_STAFF::iKyotenId, ColumnUse::Key},
    {u"iKyotenEb", &cD_STAFF::iKyotenEb, ColumnUse::Key},
    {u"cKyotenName", &cD_STAFF::cKyotenName, ColumnUse::Joined, u"KYOTEN.cKyotenName"},
    {u"cName", &cD_STAFF::cName},
    {u"cNameKana", &cD_STAFF::cNameKana},
    {u"cNameRyaku", &cD_STAFF::cNameRyaku},
    {u"iSexKubun", &cD_STAFF::iSexKubun},
    {u"sBirthday", &cD_STAFF::sBirthday},
    {u"cYubinNo", &cD_STAFF::cYubinNo},
    {u"cAdress1", &cD_STAFF::cAdress1},
    {u"cAdress2", &cD_STAFF::cAdress2},
    {u"cTelNo", &cD_STAFF::cTelNo},
    {u"cFaxNo", &cD_STAFF::cFaxNo},
    {u"cMobNo", &cD_STAFF::cMobNo},
    {u"cEmail", &cD_STAFF::cEmail},
    {u"iShikakuKubun", &cD_STAFF::iShikakuKubun},
    {u"cSikaku", &cD_STAFF::cSikaku},
    {u"iSyokushuKubun", &cD_STAFF::iSyokushuKubun},
    {u"iYaku", &cD_STAFF::iYaku},
    {u"cTourokuNo", &cD_STAFF::cTourokuNo},
    {u"cTourokuNo2", &cD_STAFF::cTourokuNo2},
    {u"sTourokuDay", &cD_STAFF::sTourokuDay},
    {u"cShikaiNo", &cD_STAFF::cShikaiNo},
    {u"cShikaiNo_Josei", &cD_STAFF::cShikaiNo_Josei},
    {u"cKaiNo", &cD_STAFF::cKaiNo},
    {u"cKaiNo2", &cD_STAFF::cKaiNo2},
    {u"cKaiNo3", &cD_STAFF::cKaiNo3},
    {u"iStaffHokenTouroku", &cD_STAFF::iStaffHokenTouroku},
    {u"cIninTourokuNo", &cD_STAFF::cIninTourokuNo},
    {u"iIninTourokuChk", &cD_STAFF::iIninTourokuChk},
    {u"iKanriSekininFlg", &cD_STAFF::iKanriSekininFlg},
    {u"sNyusyaDay", &cD_STAFF::sNyusyaDay},
    {u"sRday", &cD_STAFF::sRday},
    {u"sKousinDay", &cD_STAFF::sKousinDay},
    {u"sKisanDay", &cD_STAFF::sKisanDay},
    {u"iChusiFlg", &cD_STAFF::iChusiFlg},
    {u"iContractType", &cD_STAFF::iContractType},
    {u"cEmployeeNumber", &cD_STAFF::cEmployeeNumber},
    {u"nLat", &cD_STAFF::nLat},
    {u"nLon", &cD_STAFF::nLon},
    {u"iVehicleType", &cD_STAFF::iVehicleType},
    {u"cVehicleNumber", &cD_STAFF::cVehicleNumber},
    {u"cVehicleComment", &cD_STAFF::cVehicleComment},
    {u"cPhysical", &cD_STAFF::cPhysical},
    {u"iTecAbi", &cD_STAFF::iTecAbi},
    {u"iSpeechAbi", &cD_STAFF::iSpeechAbi},
    {u"iClaimRate", &cD_STAFF::iClaimRate},
    {u"iLookAllRiyousya", &cD_STAFF::iLookAllRiyousya},
    {u"iLookCharge", &cD_STAFF::iLookCharge},
    {u"cRken", &cD_STAFF::cRken},
    {u"cRno", &cD_STAFF::cRno},
    {u"cPcName", &cD_STAFF::cPcName, ColumnUse::PcName},
    {u"tUpDateTime", &cD_STAFF::tUpDateTime, ColumnUse::UpDateTime},
};
constexpr TableDefinition<cD_STAFF> definition{
    u"STAFF", columns,
    u" LEFT JOIN KYOTEN ON KYOTEN.iKyotenCd = STAFF.iKyotenCd and KYOTEN.iKyotenEb = STAFF.iKyotenEb"};

Branch branchOf(const cD_STAFF &staff) {
    return {staff.iKyotenId, staff.iKyotenEb};
}

} // namespace

const TableDefinition<cD_STAFF> &cD_STAFF::table() {
    return definition;
}

short cT_STAFF::iGetMaxIDNo(qint32 &result, const Branch &branch) {
    return readMax(result, maxSql(text(), u"nIDNo") + u" where "_s + sqlWhere(branch, u"STAFF"));
}

short cT_STAFF::iDataReadGrid(const Branch &branch) {
    return read(u" where "_s + sqlWhere(branch, u"STAFF") + u"  order by      STAFF.nIDNo"_s);
}

short cT_STAFF::iDataReadGrid_AllKyoten() {
    return read(u"  order by      STAFF.iKyotenCd, STAFF.iKyotenEb, STAFF.nIDNo"_s);
}

short cT_STAFF::iChkStaffName(const cD_STAFF *staff, bool &taken) {
    if (!staff)
        return failInvalid();
    return readExists(taken, u"SELECT STAFF.nIDNo FROM STAFF WHERE "_s +
                                 sqlWhere(branchOf(*staff), u"STAFF") + u" and STAFF.cName = "_s +
                                 sqlText(staff->cName) + u" and STAFF.nIDNo <> "_s + sqlNumber(staff->nIDNo));
}

short cT_STAFF::iDataIdentChk(const cD_STAFF *staff, bool &exists) {
    if (!staff)
        return failInvalid();
    return readExists(exists, u"SELECT STAFF.nIDNo FROM STAFF WHERE "_s +
                                  sqlWhere(branchOf(*staff), u"STAFF") + u" and STAFF.nIDNo = "_s +
                                  sqlNumber(staff->nIDNo));
}
