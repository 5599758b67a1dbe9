#include "app/base/file_write.h"

#include "app/base/platform/files.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QFile::Permissions ownerOnly = QFile::ReadOwner | QFile::WriteOwner;

/// Permission bits are asked for, not access: an administrator may write a read-only file, and should not.
bool isReadOnly(const QFileInfo &file) {
    return !(file.permissions() & (QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther));
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
    if (platform::isReadOnlyFolder(folder))
        return u"読み取り専用のフォルダです。"_s;
    return {};
}

Failure cannotWrite(const QString &path, const QString &why) {
    return {u"「%1」に書き込めません。\r\n"_s.arg(QDir::toNativeSeparators(path)) + why};
}

/// The toolkit has no words for a write that stopped half-way.
QString whyCutShort(const QFile &file) {
    return file.error() == QFileDevice::NoError
               ? u"最後まで書き込めません。ディスクの空きを確認してください。"_s
               : file.errorString();
}

// The name of a file on its way: its place's name, the mark and six letters.
const QString besideMark = u".douisho-"_s;
constexpr int letters = 6;

QString besideName(const QString &place) {
    QString name = place + besideMark;
    for (int i = 0; i < letters; ++i)
        name += QChar(u'a' + QRandomGenerator::system()->bounded(26));
    return name;
}

bool isBeside(const QString &name, const QString &placeName) {
    const QString prefix = placeName + besideMark;
    return name.size() == prefix.size() + letters && name.startsWith(prefix);
}

/// Whether nobody writes the file any more. Times are the folder's own: PCs' clocks differ.
bool isAbandoned(const QFileInfo &file, const QDateTime &folderNow) {
    constexpr qint64 secondsToClaim = 2;     // between making and claiming
    constexpr qint64 secondsOfSilence = 600; // where claims cannot be seen
    const qint64 age = file.lastModified().secsTo(folderNow);
    switch (platform::claimOf(file.filePath())) {
    case platform::Claimed::No:
        return age >= secondsToClaim;
    case platform::Claimed::Yes:
        return false;
    case platform::Claimed::Unknown:
        break;
    }
    return age >= secondsOfSilence;
}

/// Removes what killed runs left beside the place.
void clearAbandoned(const QString &place) {
    const QFileInfo written(place);
    const auto entries = written.dir().entryInfoList(QDir::Files | QDir::Hidden, QDir::NoSort);
    for (const QFileInfo &entry : entries)
        if (isBeside(entry.fileName(), written.fileName()) && isAbandoned(entry, written.lastModified()))
            QFile::remove(entry.filePath());
}

} // namespace

WholeFile::WholeFile(const QString &path, FileUse use) : m_path(path), m_use(use) {
    const QString canonical = QFileInfo(path).canonicalFilePath();
    m_place = canonical.isEmpty() ? path : canonical;
}

WholeFile::~WholeFile() {
    m_file.close();
    if (m_lies)
        QFile::remove(m_file.fileName()); // the object's own refuses after a failed write
}

Result<> WholeFile::failure(const QString &why) const {
    return cannotWrite(m_path, why);
}

Result<> WholeFile::open() {
    if (const QString why = obstacle(QFileInfo(m_path)); !why.isEmpty())
        return failure(why);
    const QFileInfo old(m_place);
    constexpr auto mode = QIODevice::WriteOnly | QIODevice::NewOnly;
    for (int attempt = 0; attempt < 10 && !m_file.isOpen(); ++attempt) {
        m_file.setFileName(besideName(m_place));
        m_use == FileUse::Private ? platform::openOwn(m_file, mode) : m_file.open(mode);
    }
    if (!m_file.isOpen())
        return failure(m_file.errorString());
    m_lies = true;
    platform::claim(m_file);
    if (m_use == FileUse::Common && old.exists())
        m_file.setPermissions(old.permissions());
    return {};
}

Result<> WholeFile::commit() {
    // Neither flush() nor close() notices that the last buffer found no room.
    if (!m_file.flush() || m_file.error() != QFileDevice::NoError || m_file.size() != m_file.pos())
        return failure(whyCutShort(m_file));
    if (const QString why = platform::syncToDisk(m_file); !why.isEmpty())
        return failure(why);
    if (const QString why = platform::moveOver(m_file, m_place); !why.isEmpty())
        return failure(why);
    m_lies = false;
    m_file.close();
    clearAbandoned(m_place);
    return {};
}

Result<> writeFileWhole(const QString &path, const QByteArray &bytes, FileUse use) {
    WholeFile file(path, use);
    if (Result<> opened = file.open(); !opened)
        return opened;
    if (file.device().write(bytes) != bytes.size())
        return cannotWrite(path, whyCutShort(file.device()));
    return file.commit();
}

Result<> writeFileInPlace(const QString &path, const QByteArray &bytes, FileUse use) {
    QFile file(path);
    // The common case by far, thousands of times a run: there is no file yet, so that nothing is to be asked
    // first.
    if (use == FileUse::Private &&
        platform::openOwn(file, QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        return file.write(bytes) == bytes.size() ? Result<>() : cannotWrite(path, whyCutShort(file));
    if (const QString why = obstacle(QFileInfo(path)); !why.isEmpty())
        return cannotWrite(path, why);
    // Cut to length afterwards: some file systems make a file that was emptied first wait for the disk.
    const bool open = file.open(QIODevice::ReadWrite | QIODevice::Unbuffered) &&
                      (use == FileUse::Common || file.setPermissions(ownerOnly));
    if (!open || file.write(bytes) != bytes.size() ||
        (file.size() > bytes.size() && !file.resize(bytes.size())))
        return cannotWrite(path, open ? whyCutShort(file) : file.errorString());
    return {};
}
