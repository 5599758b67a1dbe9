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

Result<QByteArray> bytesOf(const QString &path) {
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) {
        const QByteArray bytes = file.readAll();
        if (file.error() == QFileDevice::NoError)
            return bytes;
    }
    return Failure{u"「%1」を読めません。\r\n"_s.arg(QDir::toNativeSeparators(path)) + file.errorString()};
}

Failure notFound(const QString &path) {
    return {u"指定されたIni（"_s + QDir::toNativeSeparators(path) + u"）ファイルが見つかりません。"_s};
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
        return fail(notFound(path).reason);
    return 0;
}

Result<> clsOplIniFile::readable() const {
    if (!QFileInfo(m_path).isFile())
        return notFound(m_path);
    const Result<QByteArray> bytes = bytesOf(m_path);
    return bytes ? Result<>() : Failure{bytes.reason()};
}

qint32 clsOplIniFile::nGetProfileLong(const QString &section, const QString &key, qint32 fallback) const {
    const QString value = csGetProfileString(section, key);
    return value.isEmpty() ? fallback : profile::number(value);
}

QString clsOplIniFile::csGetProfileString(const QString &section, const QString &key,
                                          const QString &fallback) const {
    const Result<QByteArray> bytes = bytesOf(m_path);
    const auto value = bytes ? profile::value(*bytes, section, key) : std::nullopt;
    return value ? trimRight(cutAtNul(cutToBytes932(*value, longestValue))) : fallback;
}

short clsOplIniFile::iWriteProfileString(const QString &section, const QString &key, const QString &value) {
    m_error.clear();
    m_touched = false;
    const QString native = QDir::toNativeSeparators(m_path);
    if (!isWritableSection(section) || !isWritableKey(key))
        return fail(u"「%1」の項目名［%2］%3が正しくありません。"_s.arg(native, section, key));
    if (hasLineBreak(value))
        return fail(u"「%1」の項目［%2］%3の値に改行は使えません。"_s.arg(native, section, key));
    const Result<QByteArray> bytes = bytesForChange();
    if (!bytes)
        return fail(bytes.reason());
    const profile::Edited edited = profile::withValue(*bytes, section, key, value);
    m_touched = edited.touched;
    return write(edited.bytes);
}

short clsOplIniFile::iRemove(const QString &section, const QString &key) {
    m_error.clear();
    const Result<QByteArray> bytes = bytesForChange();
    if (!bytes)
        return fail(bytes.reason());
    const QByteArray edited =
        key.isNull() ? profile::withoutSection(*bytes, section) : profile::withoutKey(*bytes, section, key);
    return edited == *bytes ? short(0) : write(edited);
}

/// A file that is there and cannot be read must not be written over.
Result<QByteArray> clsOplIniFile::bytesForChange() const {
    if (m_path.isEmpty())
        return Failure{u"Iniファイル名を指定してください。"_s};
    return QFileInfo(m_path).isFile() ? bytesOf(m_path) : QByteArray();
}

short clsOplIniFile::write(const QByteArray &bytes) {
    const Result<> written = writeFileWhole(m_path, bytes);
    return written ? short(0) : fail(written.reason());
}
