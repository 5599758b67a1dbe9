#include "consent/record/renewal.h"

#include "app/base/dates.h"
#include "consent/record/record_write.h"
#include "consent/record/renewal_query.h"

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

Result<RenewalSource> readSource(RecordWrite &write, const ConsentRowKey &source) {
    Recordset rows;
    if (const Result<> read = write.read(rows, sqlRenewalSource(source)); !read)
        return Failure{read.reason()};
    return renewalSource(rows, source);
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
Result<QString> seenRefusal(RecordWrite &write, const RenewalSource &now, const RenewalRow &seen,
                            const ConsentRowKey &target) {
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
    Recordset rows;
    if (const Result<> read = write.read(rows, sqlCountRows(sqlOfRow(target))); !read)
        return Failure{read.reason()};
    if (rows.number(0, 0) == 0)
        return QString();
    return now.row.newest ? targetTaken(target.nDate) : alreadyRenewed();
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
    return run(patient, u"iDataNewDouiMake() でエラー", [&](RecordWrite &write) {
        return copyRow(write, source, renewedKey(source, newDate), nullptr);
    });
}

short ConsentRenewal::iDataNewHenkeiMake(const ConsentRowKey &source, const QDate &newDate,
                                         qint32 newHenkeiDouiDate) {
    const ConsentRowKey target{source.patient, dateKey(newDate), 1, newHenkeiDouiDate};
    return run(source.patient, u"iDataNewHenkeiMake() でエラー",
               [&](RecordWrite &write) { return copyRow(write, source, target, nullptr); });
}

short ConsentRenewal::renew(const RenewalRow &row) {
    const QStringView label =
        row.key.iHenkeiFlg == 0 ? u"iDataNewDouiMake() でエラー" : u"iDataNewHenkeiMake() でエラー";
    return run(row.key.patient, label, [&](RecordWrite &write) {
        return copyRow(write, row.key, renewedKey(row.key, row.reConsent.date), &row);
    });
}

short ConsentRenewal::iDataHenkeiDouiMake(const PatientKey &patient, qint32 nDate, const Period &period,
                                          const ReadRow *seen) {
    return run(patient, u"iDataHenkeiDouiMake() でエラー", [&](RecordWrite &write) -> Step {
        if (const QString reason = periodRefusal(period); !reason.isEmpty())
            return reason;
        if (seen) {
            const Result<RenewalSource> now = readSource(write, seen->key);
            if (!now)
                return Failure{now.reason()};
            if (now->rows == 0 || !isUnchanged(now->read, *seen))
                return now->rows == 0 ? sourceGone() : changedMeanwhile();
        }
        const Result<qint64> restarted =
            write.change(seen ? sqlOfRow(seen->key) : sqlOfDate(patient, nDate), restartedColumns(period));
        if (!restarted)
            return Failure{restarted.reason()};
        return *restarted == 0 ? sourceGone() : markNewest(write, patient);
    });
}

short ConsentRenewal::setDouiNewestFlg(const PatientKey &patient) {
    return run(patient, u"setDouiNewestFlg() でエラー",
               [&](RecordWrite &write) { return markNewest(write, patient); });
}

short ConsentRenewal::run(const PatientKey &patient, QStringView label,
                          const std::function<Step(RecordWrite &)> &work) {
    m_label = label;
    RecordWrite write(m_db);
    Step step = QString();
    if (const Result<> locked = write.lock({patient}); locked)
        step = work(write);
    else
        step = Failure{locked.reason()};
    m_refused = step && !step->isEmpty();
    if (step && !m_refused)
        if (const Result<> committed = write.commit(); !committed)
            step = Failure{committed.reason()};
    m_error = step ? *step : step.reason() + u"\r\n"_s + m_label.toString();
    return m_error.isEmpty() ? short(0) : short(-1);
}

ConsentRenewal::Step ConsentRenewal::copyRow(RecordWrite &write, const ConsentRowKey &source,
                                             const ConsentRowKey &target, const RenewalRow *seen) {
    const Result<RenewalSource> found = readSource(write, source);
    if (!found)
        return Failure{found.reason()};
    const RenewalSource &now = *found;
    if (now.rows == 0)
        return sourceGone();
    if (now.rows > 1)
        return u"同じ日付の同意が複数あるため、更新できません。"_s;
    if (const QString reason = renewalRefusal(now.row, target); !reason.isEmpty())
        return reason;
    if (seen)
        if (const Step refusal = seenRefusal(write, now, *seen, target); !refusal || !refusal->isEmpty())
            return refusal;

    if (const Result<qint64> replaced = write.remove(sqlOfRow(target)); !replaced)
        return Failure{replaced.reason()};
    if (const Result<> copied =
            write.insertCopy(sqlOfRow(source), renewedColumns(source, target, now.columns));
        !copied)
        return Failure{copied.reason()};
    return markNewest(write, source.patient);
}

ConsentRenewal::Step ConsentRenewal::markNewest(RecordWrite &write, const PatientKey &patient) {
    m_label = u"setDouiNewestFlg() でエラー";
    const Result<NewestRows> marked = write.markNewest(patient);
    return marked ? Step(QString()) : Failure{marked.reason()};
}
