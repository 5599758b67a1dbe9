#include "setup/pictures.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace setup {

namespace {

struct Colour {
    int red;
    int green;
    int blue;
};

void appendNumber(QByteArray &bytes, quint32 number, int count) {
    for (int i = 0; i < count; ++i, number >>= 8)
        bytes.append(static_cast<char>(number & 0xff));
}

/// Headers of a BMP without compression, its rows padded to four bytes and stored from the bottom up.
QByteArray bmpHead(int width, int height, int bits, int colours) {
    const int rowBytes = (width * bits / 8 + 3) / 4 * 4;
    const quint32 start = static_cast<quint32>(14 + 40 + 4 * colours);
    QByteArray head("BM");
    appendNumber(head, start + static_cast<quint32>(rowBytes * height), 4);
    appendNumber(head, 0, 4);
    appendNumber(head, start, 4);
    appendNumber(head, 40, 4);
    appendNumber(head, static_cast<quint32>(width), 4);
    appendNumber(head, static_cast<quint32>(height), 4);
    appendNumber(head, 1, 2);
    appendNumber(head, static_cast<quint32>(bits), 2);
    appendNumber(head, 0, 4);
    appendNumber(head, static_cast<quint32>(rowBytes * height), 4);
    appendNumber(head, 3780, 4); // 96 dots an inch
    appendNumber(head, 3780, 4);
    appendNumber(head, static_cast<quint32>(colours), 4);
    appendNumber(head, 0, 4);
    return head;
}

void appendColour(QByteArray &bytes, Colour colour) {
    for (const int part : {colour.blue, colour.green, colour.red})
        bytes.append(static_cast<char>(part));
}

Colour mix(Colour under, Colour over, double cover) {
    const auto part = [cover](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * cover)); };
    return {part(under.red, over.red), part(under.green, over.green), part(under.blue, over.blue)};
}

double distanceToSegment(double x, double y, double ax, double ay, double bx, double by) {
    const double length = (bx - ax) * (bx - ax) + (by - ay) * (by - ay);
    const double along = std::clamp(((x - ax) * (bx - ax) + (y - ay) * (by - ay)) / length, 0.0, 1.0);
    return std::hypot(x - (ax + along * (bx - ax)), y - (ay + along * (by - ay)));
}

/// How much of a pixel a shape covers whose edge lies at that signed distance from the pixel's middle.
double coverAt(double distance) {
    return std::clamp(0.5 - distance, 0.0, 1.0);
}

/// Distance to a square with rounded corners round the middle of the picture.
double distanceToBox(double x, double y, double half, double corner) {
    const double dx = std::max(std::abs(x - 16) - (half - corner), 0.0);
    const double dy = std::max(std::abs(y - 16) - (half - corner), 0.0);
    return std::hypot(dx, dy) - corner;
}

QByteArray tick(bool on) {
    constexpr int size = 32;
    constexpr Colour white{255, 255, 255};
    const Colour edge = on ? Colour{21, 101, 52} : Colour{130, 138, 145};
    const Colour field = on ? Colour{34, 139, 72} : white;
    QByteArray bytes = bmpHead(size, size, 24, 0);
    for (int row = size - 1; row >= 0; --row)
        for (int column = 0; column < size; ++column) {
            const double x = column + 0.5;
            const double y = row + 0.5;
            Colour colour = mix(white, edge, coverAt(distanceToBox(x, y, 13, 4)));
            colour = mix(colour, field, coverAt(distanceToBox(x, y, 11, 2.5)));
            const double mark = std::min(distanceToSegment(x, y, 9.5, 16.5, 14, 21),
                                         distanceToSegment(x, y, 14, 21, 22.5, 11)) -
                                1.8;
            if (on)
                colour = mix(colour, white, coverAt(mark));
            appendColour(bytes, colour);
        }
    return bytes;
}

} // namespace

QByteArray tickOff() {
    return tick(false);
}

QByteArray tickOn() {
    return tick(true);
}

QByteArray wallPaper() {
    constexpr int width = 1280;
    constexpr int height = 800;
    constexpr int colours = 256;
    QByteArray bytes = bmpHead(width, height, 8, colours);
    for (int i = 0; i < colours; ++i) {
        appendColour(bytes, mix({38, 92, 88}, {206, 228, 222}, i / 255.0));
        bytes.append('\0');
    }
    // Light from above, and two soft hills.
    for (int row = height - 1; row >= 0; --row)
        for (int column = 0; column < width; ++column) {
            const double x = static_cast<double>(column) / width;
            const double y = static_cast<double>(row) / height;
            double light = 1.0 - 0.45 * y;
            if (y > 0.72 + 0.07 * std::sin(6.2 * x + 0.6))
                light -= 0.16;
            if (y > 0.84 + 0.05 * std::sin(5.1 * x + 2.8))
                light -= 0.16;
            bytes.append(static_cast<char>(std::lround(255 * light)));
        }
    return bytes;
}

} // namespace setup
