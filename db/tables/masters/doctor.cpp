#include "db/tables/masters/doctor.h"

#include "db/sql_text.h"
#include "db/tables/base/consent_layout_columns.h"
#include "db/tables/keys_query.h"

#include <optional>

using namespace Qt::Literals::StringLiterals;

template class Table<cD_DOCTOR>;

namespace {

constexpr auto columns = joinColumns(
    std::to_array<TableColumn<cD_DOCTOR>>({
        {u"cIDNo", &cD_DOCTOR::cIDNo, ColumnUse::Key},
        {u"cName", &cD_DOCTOR::cName},
        {u"cNameKana", &cD_DOCTOR::cNameKana},
        {u"cKikan", &cD_DOCTOR::cKikan},
        {u"cKikanKana", &cD_DOCTOR::cKikanKana},
        {u"iSisetsuCode", &cD_DOCTOR::nSisetsuCd},
        {u"SISETSUSHAMEI", &cD_DOCTOR::SISETSUSHAMEI, ColumnUse::Joined, u"SISETSU.cShamei1"},
        {u"SISETSUSHAMEIKANA", &cD_DOCTOR::SISETSUSHAMEIKANA, ColumnUse::Joined, u"SISETSU.cShameiKana1"},
        {u"cCode", &cD_DOCTOR::cCode},
        {u"cDaihyo", &cD_DOCTOR::cDaihyo},
        {u"cDaihyoKana", &cD_DOCTOR::cDaihyoKana},
        {u"cYubinNo", &cD_DOCTOR::cYubinNo},
        {u"cAddress1", &cD_DOCTOR::cAddress1},
        {u"cAddress2", &cD_DOCTOR::cAddress2},
        {u"cAddressKana", &cD_DOCTOR::cAddressKana},
        {u"cTelNo", &cD_DOCTOR::cTelNo},
        {u"cFaxNo", &cD_DOCTOR::cFaxNo},
        {u"cMobNo", &cD_DOCTOR::cMobNo},
        {u"cMail1", &cD_DOCTOR::cMail1},
        {u"cMail2", &cD_DOCTOR::cMail2},
        {u"cWeb", &cD_DOCTOR::cWeb},
        {u"iHandWritingFlg", &cD_DOCTOR::iHandWritingFlg},
    }),
    consentLayoutColumns<cD_DOCTOR>,
    std::to_array<TableColumn<cD_DOCTOR>>({
        {u"cPcName", &cD_DOCTOR::cPcName, ColumnUse::PcName},
        {u"tUpDateTime", &cD_DOCTOR::tUpDateTime, ColumnUse::UpDateTime},
    }));
constexpr TableDefinition<cD_DOCTOR> definition{u"DOCTOR", columns,
                                                u" LEFT JOIN SISETSU ON SISETSU.nIDNo = DOCTOR.iSisetsuCode"};

/// The code as a number, as patients hold it; nothing when it is none.
std::optional<qint64> numberOf(const QString &code) {
    bool isNumber = false;
    const qint64 number = code.toLongLong(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

QString byCode(const QString &code) {
    // What is no number can only be looked for as it is written.
    const std::optional<qint64> number = numberOf(code);
    return number ? u"CAST(cIDno AS NUMERIC(10))="_s + sqlNumber(*number) : u"cIDno = "_s + sqlText(code);
}

QString byTexts(const cD_DOCTOR &filter) {
    QStringList conditions;
    const std::pair<QString, QString> texts[] = {
        {u"cName"_s, filter.cName}, {u"cNameKana"_s, filter.cNameKana}, {u"cKikan"_s, filter.cKikan}};
    for (const auto &[column, text] : texts)
        if (!text.isEmpty())
            conditions += sqlContains(column, text);
    if (!filter.nSisetsuCd.isNull())
        conditions += u"iSisetsuCode = "_s + sqlText(QString::number(filter.nSisetsuCd));
    return conditions.join(u" and "_s);
}

/// What a patient's current consent holds of the doctor; `suffix` is 1 or 2.
QList<std::pair<QString, QString>> consentColumns(const cD_DOCTOR &doctor, QChar suffix) {
    return {{u"cDouiIsiName"_s + suffix, sqlText(doctor.cName)},
            {u"cDouiIsiKikan"_s + suffix, sqlText(doctor.cKikan)},
            {u"cDouiIsiAdd"_s + suffix, sqlText(doctor.cAddress1)}};
}

} // namespace

const TableDefinition<cD_DOCTOR> &cD_DOCTOR::table() {
    return definition;
}

short cT_DOCTOR::iGetMaxIDNo(qint64 &result) {
    return readMax(result, u"  select      max(CAST(cIDno AS NUMERIC(10))) as cIDno  FROM      DOCTOR"_s);
}

short cT_DOCTOR::iDataReadGrid(const cD_DOCTOR *filter) {
    if (!filter)
        return failInvalid();
    const QString conditions = filter->cIDNo.isEmpty() ? byTexts(*filter) : byCode(filter->cIDNo);
    const QString where = conditions.isEmpty() ? QString() : u" WHERE "_s + conditions;
    return read(where + u" ORDER BY CAST(cIDno AS NUMERIC(10))"_s);
}

short cT_DOCTOR::iDataUpdate_ToRiyousha(const cD_DOCTOR *doctor) {
    if (!doctor)
        return failInvalid();
    QList<Copy> copies;
    if (const std::optional<qint64> number = numberOf(doctor->cIDNo))
        copies.append({consentColumns(*doctor, u'1'), u"nDouiIsiCd = "_s + sqlNumber(*number)});
    copies.append({consentColumns(*doctor, u'2'), u"EXISTS (SELECT 1 FROM RIYOUSHA_SUB WHERE "_s +
                                                      sqlSamePatient(u"RIYOUSHA_SUB", u"RIYOUSHA") +
                                                      u" and RIYOUSHA_SUB.iIsiCd2 = "_s +
                                                      sqlText(doctor->cIDNo) + u')'});
    return copyTo(u"RIYOUSHA", copies);
}
