#include "db/odbc/odbc_values.h"

#include <array>

namespace {

/// The digits of a number up to 18 places, which a 64-bit integer surely holds.
struct Digits {
    qint64 value = 0;
    qint64 scale = 1; ///< 10 to the number of places behind the point
    bool isExact = false;
};

Digits readDigits(QStringView text) {
    constexpr int mostDigits = 18;
    Digits digits;
    const bool negative = text.startsWith(u'-');
    if (negative)
        text = text.mid(1);
    int count = 0;
    bool behindPoint = false;
    for (const QChar c : text) {
        if (c == u'.' && !behindPoint) {
            behindPoint = true;
            continue;
        }
        if (c < u'0' || c > u'9' || ++count > mostDigits)
            return {};
        digits.value = digits.value * 10 + (c.unicode() - u'0');
        if (behindPoint)
            digits.scale *= 10;
    }
    if (negative)
        digits.value = -digits.value;
    digits.isExact = count > 0;
    return digits;
}

template <size_t N>
void writeNumber(std::array<char16_t, N> &text, size_t at, unsigned value, size_t places) {
    for (size_t i = places; i-- > 0; value /= 10)
        text[at + i] = char16_t(u'0' + value % 10);
}

} // namespace

void appendDecimal(Recordset &rows, QStringView digits) {
    const Digits read = readDigits(digits);
    if (read.isExact && read.value % read.scale == 0) {
        rows.appendInteger(read.value / read.scale);
        return;
    }
    constexpr qint64 exactInDouble = qint64(1) << 53;
    if (read.isExact && read.value < exactInDouble && read.value > -exactInDouble) {
        rows.appendReal(double(read.value) / double(read.scale));
        return;
    }
    bool ok = false;
    const double real = digits.toDouble(&ok);
    if (ok)
        rows.appendReal(real);
    else
        rows.appendText(digits.utf16(), size_t(digits.size()) * sizeof(char16_t));
}

void appendTimestamp(Recordset &rows, const SQL_TIMESTAMP_STRUCT &at) {
    std::array<char16_t, 27> text{};
    writeNumber(text, 0, unsigned(at.year), 4);
    text[4] = u'/';
    writeNumber(text, 5, at.month, 2);
    text[7] = u'/';
    writeNumber(text, 8, at.day, 2);
    // The fraction counts nanoseconds. Three places are all that a server takes for a column that has no
    // more.
    constexpr unsigned finest = 100, millisecond = 1'000'000;
    const size_t places = at.fraction % millisecond < finest ? 3 : 7;
    const bool midnight = at.hour == 0 && at.minute == 0 && at.second == 0 && at.fraction < finest;
    if (!midnight) {
        text[10] = u' ';
        writeNumber(text, 11, at.hour, 2);
        text[13] = u':';
        writeNumber(text, 14, at.minute, 2);
        text[16] = u':';
        writeNumber(text, 17, at.second, 2);
        text[19] = u'.';
        writeNumber(text, 20, unsigned(at.fraction) / (places == 3 ? millisecond : finest), places);
    }
    rows.appendText(text.data(), (midnight ? 10 : 20 + places) * sizeof(char16_t));
}
