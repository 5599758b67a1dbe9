#include "print/ledger/ledger_query.h"

#include "db/adodb.h"
#include "db/field_rows.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"
#include "print/documents/addressee.h"
#include "print/ledger/ledger.h"

#include <QStringList>
#include <algorithm>
#include <iterator>
#include <ranges>
#include <set>
#include <tuple>

using namespace Qt::Literals::StringLiterals;

namespace {

/// What the ledger reads of a row, in the order of the select list.
enum class L {
    Number,
    Name,
    Kind,
    Staff,
    Date,
    Deformity,
    DeformityDate,
    ConsentDay,
    PeriodStart,
    PeriodEnd,
    CorrectionStart,
    CorrectionEnd,
    Reconsent,
    ReconsentDeformity,
    Requested,
    RequestedDeformity,
    Received,
    ReceivedDeformity,
    Contact,
    Sent,
    Procedure,
    Method,
    OwnRequest,
    NotedDoctor,
    NotedInstitution,
    Doctor,
    DoctorName,
    DoctorInstitution,
    Institution,
    InstitutionName,
    InstitutionMethod,
    Staff1
};

constexpr QStringView columns[] = {
    u"RIYOUSHA.nIDNo",
    u"RIYOUSHA.cName",
    u"RIYOUSHA.iSejutsuKubun",
    u"RIYOUSHA.nTantou",
    u"RIYOUSHA_DOUI_REC.nDate",
    u"RIYOUSHA_DOUI_REC.iHenkeiFlg",
    u"RIYOUSHA_DOUI_REC.nHenkeiDouiDate",
    u"RIYOUSHA_DOUI_REC.tDouiDay",
    u"RIYOUSHA_DOUI_REC.tDouiKaryoS",
    u"RIYOUSHA_DOUI_REC.tDouiKaryoE",
    u"RIYOUSHA_DOUI_REC.tHenkeSday",
    u"RIYOUSHA_DOUI_REC.tHenKeEday",
    u"RIYOUSHA_DOUI_REC.tSaiDouiDay",
    u"RIYOUSHA_DOUI_REC.tDouiDayTempHenkei",
    u"RIYOUSHA_DOUI_REC.iOutputFlg",
    u"RIYOUSHA_DOUI_REC.iOutputFlgHenkei",
    u"RIYOUSHA_DOUI_REC.iGetFlg",
    u"RIYOUSHA_DOUI_REC.iGetFlgHenkei",
    u"RIYOUSHA_DOUI_REC.iRenrakuFlg",
    u"RIYOUSHA_DOUI_REC.iSendFlg",
    u"RIYOUSHA_DOUI_REC.iDouiShubetsu",
    u"RIYOUSHA_DOUI_REC.iDouiIraiType",
    u"RIYOUSHA_DOUI_REC.cKobetuDouiIrai",
    u"RIYOUSHA_DOUI_REC.cDouiIsiName",
    u"RIYOUSHA_DOUI_REC.cDouiIsiKikan",
    // A doctor who is not in the master keeps the code that the consent names.
    u"CASE WHEN RIYOUSHA_DOUI_REC.nDate IS NULL THEN DOCTOR.cIDno ELSE RIYOUSHA_DOUI_REC.cIsiCd END",
    u"DOCTOR.cName",
    u"DOCTOR.cKikan",
    u"DOCTOR.iSisetsuCode",
    u"SISETSU.cShamei1",
    u"SISETSU.cDouiIrai",
    u"STAFF1.cName",
    u"STAFF2.cName",
    u"STAFF3.cName",
    u"STAFF4.cName",
    u"STAFF5.cName",
};
static_assert(std::size(columns) == size_t(L::Staff1) + mostPractitioners);

/// A patient without a consent has the doctor of the patient's own row.
QString joins() {
    return u" FROM RIYOUSHA LEFT JOIN RIYOUSHA_DOUI_REC ON "_s +
           sqlSamePatient(u"RIYOUSHA_DOUI_REC", u"RIYOUSHA") +
           u" AND RIYOUSHA_DOUI_REC.iNewestFlg = 1"
           " LEFT JOIN DOCTOR ON DOCTOR.cIDno = CASE WHEN RIYOUSHA_DOUI_REC.nDate IS NULL"
           " THEN CAST(RIYOUSHA.nDouiIsiCd AS VARCHAR(10)) ELSE RIYOUSHA_DOUI_REC.cIsiCd END"
           " LEFT JOIN SISETSU ON SISETSU.nIDNo = DOCTOR.iSisetsuCode"_s +
           sqlPractitionerJoins();
}

/// The patients asked for, each once.
std::set<qint32> patientsOf(const LedgerOrder &order) {
    if (!order.rows)
        return {order.patients.begin(), order.patients.end()};
    std::set<qint32> patients;
    for (const ConsentRowKey &row : *order.rows)
        patients.insert(row.patient.nIDNo);
    return patients;
}

/// The answer, a patient's rows side by side, of each kind the latest last.
class LedgerRecords : public FieldRows<L> {
public:
    using Key = std::tuple<qint32, short, qint32, qint32>;
    using FieldRows::FieldRows;

