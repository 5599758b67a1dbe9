#include "viewer/output/pdf_pictures.h"

#include "viewer/drawing/sheet.h"

namespace {

constexpr double sharpest = 400 / 25.4; // pixels a millimetre; more is not seen on paper

/// The picture, with no more pixels than its box can show.
QImage shown(const SheetPicture &picture) {
    const QSize most = (picture.area.size() * sharpest).toSize().expandedTo({1, 1});
    if (picture.image.width() <= 2 * most.width())
        return picture.image;
    return picture.image.scaled(most, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

/// The pixels without the bytes that fill a line.
QByteArray pixels(const QImage &image) {
    const qsizetype width = (qsizetype(image.width()) * image.depth() + 7) / 8;
    QByteArray bytes;
    bytes.reserve(width * image.height());
    for (int line = 0; line < image.height(); ++line)
        bytes.append(reinterpret_cast<const char *>(image.constScanLine(line)), width);
    return bytes;
}

QByteArray entries(const QImage &image, const QByteArray &colors, int bits) {
    return "/Type /XObject /Subtype /Image /Width " + QByteArray::number(image.width()) + " /Height " +
           QByteArray::number(image.height()) + " /ColorSpace " + colors + " /BitsPerComponent " +
           QByteArray::number(bits);
}

bool isGray(QRgb color) {
    return qAlpha(color) == 255 && qRed(color) == qGreen(color) && qGreen(color) == qBlue(color);
}

/// Two greys, of which the lighter becomes white.
bool isBlackAndWhite(const QImage &image) {
    return image.depth() == 1 && image.colorCount() == 2 && isGray(image.color(0)) && isGray(image.color(1));
}

} // namespace

int PdfPictures::object(const SheetPicture &picture) {
    const auto known = m_objects.constFind(picture.key);
    if (known != m_objects.constEnd())
        return *known;
    return *m_objects.insert(picture.key, add(shown(picture)));
}

int PdfPictures::add(const QImage &image) {
    if (isBlackAndWhite(image)) {
        const QImage bits = image.convertToFormat(QImage::Format_Mono);
        // The two entries may stand either way round.
        const bool inverted = qGray(bits.color(0)) > qGray(bits.color(1));
        return m_file.addStream(entries(bits, "/DeviceGray", 1) + (inverted ? " /Decode [1 0]" : ""),
                                pixels(bits));
    }
    QByteArray mask;
    if (image.hasAlphaChannel()) {
        const QImage alpha = image.convertToFormat(QImage::Format_Alpha8);
        mask = " /SMask " + pdf::reference(m_file.addStream(entries(alpha, "/DeviceGray", 8), pixels(alpha)));
    }
    const bool gray = image.isGrayscale();
    const QImage plain = image.convertToFormat(gray ? QImage::Format_Grayscale8 : QImage::Format_RGB888);
    return m_file.addStream(entries(plain, gray ? "/DeviceGray" : "/DeviceRGB", 8) + mask, pixels(plain));
}
