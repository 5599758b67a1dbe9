#pragma once

#include <QDate>
#include <QString>

/// Whether consents may be renewed today.
struct RenewalPermit {
    bool permitted = false;
    QString refusal; ///< text for the user when not
};

/// Renewals of a list whose range starts in one month are allowed from the update reference day of the next.
/// @param referenceDay as the branch keeps it: 0 means 11, −1 the month's last day
RenewalPermit renewalPermit(const QDate &today, const QDate &rangeStart, int referenceDay);
