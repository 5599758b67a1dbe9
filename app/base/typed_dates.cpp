#include "app/base/typed_dates.h"

#include "app/base/dates.h"
#include "app/base/text.h"

#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

const Era *eraNamed(QStringView name) {
    for (const Era &era : systemEras())
        if (name == era.name ||
            (name.size() == 1 && (name[0].toUpper() == era.initial || name[0] == era.name[0])))
            return &era;
    return nullptr;
}

QDate dateInEra(const Era &era, int year, int month, int day) {
    const QDate date(era.start.year() + year - 1, month, day);
    return year >= 1 && eraOf(date) == &era ? date : QDate();
}

/// Half-width and without blanks; ー 。 ・ are what an input method makes of the keys - . /
QString normalised(const QString &typed) {
    QString text = toHalfWidth(typed).remove(u' ');
    for (const QChar square : u"㋿㍻㍼㍽㍾"_s)
        text.replace(square, QString(square).normalized(QString::NormalizationForm_KC));
    text.replace(u'ｰ', u'-').replace(u'\u2212', u'-').replace(u'｡', u'.').replace(u'･', u'/');
    return text;
}

QDate fullDate(const QString &input) {
    static const QRegularExpression separated(
        u"^(\\D*?)(\\d{1,4}|元)(?:[/.-](\\d{1,2})[/.-](\\d{1,2})|年(\\d{1,2})月(\\d{1,2})日?)$"_s);
    static const QRegularExpression digitsOnly(u"^(?:(\\d{4})|([A-Za-z])(\\d{2}))(\\d{2})(\\d{2})$"_s);

    if (const auto m = digitsOnly.match(input); m.hasMatch()) {
        const int month = m.capturedView(4).toInt();
        const int day = m.capturedView(5).toInt();
        if (m.hasCaptured(1))
            return QDate(m.capturedView(1).toInt(), month, day);
        const Era *const era = eraNamed(m.capturedView(2));
        return era ? dateInEra(*era, m.capturedView(3).toInt(), month, day) : QDate();
    }
    const auto m = separated.match(input);
    if (!m.hasMatch())
        return {};
    const int month = (m.hasCaptured(3) ? m.capturedView(3) : m.capturedView(5)).toInt();
    const int day = (m.hasCaptured(4) ? m.capturedView(4) : m.capturedView(6)).toInt();
    const QStringView year = m.capturedView(2);
    if (m.capturedLength(1) == 0)
        return year.size() == 4 ? QDate(year.toInt(), month, day) : QDate();
    const Era *const era = eraNamed(m.capturedView(1));
    return era ? dateInEra(*era, year == u"元" ? 1 : year.toInt(), month, day) : QDate();
}

using Readings = QList<QDate>;

Readings only(const QDate &day) {
    return day.isValid() ? Readings{day} : Readings{};
}

/// The years of a consent: what has been answered lies some months back, what runs ends within six.
QDate inYearNear(const QDate &today, int month, int day) {
    const QDate first = QDate(today.year(), today.month(), 1).addMonths(-5);
    for (const int year : {first.year(), first.year() + 1})
        if (const QDate date(year, month, day); date.isValid() && date >= first)
            return date;
    return {};
}

/// A year of one or two digits: of the era or of the century. Either is taken unasked when it alone lies
/// within five years of today; nobody enters a day more than ten years ahead.
Readings inShortYear(const QDate &today, int year, int month, int day) {
    Readings readings;
    const auto consider = [&](const QDate &date) {
        if (date.isValid() && date <= today.addYears(10))
            readings.append(date);
    };
    if (const Era *era = eraOf(today))
        consider(dateInEra(*era, year, month, day));
    consider(QDate(today.year() / 100 * 100 + year, month, day));
    for (const QDate &date : readings)
        if (date >= today.addYears(-5) && date <= today.addYears(5))
            return {date};
    return readings;
}

