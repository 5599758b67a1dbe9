#include "print/consent_form/print_settings.h"

#include "app/base/dates.h"
#include "app/base/folders.h"
#include "app/base/typed_dates.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString printFile = u"印刷設定.ini"_s;
const QString patientFile = u"患者管理設定.ini"_s;
const QString formSection = u"同意書"_s;
const QString recordSection = u"同意記録"_s;
const QString entrySection = u"ENTRY"_s;
const QString submissionFlagKey = u"提出日付"_s; ///< 1 or 0, which others read
const QString submissionDayKey = u"提出年月日"_s;
const QString oralSaitamaKey = u"埼玉口頭同意"_s;

const QList<SettingsSwitch<FormContents>> contentSwitches{
    {u"施術内容出力"_s, &FormContents::treatmentContent},
    {u"同意医師欄出力"_s, &FormContents::doctorBlock},
    {u"同意書式設定を参照しない"_s, &FormContents::ignoreLayoutSettings},
    {u"印刷会社情報"_s, &FormContents::company},
    {u"利用者個別設定"_s, &FormContents::patientSettings}};

} // namespace

void FormContents::read(const SettingsSection &section) {
    style = section.choice(u"出力様式"_s, style, FormStyle::Again);
    oral = section.choice(u"出力様式2"_s, oral, OralForms::OwnLayout);
    readSwitches(section, contentSwitches, *this);
}

SettingsEntries FormContents::entries() const {
    // The fixed layouts are a setting of the suite, not of a screen.
    const OralForms choice = oral == OralForms::Saitama ? OralForms::OwnLayout : oral;
    return SettingsEntries{{u"出力様式"_s, storedChoice(style)}, {u"出力様式2"_s, storedChoice(choice)}} +
           switchEntries(contentSwitches, *this);
}

void FormContents::applyTo(ConsentFormOptions &options) const {
    options.style = style;
    options.oral = oral;
    options.treatmentContent = treatmentContent;
    options.doctorBlock = doctorBlock;
    options.ignoreLayoutSettings = ignoreLayoutSettings;
    options.patientSettings = patientSettings;
    if (!company)
        options.company.reset();
}

Result<> ConsentPrintSettings::read(const Folders &folders) {
    const SettingsSection section(folders, printFile, formSection);
    if (const Result<> readable = section.readable(); !readable)
        return readable;
    kind = section.choice(u"施術区分"_s, kind, TreatmentKind::All);
    order = section.choice(u"ソート順"_s, order, FormOrder::PeriodEnd);
    FormContents::read(section);
    patient = section.number(u"利用者ID"_s, patient);
    submissionDate = section.isOn(submissionFlagKey, submissionDate);
    submitted = dateFromInput(section.text(submissionDayKey));
    return {};
}

Result<> ConsentPrintSettings::write(const Folders &folders) const {
    const FormOrder storedOrder = order == FormOrder::AsChosen ? FormOrder::Number : order;
    const SettingsEntries choices{{u"施術区分"_s, storedChoice(kind)},
                                  {u"ソート順"_s, storedChoice(storedOrder)},
                                  {u"医師個別設定"_s, storedChoice(doctorSettings)},
                                  {u"利用者ID"_s, patient == 0 ? QString() : QString::number(patient)},
                                  {submissionFlagKey, storedChoice(submissionDate)},
                                  {submissionDayKey, dateText(submitted)}};
    return SettingsSection(folders, printFile, formSection).write(choices + entries());
}

Result<> keepSubmissionSwitch(const Folders &folders, bool on) {
    return SettingsSection(folders, printFile, formSection).write({{submissionFlagKey, storedChoice(on)}});
}

void ConsentPrintSettings::applyTo(ConsentFormOptions &options) const {
    FormContents::applyTo(options);
    options.kind = kind;
    options.order = order;
    options.doctorSettings = doctorSettings;
    options.submitted = submissionDate ? submitted : QDate();
}

Result<> PatientManagementSettings::read(const Folders &folders) {
    const SettingsSection entry(folders, patientFile, entrySection);
    if (const Result<> readable = entry.readable(); !readable)
        return readable;
    const SettingsSection record(folders, patientFile, recordSection);
    niigata = entry.isOn(u"新潟対応"_s, false);
    oralSaitama = entry.isOn(oralSaitamaKey, false) || record.isOn(oralSaitamaKey, false);
    consentRecord = entry.isOn(u"同意記録"_s, false);
    company = record.number(u"同意印刷本社No"_s, 0);
    return {};
}

Result<> PatientManagementSettings::writeOralSaitama(const Folders &folders, bool on) const {
    for (const QString &section : {entrySection, recordSection})
        if (const Result<> written =
                SettingsSection(folders, patientFile, section).write({{oralSaitamaKey, storedChoice(on)}});
            !written)
            return written;
    return {};
}
