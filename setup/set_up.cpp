#include "setup/set_up.h"

#include "app/base/folders.h"
#include "app/base/platform/files.h"
#include "app/base/settings.h"
#include "db/adodb.h"
#include "db/connection_settings.h"
#include "db/tables/schema.h"
#include "setup/installation_files.h"
#include "setup/practice_query.h"

#include <QDir>
#include <QLockFile>

using namespace Qt::Literals::StringLiterals;

namespace setup {

namespace {

constexpr int lockWait = 60'000; // milliseconds
constexpr int abandonedAfter = 600'000;

const QStringList besides{u""_s, u"-journal"_s, u"-wal"_s, u"-shm"_s};

/// What the user can do about a connection that failed. PostgreSQL's driver has one state for all reasons, so
/// that they are told by the server's words, in English or Japanese, and by SQL Server's numbers.
QString adviceFor(const QString &errors) {
    const struct {
        QStringList signs;
        QString advice;
    } known[] = {
        {{u"password authentication"_s, u"パスワード認証"_s, u"no password supplied"_s,
          u"Native Error: 18456"_s},
         u"ユーザー名かパスワードが違います。"_s},
        {{u"\" does not exist"_s, u"は存在しません"_s, u"Native Error: 4060"_s},
         u"データベースかユーザーがありません。名前を確かめるか、サーバーの管理者に作成を依頼してください。"_s},
        {{u"Connection refused"_s, u"could not translate host name"_s, u"timeout expired"_s, u"HYT00"_s,
          u"接続を拒絶"_s},
         u"サーバーにつながりません。サーバーの名前とポート、サーバーが動いていること、ネットワークを確かめてください。"_s},
    };
    for (const auto &[signs, advice] : known)
        for (const QString &sign : signs)
            if (errors.contains(sign))
                return advice;
    return u"データベースに接続できません。"_s;
}

Result<> connectTo(cT_ADODB &db, const QString &connection) {
    if (db.iInit(connection) == 0 && db.iConnect() == 0)
        return {};
    return Failure{adviceFor(db.sErrMsg()) + u"\r\n"_s + db.sErrMsg()};
}

QString foundText(cT_ADODB &db) {
    QString counts;
    if (const Result<qint64> patients = countRows(db, u"RIYOUSHA"_s))
        counts = u"（利用者 %L1 人）"_s.arg(*patients);
    return u"事業所が登録されています%1。このデータベースをそのまま使います。"_s.arg(counts);
}

/// Why no file can be made there; null when one can.
QString obstacle(const QString &file) {
    QFileInfo folder(QFileInfo(file).path());
    while (!folder.exists() && folder.filePath() != folder.path())
        folder.setFile(folder.path());
    const QString name = QDir::toNativeSeparators(folder.filePath());
    if (!folder.isDir())
        return u"「%1」はフォルダではありません。"_s.arg(name);
    return folder.isWritable() ? QString() : u"フォルダ「%1」に書き込めません。"_s.arg(name);
}

Result<Trial> newFile(const QString &file) {
    if (const QString why = obstacle(file); !why.isEmpty())
        return Failure{why + u"別の場所を指定してください。"_s};
    QString said = u"新しいデータベースを作成します。"_s;
    if (platform::isOnNetworkDrive(QFileInfo(file).path()))
        said += u"\r\nネットワークドライブのファイルを何台かで同時に使うと、壊れることがあります。"_s;
    return Trial{true, said};
}

Result<Trial> look(cT_ADODB &db) {
    const Result<bool> tables = hasSchema(db);
    if (!tables)
        return Failure{tables.reason()};
    if (!*tables)
        return Trial{true, u"接続できました。表と事業所を新しく作成します。"_s};
    const Result<bool> practice = hasPractice(db);
    if (!practice)
        return Failure{u"別のプログラムの表があります。空のデータベースを指定してください。"_s +
                       practice.reason()};
    return *practice ? Trial{false, u"接続できました。"_s + foundText(db)}
                     : Trial{true, u"接続できました。途中まで作成されているので、続きを作成します。"_s};
}

/// Tables and practice, each whole or not at all.
Result<bool> fillDatabase(const QString &connection, const Practice &practice, const QDate &today) {
    cT_ADODB db;
    if (const Result<> connected = connectTo(db, connection); !connected)
        return Failure{connected.reason()};
    if (const Result<bool> tables = makeSchema(db); !tables)
        return tables;
    return writePractice(db, practice, today);
}

/// Whether tables with a practice are there.
Result<bool> isTaken(const QString &connection) {
    cT_ADODB db;
    if (const Result<> connected = connectTo(db, connection); !connected)
        return Failure{connected.reason()};
    const Result<bool> tables = hasSchema(db);
    return tables && *tables ? hasPractice(db) : tables;
}

Result<bool> fillWithSample(const QString &connection, const MakeSample &sample) {
    if (const Result<bool> taken = isTaken(connection); !taken || *taken)
        return taken ? Result<bool>(false) : taken;
    if (const Result<> made = sample(connection); !made) {
        // Of two that begin at once the second is refused when the first is done.
        const Result<bool> taken = isTaken(connection);
        return taken && *taken ? Result<bool>(false) : Failure{made.reason()};
    }
    return true;
}

Result<> fillFile(const QString &file, const Answers &answers, const QDate &today, const MakeSample &sample) {
    const Result<QString> connection = embeddedConnection(file);
    if (connection && answers.sample)
        return sample(*connection);
    if (QFile made(file); !made.open(QIODevice::WriteOnly))
        return Failure{
            u"「%1」を作成できません。%2"_s.arg(QDir::toNativeSeparators(file), made.errorString())};
    const Result<bool> filled =
        connection ? fillDatabase(*connection, answers.practice, today) : Failure{connection.reason()};
    return filled ? Result<>() : Failure{filled.reason()};
}

Result<> onDisk(const QString &file) {
    QFile made(file);
    const QString why = made.open(QIODevice::ReadWrite) ? platform::syncToDisk(made) : made.errorString();
    if (why.isEmpty())
        return {};
    return Failure{u"「%1」に書き込めません。%2"_s.arg(QDir::toNativeSeparators(file), why)};
}

/// False when another PC's file lies there meanwhile: nothing goes over it.
Result<bool> takeName(const QString &beside, const QString &file) {
    if (const Result<> synced = onDisk(beside); !synced)
        return Failure{synced.reason()};
    if (QFile::rename(beside, file))
        return true;
    return QFile::exists(file) ? Result<bool>(false)
                               : Failure{u"「%1」を作成できません。"_s.arg(QDir::toNativeSeparators(file))};
}

Result<bool> makeFile(const QString &file, const Answers &answers, const QDate &today,
                      const MakeSample &sample) {
    const QString name = QDir::toNativeSeparators(file);
    if (!QDir().mkpath(QFileInfo(file).path()))
        return Failure{u"フォルダ「%1」を作成できません。"_s.arg(QFileInfo(name).path())};
    QLockFile lock(file + u".lock"_s);
    lock.setStaleLockTime(abandonedAfter);
    if (!lock.tryLock(lockWait))
        return Failure{
            lock.error() == QLockFile::LockFailedError
                ? u"別のPCがデータベース「%1」を作成しています。しばらくしてから、もう一度設定してください。"_s
                      .arg(name)
                : u"フォルダ「%1」に書き込めません。"_s.arg(QFileInfo(name).path())};
    if (QFile::exists(file))
        return false;
    const QString beside = file + u".douisho-setup"_s;
    const auto clear = [&] {
        for (const QString &ending : besides)
            QFile::remove(beside + ending);
    };
    clear(); // a killed run's
    const Result<> filled = fillFile(beside, answers, today, sample);
    const Result<bool> named = filled ? takeName(beside, file) : Failure{filled.reason()};
    clear();
    return named;
}

Result<bool> makeDatabase(const Answers &answers, const QString &connection, const QDate &today,
                          const MakeSample &sample) {
    if (const std::optional<QString> file = embeddedFile(connection); file && !QFile::exists(*file)) {
        const Result<bool> made = makeFile(*file, answers, today, sample);
        if (!made || *made)
            return made;
    }
    return answers.sample ? fillWithSample(connection, sample)
                          : fillDatabase(connection, answers.practice, today);
}

} // namespace

Result<Trial> tryConnection(const Answers &answers) {
    const Result<QString> connection = connectionOf(answers);
    if (!connection)
        return Failure{connection.reason()};
    if (const std::optional<QString> file = embeddedFile(*connection); file && !QFile::exists(*file))
        return newFile(*file);
    cT_ADODB db;
    if (const Result<> connected = connectTo(db, *connection); !connected)
        return Failure{connected.reason()};
    return look(db);
}

Result<bool> setUp(const Folders &folders, const Answers &answers, const QDate &today,
                   const QString &programs, const MakeSample &sample) {
    const Result<QString> connection = connectionOf(answers);
    if (!connection)
        return Failure{connection.reason()};
    Result<> done = writeInstallationFiles(QDir(folders.program()),
                                           settingsFiles({}, {answers.practice.name, {}}), Existing::Keep);
    // Where the suite's own are, or ours are not built, there is nothing to place.
    if (done && QFile::exists(platform::programFile(QDir(programs).filePath(u"douisho-menu"_s))))
        done = placePrograms(QDir(folders.program()), programs, Existing::Keep);
    if (!done)
        return Failure{done.reason()};
    const Result<bool> made = makeDatabase(answers, *connection, today, sample);
    if (!made)
        return made;
    // Nobody else keeps the patients of a practice that is new, whatever its engine.
    const Folders installed(folders.program());
    if (Settings settings(installed); *made && settings.iSwitch(Setting::利用者登録, true) != 0)
        return Failure{settings.sErrMsg()};
    if (const Result<> written = writeConnectionString(folders, *connection); !written)
        return Failure{written.reason()};
    forgetAnswers(folders);
    return made;
}

} // namespace setup
