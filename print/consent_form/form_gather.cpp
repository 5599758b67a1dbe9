#include "print/consent_form/form_gather.h"

#include "db/adodb.h"
#include "db/tables/masters/code.h"
#include "db/tables/masters/corp.h"
#include "db/tables/masters/shinseisyo.h"
#include "print/consent_form/form_choice.h"
#include "print/consent_form/form_columns.h"
#include "print/consent_form/form_query.h"
#include "print/consent_form/form_record.h"

#include <QHash>
#include <QSet>
#include <algorithm>

namespace {

constexpr short walkingCodes = 4;
constexpr short consentForms = 1; ///< SHINSEISYO.iPrintType

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

short readMasters(cT_ADODB &db, const ConsentFormOptions &options, Masters &masters, QString &reason) {
    cT_CORP companies;
    cT_SHINSEISYO forms;
    cT_CODE codes;
    const auto started = [&](auto &table) { return table.iInit(db) == 0; };
    const Branch branch = options.master == FormMaster::Practice ? Branch{} : options.branch;
    if (!started(companies) || companies.iDataReadGrid() != 0)
        reason = companies.sErrMsg();
    else if (!started(forms) || forms.iDataReadGrid(branch, consentForms) != 0)
        reason = forms.sErrMsg();
    else if (!started(codes) || codes.iDataReadGridBunrui(walkingCodes) != 0)
        reason = codes.sErrMsg();
    else {
        masters.companies = companies.records();
        for (const cD_SHINSEISYO &form : forms.records())
            masters.forms.push_back(
                {form.nIDNo, form.cFileName.trimmed(), form.iKubun != 0, form.iSejutsuKubun != 0});
        for (const cD_CODE &code : codes.records())
            masters.walking.insert(code.nIDNo, code.cName);
        return 0;
    }
    return -1;
}

class Gathering {
public:
    Gathering(const ConsentFormOptions &options, const Masters &masters, const FormRecords &rows,
              const QDate &today)
        : m_options(options),
          m_masters(masters),
          m_rows(rows),
          m_today(today),
          m_sender(masters.sender(options.company)),
          m_wanted(options.patients.begin(), options.patients.end()) {}

    GatheredForms gather() {
        m_gathered.forms.reserve(size_t(m_rows.count()));
        for (int record = 0; record < m_rows.count(); ++record)
            add(record);
        if (m_options.order == FormOrder::AsChosen)
            putInChosenOrder();
        return std::move(m_gathered);
    }

private:
    void add(int record) {
        const PatientKey patient = m_rows.patient(record);
        if (!m_wanted.isEmpty() && !m_wanted.contains(patient.nIDNo))
            return;
        // Data with two newest marks would print a patient twice.
        if (m_seen.contains(patient.nIDNo))
            return;
        m_seen.insert(patient.nIDNo);
        const FormChoice choice = chooseForm(m_rows, record, m_options, m_masters.forms);
        if (choice.file.isEmpty())
            leaveOut(record, choice.oral);
        else
            m_gathered.forms.push_back(form(record, choice));
    }

    void leaveOut(int record, bool oral) {
        m_gathered.leftOut.push_back({m_rows.patient(record), m_rows.text(record, F::Name),
                                      m_rows.isAcupuncture(record),
                                      oral ? LeftOutPatient::Why::Oral : LeftOutPatient::Why::NoLayout});
    }

    ConsentForm form(int record, const FormChoice &choice) const {
        const PatientKey patient = m_rows.patient(record);
        return {.patient = patient,
                .name = m_rows.text(record, F::Name),
                .consentKey = qint32(m_rows.number(record, F::ConsentKey)),
                .acupuncture = m_rows.isAcupuncture(record),
                .oral = choice.oral,
                .layout = choice.file,
                .formNumber = choice.number,
                .values =
                    consentFormValues({m_rows, record, choice, m_masters.companyOf(patient.branch()),
                                       m_sender, m_masters.walking.value(m_rows.number(record, F::Walking)),
                                       m_options.submitted, m_today})};
    }

    void putInChosenOrder() {
        QHash<qint32, size_t> places;
        for (size_t place = m_options.patients.size(); place-- > 0;)
            places.insert(m_options.patients[place], place);
        const auto before = [&places](const auto &left, const auto &right) {
            return places.value(left.patient.nIDNo) < places.value(right.patient.nIDNo);
        };
        std::sort(m_gathered.forms.begin(), m_gathered.forms.end(), before);
        std::sort(m_gathered.leftOut.begin(), m_gathered.leftOut.end(), before);
    }

    const ConsentFormOptions &m_options;
    const Masters &m_masters;
    const FormRecords &m_rows;
    QDate m_today;
    const cD_CORP *m_sender;
    QSet<qint32> m_wanted;
    QSet<qint32> m_seen;
    GatheredForms m_gathered;
};

} // namespace

short iGatherConsentForms(cT_ADODB &db, const ConsentFormOptions &options, const QDate &today,
                          GatheredForms &gathered, QString &reason) {
    const ErrorsSince before(db);
    Masters masters;
    Recordset rows;
    if (db.iConnect() != 0 || db.iOpenRecSet(rows, consentFormSql(options)) != 0) {
        reason = before.text();
        return -1;
    }
    if (readMasters(db, options, masters, reason) != 0)
        return -1;
    const FormRecords records(std::move(rows));
    gathered = Gathering(options, masters, records, today).gather();
    return 0;
}
