#pragma once

#include <QByteArray>
#include <vector>

class QIODevice;

/// The objects of a PDF file, written one after the other as they are finished; only their places are kept.
class PdfFile {
public:
    explicit PdfFile(QIODevice &device);

    /// A number for an object that others may name before it is written.
    int reserve();
    void write(int object, const QByteArray &body);
    /// @param entries of the stream's dictionary, without its length and filter
    void writeStream(int object, const QByteArray &entries, const QByteArray &bytes);
    int add(const QByteArray &body);
    int addStream(const QByteArray &entries, const QByteArray &bytes);
    void finish(int root, int info);

    /// Whether all bytes went out.
    bool isSound() const { return m_sound; }

private:
    void put(const QByteArray &bytes);

    QIODevice &m_device;
    std::vector<qint64> m_places; ///< of object 1 and on
    qint64 m_written = 0;
    bool m_sound = true;
};

/// Spellings of PDF values.
namespace pdf {

/// Digits behind the point of lengths: thousandths of a millimetre.
constexpr int lengthDigits = 3;

void append(QByteArray &out, double number, int digits = lengthDigits);
QByteArray reference(int object);
/// A text string as a hexadecimal one, big-endian with its mark.
QByteArray text(const QString &text);
void appendHex(QByteArray &out, quint16 code);

} // namespace pdf
