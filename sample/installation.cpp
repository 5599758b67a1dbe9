#include "sample/installation.h"

#include "app/base/codepage932.h"
#include "app/base/file_write.h"
#include "db/connection_settings.h"
#include "sample/ini_files.h"
#include "sample/sample_database.h"
#include "sample/server_database.h"
#include "setup/installation_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace sample {

namespace {

// The mark of a folder that may be written to. It is set first and completed last, so that a run that was
// broken off is told from a whole installation.
const QString markName() {
    return u"sample-installation.txt"_s;
}
const QByteArray unfinished("unfinished\r\n");
const QByteArray finished("finished\r\n");

QByteArray readMark(const QDir &folder) {
    QFile file(folder.filePath(markName()));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A file of the private-profile kind gives values up to 255 bytes of its code page.
Result<QString> serverConnection(const QString &connection) {
    const Encoded932 encoded = encode932(connection);
    if (encoded.touched || encoded.bytes.size() > 255)
        return Failure{u"接続文字列が長すぎるか、設定ファイルに書けない文字があります。"_s};
    return connection;
}

/// Beside its place first: a program that has the old one open keeps it whole.
Result<> makeDatabase(const QString &path, const SampleOptions &options) {
    const QString beside = path + u".new"_s;
    QFile::remove(beside);
    if (Result<> made = makeSampleDatabase(beside, options.day, options.patients); !made)
        return made;
    if (!options.server.isEmpty()) {
        const Result<> copied = copyToServer(beside, options.server);
        QFile::remove(beside);
        return copied;
    }
    for (const QString &old : {path + u"-wal"_s, path + u"-shm"_s, path})
        QFile::remove(old);
    if (!QFile::rename(beside, path))
        return Failure{u"データベース「%1」を作成できません。"_s.arg(QDir::toNativeSeparators(path))};
    return {};
}

Result<> makeAll(const QDir &folder, const QString &database, const QString &connection,
                 const SampleOptions &options) {
    if (!folder.mkpath(u"."_s))
        return Failure{u"フォルダ「%1」を作成できません。"_s.arg(QDir::toNativeSeparators(folder.path()))};
    Result<> done = writeFileWhole(folder.filePath(markName()), unfinished);
    const auto then = [&done](auto &&step) {
        if (done)
            done = step();
    };
    if (!options.programs.isEmpty())
        then([&] { return setup::placePrograms(folder, options.programs, setup::Existing::Replace); });
    then([&] {
        return setup::writeInstallationFiles(folder, settingsFiles(connection), setup::Existing::Replace);
    });
    then([&] { return makeDatabase(database, options); }); // it takes longest
    then([&] { return writeFileWhole(folder.filePath(markName()), finished); });
    return done;
}

} // namespace

SampleResult makeInstallation(const SampleOptions &options) {
    const QDir folder(QDir(options.folder).absolutePath());
    const QString name = QDir::toNativeSeparators(folder.path());
    const QByteArray mark = readMark(folder);
    if (QFileInfo(folder.path()).isFile())
        return {SampleOutcome::Refused, u"「%1」はファイルです。フォルダを指定してください。"_s.arg(name)};
    if (mark.isEmpty() && folder.exists() &&
        !folder.isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot))
        return {SampleOutcome::Refused,
                u"フォルダ「%1」は見本ではありません。上書きしないで終了します。"_s.arg(name)};
    if (mark == finished && !options.again)
        return {SampleOutcome::LeftAsItIs,
                u"フォルダ「%1」には見本があります。そのまま残します。（作り直すには --again）"_s.arg(name)};

    const QString database = folder.filePath(u"DATA/douisho.db"_s);
    const Result<QString> connection =
        options.server.isEmpty() ? embeddedConnection(database) : serverConnection(options.server);
    if (!connection)
        return {SampleOutcome::Refused, connection.reason()};
    if (const Result<> made = makeAll(folder, database, *connection, options); !made)
        return {SampleOutcome::Failed, made.reason()};
    return {SampleOutcome::Made,
            u"フォルダ「%1」に見本を作成しました。（%2、利用者%3人）"_s.arg(
                name, options.day.toString(u"yyyy/MM/dd"), QString::number(options.patients))};
}

} // namespace sample
