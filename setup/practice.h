#pragma once

#include "app/base/result.h"

#include <QDate>
#include <QString>

class cT_ADODB;

namespace setup {

/// Which treatments a practice gives, so which forms it has.
enum class Treatments { Massage, Acupuncture, Both };

/// What a new practice says of itself: its one branch, its company and its first member of staff.
struct Practice {
    QString name;
    QString company, representative; ///< the company is named as the branch where it is empty
    QString postalCode, address, address2, telephone, fax;
    Treatments treatments = Treatments::Massage;
    QString staffName, staffKana;
};

/// A postal code as it is stored: 000-0000; what is none as it is.
QString postalCode(const QString &typed);

/// The first of the practice's texts that cannot be stored, as a sentence; empty when all can.
QString whyNotStored(const Practice &practice);

/// Whether the tables of an open connection hold a practice: a branch in use.
Result<bool> hasPractice(cT_ADODB &db);

/// Fills empty tables, all or nothing: head row and branch 1-1 (KYOTEN), company, settings, code names,
/// forms, the national holidays of `today`'s year, two years before and ten ahead, and the member of staff.
/// @return false when there is a practice already, also one that another PC writes at the same moment
Result<bool> writePractice(cT_ADODB &db, const Practice &practice, const QDate &today);

} // namespace setup
