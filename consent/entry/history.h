#pragma once

#include "consent/entry/entry_query.h"
#include "consent/entry/time_line.h"
#include "consent/record/entry_save.h"

#include <vector>

class cT_ADODB;

/// The consents of one patient. Knows no window.
class ConsentHistory {
public:
    /// @param db must outlive the object
    explicit ConsentHistory(cT_ADODB &db) : m_db(db) {}

    /// Reads patient and rows. 0, or −1 with sErrMsg; what was read before stays then.
    short iRead(const PatientKey &patient);
    const QString &sErrMsg() const { return m_error; }

    const EntryPatient &patient() const { return m_patient; }
    /// Oldest first, massage before deformity correction.
    const std::vector<ConsentDraft> &rows() const { return m_rows; }
    /// The row of a key, or else the newest one; −1 without rows.
    int rowOf(const ConsentRowKey &key) const;

    TimeLine timeLine(const QDate &today) const;

    /// Erases a row, unless a colleague changed it since it was read.
    RowOutcome erase(int row);

private:
    cT_ADODB &m_db;
    QString m_error;
    EntryPatient m_patient;
    std::vector<ConsentDraft> m_rows;
};
