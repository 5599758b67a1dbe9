#include "app/base/file_write.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Permission bits are asked for, not access: an administrator may write a read-only file, and should not.
bool isReadOnly(const QFileInfo &entry) {
    return !(entry.permissions() & (QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther));
}

/// What stands in the way before anything is tried; empty when nothing does.
QString obstacle(const QFileInfo &file) {
    const QFileInfo folder(file.absolutePath());
    if (file.fileName().isEmpty())
        return u"ファイル名がありません。"_s;
    if (!folder.isDir())
        return u"フォルダがありません。"_s;
    if (file.isDir())
        return u"同じ名前のフォルダがあります。"_s;
    if (file.exists() && isReadOnly(file))
        return u"読み取り専用のファイルです。"_s;
    if (isReadOnly(folder))
        return u"読み取り専用のフォルダです。"_s;
    return {};
}

/// The sentence for the user, when there is a failure.
bool tell(const QString &failure, const QString &path, QString *reason) {
    if (failure.isEmpty())
        return true;
    if (reason)
        *reason = u"「%1」に書き込めません。\r\n"_s.arg(QDir::toNativeSeparators(path)) + failure;
    return false;
}

} // namespace

bool writeFileWhole(const QString &path, const QByteArray &bytes, QString *reason) {
    QString failure = obstacle(QFileInfo(path));
    if (failure.isEmpty()) {
        QSaveFile file(path);
        // commit() does not notice that the last buffer found no room.
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush() ||
            !file.commit())
            failure = file.errorString();
    }
    return tell(failure, path, reason);
}

bool writeFileInPlace(const QString &path, const QByteArray &bytes, QString *reason) {
    QString failure = obstacle(QFileInfo(path));
    if (failure.isEmpty()) {
        QFile file(path);
        // Cut to length afterwards: some file systems make a file that was emptied first wait for the disk.
        if (!file.open(QIODevice::ReadWrite | QIODevice::Unbuffered) || file.write(bytes) != bytes.size() ||
            (file.size() > bytes.size() && !file.resize(bytes.size())))
            failure = file.errorString();
    }
    return tell(failure, path, reason);
}
