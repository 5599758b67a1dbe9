#include "print/consent_form/print_settings.h"

#include "app/base/dates.h"
#include "app/base/folders.h"
#include "app/base/ini_file.h"

#include <QFile>
#include <QFileInfo>
#include <utility>

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

QString pathOf(const Folders &folders, const QString &file) {
    return Folders::file(folders.data(), file);
}

using Entries = QList<std::pair<QString, QString>>;

/// One section of a settings file.
class Section {
public:
    Section(const QString &path, const QString &name) : m_name(name) { m_status = m_ini.iInit(path); }

    Result<> readable() {
        if (m_status != 0)
            return Failure{m_ini.sErrMsg()};
        QFile file(m_ini.path());
        if (!file.open(QIODevice::ReadOnly))
            return Failure{u"「%1」を読み込めません。\r\n"_s.arg(m_ini.path()) + file.errorString()};
        return {};
    }
    qint32 number(const QString &key, qint32 fallback) const {
        return m_ini.nGetProfileLong(m_name, key, fallback);
    }
    QString text(const QString &key) const { return m_ini.csGetProfileString(m_name, key); }
    bool flag(const QString &key, bool fallback) const { return number(key, fallback) != 0; }
    /// A stored number that is none of the choice's keeps the fallback.
    template <class Choice> Choice choice(const QString &key, Choice fallback, Choice last) const {
        const qint32 stored = number(key, int(fallback));
        return stored < 0 || stored > int(last) ? fallback : Choice(stored);
    }

    Result<> write(const Entries &entries) {
        for (const auto &[key, value] : entries)
            if (m_ini.iWriteProfileString(m_name, key, value) != 0)
                return Failure{m_ini.sErrMsg()};
        return {};
    }

private:
    QString m_name;
    clsOplIniFile m_ini;
    short m_status;
};

QString stored(bool flag) {
    return flag ? u"1"_s : u"0"_s;
}

template <class Choice> QString stored(Choice choice) {
    return QString::number(int(choice));
}

/// Where a switch of the settings is kept.
template <class Settings> struct Switch {
    QString key;
    bool Settings::*flag;
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

template <class Settings>
void readSwitches(const Section &section, const QList<Switch<Settings>> &switches, Settings &settings) {
    for (const auto &[key, flag] : switches)
        settings.*flag = section.flag(key, settings.*flag);
}

template <class Settings>
Entries switchEntries(const QList<Switch<Settings>> &switches, const Settings &settings) {
    Entries entries;
    for (const auto &[key, flag] : switches)
        entries.append({key, stored(settings.*flag)});
    return entries;
}

} // namespace

Result<> ConsentPrintSettings::read(const Folders &folders) {
    Section section(pathOf(folders, printFile), formSection);
    if (const Result<> readable = section.readable(); !readable)
        return readable;
    kind = section.choice(u"施術区分"_s, kind, TreatmentKind::All);
    order = section.choice(u"ソート順"_s, order, FormOrder::PeriodEnd);
    style = section.choice(u"出力様式"_s, style, FormStyle::Again);
    oral = section.choice(u"出力様式2"_s, oral, OralForms::OwnLayout);
    readSwitches(section, printSwitches, *this);
    patient = section.number(u"利用者ID"_s, patient);
    submissionDate = section.flag(submissionFlagKey, submissionDate);
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
    return Section(pathOf(folders, printFile), formSection)
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
    const QString path = pathOf(folders, patientFile);
    Section entry(path, entrySection);
    if (const Result<> readable = entry.readable(); !readable)
        return readable;
    const Section record(path, recordSection);
    niigata = entry.flag(u"新潟対応"_s, false);
    oralSaitama = entry.flag(oralSaitamaKey, false) || record.flag(oralSaitamaKey, false);
    consentRecord = entry.flag(u"同意記録"_s, false);
    company = record.number(u"同意印刷本社No"_s, 0);
    return {};
}

Result<> PatientManagementSettings::writeOralSaitama(const Folders &folders, bool on) const {
    const QString path = pathOf(folders, patientFile);
    for (const QString &section : {entrySection, recordSection})
        if (const Result<> written = Section(path, section).write({{oralSaitamaKey, stored(on)}}); !written)
            return written;
    return {};
}

void SetPrintSettings::read(const Folders &folders, const ConsentPrintSettings &printing) {
    const Section section(pathOf(folders, setPrintFile), setPrintSection);
    company = printing.company;
    patientSettings = printing.patientSettings;
    ignoreLayoutSettings = printing.ignoreLayoutSettings;
    style = section.choice(u"出力様式"_s, printing.style, FormStyle::Again);
    oral = section.choice(u"出力様式2"_s, printing.oral, OralForms::OwnLayout);
    readSwitches(section, setPrintSwitches, *this);
}

Result<> SetPrintSettings::write(const Folders &folders) const {
    const Entries choices{{u"出力様式"_s, stored(style)}, {u"出力様式2"_s, stored(oral)}};
    return Section(pathOf(folders, setPrintFile), setPrintSection)
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
    return Section(pathOf(folders, printFile), u"同意記録管理"_s).number(u"施術経過報告書帳票種類"_s, 0);
}

bool hasNippouIni(const Folders &folders) {
    return QFileInfo(pathOf(folders, u"nippou.ini"_s)).isFile();
}
