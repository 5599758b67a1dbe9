#pragma once

#include "app/base/result.h"
#include "db/tables/keys.h"

#include <QString>
#include <vector>

class cT_ADODB;

/// One record of the change history as it stands in its table.
struct LogRecord {
    QString write; ///< the transaction that it belongs to
    QString time;  ///< the server's, "yyyy/mm/dd hh:mm:ss"
    QString pc;
    QString operation; ///< in the user's words
    QString batch;     ///< its number; empty: of none
    QString table;
    PatientKey patient;  ///< nIDNo 0: the row is no patient's
    QString patientName; ///< as he is called now
    QString key;         ///< the rest of the row's key
    qint64 kind = 0;     ///< 1 new, 2 changed, 3 deleted
    QString changes;     ///< JSON: column -> [before, after]
};

/// What of the history is asked for; what is empty does not narrow it.
struct LogQuestion {
    QDate from = {}, to = {};
    QString pc = {}, operation = {}; ///< a part of them
    QString patient = {};            ///< his number, or a part of his name or reading
    qint32 batch = 0;
};

struct LogRecords {
    std::vector<LogRecord> records; ///< the newest first, those of one transaction in their order
    bool more = false;              ///< there are older ones
};

/// The records of a branch, and of the tables that all branches share.
/// @param most how many are read
Result<LogRecords> readLog(cT_ADODB &db, const Branch &branch, const LogQuestion &question, int most);

/// The records of all that is a patient's.
Result<LogRecords> readPatientLog(cT_ADODB &db, const PatientKey &patient, int most);

/// A time as the database gives it, in the form of LogRecord::time.
QString timeText(QString time);

/// What a record calls the row of a consent, beside its patient.
QString logKey(const ConsentRowKey &row);
