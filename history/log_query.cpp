#include "history/log_query.h"

#include "db/sql_text.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// SQL Server takes a thousand rows of values in a statement.
constexpr qsizetype mostRows = 500;

constexpr QStringView logTable = u"DOUISHO_LOG";

QString numberOrNull(const std::optional<qint32> &number) {
    return number ? sqlNumber(*number) : u"Null"_s;
}

QString branchText(const std::optional<Branch> &branch) {
    return branch ? sqlNumber(branch->iKyotenCd) + u", "_s + sqlNumber(branch->iKyotenEb) : u"Null, Null"_s;
}

QString tryTable(QStringView table) {
    return u"INSERT INTO %1 (%2) SELECT %2 FROM %1 WHERE 1 = 0"_s.arg(table, logColumns(table));
}

} // namespace

QString logColumns(QStringView table) {
    if (table == u"DOUISHO_LOG_BATCH")
        return u"nBatch, tTime, cPcName, iKyotenCd, iKyotenEb, cKind, nRows, nDocuments, nPages, nTakesBack"_s;
    if (table == u"DOUISHO_LOG_DOCUMENT")
        return u"nBatch, iNo, cTitle, nPages, cContent"_s;
    return u"cWrite, iSeq, tTime, cPcName, cOperation, nBatch, cTable, iKyotenCd, iKyotenEb, nIDNo, cKey,"
           " iKind, cChanges"_s;
}

QString sqlLogVersion() {
    return u"SELECT MAX(iVersion) FROM DOUISHO_LOG_INFO"_s;
}

QStringList sqlTryLog() {
    return {tryTable(logTable), tryTable(u"DOUISHO_LOG_BATCH"), tryTable(u"DOUISHO_LOG_DOCUMENT"),
            u"UPDATE DOUISHO_LOG_BATCH SET nRows = nRows WHERE 1 = 0"_s};
}

QStringList sqlRecord(const QString &write, qsizetype before, const QString &computer,
                      const Operation &operation, const QList<RowChange> &changes) {
    const QString head = u"INSERT INTO DOUISHO_LOG (%1) VALUES "_s.arg(logColumns(logTable));
    const QString common = u", GetDate(), "_s + sqlText(computer) + u", "_s + sqlText(operation.name) +
                           u", "_s + numberOrNull(operation.batch) + u", "_s;
    QStringList statements;
    for (qsizetype i = 0; i < changes.size(); ++i) {
        const RowChange &change = changes[i];
        if (i % mostRows == 0)
            statements += head;
        else
            statements.back() += u", ";
        statements.back() += u'(' + sqlText(write) + u", "_s + sqlNumber(before + i + 1) + common +
                             sqlText(change.table) + u", "_s + branchText(change.branch) + u", "_s +
                             numberOrNull(change.patient) + u", "_s + sqlText(change.key) + u", "_s +
                             sqlNumber(qint64(change.kind)) + u", "_s + sqlText(changesText(change.cells)) +
                             u')';
    }
    return statements;
}
