#pragma once

#include <QString>

class Folders;

/// The settings that all users of a data folder share, with file, section, key and default in one table.
enum class Setting {
    変形連動,                 ///< consent periods linked to the deformity treatment period
    祝日考慮,                 ///< a period does not start on a Sunday or holiday
    前回取得日連動,           ///< the new consent date follows the one obtained before
    同意書自動計算デフォルト, ///< three calculation types joined with ","
    一覧並び順,               ///< order of the consent list
    利用者並び順,             ///< order of the patients in it
    依頼書出力方式,           ///< 0 a letter a patient, 1 one letter for the patients of a doctor
    施術者氏名の印字,         ///< the practitioner's name on request letters
    施術者氏名選択,           ///< whose: 0 the responsible one, 1 to 4 the patient's others
};

/// Reads and writes settings in the data folder. Every call goes to the file: colleagues write it too.
class Settings {
public:
    explicit Settings(const Folders &folders) : m_folders(folders) {}

    /// The stored text, or the setting's default when file or key is missing.
    QString text(Setting setting) const;
    /// The number at the front of the text; 0 when it begins with none.
    qint32 number(Setting setting) const;
    bool isOn(Setting setting) const { return number(setting) != 0; }

    /// Stores; a missing file is made. 0, or −1 with sErrMsg.
    short iWrite(Setting setting, const QString &value);
    short iWrite(Setting setting, qint32 value) { return iWrite(setting, QString::number(value)); }
    /// Stores "1" or "0".
    short iSwitch(Setting setting, bool on) { return iWrite(setting, on ? 1 : 0); }

    /// Full path of the file that holds the setting, for messages.
    QString path(Setting setting) const;
    const QString &sErrMsg() const { return m_error; }

private:
    const Folders &m_folders;
    QString m_error;
};
