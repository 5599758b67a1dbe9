#pragma once

#include "db/tables/base/table.h"
#include "db/tables/consent_layout_settings.h"

/// The settings of a branch.
struct cD_CORP_SUB : ConsentLayoutSettings {
    short iKyotenCd = 0, iKyotenEb = 0;
    /// Day of the month from which renewals are allowed; Null or 0: 11, −1: the last day.
    Nullable<short> iDouiUpdatePermitDay;
    Nullable<short> iDouiKaryoSet, iSaiDouiSet, iDouiHogo, iDouiReacquire, iConsentFixedDay,
        iConsentFixedMonth;
    QString cDouiByoumei1_Def, cDouiByoumei2_Def; ///< default diagnoses for new consents
    QString tUpDateTime;

    static const TableDefinition<cD_CORP_SUB> &table();
};

extern template class Table<cD_CORP_SUB>;

class cT_CORP_SUB : public Table<cD_CORP_SUB> {
public:
    const cD_CORP_SUB *clsCORP_SUB(int index) const { return at(index); }
};
