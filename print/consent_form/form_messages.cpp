#include "print/consent_form/form_messages.h"

#include "print/batch/print_messages.h"
#include "print/consent_form/form_gather.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString newLine = u"\r\n"_s;

} // namespace

Message formNotRegistered(bool acupuncture) {
    const QString kind = acupuncture ? u"鍼灸"_s : u"マッサージ"_s;
    return {kind + u"用の同意書が、登録されていません。"_s + newLine +
                u"帳票管理マスタ画面で登録してください。"_s,
            MessageIcon::Exclamation, u"同意書未登録エラー"_s};
}

Message noConsentData() {
    return {u"該当する同意書データがありません。"_s, MessageIcon::Information, {}};
}

Message noPatientData() {
    return {u"該当する患者データがありません。"_s, MessageIcon::Information, {}};
}

Message patientReadFailed(const QString &reason) {
    return {u"患者データの取得に失敗しました。"_s + newLine + reason, MessageIcon::Critical, {}};
}

Message printSettingsUnreadable(const QString &reason) {
    return {u"印刷条件の取得に失敗しました。"_s + newLine + reason, MessageIcon::Critical, {}};
}

Message nippouIniMissing() {
    return {u"iControlInitでエラー:nippou.iniが見つかりません。"_s, MessageIcon::Critical, {}};
}

Message patientsLeftOut(const std::vector<LeftOutPatient> &patients) {
    using Why = LeftOutPatient::Why;
    QString text;
    const auto add = [&](Why why, const QString &heading) {
        QStringList lines;
        for (const LeftOutPatient &patient : patients)
            if (patient.why == why)
                lines += u"%1　%2"_s.arg(patient.patient.nIDNo).arg(patient.name);
        lines.removeDuplicates();
        addMessagePart(text, heading, lines);
    };
    add(Why::NoLayout, u"同意書が登録されていないため、印刷できない利用者："_s);
    add(Why::Oral, u"口頭同意のため、同意書を印刷しない利用者："_s);
    add(Why::Followed, u"新しい同意があるか、同意が削除されたため、同意書を印刷しない利用者："_s);
    return {text, MessageIcon::Exclamation, {}};
}
