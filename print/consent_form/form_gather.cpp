#include "print/consent_form/form_gather.h"

#include "db/adodb.h"
#include "db/tables/masters/code.h"
#include "db/tables/masters/corp.h"
#include "print/consent_form/form_choice.h"
#include "print/consent_form/form_columns.h"
#include "print/consent_form/form_query.h"
#include "print/consent_form/form_record.h"

#include <QHash>
#include <QSet>
#include <algorithm>
#include <map>
#include <tuple>

namespace {

constexpr short walkingCodes = 4;

/// The small tables, read once a batch.
struct Masters {
    std::vector<cD_CORP> companies;
    std::vector<RegisteredForm> forms;
    QHash<qint64, QString> walking;

    const cD_CORP *companyOf(const Branch &branch) const {
        const auto found =
            std::find_if(companies.begin(), companies.end(),
                         [&branch](const cD_CORP &company) { return company.branch() == branch; });
        return found == companies.end() ? nullptr : &*found;
    }
    const cD_CORP *sender(const std::optional<int> &position) const {
        if (!position || companies.empty())
            return nullptr;
        const bool inside = *position >= 0 && *position < int(companies.size());
        return &companies[inside ? size_t(*position) : 0];
    }
};

Result<Masters> readMasters(cT_ADODB &db, const ConsentFormOptions &options) {
    cT_CORP companies;
    cT_CODE codes;
    const auto started = [&](auto &table) { return table.iInit(db) == 0; };
    const Branch branch = options.master == FormMaster::Practice ? Branch{} : options.branch;
    if (!started(companies) || companies.iDataReadGrid() != 0)
        return Failure{companies.sErrMsg()};
    Result<std::vector<RegisteredForm>> forms = readRegisteredForms(db, branch, FormPrintType::ConsentForm);
    if (!forms)
        return Failure{forms.reason()};
    if (!started(codes) || codes.iDataReadGridBunrui(walkingCodes) != 0)
        return Failure{codes.sErrMsg()};
    Masters masters;
    masters.companies = companies.records();
    masters.forms = std::move(*forms);
    for (const cD_CODE &code : codes.records())
        masters.walking.insert(code.nIDNo, code.cName);
    return masters;
}

/// A form to be made.
struct Wanted {
    int record;
    FormStyle style;
    std::vector<size_t> rows{}; ///< positions asked for
    bool done = false;          ///< served by another form
};

class Gathering {
public:
    Gathering(const ConsentFormOptions &options, const Masters &masters, const FormRecords &rows,
              const QDate &today)
        : m_options(options),
          m_masters(masters),
          m_rows(rows),
          m_today(today),
          m_sender(masters.sender(options.company)) {}

    GatheredForms gather() {
        if (m_options.rows)
            wantRows(*m_options.rows);
        else
            wantPatients();
        // Massage first: its form serves the correction as well.
        for (const bool correction : {false, true})
            for (Wanted &wanted : m_wanted)
                if (m_rows.flag(wanted.record, F::IsCorrection) == correction && !wanted.done)
                    make(wanted);
        putInOrder();
        return std::move(m_gathered);
    }

private:
    void wantPatients() {
        const QSet<qint32> asked(m_options.patients.begin(), m_options.patients.end());
        QSet<qint32> seen;
        for (int record = 0; record < m_rows.count(); ++record) {
            const qint32 number = m_rows.patient(record).nIDNo;
            if ((!asked.isEmpty() && !asked.contains(number)) || seen.contains(number))
                continue;
            seen.insert(number);
            m_wanted.push_back({record, m_options.style});
        }
    }

    void wantRows(const std::vector<ConsentFormRow> &rows) {
        std::map<Key, int> records;
        QHash<qint32, int> patients;
        for (int record = 0; record < m_rows.count(); ++record) {
            records.emplace(keyOf(m_rows.consent(record)), record);
            patients.insert(m_rows.patient(record).nIDNo, record);
        }
        std::map<Key, size_t> wanted;
        for (size_t row = 0; row < rows.size(); ++row) {
            const auto &[key, style] = rows[row];
            const auto record = records.find(keyOf(key));
            if (record == records.end() || key.patient.branch() != m_options.branch) {
                leaveOutFollowed(row, key.patient, patients.value(key.patient.nIDNo, -1));
                continue;
            }
            const auto [place, isNew] = wanted.try_emplace(record->first, m_wanted.size());
            if (isNew) {
                if (key.iHenkeiFlg != 0)
                    m_corrections.insert(key.patient.nIDNo, m_wanted.size());
                m_wanted.push_back({record->second, style});
            }
            m_wanted[place->second].rows.push_back(row);
        }
    }

    /// All rows are of the branch read.
    using Key = std::tuple<qint32, qint32, short, qint32>;
    static Key keyOf(const ConsentRowKey &row) {
        return {row.patient.nIDNo, row.nDate, row.iHenkeiFlg, row.nHenkeiDouiDate};
    }

