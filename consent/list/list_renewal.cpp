#include "consent/list/list_renewal.h"

#include "app/base/dates.h"
#include "consent/list/list_model.h"

#include <QHash>
#include <QSet>
#include <QStringList>

using namespace Qt::Literals::StringLiterals;

QList<RenewalRow> rowsToRenew(const ConsentListModel &model) {
    QList<RenewalRow> rows;
    for (const int record : model.receivedRecords()) {
        const ReadRow seen = model.seenRow(record);
        rows.append({.key = seen.key,
                     .name = model.records().text(record, ListField::Name),
                     .consentDate = seen.running.consentDay,
                     .reConsent = {seen.values.reconsent, {seen.values.nextStart, seen.values.nextEnd}},
                     .seen = seen});
    }
    return rows;
}

void takeSaved(QList<RenewalRow> &rows, const ConsentListModel &model) {
    const QHash<QString, int> records = recordsByRow(model.records());
    for (RenewalRow &row : rows) {
        if (!row.seen->updateTime.isEmpty())
            continue;
        const int record = records.value(rowIdentity(row.key), -1);
        if (record >= 0)
            if (const ReadRow now = model.seenRow(record); isUnchanged(now, *row.seen))
                row.seen->updateTime = now.updateTime;
    }
}

std::vector<ConsentRowKey> renewedKeys(const QList<RenewalResult> &results,
                                       const std::vector<ConsentRowKey> &rows) {
    QSet<QString> wanted;
    for (const ConsentRowKey &key : rows)
        wanted.insert(rowIdentity(key));
    std::vector<ConsentRowKey> keys;
    for (const RenewalResult &result : results)
        if (result.outcome == RenewalOutcome::Renewed && wanted.contains(rowIdentity(result.row.key)))
            keys.push_back(renewedKey(result.row.key, result.row.reConsent.date));
    return keys;
}

namespace {

/// A line for each row of another outcome.
QStringList linesBut(const QList<RenewalResult> &results, RenewalOutcome outcome) {
    QStringList lines;
    QString reason; // of a failure told once for its rows: what a server says takes many lines
    for (const RenewalResult &result : results)
        if (result.outcome != outcome) {
            const bool same = result.outcome == RenewalOutcome::Failed && result.reason == reason;
            reason = result.reason;
            lines.append(u"%1 %2　%3"_s.arg(QString::number(result.row.key.patient.nIDNo), result.row.name,
                                            same ? u"同上"_s : reason));
        }
    return lines;
}

} // namespace

QString renewalQuestion(const QList<RenewalResult> &examined, int hidden) {
    const QStringList out = linesBut(examined, RenewalOutcome::NotReached);
    QString text;
    if (!out.isEmpty())
        text = u"更新しない同意：%L1 件\r\n%2\r\n\r\n"_s.arg(out.size()).arg(out.join(u"\r\n"_s));
    if (hidden > 0)
        text += u"絞り込みで表示していない受領 %L1 件は、更新しません。\r\n\r\n"_s.arg(hidden);
    return text +
           u"同意受領分の更新を行います。よろしいですか？\r\n更新 %L1 件"_s.arg(examined.size() - out.size());
}

QString renewalSummary(const QList<RenewalResult> &results) {
    constexpr qsizetype most = 20; // lines that a message box can show
    const qsizetype renewed = countOutcome(results, RenewalOutcome::Renewed);
    QString text = u"更新した同意：%L1 件"_s.arg(renewed);
    if (renewed == results.size())
        return text;
    const QStringList lines = linesBut(results, RenewalOutcome::Renewed);
    text += u"\r\n更新しなかった同意：%L1 件\r\n\r\n"_s.arg(lines.size()) + lines.mid(0, most).join(u"\r\n");
    if (lines.size() > most)
        text += u"\r\n他 %L1 件"_s.arg(lines.size() - most);
    return text;
}
