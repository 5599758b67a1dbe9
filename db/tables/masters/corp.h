#pragma once

#include "app/base/branch.h"
#include "db/tables/base/table.h"

/// A company or office of the practice, sender of printed documents.
struct cD_CORP {
    short iKyotenCd = 0, iKyotenEb = 0;
    qint32 nIDNo = 0;
    Nullable<short> iType;
    QString cShamei1, cShamei2, cShameiKana1, cShameiKana2;
    QString cDaihyo, cDaihyoKana;
    QString cYubinNo, cAddress1, cAddress2, cAddressKana;
    QString cTelNo, cFaxNo, cEmail;
    QString cMailDestination, cMailDestinationZipNo; ///< where mail to the company goes
    QString cJigyousyoNo, cJigyousyoNo2, cJigyouReceiptName;
    QString cHokenTourokuKubetsu, cKokuhoTourokuNo;
    Nullable<short> iKyotenToshiNo;
    /// Bank account.
    QString cKinyuNo, cKinyuName, cKinyuSitenNo, cKinyuSiten;
    Nullable<short> iKinSiten, iKinSyubetsu, iKozaKubun, iKozaType;
    QString cKozaBangou, cKozaKana, cKozaMeigi1, cKozaMeigi2;
    QString cPersonalNumberCorp;
    Nullable<double> nLat, nLon;
    QString cPcName, tUpDateTime;

    Branch branch() const { return {iKyotenCd, iKyotenEb}; }

    static const TableDefinition<cD_CORP> &table();
};

extern template class Table<cD_CORP>;

class cT_CORP : public Table<cD_CORP> {
public:
    const cD_CORP *clsCORP(int index) const { return at(index); }

    short iGetMaxIDNo(qint32 &result, const Branch &branch);
    /// Every company in list order: branch, then number. Settings name a sender by its position here.
    short iDataReadGrid();
    /// The companies that fit the filter's branch (code not 0), kind, and parts of name and kana; what it
    /// leaves empty does not limit. In list order.
    short iDataReadGrid_Jouken(const cD_CORP *filter);
    /// Whether there is a company with the record's key.
    short iDataReadChk(const cD_CORP *company, bool &exists);
};
