#pragma once

#include "consent/record/draft.h"
#include "db/adodb.h"

#include <QString>

/// How a write to a stored consent ended.
struct RowOutcome {
    enum Kind {
        Done,
        Overtaken, ///< a colleague removed, moved or changed the row; nothing was written
        Taken,     ///< the record date belongs to another row; nothing was written
        Failed     ///< the database refused; nothing was written
    };
    Kind kind = Done;
    QString text = {};  ///< for the user, unless done
    QString title = {}; ///< of the message, where it has one
};

/// One transaction on a patient's consents, under the lock that makes other programs wait. Everything is
/// undone unless iFinish succeeds.
class RowChange {
public:
    RowChange(cT_ADODB &db, const PatientKey &patient);

    bool ready() const { return m_ready; }

    /// Finds the row as it stands now and compares it with what the user saw. `now` is filled when the
    /// outcome is Done.
    RowOutcome find(const ConsentDraft &seen, Compared columns, ConsentDraft &now);

    /// Sets the patient's newest marks and commits.
    RowOutcome finish();
    /// Commits without touching the marks.
    RowOutcome commit();

    /// @param otherwise the reason where the database gave none
    RowOutcome failed(const QString &label, const QString &title = {}, const QString &otherwise = {}) const;

private:
    cT_ADODB &m_db;
    PatientKey m_patient;
    ErrorsSince m_errors;
    Transaction m_transaction;
    bool m_ready;
};
