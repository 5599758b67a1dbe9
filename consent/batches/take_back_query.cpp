#include "consent/batches/take_back_query.h"

#include "db/recordset.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

// The columns that name a row come first, in every statement.
const QString rowColumns =
    u"DOUISHO_LOG.cTable, DOUISHO_LOG.iKyotenCd, DOUISHO_LOG.iKyotenEb, DOUISHO_LOG.nIDNo, DOUISHO_LOG.cKey"_s;
constexpr int afterRow = 5;

BatchRecord rowAt(const Recordset &rows, int row) {
    return {rows.text(row, 0),
            {short(rows.number(row, 1)), short(rows.number(row, 2)), qint32(rows.number(row, 3))},
            rows.text(row, 4),
            {},
            {}};
}

QString identityAt(const Recordset &rows, int row) {
    const BatchRecord named = rowAt(rows, row);
    return identityOf(named.table, named.patient, named.key);
}

template <class Made> std::vector<Made> made(const Recordset &rows, Made (*make)(const Recordset &, int)) {
    std::vector<Made> all;
    for (int row = 0; row < rows.rowCount(); ++row)
        all.push_back(make(rows, row));
    return all;
}

} // namespace

QString sqlRecordsOfBatch(qint32 batch) {
    return u"SELECT "_s + rowColumns + u", iKind, cChanges, tTime FROM DOUISHO_LOG WHERE nBatch = "_s +
           sqlNumber(batch) + u" ORDER BY cWrite, iSeq"_s;
}

std::vector<BatchRecord> batchRecords(const Recordset &records) {
    return made<BatchRecord>(records, [](const Recordset &read, int row) {
        BatchRecord change = rowAt(read, row);
        change.kind = ChangeKind(read.number(row, afterRow));
        change.cells = changesOf(read.text(row, afterRow + 1));
        change.time = read.text(row, afterRow + 2);
        return change;
    });
}

QString sqlPatientNames(const std::vector<PatientKey> &patients) {
    return u"SELECT nIDNo, cName FROM RIYOUSHA WHERE "_s + sqlWhere(patients, u"RIYOUSHA");
}

QString sqlTakenRows(const std::vector<qint32> &batches) {
    QStringList numbers;
    for (const qint32 batch : batches)
        numbers += sqlNumber(batch);
    return u"SELECT DISTINCT "_s + rowColumns +
           u", DOUISHO_LOG_BATCH.nBatch, DOUISHO_LOG_BATCH.nTakesBack FROM DOUISHO_LOG_BATCH"
           " INNER JOIN DOUISHO_LOG ON DOUISHO_LOG.nBatch = DOUISHO_LOG_BATCH.nBatch"
           " WHERE DOUISHO_LOG_BATCH.nTakesBack IN ("_s +
           numbers.join(u", ") + u')';
}

std::vector<TakenRow> takenRows(const Recordset &rows) {
    return made<TakenRow>(rows, [](const Recordset &read, int row) {
        return TakenRow{qint32(read.number(row, afterRow)), qint32(read.number(row, afterRow + 1)),
                        identityAt(read, row)};
    });
}

QString sqlWritersSince(const std::vector<PatientKey> &patients, const QString &since, qint32 butBatch) {
    return u"SELECT "_s + rowColumns + u", tTime, cPcName, cOperation FROM DOUISHO_LOG WHERE cTable = "_s +
           sqlText(u"RIYOUSHA_DOUI_REC"_s) + u" AND "_s + sqlWhere(patients, u"DOUISHO_LOG") +
           u" AND tTime >= "_s + sqlText(since) + u" AND (nBatch IS NULL OR nBatch <> "_s +
           sqlNumber(butBatch) + u") ORDER BY tTime, cWrite"_s;
}

std::vector<Writer> writers(const Recordset &rows) {
    return made<Writer>(rows, [](const Recordset &read, int row) {
        return Writer{identityAt(read, row), read.text(row, afterRow), read.text(row, afterRow + 1),
                      read.text(row, afterRow + 2)};
    });
}
