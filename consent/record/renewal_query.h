#pragma once

#include "consent/record/record_write_query.h"
#include "consent/record/renewal.h"

class Recordset;

/// Where a row keeps the doctor's answer.
enum class ReConsentColumns { Own, TemporaryHenkei };

/// The row of a key as it stands now.
struct RenewalSource {
    int rows = 0; ///< that bear the key; the rest counts only where there are some
    RenewalRow row;
    ReadRow read;
    QString computer; ///< that wrote it last
    ReConsentColumns columns = ReConsentColumns::Own;
    qint32 later =
        0; ///< date of the patient's latest usable consent of the kind, where it lies after the row
};

/// All that the renewal of some rows depends on: their patients' consents from the earliest row on.
QString sqlRenewalSources(const std::vector<ConsentRowKey> &sources);
RenewalSource renewalSource(const Recordset &rows, const ConsentRowKey &key);
/// Whether a row stands among them.
bool isThere(const Recordset &rows, const ConsentRowKey &key);

/// What the new row takes: the answer becomes consent date and period, answer and request marks start empty,
/// all else stays as it is. Deformity correction also leaves the request method and the list remark behind.
QList<ColumnValue> renewedColumns(const ConsentRowKey &source, const ConsentRowKey &target,
                                  ReConsentColumns columns);

/// Cleared request and received marks, and the deformity-correction period.
QList<ColumnValue> restartedColumns(const Period &period);
