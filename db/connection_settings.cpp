#include "db/connection_settings.h"

#include "app/base/codepage932.h"
#include "app/base/folders.h"
#include "app/base/ini_file.h"
#include "app/base/text.h"
#include "db/connection_string.h"

#include <QDir>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString section = u"接続情報"_s; // and its one key

QString settingsFile(const Folders &folders) {
    return Folders::file(folders.program(), u"adodb.ini"_s);
}

} // namespace

Result<QString> readConnectionString(const Folders &folders) {
    clsOplIniFile ini;
    if (ini.iInit(settingsFile(folders)) != 0)
        return Failure{ini.sErrMsg()};
    if (const Result<> readable = ini.readable(); !readable)
        return Failure{readable.reason()};
    const QString value = trimRight(cutAtNul(ini.csGetProfileString(section, section)));
    if (value.isEmpty())
        return Failure{u"接続文字列取得できません。"_s};
    return value;
}

bool hasConnectionSettings(const Folders &folders) {
    return QFileInfo::exists(settingsFile(folders));
}

Result<> writeConnectionString(const Folders &folders, const QString &connection) {
    // Values are read up to 255 bytes of the code page.
    const Encoded932 encoded = encode932(connection);
    if (encoded.touched || encoded.bytes.size() > 255)
        return Failure{u"接続情報を設定ファイル「%1」に書けません。%2"_s.arg(
            QDir::toNativeSeparators(settingsFile(folders)),
            encoded.touched ? u"使えない文字があります。"_s : u"255バイトを超えています。"_s)};
    clsOplIniFile ini;
    ini.iInit(settingsFile(folders)); // a missing file is made by the writing
    if (ini.iWriteProfileString(section, section, connection) != 0)
        return Failure{ini.sErrMsg()};
    return {};
}

Result<QString> embeddedConnection(const QString &file) {
    const QString connection = u"Provider=SQLite;Data Source="_s + file;
    const QString folder = QDir::toNativeSeparators(QFileInfo(file).path());
    const Encoded932 encoded = encode932(connection);
    if (encoded.touched)
        return Failure{u"フォルダ「%1」の名前に、設定ファイルに書けない文字があります。"_s.arg(folder)};
    if (encoded.bytes.size() > 255)
        return Failure{u"フォルダ「%1」の名前が長すぎます。"_s.arg(folder)};
    if (file.contains(u';') || file.contains(u'"') || file.contains(u'\''))
        return Failure{
            u"フォルダ「%1」の名前に、接続文字列に使えない文字（; \" '）があります。"_s.arg(folder)};
    return connection;
}

std::optional<QString> embeddedFile(const QString &connection) {
    const ConnectionString parsed(connection);
    QString source = parsed.value(u"Data Source");
    if (parsed.kind() != ConnectionString::Kind::Embedded || source.isEmpty())
        return std::nullopt;
    source.replace(u'\\', u'/');
    return QDir::cleanPath(QDir(Folders::programFolderOfThisRun()).absoluteFilePath(source));
}

QString databaseName(const QString &connection) {
    if (const std::optional<QString> file = embeddedFile(connection))
        return *file;
    const ConnectionString parsed(connection);
    QStringList parts;
    for (const QStringView keyword :
         {u"Data Source", u"Server", u"DSN", u"FileDSN", u"Port", u"Initial Catalog", u"Database"})
        parts.append(parsed.value(keyword).toLower());
    return parts.join(u'/');
}
