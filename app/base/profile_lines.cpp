#include "app/base/profile_lines.h"

#include "app/base/codepage932.h"

#include <QStringConverter>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QByteArrayView utf8Mark("\xEF\xBB\xBF");
constexpr QByteArrayView utf16LeMark("\xFF\xFE");
constexpr char16_t noUnit = 0xFFFF; ///< behind the end

/// U+3000 is no blank here.
bool isBlank(char16_t c) {
    return c == u' ' || c == u'\t' || c == u'\v';
}

bool isLineEnd(char16_t c) {
    return c == u'\r' || c == u'\n';
}

/// Kana kinds, widths and accented letters differ; only A to Z and a to z are the same.
bool equalNames(QStringView a, QStringView b) {
    const auto lower = [](QChar c) { return c >= u'A' && c <= u'Z' ? QChar(c.unicode() + 0x20) : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](QChar x, QChar y) { return lower(x) == lower(y); });
}

QStringView strippedOfSpaces(QStringView name) {
    while (name.startsWith(u' '))
        name = name.sliced(1);
    while (name.endsWith(u' '))
        name.chop(1);
    return name;
}

} // namespace

ProfileLines::ProfileLines(const QByteArray &bytes) : m_bytes(bytes) {
    if (bytes.startsWith(utf16LeMark)) {
        m_encoding = Encoding::Utf16Le;
        m_textStart = utf16LeMark.size();
    } else if (bytes.startsWith(utf8Mark)) {
        m_encoding = Encoding::Utf8;
        m_textStart = utf8Mark.size();
    }
    for (qsizetype at = m_textStart; at < bytes.size(); at = m_lines.back().whole.end)
        m_lines.push_back(readLine(at));
}

/// The code unit at a place: a byte, in UTF-16 two. Bytes of larger characters match no syntax.
char16_t ProfileLines::unit(qsizetype at) const {
    if (at + unitSize() > m_bytes.size())
        return noUnit;
    const auto byte = [this](qsizetype i) { return static_cast<unsigned char>(m_bytes[i]); };
    return m_encoding == Encoding::Utf16Le ? char16_t(byte(at) | byte(at + 1) << 8) : char16_t(byte(at));
}

/// Bytes to the next character: a trail byte is never looked at on its own.
qsizetype ProfileLines::width(qsizetype at) const {
    if (m_encoding == Encoding::CodePage932)
        return characterLength932(m_bytes, at);
    return qMin(unitSize(), m_bytes.size() - at);
}

ProfileLines::Line ProfileLines::readLine(qsizetype start) const {
    qsizetype end = start;
    while (end < m_bytes.size() && !isLineEnd(unit(end)))
        end += width(end);
    qsizetype next = end;
    if (next < m_bytes.size())
        next += unitSize();
    if (next < m_bytes.size() && unit(end) == u'\r' && unit(next) == u'\n')
        next += unitSize();
    Line line;
    line.whole = {start, next};
    classify(line, end - (end - start) % unitSize());
    return line;
}

void ProfileLines::classify(Line &line, qsizetype end) const {
    const Range content = stripped({line.whole.start, end});
    if (content.start == content.end || unit(content.start) == u';')
        return;
    if (unit(content.start) == u'[') {
        const Range inside{content.start + unitSize(), content.end};
        line.kind = Kind::Section;
        line.name = stripped({inside.start, find(u']', inside)});
        return;
    }
    const qsizetype equals = find(u'=', content);
    if (equals == content.end)
        return;
    line.kind = Kind::Key;
    line.name = stripped({content.start, equals});
    line.value = stripped({equals + unitSize(), content.end});
}

/// Where the unit stands first, the end of the range when nowhere.
qsizetype ProfileLines::find(char16_t wanted, const Range &range) const {
    qsizetype at = range.start;
    while (at < range.end && unit(at) != wanted)
        at += width(at);
    return qMin(at, range.end);
}

/// Blanks never equal a trail byte, so that the right end may be taken back unit by unit.
ProfileLines::Range ProfileLines::stripped(Range range) const {
    while (range.start < range.end && isBlank(unit(range.start)))
        range.start += unitSize();
    while (range.start + unitSize() <= range.end && isBlank(unit(range.end - unitSize())))
        range.end -= unitSize();
    return range;
}

std::optional<size_t> ProfileLines::section(const QString &name) const {
    const QStringView wanted = strippedOfSpaces(name);
    for (size_t i = 0; i < m_lines.size(); ++i)
        if (m_lines[i].kind == Kind::Section && equalNames(text(m_lines[i].name), wanted))
            return i;
    return {};
}

std::optional<size_t> ProfileLines::key(size_t header, const QString &name) const {
    const QStringView wanted = strippedOfSpaces(name);
    const size_t end = sectionEnd(header);
    for (size_t i = header + 1; i < end; ++i)
        if (m_lines[i].kind == Kind::Key && equalNames(text(m_lines[i].name), wanted))
            return i;
    return {};
}

size_t ProfileLines::sectionEnd(size_t header) const {
    size_t end = header + 1;
    while (end < m_lines.size() && m_lines[end].kind != Kind::Section)
        ++end;
    return end;
}

QString ProfileLines::text(const Range &range) const {
    const QByteArrayView bytes = QByteArrayView(m_bytes).sliced(range.start, range.end - range.start);
    switch (m_encoding) {
    case Encoding::Utf8:
        return QString::fromUtf8(bytes);
    case Encoding::Utf16Le:
        return QStringDecoder(QStringDecoder::Utf16LE, QStringDecoder::Flag::Stateless)(bytes);
    case Encoding::CodePage932:
        break;
    }
    return decode932(bytes);
}

QByteArray ProfileLines::encoded(const QString &text, bool *touched) const {
    switch (m_encoding) {
    case Encoding::Utf8:
        return text.toUtf8();
    case Encoding::Utf16Le:
        return QStringEncoder(QStringEncoder::Utf16LE)(text);
    case Encoding::CodePage932:
        break;
    }
    const Encoded932 result = encode932(text);
    if (touched)
        *touched = result.touched;
    return result.bytes;
}

QByteArray ProfileLines::missingLineEnd() const {
    // A header behind a mark, on its line, is none to who does not know the mark.
    if (m_bytes.size() <= m_textStart)
        return m_textStart > 0 ? encoded(u"\r\n"_s) : QByteArray();
    // Half a UTF-16 unit at the end of a cut-off file is made whole, or all that follows would be shifted.
    const bool half = (m_bytes.size() - m_textStart) % unitSize() != 0;
    if (!half && isLineEnd(unit(m_bytes.size() - unitSize())))
        return {};
    return (half ? QByteArray(1, '\0') : QByteArray()) + encoded(u"\r\n"_s);
}
