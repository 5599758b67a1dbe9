#include "sample/installation.h"

#include "app/base/codepage932.h"
#include "app/base/file_write.h"
#include "app/base/near_characters.h"
#include "sample/ini_files.h"
#include "sample/layouts.h"
#include "sample/pictures.h"
#include "sample/sample_database.h"

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

/// A file of the private-profile kind gives values up to 255 bytes, and a semicolon or quote would end the
/// data source.
QString whyUnusable(const QString &database) {
    const QString value = u"Provider=SQLite;Data Source="_s + database;
    const Encoded932 encoded = encode932(value);
    if (encoded.touched)
        return u"フォルダ「%1」の名前に、設定ファイルに書けない文字があります。"_s;
    if (encoded.bytes.size() > 255)
        return u"フォルダ「%1」の名前が長すぎます。"_s;
    if (database.contains(u';') || database.contains(u'"') || database.contains(u'\''))
        return u"フォルダ「%1」の名前に、接続文字列に使えない文字（; \" '）があります。"_s;
    return {};
}

Result<> writeSettings(const QDir &folder, const QString &database) {
    for (const TextFile &file : settingsFiles(database)) {
        folder.mkpath(QFileInfo(file.path).path());
        if (Result<> written = writeFileWhole(folder.filePath(file.path), encode932(file.text).bytes);
            !written)
            return written;
    }
    const QDir data(folder.filePath(SampleFolder::data.toString()));
    return writeFileWhole(data.filePath(NearCharacters::fileName()), NearCharacters::builtInFile().toUtf8());
}

Result<> writePictures(const QDir &folder) {
    const QDir data(folder.filePath(SampleFolder::data.toString()));
    const QDir icons(folder.filePath(SampleFolder::icons.toString()));
    const std::pair<QString, QByteArray> pictures[] = {
        {data.filePath(u"00.BMP"_s), tickOff()},
        {data.filePath(u"01.BMP"_s), tickOn()},
        {icons.filePath(u"ImgWall.BMP"_s), wallPaper()},
    };
    for (const auto &[path, picture] : pictures)
        if (Result<> written = writeFileWhole(path, picture); !written)
            return written;
    return {};
}

/// A program under the name by which the suite starts it: a link, so that a rebuild is picked up, or a copy
/// where links are not to be had.
Result<> placeProgram(const QString &program, const QString &place) {
    QFile::remove(place);
#ifdef Q_OS_WIN
    const QString source = program + u".exe"_s;
    const bool placed = QFile::copy(source, place);
#else
    const QString &source = program;
    const bool placed = QFileInfo::exists(source) && QFile::link(source, place);
#endif
    if (!placed)
        return Failure{u"プログラム「%1」を「%2」に置けません。"_s.arg(source, place)};
    return {};
}

Result<> placePrograms(const QDir &folder, const QString &programs) {
    if (programs.isEmpty())
        return {};
    constexpr std::pair<QStringView, QStringView> placed[] = {
        {u"douisho-menu", u"Main.exe"},
        {u"wfrfv10", u"wfrfv10.exe"},
        {u"wfrfv10", u"WrVb6Viewer.exe"},
        {u"wfrimg10", u"wfrimg10.exe"},
    };
    for (const auto &[program, name] : placed)
        if (Result<> done = placeProgram(QDir(programs).absoluteFilePath(program.toString()),
                                         folder.filePath(name.toString()));
            !done)
            return done;
    return {};
}

/// Beside its place first: a program that has the old one open keeps it whole.
Result<> makeDatabase(const QString &path, const SampleOptions &options) {
    const QString beside = path + u".new"_s;
    QFile::remove(beside);
    if (Result<> made = makeSampleDatabase(beside, options.day, options.patients); !made)
        return made;
    for (const QString &old : {path + u"-wal"_s, path + u"-shm"_s, path})
        QFile::remove(old);
    if (!QFile::rename(beside, path))
        return Failure{u"データベース「%1」を作成できません。"_s.arg(path)};
    return {};
}

Result<> makeAll(const QDir &folder, const QString &database, const SampleOptions &options) {
    if (!folder.mkpath(u"."_s))
        return Failure{u"フォルダ「%1」を作成できません。"_s.arg(QDir::toNativeSeparators(folder.path()))};
    Result<> done = writeFileWhole(folder.filePath(markName()), unfinished);
    const auto then = [&done](auto &&step) {
        if (done)
            done = step();
    };
    for (const QStringView name :
         {SampleFolder::system, SampleFolder::temporary, SampleFolder::icons, SampleFolder::data})
        folder.mkpath(name.toString());
    then([&] { return placePrograms(folder, options.programs); });
    then([&] { return writeSettings(folder, database); });
    then([&] { return writePictures(folder); });
    then([&] { return writeLayouts(QDir(folder.filePath(SampleFolder::system.toString()))); });
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

    const QString database = folder.filePath(u"%1/douisho.db"_s.arg(SampleFolder::data));
    if (const QString why = whyUnusable(database); !why.isEmpty())
        return {SampleOutcome::Refused, why.arg(name)};
    if (const Result<> made = makeAll(folder, database, options); !made)
        return {SampleOutcome::Failed, made.reason()};
    return {SampleOutcome::Made,
            u"フォルダ「%1」に見本を作成しました。（%2、利用者%3人）"_s.arg(
                name, options.day.toString(u"yyyy/MM/dd"), QString::number(options.patients))};
}

} // namespace sample