    void leaveOutFollowed(size_t row, const PatientKey &patient, int anyRecord) {
        LeftOutPatient out;
        out.patient = patient;
        out.why = LeftOutPatient::Why::Followed;
        out.row = row;
        if (anyRecord >= 0) {
            out.name = m_rows.text(anyRecord, F::Name);
            out.acupuncture = m_rows.isAcupuncture(anyRecord);
        }
        m_gathered.leftOut.push_back(out);
    }

    void make(Wanted &wanted) {
        wanted.done = true;
        Wanted *correction = correctionBeside(wanted);
        FormStyle style = wanted.style;
        if (correction && correction->style == FormStyle::Again)
            style = FormStyle::Again;
        const FormChoice choice = chooseForm(m_rows, wanted.record, style, m_options, m_masters.forms);
        if (choice.file.isEmpty()) {
            leaveOut(wanted, choice.oral);
            return;
        }
        m_gathered.forms.push_back(
            form(wanted.record, correction ? correction->record : wanted.record, choice));
        std::vector<size_t> &rows = m_gathered.forms.back().rows = wanted.rows;
        if (correction) {
            correction->done = true;
            rows.insert(rows.end(), correction->rows.begin(), correction->rows.end());
        }
    }

    /// The patient's correction, when its row is asked for too, of the same doctor at the same place
    /// and by the same procedure.
    Wanted *correctionBeside(const Wanted &wanted) {
        const auto found = m_corrections.constFind(m_rows.patient(wanted.record).nIDNo);
        if (found == m_corrections.cend())
            return nullptr;
        Wanted &correction = m_wanted[*found];
        return correction.done || !isAskedTogether(correction.record, wanted.record) ? nullptr : &correction;
    }

    bool isAskedTogether(int record, int other) const {
        return m_rows.flag(record, F::Oral) == m_rows.flag(other, F::Oral) &&
               m_rows.text(record, F::Doctor) == m_rows.text(other, F::Doctor) &&
               addresseeOf(m_rows.doctor(record)) == addresseeOf(m_rows.doctor(other));
    }

    void leaveOut(const Wanted &wanted, bool oral) {
        LeftOutPatient out{m_rows.patient(wanted.record), m_rows.text(wanted.record, F::Name),
                           m_rows.isAcupuncture(wanted.record),
                           oral ? LeftOutPatient::Why::Oral : LeftOutPatient::Why::NoLayout};
        if (wanted.rows.empty())
            m_gathered.leftOut.push_back(out);
        for (const size_t row : wanted.rows) {
            out.row = row;
            m_gathered.leftOut.push_back(out);
        }
    }

    ConsentForm form(int record, int correction, const FormChoice &choice) const {
        const PatientKey patient = m_rows.patient(record);
        return {.patient = patient,
                .name = m_rows.text(record, F::Name),
                .consent = m_rows.consent(record),
                .rows = {},
                .acupuncture = m_rows.isAcupuncture(record),
                .oral = choice.oral,
                .layout = choice.file,
                .formNumber = choice.number,
                .values = consentFormValues({m_rows, record, correction, choice,
                                             m_masters.companyOf(patient.branch()), m_sender,
                                             m_masters.walking.value(m_rows.number(record, F::Walking)),
                                             m_options.submitted, m_today})};
    }

    void putInOrder() {
        if (m_options.rows) {
            std::ranges::sort(m_gathered.forms, {}, [](const auto &form) { return form.rows.front(); });
            std::ranges::sort(m_gathered.leftOut, {}, [](const auto &out) { return *out.row; });
        } else if (m_options.order == FormOrder::AsChosen) {
            QHash<qint32, size_t> places;
            for (size_t place = m_options.patients.size(); place-- > 0;)
                places.insert(m_options.patients[place], place);
            const auto place = [&places](const auto &one) { return places.value(one.patient.nIDNo); };
            std::ranges::sort(m_gathered.forms, {}, place);
            std::ranges::sort(m_gathered.leftOut, {}, place);
        }
    }

    const ConsentFormOptions &m_options;
    const Masters &m_masters;
    const FormRecords &m_rows;
    QDate m_today;
    const cD_CORP *m_sender;
    std::vector<Wanted> m_wanted;
    QHash<qint32, size_t> m_corrections; ///< of the wanted ones, by patient
    GatheredForms m_gathered;
};

} // namespace

Result<GatheredForms> gatherConsentForms(cT_ADODB &db, const ConsentFormOptions &options,
                                         const QDate &today) {
    if (options.rows && options.rows->empty())
        return GatheredForms();
    Result<Recordset> rows = readRows(db, consentFormSql(options));
    if (!rows)
        return Failure{rows.reason()};
    const Result<Masters> masters = readMasters(db, options);
    if (!masters)
        return Failure{masters.reason()};
    const FormRecords records(std::move(*rows));
    return Gathering(options, *masters, records, today).gather();
}
