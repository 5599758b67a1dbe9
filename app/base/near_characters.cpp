#include "app/base/near_characters.h"

#include "app/base/folders.h"
#include "app/base/name_variants.h"

#include <QFile>
#include <QTextBoundaryFinder>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Pairs of a character and its near one, beside the variants of names: more such, and those whose printed
/// form was simplified for the code page.
constexpr QStringView pairs = u"𠮟叱 𠩤原 𫝆今 𣳾泰 𠅘亭 𢌞廻 𩵋魚 㟢崎 㟁岸 㠀島 㠶帆 䑓台 柗松 逺遠 黃黄 "
                              u"緣縁 稅税 說説 銳鋭 虛虚 戾戻 槪概 淚涙 "
                              u"吞呑 啞唖 嚙噛 囊嚢 塡填 屛屏 幷并 搔掻 攢攅 潑溌 瀆涜 焰焔 瘦痩 禱祷 簞箪 "
                              u"繡繍 繫繋 蟬蝉 蠟蝋 軀躯 醬醤 醱醗 顚顛 "
                              u"驒騨 鹼鹸 麴麹 麵麺 姸妍 摑掴 剝剥";

bool isOneCharacter(const QString &text) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    return finder.toNextBoundary() == text.size();
}

/// Why a line of the file cannot be used; empty when it can.
QString whyWrong(const QString &character, const QString &near) {
    if (!isOneCharacter(character))
        return u"「=」の左に 1 文字、右に近い文字を書いてください。"_s;
    if (fits932(character))
        return u"「%1」は、そのまま印刷できる文字です。"_s.arg(character);
    const bool breaks = near.contains(u'"') || near.contains(u'\t');
    if (near.isEmpty() || breaks || !fits932(near))
        return u"「=」の右には、Shift_JIS にある文字だけを書いてください。"_s;
    return {};
}

void take(NearCharacters &all, const QString &text) {
    int number = 0;
    for (const QString &line : text.split(u'\n')) {
        ++number;
        const QString content = line.trimmed();
        if (content.isEmpty() || content.startsWith(u'#'))
            continue;
        const QString character = content.section(u'=', 0, 0).trimmed();
        const QString near = content.section(u'=', 1).trimmed();
        if (const QString why = whyWrong(character, near); !why.isEmpty())
            all.faults += u"%1 行目「%2」：%3"_s.arg(number).arg(content.left(40), why);
        else
            all.texts.insert(character, near);
    }
}

} // namespace

NearCharacters NearCharacters::read(const Folders &folders) {
    NearCharacters all = builtIn();
    QFile file(Folders::file(folders.data(), fileName()));
    if (!file.exists())
        return all;
    if (!file.open(QIODevice::ReadOnly)) {
        all.faults += u"開けません。"_s + file.errorString();
        return all;
    }
    QByteArray bytes = file.readAll();
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3);
    if (!bytes.isValidUtf8())
        all.faults += u"UTF-8 の文字ではありません。UTF-8 で保存してください。"_s;
    else
        take(all, QString::fromUtf8(bytes));
    return all;
}

NearCharacters NearCharacters::builtIn() {
    NearCharacters all;
    take(all, builtInFile());
    return all;
}

QString NearCharacters::builtInFile() {
    QString lines =
        u"# 帳票で使えない文字（左）と、代わりに印刷する文字（右）。UTF-8 で保存してください。\r\n"
        "# 例： 𠮷=吉　　この表は、行を足して広げられます。\r\n"_s;
    for (const auto &[variant, ordinary] : nameVariants())
        if (const QString character = QString::fromUcs4(&variant, 1);
            !fits932(character) && fits932(QString(ordinary)))
            lines += u"%1=%2\r\n"_s.arg(character, QString(ordinary));
    for (const QStringView pair : pairs.tokenize(u' ')) {
        const qsizetype first = pair[0].isHighSurrogate() ? 2 : 1;
        lines += u"%1=%2\r\n"_s.arg(pair.first(first), pair.sliced(first));
    }
    return lines;
}
