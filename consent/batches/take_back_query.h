#pragma once

#include "consent/batches/written_rows.h"

class Recordset;

/// The records of a batch, oldest first.
QString sqlRecordsOfBatch(qint32 batch);
std::vector<BatchRecord> batchRecords(const Recordset &records);

/// Number and name.
QString sqlPatientNames(const std::vector<PatientKey> &patients);

/// Which rows the batches wrote that took these back, each with the batch and what it took back.
QString sqlTakenRows(const std::vector<qint32> &batches);

/// A row that a batch wrote which took another one back.
struct TakenRow {
    qint32 batch = 0, takesBack = 0;
    QString identity; ///< as WrittenRow::identity
};
std::vector<TakenRow> takenRows(const Recordset &rows);

/// Who wrote consents of the patients since a time, oldest first; the batch's own records left out.
QString sqlWritersSince(const std::vector<PatientKey> &patients, const QString &since, qint32 butBatch);

/// Who wrote a row, as far as is known.
struct Writer {
    QString identity; ///< as WrittenRow::identity
    QString time, computer, operation;
};
std::vector<Writer> writers(const Recordset &rows);
