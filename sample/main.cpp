#include "app/base/result.h"
#include "sample/installation.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTextStream>
#include <QTranslator>
#include <cstdio>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int mostPatients = 1000000;

void say(FILE *to, const QString &sentence) {
    QTextStream out(to);
    out.setEncoding(QStringConverter::System); // as the console has it
    out << sentence << Qt::endl;
}

void describeOptions(QCommandLineParser &parser) {
    parser.setApplicationDescription(
        u"同意書管理の見本一式（設定・画像・データベース・メニュー）を作成します。"_s);
    parser.addOption({{u"h"_s, u"help"_s}, u"この説明を表示します。"_s});
    parser.addOption({u"folder"_s, u"作成先のフォルダ。（必須）"_s, u"DIR"_s});
    parser.addOption({u"day"_s, u"見本の基準日。省略時は今日。"_s, u"yyyy-mm-dd"_s});
    parser.addOption({u"patients"_s, u"利用者の人数。省略時は300人。"_s, u"N"_s});
    parser.addOption(
        {u"programs"_s, u"作成済みプログラムのフォルダ。省略時はこのプログラムと同じフォルダ。"_s, u"DIR"_s});
    parser.addOption({u"server"_s,
                      u"見本を作成するサーバーの空のデータベース。「-」なら標準入力から一行読みます。"_s,
                      u"接続文字列"_s});
    parser.addOption({u"again"_s, u"このプログラムで作成した見本を、作り直します。"_s});
}

Result<sample::SampleOptions> readOptions(const QCommandLineParser &parser) {
    sample::SampleOptions options;
    options.folder = parser.value(u"folder"_s);
    options.server = parser.value(u"server"_s);
    if (options.server == u"-") // where nobody else on the machine sees the password
        options.server = QTextStream(stdin).readLine();
    options.again = parser.isSet(u"again"_s);
    options.programs =
        parser.isSet(u"programs"_s) ? parser.value(u"programs"_s) : QCoreApplication::applicationDirPath();
    options.day = parser.isSet(u"day"_s) ? QDate::fromString(parser.value(u"day"_s), Qt::ISODate)
                                         : QDate::currentDate();
    bool isNumber = true;
    if (parser.isSet(u"patients"_s))
        options.patients = parser.value(u"patients"_s).toInt(&isNumber);

    if (options.folder.isEmpty())
        return Failure{u"--folder に作成先のフォルダを指定してください。"_s};
    if (!options.day.isValid() || options.day.year() < sample::firstSampleYear ||
        options.day.year() > sample::lastSampleYear)
        return Failure{u"--day には%1年から%2年までの日付を yyyy-mm-dd で指定してください。"_s
                           .arg(sample::firstSampleYear)
                           .arg(sample::lastSampleYear)};
    if (!isNumber || options.patients < 1 || options.patients > mostPatients)
        return Failure{u"--patients には1から%1までの人数を指定してください。"_s.arg(mostPatients)};
    if (!parser.positionalArguments().isEmpty())
        return Failure{u"不明な引数です：%1"_s.arg(parser.positionalArguments().front())};
    return options;
}

} // namespace

/// Exit codes: 0 made or left as it is, 1 refused or failed, 2 wrong arguments.
int main(int argc, char **argv) {
    QCoreApplication app(argc, argv);
    // Headings of the help and what is wrong with an argument are the toolkit's.
    QTranslator japanese;
    if (japanese.load(u"qtbase_ja"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&japanese);
    QCommandLineParser parser;
    describeOptions(parser);
    if (!parser.parse(app.arguments())) {
        say(stderr, u"引数が正しくありません：%1"_s.arg(parser.errorText()));
        return 2;
    }
    if (parser.isSet(u"help"_s)) {
        say(stdout, parser.helpText());
        return 0;
    }
    const Result<sample::SampleOptions> options = readOptions(parser);
    if (!options) {
        say(stderr, options.reason());
        return 2;
    }
    const sample::SampleResult result = sample::makeInstallation(*options);
    const bool well =
        result.outcome == sample::SampleOutcome::Made || result.outcome == sample::SampleOutcome::LeftAsItIs;
    say(well ? stdout : stderr, result.sentence);
    return well ? 0 : 1;
}
