#include "app/desktop/japanese.h"

#include <QApplication>
#include <QFont>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Best first. Where the locale is Japanese, some are known by their Japanese names only.
constexpr std::array<QStringView, 18> families{
    u"Yu Gothic UI",  u"Meiryo UI",       u"Noto Sans CJK JP", u"Noto Sans JP",  u"Hiragino Sans",
    u"BIZ UDPGothic", u"BIZ UDPゴシック", u"IPAexGothic",      u"IPAexゴシック", u"IPAPGothic",
    u"IPA Pゴシック", u"TakaoPGothic",    u"Takao Pゴシック",  u"VL PGothic",    u"VL Pゴシック",
    u"MS UI Gothic",  u"MS PGothic",      u"ＭＳ Ｐゴシック"};

/// Fonts for all of East Asia bear the country in whose manner they write; they hold the signs of all.
bool writesAnotherCountrysShapes(const QString &family) {
    return family.contains(u"CJK"_s) && !family.endsWith(u" JP"_s);
}

bool isJapanese(const QString &family) {
    return !writesAnotherCountrysShapes(family) &&
           QFontDatabase::writingSystems(family).contains(QFontDatabase::Japanese);
}

/// Where desktops have fonts of their own for parts of windows.
constexpr std::array partsWithFonts = {"QMenu", "QMenuBar", "QAbstractItemView", "QHeaderView"};

} // namespace

QString interfaceFamily(const QString &desktops) {
    // Asked for one of them, the database looks for aliases first, which takes longer than giving all.
    const QStringList installed = QFontDatabase::families();
    if (installed.contains(desktops, Qt::CaseInsensitive) && isJapanese(desktops))
        return desktops;
    for (const QStringView family : families)
        if (installed.contains(family, Qt::CaseInsensitive))
            return family.toString();
    return desktops;
}

void speakJapanese(QTranslator &translator) {
    QLocale::setDefault(QLocale(QLocale::Japanese, QLocale::Japan));
    // The toolkit's own texts: installed with it, or inside of a program that brings the toolkit along.
    if (translator.load(u"qtbase_ja"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)) ||
        translator.load(u"qtbase_ja"_s, u":/translations"_s))
        QCoreApplication::installTranslator(&translator);
    QFont font = QApplication::font();
    const QString desktops = font.family();
    const QString family = interfaceFamily(desktops);
    const auto isReadable = [&](const char *part) {
        const QString own = QApplication::font(part).family();
        return own == desktops || isJapanese(own);
    };
    if (family == desktops && std::ranges::all_of(partsWithFonts, isReadable))
        return;
    // The desktop's font stays behind it, for signs that the Japanese one lacks.
    font.setFamilies({family, desktops});
    QApplication::setFont(font);
}
