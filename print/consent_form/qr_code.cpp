#include "print/consent_form/qr_code.h"

#include "print/consent_form/form_gather.h"

#include <QtEndian>
#include <memory>
#include <qrencode.h>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int version = 1;
constexpr int dotsOfModule = 4; ///< half a byte of one-bit dots
constexpr int margin = 4;       ///< modules, as the code's standard asks

template <class Number> void append(QByteArray &bytes, Number number) {
    const Number little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char *>(&little), sizeof little);
}

/// Header of a square BMP picture with one bit a dot, 0 white and 1 black.
QByteArray bitmapHeader(qsizetype side, qsizetype bytesOfLine) {
    constexpr quint32 white = 0xFFFFFF, black = 0;
    constexpr quint32 headers = 14 + 40 + 2 * sizeof white;
    const auto size = quint32(side * bytesOfLine);
    QByteArray bytes = "BM"_ba;
    for (const quint32 number : {headers + size, 0U, headers, 40U, quint32(side), quint32(side)})
        append(bytes, number);
    append(bytes, quint16(1)); // planes
    append(bytes, quint16(1)); // bits a dot
    constexpr quint32 plain = 0, anyResolution = 0, colors = 2;
    for (const quint32 number : {plain, size, anyResolution, anyResolution, colors, colors, white, black})
        append(bytes, number);
    return bytes;
}

/// One line of dots of a row of modules.
QByteArray dotsOfRow(const QRcode &code, int row, qsizetype bytesOfLine) {
    QByteArray line(bytesOfLine, 0);
    if (row < 0 || row >= code.width)
        return line;
    for (int column = 0; column < code.width; ++column) {
        const int place = margin + column;
        if (code.data[row * code.width + column] & 1)
            line[place / 2] = char(line[place / 2] | (place % 2 == 0 ? 0xF0 : 0x0F));
    }
    return line;
}

} // namespace

QString qrContent(const ConsentForm &form) {
    QString row = QString::number(form.consent.nDate);
    if (form.consent.iHenkeiFlg != 0)
        row += u'-' + QString::number(form.consent.nHenkeiDouiDate);
    return u"DOUISHO:%1:%2-%3-%4:%5:%6"_s.arg(version)
        .arg(form.patient.iKyotenCd)
        .arg(form.patient.iKyotenEb)
        .arg(form.patient.nIDNo)
        .arg(row)
        .arg(form.formNumber);
}

QByteArray qrPicture(const QString &text) {
    const std::unique_ptr<QRcode, decltype(&QRcode_free)> code(
        QRcode_encodeString(text.toUtf8().constData(), 0, QR_ECLEVEL_M, QR_MODE_8, 1), &QRcode_free);
    if (!code)
        return {};
    const qsizetype side = (code->width + 2 * margin) * dotsOfModule;
    const qsizetype bytesOfLine = (side + 31) / 32 * 4; // whole words
    QByteArray picture = bitmapHeader(side, bytesOfLine);
    picture.reserve(picture.size() + side * bytesOfLine);
    for (int row = code->width + margin - 1; row >= -margin; --row) { // from the foot up
        const QByteArray line = dotsOfRow(*code, row, bytesOfLine);
        for (int i = 0; i < dotsOfModule; ++i)
            picture += line;
    }
    return picture;
}
