#pragma once

#include "db/tables/base/table.h"
#include "db/tables/consent_layout_settings.h"
#include "db/tables/keys.h"

/// Addresses, facility links and document settings of a patient.
struct cD_RIYOUSHA_SUB : PatientKey, ConsentLayoutSettings {
    QString iIsiCd2;               ///< second doctor (DOCTOR.cIDNo)
    Nullable<qint32> iSisetsuCode; ///< hospital (SISETSU.nIDNo)
    /// Living facilities (SISETSU.nIDNo).
    Nullable<qint32> iAddressSisetsuCd, iAddressSisetsuCd2, iAddressSisetsuCd3;
    Nullable<qint32> iSoudaninId; ///< counsellor (SOUDAN.nIDNo)
    /// Layouts for written and oral consent (SHINSEISYO.nIDNo).
    Nullable<qint32> iDouishoId, iDouishoIdKoutou;
    /// Receipt address.
    QString cYubinNoS0Ryosyu, cJusyo1S0Ryosyu, cJusyo2S0Ryosyu, cTelS0Ryosyu, cFaxS0Ryosyu, cKeitaiS0Ryosyu,
        cAtenaS0Ryosyu;
    /// Contact address.
    QString cYubinNoS0Renraku, cJusyo1S0Renraku, cJusyo2S0Renraku, cTelS0Renraku, cFaxS0Renraku,
        cKeitaiS0Renraku, cAtenaS0Renraku;
    QString cPcName, tUpDateTime;

    static const TableDefinition<cD_RIYOUSHA_SUB> &table();
};

extern template class Table<cD_RIYOUSHA_SUB>;

class cT_RIYOUSHA_SUB : public Table<cD_RIYOUSHA_SUB> {
public:
    const cD_RIYOUSHA_SUB *clsRIYOUSHA_SUB(int index) const { return at(index); }

    using Table::iDataRead;
    short iDataRead(const PatientKey &key);
};
