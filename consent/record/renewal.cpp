#include "consent/record/renewal.h"

#include "app/base/dates.h"
#include "consent/record/record_write.h"
#include "consent/record/renewal_query.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

bool replacesOrPrecedes(const ConsentRowKey &target, const ConsentRowKey &source) {
    if (target.nDate != source.nDate)
        return target.nDate < source.nDate;
    // Massage rows are told apart by nDate alone.
    return source.iHenkeiFlg == 0 || target.nHenkeiDouiDate == source.nHenkeiDouiDate;
}

QString periodRefusal(const Period &period) {
    if (!period.start.isValid() || !period.end.isValid())
        return u"要加療期間が入力されていません。"_s;
    if (period.end < period.start)
        return u"要加療期間の終了日が開始日より前になっています。"_s;
    return {};
}

QString sourceGone() {
    return u"RIYOUSHA_DOUI_REC元データ取得時にエラーが発生しました。"_s;
}

QString alreadyRenewed() {
    return u"この同意は、すでに新しい同意に更新されています。"_s;
}

QString changedMeanwhile() {
    return u"この同意は、一覧を表示した後に他のＰＣで変更されています。一覧を読み直してください。"_s;
}

// The new row takes the flag along: it would never be marked newest, and the old one would stay so.
QString claimRefusal(const Nullable<short> &disabled) {
    if (disabled.isNull())
        return u"請求に使用するかどうかが未設定の同意のため、更新できません。"
               "同意記録の編集で登録し直してください。"_s;
    return disabled == 0 ? QString()
                         : u"請求に使用しない同意のため、更新できません。"
                           "更新する場合は、同意記録の編集で請求に使用する同意にしてください。"_s;
}

Result<RenewalSources> readSources(RecordWrite &write, const std::vector<ConsentRowKey> &sources) {
    Result<Recordset> rows = write.standing(patientsOf(sources, &ConsentRowKey::patient));
    return rows ? Result<RenewalSources>(RenewalSources(*std::move(rows))) : Failure{rows.reason()};
}

QString changeRefusal(const RenewalSource &now, const RenewalRow &seen) {
    if (now.row.newest != seen.newest || now.row.reConsent != seen.reConsent)
        return u"他のＰＣで再同意の内容が変更されています。一覧を読み直してください。"_s;
    return !seen.seen || isUnchanged(now.read, *seen.seen) ? QString() : changedMeanwhile();
}

// A usable one would be a later consent; this one is a colleague's that he may still make usable.
QString targetTaken(qint32 nDate) {
    return u"再同意日（%1）の同意がすでに登録されているため、更新できません。"
           "同意記録で、その同意の日付を変更するか削除してください。"_s.arg(dateText(dateFromKey(nDate)));
}

/// Under the patient's lock, so that of two programs that renew the same row the second finds it done.
QString seenRefusal(const RenewalSource &now, const RenewalRow &seen, const ConsentRowKey &target,
                    bool targetIsThere) {
    const QString unusable = claimRefusal(now.read.running.claimsDisabled);
    if (seen.newest && now.later != 0 && !unusable.isEmpty())
        return unusable;
    if (seen.newest && now.later != 0)
        return !now.row.newest && now.later == target.nDate ? alreadyRenewed()
                                                            : laterConsentRefusal(now.later);
    if (const QString reason = changeRefusal(now, seen); !reason.isEmpty())
        return reason;
    if (now.row.newest && !unusable.isEmpty())
        return unusable;
    // A row of the history keeps its answer. Renewing it again would throw its successor away.
    if (!targetIsThere)
        return {};
    return now.row.newest ? targetTaken(target.nDate) : alreadyRenewed();
}

QString copyRefusal(const RenewalSource &now, const ConsentRowKey &target, const RenewalRow *seen,
                    bool targetIsThere) {
    if (now.rows == 0)
        return sourceGone();
    if (now.rows > 1)
        return u"同じ日付の同意が複数あるため、更新できません。"_s;
    if (QString reason = renewalRefusal(now.row, target); !reason.isEmpty())
        return reason;
    return seen ? seenRefusal(now, *seen, target, targetIsThere) : QString();
}

