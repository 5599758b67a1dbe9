#pragma once

#include "app/base/branch.h"
#include "app/base/result.h"

#include <QHash>
#include <QString>
#include <memory>
#include <optional>

class LoggedTransaction;
class cT_ADODB;

/// The masters that are kept here. Patients, counsellors and staff are a branch's own.
enum class MasterKind { Doctor, Facility, Patient, Counsellor, Staff };

/// One row of a master as texts by the names of its columns; Null is a null text.
using MasterValues = QHash<QString, QString>;

/// Who names a row of a master.
struct MasterUses {
    int consents = 0;
    int patients = 0;
    int doctors = 0; ///< of a facility

    bool none() const { return consents == 0 && patients == 0 && doctors == 0; }
    friend bool operator==(const MasterUses &, const MasterUses &) = default;
};

/// The table of a master, row by row, in the caller's transaction. Codes are numbers. A patient's row is that
/// of RIYOUSHA and of RIYOUSHA_SUB together.
class MasterStore {
public:
    virtual ~MasterStore() = default;

    /// The row of a number; nothing when there is none.
    virtual Result<std::optional<MasterValues>> read(const QString &code) = 0;
    /// The highest number in use.
    virtual Result<qint64> highestCode() = 0;
    virtual Result<> insert(const MasterValues &values) = 0;
    /// A failure too when the row is not there.
    virtual Result<> update(const MasterValues &values) = 0;
    virtual Result<> remove(const MasterValues &values) = 0;

    /// Keeps other programs from writing the row until the transaction ends; of a new row, from making one.
    virtual Result<> lock(const QString &code, bool isNew) = 0;
    /// What is to be written goes into the history: behind the lock, before writing.
    virtual Result<> watch(LoggedTransaction &transaction, const QString &code) = 0;
    /// The same of the copies, whose rows are locked as well.
    virtual Result<> watchCopies(LoggedTransaction &transaction, const QString &code) = 0;
    virtual Result<MasterUses> uses(const QString &code) = 0;
    /// Brings what other tables repeat of the row up to date, after watchCopies().
    virtual Result<> copy(const MasterValues &before, const MasterValues &now) = 0;
};

/// @param branch whose rows they are, where they are a branch's
/// The connection must outlive the store.
std::unique_ptr<MasterStore> makeMasterStore(MasterKind kind, cT_ADODB &db, const Branch &branch = {});
