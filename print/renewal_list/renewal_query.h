#pragma once

#include "app/base/request_methods.h"
#include "app/base/result.h"
#include "print/renewal_list/renewal_list.h"

#include <set>
#include <vector>

class cT_ADODB;

/// Who may be listed, and what is asked of the list.
struct RenewalListQuery {
    Branch branch;
    std::set<qint32> patients;
    RenewalListOptions options;
    QDate today;
    RequestMethods methods;
    /// Practitioners who come first, in this order, where sheets or the order go by them.
    std::vector<qint32> staff{};
};

/// Rows by page break, then in the order chosen. For very many patients the statement names none: all rows
/// of the branch come.
QString renewalListSql(const RenewalListQuery &query);

/// The newest consents of these patients that end in the time asked for; a correction is a consent of its
/// own.
Result<std::vector<DueConsent>> readDueConsents(cT_ADODB &db, const RenewalListQuery &query);
