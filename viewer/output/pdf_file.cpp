#include "viewer/output/pdf_file.h"

#include <QIODevice>
#include <array>
#include <charconv>
#include <cmath>

namespace {

constexpr int compression = 3;    // of 9; more takes longer and hardly packs better
constexpr int qtLengthPrefix = 4; // bytes that qCompress puts before the packed data
constexpr double largestNumber = 1e9;

} // namespace

PdfFile::PdfFile(QIODevice &device) : m_device(device) {
    // The four bytes tell programs that the file is not plain text.
    put("%PDF-1.7\n%\xE2\xE3\xCF\xD3\n");
}

void PdfFile::put(const QByteArray &bytes) {
    m_sound = m_sound && m_device.write(bytes) == bytes.size();
    m_written += bytes.size();
}

int PdfFile::reserve() {
    m_places.push_back(0);
    return int(m_places.size());
}

void PdfFile::write(int object, const QByteArray &body) {
    m_places[size_t(object - 1)] = m_written;
    put(QByteArray::number(object) + " 0 obj\n" + body + "\nendobj\n");
}

void PdfFile::writeStream(int object, const QByteArray &entries, const QByteArray &bytes) {
    const QByteArray packed = qCompress(bytes, compression).sliced(qtLengthPrefix);
    write(object, "<< " + entries + " /Filter /FlateDecode /Length " + QByteArray::number(packed.size()) +
                      " >>\nstream\n" + packed + "\nendstream");
}

int PdfFile::add(const QByteArray &body) {
    const int object = reserve();
    write(object, body);
    return object;
}

int PdfFile::addStream(const QByteArray &entries, const QByteArray &bytes) {
    const int object = reserve();
    writeStream(object, entries, bytes);
    return object;
}

void PdfFile::finish(int root, int info) {
    const qint64 table = m_written;
    const QByteArray count = QByteArray::number(qsizetype(m_places.size()) + 1);
    QByteArray entries = "xref\n0 " + count + "\n0000000000 65535 f \n";
    for (const qint64 place : m_places)
        entries += QByteArray::number(place).rightJustified(10, '0') + " 00000 n \n";
    put(entries + "trailer\n<< /Size " + count + " /Root " + pdf::reference(root) + " /Info " +
        pdf::reference(info) + " >>\nstartxref\n" + QByteArray::number(table) + "\n%%EOF\n");
}

namespace pdf {

void append(QByteArray &out, double number, int digits) {
    static constexpr std::array<qint64, 7> powers{1, 10, 100, 1000, 10'000, 100'000, 1'000'000};
    const qint64 unit = powers[size_t(digits)];
    const double bounded = std::isfinite(number) ? std::clamp(number, -largestNumber, largestNumber) : 0;
    const qint64 value = std::llround(bounded * double(unit));
    if (value < 0)
        out += '-';
    std::array<char, 24> buffer;
    const qint64 whole = std::abs(value) / unit;
    qint64 rest = std::abs(value) % unit;
    out.append(buffer.data(),
               std::to_chars(buffer.data(), buffer.data() + buffer.size(), whole).ptr - buffer.data());
    if (rest != 0)
        out += '.';
    for (qint64 part = unit / 10; rest != 0; part /= 10) {
        out += char('0' + rest / part);
        rest %= part;
    }
    out += ' ';
}

QByteArray reference(int object) {
    return QByteArray::number(object) + " 0 R";
}

void appendHex(QByteArray &out, quint16 code) {
    constexpr char digits[] = "0123456789ABCDEF";
    for (int shift = 12; shift >= 0; shift -= 4)
        out += digits[code >> shift & 0xF];
}

QByteArray text(const QString &text) {
    QByteArray out = "<FEFF";
    for (const QChar c : text)
        appendHex(out, c.unicode());
    return out + '>';
}

} // namespace pdf
