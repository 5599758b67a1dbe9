#pragma once

#include "app/base/result.h"
#include "consent/record/draft.h"
#include "consent/record/record_write_query.h"
#include "db/adodb.h"
#include "history/logged_transaction.h"

#include <QStringList>

#include <algorithm>
#include <functional>
#include <iterator>
#include <numeric>
#include <optional>
#include <vector>

/// Whether a write says in the row which computer made it and when. What a colleague is editing is overtaken
/// by a write that says so.
enum class Audit { Written, Untouched };

/// The one door through which rows of RIYOUSHA_DOUI_REC are written: one transaction on the consents of some
/// patients, made of a few kinds of write. Everything is undone unless commit() succeeds.
///
/// First lock(), then read what is to be compared with what the user saw, then write in the order of the
/// keys: so no two programs lose each other's changes, and none waits for one that waits for it. Writes are
/// sent together, so that many rows cost a line to a far server hardly more than one. A failure's reason is
/// what the database said; work is done again after a deadlock by againAfterDeadlock().
class RecordWrite {
public:
    /// Opens a lost connection anew and begins.
    /// @param db the connection of the run; must outlive the object
    /// @param operation under which the history records what is written
    RecordWrite(cT_ADODB &db, Operation operation);

    /// Makes other programs that write these patients' consents wait for the end of the transaction. Once,
    /// before anything is read. What stands there now is what the history compares with.
    /// @param patients in any order
    Result<> lock(std::vector<PatientKey> patients);

    /// A row as it stands now; nothing when there is none.
    Result<std::optional<ConsentDraft>> find(const ConsentRowKey &key);
    /// All consents of a patient, oldest first.
    Result<std::vector<ConsentDraft>> findAll(const PatientKey &patient);
    /// All columns of the locked patients' consents as they stood when they were locked.
    Result<Recordset> standing(std::vector<PatientKey> patients);
    /// Any other look at what is to be written.
    Result<> read(Recordset &rows, const QString &sql);

    /// @name Writes
    /// They wait until they are sent, and give their place among what is sent together.
    ///@{
    /// Writes columns of the rows that fit.
    qsizetype change(const QString &where, QList<ColumnValue> columns, Audit audit = Audit::Written);
    qsizetype insert(const ConsentDraft &row);
    /// A row of these columns and no others, the audit columns too: one that was there before.
    qsizetype restore(const QList<ColumnValue> &columns);
    /// Copies the row that fits, each column with its value, the audit columns with their own.
    qsizetype insertCopy(const QString &where, QList<ColumnValue> columns);
    /// Erases the rows that fit.
    qsizetype remove(const QString &where);
    /// Sends what waits; gives the number of rows that each write changed, by its place.
    Result<QList<qint64>> send();
    ///@}

    /// Marks the newest massage and the newest deformity-correction row of each patient, after what was sent.
    /// A kind without a row that is usable for claims keeps its marks.
    /// @return the newest rows
    Result<std::vector<ConsentRowKey>> markNewest(const std::vector<PatientKey> &patients);

    /// Sends what waits and makes everything last.
    Result<> commit();

private:
    Failure failure(const QString &otherwise = {}) const;
    qsizetype wait(const QString &sql);

    cT_ADODB &m_db;
    LoggedTransaction m_transaction;
    QStringList m_waiting;
};

/// Whether a key comes before another in the order in which rows are written.
bool isBefore(const ConsentRowKey &left, const ConsentRowKey &right);

/// Positions of rows in the order in which they are written.
/// @param key of a row
template <class Row, class Key> std::vector<size_t> inWritingOrder(const std::vector<Row> &rows, Key key) {
    std::vector<size_t> order(rows.size());
    std::iota(order.begin(), order.end(), size_t(0));
    std::ranges::sort(order, isBefore, [&](size_t i) { return std::invoke(key, rows[i]); });
    return order;
}

/// The patients of rows, as lock() takes them.
template <class Row, class Patient>
std::vector<PatientKey> patientsOf(const std::vector<Row> &rows, Patient patient) {
    std::vector<PatientKey> patients;
    std::ranges::transform(rows, std::back_inserter(patients), patient);
    return patients;
}
