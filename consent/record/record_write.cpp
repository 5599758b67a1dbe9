#include "consent/record/record_write.h"

#include <tuple>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView tableName = u"RIYOUSHA_DOUI_REC";

/// In one condition: servers refuse statements of some ten thousand literals.
constexpr size_t mostPatients = 1000;

auto ordered(const PatientKey &patient) {
    return std::tuple(patient.iKyotenCd, patient.iKyotenEb, patient.nIDNo);
}

std::vector<PatientKey> inOrder(std::vector<PatientKey> patients) {
    std::ranges::sort(patients, {}, ordered);
    const auto repeated = std::ranges::unique(patients);
    patients.erase(repeated.begin(), repeated.end());
    return patients;
}

} // namespace

bool isBefore(const ConsentRowKey &left, const ConsentRowKey &right) {
    const auto key = [](const ConsentRowKey &row) {
        return std::tuple(ordered(row.patient), row.nDate, row.iHenkeiFlg, row.nHenkeiDouiDate);
    };
    return key(left) < key(right);
}

// A connection that was lost opens anew; where it does not, the transaction fails and says why.
RecordWrite::RecordWrite(cT_ADODB &db, Operation operation)
    : m_db(db), m_transaction(db, std::move(operation)) {}

Failure RecordWrite::failure(const QString &otherwise) const {
    const QString said = m_transaction.said();
    return {said.isEmpty() ? otherwise : said};
}

// A patient without a row of his own has no consents in any list; there is nothing to wait for.
Result<> RecordWrite::lock(std::vector<PatientKey> patients) {
    patients = inOrder(std::move(patients));
    std::ranges::transform(patients, std::back_inserter(m_waiting), sqlLockPatient);
    const Result<QList<qint64>> locked = send();
    if (!locked)
        return Failure{locked.reason()};
    for (size_t first = 0; first < patients.size(); first += mostPatients) {
        const size_t count = std::min(mostPatients, patients.size() - first);
        const std::vector<PatientKey> some(&patients[first], &patients[first] + count);
        if (const Result<> watched = m_transaction.watch(tableName, sqlOfPatients(some)); !watched)
            return watched;
    }
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

Result<Recordset> RecordWrite::standing(std::vector<PatientKey> patients) {
    return m_transaction.read(tableName, sqlOfPatients(inOrder(std::move(patients))));
}

Result<> RecordWrite::read(Recordset &rows, const QString &sql) {
    if (!m_transaction.begun() || m_db.iOpenRecSet(rows, sql) != 0)
        return failure();
    return {};
}

qsizetype RecordWrite::wait(const QString &sql) {
    m_waiting.append(sql);
    return m_waiting.size() - 1;
}

qsizetype RecordWrite::change(const QString &where, QList<ColumnValue> columns, Audit audit) {
    if (audit == Audit::Written)
        columns += auditColumns(m_db.csGetComputerName());
    return wait(sqlChange(where, columns));
}

qsizetype RecordWrite::insert(const ConsentDraft &row) {
    const TableText table = ConsentDraft::table().text();
    return wait(
        insertSql(table, withAudit(table, ConsentDraft::table().literals(row), m_db.csGetComputerName())));
}

qsizetype RecordWrite::restore(const QList<ColumnValue> &columns) {
    return wait(sqlInsert(columns));
}

qsizetype RecordWrite::insertCopy(const QString &where, QList<ColumnValue> columns) {
    columns += auditColumns(m_db.csGetComputerName());
    return wait(sqlInsertCopy(where, columns));
}

qsizetype RecordWrite::remove(const QString &where) {
    return wait(sqlRemove(where));
}

Result<QList<qint64>> RecordWrite::send() {
    QList<qint64> changed;
    if (!m_transaction.begun() || m_db.iExecSQLs(std::exchange(m_waiting, {}), changed) != 0)
        return failure();
    return changed;
}

Result<std::vector<ConsentRowKey>> RecordWrite::markNewest(const std::vector<PatientKey> &patients) {
    Recordset rows;
    if (const Result<> found = read(rows, sqlUsableRows(patients)); !found)
        return Failure{found.reason()};
    std::vector<ConsentRowKey> newest = newestRows(rows);
    if (newest.empty())
        return newest;
    change(sqlWronglyNewest(newest), {{u"iNewestFlg"_s, u"0"_s}});
    change(sqlNotYetNewest(newest), {{u"iNewestFlg"_s, u"1"_s}});
    if (const Result<QList<qint64>> marked = send(); !marked)
        return Failure{marked.reason()};
    return newest;
}

Result<> RecordWrite::commit() {
    if (const Result<QList<qint64>> sent = send(); !sent)
        return Failure{sent.reason()};
    return m_transaction.commit();
}
