#include "viewer/output/cff.h"

#include <QByteArrayView>
#include <QHash>

namespace {

constexpr int charsetKey = 15, charStringsKey = 17, orderingKey = 12 << 8 | 30;

/// Reads big-endian numbers; behind the end it reads zeros and is no longer sound.
class Bytes {
public:
    explicit Bytes(QByteArrayView bytes, qsizetype at = 0) : m_bytes(bytes), m_at(at) {}

    quint32 take(int size) {
        quint32 value = 0;
        for (int i = 0; i < size; ++i)
            value = value << 8 | next();
        return value;
    }
    void skip(qsizetype size) { m_at += size; }
    bool atEnd() const { return m_at >= m_bytes.size(); }
    bool isSound() const { return m_sound; }
    qsizetype place() const { return m_at; }
    QByteArrayView view(qsizetype from, qsizetype size) const {
        return from >= 0 && size >= 0 && from <= m_bytes.size() - size ? m_bytes.sliced(from, size)
                                                                       : QByteArrayView();
    }

private:
    quint8 next() {
        m_sound = m_sound && m_at >= 0 && m_at < m_bytes.size();
        return m_sound ? quint8(m_bytes[m_at++]) : 0;
    }

    QByteArrayView m_bytes;
    qsizetype m_at;
    bool m_sound = true;
};

struct Index {
    quint32 count = 0;
    QByteArrayView first; ///< its first object
};

/// Reads a list of objects and goes behind it.
Index takeIndex(Bytes &bytes) {
    Index index;
    index.count = bytes.take(2);
    if (index.count == 0)
        return index;
    // One place more than objects, counted from the byte before the first.
    const int width = int(bytes.take(1));
    const quint32 begin = bytes.take(width);
    const quint32 end = bytes.take(width);
    quint32 last = end;
    if (index.count > 1) {
        bytes.skip(qsizetype(index.count - 2) * width);
        last = bytes.take(width);
    }
    index.first = bytes.view(bytes.place() - 1 + begin, qsizetype(end) - qsizetype(begin));
    bytes.skip(qsizetype(last) - 1);
    return index;
}

/// The last operand of every key of a dictionary; real numbers count as 0.
QHash<int, qint32> entries(QByteArrayView dictionary) {
    QHash<int, qint32> found;
    qint32 operand = 0;
    for (Bytes bytes(dictionary); !bytes.atEnd() && bytes.isSound();) {
        const auto b = int(bytes.take(1));
        if (b <= 21) {
            found.insert(b == 12 ? 12 << 8 | int(bytes.take(1)) : b, operand);
            operand = 0;
        } else if (b == 28) {
            operand = qint16(bytes.take(2));
        } else if (b == 29) {
            operand = qint32(bytes.take(4));
        } else if (b == 30) {
            while (bytes.isSound() && (bytes.take(1) & 0xF) != 0xF) {
            }
            operand = 0;
        } else if (b >= 32 && b <= 246) {
            operand = b - 139;
        } else if (b >= 247 && b <= 254) {
            const auto low = int(bytes.take(1));
            operand = b <= 250 ? (b - 247) * 256 + low + 108 : -(b - 251) * 256 - low - 108;
        }
    }
    return found;
}

} // namespace

std::optional<std::vector<quint16>> glyphNumbers(const QByteArray &cff) {
    Bytes bytes(cff, 2);
    const auto headerSize = qsizetype(bytes.take(1));
    bytes = Bytes(cff, headerSize);
    takeIndex(bytes); // names
    const auto top = entries(takeIndex(bytes).first);
    if (!bytes.isSound() || !top.contains(orderingKey))
        return {};
    Bytes programs(cff, top.value(charStringsKey));
    const quint32 glyphs = programs.take(2);
    Bytes charset(cff, top.value(charsetKey));
    std::vector<quint16> numbers{0};
    const int format = int(charset.take(1));
    while (numbers.size() < glyphs && charset.isSound()) {
        const quint32 first = charset.take(2);
        const quint32 more = format == 0 ? 0 : charset.take(format == 1 ? 1 : 2);
        for (quint32 i = 0; i <= more && numbers.size() < glyphs; ++i)
            numbers.push_back(quint16(first + i));
    }
    if (!charset.isSound() || !programs.isSound())
        return {};
    return numbers;
}
