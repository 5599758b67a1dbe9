#pragma once

#include "print/renewal_list/renewal_query.h"
#include "tests/consent_form/practice.h"

/// A practice with patients 101 to 112, each of whom stands for one case.
class Renewals : public Practice {
public:
    Renewals();

    /// All of them, in the month 2026/11.
    RenewalListQuery query(RenewalListOptions::Range range = RenewalListOptions::Range::Open) const;
    std::vector<DueConsent> lines(const RenewalListQuery &query);
    /// The lines as "number end", in their order.
    QStringList listed(const RenewalListQuery &query);
    /// A patient's line as a data file has it, "column=field" each.
    QStringList record(qint32 patient, const RenewalListOptions &options);
};
