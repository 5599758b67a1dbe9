#include "print/consent_form/qr_code.h"

#include "print/consent_form/form_gather.h"

#include <QtEndian>
#include <array>
#include <memory>
#include <qrencode.h>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int version = 1;
constexpr int dotsOfModule = 6;
constexpr int margin = 4; ///< modules, as the code's standard asks

QByteArray bigEndian(quint32 number) {
    QByteArray bytes(4, Qt::Uninitialized);
    qToBigEndian(number, bytes.data());
    return bytes;
}

/// The check sum of PNG's chunks.
quint32 crc32(const QByteArray &bytes) {
    static const std::array<quint32, 256> table = [] {
        std::array<quint32, 256> entries{};
        for (quint32 i = 0; i < entries.size(); ++i) {
            quint32 value = i;
            for (int bit = 0; bit < 8; ++bit)
                value = value & 1 ? 0xEDB88320U ^ (value >> 1) : value >> 1;
            entries[i] = value;
        }
        return entries;
    }();
    quint32 sum = 0xFFFFFFFFU;
    for (const char byte : bytes)
        sum = table[(sum ^ quint8(byte)) & 0xFF] ^ (sum >> 8);
    return ~sum;
}

QByteArray chunk(const QByteArray &kind, const QByteArray &data) {
    const QByteArray body = kind + data;
    return bigEndian(quint32(data.size())) + body + bigEndian(crc32(body));
}

/// @param rows of a picture with one bit a dot, each led by its filter byte
QByteArray png(int side, const QByteArray &rows) {
    constexpr char blackAndWhite[] = {1, 0, 0, 0, 0}; // depth, grey, deflate, filters, not interlaced
    constexpr int lengthBefore = 4;                   // what qCompress puts before the zlib stream
    return "\x89PNG\r\n\x1a\n"_ba +
           chunk("IHDR"_ba, bigEndian(quint32(side)) + bigEndian(quint32(side)) +
                                QByteArray(blackAndWhite, sizeof blackAndWhite)) +
           chunk("IDAT"_ba, qCompress(rows).mid(lengthBefore)) + chunk("IEND"_ba, {});
}

/// One line of dots, white 1 and black 0, with its filter byte.
QByteArray dotsOfRow(const QRcode &code, int row) {
    const int side = (code.width + 2 * margin) * dotsOfModule;
    QByteArray line(1 + (side + 7) / 8, char(0xFF));
    line[0] = 0;
    if (row < 0 || row >= code.width)
        return line;
    for (int dot = 0; dot < code.width * dotsOfModule; ++dot) {
        if (!(code.data[row * code.width + dot / dotsOfModule] & 1))
            continue;
        const int at = margin * dotsOfModule + dot;
        line[1 + at / 8] = char(line[1 + at / 8] & ~(0x80 >> (at % 8)));
    }
    return line;
}

} // namespace

QString qrContent(const ConsentForm &form) {
    return u"DOUISHO:%1:%2-%3-%4:%5:%6"_s.arg(version)
        .arg(form.patient.iKyotenCd)
        .arg(form.patient.iKyotenEb)
        .arg(form.patient.nIDNo)
        .arg(form.consentKey)
        .arg(form.formNumber);
}

QByteArray qrPicture(const QString &text) {
    const std::unique_ptr<QRcode, decltype(&QRcode_free)> code(
        QRcode_encodeString(text.toUtf8().constData(), 0, QR_ECLEVEL_M, QR_MODE_8, 1), &QRcode_free);
    if (!code)
        return {};
    QByteArray rows;
    for (int row = -margin; row < code->width + margin; ++row)
        rows += dotsOfRow(*code, row).repeated(dotsOfModule);
    return png((code->width + 2 * margin) * dotsOfModule, rows);
}
