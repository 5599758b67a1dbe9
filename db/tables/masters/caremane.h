#pragma once

#include "db/tables/base/table.h"

/// A care manager.
struct cD_CAREMANE {
    qint32 nIDNo = 0;
    QString cName, cNameKana;
    Nullable<short> iSexKubun;
    QDate sBirthday;
    Nullable<qint32> nSisetsuCode;        ///< facility (SISETSU.nIDNo)
    QString SISETSUSHAMEI, SISETSUSHURUI; ///< its name and kind, read only
    Nullable<qint32> iJigyosyoCode;       ///< care office (SISETSU.nIDNo)
    /// Its name, kind and address, read only.
    QString JIGYOSYOSHAMEI, JIGYOSYOSHURUI, JIGYOSYOADD1, JIGYOSYOADD2;
    QString cYubinNo, cAdress1, cAdress2, cAdressKana;
    QString cTelNo, cFaxNo, cMobNo, cMail;
    Nullable<short> iChusiFlg; ///< other than 0 and Null: no longer active
    QString cPcName, tUpDateTime;

    static const TableDefinition<cD_CAREMANE> &table();
};

extern template class Table<cD_CAREMANE>;

class cT_CAREMANE : public Table<cD_CAREMANE> {
public:
    const cD_CAREMANE *clsCAREMANE(int index) const { return at(index); }

    short iGetMaxIDNo(qint32 &result);
    /// All care managers in the order of their numbers.
    short iDataReadGrid();

    /// Brings the name up to date at the patients whom the care manager looks after, in the caller's
    /// transaction.
    short iDataUpdate_ToRiyousha(const cD_CAREMANE *careManager);
};
