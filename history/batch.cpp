#include "history/batch.h"

#include "db/adodb.h"
#include "history/batch_query.h"
#include "history/log_tables.h"

using namespace Qt::Literals::StringLiterals;

namespace {

Result<qint32> highestNumber(cT_ADODB &db) {
    const Result<Recordset> rows = readRows(db, sqlHighestBatch());
    return rows ? Result<qint32>(qint32(rows->number(0, 0))) : Failure{rows.reason().trimmed()};
}

} // namespace

// Of two PCs that take the same number at once the second is refused by the key, and takes the next.
Result<std::optional<Batch>> Batch::begin(cT_ADODB &db, const Branch &branch, const QString &kind,
                                          std::optional<qint32> takesBack) {
    if (db.iConnect() == 0 && settleLog(db).kind != HistoryState::Kept)
        return std::optional<Batch>();
    // Somebody may have taken the tables or the right away: the next run looks anew.
    const auto refused = [&db](const QString &why) {
        db.history().kind = HistoryState::Unknown;
        return Failure{why};
    };
    Result<qint32> highest = highestNumber(db);
    for (;;) {
        if (!highest)
            return refused(highest.reason());
        const qint32 number = *highest + 1;
        const ErrorsSince errors(db);
        if (db.iExecSQL(sqlBeginBatch(number, db.csGetComputerName(), branch, kind, takesBack)) == 0)
            return std::optional<Batch>(Batch(db, number, kind));
        const QString why = errors.text().trimmed();
        highest = highestNumber(db);
        if (highest && *highest < number)
            return refused(why);
    }
}

Result<> Batch::finish(qint64 rows, qint64 documents, qint64 pages) {
    return execute(sqlFinishBatch(m_number, rows, documents, pages));
}

Result<> Batch::addDocument(const QString &title, qint64 pages, const QString &content) {
    return execute(sqlAddDocument(m_number, ++m_documents, title, pages, content));
}

Result<> Batch::execute(const QString &sql) {
    const ErrorsSince errors(*m_db);
    return m_db->iExecSQL(sql) == 0 ? Result<>() : Failure{errors.text().trimmed()};
}

Operation operationOf(const std::optional<Batch> &batch, const QString &kind) {
    return batch ? batch->operation() : Operation{kind};
}
