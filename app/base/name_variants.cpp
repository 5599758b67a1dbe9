#include "app/base/name_variants.h"

#include <QStringList>
#include <algorithm>
#include <array>
#include <unicode/unorm2.h>

namespace {

// Groups of characters in which the same name may be written, the ordinary one first.
constexpr QStringView groups =
    u"崎﨑嵜碕 斎斉齊齋 辺邊邉 高髙 島嶋嶌 沢澤 浜濱濵 吉𠮷 桜櫻 広廣 国國圀囯 黒黑 "
    u"徳德 柳栁桺 富冨 桑桒 曽曾 瀬瀨 頼賴 土圡𡈽 橋槗𣘺 丈𠀋 脇𦚰 渕淵渊 峰峯 滝瀧 "
    u"竜龍 真眞 恵惠 条條 槙槇 関關 塩鹽 円圓 奥奧 応應 栄榮 沖冲 亀龜 寛寬 巌巖 "
    u"経經 県縣 顕顯 弥彌 当當 戸戶 児兒 実實 寿壽 従從 渋澁 将將 松枩 穣穰 晋晉 "
    u"静靜 園薗 蔵藏 荘莊 総總 増增 団團 鉄鐵鐡 伝傳 稲稻 来來 礼禮 郎郞 禄祿 緑綠 "
    u"涼凉 穂穗 豊豐 万萬 満滿 宮宫 宝寶寳 仏佛 並竝 浄淨 与與 誉譽 芦蘆 館舘 衛衞 "
    u"船舩 剣劍劔 凜凛 岳嶽 峡峽 鴎鷗 鶯鴬 篭籠 蛍螢 野埜 昇曻 彦彥 顔顏 産產 清淸 "
    u"青靑 教敎 郷鄕鄉 巣巢 壮壯 双雙 単單 灯燈 歩步 薬藥 余餘 様樣 両兩 励勵 労勞 "
    u"楼樓 湾灣 瑶瑤 昂昻 煕熙熈凞 晃晄 暁曉 暦曆 横橫 温溫 鎮鎭 尚尙 兎兔 姫姬 姉姊 "
    u"呉吳 内內 鶴靏靎 薮藪 壷壺 会會 体體 医醫 糸絲 乗乘 図圖 数數 専專 浅淺 銭錢 "
    u"禅禪 続續 対對 転轉 党黨 栃杤 縄繩 楽樂 霊靈 権權 厳嚴 薫薰 勲勳 渓溪 芸藝 "
    u"鶏鷄 恒恆 済濟 参參 慎愼 弁辨辯瓣 祢禰 尭堯 遥遙 桧檜 台臺 気氣 亜亞 壱壹 喜㐂 "
    u"狭狹 隠隱 穏穩 萌萠 蛎蠣 砺礪 涌湧 梼檮 曵曳 莱萊 蒋蔣 侠俠 冴冱 迫廹 聡聰 "
    u"覚覺 学學 朗朖 収收 昼晝 虫蟲 庁廳 届屆 麦麥 覧覽 恋戀 録錄 歴歷 毎每 拝拜 "
    u"変變 帰歸 声聲 点點 髪髮 頬頰 蘇蘓 哲喆 ";

/// What the normaliser has in place of a compatibility ideograph; 0 where that is not one character.
char16_t decomposed(const UNormalizer2 *nfkc, char32_t ideograph) {
    std::array<char16_t, 4> to;
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length =
        unorm2_getDecomposition(nfkc, UChar32(ideograph), to.data(), int32_t(to.size()), &status);
    return U_SUCCESS(status) && length == 1 ? to[0] : char16_t(0);
}

std::vector<NameVariant> readVariants() {
    std::vector<NameVariant> variants;
    for (const QStringView group : groups.split(u' ', Qt::SkipEmptyParts)) {
        const QList<uint> characters = group.toUcs4();
        for (const uint variant : characters.mid(1))
            variants.push_back({variant, char16_t(characters.first())});
    }
    std::ranges::sort(variants, {}, &NameVariant::variant);

    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2 *nfkc = unorm2_getNFKCInstance(&status);
    const auto written = variants;
    const auto ordinary = [&](char16_t c) {
        const auto found = std::ranges::lower_bound(written, char32_t(c), {}, &NameVariant::variant);
        return found != written.end() && found->variant == c ? found->ordinary : c;
    };
    // The Japanese ones; those around them are doubles of other countries' sets.
    const auto japanese = [](char32_t c) { return c == 0xF929 || c == 0xF9DC || c >= 0xFA10; };
    for (char32_t c = 0xF929; U_SUCCESS(status) && c <= 0xFA6D; ++c)
        if (const char16_t to = japanese(c) ? decomposed(nfkc, c) : char16_t(0); to != 0)
            variants.push_back({c, ordinary(to)});
    std::ranges::sort(variants, {}, &NameVariant::variant);
    return variants;
}

} // namespace

const std::vector<NameVariant> &nameVariants() {
    static const std::vector<NameVariant> variants = readVariants();
    return variants;
}

char16_t ordinaryOf(char32_t variant) {
    const auto found = std::ranges::lower_bound(nameVariants(), variant, {}, &NameVariant::variant);
    return found != nameVariants().end() && found->variant == variant ? found->ordinary : char16_t(0);
}

QString withOrdinaryNames(const QString &text) {
    QString ordinary;
    for (const uint character : text.toUcs4()) {
        const char16_t found = ordinaryOf(character);
        ordinary += found != 0 ? QString(QChar(found))
                               : QString::fromUcs4(reinterpret_cast<const char32_t *>(&character), 1);
    }
    return ordinary;
}
