#pragma once

#include "db/tables/base/table.h"
#include "db/tables/keys.h"
#include "db/tables/patient/douikiroku.h"

/// A patient (利用者).
struct cD_RIYOUSHA : PatientKey {
    QString cName, cNameKana;
    QString cNameRyaku, cName4Tag; ///< short name, name for labels
    Nullable<short> iSexKubun;
    QDate tBirthday;
    QString cTelNo, cYubinNo, cAdress1, cAdress2, cZokugara;
    Nullable<short> iSejutsuKubun; ///< 0 massage, otherwise acupuncture
    QDate tSyoryoDay;              ///< first treatment
    QDate tHatsubyou;              ///< onset
    Nullable<short> iTenki;        ///< outcome
    QDate tSkikanS, tSkikanE;      ///< treatment period
    QDate tExpireDay;              ///< day on which the treatment ended
    Nullable<short> iOuryouUmu, iOuryouRiyuu1, iOuryouRiyuu2, iOuryouRiyuu3;
    QString cOuryouRiyuuSonota;
    Nullable<short> iHokouType, iKaigodo;
    /// Responsible staff (STAFF.nIDNo).
    Nullable<qint32> nTantou, nTantou2, nTantou3, nTantou4, nTantou5, nTantou6, nTantou7, nTantou8, nTantou9,
        nTantou10;
    QDate tDouiDay1, tDouiKaryoS1, tDouiKaryoE1; ///< first current consent: day and period
    QString cDouiIsiName1, cDouiIsiKikan1, cDouiIsiAdd1, cDouiByoumei1;
    Nullable<short> iDouiShubetsu1, iDouiKikan1, iDoui1CalcType; ///< kind, months, calculation type
    QDate tDouiDay2, tDouiKaryoS2, tDouiKaryoE2;                 ///< second current consent: day and period
    QString cDouiIsiName2, cDouiIsiKikan2, cDouiIsiAdd2, cDouiByoumei2;
    Nullable<short> iDouiShubetsu2, iDouiKikan2, iDoui2CalcType; ///< kind, months, calculation type
    Nullable<qint32> nDouiIsiCd; ///< consenting doctor (DOCTOR.cIDNo as a number)
    Nullable<short> iDouiIraiType, iDouiIsiOutFlg, iDouiHospOutFlg;
    QString cDouiItiranBikou;               ///< remark in lists
    QString cDouiDairiNin1, cDouiDairiNin2; ///< proxies
    Nullable<short> iDouiNo;
    QString tDouiYM; ///< month as text yyyy/mm
    Nullable<short> iKikanCalcType, iKikanUpdate1, iKikanUpdate2, iDouishoSaishutokuKikan;
    QDate tDouishoSaishutokuFrom, tDouishoSaishutokuTo;   ///< window of re-acquisition
    QDate tDouiDayTemp, tdouiKaryoSTemp, tdouiKaryoETemp; ///< next consent in work
    /// The same of deformity correction.
    QDate tDouiDayTempHenkei, tDouiKaryoSTempHenkei, tDouiKaryoETempHenkei;
    QString cHokenNo, cHokenNo2;
    Nullable<qint32> nHokenNo;
    Nullable<short> iHoken, iHoken2;
    QString cHokenJName, cHokenJname2, cHokenKigouNo, cHokenKigouNo2;
    QDate tHokenSikakuYmd, tHokenYukouYmd;
    QString cKaigoHokenNo;
    QDate tKaigoKikanSt, tKaigoKikanEd;
    Nullable<qint32> nSisetsuCd; ///< facility (SISETSU.nIDNo)
    QString cSisetsuName, cSisetsuAddress;
    Nullable<qint32> nCareManeCd; ///< care manager (CAREMANE.nIDNo)
    QString cCareManeName;
    QString cPcName, tUpDateTime;

    static const TableDefinition<cD_RIYOUSHA> &table();
};

extern template class Table<cD_RIYOUSHA>;

class cT_RIYOUSHA : public Table<cD_RIYOUSHA> {
public:
    const cD_RIYOUSHA *clsRIYOUSHA(int index) const { return at(index); }

    short iInit(cT_ADODB &db);

    short iGetMaxIDNo(qint32 &result, const Branch &branch);
    /// The patients of a branch in the order of their numbers.
    short iDataReadGrid(const Branch &branch);
    /// Those of them whom consent lists show: not the outcomes 1, 3 and 15.
    short iDataReadGrid_Douisho(const Branch &branch);

    using Table::iDataRead;
    short iDataRead(const PatientKey &key);

    /// @name A patient's older consents of one month
    /// The rows read are in DOUIKIROKU(), where positions count too.
    ///@{
    const cT_DOUIKIROKU &DOUIKIROKU() const { return m_monthly; }
    /// @param tDouiYM month as text yyyy/mm
    short iReadDOUIKIROKU(const PatientKey &key, const QString &tDouiYM);
    short iDataUpdateDOUIKIROKU(const cD_DOUIKIROKU *record, int position, bool transaction);
    short iData削除DOUIKIROKU(const cD_DOUIKIROKU *record, int position, bool transaction);
    ///@}

private:
    short passOn(short status);

    cT_DOUIKIROKU m_monthly;
};
