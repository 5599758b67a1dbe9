#pragma once

#include "db/tables/base/table.h"
#include "db/tables/keys.h"

#include <set>

/// One consent of a patient. The columns stand in the order in which a whole row is copied.
struct cD_RIYOUSHA_DOUI_REC : PatientKey {
    qint32 nDate = 0; ///< record date yyyymmdd
    /// Body parts: trunk, right and left upper limb, right and left lower limb.
    Nullable<short> iSejutuBui1, iSejutuBui2, iSejutuBui3, iSejutuBui4, iSejutuBui5;
    Nullable<short> iOnan, iDenki;                     ///< warm compress, electric treatment
    Nullable<short> iHKHariUmu, iHKKyuUmu, iHKDekiUmu; ///< acupuncture, moxibustion, electro-acupuncture
    Nullable<short> iHKDispDenkiHariUmu, iHKDispDenkiOnKyuUmu, iHKDispDenkiKousenUmu; ///< print the devices
    QDate tOnanSday, tOnanEday, tDenkiSday, tDenkiEday; ///< periods of the treatments
    QDate tHenkeSday, tHenKeEday;
    QDate tHKHariSday, tHKHariEday, tHKKyuSday, tHKKyuEday, tHKDenkiSday, tHKDenkiEday;
    QString cIsiCd; ///< consenting doctor (DOCTOR.cIDNo)
    QString cDouiIsiName, cDouiIsiKikan, cDouiIsiAdd;
    QString cDouiByoumei;                     ///< diagnosis
    QDate tDouiDay, tDouiKaryoS, tDouiKaryoE; ///< consent and its period
    Nullable<qint32> nDouiUpMonth;            ///< months of the period
    QString cByoumeiM;                        ///< diagnosis for massage
    /// Acupuncture diseases.
    Nullable<short> iHKSyobyou01Flg, iHKSyobyou02Flg, iHKSyobyou03Flg, iHKSyobyou04Flg, iHKSyobyou05Flg,
        iHKSyobyou06Flg, iHKSyobyou07Flg;
    QString cByoumeiH;                                 ///< diagnosis for acupuncture
    Nullable<short> iHKSyobyouChkL, iHKSyobyouChkR;    ///< left and right side
    Nullable<short> iNewestFlg;                        ///< 1 on the newest row of its kind
    QDate tSaiDouiDay, tSaiDouiKaryoS, tSaiDouiKaryoE; ///< re-consent and the next period
    QString cKobetuDouiIrai;                           ///< individual request text
    Nullable<short> iDouiIraiType;                     ///< request method
    Nullable<short> iDouiHospOutFlg, iDouiIsiOutFlg;   ///< request put out to the hospital, to the doctor
    QString cItiranBikou;                              ///< remark in the list
    Nullable<short> iDouishoSaishutokuKikan;           ///< months to re-acquisition
    Nullable<short> iOutputFlg, iGetFlg;               ///< request put out, answer received
    Nullable<short> iOutputFlgHenkei, iGetFlgHenkei;   ///< the same of deformity correction
    /// Requested deformity correction.
    QDate tDouiDayTempHenkei, tDouiKaryoSTempHenkei, tDouiKaryoETempHenkei;
    short iHenkeiFlg = 0;                  ///< 0 massage, 1 deformity correction
    qint32 nHenkeiDouiDate = 0;            ///< deformity correction: own date yyyymmdd, otherwise 0
    Nullable<short> iDouiShubetsu;         ///< written or oral
    Nullable<short> iReceptDisabledFlg;    ///< 1 not to be used for claims
    Nullable<short> iRenrakuFlg, iSendFlg; ///< contact and sending state
    Nullable<short> iMahiKukan, iMahiMigiue, iMahiHidariue, iMahiMigishita, iMahiHidarishita; ///< paralysis
    /// Contracture.
    Nullable<short> iKousyukuMigikata, iKousyukuMigihiji, iKousyukuMigitekubi, iKousyukuMigikokannsetu,
        iKousyukuMigihiza, iKousyukuMigiashikubi;
    Nullable<short> iKousyukuHidarikata, iKousyukuHidarihiji, iKousyukuHidaritekubi,
        iKousyukuHidarikokannsetu, iKousyukuHidarihiza, iKousyukuHidariashikubi;
    Nullable<short> iKousyukuSonota;
    QString cKousyukuSonotaStr, cSyoujyouSonotaStr;
    QDate tShinsatsuDay; ///< examination
    QString cMasByoumei;
    QString cPcName, tUpDateTime;

    ConsentRowKey key() const;

    static const TableDefinition<cD_RIYOUSHA_DOUI_REC> &table();
};

extern template class Table<cD_RIYOUSHA_DOUI_REC>;

class cT_RIYOUSHA_DOUI_REC : public Table<cD_RIYOUSHA_DOUI_REC> {
public:
    const cD_RIYOUSHA_DOUI_REC *clsRIYOUSHA_DOUI_REC(int index) const { return at(index); }

    /// The consents of a patient, oldest first, massage before deformity correction.
    short iDataReadGrid(const PatientKey &patient);
    /// Those of some patients of a branch, each patient's in the same order.
    short iDataReadGrid(const Branch &branch, const std::set<qint32> &patients);

    using Table::iDataRead;
    short iDataRead(const ConsentRowKey &key);
};
