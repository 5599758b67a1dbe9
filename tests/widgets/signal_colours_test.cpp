// Colours that tell something can be read on light and on dark desktops.

#include "app/desktop/signal_colours.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

double luminance(const QColor &colour) {
    const auto part = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
}

/// 1 for two alike, 21 for black on white; a text wants 4.5.
double contrast(const QColor &text, const QColor &ground) {
    const double a = luminance(text), b = luminance(ground);
    return (qMax(a, b) + 0.05) / (qMin(a, b) + 0.05);
}

QColor laidOver(const QColor &ground, const QColor &tint) {
    const auto mixed = [&](float below, float above) { return below + (above - below) * tint.alphaF(); };
    return QColor::fromRgbF(mixed(ground.redF(), tint.redF()), mixed(ground.greenF(), tint.greenF()),
                            mixed(ground.blueF(), tint.blueF()));
}

TEST(SignalColours, AreReadOnLightAndDarkGrounds) {
    for (const auto &[base, text] :
         {std::pair(QColor(Qt::white), QColor(Qt::black)), {QColor(27, 30, 32), QColor(252, 252, 252)}}) {
        QPalette palette;
        palette.setColor(QPalette::Base, base);
        for (const Signal signal : {Signal::Wrong, Signal::Soon, Signal::Changed}) {
            EXPECT_GE(contrast(signalInk(signal, palette), base), 4.5) << int(signal);
            EXPECT_GE(contrast(text, laidOver(base, signalTint(signal))), 4.5) << int(signal);
            EXPECT_NE(laidOver(base, signalTint(signal)), base);
        }
    }
}

} // namespace
