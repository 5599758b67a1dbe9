#include "widgets/version_text.h"

#include "app/base/folders.h"
#include "app/base/version.h"
#include "db/connection_settings.h"
#include "db/connection_string.h"
#include "widgets/window_settings.h"

#include <QDir>
#include <QFile>
#include <QSysInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The first of the keywords that the string has.
QString valueOf(const ConnectionString &string, std::initializer_list<QStringView> keywords) {
    for (const QStringView keyword : keywords)
        if (const QString value = string.value(keyword); !value.isEmpty())
            return value;
    return {};
}

QString databaseText(const Folders &folders) {
    const Result<QString> text = readConnectionString(folders);
    if (!text)
        return text.reason();
    const ConnectionString string(*text);
    const QString source = valueOf(string, {u"Data Source", u"Server", u"DSN", u"FileDSN"});
    if (string.kind() == ConnectionString::Kind::Embedded)
        return u"組み込みデータベース（SQLite）\n　ファイル：%1"_s.arg(
            QDir::toNativeSeparators(QDir(folders.program()).absoluteFilePath(source)));
    const QString driver = valueOf(string, {u"Driver"});
    return u"%1（ODBC）\n　サーバー：%2\n　データベース：%3"_s.arg(
        driver.isEmpty() ? u"SQL Server"_s : driver, source,
        valueOf(string, {u"Initial Catalog", u"Database"}));
}

} // namespace

QString installationText(const Folders &folders) {
    QString text = u"プログラム：douisho %1\n"_s.arg(ownVersion());
    text += u"データベース：%1\n"_s.arg(databaseText(folders));
    const std::pair<QStringView, QString> places[] = {{u"プログラム", folders.program()},
                                                      {u"システム", folders.system()},
                                                      {u"データ", folders.data()},
                                                      {u"作業", folders.temporary()}};
    for (const auto &[name, folder] : places)
        text += u"%1フォルダ：%2\n"_s.arg(name, QDir::toNativeSeparators(folder));
    return text + u"動作環境：%1（%2）、Qt %3"_s.arg(QSysInfo::prettyProductName(),
                                                     QSysInfo::currentCpuArchitecture(),
                                                     QString::fromLatin1(qVersion()));
}

QString changesText() {
    QFile file(u":/CHANGES.ja.md"_s); // part of the program; the newest version stands first
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QString newest = QString::fromUtf8(file.readAll()).section(u"\n## "_s, 1, 1).trimmed();
    newest.replace(u"\n- "_s, u"\n　"_s).replace(u"\n\n"_s, u"\n"_s).remove(u'`');
    return u"新しくなったところ："_s + newest;
}

QString versionNews(const Folders &folders) {
    const QString own = ownVersion();
    const Result<QString> newest = newestVersionUsed(folders);
    if (!newest)
        return newest.reason();
    if (isOlderVersion(own, *newest))
        return u"ほかのPCでは、このプログラム（%1）より新しい %2 を使っています。このPCのプログラムも更新してください。"_s
            .arg(own, *newest);
    const QString key = u"program/version"_s;
    QSettings settings = windowSettings();
    const QString before = settings.value(key).toString();
    if (before == own)
        return {};
    settings.setValue(key, own);
    return !before.isEmpty() && isOlderVersion(before, own)
               ? u"プログラムが %1 になりました。新しくなったところは Ctrl+Shift+V（バージョン情報）で読めます。"_s
                     .arg(own)
               : QString();
}

QString licenceText() {
    return u"このプログラム：MIT License\n"
           "使用しているソフトウェアとライセンス：\n"
           "　Qt（画面・印刷）：GNU LGPL 3\n"
           "　ICU（日付・文字）：Unicode License\n"
           "　SQLite（組み込みデータベース）：パブリックドメイン\n"
           "　unixODBC（データベース接続）：GNU LGPL 2.1\n"
           "　FreeTDS（SQL Serverのドライバー）：GNU LGPL 2\n"
           "　libcurl（メール送信）：curl License\n"
           "　libqrencode（QRコード）：GNU LGPL 2.1\n"
           "　HarfBuzz（PDFのフォント）：MIT License（旧形式）\n"
           "　Noto Sans CJK・IPAexゴシック（フォント）：SIL Open Font License 1.1・IPAフォントライセンス "
           "1.0\n"
           "　DejaVu（フォント）：Bitstream Vera License"_s;
}
