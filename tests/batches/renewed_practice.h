#pragma once

#include "consent/record/renewal_run.h"
#include "tests/consent/consent_rows.h"

#include <gtest/gtest.h>

/// Patients whose doctors have answered: every column of their consents has a value of its own. Even numbers
/// have a deformity correction besides.
class RenewedPractice {
public:
    explicit RenewedPractice(qint32 patients);

    /// Renews whatever waits for it, and gives the number of the run.
    qint32 renew(cT_ADODB &db) const;
    /// All consents, as texts.
    QStringList rows() const { return consents.all(); }
    QStringList rowsOf(qint32 patient) const;

    static ConsentRowKey before(qint32 patient, short kind = 0) {
        return {{1, 1, patient}, 20251120, kind, kind == 0 ? 0 : 20251120};
    }
    static ConsentRowKey after(qint32 patient, short kind = 0) {
        return {{1, 1, patient}, 20260520, kind, kind == 0 ? 0 : 20260520};
    }

    TestDatabase database;
    ConsentRows consents{database};
};
