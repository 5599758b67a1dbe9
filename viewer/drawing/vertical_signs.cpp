#include "viewer/drawing/vertical_signs.h"

#include <QStringView>
#include <algorithm>
#include <array>

namespace {

/// Above the baseline, of the font size: the middle of the square that a sign fills.
constexpr double middleHeight = 0.38;

struct VerticalForm {
    char32_t sign, form;
};

constexpr std::array<VerticalForm, 22> forms{{
    {U'、', 0xFE11}, {U'。', 0xFE12}, {U'…', 0xFE19},  {U'‥', 0xFE30},  {U'（', 0xFE35}, {U'）', 0xFE36},
    {U'｛', 0xFE37}, {U'｝', 0xFE38}, {U'〔', 0xFE39}, {U'〕', 0xFE3A}, {U'【', 0xFE3B}, {U'】', 0xFE3C},
    {U'《', 0xFE3D}, {U'》', 0xFE3E}, {U'〈', 0xFE3F}, {U'〉', 0xFE40}, {U'「', 0xFE41}, {U'」', 0xFE42},
    {U'『', 0xFE43}, {U'』', 0xFE44}, {U'［', 0xFE47}, {U'］', 0xFE48},
}};

bool isOneOf(char32_t sign, QStringView signs) {
    return sign < 0x10000 && signs.contains(QChar(char16_t(sign)));
}

/// Signs that lie on their side in a column.
bool isTurned(char32_t sign) {
    const bool isLetter = (sign >= U'A' && sign <= U'Z') || (sign >= U'a' && sign <= U'z');
    return isLetter ||
           isOneOf(sign,
                   u"ー～〜－−―—‐–…‥＝=-~()[]{}<>./,:;&@_（）［］｛｝〔〕【】《》〈〉「」『』＜＞：；｢｣ｰ");
}

/// The long vowel mark is written downwards from the other side.
bool isMirrored(char32_t sign) {
    return sign == U'ー' || sign == U'ｰ' || sign == U'～' || sign == U'〜';
}

/// Signs that stand at the upper right of their space instead of the lower left.
bool isMovedUp(char32_t sign) {
    return isOneOf(sign, u"、。，．");
}

bool isSmallKana(char32_t sign) {
    return isOneOf(sign, u"ぁぃぅぇぉっゃゅょゎァィゥェォッャュョヮヵヶ");
}

/// The glyph of a sign's vertical form; without a face when there is none.
Glyph formGlyph(char32_t code, const Typeface &typeface) {
    const auto form = std::ranges::find(forms, code, &VerticalForm::sign);
    if (form == forms.end())
        return {};
    const Glyph glyph = typeface.glyph(form->form);
    // Not from whatever other font has it: it would not fit its neighbours.
    return glyph.index != 0 && glyph.face == typeface.glyph(code).face ? glyph : Glyph{};
}

bool isDigit(char32_t sign) {
    return sign >= U'0' && sign <= U'9';
}

Sign verticalSign(char32_t code, const Typeface &typeface) {
    Sign sign;
    sign.code = code;
    sign.glyph = formGlyph(code, typeface);
    sign.isVerticalForm = sign.glyph.face != nullptr;
    if (!sign.isVerticalForm)
        sign.glyph = typeface.glyph(code);
    sign.advance = !sign.isVerticalForm && (code == U' ' || isTurned(code)) ? sign.glyph.advance : 1;
    return sign;
}

} // namespace

std::vector<Sign> verticalSigns(std::span<const char32_t> codes, const Typeface &typeface) {
    std::vector<Sign> signs;
    signs.reserve(codes.size());
    for (size_t i = 0; i < codes.size();) {
        size_t end = i;
        while (end < codes.size() && isDigit(codes[end]))
            ++end;
        const bool pair = end - i == 2;
        end = std::max(end, i + 1);
        for (; i < end; ++i)
            signs.push_back(verticalSign(codes[i], typeface));
        if (pair) {
            const Sign second = signs.back();
            signs.pop_back();
            signs.back().besideCode = second.code;
            signs.back().beside = second.glyph;
        }
    }
    return signs;
}

QTransform verticalPlace(const Sign &sign, QPointF middle, double size) {
    QTransform place = QTransform::fromTranslate(middle.x(), middle.y());
    if (!sign.isVerticalForm && isTurned(sign.code)) {
        if (isMirrored(sign.code))
            place.scale(-1, 1);
        place.rotate(90);
    } else if (!sign.isVerticalForm && isMovedUp(sign.code)) {
        place.translate(0.6 * size, -0.6 * size);
    } else if (isSmallKana(sign.code)) {
        place.translate(0.1 * size, -0.1 * size);
    }
    const double width = sign.glyph.advance + (sign.besideCode == 0 ? 0 : sign.beside.advance);
    if (sign.besideCode != 0)
        place.scale(std::min(1 / width, 1.0), 1);
    place.translate(-width / 2 * size, middleHeight * size);
    return place;
}
