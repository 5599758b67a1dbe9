#include "import/import_values.h"

#include "app/base/dates.h"
#include "app/base/text.h"
#include "app/base/typed_dates.h"

#include <QRegularExpression>
#include <algorithm>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

QString tooLong(const ImportField &field, const QString &text) {
    return u"「%1」が長すぎます（全角 %2 文字、半角 %3 文字まで）：%4"_s.arg(field.caption)
        .arg(field.bytes / 2)
        .arg(field.bytes)
        .arg(text.left(30));
}

bool fits(const ImportField &field, const QString &text) {
    return field.bytes == 0 || byteLength932(text) <= field.bytes;
}

CellReading readText(const ImportField &field, const QString &text) {
    if (field.kind != ImportField::Memo && (text.contains(u'\n') || text.contains(u'\r')))
        return {{}, u"「%1」に改行があります"_s.arg(field.caption)};
    return fits(field, text) ? CellReading{text} : CellReading{{}, tooLong(field, text)};
}

// Full-width digits take twice the room; only where there is none are they taken as half-width ones.
CellReading readTyped(const ImportField &field, const QString &text) {
    QString typed = text;
    if (field.column == u"cYubinNo" && typed.startsWith(u'〒'))
        typed = typed.mid(1).trimmed();
    if (fits(field, typed))
        return readText(field, typed);
    const QString narrow = toHalfWidth(typed);
    if (!fits(field, narrow))
        return readText(field, typed);
    return {narrow, {}, u"「%1」を半角にしました"_s.arg(field.caption)};
}

/// As programs write them besides what is typed: a time or a day of the week behind the date, 西暦 before it.
QString withoutDecoration(const QString &text) {
    static const QRegularExpression behind(
        u"(?:[ T　]+\\d{1,2}:\\d{2}(?::\\d{2}(?:\\.\\d+)?)?|[（(][月火水木金土日]曜?日?[）)]|生まれ|生)$"_s);
    QString plain = text;
    plain.remove(behind).remove(behind);
    return plain.startsWith(u"西暦") ? plain.mid(2) : plain;
}

CellReading readDate(const ImportField &field, const QString &text, bool serials) {
    const QDate day =
        serials ? QDate(1899, 12, 30).addDays(text.toInt()) : dateFromInput(withoutDecoration(text));
    static const QRegularExpression shortYear(u"^\\d{1,2}[/.年-]\\d{1,2}[/.月-]\\d{1,2}日?$"_s);
    if (!day.isValid() && shortYear.match(toHalfWidth(text)).hasMatch())
        return {{}, u"「%1」の年を4桁か元号で書いてください：%2"_s.arg(field.caption, text)};
    if (!day.isValid())
        return {{}, u"「%1」が日付ではありません：%2"_s.arg(field.caption, text.left(30))};
    if (day.year() < 1868 || day.year() > 2199)
        return {{}, u"「%1」の年が正しくありません：%2"_s.arg(field.caption, text.left(30))};
    return {dateText(day),
            {},
            serials ? u"「%1」をExcelの日付の番号として読みました"_s.arg(field.caption) : QString()};
}

QString compared(const QString &text) {
    return comparedName(text).remove(u'・').remove(u'･');
}

template <class Equals> const ImportChoice *chosen(const ImportField &field, Equals equals) {
    for (const ImportChoice &choice : field.choices)
        for (const QStringView word : QStringView(choice.words).tokenize(u'|'))
            if (equals(word))
                return &choice;
    return nullptr;
}

CellReading readChoice(const ImportField &field, const QString &text) {
    const ImportChoice *choice = chosen(field, [&](QStringView word) { return word == text; });
    if (!choice)
        choice = chosen(field, [folded = compared(text)](QStringView word) {
            return compared(word.toString()) == folded;
        });
    if (choice)
        return {QString::number(choice->number)};
    QStringList shown;
    for (const ImportChoice &each : field.choices)
        shown += each.words.section(u'|', 0, 0);
    return {{},
            u"「%1」は %2 のどれかにしてください：%3"_s.arg(field.caption, shown.join(u"、"), text.left(30))};
}

CellReading readNumber(const ImportField &field, const QString &text) {
    bool number = false;
    const qint64 code = toHalfWidth(text).toLongLong(&number);
    if (!number || code <= 0 || code > std::numeric_limits<qint32>::max())
        return {{},
                u"「%1」は 1 から %L2 までの数字にしてください：%3"_s.arg(field.caption)
                    .arg(std::numeric_limits<qint32>::max())
                    .arg(text.left(30))};
    return {QString::number(code)};
}

bool isKana(const QString &text) {
    const auto kana = [](QChar c) {
        return (c >= u'ぁ' && c <= u'ヿ') || (c >= u'ｦ' && c <= u'ﾟ') || c.isSpace() || c == u'・';
    };
    return !text.isEmpty() && std::ranges::all_of(text, kana);
}

} // namespace

CellReading readCell(const ImportField &field, const QString &text, bool serials) {
    switch (field.kind) {
    case ImportField::Number:
        return readNumber(field, text);
    case ImportField::Typed:
        return readTyped(field, text);
    case ImportField::Date:
        return readDate(field, text, serials);
    case ImportField::Choice:
        return readChoice(field, text);
    default:
        return readText(field, text);
    }
}

bool isDaySerial(const QString &text) {
    constexpr int first = 10'000, last = 73'050; // 1927 to 2099
    bool number = false;
    const int serial = text.toInt(&number);
    return number && text.size() == 5 && serial >= first && serial <= last;
}

QString shownValue(const ImportField &field, const QString &value) {
    for (const ImportChoice &choice : field.choices)
        if (QString::number(choice.number) == value)
            return choice.words.split(u'|').front();
    return value;
}

NameReading readingIn(const QString &name) {
    static const QRegularExpression bracketed(u"^(.+?)\\s*[（(]([^（()）]+)[）)]$"_s);
    if (const auto m = bracketed.match(name); m.hasMatch() && isKana(m.captured(2)))
        return {m.captured(1), m.captured(2).trimmed()};
    return {name, isKana(name) ? name : QString()};
}

QString comparedName(const QString &name) {
    return foldForSearch(name).removeIf([](QChar c) { return c.isSpace(); });
}
