#pragma once

#include "db/tables/keys.h"

#include <QStringList>

/// The dates of a consent as they were entered, and what they are judged by. A date that is invalid was not
/// entered, and is not judged.
struct EnteredDates {
    QString field; ///< what the consent's date is called
    QDate consent;
    Period period = {};
    QDate running = {};  ///< date of the consent that this one follows; invalid: none, or not known
    QDate ruledEnd = {}; ///< of the period that the rule gives; invalid: not known
};

/// What of it may be a slip of the keys, a sentence each that names field and value; empty when all is
/// likely. Nothing of it is wrong: whoever means it goes on.
QStringList doubtsOf(const EnteredDates &entered, const QDate &today);
