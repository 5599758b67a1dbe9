#include "print/request_letter/letter_query.h"

#include "db/adodb.h"
#include "db/field_rows.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"

#include <QMultiHash>
#include <QStringList>
#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

QString inList(QStringList values) {
    values.sort();
    values.removeDuplicates();
    return u" IN ("_s + values.join(u',') + u")"_s;
}

/// What the letters read of a row, in the order of the select list.
enum class L {
    KyotenCd,
    KyotenEb,
    Number,
    Date,
    Deformity,
    DeformityDate,
    Written,
    PeriodStart,
    PeriodEnd,
    Reconsent,
    DeformityReconsent,
    Diagnosis,
    MassageDiagnosis,
    AcupunctureDiagnosis,
    OtherDisease,
    Disease1,
    Disease7 = Disease1 + 6,
    Doctor,
    NotedDoctor,
    NotedInstitution,
    NotedAddress,
    Name,
    Birthday,
    Address1,
    Address2,
    FirstTreatment,
    Sex,
    Kind,
    Procedure,
    Staff1
};

constexpr QStringView rowColumns[] = {
    u"RIYOUSHA_DOUI_REC.iKyotenCd",
    u"RIYOUSHA_DOUI_REC.iKyotenEb",
    u"RIYOUSHA_DOUI_REC.nIDNo",
    u"RIYOUSHA_DOUI_REC.nDate",
    u"RIYOUSHA_DOUI_REC.iHenkeiFlg",
    u"RIYOUSHA_DOUI_REC.nHenkeiDouiDate",
    u"RIYOUSHA_DOUI_REC.tUpDateTime",
    u"RIYOUSHA_DOUI_REC.tDouiKaryoS",
    u"RIYOUSHA_DOUI_REC.tDouiKaryoE",
    u"RIYOUSHA_DOUI_REC.tSaiDouiDay",
    u"RIYOUSHA_DOUI_REC.tDouiDayTempHenkei",
    u"RIYOUSHA_DOUI_REC.cDouiByoumei",
    u"RIYOUSHA_DOUI_REC.cByoumeiM",
    u"RIYOUSHA_DOUI_REC.cByoumeiH",
    u"RIYOUSHA_DOUI_REC.cSyoujyouSonotaStr",
    u"RIYOUSHA_DOUI_REC.iHKSyobyou01Flg",
    u"RIYOUSHA_DOUI_REC.iHKSyobyou02Flg",
    u"RIYOUSHA_DOUI_REC.iHKSyobyou03Flg",
    u"RIYOUSHA_DOUI_REC.iHKSyobyou04Flg",
    u"RIYOUSHA_DOUI_REC.iHKSyobyou05Flg",
    u"RIYOUSHA_DOUI_REC.iHKSyobyou06Flg",
    u"RIYOUSHA_DOUI_REC.iHKSyobyou07Flg",
    u"RIYOUSHA_DOUI_REC.cIsiCd",
    u"RIYOUSHA_DOUI_REC.cDouiIsiName",
    u"RIYOUSHA_DOUI_REC.cDouiIsiKikan",
    u"RIYOUSHA_DOUI_REC.cDouiIsiAdd",
    u"RIYOUSHA.cName",
    u"RIYOUSHA.tBirthday",
    u"RIYOUSHA.cAdress1",
    u"RIYOUSHA.cAdress2",
    u"RIYOUSHA.tSyoryoDay",
    u"RIYOUSHA.iSexKubun",
    u"RIYOUSHA.iSejutsuKubun",
    u"RIYOUSHA_DOUI_REC.iDouiShubetsu",
    u"STAFF1.cName",
    u"STAFF2.cName",
    u"STAFF3.cName",
    u"STAFF4.cName",
    u"STAFF5.cName",
};
static_assert(std::size(rowColumns) == size_t(L::Staff1) + mostPractitioners);

QString rowsSql(const Branch &branch, std::span<const LetterOrder> orders) {
    QStringList patients;
    for (const LetterOrder &order : orders)
        patients.append(sqlNumber(order.row.patient.nIDNo));
    const QString table = u"RIYOUSHA_DOUI_REC"_s;
    // A list of numbers and not one condition a row: how long it is is not limited as the depth of an
    // expression is.
    return u"SELECT "_s + sqlSelectList(rowColumns) + u" FROM RIYOUSHA_DOUI_REC INNER JOIN RIYOUSHA ON "_s +
           sqlSamePatient(table, u"RIYOUSHA") + sqlPractitionerJoins() + u" WHERE "_s +
           sqlWhere(branch, table) + u" AND RIYOUSHA_DOUI_REC.iNewestFlg = 1 AND RIYOUSHA_DOUI_REC.nIDNo"_s +
           inList(patients);
}

LetterRow readRow(const FieldRows<L> &rows, int row) {
    const auto text = [&](L column) { return rows.text(row, column); };
    const auto number = [&](L column) { return int(rows.number(row, column)); };
    const auto date = [&](L column) { return rows.date(row, column); };
    LetterRow result;
    result.key = {{short(number(L::KyotenCd)), short(number(L::KyotenEb)), number(L::Number)},
                  number(L::Date),
                  short(number(L::Deformity)),
                  number(L::DeformityDate)};
    result.updateTime = text(L::Written);
    result.name = text(L::Name);
    result.address = joinedLines(text(L::Address1), text(L::Address2));
    result.birthday = date(L::Birthday);
    result.firstTreatment = date(L::FirstTreatment);
    result.sex = number(L::Sex);
    result.acupuncture = number(L::Kind) != 0;
    result.oral = number(L::Procedure) == 1;
    result.period = {date(L::PeriodStart), date(L::PeriodEnd)};
    result.reconsent =
        reconsentOf(number(L::Deformity) == 1, date(L::DeformityReconsent), date(L::Reconsent));
    result.diagnosis = diagnosisOf(text(result.acupuncture ? L::AcupunctureDiagnosis : L::MassageDiagnosis),
                                   text(L::Diagnosis));
    result.otherDisease = text(L::OtherDisease);
    for (size_t i = 0; i < result.diseases.size(); ++i)
        result.diseases[i] = number(L(size_t(L::Disease1) + i)) == 1;
    result.doctor = text(L::Doctor);
    result.notedDoctor = text(L::NotedDoctor);
    result.notedInstitution = text(L::NotedInstitution);
    result.notedAddress = text(L::NotedAddress);
    for (size_t i = 0; i < result.staff.size(); ++i)
        result.staff[i] = text(L(size_t(L::Staff1) + i));
    return result;
}

