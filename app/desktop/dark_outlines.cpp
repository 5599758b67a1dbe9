#include "app/desktop/dark_outlines.h"

#include <QStyleOption>

namespace {

constexpr int dark = 64; // of 255

/// Draws with `part` of an option whose frame will be seen.
template <class Option, class Draw> bool drawn(const QStyleOption *option, const Draw &draw) {
    const auto *whole = qstyleoption_cast<const Option *>(option);
    if (!whole)
        return false;
    Option seen = *whole;
    seen.palette.setColor(QPalette::Window, seen.palette.color(QPalette::WindowText));
    draw(&seen);
    return true;
}

} // namespace

void DarkOutlines::polish(QPalette &palette) {
    QProxyStyle::polish(palette);
    const int hint = palette.color(QPalette::PlaceholderText).lightness();
    if (qAbs(hint - palette.color(QPalette::Base).lightness()) >= dark)
        return;
    constexpr int paler = 160; // of 255
    QColor seen = palette.color(QPalette::Text);
    seen.setAlpha(paler);
    palette.setColor(QPalette::PlaceholderText, seen);
}

void DarkOutlines::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                 const QWidget *widget) const {
    const bool framed = element == PE_FrameLineEdit || element == PE_PanelLineEdit ||
                        element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton ||
                        element == PE_Frame;
    const auto draw = [&](const QStyleOption *with) {
        QProxyStyle::drawPrimitive(element, with, painter, widget);
    };
    if (framed && option->palette.color(QPalette::Window).lightness() < dark &&
        (drawn<QStyleOptionFrame>(option, draw) || drawn<QStyleOptionButton>(option, draw)))
        return;
    draw(option);
}