    static Key keyOf(const ConsentRowKey &row) {
        return {row.patient.nIDNo, row.iHenkeiFlg, row.nDate, row.nHenkeiDouiDate};
    }
    ConsentRowKey key(int record, const Branch &branch) const {
        return {{branch.iKyotenCd, branch.iKyotenEb, qint32(number(record, L::Number))},
                qint32(number(record, L::Date)),
                short(number(record, L::Deformity)),
                qint32(number(record, L::DeformityDate))};
    }
    /// The first record that does not stand before the key.
    int from(const Key &key) const {
        const auto records = std::views::iota(0, count());
        return int(std::ranges::lower_bound(records, key, {},
                                            [this](int record) { return keyOf(this->key(record, {})); }) -
                   records.begin());
    }
    bool sameKind(int record, int other) const {
        return number(record, L::Number) == number(other, L::Number) &&
               number(record, L::Deformity) == number(other, L::Deformity);
    }
};

LedgerRow readRow(const LedgerRecords &rows, int row, const LedgerOrder &order) {
    const auto text = [&](L column) { return rows.text(row, column); };
    const auto number = [&](L column) { return qint32(rows.number(row, column)); };
    const auto date = [&](L column) { return rows.date(row, column); };
    LedgerRow result;
    result.key = rows.key(row, order.branch);
    const auto mark = [&](L massage, L deformity) {
        return rows.flag(row, result.isDeformity() ? deformity : massage);
    };
    result.name = text(L::Name);
    result.kind = rows.flag(row, L::Kind) ? TreatmentKind::Acupuncture : TreatmentKind::Massage;
    result.oral = number(L::Procedure) == 1;
    result.consentDay = date(L::ConsentDay);
    result.period = {date(L::PeriodStart), date(L::PeriodEnd)};
    result.correction = correctionPeriodOf({date(L::CorrectionStart), date(L::CorrectionEnd)}, result.period,
                                           result.isDeformity());
    result.reconsent = reconsentOf(result.isDeformity(), date(L::ReconsentDeformity), date(L::Reconsent));
    result.requested = mark(L::Requested, L::RequestedDeformity);
    result.received = mark(L::Received, L::ReceivedDeformity);
    result.contacted = rows.flag(row, L::Contact);
    result.mailed = rows.flag(row, L::Sent);
    result.doctor = text(L::Doctor);
    result.institution = number(L::Institution);
    KnownDoctor doctor;
    doctor.name = text(L::DoctorName);
    doctor.own.name = text(L::DoctorInstitution);
    doctor.institution.name = text(L::InstitutionName);
    doctor.notedName = text(L::NotedDoctor);
    doctor.notedInstitution = text(L::NotedInstitution);
    const Addressee addressee = addresseeOf(doctor);
    result.doctorName = addressee.doctor;
    result.institutionName = addressee.institution;
    result.institutionMethod = text(L::InstitutionMethod);
    result.ownMethod = order.methods.ofRow(text(L::OwnRequest), number(L::Method));
    result.staffNumber = number(L::Staff);
    for (size_t i = 0; i < result.staff.size(); ++i)
        result.staff[i] = text(L(size_t(L::Staff1) + i));
    return result;
}

/// Whether a consent belongs to the ledger of a period. Reversed ends count the right way round, missing ones
/// as open: a row is not lost for them.
bool touches(const LedgerRow &row, const Period &asked) {
    auto [start, end] = row.isDeformity() ? row.correction : row.period;
    if (end.isValid() && start > end)
        std::swap(start, end);
    const bool before = end.isValid() && asked.start.isValid() && end < asked.start;
    const bool after = start.isValid() && asked.end.isValid() && start > asked.end;
    return !before && !after;
}

/// The records that one position of the order stands for.
std::vector<int> recordsOf(const LedgerRecords &records, const LedgerOrder &order, size_t position) {
    std::vector<int> found;
    if (order.rows) {
        const auto key = LedgerRecords::keyOf((*order.rows)[position]);
        const int record = records.from(key);
        if (record < records.count() && LedgerRecords::keyOf(records.key(record, {})) == key)
            found.push_back(record);
        return found;
    }
    const qint32 patient = order.patients[position];
    for (int record = records.from({patient, 0, 0, 0});
         record < records.count() && records.number(record, L::Number) == patient; ++record)
        if (record + 1 == records.count() || !records.sameKind(record, record + 1))
            found.push_back(record);
    return found;
}

Ledger gather(const LedgerRecords &records, const LedgerOrder &order) {
    Ledger ledger;
    const size_t positions = order.rows ? order.rows->size() : order.patients.size();
    for (size_t position = 0; position < positions; ++position) {
        const std::vector<int> found = recordsOf(records, order, position);
        if (found.empty())
            ledger.gone.push_back(position);
        for (const int record : found) {
            LedgerRow row = readRow(records, record, order);
            row.order = position;
            if (lacksDeformityPeriod(row) || touches(row, order.period))
                ledger.rows.push_back(std::move(row));
        }
    }
    return ledger;
}

} // namespace

QString ledgerSql(const LedgerOrder &order) {
    return u"SELECT "_s + sqlSelectList(columns) + joins() + u" WHERE "_s +
           sqlWhere(order.branch, u"RIYOUSHA") + sqlAndAmong(u"RIYOUSHA.nIDNo", patientsOf(order)) +
           u" ORDER BY RIYOUSHA.nIDNo, RIYOUSHA_DOUI_REC.iHenkeiFlg, RIYOUSHA_DOUI_REC.nDate,"
           " RIYOUSHA_DOUI_REC.nHenkeiDouiDate"_s;
}

Result<Ledger> readLedger(cT_ADODB &db, const LedgerOrder &order) {
    if (patientsOf(order).empty())
        return Ledger();
    Result<Recordset> rows = readRows(db, ledgerSql(order));
    if (!rows)
        return Failure{rows.reason()};
    Ledger ledger = gather(LedgerRecords(std::move(*rows)), order);
    orderLedger(ledger.rows, order);
    return ledger;
}
