#pragma once

#include "consent/record/renewal_row.h"

#include <QString>
#include <functional>

class cT_ADODB;

/// Renews consents, restarts deformity-correction periods and keeps the newest marks. Every operation is one
/// transaction together with the newest marks of its patient: it happens whole or not at all.
///
/// Operations give 0, or −1 with the reason in sErrMsg; refused() then tells a refusal, which names what to
/// correct and has changed nothing, from a failure of the database.
class ConsentRenewal {
public:
    /// Whether an operation begins and ends a transaction, or runs in one of the caller's, who rolls back
    /// when it fails.
    enum class Scope { OwnTransaction, CallersTransaction };

    /// @param db the connection of the run; must outlive the object
    explicit ConsentRenewal(cT_ADODB &db) : m_db(db) {}

    const QString &sErrMsg() const { return m_error; }
    bool refused() const { return m_refused; }

    /// Makes the next massage row from a row's re-consent fields. A row that has the new date is replaced.
    /// @param nDate the source row's
    short iDataNewDouiMake(const PatientKey &patient, qint32 nDate, const QDate &newDate,
                           Scope scope = Scope::OwnTransaction);

    /// The same for a deformity-correction row.
    short iDataNewHenkeiMake(const ConsentRowKey &source, const QDate &newDate, qint32 newHenkeiDouiDate,
                             Scope scope = Scope::OwnTransaction);

    /// Renews a row as the user saw it. Refused when meanwhile it was renewed or its answer was changed.
    short renew(const RenewalRow &row, Scope scope = Scope::OwnTransaction);

    /// Restarts the deformity-correction period of the rows of a date: clears request and received marks.
    short iDataHenkeiDouiMake(const PatientKey &patient, qint32 nDate, const Period &period,
                              Scope scope = Scope::OwnTransaction);

    /// Marks a patient's newest massage and newest deformity-correction row. A kind without a row that is
    /// usable for claims keeps its marks.
    short setDouiNewestFlg(const PatientKey &patient, Scope scope = Scope::OwnTransaction);

private:
    enum class Step { Done, Refused, Failed };

    short run(Scope scope, QStringView label, const std::function<Step()> &work);
    Step copyRow(const ConsentRowKey &source, const ConsentRowKey &target, const RenewalRow *seen);
    Step checkSeen(const RenewalRow &now, const RenewalRow &seen, const ConsentRowKey &target);
    Step lock(const PatientKey &patient);
    Step execute(const QString &sql, qint64 *affected = nullptr);
    Step markNewest(const PatientKey &patient);
    Step markNewestOf(const PatientKey &patient, short iHenkeiFlg);
    Step refuse(const QString &reason);
    Step sourceGone();

    cT_ADODB &m_db;
    QString m_error;
    QStringView m_label; ///< of the routine at work
    bool m_refused = false;
};
