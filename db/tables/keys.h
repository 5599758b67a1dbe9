#pragma once

#include "app/base/branch.h"

#include <QDate>

/// A patient: branch code, branch sub-number and patient number.
struct PatientKey {
    short iKyotenCd = 0;
    short iKyotenEb = 0;
    qint32 nIDNo = 0;

    Branch branch() const { return {iKyotenCd, iKyotenEb}; }

    friend bool operator==(const PatientKey &, const PatientKey &) = default;
};

/// Practitioners that a patient may have: the responsible one and four more.
constexpr int mostPractitioners = 5;

/// A row of RIYOUSHA_DOUI_REC. `nDate` and `nHenkeiDouiDate` are integers yyyymmdd; the latter is 0 on
/// massage rows.
struct ConsentRowKey {
    PatientKey patient;
    qint32 nDate = 0;
    short iHenkeiFlg = 0; ///< 0 massage, 1 deformity correction
    qint32 nHenkeiDouiDate = 0;

    friend bool operator==(const ConsentRowKey &, const ConsentRowKey &) = default;
};

/// First and last day; an invalid date is an empty end.
struct Period {
    QDate start;
    QDate end;

    friend bool operator==(const Period &, const Period &) = default;
};
