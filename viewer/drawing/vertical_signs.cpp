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
    return isOneOf(sign, u"ー～〜－−―—‐–…‥＝=-~()[]{}<>（）［］｛｝〔〕【】《》〈〉「」『』＜＞：；｢｣ｰ");
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

} // namespace

Sign verticalSign(char32_t code, const Typeface &typeface) {
    const Glyph &plain = typeface.glyph(code);
    if (const Glyph form = formGlyph(code, typeface); form.face)
        return {code, form, 1, true};
    if (code == U' ')
        return {code, plain, 0.5, false};
    return {code, plain, isTurned(code) ? plain.advance : 1, false};
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
    place.translate(-sign.glyph.advance / 2 * size, middleHeight * size);
    return place;
}
