#pragma once

#include "app/base/branch.h"
#include "db/tables/base/table.h"

/// A practitioner of a branch.
struct cD_STAFF {
    qint32 nIDNo = 0;
    short iKyotenId = 0, iKyotenEb = 0; ///< branch
    QString cKyotenName;                ///< read only
    QString cName, cNameKana, cNameRyaku;
    Nullable<short> iSexKubun;
    QDate sBirthday;
    QString cYubinNo, cAdress1, cAdress2;
    QString cTelNo, cFaxNo, cMobNo, cEmail;
    Nullable<short> iShikakuKubun;
    QString cSikaku; ///< qualification
    Nullable<short> iSyokushuKubun, iYaku;
    QString cTourokuNo, cTourokuNo2;
    QDate sTourokuDay;
    QString cShikaiNo, cShikaiNo_Josei, cKaiNo, cKaiNo2, cKaiNo3;
    Nullable<short> iStaffHokenTouroku;
    QString cIninTourokuNo;
    Nullable<short> iIninTourokuChk, iKanriSekininFlg;
    QDate sNyusyaDay, sRday, sKousinDay, sKisanDay;
    Nullable<short> iChusiFlg; ///< other than 0 and Null: suspended
    Nullable<short> iContractType;
    QString cEmployeeNumber;
    Nullable<double> nLat, nLon;
    Nullable<short> iVehicleType;
    QString cVehicleNumber, cVehicleComment, cPhysical;
    Nullable<short> iTecAbi, iSpeechAbi, iClaimRate, iLookAllRiyousya, iLookCharge;
    QString cRken, cRno;
    QString cPcName, tUpDateTime;

    static const TableDefinition<cD_STAFF> &table();
};

extern template class Table<cD_STAFF>;

class cT_STAFF : public Table<cD_STAFF> {
public:
    const cD_STAFF *clsSTAFF(int index) const { return at(index); }

    short iGetMaxIDNo(qint32 &result, const Branch &branch);
    /// The staff of a branch, suspended ones too, in the order of their numbers.
    short iDataReadGrid(const Branch &branch);
    /// The staff of every branch, by branch and number.
    short iDataReadGrid_AllKyoten();

    /// Whether another member of the branch's staff bears the record's name.
    short iChkStaffName(const cD_STAFF *staff, bool &taken);
    /// Whether there is a row with the record's branch and number.
    short iDataIdentChk(const cD_STAFF *staff, bool &exists);
};
