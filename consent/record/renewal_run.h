#pragma once

#include "consent/record/renewal.h"

#include <QList>
#include <QString>
#include <functional>
#include <span>

class cT_ADODB;

enum class RenewalOutcome {
    Renewed,
    Refused,   ///< something is to be corrected, see the reason
    Failed,    ///< the database refused; the row is as it was
    NotReached ///< cancelled, or the connection was lost, before its turn
};

struct RenewalResult {
    RenewalRow row;
    RenewalOutcome outcome = RenewalOutcome::NotReached;
    QString reason; ///< for the user, unless renewed
};

/// Renews many rows, as one run of the history: examines all before it renews the first, then renews a batch
/// of them after the other, each in a transaction of its own, so that stopping half-way leaves every row
/// either old or renewed. The rows of a batch that fails go one by one, so that each meets its own fate.
class RenewalRun {
public:
    /// Rows of a batch: over a line of 20 ms a fifth of a second.
    static constexpr size_t mostTogether = 50;
    /// Told after each batch how many of how many are done; false cancels what is left.
    using Progress = std::function<bool(int done, int total)>;

    /// @param db the connection of the run; must outlive the object
    explicit RenewalRun(cT_ADODB &db) : m_db(db) {}

    /// What became of each row, in the rows' order.
    QList<RenewalResult> renew(const QList<RenewalRow> &rows, const Progress &progress = {});

    /// The examination alone: Refused with the reason, or NotReached for a row that may be renewed.
    static QList<RenewalResult> examine(const QList<RenewalRow> &rows);

private:
    using Rows = std::span<RenewalResult *const>;

    bool renewTogether(ConsentRenewal &renewal, Rows batch);
    /// @param passed told the next row, null at the end; false stops
    void renewInTurn(ConsentRenewal &renewal, Rows waiting,
                     const std::function<bool(const RenewalResult *next)> &passed);

    cT_ADODB &m_db;
};

qsizetype countOutcome(const QList<RenewalResult> &results, RenewalOutcome outcome);
