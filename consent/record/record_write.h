#pragma once

#include "app/base/result.h"
#include "consent/record/draft.h"
#include "consent/record/record_write_query.h"
#include "db/adodb.h"

#include <array>
#include <optional>
#include <vector>

/// Whether a write says in the row which computer made it and when. What a colleague is editing is overtaken
/// by a write that says so.
enum class Audit { Written, Untouched };

/// The patient's newest rows after a marking: massage, deformity correction. Nothing where a kind has no row
/// that is usable for claims and keeps its marks.
using NewestRows = std::array<std::optional<ConsentRowKey>, 2>;

/// The one door through which rows of RIYOUSHA_DOUI_REC are written: one transaction on the consents of some
/// patients, made of a few kinds of write. Everything is undone unless commit() succeeds.
///
/// First lock(), then read what is to be compared with what the user saw, then write in the order of the
/// keys: so no two programs lose each other's changes, and none waits for one that waits for it. A failure's
/// reason is what the database said.
class RecordWrite {
public:
    /// Opens a lost connection anew and begins.
    /// @param db the connection of the run; must outlive the object
    explicit RecordWrite(cT_ADODB &db);

    /// Makes other programs that write these patients' consents wait for the end of the transaction. Once,
    /// before anything is read.
    /// @param patients in any order
    Result<> lock(std::vector<PatientKey> patients);

    /// A row as it stands now; nothing when there is none.
    Result<std::optional<ConsentDraft>> find(const ConsentRowKey &key);
    /// All consents of a patient, oldest first.
    Result<std::vector<ConsentDraft>> findAll(const PatientKey &patient);
    /// Any other look at what is to be written.
    Result<> read(Recordset &rows, const QString &sql);

    /// @name Writes
    ///@{
    /// Writes columns of the rows that fit; gives their number.
    Result<qint64> change(const QString &where, QList<ColumnValue> columns, Audit audit = Audit::Written);
    Result<> insert(const ConsentDraft &row);
    /// Copies the row that fits, each column with its value, the audit columns with their own.
    Result<> insertCopy(const QString &where, QList<ColumnValue> columns);
    /// Erases the rows that fit; gives their number.
    Result<qint64> remove(const QString &where);
    /// Marks the newest massage and the newest deformity-correction row.
    Result<NewestRows> markNewest(const PatientKey &patient);
    ///@}

    Result<> commit();

private:
    Failure failure(const QString &otherwise = {}) const;
    Result<qint64> execute(const QString &sql);
    Result<std::optional<ConsentRowKey>> markNewestOf(const PatientKey &patient, short iHenkeiFlg);

    cT_ADODB &m_db;
    ErrorsSince m_errors;
    Transaction m_transaction;
};

/// Whether a key comes before another in the order in which rows are written.
bool isBefore(const ConsentRowKey &left, const ConsentRowKey &right);
