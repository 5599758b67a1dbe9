#include "consent/record/renewal_run.h"

#include "db/adodb.h"

#include <QHash>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

// In the keys' own namespace, where the hash tables look for them.
static size_t qHash(const PatientKey &key, size_t seed = 0) {
    return qHashMulti(seed, key.iKyotenCd, key.iKyotenEb, key.nIDNo);
}

static size_t qHash(const ConsentRowKey &key, size_t seed) {
    return qHashMulti(seed, key.patient, key.nDate, key.iHenkeiFlg, key.nHenkeiDouiDate);
}

namespace {

bool sameKind(const ConsentRowKey &left, const ConsentRowKey &right) {
    return left.patient == right.patient && left.iHenkeiFlg == right.iHenkeiFlg;
}

// Rows that would be renewed onto one key must not disappear in one another. Of two newest rows of a kind, as
// old data have them, the later one is the newest.
QString collision(const ConsentRowKey &source, const ConsentRowKey &target,
                  const QMultiHash<PatientKey, ConsentRowKey> &sources,
                  const QHash<ConsentRowKey, int> &targets) {
    qint32 later = source.nDate;
    for (auto [row, end] = sources.equal_range(source.patient); row != end; ++row)
        if (sameKind(*row, source))
            later = std::max(later, row->nDate);
    if (later > source.nDate)
        return laterConsentRefusal(later);
    if (targets.value(target) > 1)
        return u"再同意日が、同時に更新する別の同意の再同意日と同じため、更新できません。"_s;
    return {};
}

} // namespace

QList<RenewalResult> RenewalRun::examine(const QList<RenewalRow> &rows) {
    QMultiHash<PatientKey, ConsentRowKey> sources;
    QHash<ConsentRowKey, int> targets;
    for (const RenewalRow &row : rows) {
        if (sources.contains(row.key.patient, row.key))
            continue;
        sources.insert(row.key.patient, row.key);
        ++targets[renewedKey(row.key, row.reConsent.date)];
    }

    QList<RenewalResult> results;
    results.reserve(rows.size());
    for (const RenewalRow &row : rows) {
        const ConsentRowKey target = renewedKey(row.key, row.reConsent.date);
        QString reason = renewalRefusal(row, target);
        if (reason.isEmpty())
            reason = collision(row.key, target, sources, targets);
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
