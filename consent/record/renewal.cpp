#include "consent/record/renewal.h"

#include "app/base/dates.h"
#include "consent/record/renewal_query.h"
#include "db/adodb.h"

#include <optional>

using namespace Qt::Literals::StringLiterals;

short ConsentRenewal::iDataNewDouiMake(const PatientKey &patient, qint32 nDate, const QDate &newDate,
                                       Scope scope) {
    const ConsentRowKey source{patient, nDate, 0, 0};
    return run(scope, u"iDataNewDouiMake() でエラー",
               [&] { return copyRow(source, renewedKey(source, newDate), nullptr); });
}

short ConsentRenewal::iDataNewHenkeiMake(const ConsentRowKey &source, const QDate &newDate,
                                         qint32 newHenkeiDouiDate, Scope scope) {
    const ConsentRowKey target{source.patient, dateKey(newDate), 1, newHenkeiDouiDate};
    return run(scope, u"iDataNewHenkeiMake() でエラー", [&] { return copyRow(source, target, nullptr); });
}

short ConsentRenewal::renew(const RenewalRow &row, Scope scope) {
    const QStringView label =
        row.key.iHenkeiFlg == 0 ? u"iDataNewDouiMake() でエラー" : u"iDataNewHenkeiMake() でエラー";
    return run(scope, label, [&] { return copyRow(row.key, renewedKey(row.key, row.reConsent.date), &row); });
}

short ConsentRenewal::iDataHenkeiDouiMake(const PatientKey &patient, qint32 nDate, const Period &period,
                                          Scope scope) {
    return run(scope, u"iDataHenkeiDouiMake() でエラー", [&] {
        if (!period.start.isValid() || !period.end.isValid())
            return refuse(u"要加療期間が入力されていません。"_s);
        if (period.end < period.start)
            return refuse(u"要加療期間の終了日が開始日より前になっています。"_s);
        qint64 affected = 0;
        const QString sql = sqlRestartHenkei(patient, nDate, period, m_db.csGetComputerName());
        if (const Step step = execute(sql, &affected); step != Step::Done)
            return step;
        return affected == 0 ? sourceGone() : markNewest(patient);
    });
}

short ConsentRenewal::setDouiNewestFlg(const PatientKey &patient, Scope scope) {
    return run(scope, u"setDouiNewestFlg() でエラー", [&] {
        const Step step = lock(patient);
        return step == Step::Done ? markNewest(patient) : step;
    });
}

short ConsentRenewal::run(Scope scope, QStringView label, const std::function<Step()> &work) {
    m_error.clear();
    m_refused = false;
    m_label = label;
    const ErrorsSince before(m_db);

    std::optional<Transaction> own;
    Step step = Step::Failed;
    if (scope == Scope::CallersTransaction || own.emplace(m_db).begun())
        step = work();
    if (step == Step::Done && own && own->commit() != 0)
        step = Step::Failed;
    if (step == Step::Failed)
        m_error = before.text() + u"\r\n"_s + m_label.toString();
    return step == Step::Done ? short(0) : short(-1);
}

ConsentRenewal::Step ConsentRenewal::copyRow(const ConsentRowKey &source, const ConsentRowKey &target,
                                             const RenewalRow *seen) {
    if (const Step step = lock(source.patient); step != Step::Done)
        return step;
    Recordset rows;
    if (m_db.iOpenRecSet(rows, sqlRenewalSource(source)) != 0)
        return Step::Failed;
    if (rows.rowCount() == 0)
        return sourceGone();
    if (rows.rowCount() > 1)
        return refuse(u"同じ日付の同意が複数あるため、更新できません。"_s);

    ReConsentColumns columns = ReConsentColumns::Own;
    const RenewalRow now = sourceRow(rows, source, columns);
    if (const QString reason = renewalRefusal(now, target); !reason.isEmpty())
        return refuse(reason);
    if (seen)
        if (const Step step = checkSeen(now, *seen, target); step != Step::Done)
            return step;

    if (const Step step = execute(sqlDeleteTarget(target)); step != Step::Done)
        return step;
    const QString copy = sqlRenewedCopy(source, target, columns, m_db.csGetComputerName());
    if (const Step step = execute(copy); step != Step::Done)
        return step;
    return markNewest(source.patient);
}

// Under the patient's lock, so that of two programs that renew the same row the second finds it done.
ConsentRenewal::Step ConsentRenewal::checkSeen(const RenewalRow &now, const RenewalRow &seen,
                                               const ConsentRowKey &target) {
    if (seen.newest && !now.newest)
        return refuse(u"この同意は、すでに新しい同意に更新されています。"_s);
    if (now.newest != seen.newest || now.reConsent != seen.reConsent)
        return refuse(u"他のＰＣで再同意の内容が変更されています。一覧を読み直してください。"_s);
    if (now.newest)
        return Step::Done;
    // A row of the history keeps its answer. Renewing it again would throw its successor away.
    Recordset rows;
    if (m_db.iOpenRecSet(rows, sqlCountTarget(target)) != 0)
        return Step::Failed;
    return rows.number(0, 0) > 0 ? refuse(u"この同意は、すでに新しい同意に更新されています。"_s) : Step::Done;
}

ConsentRenewal::Step ConsentRenewal::lock(const PatientKey &patient) {
    return execute(sqlLockPatient(patient));
}

ConsentRenewal::Step ConsentRenewal::execute(const QString &sql, qint64 *affected) {
    return m_db.iExecSQL(sql, affected) == 0 ? Step::Done : Step::Failed;
}

ConsentRenewal::Step ConsentRenewal::markNewest(const PatientKey &patient) {
    m_label = u"setDouiNewestFlg() でエラー";
    const Step massage = markNewestOf(patient, 0);
    return massage == Step::Done ? markNewestOf(patient, 1) : massage;
}

ConsentRenewal::Step ConsentRenewal::markNewestOf(const PatientKey &patient, short iHenkeiFlg) {
    Recordset rows;
    if (m_db.iOpenRecSet(rows, sqlFindNewest(patient, iHenkeiFlg)) != 0)
        return Step::Failed;
    ConsentRowKey newest;
    if (!newestRow(rows, patient, iHenkeiFlg, newest))
        return Step::Done;
    const QString computer = m_db.csGetComputerName();
    const Step cleared = execute(sqlClearNewest(newest, computer));
    return cleared == Step::Done ? execute(sqlMarkNewest(newest, computer)) : cleared;
}

ConsentRenewal::Step ConsentRenewal::refuse(const QString &reason) {
    m_error = reason;
    m_refused = true;
    return Step::Refused;
}

ConsentRenewal::Step ConsentRenewal::sourceGone() {
    return refuse(u"RIYOUSHA_DOUI_REC元データ取得時にエラーが発生しました。"_s);
}
