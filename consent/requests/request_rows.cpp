#include "consent/requests/request_rows.h"

#include "consent/list/list_model.h"

#include <QMultiHash>

using namespace Qt::Literals::StringLiterals;

namespace {

using Consents = QMultiHash<qint32, const GivenConsent *>; ///< by patient number

LetterFacts factsOf(const ConsentRowKey &key, const Consents &consents) {
    LetterFacts facts;
    facts.deformity = key.iHenkeiFlg == 1;
    QDate latest;
    const auto [first, end] = consents.equal_range(key.patient.nIDNo);
    for (auto it = first; it != end; ++it) {
        const GivenConsent &consent = **it;
        const bool own = consent.key == key;
        if (own)
            facts.askedDoctor = consent.doctor;
        if (!consent.day.isValid() || consent.key.nDate > key.nDate)
            continue;
        if (consent.key.iHenkeiFlg != key.iHenkeiFlg) {
            facts.treatedOtherwise = true;
            continue;
        }
        facts.consentedBefore = true;
        // The row's own doctor is the one who consented last, whatever dates say.
        if (own || !latest.isValid() || consent.day >= latest) {
            facts.lastDoctor = consent.doctor;
            latest = own ? QDate(9999, 12, 31) : consent.day;
        }
    }
    return facts;
}

} // namespace

std::vector<RequestRow> requestRows(const ConsentListModel &model, std::span<const GivenConsent> consents) {
    const ListRecords &records = model.records();
    Consents byPatient;
    for (const GivenConsent &consent : consents)
        byPatient.insert(consent.key.patient.nIDNo, &consent);
    std::vector<RequestRow> rows;
    for (int shown = 0; shown < model.rowCount(); ++shown) {
        const int record = model.recordOfRow(shown);
        if (!model.isTarget(record))
            continue;
        const auto cell = [&](ListColumn column) {
            return model.index(shown, int(column)).data().toString();
        };
        const ConsentRowValues values = model.values(record);
        RequestRow row;
        row.key = records.key(record);
        row.number = cell(ListColumn::Number);
        row.name = cell(ListColumn::Name);
        row.treatment = cell(ListColumn::Kind);
        row.procedure = cell(ListColumn::Procedure);
        row.end = cell(ListColumn::ConsentEnd);
        row.hospital = cell(ListColumn::Hospital);
        row.doctorName = cell(ListColumn::Doctor);
        row.oral = records.flag(record, ListField::Procedure);
        row.requested = values.requested != 0;
        row.facts = factsOf(row.key, byPatient);
        row.kind = proposeLetterKind(row.facts);
        row.toHospital = values.hospitalOut == 1 && values.doctorOut != 1;
        rows.push_back(row);
    }
    return rows;
}

int targetsOutOfSight(const ConsentListModel &model) {
    int ticked = 0;
    for (int record = 0; record < model.records().count(); ++record)
        ticked += model.isTarget(record);
    return ticked - int(model.targetRecords().size());
}

void askDoctor(RequestRow &row, const QString &code, const QString &name, const QString &hospital) {
    row.facts.askedDoctor = code;
    row.doctorName = name;
    row.hospital = hospital;
    row.kind = proposeLetterKind(row.facts);
}
