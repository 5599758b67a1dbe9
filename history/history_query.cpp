#include "history/history_query.h"

#include "app/base/text.h"
#include "db/adodb.h"
#include "db/field_rows.h"
#include "db/sql_text.h"
#include "db/tables/keys_query.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

enum class Field {
    Write,
    Time,
    Pc,
    Operation,
    Batch,
    Table,
    Branch,
    BranchPart,
    Patient,
    Name,
    Key,
    Kind,
    Changes
};

// The order of the enumeration.
const QString columns =
    u"DOUISHO_LOG.cWrite, DOUISHO_LOG.tTime, DOUISHO_LOG.cPcName, DOUISHO_LOG.cOperation, DOUISHO_LOG.nBatch,"
    " DOUISHO_LOG.cTable, DOUISHO_LOG.iKyotenCd, DOUISHO_LOG.iKyotenEb, DOUISHO_LOG.nIDNo, RIYOUSHA.cName,"
    " DOUISHO_LOG.cKey, DOUISHO_LOG.iKind, DOUISHO_LOG.cChanges"_s;

// Naming the tables lets the index that begins with them find a patient's records.
const QString ofPatients =
    u"DOUISHO_LOG.cTable IN ('RIYOUSHA_DOUI_REC', 'RIYOUSHA', 'RIYOUSHA_SUB', 'DOUIKIROKU') and "_s;

LogRecord recordAt(const FieldRows<Field> &rows, int row) {
    return {rows.text(row, Field::Write).trimmed(),
            timeText(rows.text(row, Field::Time)),
            rows.text(row, Field::Pc),
            rows.text(row, Field::Operation),
            rows.text(row, Field::Batch),
            rows.text(row, Field::Table).trimmed(),
            {short(rows.number(row, Field::Branch)), short(rows.number(row, Field::BranchPart)),
             qint32(rows.number(row, Field::Patient))},
            rows.text(row, Field::Name),
            rows.text(row, Field::Key).trimmed(),
            rows.number(row, Field::Kind),
            rows.text(row, Field::Changes)};
}

Result<LogRecords> read(cT_ADODB &db, const QString &where, int most) {
    Result<Recordset> recordset = readRows(
        db, u"SELECT TOP %1 "_s.arg(most + 1) + columns + u" FROM DOUISHO_LOG LEFT JOIN RIYOUSHA ON "_s +
                sqlSamePatient(u"RIYOUSHA", u"DOUISHO_LOG") + u" WHERE "_s + where +
                u" ORDER BY DOUISHO_LOG.tTime DESC, DOUISHO_LOG.cWrite DESC, DOUISHO_LOG.iSeq"_s);
    if (!recordset)
        return Failure{recordset.reason()};
    const FieldRows<Field> rows(*std::move(recordset));
    LogRecords read{{}, rows.count() > most};
    const int count = std::min(rows.count(), most);
    read.records.reserve(size_t(count));
    for (int row = 0; row < count; ++row)
        read.records.push_back(recordAt(rows, row));
    return read;
}

// Names are typed with and without the blank between their parts.
QString sqlNamed(const QString &column, const QString &name) {
    const QString typed = QString(name).removeIf([](QChar sign) { return sign.isSpace(); });
    return sqlContains(u"replace(replace(NAMED.%1, ' ', ''), '\u3000', '')"_s.arg(column), typed);
}

QString sqlOfPatient(const Branch &branch, const QString &patient) {
    bool isNumber = false;
    if (const qint32 number = toHalfWidth(patient).toInt(&isNumber); isNumber)
        return ofPatients + sqlWhere(PatientKey{branch.iKyotenCd, branch.iKyotenEb, number}, u"DOUISHO_LOG");
    return ofPatients + sqlWhere(branch, u"DOUISHO_LOG") +
           u" and DOUISHO_LOG.nIDNo IN (SELECT NAMED.nIDNo FROM RIYOUSHA AS NAMED WHERE "_s +
           sqlWhere(branch, u"NAMED") + u" and ("_s + sqlNamed(u"cName"_s, patient) + u" or "_s +
           sqlNamed(u"cNameKana"_s, patient) + u"))"_s;
}

} // namespace

Result<LogRecords> readLog(cT_ADODB &db, const Branch &branch, const LogQuestion &question, int most) {
    QStringList conditions{u"(DOUISHO_LOG.iKyotenCd IS NULL or "_s + sqlWhere(branch, u"DOUISHO_LOG") + u')'};
    if (question.from.isValid())
        conditions += u"DOUISHO_LOG.tTime >= "_s + sqlDate(question.from);
    if (question.to.isValid())
        conditions += u"DOUISHO_LOG.tTime < "_s + sqlDate(question.to.addDays(1));
    if (!question.pc.isEmpty())
        conditions += sqlContains(u"DOUISHO_LOG.cPcName"_s, question.pc);
    if (!question.operation.isEmpty())
        conditions += sqlContains(u"DOUISHO_LOG.cOperation"_s, question.operation);
    if (!question.patient.isEmpty())
        conditions += sqlOfPatient(branch, question.patient);
    if (question.batch > 0)
        conditions += u"DOUISHO_LOG.nBatch = "_s + sqlNumber(question.batch);
    return read(db, conditions.join(u" and "_s), most);
}

Result<LogRecords> readPatientLog(cT_ADODB &db, const PatientKey &patient, int most) {
    return read(db, ofPatients + sqlWhere(patient, u"DOUISHO_LOG"), most);
}

// Servers part a date's numbers with hyphens and tell fractions of a second.
QString timeText(QString time) {
    return time.replace(u'-', u'/').left(u"yyyy/mm/dd hh:mm:ss"_s.size());
}

QString logKey(const ConsentRowKey &row) {
    return u"%1/%2/%3"_s.arg(row.nDate).arg(row.iHenkeiFlg).arg(row.nHenkeiDouiDate);
}
