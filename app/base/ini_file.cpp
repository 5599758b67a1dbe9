#include "app/base/ini_file.h"

#include "app/base/file_write.h"
#include "app/base/profile_text.h"
#include "app/base/text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Of the interface's buffer of 256 bytes the last holds the closing NUL.
constexpr qsizetype longestValue = 255;

QByteArray bytesOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool hasLineBreak(const QString &text) {
    return text.contains(u'\r') || text.contains(u'\n') || text.contains(QChar::Null);
}

/// A name that is found again under the same name: reading strips tabs from the file's names, but not from
/// those that are asked for.
bool isName(const QString &name) {
    static const QString blanks = u" \t\v"_s;
    const QString inner = QString(name).remove(u' ');
    return !inner.isEmpty() && !hasLineBreak(name) && !blanks.contains(inner.front()) &&
           !blanks.contains(inner.back());
}

bool isWritableSection(const QString &section) {
    return isName(section) && !section.contains(u']');
}

bool isWritableKey(const QString &key) {
    const QString start = QString(key).remove(u' ').left(1);
    return isName(key) && start != u";" && start != u"[" && !key.contains(u'=');
}

} // namespace

short clsOplIniFile::fail(const QString &reason) {
    m_error = reason;
    return -1;
}

short clsOplIniFile::iInit(const QString &path) {
    m_path = path;
    m_error.clear();
    if (path.isEmpty())
        return fail(u"Iniファイル名を指定してください。"_s);
    if (!QFileInfo(path).isFile())
        return fail(u"指定されたIni（"_s + path + u"）ファイルが見つかりません。"_s);
    return 0;
}

qint32 clsOplIniFile::nGetProfileLong(const QString &section, const QString &key, qint32 fallback) const {
    const QString value = csGetProfileString(section, key);
    return value.isEmpty() ? fallback : profile::number(value);
}

QString clsOplIniFile::csGetProfileString(const QString &section, const QString &key,
                                          const QString &fallback) const {
    const auto value = profile::value(bytesOf(m_path), section, key);
    return value ? trimRight(cutAtNul(cutToBytes932(*value, longestValue))) : fallback;
}

short clsOplIniFile::iWriteProfileString(const QString &section, const QString &key, const QString &value) {
    m_error.clear();
    m_touched = false;
    if (!isWritableSection(section) || !isWritableKey(key))
        return fail(u"「%1」の項目名［%2］%3が正しくありません。"_s.arg(m_path, section, key));
    if (hasLineBreak(value))
        return fail(u"「%1」の項目［%2］%3の値に改行は使えません。"_s.arg(m_path, section, key));
    QByteArray bytes;
    if (!readForChange(bytes))
        return -1;
    const profile::Edited edited = profile::withValue(bytes, section, key, value);
    m_touched = edited.touched;
    return write(edited.bytes);
}

short clsOplIniFile::iRemove(const QString &section, const QString &key) {
    m_error.clear();
    QByteArray bytes;
    if (!readForChange(bytes))
        return -1;
    const QByteArray edited =
        key.isNull() ? profile::withoutSection(bytes, section) : profile::withoutKey(bytes, section, key);
    return edited == bytes ? short(0) : write(edited);
}

/// A file that is there and cannot be read must not be written over.
bool clsOplIniFile::readForChange(QByteArray &bytes) {
    if (m_path.isEmpty()) {
        fail(u"Iniファイル名を指定してください。"_s);
        return false;
    }
    if (!QFileInfo(m_path).isFile())
        return true;
    QFile file(m_path);
    if (file.open(QIODevice::ReadOnly)) {
        bytes = file.readAll();
        if (file.error() == QFileDevice::NoError)
            return true;
    }
    fail(u"「%1」を読めません。\r\n"_s.arg(QDir::toNativeSeparators(m_path)) + file.errorString());
    return false;
}

short clsOplIniFile::write(const QByteArray &bytes) {
    const Result<> written = writeFileWhole(m_path, bytes);
    return written ? short(0) : fail(written.reason());
}
