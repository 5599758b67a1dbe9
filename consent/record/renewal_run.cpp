#include "consent/record/renewal_run.h"

#include "db/adodb.h"

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
    static ConsentRowKey kindOf(const ConsentRowKey &key) { return {key.patient, 0, key.iHenkeiFlg, 0}; }
    qint32 latest(const ConsentRowKey &key) const { return m_latest.value(kindOf(key)); }

    QHash<ConsentRowKey, qint32> m_latest; ///< nDate, by patient and kind
    QHash<ConsentRowKey, int> m_targets;
};

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

QList<RenewalResult> RenewalRun::renew(const QList<RenewalRow> &rows, const Progress &progress) {
    QList<RenewalResult> results = examine(rows);
    ConsentRenewal renewal(m_db);
    QString stopped;
    int done = 0;
    for (RenewalResult &result : results) {
        if (result.outcome == RenewalOutcome::NotReached) {
            if (!stopped.isEmpty()) {
                result.reason = stopped;
                continue;
            }
            if (renewal.renew(result.row) == 0) {
                result.outcome = RenewalOutcome::Renewed;
            } else {
                result.outcome = renewal.refused() ? RenewalOutcome::Refused : RenewalOutcome::Failed;
                result.reason = renewal.sErrMsg();
            }
        }
        ++done;
        if (!m_db.isConnected() && m_db.iConnect() != 0)
            stopped = u"データベースとの接続が切れたため、更新していません。"_s;
        else if (stopped.isEmpty() && progress && !progress(done, int(results.size())))
            stopped = u"中止したため、更新していません。"_s;
    }
    return results;
}

qsizetype countOutcome(const QList<RenewalResult> &results, RenewalOutcome outcome) {
    return std::count_if(results.begin(), results.end(),
                         [outcome](const RenewalResult &result) { return result.outcome == outcome; });
}
