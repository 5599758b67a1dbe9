#include "history/batch_query.h"

#include "db/sql_text.h"
#include "history/log_query.h"

using namespace Qt::Literals::StringLiterals;

QString sqlHighestBatch() {
    return u"SELECT MAX(nBatch) FROM DOUISHO_LOG_BATCH WHERE nBatch BETWEEN 1 AND 2000000000"_s;
}

QString sqlBeginBatch(qint32 number, const QString &computer, const Branch &branch, const QString &kind,
                      std::optional<qint32> takesBack) {
    return u"INSERT INTO DOUISHO_LOG_BATCH ("_s + logColumns(u"DOUISHO_LOG_BATCH") + u") VALUES ("_s +
           sqlNumber(number) + u", GetDate(), "_s + sqlText(computer) + u", "_s +
           sqlNumber(branch.iKyotenCd) + u", "_s + sqlNumber(branch.iKyotenEb) + u", "_s + sqlText(kind) +
           u", 0, 0, 0, "_s + (takesBack ? sqlNumber(*takesBack) : u"Null"_s) + u')';
}

QString sqlFinishBatch(qint32 number, qint64 rows, qint64 documents, qint64 pages) {
    return u"UPDATE DOUISHO_LOG_BATCH SET nRows = "_s + sqlNumber(rows) + u", nDocuments = "_s +
           sqlNumber(documents) + u", nPages = "_s + sqlNumber(pages) + u" WHERE nBatch = "_s +
           sqlNumber(number);
}

QString sqlAddDocument(qint32 batch, int place, const QString &title, qint64 pages, const QString &content) {
    constexpr qsizetype longestTitle = 100;
    return u"INSERT INTO DOUISHO_LOG_DOCUMENT ("_s + logColumns(u"DOUISHO_LOG_DOCUMENT") + u") VALUES ("_s +
           sqlNumber(batch) + u", "_s + sqlNumber(place) + u", "_s + sqlText(title.left(longestTitle)) +
           u", "_s + sqlNumber(pages) + u", "_s + sqlText(content) + u')';
}
