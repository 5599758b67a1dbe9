#pragma once

#include "app/base/result.h"
#include "print/renewal_list/renewal_list.h"

#include <set>

class cT_ADODB;

/// Who is listed, and when their consents end.
struct RenewalListQuery {
    Branch branch;
    std::set<qint32> patients;
    QDate from;   ///< the first day on which a consent may end
    QDate before; ///< the day on which it must not any more; invalid: no limit
    RenewalListOptions::PageBreak pageBreak = RenewalListOptions::PageBreak::None;
    RenewalListOptions::Order order = RenewalListOptions::Order::PractitionerAndCounsellor;
};

/// Rows by page break, then in the order chosen. For very many patients the statement names none: all rows
/// of the branch come.
QString renewalListSql(const RenewalListQuery &query);

/// The newest consents of these patients that end in the time asked for; a correction is a consent of its
/// own.
Result<std::vector<DueConsent>> readDueConsents(cT_ADODB &db, const RenewalListQuery &query);
