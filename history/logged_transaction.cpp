#include "history/logged_transaction.h"

#include "history/log_query.h"
#include "history/log_tables.h"

#include <QRandomGenerator>
#include <chrono>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Changed rows that are kept until they are written together.
constexpr qsizetype mostWaiting = 500;

// Why there is no history is nothing to tell where a write fails later, so it comes before m_errors begins.
cT_ADODB &settled(cT_ADODB &db) {
    if (db.isConnected())
        settleLog(db);
    return db;
}

// A connection that was lost opens anew; where it does not, the transaction fails and says why.
cT_ADODB &connected(cT_ADODB &db) {
    if (db.iConnect() == 0)
        settleLog(db);
    return db;
}

/// Ids sort by their time: microseconds first, then chance.
QString newWriteId() {
    using namespace std::chrono;
    const auto time = duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
    const quint64 chance = QRandomGenerator::global()->generate64();
    return u"%1%2"_s.arg(quint64(time), 16, 16, QChar(u'0')).arg(chance, 16, 16, QChar(u'0'));
}

/// What tells a row from all others.
QString identity(const RowChange &change) {
    const Branch branch = change.branch.value_or(Branch());
    return u"%1 %2 %3 %4 %5"_s.arg(change.table)
        .arg(branch.iKyotenCd)
        .arg(branch.iKyotenEb)
        .arg(change.patient.value_or(0))
        .arg(change.key);
}

} // namespace

LoggedTransaction::LoggedTransaction(cT_ADODB &db, Operation operation)
    : m_db(db),
      m_operation(std::move(operation)),
      m_errors(settled(db)),
      m_transaction(connected(db)),
      m_settled(db.history().kind != HistoryState::Unknown) {}

Failure LoggedTransaction::failure(const QString &otherwise) const {
    return {said().isEmpty() ? otherwise : said()};
}

Result<> LoggedTransaction::watch(QStringView table, const QString &where) {
    if (m_db.history().kind != HistoryState::Kept)
        return {};
    Result<Recordset> before = read(table, where);
    if (!before)
        return Failure{before.reason()};
    m_watched.push_back({watchedTable(table), watchedTable(table)->selectSql(where), *std::move(before)});
    return {};
}

Result<Recordset> LoggedTransaction::read(QStringView table, const QString &where) {
    const QString sql = watchedTable(table)->selectSql(where);
    for (const Watched &watched : m_watched)
        if (watched.sql == sql)
            return watched.before;
    Recordset rows;
    if (!begun() || m_db.iOpenRecSet(rows, sql) != 0)
        return failure();
    return rows;
}

Result<> LoggedTransaction::collect(const Watched &watched) {
    Recordset after;
    if (m_db.iOpenRecSet(after, watched.sql) != 0)
        return failure();
    for (RowChange &change : rowChanges(*watched.table, watched.before, after)) {
        const QString row = identity(change);
        if (m_recorded.contains(row))
            continue;
        m_recorded.insert(row);
        m_waiting.append(std::move(change));
    }
    return {};
}

Result<> LoggedTransaction::write() {
    if (m_waiting.isEmpty())
        return {};
    const QStringList statements =
        sqlRecord(m_id, m_written, m_db.csGetComputerName(), m_operation, m_waiting);
    m_written += m_waiting.size();
    m_waiting.clear();
    QList<qint64> affected;
    if (m_db.iExecSQLs(statements, affected) == 0)
        return {};
    // Somebody may have taken the tables or the right away: the next write looks anew.
    m_db.history().kind = HistoryState::Unknown;
    return failure();
}

Result<> LoggedTransaction::record() {
    m_id = newWriteId();
    for (const Watched &watched : m_watched) {
        if (const Result<> collected = collect(watched); !collected)
            return collected;
        if (m_waiting.size() >= mostWaiting)
            if (const Result<> written = write(); !written)
                return written;
    }
    return write();
}

Result<> LoggedTransaction::commit() {
    if (!begun())
        return failure();
    if (const Result<> recorded = record(); !recorded)
        return recorded;
    return m_transaction.commit() == 0 ? Result<>() : failure(u"データを確定できません。"_s);
}
