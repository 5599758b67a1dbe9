#pragma once

#include "db/tables/nullable.h"

/// Which consent-form layouts are used, as a branch, a doctor and a patient hold it alike. The numbers are
/// SHINSEISYO.nIDNo, one for massage (Mas) and one for acupuncture (Hari) patients; the others are 0 or 1.
struct ConsentLayoutSettings {
    Nullable<short> iSyokaiDouiON; ///< initial consent form
    Nullable<short> iSyokaiDouiMasTypeNo;
    Nullable<short> iSyokaiDouiHariTypeNo;
    Nullable<short> iSaiDouiON; ///< re-consent form
    Nullable<short> iSaiDouiMasTypeNo;
    Nullable<short> iSaiDouiHariTypeNo;
    Nullable<short> iDouiiraiON; ///< request letter
    Nullable<short> iDouiiraiMasTypeNo;
    Nullable<short> iDouiiraiHariTypeNo;
    Nullable<short> iDouiDispSejyutu;  ///< print the treatment content
    Nullable<short> iDouiDispIshidata; ///< print the doctor's data
    Nullable<short> iDouiDispRiyouNo;  ///< print the patient number
};
