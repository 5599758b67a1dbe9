#pragma once

#include <QString>

/// Reader and writer of one initialisation file in code page 932, after the rules of the
/// platform's private-profile interface. A write changes only its own line.
class clsOplIniFile {
public:
    /// Binds the object to a file. 0, or −1 with sErrMsg when the path is empty or there is no such file.
    short iInit(const QString &path);

    /// The value as a 32-bit integer, 0 when absent.
    qint32 nGetProfileLong(const QString &section, const QString &key) const;

    /// The value as text, at most 255 bytes of code page 932, without trailing blanks; empty when absent.
    QString csGetProfileString(const QString &section, const QString &key) const;

    /// Writes the value; a missing section or key is added. 0, or −1 with sErrMsg.
    short iWriteProfileString(const QString &section, const QString &key, const QString &value);

    /// Removes a key, or the whole section when the key is null. 0 also when it was not there.
    short iRemove(const QString &section, const QString &key = {});

    const QString &sErrMsg() const { return m_error; }
    const QString &path() const { return m_path; }

private:
    QString m_path;
    QString m_error;
};
