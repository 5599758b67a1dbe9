#include "consent/record/row_change.h"

#include "consent/record/renewal.h"
#include "consent/record/renewal_query.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// A connection that was lost opens anew; where it does not, the transaction fails and says why.
cT_ADODB &connected(cT_ADODB &db) {
    db.iConnect();
    return db;
}

} // namespace

RowChange::RowChange(cT_ADODB &db, const PatientKey &patient)
    : m_db(db),
      m_patient(patient),
      m_errors(db),
      m_transaction(connected(db)),
      m_ready(m_transaction.begun() && db.iExecSQL(sqlLockPatient(patient)) == 0) {}

RowOutcome RowChange::find(const ConsentDraft &seen, Compared columns, ConsentDraft &now) {
    cT_RIYOUSHA_DOUI_REC table;
    table.iInit(m_db);
    if (table.iDataRead(seen.key()) != 0)
        return failed(u"iGetDouiData() でエラー"_s);
    if (table.nデータ数() == 0)
        return {RowOutcome::Overtaken,
                u"この同意は、他の端末で削除されたか日付が変更されています。\r\n何も変更していません。"_s};
    now = *table.clsRIYOUSHA_DOUI_REC(0);
    if (!sameValues(now, seen, columns))
        return {RowOutcome::Overtaken, u"この同意は、表示した後に他の端末で変更されています。\r\n"
                                       "何も変更していません。画面を開き直してください。"_s};
    return {};
}

RowOutcome RowChange::finish() {
    ConsentRenewal marks(m_db);
    if (marks.setDouiNewestFlg(m_patient, ConsentRenewal::Scope::CallersTransaction) != 0)
        return {RowOutcome::Failed, marks.sErrMsg()};
    return commit();
}

RowOutcome RowChange::commit() {
    return m_transaction.commit() == 0 ? RowOutcome() : failed(u"データを確定できません。"_s);
}

RowOutcome RowChange::failed(const QString &label, const QString &title, const QString &otherwise) const {
    const QString reason = m_errors.text();
    return {RowOutcome::Failed, (reason.isEmpty() ? otherwise : reason) + u"\r\n"_s + label, title};
}
