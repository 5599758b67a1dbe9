#include "consent/requests/request_rows.h"

RequestRow requestRow(const ListRow &row, const GivenConsents &consents) {
    RequestRow request;
    request.key = row.key();
    request.who = row.who();
    request.number = row.text(ListColumn::Number);
    request.name = row.text(ListColumn::Name);
    request.treatment = row.text(ListColumn::Kind);
    request.procedure = row.text(ListColumn::Procedure);
    request.end = row.text(ListColumn::ConsentEnd);
    request.hospital = row.text(ListColumn::Hospital);
    request.doctorName = row.text(ListColumn::Doctor);
    request.oral = row.flag(ListField::Procedure);
    request.requested = row.values.requested != 0;
    request.facts = consents.factsOf(request.key);
    request.kind = proposeLetterKind(request.facts);
    request.toHospital = row.values.hospitalOut == 1;
    return request;
}

std::vector<RequestRow> requestRows(std::span<const ListRow> rows, const GivenConsents &consents) {
    std::vector<RequestRow> requests;
    for (const ListRow &row : rows)
        requests.push_back(requestRow(row, consents));
    return requests;
}

void askDoctor(RequestRow &row, const QString &code, const QString &name, const QString &hospital) {
    row.facts.askedDoctor = code;
    row.doctorName = name;
    row.hospital = hospital;
    row.kind = proposeLetterKind(row.facts);
}
