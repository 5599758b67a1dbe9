#include "print/renewal_list/renewal_query.h"

#include "db/adodb.h"
#include "db/field_rows.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// In the order of the select list.
enum class R {
    Number,
    Name,
    Kana,
    Kind,
    FirstTreatment,
    Staff,
    StaffName,
    Counsellor,
    CounsellorName,
    Deformity,
    ConsentDay,
    Examined,
    PeriodStart,
    PeriodEnd,
    CorrectionStart,
    CorrectionEnd,
    OwnMethod,
    Method,
    Doctor,
    NotedDoctor,
    NotedInstitution,
    NotedAddress,
    DoctorName,
    DoctorInstitution,
    DoctorAddress1,
    DoctorAddress2,
    Institution,
    InstitutionName,
    InstitutionAddress1,
    InstitutionAddress2,
    InstitutionMethod,
    Count
};

constexpr QStringView columns[] = {
    u"RIYOUSHA.nIDNo",
    u"RIYOUSHA.cName",
    u"RIYOUSHA.cNameKana",
    u"RIYOUSHA.iSejutsuKubun",
    u"RIYOUSHA.tSyoryoDay",
    u"RIYOUSHA.nTantou",
    u"STAFF.cName",
    u"RIYOUSHA_SUB.iSoudaninId",
    u"SOUDAN.cName",
    u"RIYOUSHA_DOUI_REC.iHenkeiFlg",
    u"RIYOUSHA_DOUI_REC.tDouiDay",
    u"RIYOUSHA_DOUI_REC.tShinsatsuDay",
    u"RIYOUSHA_DOUI_REC.tDouiKaryoS",
    u"RIYOUSHA_DOUI_REC.tDouiKaryoE",
    u"RIYOUSHA_DOUI_REC.tHenkeSday",
    u"RIYOUSHA_DOUI_REC.tHenKeEday",
    u"RIYOUSHA_DOUI_REC.cKobetuDouiIrai",
    u"RIYOUSHA_DOUI_REC.iDouiIraiType",
    u"RIYOUSHA_DOUI_REC.cIsiCd",
    u"RIYOUSHA_DOUI_REC.cDouiIsiName",
    u"RIYOUSHA_DOUI_REC.cDouiIsiKikan",
    u"RIYOUSHA_DOUI_REC.cDouiIsiAdd",
    u"DOCTOR.cName",
    u"DOCTOR.cKikan",
    u"DOCTOR.cAddress1",
    u"DOCTOR.cAddress2",
    u"DOCTOR.iSisetsuCode",
    u"SISETSU.cShamei1",
    u"SISETSU.cAddress1",
    u"SISETSU.cAddress2",
    u"SISETSU.cDouiIrai",
};
static_assert(std::size(columns) == size_t(R::Count));

QString joins() {
    return u" FROM RIYOUSHA INNER JOIN RIYOUSHA_DOUI_REC ON "_s +
           sqlSamePatient(u"RIYOUSHA_DOUI_REC", u"RIYOUSHA") + u" LEFT JOIN RIYOUSHA_SUB ON "_s +
           sqlSamePatient(u"RIYOUSHA_SUB", u"RIYOUSHA") +
           u" LEFT JOIN DOCTOR ON DOCTOR.cIDNo = RIYOUSHA_DOUI_REC.cIsiCd"
           " LEFT JOIN SISETSU ON SISETSU.nIDNo = DOCTOR.iSisetsuCode"
           " LEFT JOIN STAFF ON STAFF.nIDNo = RIYOUSHA.nTantou AND "_s +
           sqlSameBranch(u"STAFF", u"RIYOUSHA") +
           u" LEFT JOIN SOUDAN ON SOUDAN.nIDNo = RIYOUSHA_SUB.iSoudaninId AND "_s +
           sqlSameBranch(u"SOUDAN", u"RIYOUSHA");
}

// The branch is given for the consents too, so that their index by branch, mark and end of period serves.
QString where(const RenewalListQuery &query) {
    QString sql = u" WHERE "_s + sqlWhere(query.branch, u"RIYOUSHA") + u" AND "_s +
                  sqlWhere(query.branch, u"RIYOUSHA_DOUI_REC") + u" AND "_s + sqlNewestOfKind() +
                  u" AND RIYOUSHA_DOUI_REC.tDouiKaryoE >= "_s + sqlDate(query.options.month);
    if (const QDate before = query.options.endsBefore(query.today); before.isValid())
        sql += u" AND RIYOUSHA_DOUI_REC.tDouiKaryoE < "_s + sqlDate(before);
    return sql + u" AND RIYOUSHA.tExpireDay IS NULL AND "_s + sqlIsListed() +
           sqlAndAmong(u"RIYOUSHA.nIDNo", query.patients);
}

