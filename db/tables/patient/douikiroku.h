#pragma once

#include "db/tables/base/table.h"
#include "db/tables/keys.h"

/// The consents of a patient in one month, as they were kept formerly, with his period settings.
struct cD_DOUIKIROKU : PatientKey {
    QString tDouiYM; ///< month as text yyyy/mm
    short iDouiNo = 0;
    QString cDouiIsiName1, cDouiIsiKikan1, cDouiIsiAdd1, cDouiByoumei1; ///< first consent
    QDate tDouiDay1, tDouiKaryoS1, tDouiKaryoE1;
    Nullable<short> iDouiShubetsu1;
    QString cDouiIsiName2, cDouiIsiKikan2, cDouiIsiAdd2, cDouiByoumei2; ///< second consent
    QDate tDouiDay2, tDouiKaryoS2, tDouiKaryoE2;
    Nullable<short> iDouiShubetsu2;
    /// Body parts of the first consent.
    Nullable<short> iSejutuBui1, iSejutuBui2, iSejutuBui3, iSejutuBui4, iSejutuBui5;
    Nullable<short> iSejutuBui11, iSejutuBui12, iSejutuBui13, iSejutuBui14, iSejutuBui15; ///< of the second
    Nullable<short> iHenke, iOnan, iDenki, iHenke1, iOnan1, iDenki1;
    /// Periods of the treatments.
    QDate tOnanSday, tOnanEday, tDenkiSday, tDenkiEday, tHenkeSday, tHenKeEday, tHKHariSday, tHKHariEday,
        tHKKyuSday, tHKKyuEday, tHKDenkiSday, tHKDenkiEday;
    QDate tOnanSday2, tOnanEday2, tDenkiSday2, tDenkiEday2, tHenkeSday2, tHenKeEday2, tHKHariSday2,
        tHKHariEday2, tHKKyuSday2, tHKKyuEday2, tHKDenkiSday2, tHKDenkiEday2;
    Nullable<short> iHKHariUmu, iHKKyuUmu, iHKDekiUmu, iHKHari1Umu, iHKKyu1Umu, iHKDeki1Umu;
    QString cDouiDairiNin, cDouiDairiNin2; ///< proxies
    QString cBikou, cBikou2, cItiranBikou; ///< remarks
    QDate tDouishoSaishutokuFrom, tDouishoSaishutokuTo;
    Nullable<short> iDouishoSaishutokuKikan;
    /// Months and update setting of either consent.
    Nullable<short> iDouiKikan1, iKikanUpdate1, iDouiKikan2, iKikanUpdate2;
    Nullable<short> iDoui1CalcType, iDoui2CalcType, iKikanCalcType; ///< calculation types
    Nullable<short> iOutputFlg, iGetFlg;
    QDate tDouiDayTemp, tdouiKaryoSTemp, tdouiKaryoETemp; ///< request
    Nullable<short> iOutputFlgHenkei, iGetFlgHenkei;
    QDate tDouiDayTempHenkei, tdouiKaryoSTempHenkei, tdouiKaryoETempHenkei;
    Nullable<short> iDouiHospOutFlg, iDouiIsiOutFlg, iDouiIraiType;
    QString cKobetuDouiIrai;
    QString cPcName, tUpDateTime;

    static const TableDefinition<cD_DOUIKIROKU> &table();
};

extern template class Table<cD_DOUIKIROKU>;

class cT_DOUIKIROKU : public Table<cD_DOUIKIROKU> {
public:
    const cD_DOUIKIROKU *clsDOUIKIROKU(int index) const { return at(index); }

    /// A patient's rows of a month (text yyyy/mm) in the order of iDouiNo.
    short iDataReadGrid(const PatientKey &patient, const QString &tDouiYM);
};