/// Digits without signs between them, by how many there are.
Readings fromDigits(const QString &digits, const QDate &today) {
    const auto part = [&](qsizetype at, qsizetype length) {
        return QStringView(digits).mid(at, length).toInt();
    };
    const qsizetype year = digits.size() - 4;
    switch (digits.size()) {
    case 1:
    case 2:
        return only(QDate(today.year(), today.month(), digits.toInt()));
    case 3:
        return only(inYearNear(today, part(0, 1), part(1, 2))) +
               only(inYearNear(today, part(0, 2), part(2, 1)));
    case 4:
        return only(inYearNear(today, part(0, 2), part(2, 2)));
    case 5:
    case 6:
        return inShortYear(today, part(0, year), part(year, 2), part(year + 2, 2));
    default:
        return {};
    }
}

Readings fromWord(const QString &word, const QDate &today) {
    const struct {
        QStringView word;
        int days;
    } words[] = {{u"今日", 0}, {u"本日", 0}, {u"きょう", 0}, {u"明日", 1}, {u"昨日", -1}};
    for (const auto &known : words)
        if (word == known.word)
            return {today.addDays(known.days)};
    return {};
}

/// +6m and the like; a number alone counts days.
Readings fromDistance(const QString &text, const QDate &today) {
    static const QRegularExpression distance(
        u"^([+-])(\\d{1,3})(?:(?:d|日)?|(w|週間?)|(m|[かｶｹヵヶ]?月)|(y|年))後?$"_s,
        QRegularExpression::CaseInsensitiveOption);
    const auto m = distance.match(text);
    if (!m.hasMatch())
        return {};
    const int count = m.capturedView(2).toInt() * (m.capturedView(1) == u"-" ? -1 : 1);
    if (m.hasCaptured(5))
        return {today.addYears(count)};
    if (m.hasCaptured(4))
        return {today.addMonths(count)};
    return {today.addDays(m.hasCaptured(3) ? 7 * count : count)};
}

Readings fromParts(const QString &text, const QDate &today) {
    static const QRegularExpression parts(
        u"^(?:(\\d{1,2})[/.-])?(\\d{1,2})[/.-](\\d{1,2})$|^(\\d{1,2})月(\\d{1,2})日?$"_s);
    const auto m = parts.match(text);
    if (!m.hasMatch())
        return {};
    if (m.hasCaptured(4))
        return only(inYearNear(today, m.capturedView(4).toInt(), m.capturedView(5).toInt()));
    const int month = m.capturedView(2).toInt(), day = m.capturedView(3).toInt();
    return m.hasCaptured(1) ? inShortYear(today, m.capturedView(1).toInt(), month, day)
                            : only(inYearNear(today, month, day));
}

bool isDigits(const QString &text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

} // namespace

QDate dateFromInput(const QString &text) {
    // What the program writes itself is by far the most frequent; it needs no pattern.
    if (text.size() == 10)
        if (const QDate date = dateFromDatabase(text); date.isValid() && dateText(date) == text)
            return date;
    return fullDate(normalised(text));
}

QList<QDate> daysFromInput(const QString &text, const QDate &today) {
    if (const QDate day = dateFromInput(text); day.isValid() || !today.isValid())
        return only(day);
    const QString input = normalised(text);
    if (isDigits(input))
        return fromDigits(input, today);
    return fromWord(input, today) + fromDistance(input, today) + fromParts(input, today);
}

QList<QDate> monthsFromInput(const QString &text, const QDate &today) {
    const QStringList words{u"先月"_s, u"今月"_s, u"来月"_s};
    Readings days;
    if (const qsizetype word = words.indexOf(normalised(text)); word >= 0 && today.isValid())
        days = {today.addMonths(int(word) - 1)};
    // A month is a date whose day was left out, in whichever of the notations.
    for (const QString &first : {u"/01"_s, u"-01"_s, u".01"_s, u"01"_s, u"01日"_s})
        if (days.isEmpty() && !text.trimmed().isEmpty())
            days = daysFromInput(text + first, today);
    if (days.isEmpty())
        days = daysFromInput(text, today);
    for (QDate &day : days)
        day = QDate(day.year(), day.month(), 1);
    return days;
}
