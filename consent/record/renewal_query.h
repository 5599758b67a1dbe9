#pragma once

#include "consent/record/record_write_query.h"
#include "consent/record/renewal.h"
#include "db/recordset.h"

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

/// The consents of the patients whose rows are renewed, each looked at by its key.
class RenewalSources {
public:
    /// @param rows with all columns, as RecordWrite::standing() gives them
    explicit RenewalSources(Recordset rows);

    RenewalSource find(const ConsentRowKey &key) const;
    /// Whether a row stands among them.
    bool isThere(const ConsentRowKey &key) const;

private:
    Recordset m_rows;
    std::vector<int> m_positions; ///< of the columns that count
    std::vector<ConsentRowKey> m_keys;
};

/// What the new row takes: the answer becomes consent date and period, answer and request marks start empty,
/// all else stays as it is. Deformity correction also leaves the request method and the list remark behind.
QList<ColumnValue> renewedColumns(const ConsentRowKey &source, const ConsentRowKey &target,
                                  ReConsentColumns columns);

/// Cleared request and received marks, and the deformity-correction period.
QList<ColumnValue> restartedColumns(const Period &period);
