#include "db/sqlite/functions.h"

#include "app/base/text.h"
#include "db/sqlite/japanese.h"

#include <QDateTime>
#include <algorithm>
#include <array>
#include <memory>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace {

using Context = sqlite3_context;
using Value = sqlite3_value;

bool isNull(Value *value) {
    return sqlite3_value_type(value) == SQLITE_NULL;
}

QByteArray utf8Of(Value *value) {
    const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(value));
    return QByteArray::fromRawData(text, text ? sqlite3_value_bytes(value) : 0);
}

QString textOf(Value *value) {
    return QString::fromUtf8(utf8Of(value));
}

void giveText(Context *context, const QByteArray &text) {
    sqlite3_result_text64(context, text.constData(), sqlite3_uint64(text.size()), SQLITE_TRANSIENT,
                          SQLITE_UTF8);
}

void getDate(Context *context, int, Value **) {
    auto &time = *static_cast<StatementTime *>(sqlite3_user_data(context));
    if (time.text.isEmpty())
        time.text = QDateTime::currentDateTime().toString(u"yyyy/MM/dd HH:mm:ss.zzz"_s).toLatin1();
    giveText(context, time.text);
}

/// Characters without the blanks at the end.
void len(Context *context, int, Value **arguments) {
    if (!isNull(arguments[0]))
        sqlite3_result_int64(context, trimRight(textOf(arguments[0])).size());
}

/// CHARINDEX(sought, text [, start]): position from 1, 0 when it is not there.
void charIndex(Context *context, int count, Value **arguments) {
    if (isNull(arguments[0]) || isNull(arguments[1]))
        return;
    const qsizetype start = count > 2 ? std::max<qsizetype>(sqlite3_value_int64(arguments[2]) - 1, 0) : 0;
    const QString sought = foldForSearch(textOf(arguments[0]));
    const QString text = textOf(arguments[1]).mid(start);
    const qsizetype at = sought.isEmpty() ? -1 : foldForSearch(text).indexOf(sought);
    sqlite3_result_int64(context, at < 0 ? 0 : start + unfoldedIndex(text, at) + 1);
}

void leftText(Context *context, int, Value **arguments) {
    if (!isNull(arguments[0]) && !isNull(arguments[1]))
        giveText(context, textOf(arguments[0]).left(sqlite3_value_int64(arguments[1])).toUtf8());
}

void rightText(Context *context, int, Value **arguments) {
    if (!isNull(arguments[0]) && !isNull(arguments[1]))
        giveText(context, textOf(arguments[0]).right(sqlite3_value_int64(arguments[1])).toUtf8());
}

/// A style of CONVERT; the letters of its pattern are those of dateFields.
struct DateStyle {
    int style;
    const char *pattern;
};

constexpr std::array<DateStyle, 11> dateStyles = {{{8, "h:n:s"},
                                                   {11, "j/m/d"},
                                                   {12, "jmd"},
                                                   {23, "y-m-d"},
                                                   {102, "y.m.d"},
                                                   {108, "h:n:s"},
                                                   {111, "y/m/d"},
                                                   {112, "ymd"},
                                                   {120, "y-m-d h:n:s"},
                                                   {121, "y-m-d h:n:s.f"},
                                                   {126, "y-m-dTh:n:s.f"}}};

/// Where the parts of a date lie in "yyyy/mm/dd hh:mm:ss.fff".
struct DateField {
    char letter;
    qsizetype at;
    qsizetype length;
};

constexpr std::array<DateField, 8> dateFields = {{{'y', 0, 4},
                                                  {'j', 2, 2},
                                                  {'m', 5, 2},
                                                  {'d', 8, 2},
                                                  {'h', 11, 2},
                                                  {'n', 14, 2},
                                                  {'s', 17, 2},
                                                  {'f', 20, 3}}};

bool looksLikeDate(const QByteArray &text) {
    return text.size() >= 10 && text[4] == '/' && text[7] == '/';
}

