#pragma once

#include "app/base/result.h"
#include "consent/record/list_row.h"
#include "history/operation.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

class RecordWrite;
class cT_ADODB;

/// The doctor's answer: re-consent date and next period. On a massage row it stands in tSaiDouiDay and its
/// fellows, on a deformity-correction row in tDouiDayTempHenkei and its fellows.
struct ReConsent {
    QDate date;
    Period period;

    friend bool operator==(const ReConsent &, const ReConsent &) = default;
};

/// A consent row to be renewed, as the user saw it.
struct RenewalRow {
    ConsentRowKey key;
    QString name;      ///< of the patient, for the result
    QDate consentDate; ///< tDouiDay
    ReConsent reConsent;
    bool newest = true;               ///< iNewestFlg
    std::optional<ReadRow> seen = {}; ///< the whole row, where it is known
};

/// Key of the row that a renewal makes.
ConsentRowKey renewedKey(const ConsentRowKey &source, const QDate &reConsentDate);

/// Why a row may not be renewed onto a key; empty when it may. Nobody's fault but the entry's: a re-consent
/// date that is missing or not after the consent date, a period that is missing or ends before it starts,
/// a new key that would replace the source itself or leave the new row older than it.
QString renewalRefusal(const RenewalRow &source, const ConsentRowKey &target);

/// Said where a patient's consent of the same kind lies after the one to be renewed: that one is the newest.
QString laterConsentRefusal(qint32 nDate);

/// Renews consents, restarts deformity-correction periods and keeps the newest marks. Every operation is one
/// transaction together with the newest marks of its patient: it happens whole or not at all.
///
/// Operations give 0, or −1 with the reason in sErrMsg; refused() then tells a refusal, which names what to
/// correct and has changed nothing, from a failure of the database.
class ConsentRenewal {
public:
    /// @param db the connection of the run; must outlive the object
    /// @param operation in whose name the rows are written
    explicit ConsentRenewal(cT_ADODB &db, Operation operation = {QStringLiteral("同意更新")})
        : m_db(db), m_operation(std::move(operation)) {}

    const QString &sErrMsg() const { return m_error; }
    bool refused() const { return m_refused; }

    /// Makes the next massage row from a row's re-consent fields. A row that has the new date is replaced.
    /// @param nDate the source row's
    short iDataNewDouiMake(const PatientKey &patient, qint32 nDate, const QDate &newDate);

    /// The same for a deformity-correction row.
    short iDataNewHenkeiMake(const ConsentRowKey &source, const QDate &newDate, qint32 newHenkeiDouiDate);

    /// Renews a row as the user saw it. Refused when it was renewed or changed meanwhile, when its claim flag
    /// keeps the new row from becoming the newest, when a later consent stays the newest, and when the new
    /// date has a consent already.
    short renew(const RenewalRow &row);

    /// The same for many rows in one transaction, none of a patient and kind twice: those that are refused
    /// are left out, the others renewed together or not at all.
    /// @return why each was refused, empty where it was renewed; a failure has changed nothing
    Result<QStringList> renewTogether(const std::vector<RenewalRow> &rows);

    /// Restarts the deformity-correction period of the rows of a date: clears request and received marks.
    /// @param seen the row as the user saw it: that row alone, refused when it was changed meanwhile. Null:
    /// all rows of the date, not compared
    short iDataHenkeiDouiMake(const PatientKey &patient, qint32 nDate, const Period &period,
                              const ReadRow *seen = nullptr);

    /// Marks a patient's newest massage and newest deformity-correction row. A kind without a row that is
    /// usable for claims keeps its marks.
    short setDouiNewestFlg(const PatientKey &patient);

private:
    /// Why each row was refused, empty where it was done; or a failure of the database.
    using Verdicts = Result<QStringList>;
    using Work = std::function<Verdicts(RecordWrite &)>;
    /// A row to be copied.
    struct Copy {
        ConsentRowKey source, target;
        const RenewalRow *seen = nullptr; ///< compared with what stands there, where there is one
    };

    Verdicts run(const std::vector<PatientKey> &patients, QStringView label, const Work &work);
    Verdicts runOnce(const std::vector<PatientKey> &patients, QStringView label, const Work &work);
    short runForOne(const PatientKey &patient, QStringView label, const Work &work);
    short copyOne(const Copy &copy);
    Verdicts copyRows(RecordWrite &write, const std::vector<Copy> &copies);
    Result<> markNewest(RecordWrite &write, const std::vector<PatientKey> &patients);

    cT_ADODB &m_db;
    Operation m_operation;
    QString m_error;
    QStringView m_label; ///< of the routine at work
    bool m_refused = false;
};
