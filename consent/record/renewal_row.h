#pragma once

#include "db/tables/keys.h"

#include <QDate>
#include <QString>

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
    bool newest = true; ///< iNewestFlg
};

/// Key of the row that a renewal makes.
ConsentRowKey renewedKey(const ConsentRowKey &source, const QDate &reConsentDate);

/// Why a row may not be renewed onto a key; empty when it may. Nobody's fault but the entry's: a re-consent
/// date that is missing or not after the consent date, a period that is missing or ends before it starts,
/// a new key that would replace the source itself or leave the new row older than it.
QString renewalRefusal(const RenewalRow &source, const ConsentRowKey &target);
