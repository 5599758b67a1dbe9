#pragma once

#include "app/base/ini_file.h"

#include <QList>
#include <utility>

class Folders;

/// What is written to a section: keys and their values.
using SettingsEntries = QList<std::pair<QString, QString>>;

/// One section of a settings file in the data folder. Every call goes to the file: colleagues write it too.
class SettingsSection {
public:
    SettingsSection(const Folders &folders, const QString &file, const QString &section);

    /// Whether the file can be read, with a reason that names it; without it every key has its fallback.
    Result<> readable() const { return m_ini.readable(); }
    /// Nobody has made the file yet, though the folder for it is there.
    bool isNotMadeYet() const;

    QString text(const QString &key, const QString &fallback = {}) const {
        return m_ini.csGetProfileString(m_section, key, fallback);
    }
    /// The number at the front of the text, 0 when it begins with none.
    qint32 number(const QString &key, qint32 fallback = 0) const {
        return m_ini.nGetProfileLong(m_section, key, fallback);
    }
    bool isOn(const QString &key, bool fallback = false) const { return number(key, fallback ? 1 : 0) != 0; }
    /// A stored number that is none of the choice's gives the fallback.
    template <class Choice> Choice choice(const QString &key, Choice fallback, Choice last) const {
        const qint32 stored = number(key, qint32(fallback));
        return stored < 0 || stored > qint32(last) ? fallback : Choice(stored);
    }

    /// Keys and their values; a missing file is made. What was written before a failure stays.
    Result<> write(const SettingsEntries &entries);

    const QString &path() const { return m_ini.path(); }

private:
    QString m_section;
    clsOplIniFile m_ini;
};

/// A choice as it is stored: the number of an enumeration, 1 or 0 for a yes or no.
template <class Choice> QString storedChoice(Choice choice) {
    return QString::number(int(choice));
}

/// A yes or no of a screen's settings and the key under which it is kept.
template <class Choices> struct SettingsSwitch {
    QString key;
    bool Choices::*flag;
};

/// Reads the switches; what is not stored stays as it is.
template <class Choices>
void readSwitches(const SettingsSection &section, const QList<SettingsSwitch<Choices>> &switches,
                  Choices &settings) {
    for (const auto &[key, flag] : switches)
        settings.*flag = section.isOn(key, settings.*flag);
}

template <class Choices>
SettingsEntries switchEntries(const QList<SettingsSwitch<Choices>> &switches, const Choices &settings) {
    SettingsEntries entries;
    for (const auto &[key, flag] : switches)
        entries.append({key, storedChoice(settings.*flag)});
    return entries;
}

/// The settings that several screens share, with file, section, key and default in one table.
enum class Setting {
    変形連動,                 ///< consent periods linked to the deformity treatment period
    祝日考慮,                 ///< a period does not start on a Sunday or holiday
    前回取得日連動,           ///< the new consent date follows the one obtained before
    同意書自動計算デフォルト, ///< three calculation types joined with ","
    一覧並び順,               ///< order of the consent list
    利用者並び順,             ///< order of the patients in it
    利用者登録,       ///< whether patients, counsellors and staff are entered here; empty: by the database
    依頼書出力方式,   ///< 0 a letter a patient, 1 one letter for the patients of a doctor
    施術者氏名の印字, ///< the practitioner's name on request letters
    保管月数,         ///< how long what was sent is kept, in months; 0: for ever
    施術者氏名選択,   ///< whose: 0 the responsible one, 1 to 4 the patient's others
};

/// Reads and writes them.
class Settings {
public:
    explicit Settings(const Folders &folders) : m_folders(folders) {}

    /// Whether what is stored can be read. A file that was never made is no failure: the defaults hold.
    Result<> readable(Setting setting) const;

    /// The stored text, or the setting's default when there is none or it cannot be read.
    QString text(Setting setting) const;
    /// The number at the front of the text; 0 when it begins with none.
    qint32 number(Setting setting) const;
    bool isOn(Setting setting) const { return number(setting) != 0; }

    /// Stores; a missing file is made. 0, or −1 with sErrMsg.
    short iWrite(Setting setting, const QString &value);
    short iWrite(Setting setting, qint32 value) { return iWrite(setting, QString::number(value)); }
    /// Stores "1" or "0".
    short iSwitch(Setting setting, bool on) { return iWrite(setting, on ? 1 : 0); }

    const QString &sErrMsg() const { return m_error; }

private:
    const Folders &m_folders;
    QString m_error;
};

/// The version text, key Version in section Version of Version.ini in the program folder; without it, a
/// sentence that says what is missing.
QString programVersion(const Folders &folders);
