#include "consent/batches/batches_query.h"

#include "db/recordset.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"
#include "history/history_query.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView table = u"DOUISHO_LOG_BATCH";

BatchInfo batchAt(const Recordset &rows, int row) {
    BatchInfo batch{.number = qint32(rows.number(row, 0)),
                    .time = timeText(rows.text(row, 1)),
                    .computer = rows.text(row, 2),
                    .kind = rows.text(row, 3),
                    .rows = qint32(rows.number(row, 4)),
                    .documents = qint32(rows.number(row, 5)),
                    .pages = qint32(rows.number(row, 6))};
    if (!rows.isNull(row, 7))
        batch.takesBack = qint32(rows.number(row, 7));
    return batch;
}

} // namespace

QString sqlBatches(const Branch &branch, const QString &condition, const QString &top) {
    return u"SELECT "_s + top +
           u" nBatch, tTime, cPcName, cKind, nRows, nDocuments, nPages, nTakesBack FROM DOUISHO_LOG_BATCH"
           " WHERE (nTakesBack IS NULL OR nRows > 0) AND "_s +
           sqlWhere(branch, table) + u" AND "_s + condition + u" ORDER BY nBatch DESC"_s;
}

std::vector<BatchInfo> batchesIn(const Recordset &rows) {
    std::vector<BatchInfo> batches;
    for (int row = 0; row < rows.rowCount(); ++row)
        batches.push_back(batchAt(rows, row));
    return batches;
}

QString sqlOfDays(const QDate &from, const QDate &to) {
    return u"tTime >= "_s + sqlDate(from) + u" AND tTime < "_s + sqlDate(to.addDays(1));
}

QString sqlOfNumber(qint32 number) {
    return u"nBatch = "_s + sqlNumber(number);
}

QString sqlOfComputer(const QString &computer) {
    return u"cPcName = "_s + sqlText(computer);
}

QString sqlChangedRows() {
    return u"EXISTS (SELECT DOUISHO_LOG.nBatch FROM DOUISHO_LOG"
           " WHERE DOUISHO_LOG.nBatch = DOUISHO_LOG_BATCH.nBatch)"_s;
}

QString sqlTookBack() {
    return u"nTakesBack IS NOT NULL"_s;
}
