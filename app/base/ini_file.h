#pragma once

#include "app/base/result.h"

#include <QByteArray>
#include <QString>

/// Reader and writer of one initialisation file in code page 932, after the rules of the
/// platform's private-profile interface. A write changes only its own line. The file is read anew at every
/// call, so that a change by another program is seen.
class clsOplIniFile {
public:
    /// Binds the object to a file. 0, or −1 with sErrMsg when the path is empty or there is no such file; a
    /// missing file stays bound, and the first write makes it.
    short iInit(const QString &path);

    /// Whether the file can be read. The reason of iInit where there is none.
    Result<> readable() const;

    /// The value as a 32-bit integer; the fallback when absent or empty.
    qint32 nGetProfileLong(const QString &section, const QString &key, qint32 fallback = 0) const;

    /// The value as text, at most 255 bytes of code page 932, cut at the first NUL, without trailing blanks;
    /// the fallback when absent.
    QString csGetProfileString(const QString &section, const QString &key,
                               const QString &fallback = {}) const;

    /// Writes the value; a missing file, section or key is added. 0, or −1 with sErrMsg. Names and values
    /// that would be read back as something else (line breaks, a key with "=") are refused.
    short iWriteProfileString(const QString &section, const QString &key, const QString &value);

    /// Removes a key, or the whole section when the key is null. 0 also when it was not there.
    short iRemove(const QString &section, const QString &key = {});

    /// Whether the last write had to replace characters that code page 932 lacks.
    bool touched() const { return m_touched; }

    const QString &sErrMsg() const { return m_error; }
    const QString &path() const { return m_path; }

private:
    short fail(const QString &reason);
    Result<QByteArray> bytesForChange() const;
    short write(const QByteArray &bytes);

    QString m_path;
    QString m_error;
    bool m_touched = false;
};
