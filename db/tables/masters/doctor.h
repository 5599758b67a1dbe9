#pragma once

#include "db/tables/base/table.h"
#include "db/tables/consent_layout_settings.h"

/// A doctor who consents.
struct cD_DOCTOR : ConsentLayoutSettings {
    QString cIDNo; ///< doctor code: a number, kept as text
    QString cName, cNameKana;
    QString cKikan, cKikanKana;               ///< medical institution
    Nullable<qint32> nSisetsuCd;              ///< that institution as a facility (SISETSU.nIDNo)
    QString SISETSUSHAMEI, SISETSUSHAMEIKANA; ///< the facility's name, read only
    QString cCode, cDaihyo, cDaihyoKana;
    QString cYubinNo, cAddress1, cAddress2, cAddressKana;
    QString cTelNo, cFaxNo, cMobNo, cMail1, cMail2, cWeb;
    Nullable<short> iHandWritingFlg;
    QString cPcName, tUpDateTime;

    static const TableDefinition<cD_DOCTOR> &table();
};

extern template class Table<cD_DOCTOR>;

class cT_DOCTOR : public Table<cD_DOCTOR> {
public:
    const cD_DOCTOR *clsDOCTOR(int index) const { return at(index); }

    /// Codes have up to ten digits.
    short iGetMaxIDNo(qint64 &result);

    /// Doctors in the order of their numbers. With a number in the filter that doctor alone, otherwise those
    /// whose name, kana and institution contain the filter's texts and whose facility is the filter's;
    /// what is empty or Null there does not narrow.
    short iDataReadGrid(const cD_DOCTOR *filter);

    /// Brings name, institution and address of the doctor into the current consents of the patients who name
    /// him, the second consent by the patient's second doctor. In the caller's transaction.
    short iDataUpdate_ToRiyousha(const cD_DOCTOR *doctor);
};
