#include "backup/backups.h"

#include "app/base/folders.h"
#include "db/connection_settings.h"
#include "db/sqlite/database_copy.h"

#include <QDir>
#include <QLockFile>
#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype kept = 10;
constexpr int abandonedAfter = 600'000; // milliseconds, after which another PC's lock counts no more

const QString dayForm = u"yyyyMMdd"_s;

QString nameOf(const QString &file) {
    return QFileInfo(file).completeBaseName();
}

/// The first of the names that is free.
QString freeFile(const QString &base) {
    QString file = base + u".db"_s;
    for (int number = 2; QFile::exists(file); ++number)
        file = base + u"_%1.db"_s.arg(number);
    return file;
}

} // namespace

Backups::Backups(const Folders &folders, const QString &file)
    : m_file(file), m_folder(Folders::file(folders.data(), u"バックアップ"_s)) {}

QList<Backup> Backups::all() const {
    static const QRegularExpression form(u"^(.+)_(\\d{8})\\.db$"_s);
    QList<Backup> found;
    for (const QFileInfo &entry : QDir(m_folder).entryInfoList(QDir::Files)) {
        const QRegularExpressionMatch match = form.match(entry.fileName());
        const QDate day = QDate::fromString(match.captured(2), dayForm);
        if (match.hasMatch() && day.isValid())
            found.append({entry.filePath(), match.captured(1), day, entry.size()});
    }
    std::ranges::stable_sort(found, std::greater(), &Backup::day);
    return found;
}

QList<Backup> Backups::own() const {
    QList<Backup> own = all();
    own.removeIf([this](const Backup &backup) { return backup.database != nameOf(m_file); });
    return own;
}

QDate Backups::newest(const QDate &today) const {
    for (const Backup &backup : own())
        if (backup.day <= today)
            return backup.day;
    return {};
}

Result<> Backups::makeDaily(const QDate &today, const std::stop_token &stop) const {
    if (newest(today) == today)
        return {};
    if (!QDir().mkpath(m_folder))
        return Failure{u"フォルダ「%1」を作成できません。"_s.arg(QDir::toNativeSeparators(m_folder))};
    QLockFile lock(QDir(m_folder).filePath(nameOf(m_file) + u".lock"_s));
    lock.setStaleLockTime(abandonedAfter);
    if (!lock.tryLock())
        return lock.error() == QLockFile::LockFailedError
                   ? Result<>() // a colleague is at it
                   : Failure{u"フォルダ「%1」に書き込めません。"_s.arg(QDir::toNativeSeparators(m_folder))};
    // It may have come about since.
    return newest(today) == today ? Result<>() : make(today, stop);
}

// Under the lock, so that a half copy that lies there is of a run that was killed.
Result<> Backups::make(const QDate &day, const std::stop_token &stop) const {
    const QString base = QDir(m_folder).filePath(nameOf(m_file) + u'_');
    for (const QFileInfo &entry : QDir(m_folder).entryInfoList({u"*.db.douisho-*"_s}, QDir::Files))
        if (entry.filePath().startsWith(base))
            QFile::remove(entry.filePath());
    const Result<> copied = copyDatabase(m_file, base + day.toString(dayForm) + u".db"_s, stop);
    return copied ? removeOld() : copied;
}

Result<> Backups::removeOld() const {
    for (const Backup &old : own().mid(kept))
        if (!QFile::remove(old.path))
            return Failure{
                u"古いバックアップ「%1」を削除できません。"_s.arg(QDir::toNativeSeparators(old.path))};
    return {};
}

Result<QString> Backups::restore(const Backup &backup) const {
    const QString file = freeFile(
        QFileInfo(m_file).dir().filePath(u"%1_%2復元"_s.arg(backup.database, backup.day.toString(dayForm))));
    const Result<> copied = copyDatabase(backup.path, file);
    return copied ? Result<QString>(file) : Failure{copied.reason()};
}

// Only the name changes: a path that counts from the program folder goes on doing so.
Result<> useDatabase(const Folders &folders, const QString &file) {
    Result<QString> connection = readConnectionString(folders);
    const std::optional<QString> old = connection ? embeddedFile(*connection) : std::nullopt;
    if (!old)
        return Failure{connection ? u"組み込みデータベースではありません。"_s : connection.reason()};
    const QString name = QFileInfo(*old).fileName();
    connection->replace(connection->lastIndexOf(name), name.size(), QFileInfo(file).fileName());
    return writeConnectionString(folders, *connection);
}
