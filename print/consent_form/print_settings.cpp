#include "print/consent_form/print_settings.h"

#include "app/base/dates.h"
#include "app/base/folders.h"
#include "app/base/settings.h"

#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString printFile = u"印刷設定.ini"_s;
const QString patientFile = u"患者管理設定.ini"_s;
const QString setPrintFile = u"setprintdoui.ini"_s;
const QString formSection = u"同意書"_s;
const QString recordSection = u"同意記録"_s;
const QString entrySection = u"ENTRY"_s;
const QString setPrintSection = u"セット印刷"_s;
const QString submissionFlagKey = u"提出日付"_s; ///< 1 or 0, which others read
const QString submissionDayKey = u"提出年月日"_s;
const QString oralSaitamaKey = u"埼玉口頭同意"_s;

using Entries = QList<std::pair<QString, QString>>;

QString stored(bool flag) {
    return flag ? u"1"_s : u"0"_s;
}

template <class Choice> QString stored(Choice choice) {
    return QString::number(int(choice));
}

/// Where a switch of the settings is kept.
template <class Choices> struct Switch {
    QString key;
    bool Choices::*flag;
};

const QList<Switch<ConsentPrintSettings>> printSwitches{
    {u"施術内容出力"_s, &ConsentPrintSettings::treatmentContent},
    {u"同意医師欄出力"_s, &ConsentPrintSettings::doctorBlock},
    {u"同意書式設定を参照しない"_s, &ConsentPrintSettings::ignoreLayoutSettings},
    {u"印刷会社情報"_s, &ConsentPrintSettings::company},
    {u"利用者個別設定"_s, &ConsentPrintSettings::patientSettings}};

const QList<Switch<SetPrintSettings>> setPrintSwitches{
    {u"同意書"_s, &SetPrintSettings::consentForms},
    {u"同意依頼書"_s, &SetPrintSettings::requestLetters},
    {u"封筒"_s, &SetPrintSettings::envelopes},
    {u"封筒角2"_s, &SetPrintSettings::largeEnvelopes},
    {u"経過報告書"_s, &SetPrintSettings::progressReports},
    {u"施術内容出力"_s, &SetPrintSettings::treatmentContent},
    {u"同意医師欄出力"_s, &SetPrintSettings::doctorBlock},
    {u"印刷会社情報"_s, &SetPrintSettings::company},
    {u"利用者個別設定"_s, &SetPrintSettings::patientSettings},
    {u"同意書式設定を参照しない"_s, &SetPrintSettings::ignoreLayoutSettings},
    {u"ユーザー定義用紙"_s, &SetPrintSettings::customPaper},
    {u"プレビュー"_s, &SetPrintSettings::preview}};

template <class Choices>
void readSwitches(const SettingsSection &section, const QList<Switch<Choices>> &switches, Choices &settings) {
    for (const auto &[key, flag] : switches)
        settings.*flag = section.isOn(key, settings.*flag);
}

template <class Choices>
Entries switchEntries(const QList<Switch<Choices>> &switches, const Choices &settings) {
    Entries entries;
    for (const auto &[key, flag] : switches)
        entries.append({key, stored(settings.*flag)});
    return entries;
}

} // namespace

Result<> ConsentPrintSettings::read(const Folders &folders) {
    const SettingsSection section(folders, printFile, formSection);
    if (const Result<> readable = section.readable(); !readable)
        return readable;
    kind = section.choice(u"施術区分"_s, kind, TreatmentKind::All);
    order = section.choice(u"ソート順"_s, order, FormOrder::PeriodEnd);
    style = section.choice(u"出力様式"_s, style, FormStyle::Again);
    oral = section.choice(u"出力様式2"_s, oral, OralForms::OwnLayout);
    readSwitches(section, printSwitches, *this);
    patient = section.number(u"利用者ID"_s, patient);
    submissionDate = section.isOn(submissionFlagKey, submissionDate);
    submitted = dateFromInput(section.text(submissionDayKey));
    return {};
}

Result<> ConsentPrintSettings::write(const Folders &folders) const {
    // The fixed layouts are a setting of the suite, not of this screen.
    const OralForms oralChoice = oral == OralForms::Saitama ? OralForms::OwnLayout : oral;
    const FormOrder storedOrder = order == FormOrder::AsChosen ? FormOrder::Number : order;
    const Entries choices{{u"施術区分"_s, stored(kind)},
                          {u"ソート順"_s, stored(storedOrder)},
                          {u"出力様式"_s, stored(style)},
                          {u"出力様式2"_s, stored(oralChoice)},
                          {u"医師個別設定"_s, stored(doctorSettings)},
                          {u"利用者ID"_s, patient == 0 ? QString() : QString::number(patient)},
                          {submissionFlagKey, stored(submissionDate)},
                          {submissionDayKey, dateText(submitted)}};
    return SettingsSection(folders, printFile, formSection)
        .write(choices + switchEntries(printSwitches, *this));
}

void ConsentPrintSettings::applyTo(ConsentFormOptions &options) const {
    options.kind = kind;
    options.order = order;
    options.style = style;
    options.oral = oral;
    options.treatmentContent = treatmentContent;
    options.doctorBlock = doctorBlock;
    options.ignoreLayoutSettings = ignoreLayoutSettings;
    options.patientSettings = patientSettings;
    options.doctorSettings = doctorSettings;
    if (!company)
        options.company.reset();
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
                SettingsSection(folders, patientFile, section).write({{oralSaitamaKey, stored(on)}});
            !written)
            return written;
    return {};
}

void SetPrintSettings::read(const Folders &folders, const ConsentPrintSettings &printing) {
    const SettingsSection section(folders, setPrintFile, setPrintSection);
    company = printing.company;
    patientSettings = printing.patientSettings;
    ignoreLayoutSettings = printing.ignoreLayoutSettings;
    style = section.choice(u"出力様式"_s, printing.style, FormStyle::Again);
    oral = section.choice(u"出力様式2"_s, printing.oral, OralForms::OwnLayout);
    readSwitches(section, setPrintSwitches, *this);
}

Result<> SetPrintSettings::write(const Folders &folders) const {
    const Entries choices{{u"出力様式"_s, stored(style)}, {u"出力様式2"_s, stored(oral)}};
    return SettingsSection(folders, setPrintFile, setPrintSection)
        .write(choices + switchEntries(setPrintSwitches, *this));
}

void SetPrintSettings::applyTo(ConsentPrintSettings &form) const {
    form.style = style;
    form.oral = oral;
    form.treatmentContent = treatmentContent;
    form.doctorBlock = doctorBlock;
    form.company = company;
    form.patientSettings = patientSettings;
    form.ignoreLayoutSettings = ignoreLayoutSettings;
}

int progressReportKind(const Folders &folders) {
    return SettingsSection(folders, printFile, u"同意記録管理"_s).number(u"施術経過報告書帳票種類"_s);
}

bool hasNippouIni(const Folders &folders) {
    return QFileInfo(Folders::file(folders.data(), u"nippou.ini"_s)).isFile();
}
