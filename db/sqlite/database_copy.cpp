#include "db/sqlite/database_copy.h"

#include "app/base/file_write.h"
#include "db/sqlite/functions.h"
#include "db/sqlite/sqlite_errors.h"

#include <QDir>
#include <memory>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int pagesInAStep = 1000; // between two looks whether to stop
constexpr int busyMilliseconds = 10000;

class Database {
public:
    explicit Database(const QString &path) : m_path(path) {
        sqlite3 *db = nullptr;
        m_result = sqlite3_open_v2(path.toUtf8().constData(), &db,
                                   SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
        m_db.reset(db);
        if (m_result != SQLITE_OK)
            return;
        sqlite3_extended_result_codes(db, 1);
        sqlite3_busy_timeout(db, busyMilliseconds);
        m_result = addServerFunctions(db, m_time);
    }

    sqlite3 *handle() const { return m_db.get(); }
    bool isOpen() const { return m_result == SQLITE_OK; }
    /// The first value that the statements give, as text.
    QString ask(const char *sql) {
        QString answer;
        const auto take = [](void *to, int count, char **values, char **) {
            if (auto *text = static_cast<QString *>(to); text->isNull() && count > 0)
                *text = QString::fromUtf8(values[0]);
            return 0;
        };
        m_result = sqlite3_exec(m_db.get(), sql, take, &answer, nullptr);
        return answer;
    }
    Failure failure(int result) const {
        return {sqliteError(result, QString::fromUtf8(sqlite3_errmsg(m_db.get())), m_path).description};
    }
    Failure failure() const { return failure(m_result); }

private:
    struct Close {
        void operator()(sqlite3 *db) const { sqlite3_close_v2(db); }
    };

    QString m_path;
    StatementTime m_time;
    std::unique_ptr<sqlite3, Close> m_db;
    int m_result = SQLITE_OK;
};

Failure stopped() {
    return {u"コピーを中止しました。"_s};
}

Result<> copyPages(const Database &from, const Database &to, const std::stop_token &stop) {
    sqlite3_backup *backup = sqlite3_backup_init(to.handle(), "main", from.handle(), "main");
    if (!backup)
        return to.failure(sqlite3_errcode(to.handle()));
    int step = SQLITE_OK;
    while (step == SQLITE_OK && !stop.stop_requested())
        step = sqlite3_backup_step(backup, pagesInAStep);
    const int end = sqlite3_backup_finish(backup);
    if (step == SQLITE_OK)
        return stopped();
    // Which of the two it was stands in neither: reading fails by locks and damage, writing by a full disk.
    if (step != SQLITE_DONE)
        return (step & 0xff) == SQLITE_FULL || (step & 0xff) == SQLITE_IOERR ? to.failure(step)
                                                                             : from.failure(step);
    return end == SQLITE_OK ? Result<>() : to.failure(end);
}

Result<> check(Database &copy, const std::stop_token &stop) {
    // Without a log beside it: one file is the whole copy.
    copy.ask("PRAGMA journal_mode = DELETE");
    if (!copy.isOpen())
        return copy.failure();
    sqlite3_progress_handler(
        copy.handle(), 10000,
        [](void *to) { return int(static_cast<const std::stop_token *>(to)->stop_requested()); },
        const_cast<std::stop_token *>(&stop));
    const QString found = copy.ask("PRAGMA quick_check(1)");
    if (stop.stop_requested())
        return stopped();
    if (!copy.isOpen())
        return copy.failure();
    return found == u"ok" ? Result<>() : Failure{u"データベースファイルが壊れています。"_s + found};
}

Result<> fill(const QString &from, const QString &to, const std::stop_token &stop) {
    Database source(from);
    // Where there is a log, what is copied stays as it is at this moment and nobody waits for it. Elsewhere
    // colleagues write between two steps, and the engine begins anew.
    if (source.isOpen() && source.ask("PRAGMA journal_mode") == u"wal")
        source.ask("BEGIN; SELECT count(*) FROM sqlite_schema");
    if (!source.isOpen())
        return source.failure();
    Database copy(to);
    // It goes when it fails, and reaches the disk as a whole.
    if (copy.isOpen())
        copy.ask("PRAGMA locking_mode = EXCLUSIVE; PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF");
    if (!copy.isOpen())
        return copy.failure();
    const Result<> copied = copyPages(source, copy, stop);
    return copied ? check(copy, stop) : copied;
}

} // namespace

Result<> copyDatabase(const QString &from, const QString &to, const std::stop_token &stop) {
    if (!QFile::exists(from))
        return Failure{u"データベースファイルがありません。（%1）"_s.arg(QDir::toNativeSeparators(from))};
    WholeFile file(to);
    if (Result<> opened = file.open(); !opened)
        return opened;
    QFile &beside = file.device();
    beside.setPermissions(
        QFile::permissions(from)); // patients' data: who may read the one may read the other
    const Result<> filled = fill(from, beside.fileName(), stop);
    for (const QString &kind : {u"-journal"_s, u"-wal"_s, u"-shm"_s})
        QFile::remove(beside.fileName() + kind);
    if (!filled)
        return filled;
    beside.seek(beside.size());
    return file.commit();
}
