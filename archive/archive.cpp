#include "archive/archive.h"

#include "app/base/file_write.h"
#include "app/base/folders.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>
#include <QtEndian>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 largest = 256 << 20; // bytes of a content; a run of 100 forms has less than one million
constexpr int daysBetweenLooks = 7;

const QString ending = u".z"_s;

QString shown(const QString &path) {
    return QDir::toNativeSeparators(path);
}

/// A content lies in its file behind its length, compressed. Empty: it is damaged.
QByteArray unpacked(const QByteArray &packed) {
    constexpr qsizetype lengthSize = 4;
    if (packed.size() < lengthSize || qFromBigEndian<quint32>(packed.constData()) > largest)
        return {};
    return qUncompress(packed);
}

/// Keeps it from being tidied away for another term. A file of another user's cannot be touched.
bool touch(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly) &&
           file.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileModificationTime) &&
           QFile::exists(path); // a colleague's tidying has not taken it meanwhile
}

/// A colleague may be storing it at this moment: what he touched comes back.
bool removeOld(const QString &path, const QDateTime &limit) {
    const QString aside = path + u".old"_s;
    if (!QFile::rename(path, aside))
        return false;
    if (QFileInfo(aside).lastModified() < limit || QFile::exists(path))
        return QFile::remove(aside);
    return QFile::rename(aside, path) && false;
}

} // namespace

Archive::Archive(const Folders &folders)
    : m_data(folders.data()), m_folder(Folders::file(m_data, u"保管"_s)) {}

QString Archive::nameOf(const QByteArray &content) {
    return QString::fromLatin1(QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex());
}

// A folder for each two digits in front: a folder of 100,000 files is slow on every server.
QString Archive::pathOf(const QString &name) const {
    return m_folder + u'/' + name.first(2) + u'/' + name + ending;
}

Result<> Archive::store(const QByteArray &content) const {
    const QString name = nameOf(content);
    const QString path = pathOf(name);
    if (QFile::exists(path) && read(name) && touch(path))
        return {};
    if (!QFileInfo(m_data).isDir()) // a drive that is not there must not become a folder of this PC
        return Failure{u"データフォルダ「%1」がありません。"_s.arg(shown(m_data))};
    if (!QDir().mkpath(QFileInfo(path).path()))
        return Failure{u"保管フォルダ「%1」に書き込めません。"_s.arg(shown(m_folder))};
    constexpr int fast = 1; // the user waits for it, and what is kept is small either way
    return writeFileWhole(path, qCompress(content, fast));
}

Result<QByteArray> Archive::read(const QString &name) const {
    static const QRegularExpression form(u"^[0-9a-f]{64}$"_s);
    if (!form.match(name).hasMatch())
        return Failure{u"この文書は保管されていません。"_s};
    if (!QFileInfo(m_folder).isDir())
        return Failure{u"保管フォルダ「%1」がありません。"_s.arg(shown(m_folder)) +
                       u"フォルダの場所とネットワークの接続を確認してください。"_s};
    QFile file(pathOf(name));
    if (!file.exists())
        return Failure{u"保管した文書がありません。保管期間が過ぎたか、削除されています。（%1）"_s.arg(
            shown(file.fileName()))};
    if (!file.open(QIODevice::ReadOnly))
        return Failure{u"保管した文書「%1」を開けません。"_s.arg(shown(file.fileName())) +
                       file.errorString()};
    QByteArray content = unpacked(file.readAll());
    if (content.isEmpty() || nameOf(content) != name)
        return Failure{
            u"保管した文書「%1」が壊れているため、表示できません。バックアップから戻してください。"_s.arg(
                shown(file.fileName()))};
    return content;
}

Archive::Size Archive::size() const {
    Size size;
    for (QDirIterator files(m_folder, {u'*' + ending}, QDir::Files, QDirIterator::Subdirectories);
         files.hasNext();) {
        ++size.documents;
        size.bytes += files.nextFileInfo().size();
    }
    return size;
}

// The first PC to look puts the mark down, so that the others find it young. The clock is the file server's,
// but never ahead of this PC's: a wrong year must not empty the archive.
int Archive::tidy(int months, const QDateTime &now) const {
    const QString mark = m_folder + u"/整理"_s;
    const QFileInfo last(mark);
    if (months <= 0 || !QFileInfo(m_folder).isDir() ||
        (last.exists() && last.lastModified().daysTo(now) < daysBetweenLooks &&
         last.lastModified() <= now.addDays(1)))
        return 0;
    QFile::remove(mark);
    if (!writeFileInPlace(mark, {}))
        return 0;
    const QDateTime limit = std::min(QFileInfo(mark).lastModified(), now).addMonths(-months);
    int gone = 0;
    for (QDirIterator files(m_folder, QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
        const QFileInfo file = files.nextFileInfo();
        if (file.lastModified() < limit && file.filePath() != mark)
            gone += removeOld(file.filePath(), limit);
    }
    return gone;
}