QStringView copyLabel(short iHenkeiFlg) {
    return iHenkeiFlg == 0 ? u"iDataNewDouiMake() でエラー" : u"iDataNewHenkeiMake() でエラー";
}

} // namespace

ConsentRowKey renewedKey(const ConsentRowKey &source, const QDate &reConsentDate) {
    const int date = dateKey(reConsentDate);
    return {source.patient, date, source.iHenkeiFlg, source.iHenkeiFlg == 0 ? 0 : date};
}

QString renewalRefusal(const RenewalRow &source, const ConsentRowKey &target) {
    const ReConsent &reConsent = source.reConsent;
    if (!reConsent.date.isValid() || target.nDate == 0)
        return u"再同意日が入力されていません。"_s;
    if (const QString reason = periodRefusal(reConsent.period); !reason.isEmpty())
        return reason;
    if (source.consentDate.isValid() &&
        (reConsent.date <= source.consentDate || target.nDate <= dateKey(source.consentDate)))
        return u"再同意日が同意日（%1）より後ではないため、更新できません。"_s.arg(
            dateText(source.consentDate));
    if (replacesOrPrecedes(target, source.key))
        return u"再同意日が更新元の同意の日付（%1）以前のため、更新できません。"_s.arg(
            dateText(dateFromKey(source.key.nDate)));
    return {};
}

QString laterConsentRefusal(qint32 nDate) {
    return u"この利用者には、より新しい同意（%1）があるため、更新できません。"_s.arg(
        dateText(dateFromKey(nDate)));
}

short ConsentRenewal::iDataNewDouiMake(const PatientKey &patient, qint32 nDate, const QDate &newDate) {
    const ConsentRowKey source{patient, nDate, 0, 0};
    return copyOne({source, renewedKey(source, newDate)});
}

short ConsentRenewal::iDataNewHenkeiMake(const ConsentRowKey &source, const QDate &newDate,
                                         qint32 newHenkeiDouiDate) {
    return copyOne({source, {source.patient, dateKey(newDate), 1, newHenkeiDouiDate}});
}

short ConsentRenewal::renew(const RenewalRow &row) {
    return copyOne({row.key, renewedKey(row.key, row.reConsent.date), &row});
}

Result<QStringList> ConsentRenewal::renewTogether(const std::vector<RenewalRow> &rows) {
    std::vector<Copy> copies;
    for (const RenewalRow &row : rows)
        copies.push_back({row.key, renewedKey(row.key, row.reConsent.date), &row});
    return run(patientsOf(rows, [](const RenewalRow &row) { return row.key.patient; }),
               copyLabel(rows.empty() ? short(0) : rows.front().key.iHenkeiFlg),
               [&](RecordWrite &write) { return copyRows(write, copies); });
}

short ConsentRenewal::iDataHenkeiDouiMake(const PatientKey &patient, qint32 nDate, const Period &period,
                                          const ReadRow *seen) {
    return runForOne(patient, u"iDataHenkeiDouiMake() でエラー", [&](RecordWrite &write) -> Verdicts {
        if (const QString reason = periodRefusal(period); !reason.isEmpty())
            return QStringList{reason};
        if (seen) {
            const Result<RenewalSources> rows = readSources(write, {seen->key});
            if (!rows)
                return Failure{rows.reason()};
            const RenewalSource now = rows->find(seen->key);
            if (now.rows == 0 || !isUnchanged(now.read, *seen))
                return QStringList{now.rows == 0 ? sourceGone() : changedMeanwhile()};
        }
        write.change(seen ? sqlOfRow(seen->key) : sqlOfDate(patient, nDate), restartedColumns(period));
        const Result<QList<qint64>> restarted = write.send();
        if (!restarted)
            return Failure{restarted.reason()};
        if (restarted->first() == 0)
            return QStringList{sourceGone()};
        const Result<> marked = markNewest(write, {patient});
        return marked ? Verdicts(QStringList{QString()}) : Failure{marked.reason()};
    });
}

