#include "app/desktop/signal_colours.h"

namespace {

struct Colours {
    QColor onLight, onDark, tint;
};

Colours coloursOf(Signal signal) {
    switch (signal) {
    case Signal::Wrong:
        return {QColor(0xb0, 0x00, 0x20), QColor(0xff, 0x84, 0x90), QColor(0xd0, 0x20, 0x30, 70)};
    case Signal::Soon:
        return {QColor(0x8a, 0x4b, 0x00), QColor(0xf0, 0xb0, 0x60), QColor(0xe0, 0xa0, 0x20, 60)};
    case Signal::Changed:
        return {QColor(0x10, 0x50, 0xa0), QColor(0x8c, 0xc0, 0xff), QColor(0x30, 0x80, 0xe0, 60)};
    }
    Q_UNREACHABLE();
}

} // namespace

QColor signalInk(Signal signal, const QPalette &palette) {
    const Colours colours = coloursOf(signal);
    return palette.color(QPalette::Base).lightness() < 128 ? colours.onDark : colours.onLight;
}

QColor signalTint(Signal signal) {
    return coloursOf(signal).tint;
}
