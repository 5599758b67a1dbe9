#pragma once

#include "app/base/branch.h"
#include "app/base/result.h"
#include "consent/batches/batches.h"
#include "consent/batches/take_back.h"

class Batch;
class RecordWrite;
class cT_ADODB;

/// Who wrote a row since a batch did, as far as is known.
struct LaterWriter {
    QString time, computer, operation;
};

/// What taking a batch back would do, as things stand.
struct TakeBackProposal {
    BatchInfo batch;
    std::optional<BatchInfo> taker; ///< the last that took rows of it back, and holds
    TakeBackPlan plan;
    QHash<QString, LaterWriter> writers = {}; ///< by identity, of rows that stay
    QHash<qint32, QString> names = {};        ///< of the patients whose rows stay

    bool isPart() const { return !plan.left().empty(); }
};

/// The operation of taking back, as batches and the history call it.
/// @param part some of the batch's rows stay
QString takeBackOperation(bool part);

/// Takes a batch back: what it made goes, what it deleted comes back, what it changed becomes what it was,
/// each only where it stands as the batch left it. One transaction, and a batch of its own.
class TakeBack {
public:
    /// @param db the connection of the run; must outlive the object
    TakeBack(cT_ADODB &db, const Branch &branch) : m_db(db), m_branch(branch) {}

    /// Reads what would happen. A failure where no history is kept or the batch is not there.
    Result<TakeBackProposal> propose(qint32 batch);

    /// Does what was proposed. False: something else would happen by now, and nothing was written.
    Result<bool> take(const TakeBackProposal &agreed);

private:
    Result<TakeBackPlan> plan(qint32 batch);
    Result<> readLeft(TakeBackProposal &proposal);
    Result<bool> takeOnce(const TakeBackProposal &agreed, Batch &batch);
    Result<> restore(RecordWrite &write, const TakeBackPlan &plan);

    cT_ADODB &m_db;
    Branch m_branch;
};