short ConsentRenewal::setDouiNewestFlg(const PatientKey &patient) {
    return runForOne(patient, u"setDouiNewestFlg() でエラー", [&](RecordWrite &write) {
        const Result<> marked = markNewest(write, {patient});
        return marked ? Verdicts(QStringList{QString()}) : Failure{marked.reason()};
    });
}

ConsentRenewal::Verdicts ConsentRenewal::run(const std::vector<PatientKey> &patients, QStringView label,
                                             const Work &work) {
    Verdicts verdicts = againAfterDeadlock(m_db, [&] { return runOnce(patients, label, work); });
    if (!verdicts)
        return Failure{verdicts.reason() + u"\r\n"_s + m_label.toString()};
    return verdicts;
}

// Where all are refused nothing was written.
ConsentRenewal::Verdicts ConsentRenewal::runOnce(const std::vector<PatientKey> &patients, QStringView label,
                                                 const Work &work) {
    m_label = label;
    RecordWrite write(m_db, m_operation);
    if (const Result<> locked = write.lock(patients); !locked)
        return Failure{locked.reason()};
    Verdicts verdicts = work(write);
    if (verdicts && verdicts->contains(QString()))
        if (const Result<> committed = write.commit(); !committed)
            return Failure{committed.reason()};
    return verdicts;
}

short ConsentRenewal::runForOne(const PatientKey &patient, QStringView label, const Work &work) {
    const Verdicts verdicts = run({patient}, label, work);
    m_error = verdicts ? verdicts->first() : verdicts.reason();
    m_refused = verdicts && !m_error.isEmpty();
    return m_error.isEmpty() ? short(0) : short(-1);
}

short ConsentRenewal::copyOne(const Copy &copy) {
    return runForOne(copy.source.patient, copyLabel(copy.source.iHenkeiFlg),
                     [&](RecordWrite &write) { return copyRows(write, {copy}); });
}

ConsentRenewal::Verdicts ConsentRenewal::copyRows(RecordWrite &write, const std::vector<Copy> &copies) {
    std::vector<ConsentRowKey> sources;
    std::ranges::transform(copies, std::back_inserter(sources), &Copy::source);
    const Result<RenewalSources> rows = readSources(write, sources);
    if (!rows)
        return Failure{rows.reason()};
    QStringList verdicts(qsizetype(copies.size()));
    QList<qsizetype> places;
    std::vector<PatientKey> patients;
    for (const size_t i : inWritingOrder(copies, &Copy::source)) {
        const auto &[source, target, seen] = copies[i];
        const RenewalSource now = rows->find(source);
        const bool targetIsThere = rows->isThere(target);
        QString &refusal = verdicts[qsizetype(i)];
        refusal = copyRefusal(now, target, seen, targetIsThere);
        if (!refusal.isEmpty())
            continue;
        if (targetIsThere)
            write.remove(sqlOfRow(target));
        places.append(write.insertCopy(sqlOfRow(source), renewedColumns(source, target, now.columns)));
        patients.push_back(source.patient);
    }
    if (patients.empty())
        return verdicts;
    const Result<QList<qint64>> written = write.send();
    if (!written)
        return Failure{written.reason()};
    // A sibling program, which knows nothing of the lock, may take a row away at the last moment.
    if (std::ranges::any_of(places, [&](qsizetype place) { return (*written)[place] != 1; }))
        return Failure{sourceGone()};
    if (const Result<> marked = markNewest(write, patients); !marked)
        return Failure{marked.reason()};
    return verdicts;
}

Result<> ConsentRenewal::markNewest(RecordWrite &write, const std::vector<PatientKey> &patients) {
    m_label = u"setDouiNewestFlg() でエラー";
    const Result<std::vector<ConsentRowKey>> marked = write.markNewest(patients);
    return marked ? Result<>() : Failure{marked.reason()};
}