QStringList orderColumns(RenewalListOptions::Order order) {
    using enum RenewalListOptions::Order;
    switch (order) {
    case PractitionerAndCounsellor:
        return {u"RIYOUSHA.nTantou"_s, u"RIYOUSHA_SUB.iSoudaninId"_s, u"RIYOUSHA.cNameKana"_s};
    case Practitioner:
        return {u"RIYOUSHA.nTantou"_s};
    case PeriodEnd:
        return {u"RIYOUSHA_DOUI_REC.tDouiKaryoE"_s};
    case Doctor:
        return {u"DOCTOR.iSisetsuCode"_s, u"RIYOUSHA_DOUI_REC.cIsiCd"_s};
    case Number:
        break;
    }
    return {};
}

// Null and 0 are both nobody and share a sheet.
QStringList pageBreakColumns(RenewalListOptions::PageBreak pageBreak) {
    using enum RenewalListOptions::PageBreak;
    switch (pageBreak) {
    case Practitioner:
        return {u"ISNULL(RIYOUSHA.nTantou, 0)"_s};
    case Counsellor:
        return {u"ISNULL(RIYOUSHA_SUB.iSoudaninId, 0)"_s};
    case None:
        break;
    }
    return {};
}

DueConsent readRow(const FieldRows<R> &rows, int row, const RequestMethods &methods) {
    const auto text = [&](R column) { return rows.text(row, column); };
    const auto number = [&](R column) { return qint32(rows.number(row, column)); };
    const auto date = [&](R column) { return rows.date(row, column); };
    DueConsent result;
    result.patient = number(R::Number);
    result.name = text(R::Name);
    result.kana = text(R::Kana);
    result.acupuncture = number(R::Kind) != 0;
    result.firstTreatment = date(R::FirstTreatment);
    result.period = {date(R::PeriodStart), date(R::PeriodEnd)};
    const bool isCorrection = number(R::Deformity) == 1;
    result.correction =
        correctionPeriodOf({date(R::CorrectionStart), date(R::CorrectionEnd)}, result.period, isCorrection);
    result.consentDay = date(R::ConsentDay);
    result.examined = date(R::Examined);
    result.doctor = text(R::Doctor);
    result.known.name = text(R::DoctorName);
    result.known.own.name = text(R::DoctorInstitution);
    result.known.own.address1 = text(R::DoctorAddress1);
    result.known.own.address2 = text(R::DoctorAddress2);
    result.known.institution.name = text(R::InstitutionName);
    result.known.institution.address1 = text(R::InstitutionAddress1);
    result.known.institution.address2 = text(R::InstitutionAddress2);
    result.known.notedName = text(R::NotedDoctor);
    result.known.notedInstitution = text(R::NotedInstitution);
    result.known.notedAddress = text(R::NotedAddress);
    result.institution = number(R::Institution);
    result.institutionMethod = text(R::InstitutionMethod);
    result.method = methods.ofRow(text(R::OwnMethod), number(R::Method));
    result.staff = number(R::Staff);
    result.staffName = text(R::StaffName);
    result.counsellor = number(R::Counsellor);
    result.counsellorName = text(R::CounsellorName);
    result.isCorrection = isCorrection;
    return result;
}

} // namespace

QString renewalListSql(const RenewalListQuery &query) {
    QStringList order = pageBreakColumns(query.options.pageBreak) + orderColumns(query.options.order) +
                        QStringList{u"RIYOUSHA.nIDNo"_s, u"RIYOUSHA_DOUI_REC.iHenkeiFlg"_s};
    const auto byStaff =
        std::ranges::find_if(order, [](const QString &column) { return column.contains(u"nTantou"); });
    if (byStaff != order.end() && !query.staff.empty())
        order.insert(byStaff, sqlOrderAs(u"RIYOUSHA.nTantou"_s, query.staff));
    return u"SELECT "_s + sqlSelectList(columns) + joins() + where(query) + u" ORDER BY "_s +
           order.join(u", "_s);
}

Result<std::vector<DueConsent>> readDueConsents(cT_ADODB &db, const RenewalListQuery &query) {
    if (query.patients.empty())
        return std::vector<DueConsent>();
    Result<Recordset> found = readRows(db, renewalListSql(query));
    if (!found)
        return Failure{found.reason()};
    const FieldRows<R> rows(std::move(*found));
    std::vector<DueConsent> result;
    result.reserve(size_t(rows.count()));
    for (int row = 0; row < rows.count(); ++row)
        if (query.patients.contains(qint32(rows.number(row, R::Number))))
            result.push_back(readRow(rows, row, query.methods));
    return result;
}
