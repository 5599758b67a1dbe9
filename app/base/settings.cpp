#include "app/base/settings.h"

#include "app/base/folders.h"
#include "app/base/ini_file.h"
#include "app/base/profile_text.h"

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
    case Setting::依頼書出力方式:
        return {printing, letters, u"出力方式"_s, u"0"_s};
    case Setting::施術者氏名の印字:
        return {printing, letters, u"施術者氏名の印字"_s, u"1"_s};
    case Setting::施術者氏名選択:
        return {printing, letters, u"施術者氏名選択"_s, u"0"_s};
    }
    Q_UNREACHABLE();
}

} // namespace

QString Settings::path(Setting setting) const {
    return Folders::file(m_folders.data(), placeOf(setting).file);
}

QString Settings::text(Setting setting) const {
    const Place place = placeOf(setting);
    clsOplIniFile ini;
    if (ini.iInit(path(setting)) != 0)
        return place.fallback;
    return ini.csGetProfileString(place.section, place.key, place.fallback);
}

qint32 Settings::number(Setting setting) const {
    return profile::number(text(setting));
}

short Settings::iWrite(Setting setting, const QString &value) {
    const Place place = placeOf(setting);
    clsOplIniFile ini;
    ini.iInit(path(setting)); // a missing file is bound all the same, and made
    const short status = ini.iWriteProfileString(place.section, place.key, value);
    m_error = ini.sErrMsg();
    return status;
}
