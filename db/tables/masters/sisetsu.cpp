#include "db/tables/masters/sisetsu.h"

#include "db/sql_text.h"
#include "db/tables/keys_query.h"

using namespace Qt::Literals::StringLiterals;

template class Table<cD_SISETSU>;

namespace {

constexpr TableColumn<cD_SISETSU> columns[] = {
    {u"nIDNo", &cD_SISETSU::nIDNo, ColumnUse::Key},
    {u"iType", &cD_SISETSU::iType},
    {u"cSisetsuType", &cD_SISETSU::cSisetsuType},
    {u"iKikanShubetsu", &cD_SISETSU::iKikanShubetsu},
    {u"cShamei1", &cD_SISETSU::cShamei1},
    {u"cShamei2", &cD_SISETSU::cShamei2},
    {u"cShameiKana1", &cD_SISETSU::cShameiKana1},
    {u"cShameiKana2", &cD_SISETSU::cShameiKana2},
    {u"cShamei1Ryaku", &cD_SISETSU::cShamei1Ryaku},
    {u"cDaihyo", &cD_SISETSU::cDaihyo},
    {u"cDaihyoKana", &cD_SISETSU::cDaihyoKana},
    {u"cYubinNo", &cD_SISETSU::cYubinNo},
    {u"cAddress1", &cD_SISETSU::cAddress1},
    {u"cAddress2", &cD_SISETSU::cAddress2},
    {u"cAddressKana", &cD_SISETSU::cAddressKana},
    {u"cTelNo", &cD_SISETSU::cTelNo},
    {u"cFaxNo", &cD_SISETSU::cFaxNo},
    {u"cDouiIrai", &cD_SISETSU::cDouiIrai},
    {u"cComment", &cD_SISETSU::cComment},
    {u"nLat", &cD_SISETSU::nLat},
    {u"nLon", &cD_SISETSU::nLon},
    {u"nColorCode", &cD_SISETSU::nColorCode},
    {u"iColorIndex", &cD_SISETSU::iColorIndex},
    {u"iPaymentType", &cD_SISETSU::iPaymentType},
    {u"cPcName", &cD_SISETSU::cPcName, ColumnUse::PcName},
    {u"tUpDateTime", &cD_SISETSU::tUpDateTime, ColumnUse::UpDateTime},
};
constexpr TableDefinition<cD_SISETSU> definition{u"SISETSU", columns};

using Assignments = QList<std::pair<QString, QString>>;

/// Both lines in one, as a patient's row holds it; Null only when both are.

/// What care managers and counsellors hold of their facility.
Assignments officeColumns(const cD_SISETSU &facility) {
    return {{u"cYubinNo"_s, sqlText(facility.cYubinNo)},
            {u"cAdress1"_s, sqlText(facility.cAddress1)},
            {u"cAdress2"_s, sqlText(facility.cAddress2)},
            {u"cTelNo"_s, sqlText(facility.cTelNo)},
            {u"cFaxNo"_s, sqlText(facility.cFaxNo)}};
}

} // namespace

QString wholeAddress(const cD_SISETSU &facility) {
    return facility.cAddress2.isNull() ? facility.cAddress1 : facility.cAddress1 + facility.cAddress2;
}

const TableDefinition<cD_SISETSU> &cD_SISETSU::table() {
    return definition;
}

short cT_SISETSU::iGetMaxIDNo(qint32 &result) {
    return readMax(result, maxSql(text(), u"nIDNo"));
}

short cT_SISETSU::iDataReadGrid() {
    return read(u"  order by      nIDNo"_s);
}

short cT_SISETSU::iDataUpdate_ToRiyousha(const cD_SISETSU *facility) {
    if (!facility)
        return failInvalid();
    return copyTo(u"RIYOUSHA", {{{{u"cSisetsuName"_s, sqlText(facility->cShamei1)},
                                  {u"cSisetsuAddress"_s, sqlText(wholeAddress(*facility))}},
                                 u"nSisetsuCd = "_s + sqlNumber(facility->nIDNo)}});
}

short cT_SISETSU::iDataUpdate_ToCareMane(const cD_SISETSU *facility) {
    if (!facility)
        return failInvalid();
    Assignments values = officeColumns(*facility);
    values.append({u"cAdressKana"_s, sqlText(facility->cAddressKana)});
    return copyTo(u"CAREMANE", {{values, u"nSisetsuCode = "_s + sqlNumber(facility->nIDNo)}});
}

short cT_SISETSU::iDataUpdate_ToSoudan(const cD_SISETSU *facility) {
    if (!facility)
        return failInvalid();
    return copyTo(u"SOUDAN", {{officeColumns(*facility), u"nSisetsuCode = "_s + sqlNumber(facility->nIDNo)}});
}

short cT_SISETSU::iDataUpdate_ToRiyousha_Iryou(const cD_SISETSU *facility) {
    if (!facility)
        return failInvalid();
    const QString name = sqlText(facility->cShamei1);
    const QString here = u"DOCTOR.iSisetsuCode = "_s + sqlNumber(facility->nIDNo) +
                         u" and (DOCTOR.cKikan = "_s + name +
                         u" or DOCTOR.cKikan = '' or DOCTOR.cKikan is null)"_s;
    const QString firstDoctor =
        u"CAST(nDouiIsiCd AS VARCHAR(10)) IN (SELECT DOCTOR.cIDNo FROM DOCTOR WHERE "_s + here + u')';
    const QString secondDoctor =
        u"EXISTS (SELECT 1 FROM RIYOUSHA_SUB INNER JOIN DOCTOR ON DOCTOR.cIDNo = RIYOUSHA_SUB.iIsiCd2 WHERE "_s +
        sqlSamePatient(u"RIYOUSHA_SUB", u"RIYOUSHA") + u" and "_s + here + u')';
    return copyTo(u"RIYOUSHA", {{{{u"cDouiIsiKikan1"_s, name}}, firstDoctor},
                                {{{u"cDouiIsiKikan2"_s, name}}, secondDoctor}});
}
