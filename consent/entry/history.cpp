#include "consent/entry/history.h"

#include "consent/record/entry_save.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

short ConsentHistory::iRead(const PatientKey &patient) {
    const auto failed = [&](const QString &reason) {
        m_error = reason + u"\r\niDouiRecordDisp() でエラー"_s;
        return short(-1);
    };
    const Result<std::optional<EntryPatient>> read = readEntryPatient(m_db, patient);
    if (!read)
        return failed(read.reason());
    if (!*read) {
        m_error = u"該当する利用者データがありません。"_s;
        return -1;
    }
    const Result<std::vector<ConsentDraft>> rows = readConsents(m_db, patient);
    if (!rows)
        return failed(rows.reason());
    m_patient = **read;
    m_rows = *rows;
    return 0;
}

int ConsentHistory::rowOf(const ConsentRowKey &key) const {
    const auto found =
        std::ranges::find_if(m_rows, [&](const ConsentDraft &row) { return row.key() == key; });
    return found == m_rows.end() ? int(m_rows.size()) - 1 : int(found - m_rows.begin());
}

TimeLine ConsentHistory::timeLine(const QDate &today) const {
    std::vector<TimeLineConsent> consents;
    for (const ConsentDraft &row : m_rows)
        consents.push_back(
            {{row.tDouiKaryoS, row.tDouiKaryoE}, isDeformity(row), row.iReceptDisabledFlg != 1});
    return makeTimeLine(consents, today, m_patient.ended);
}

RowOutcome ConsentHistory::erase(int row) {
    return deleteConsent(m_db, m_rows[size_t(row)]);
}
