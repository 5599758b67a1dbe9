#pragma once

#include "db/tables/base/table.h"

/// A facility: medical institution, home, care office.
struct cD_SISETSU {
    qint32 nIDNo = 0;
    Nullable<short> iType;
    QString cSisetsuType;
    Nullable<short> iKikanShubetsu; ///< institution kind
    QString cShamei1, cShamei2, cShameiKana1, cShameiKana2;
    QString cShamei1Ryaku; ///< short name
    QString cDaihyo, cDaihyoKana;
    QString cYubinNo, cAddress1, cAddress2, cAddressKana;
    QString cTelNo, cFaxNo;
    QString cDouiIrai; ///< how consent requests go to this facility
    QString cComment;
    Nullable<double> nLat, nLon;
    Nullable<qint32> nColorCode;
    Nullable<short> iColorIndex, iPaymentType;
    QString cPcName, tUpDateTime;

    static const TableDefinition<cD_SISETSU> &table();
};

/// Both lines of the address, as patients repeat it.
QString wholeAddress(const cD_SISETSU &facility);

extern template class Table<cD_SISETSU>;

class cT_SISETSU : public Table<cD_SISETSU> {
public:
    const cD_SISETSU *clsSisetsu(int index) const { return at(index); }

    short iGetMaxIDNo(qint32 &result);
    /// All facilities in the order of their numbers.
    short iDataReadGrid();

    /// @name After a change of the facility
    /// Bring what other tables hold of it up to date, in the caller's transaction.
    ///@{
    /// Name and address at the patients whom it houses.
    short iDataUpdate_ToRiyousha(const cD_SISETSU *facility);
    /// Address, telephone and fax of its care managers.
    short iDataUpdate_ToCareMane(const cD_SISETSU *facility);
    /// Address, telephone and fax of its counsellors.
    short iDataUpdate_ToSoudan(const cD_SISETSU *facility);
    /// Institution of the current consents of patients whose first or second doctor works there, unless the
    /// doctor calls it by a name of his own.
    short iDataUpdate_ToRiyousha_Iryou(const cD_SISETSU *facility);
    ///@}
};
