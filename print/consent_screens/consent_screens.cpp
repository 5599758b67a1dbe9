#include "print/consent_screens/consent_screens.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "print/consent_screens/consent_screens_query.h"
#include "print/consent_screens/doctor_consent_form.h"
#include "print/consent_screens/patient_consent_form.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Says what came of storing.
void tellStored(const Result<bool> &stored, const QString &failure, Messages &messages) {
    if (!stored)
        messages.fail(failure);
    else if (!*stored)
        messages.warn(u"同意書の設定は、他の端末で変更されています。登録しませんでした。\r\n"
                      "もう一度開いて、最新の設定を確かめてから変更してください。"_s);
}

QString faultOfButton(const QString &reason) {
    return u"("_s + reason + u") btnDouiSyosikiSet_Click()でエラー"_s;
}

} // namespace

void setCompanyConsentForms(Environment &environment, cT_ADODB &db, QWidget *parent) {
    Messages &messages = environment.messages;
    const QString failed = u"同意書式設定画面：初期化エラー"_s;
    const Result<ConsentLayoutSettings> seen = readCompanyLayouts(db, environment.branch);
    if (!seen) {
        messages.fail(seen.reason(), failed);
        return;
    }
    frmDouiSubmainIshi form(environment, parent);
    if (form.iInit(db, *seen, frmDouiSubmainIshi::Company) != 0) {
        messages.fail(form.sErrMsg(), failed);
        return;
    }
    form.exec();
    if (!form.isRegistered() || form.settings().same(*seen))
        return;
    const Result<bool> stored = storeCompanyLayouts(db, environment.branch, *seen, form.settings());
    tellStored(stored, stored.reason(), messages);
}

void setPatientConsentForms(Environment &environment, cT_ADODB &db, const PatientKey &patient,
                            QWidget *parent) {
    Messages &messages = environment.messages;
    if (!messages.ask(u"内容を保存してもよろしいですか？"_s, u"保存確認"_s))
        return;
    const Result<QString> doctor = readConsentingDoctor(db, patient);
    if (!doctor) {
        messages.fail(faultOfButton(doctor.reason()));
        return;
    }
    frmDouiSubmain form(environment, parent);
    if (form.iInit(db, patient, *doctor, 1) != 0)
        return;
    form.exec();
    if (!form.isChanged())
        return;
    const Result<bool> stored = storePatientLayouts(db, patient, form.seen(), form.settings());
    tellStored(stored, faultOfButton(stored.reason()), messages);
}
