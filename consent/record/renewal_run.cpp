#include "consent/record/renewal_run.h"

#include "consent/record/renewal.h"
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

// A row that would be replaced by, or renewed onto the same key as, another row of the same run must not
// disappear with it.
QString collision(const ConsentRowKey &target, const QSet<ConsentRowKey> &sources,
                  const QHash<ConsentRowKey, int> &targets) {
    if (sources.contains(target))
        return u"再同意日が、同時に更新する別の同意の日付と同じため、更新できません。"_s;
    if (targets.value(target) > 1)
        return u"再同意日が、同時に更新する別の同意の再同意日と同じため、更新できません。"_s;
    return {};
}

} // namespace

QList<RenewalResult> RenewalRun::examine(const QList<RenewalRow> &rows) {
    QSet<ConsentRowKey> sources;
    QHash<ConsentRowKey, int> targets;
    for (const RenewalRow &row : rows) {
        if (sources.contains(row.key))
            continue;
        sources.insert(row.key);
        ++targets[renewedKey(row.key, row.reConsent.date)];
    }

    QList<RenewalResult> results;
    results.reserve(rows.size());
    for (const RenewalRow &row : rows) {
        const ConsentRowKey target = renewedKey(row.key, row.reConsent.date);
        QString reason = renewalRefusal(row, target);
        if (reason.isEmpty())
            reason = collision(target, sources, targets);
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
        if (!m_db.isConnected())
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
