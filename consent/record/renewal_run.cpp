#include "consent/record/renewal_run.h"

#include "db/adodb.h"
#include "history/batch.h"

#include <QHash>
#include <QSet>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

// In the keys' own namespace, where the hash tables look for it.
static size_t qHash(const ConsentRowKey &key, size_t seed) {
    return qHashMulti(seed, key.patient.iKyotenCd, key.patient.iKyotenEb, key.patient.nIDNo, key.nDate,
                      key.iHenkeiFlg, key.nHenkeiDouiDate);
}

namespace {

/// A row's patient and kind.
ConsentRowKey kindOf(const ConsentRowKey &key) {
    return {key.patient, 0, key.iHenkeiFlg, 0};
}

/// What the rows of a run are to one another.
class Fellows {
public:
    explicit Fellows(const QList<RenewalRow> &rows) {
        QSet<ConsentRowKey> sources;
        for (const RenewalRow &row : rows) {
            if (!mayBeNewest(row))
                continue;
            sources.insert(row.key);
            qint32 &latest = m_latest[kindOf(row.key)];
            latest = std::max(latest, row.key.nDate);
        }
        for (const RenewalRow &row : rows)
            if (row.key.nDate == latest(row.key) && sources.remove(row.key))
                ++m_targets[renewedKey(row.key, row.reConsent.date)];
    }

    // Of two newest rows of a kind, as old data have them, the later one is the newest. Rows that would be
    // renewed onto one key must not disappear in one another.
    QString refusal(const RenewalRow &row) const {
        if (latest(row.key) > row.key.nDate)
            return laterConsentRefusal(latest(row.key));
        if (m_targets.value(renewedKey(row.key, row.reConsent.date)) > 1)
            return u"再同意日が、同時に更新する別の同意の再同意日と同じため、更新できません。"_s;
        return {};
    }

private:
    // What the claim flag keeps from being the newest is refused by itself, and stands in nobody's way.
    static bool mayBeNewest(const RenewalRow &row) {
        return !row.seen || row.seen->running.claimsDisabled.same(short(0));
    }
    qint32 latest(const ConsentRowKey &key) const { return m_latest.value(kindOf(key)); }

    QHash<ConsentRowKey, qint32> m_latest; ///< nDate, by patient and kind
    QHash<ConsentRowKey, int> m_targets;
};

/// The first rows that may be renewed together, at most so many: a row that is ticked twice is to find what
/// became of it the first time.
std::span<RenewalResult *const> firstBatch(std::span<RenewalResult *const> rows, size_t most) {
    QSet<ConsentRowKey> kinds;
    size_t count = 0;
    while (count < std::min(most, rows.size()) && !kinds.contains(kindOf(rows[count]->row.key)))
        kinds.insert(kindOf(rows[count++]->row.key));
    return rows.first(count);
}

} // namespace

QList<RenewalResult> RenewalRun::examine(const QList<RenewalRow> &rows) {
    const Fellows fellows(rows);
    QList<RenewalResult> results;
    results.reserve(rows.size());
    for (const RenewalRow &row : rows) {
        QString reason = renewalRefusal(row, renewedKey(row.key, row.reConsent.date));
        if (reason.isEmpty())
            reason = fellows.refusal(row);
        const RenewalOutcome outcome =
            reason.isEmpty() ? RenewalOutcome::NotReached : RenewalOutcome::Refused;
        results.append({row, outcome, reason});
    }
    return results;
}

/// False when the database refused and the rows may have better luck each by itself.
bool RenewalRun::renewTogether(ConsentRenewal &renewal, Rows batch) {
    std::vector<RenewalRow> rows;
    for (const RenewalResult *result : batch)
        rows.push_back(result->row);
    const Result<QStringList> refusals = renewal.renewTogether(rows);
    if (!refusals && batch.size() > 1 && m_db.iConnect() == 0)
        return false;
    for (size_t i = 0; i < batch.size(); ++i) {
        RenewalResult &result = *batch[i];
        result.reason = refusals ? (*refusals)[qsizetype(i)] : refusals.reason();
        result.outcome = !refusals                 ? RenewalOutcome::Failed
                         : result.reason.isEmpty() ? RenewalOutcome::Renewed
                                                   : RenewalOutcome::Refused;
    }
    return true;
}

QList<RenewalResult> RenewalRun::renew(const QList<RenewalRow> &rows, const Progress &progress) {
    QList<RenewalResult> results = examine(rows);
    std::vector<RenewalResult *> waiting;
    for (RenewalResult &result : results)
        if (result.outcome == RenewalOutcome::NotReached)
            waiting.push_back(&result);
    if (waiting.empty())
        return results;
    const QString operation = u"同意更新"_s;
    Result<std::optional<Batch>> batch = Batch::begin(m_db, rows.front().key.patient.branch(), operation);
    if (!batch) {
        for (RenewalResult *result : waiting)
            *result = {result->row, RenewalOutcome::Failed, batch.reason()};
        return results;
    }
    ConsentRenewal renewal(m_db, operationOf(*batch, operation));
    renewInTurn(renewal, waiting, [&](const RenewalResult *next) {
        const qsizetype passed = next ? next - results.data() : results.size();
        return !progress || progress(int(passed), int(results.size()));
    });
    // Where even that cannot be written any more, the records of the rows tell.
    if (*batch)
        (void)(*batch)->finish(countOutcome(results, RenewalOutcome::Renewed));
    return results;
}

void RenewalRun::renewInTurn(ConsentRenewal &renewal, Rows waiting,
                             const std::function<bool(const RenewalResult *next)> &passed) {
    QString stopped;
    size_t done = 0;
    size_t oneByOne = 0; // where the rows of a failed batch end
    while (done < waiting.size() && stopped.isEmpty()) {
        const Rows together = firstBatch(waiting.subspan(done), done < oneByOne ? 1 : mostTogether);
        if (!renewTogether(renewal, together)) {
            oneByOne = done + together.size();
            continue;
        }
        done += together.size();
        if (!m_db.isConnected() && m_db.iConnect() != 0)
            stopped = u"データベースとの接続が切れたため、更新していません。"_s;
        else if (!passed(done == waiting.size() ? nullptr : waiting[done]))
            stopped = u"中止したため、更新していません。"_s;
    }
    for (; done < waiting.size(); ++done)
        waiting[done]->reason = stopped;
}

qsizetype countOutcome(const QList<RenewalResult> &results, RenewalOutcome outcome) {
    return std::count_if(results.begin(), results.end(),
                         [outcome](const RenewalResult &result) { return result.outcome == outcome; });
}