constexpr QStringView doctorColumns[] = {u"DOCTOR.cIDNo",      u"DOCTOR.cName",      u"DOCTOR.cKikan",
                                         u"DOCTOR.cYubinNo",   u"DOCTOR.cAddress1",  u"DOCTOR.cAddress2",
                                         u"DOCTOR.cTelNo",     u"SISETSU.cShamei1",  u"SISETSU.cYubinNo",
                                         u"SISETSU.cAddress1", u"SISETSU.cAddress2", u"SISETSU.cTelNo"};

QString doctorsSql(const QStringList &codes) {
    return u"SELECT "_s + sqlSelectList(doctorColumns) +
           u" FROM DOCTOR LEFT JOIN SISETSU ON SISETSU.nIDNo = DOCTOR.iSisetsuCode WHERE DOCTOR.cIDNo"_s +
           inList(codes);
}

KnownDoctor readDoctor(const Recordset &rows, int row) {
    const auto institution = [&](int first) {
        return KnownInstitution{rows.text(row, first), rows.text(row, first + 1), rows.text(row, first + 2),
                                rows.text(row, first + 3), rows.text(row, first + 4)};
    };
    KnownDoctor doctor;
    doctor.name = rows.text(row, 1);
    doctor.own = institution(2);
    doctor.institution = institution(7);
    return doctor;
}

// The branch's own company, else the head office.
QString companySql(const Branch &branch) {
    return u"SELECT TOP 1 cShamei1, cShamei2, cAddress1, cAddress2, cTelNo, cFaxNo, cDaihyo FROM CORP WHERE ("_s +
           sqlWhere(branch, u"CORP") + u") OR CORP.iType = 0 ORDER BY CASE WHEN "_s +
           sqlWhere(branch, u"CORP") + u" THEN 0 ELSE 1 END, CORP.nIDNo"_s;
}

/// Old data can bear two newest rows of a kind: the later one counts.
bool isLater(const LetterRow &row, const LetterRow &other) {
    return row.key.patient == other.key.patient && row.key.iHenkeiFlg == other.key.iHenkeiFlg &&
           std::pair(row.key.nDate, row.key.nHenkeiDouiDate) >
               std::pair(other.key.nDate, other.key.nHenkeiDouiDate);
}

/// The rows that are asked for and still stand as the newest of their kind.
std::vector<LetterRow> newestRows(const FieldRows<L> &rows, std::span<const LetterOrder> orders) {
    std::vector<LetterRow> all;
    QMultiHash<qint32, size_t> places; // by patient
    for (int row = 0; row < rows.count(); ++row) {
        all.push_back(readRow(rows, row));
        places.insert(all.back().key.patient.nIDNo, all.size() - 1);
    }
    std::vector<LetterRow> found;
    for (size_t order = 0; order < orders.size(); ++order) {
        const auto [first, end] = places.equal_range(orders[order].row.patient.nIDNo);
        const auto place =
            std::find_if(first, end, [&](size_t i) { return all[i].key == orders[order].row; });
        if (place == end || std::any_of(first, end, [&](size_t i) { return isLater(all[i], all[*place]); }))
            continue;
        found.push_back(all[*place]);
        found.back().order = order;
    }
    return found;
}

} // namespace

Result<LetterSource> readLetterSource(cT_ADODB &db, const Branch &branch,
                                      std::span<const LetterOrder> orders) {
    Result<Recordset> rows = readRows(db, rowsSql(branch, orders));
    if (!rows)
        return Failure{rows.reason()};
    const Result<Recordset> company = readRows(db, companySql(branch));
    if (!company)
        return Failure{company.reason()};
    LetterSource source;
    source.rows = newestRows(FieldRows<L>(std::move(*rows)), orders);
    source.hasCompany = company->rowCount() > 0;
    if (source.hasCompany)
        source.company = {joinedLines(company->text(0, 0), company->text(0, 1)),
                          joinedLines(company->text(0, 2), company->text(0, 3)), company->text(0, 4),
                          company->text(0, 5), company->text(0, 6)};
    QStringList codes;
    for (const LetterRow &row : source.rows)
        codes.append(row.doctor);
    for (const LetterOrder &order : orders)
        codes.append(order.doctor);
    Result<LetterDoctors> doctors = readLetterDoctors(db, codes);
    if (!doctors)
        return Failure{doctors.reason()};
    source.doctors = std::move(*doctors);
    return source;
}

Result<LetterDoctors> readLetterDoctors(cT_ADODB &db, QStringList codes) {
    LetterDoctors doctors;
    codes.removeAll(QString());
    if (codes.isEmpty())
        return doctors;
    for (QString &code : codes)
        code = sqlText(code);
    const Result<Recordset> rows = readRows(db, doctorsSql(codes));
    if (!rows)
        return Failure{rows.reason()};
    for (int row = 0; row < rows->rowCount(); ++row)
        doctors.insert(rows->text(row, 0), readDoctor(*rows, row));
    return doctors;
}
