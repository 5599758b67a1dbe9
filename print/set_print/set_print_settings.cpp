#include "print/set_print/set_print_settings.h"

#include "app/base/folders.h"

#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

const QList<SettingsSwitch<SetPrintSettings>> documentSwitches{
    {u"同意書"_s, &SetPrintSettings::consentForms},
    {u"同意依頼書"_s, &SetPrintSettings::requestLetters},
    {u"封筒"_s, &SetPrintSettings::envelopes},
    {u"封筒角2"_s, &SetPrintSettings::largeEnvelopes},
    {u"経過報告書"_s, &SetPrintSettings::progressReports},
    {u"ユーザー定義用紙"_s, &SetPrintSettings::customPaper},
    {u"プレビュー"_s, &SetPrintSettings::preview}};

SettingsSection setPrintSection(const Folders &folders) {
    return {folders, u"setprintdoui.ini"_s, u"セット印刷"_s};
}

} // namespace

void SetPrintSettings::read(const Folders &folders, const FormContents &printing) {
    static_cast<FormContents &>(*this) = printing;
    const SettingsSection section = setPrintSection(folders);
    FormContents::read(section);
    readSwitches(section, documentSwitches, *this);
}

Result<> SetPrintSettings::write(const Folders &folders) const {
    return setPrintSection(folders).write(switchEntries(documentSwitches, *this) + entries());
}

int progressReportKind(const Folders &folders) {
    return SettingsSection(folders, u"印刷設定.ini"_s, u"同意記録管理"_s).number(u"施術経過報告書帳票種類"_s);
}

bool hasNippouIni(const Folders &folders) {
    return QFileInfo(Folders::file(folders.data(), u"nippou.ini"_s)).isFile();
}
