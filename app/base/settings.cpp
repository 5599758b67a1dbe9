#include "app/base/settings.h"

#include "app/base/folders.h"
#include "app/base/profile_text.h"

#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Place {
    QString file, section, key, fallback;
};

Place placeOf(Setting setting) {
    const QString patients = u"患者管理設定.ini"_s;
    const QString consents = u"同意記録"_s;
    const QString list = u"同意書管理"_s;
    const QString printing = u"印刷設定.ini"_s;
    const QString letters = u"同意依頼書"_s;
    switch (setting) {
    case Setting::変形連動:
        return {patients, consents, u"変形連動"_s, u"0"_s};
    case Setting::祝日考慮:
        return {patients, consents, u"祝日考慮"_s, u"0"_s};
    case Setting::前回取得日連動:
        return {patients, consents, u"前回取得日連動"_s, u"0"_s};
    case Setting::同意書自動計算デフォルト:
        return {patients, consents, u"同意書自動計算デフォルト"_s, u""_s};
    case Setting::一覧並び順:
        return {patients, list, u"一覧並び順"_s, u"0"_s};
    case Setting::利用者並び順:
        return {patients, list, u"利用者並び順"_s, u"0"_s};
    case Setting::利用者登録:
        return {patients, u"マスタ管理"_s, u"利用者登録"_s, u""_s};
    case Setting::依頼書出力方式:
        return {printing, letters, u"出力方式"_s, u"0"_s};
    case Setting::施術者氏名の印字:
        return {printing, letters, u"施術者氏名の印字"_s, u"1"_s};
    case Setting::保管月数:
        return {u"douisho.ini"_s, u"保管"_s, u"保管月数"_s, u"60"_s};
    case Setting::施術者氏名選択:
        return {printing, letters, u"施術者氏名選択"_s, u"0"_s};
    }
    Q_UNREACHABLE();
}

SettingsSection sectionOf(const Folders &folders, const Place &place) {
    return {folders, place.file, place.section};
}

} // namespace

SettingsSection::SettingsSection(const Folders &folders, const QString &file, const QString &section)
    : m_section(section) {
    m_ini.iInit(Folders::file(folders.data(), file)); // a missing file is bound all the same
}

bool SettingsSection::isNotMadeYet() const {
    const QFileInfo file(path());
    return !file.exists() && QFileInfo(file.path()).isDir();
}

Result<> SettingsSection::write(const SettingsEntries &entries) {
    for (const auto &[key, value] : entries)
        if (m_ini.iWriteProfileString(m_section, key, value) != 0)
            return Failure{m_ini.sErrMsg()};
    return {};
}

Result<> Settings::readable(Setting setting) const {
    const SettingsSection section = sectionOf(m_folders, placeOf(setting));
    return section.isNotMadeYet() ? Result<>() : section.readable();
}

QString Settings::text(Setting setting) const {
    const Place place = placeOf(setting);
    return sectionOf(m_folders, place).text(place.key, place.fallback);
}

qint32 Settings::number(Setting setting) const {
    return profile::number(text(setting));
}

short Settings::iWrite(Setting setting, const QString &value) {
    const Place place = placeOf(setting);
    const Result<> written = sectionOf(m_folders, place).write({{place.key, value}});
    m_error = written.reason();
    return written ? 0 : -1;
}

QString programVersion(const Folders &folders) {
    clsOplIniFile ini;
    if (ini.iInit(Folders::file(folders.program(), u"Version.ini"_s)) != 0)
        return ini.sErrMsg();
    const QString version = ini.csGetProfileString(u"Version"_s, u"Version"_s);
    return version.isEmpty() ? u"Version.iniにバージョンの記載がありません。"_s : version;
}
