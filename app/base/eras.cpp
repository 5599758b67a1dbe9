#include "app/base/eras.h"

#include <unicode/ucal.h>
#include <unicode/udat.h>

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
