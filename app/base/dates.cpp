#include "app/base/dates.h"

#include <optional>
#include <unicode/ucal.h>
#include <unicode/udat.h>

using namespace Qt::Literals::StringLiterals;

namespace {

void appendNumber(QString &text, int number, int digits) {
    QChar buffer[11];
    QChar *const end = buffer + std::size(buffer);
    QChar *at = end;
    for (; number > 0 || digits > 0; number /= 10, --digits)
        *--at = QChar(u'0' + number % 10);
    text.append(at, end - at);
}

qsizetype runLength(QStringView pattern, qsizetype at) {
    qsizetype end = at + 1;
    while (end < pattern.size() && pattern[end] == pattern[at])
        ++end;
    return end - at;
}

/// A date taken apart for a pattern; the era is looked up only when the pattern asks for it.
class DateWriter {
public:
    explicit DateWriter(const QDate &date) : m_date(date) { date.getDate(&m_year, &m_month, &m_day); }

    /// Writes the field that a run of one letter stands for.
    /// @return how many letters of the run were taken, 0 when they are no field
    int write(QString &text, QChar letter, qsizetype run) {
        const int digits = run >= 2 ? 2 : 1;
        switch (letter.unicode()) {
        case u'g':
            return writeEra(text, run);
        case u'e':
            appendNumber(text, era() ? m_year - era()->start.year() + 1 : m_year, digits);
            return digits;
        case u'm':
            appendNumber(text, m_month, digits);
            return digits;
        case u'd':
            appendNumber(text, m_day, digits);
            return digits;
        case u'y':
            if (run < 4)
                return 0;
            appendNumber(text, m_year, 4);
            return 4;
        default:
            return 0;
        }
    }

private:
    int writeEra(QString &text, qsizetype run) {
        const bool inFull = run >= 3;
        if (era() && inFull)
            text.append(era()->name);
        else if (era())
            text.append(era()->initial);
        return inFull ? 3 : 1;
    }

    const Era *era() {
        if (!m_era)
            m_era = eraOf(m_date);
        return *m_era;
    }

    QDate m_date;
    int m_year = 0;
    int m_month = 0;
    int m_day = 0;
    std::optional<const Era *> m_era;
};

bool isDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

/// Takes up to `most` digits from the front; −1 when there is none.
template <typename View> int takeNumber(View &text, qsizetype most) {
    int number = 0;
    qsizetype length = 0;
    for (; length < most && length < text.size(); ++length) {
        const char16_t c = QChar(text[length]).unicode();
        if (!isDigit(c))
            break;
        number = number * 10 + (c - u'0');
    }
    text = text.sliced(length);
    return length == 0 ? -1 : number;
}

template <typename View> bool takeSeparator(View &text) {
    if (text.isEmpty() || (text[0] != u'/' && text[0] != u'-'))
        return false;
    text = text.sliced(1);
    return true;
}

template <typename View> QDate readDatabaseDate(View text) {
    const int year = takeNumber(text, 4);
    if (year < 0 || !takeSeparator(text))
        return {};
    const int month = takeNumber(text, 2);
    if (month < 0 || !takeSeparator(text))
        return {};
    const int day = takeNumber(text, 2);
    const bool ends = text.isEmpty() || !isDigit(QChar(text[0]).unicode());
    return ends ? QDate(year, month, day) : QDate();
}

} // namespace

QString formatDate(const QDate &date, QStringView pattern) {
    QString text;
    if (!date.isValid())
        return text;
    text.reserve(pattern.size() + 4);
    DateWriter writer(date);
    for (qsizetype i = 0; i < pattern.size();) {
        const int taken = writer.write(text, pattern[i], runLength(pattern, i));
        if (taken == 0)
            text.append(pattern[i]);
        i += qMax(taken, 1);
    }
    return text;
}

QString dateText(const QDate &date) {
    return formatDate(date, u"yyyy/mm/dd");
}

QDate dateFromDatabase(QStringView text) {
    return readDatabaseDate(text);
}

QDate dateFromDatabase(QLatin1StringView text) {
    return readDatabaseDate(text);
}

int dateKey(const QDate &date) {
    return date.isValid() ? date.year() * 10000 + date.month() * 100 + date.day() : 0;
}

QDate dateFromKey(int key) {
    return key > 0 ? QDate(key / 10000, key / 100 % 100, key % 100) : QDate();
}

QString weekdayText(const QDate &date) {
    return date.isValid() ? QString(u"月火水木金土日"[date.dayOfWeek() - 1]) : QString();
}

namespace {

constexpr const char *locale = "ja_JP@calendar=japanese";

/// The first moment of an era, in ICU's milliseconds: the calendar fills in month and day of its first year.
UDate startOf(UCalendar *calendar, int32_t era) {
    UErrorCode status = U_ZERO_ERROR;
    ucal_clear(calendar);
    ucal_set(calendar, UCAL_ERA, era);
    ucal_set(calendar, UCAL_YEAR, 1);
    return ucal_getMillis(calendar, &status);
}

QString formatted(UDateFormat *format, const char16_t *pattern, UDate moment) {
    char16_t text[64];
    UErrorCode status = U_ZERO_ERROR;
    udat_applyPattern(format, false, pattern, -1);
    const int32_t length = udat_format(format, moment, text, int32_t(std::size(text)), nullptr, &status);
    return U_SUCCESS(status) ? QString(reinterpret_cast<const QChar *>(text), length) : QString();
}

std::vector<Era> readEras() {
    constexpr double millisecondsPerDay = 86'400'000;
    UErrorCode status = U_ZERO_ERROR;
    const icu::LocalUCalendarPointer calendar(ucal_open(u"UTC", -1, locale, UCAL_DEFAULT, &status));
    const icu::LocalUDateFormatPointer format(
        udat_open(UDAT_PATTERN, UDAT_PATTERN, locale, u"UTC", -1, u"G", -1, &status));
    if (U_FAILURE(status))
        qFatal("ICU has no Japanese calendar: %s", u_errorName(status));

    std::vector<Era> eras;
    for (int32_t era = ucal_getLimit(calendar.getAlias(), UCAL_ERA, UCAL_MAXIMUM, &status); era >= 0; --era) {
        const UDate start = startOf(calendar.getAlias(), era);
        const QString initial = formatted(format.getAlias(), u"GGGGG", start);
        if (initial.size() != 1 || initial[0] < u'A' || initial[0] > u'Z')
            break;
        eras.push_back({QDate(1970, 1, 1).addDays(qint64(start / millisecondsPerDay)),
                        formatted(format.getAlias(), u"G", start), initial[0]});
    }
    return eras;
}

} // namespace

const std::vector<Era> &systemEras() {
    static const std::vector<Era> eras = readEras();
    return eras;
}

const Era *eraOf(const QDate &date) {
    if (!date.isValid())
        return nullptr;
    for (const Era &era : systemEras())
        if (era.start <= date)
            return &era;
    return nullptr;
}
