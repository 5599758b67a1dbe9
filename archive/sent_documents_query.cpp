#include "archive/sent_documents.h"

#include "db/adodb.h"
#include "db/sql_text.h"

using namespace Qt::Literals::StringLiterals;

Result<std::vector<SentDocument>> readSentDocuments(cT_ADODB &db, qint32 batch) {
    const Result<Recordset> rows =
        readRows(db, u"SELECT cTitle, nPages, cContent FROM DOUISHO_LOG_DOCUMENT WHERE nBatch = "_s +
                         sqlNumber(batch) + u" ORDER BY iNo"_s);
    if (!rows)
        return Failure{rows.reason()};
    std::vector<SentDocument> documents;
    for (int row = 0; row < rows->rowCount(); ++row)
        documents.push_back({rows->text(row, 0), int(rows->number(row, 1)), rows->text(row, 2).trimmed()});
    return documents;
}