QByteArray styledDate(const QByteArray &date, const char *pattern) {
    const QByteArray full = date + QByteArray("yyyy/mm/dd 00:00:00.000").mid(date.size());
    QByteArray out;
    for (const char *c = pattern; *c != '\0'; ++c) {
        const auto *field = std::ranges::find(dateFields, *c, &DateField::letter);
        out += field == dateFields.end() ? QByteArray(1, *c) : full.mid(field->at, field->length);
    }
    return out;
}

/// convert_date(value, style): what is no date comes back as text.
void convertDate(Context *context, int, Value **arguments) {
    if (isNull(arguments[0]))
        return;
    const QByteArray text = utf8Of(arguments[0]);
    const int style = sqlite3_value_int(arguments[1]);
    const auto found = std::ranges::find(dateStyles, style, &DateStyle::style);
    if (!looksLikeDate(text))
        giveText(context, text);
    else if (found == dateStyles.end())
        sqlite3_result_error(context, "unknown style of CONVERT", -1);
    else
        giveText(context, styledDate(text, found->pattern));
}

/// like(pattern, text [, escape]); the pattern is kept from row to row.
void like(Context *context, int count, Value **arguments) {
    if (isNull(arguments[0]) || isNull(arguments[1]))
        return;
    auto *pattern = static_cast<LikePattern *>(sqlite3_get_auxdata(context, 0));
    std::unique_ptr<LikePattern> made;
    if (!pattern) {
        const QString escape = count > 2 ? textOf(arguments[2]) : QString();
        made = std::make_unique<LikePattern>(textOf(arguments[0]), escape.isEmpty() ? QChar() : escape[0]);
        pattern = made.get();
    }
    sqlite3_result_int(context, pattern->matches(textOf(arguments[1])) ? 1 : 0);
    if (made)
        sqlite3_set_auxdata(context, 0, made.release(),
                            [](void *old) { delete static_cast<LikePattern *>(old); });
}

int compareJapanese(void *collation, int aSize, const void *a, int bSize, const void *b) {
    return static_cast<JapaneseCollator *>(collation)->compare({static_cast<const char *>(a), size_t(aSize)},
                                                               {static_cast<const char *>(b), size_t(bSize)});
}

int registerCollation(sqlite3 *db) {
    auto collation = std::make_unique<JapaneseCollator>();
    if (!collation->isValid())
        return SQLITE_ERROR;
    const int result =
        sqlite3_create_collation_v2(db, "Japanese_CI_AS", SQLITE_UTF8, collation.get(), compareJapanese,
                                    [](void *old) { delete static_cast<JapaneseCollator *>(old); });
    if (result == SQLITE_OK)
        static_cast<void>(collation.release()); // the connection has it now
    return result;
}

} // namespace

int addServerFunctions(sqlite3 *db, StatementTime &time) {
    struct Function {
        const char *name;
        int arguments;
        void (*call)(Context *, int, Value **);
    };
    constexpr Function functions[] = {{"len", 1, len},
                                      {"charindex", 2, charIndex},
                                      {"charindex", 3, charIndex},
                                      {"left_text", 2, leftText},
                                      {"right_text", 2, rightText},
                                      {"convert_date", 2, convertDate},
                                      {"like", 2, like},
                                      {"like", 3, like}};
    constexpr int pure = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    int result = registerCollation(db);
    for (const Function &f : functions)
        if (result == SQLITE_OK)
            result = sqlite3_create_function_v2(db, f.name, f.arguments, pure, nullptr, f.call, nullptr,
                                                nullptr, nullptr);
    if (result == SQLITE_OK)
        result = sqlite3_create_function_v2(db, "getdate", 0, SQLITE_UTF8 | SQLITE_INNOCUOUS, &time, getDate,
                                            nullptr, nullptr, nullptr);
    return result;
}
