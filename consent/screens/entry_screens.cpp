#include "consent/screens/entry_screens.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "consent/entry/entry_form.h"
#include "consent/entry/history_form.h"
#include "consent/entry/remark_form.h"
#include "consent/list/list_model.h"
#include "search/patient_search_form.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Shows a form that was initialised; says why when it could not be.
template <class Form> bool accepted(const ListOpening &opening, Form &form, short status) {
    if (status == 0)
        return form.exec() == QDialog::Accepted || form.isOvertaken();
    opening.environment.messages.fail(form.sErrMsg());
    // The row may be gone: the list is read again.
    return true;
}

bool openNewConsentOf(const ListOpening &opening, const PatientKey &patient) {
    frmDouiRecordEdit form(opening.environment, opening.parent);
    return accepted(opening, form, form.iInit(opening.db, patient));
}

PatientKey pickPatient(const ListOpening &opening) {
    cls患者検索 search(opening.db, opening.environment);
    if (search.iDspStart(opening.parent) != 0)
        opening.environment.messages.fail(search.CsErrStr());
    const Branch &office = opening.environment.branch;
    return {office.iKyotenCd, office.iKyotenEb, qint32(search.nSeledCD)};
}

bool hasRow(const ListOpening &opening) {
    if (opening.currentRecord >= 0)
        return true;
    opening.environment.messages.warn(u"対象者が設定されていません。"_s);
    return false;
}

ConsentRowKey currentKey(const ListOpening &opening) {
    return opening.model.records().key(opening.currentRecord);
}

} // namespace

bool openNewConsent(const ListOpening &opening) {
    if (opening.currentRecord < 0)
        return openNewConsentOfPicked(opening);
    return openNewConsentOf(opening, currentKey(opening).patient);
}

bool openNewConsentOfPicked(const ListOpening &opening) {
    const PatientKey patient = pickPatient(opening);
    return patient.nIDNo != 0 && openNewConsentOf(opening, patient);
}

bool openConsent(const ListOpening &opening) {
    if (!hasRow(opening))
        return false;
    frmDouiRecordEdit form(opening.environment, opening.parent);
    return accepted(opening, form, form.iInit(opening.db, currentKey(opening)));
}

bool openHistory(const ListOpening &opening) {
    if (!hasRow(opening))
        return false;
    frmDouiRecord form(opening.environment, opening.parent);
    if (form.iInit(opening.db, currentKey(opening).patient) != 0) {
        opening.environment.messages.fail(form.sErrMsg());
        return true; // the patient may be gone
    }
    form.goTo(currentKey(opening));
    form.exec();
    return form.isChanged();
}

bool openRemark(const ListOpening &opening) {
    if (!hasRow(opening))
        return false;
    frmEditBikouDoui form(opening.environment, opening.parent);
    return accepted(opening, form, form.iInit(opening.db, currentKey(opening)));
}
