#include "consent/record/record_write.h"

#include <algorithm>
#include <tuple>

using namespace Qt::Literals::StringLiterals;

namespace {

// A connection that was lost opens anew; where it does not, the transaction fails and says why.
cT_ADODB &connected(cT_ADODB &db) {
    db.iConnect();
    return db;
}

auto ordered(const PatientKey &patient) {
    return std::tuple(patient.iKyotenCd, patient.iKyotenEb, patient.nIDNo);
}

} // namespace

bool isBefore(const ConsentRowKey &left, const ConsentRowKey &right) {
    const auto key = [](const ConsentRowKey &row) {
        return std::tuple(ordered(row.patient), row.nDate, row.iHenkeiFlg, row.nHenkeiDouiDate);
    };
    return key(left) < key(right);
}

RecordWrite::RecordWrite(cT_ADODB &db) : m_db(db), m_errors(db), m_transaction(connected(db)) {}

Failure RecordWrite::failure(const QString &otherwise) const {
    const QString said = m_errors.text();
    return {said.isEmpty() ? otherwise : said};
}

Result<qint64> RecordWrite::execute(const QString &sql) {
    qint64 affected = 0;
    if (!m_transaction.begun() || m_db.iExecSQL(sql, &affected) != 0)
        return failure();
    return affected;
}

// A patient without a row of his own has no consents in any list; there is nothing to wait for.
Result<> RecordWrite::lock(std::vector<PatientKey> patients) {
    std::ranges::sort(patients, {}, ordered);
    const auto repeated = std::ranges::unique(patients);
    patients.erase(repeated.begin(), repeated.end());
    for (const PatientKey &patient : patients)
        if (const Result<qint64> locked = execute(sqlLockPatient(patient)); !locked)
            return Failure{locked.reason()};
    return {};
}

Result<std::optional<ConsentDraft>> RecordWrite::find(const ConsentRowKey &key) {
    cT_RIYOUSHA_DOUI_REC table;
    table.iInit(m_db);
    if (!m_transaction.begun() || table.iDataRead(key) != 0)
        return failure(table.sErrMsg());
    return table.nデータ数() == 0 ? std::optional<ConsentDraft>() : table.records().front();
}

Result<std::vector<ConsentDraft>> RecordWrite::findAll(const PatientKey &patient) {
    cT_RIYOUSHA_DOUI_REC table;
    table.iInit(m_db);
    if (!m_transaction.begun() || table.iDataReadGrid(patient) != 0)
        return failure(table.sErrMsg());
    return table.records();
}

Result<> RecordWrite::read(Recordset &rows, const QString &sql) {
    if (!m_transaction.begun() || m_db.iOpenRecSet(rows, sql) != 0)
        return failure();
    return {};
}

Result<qint64> RecordWrite::change(const QString &where, QList<ColumnValue> columns, Audit audit) {
    if (audit == Audit::Written)
        columns += auditColumns(m_db.csGetComputerName());
    return execute(sqlChange(where, columns));
}

Result<> RecordWrite::insert(const ConsentDraft &row) {
    cT_RIYOUSHA_DOUI_REC table;
    table.iInit(m_db);
    if (!m_transaction.begun() || table.iDataInsert(&row, -1, false) != 0)
        return failure(table.sErrMsg());
    return {};
}

Result<> RecordWrite::insertCopy(const QString &where, QList<ColumnValue> columns) {
    columns += auditColumns(m_db.csGetComputerName());
    const Result<qint64> copied = execute(sqlInsertCopy(where, columns));
    return copied ? Result<>() : Failure{copied.reason()};
}

Result<qint64> RecordWrite::remove(const QString &where) {
    return execute(sqlRemove(where));
}

Result<NewestRows> RecordWrite::markNewest(const PatientKey &patient) {
    NewestRows newest;
    for (const short kind : {short(0), short(1)}) {
        const Result<std::optional<ConsentRowKey>> marked = markNewestOf(patient, kind);
        if (!marked)
            return Failure{marked.reason()};
        newest[size_t(kind)] = *marked;
    }
    return newest;
}

Result<std::optional<ConsentRowKey>> RecordWrite::markNewestOf(const PatientKey &patient, short iHenkeiFlg) {
    Recordset rows;
    if (const Result<> found = read(rows, sqlFindNewest(patient, iHenkeiFlg)); !found)
        return Failure{found.reason()};
    ConsentRowKey newest;
    if (!newestRow(rows, patient, iHenkeiFlg, newest))
        return std::optional<ConsentRowKey>();
    for (const auto &[where, mark] :
         {std::pair(sqlWronglyNewest(newest), u"0"_s), std::pair(sqlNotYetNewest(newest), u"1"_s)})
        if (const Result<qint64> written = change(where, {{u"iNewestFlg"_s, mark}}); !written)
            return Failure{written.reason()};
    return std::optional(newest);
}

Result<> RecordWrite::commit() {
    return m_transaction.commit() == 0 ? Result<>() : failure(u"データを確定できません。"_s);
}
