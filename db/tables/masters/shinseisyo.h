#pragma once

#include "app/base/branch.h"
#include "db/tables/base/table.h"

/// A form of the form master.
struct cD_SHINSEISYO {
    short iKyotenCd = 0, iKyotenEb = 0; ///< branch; 0, 0 holds the whole practice's forms
    qint32 nIDNo = 0;                   ///< layout number
    QString cFileName;                  ///< layout file
    QString cDispName;
    Nullable<short> iPrintType;    ///< 1 consent form, 2 request letter
    Nullable<short> iKubun;        ///< 0 initial consent, otherwise re-consent
    Nullable<short> iSejutsuKubun; ///< 0 massage, otherwise acupuncture
    Nullable<short> iHokenType, iRiyouHokenKbn, iSinseiTP, iSoufushoTP, iDuplexFlg, iStateNo;
    Nullable<short> iTekiyouStaff, iKanagawaStaffPrint, iJoseiFutanKiriage;
    Nullable<short> iDelFlg; ///< 0 or Null in use
    QString tUpDateTime;

    static const TableDefinition<cD_SHINSEISYO> &table();
};

extern template class Table<cD_SHINSEISYO>;

class cT_SHINSEISYO : public Table<cD_SHINSEISYO> {
public:
    const cD_SHINSEISYO *clsSHINSEISYO(int index) const { return at(index); }

    short iGetMaxIDNo(qint32 &result, const Branch &branch);
    /// The branch's forms of a print type that are not deleted, in the order of their numbers.
    short iDataReadGrid(const Branch &branch, short iPrintType);
};
