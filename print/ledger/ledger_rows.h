#pragma once

#include "app/base/request_methods.h"
#include "db/tables/keys.h"
#include "db/tables/patient_text.h"

#include <QString>
#include <array>
#include <optional>
#include <vector>

/// The ledger's layouts, in the order in which they are offered.
enum class LedgerPattern { Patients, Requests, Institutions, Staff };

constexpr int ledgerPatterns = 4;

/// Which ledger is asked for. A plain value: a screen fills it.
struct LedgerOrder {
    Branch branch{};
    LedgerPattern pattern = LedgerPattern::Patients;

    /// @name Whose consents
    /// With rows given exactly these, which have to be newest rows of the branch; else the newest consent of
    /// each kind of the patients, and patients who have none. The ledger keeps their order where its pattern
    /// has none of its own.
    ///@{
    std::optional<std::vector<ConsentRowKey>> rows{};
    std::vector<qint32> patients{};
    ///@}

    /// Consents whose treatment period has a day in common with this; an open end does not limit.
    Period period{};
    QString searchName{};     ///< see ledgerSearchName
    RequestMethods methods{}; ///< the practice's list
    /// Practitioners who come first, in this order, where the pattern goes by them.
    std::vector<qint32> staff{};
};

/// What the ledger says about a consent, or about a patient who has none.
struct LedgerRow {
    ConsentRowKey key; ///< nDate 0: no consent
    size_t order = 0;  ///< position of the row or the patient in the order
    QString name;
    TreatmentKind kind = TreatmentKind::Massage; ///< the patient's
    bool oral = false;
    QDate consentDay;
    Period period;
    Period correction; ///< of a deformity correction: its own, else `period`
    QDate reconsent;   ///< invalid: not entered
    bool requested = false, received = false, contacted = false, mailed = false;
    QString doctor;         ///< code; empty: none
    qint32 institution = 0; ///< number; 0: none
    QString doctorName, institutionName;
    QString institutionMethod, ownMethod; ///< how they are asked
    qint32 staffNumber = 0;               ///< of the responsible practitioner
    std::array<QString, mostPractitioners> staff;

    bool hasConsent() const { return key.nDate != 0; }
    bool isDeformity() const { return key.iHenkeiFlg == 1; }
};

struct Ledger {
    std::vector<LedgerRow> rows; ///< in the pattern's order
    /// Positions in the order of rows that are no newest rows any more, of patients who are gone.
    std::vector<size_t> gone;
};
