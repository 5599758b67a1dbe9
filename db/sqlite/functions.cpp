#include "db/sqlite/functions.h"

#include "app/base/dates.h"
#include "app/base/text.h"
#include "db/sqlite/japanese.h"

#include <QDateTime>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QString textOf(sqlite3_value *value) {
    const auto *bytes = reinterpret_cast<const char *>(sqlite3_value_text(value));
    return QString::fromUtf8(bytes, sqlite3_value_bytes(value));
}

bool isNull(sqlite3_value *value) {
    return sqlite3_value_type(value) == SQLITE_NULL;
}

void give(sqlite3_context *context, const QString &text) {
    const QByteArray bytes = text.toUtf8();
    sqlite3_result_text(context, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
}

// A LIKE B arrives as like(B, A). The pattern is prepared once a statement.
void like(sqlite3_context *context, int, sqlite3_value **values) {
    if (isNull(values[0]) || isNull(values[1])) {
        sqlite3_result_null(context);
        return;
    }
    auto *pattern = static_cast<const LikePattern *>(sqlite3_get_auxdata(context, 0));
    if (!pattern) {
        auto *made = new LikePattern(textOf(values[0]));
        sqlite3_result_int(context, made->matches(textOf(values[1])));
        sqlite3_set_auxdata(context, 0, made, [](void *old) { delete static_cast<LikePattern *>(old); });
        return;
    }
    sqlite3_result_int(context, pattern->matches(textOf(values[1])));
}

void getDate(sqlite3_context *context, int, sqlite3_value **) {
    give(context, QDateTime::currentDateTime().toString(u"yyyy/MM/dd HH:mm:ss.zzz"_s));
}

// Position counted from 1, in the text as the collation sees it; 0 when it is not there.
void charindex(sqlite3_context *context, int count, sqlite3_value **values) {
    if (isNull(values[0]) || isNull(values[1])) {
        sqlite3_result_null(context);
        return;
    }
    const QString needle = foldForSearch(textOf(values[0]));
    const qsizetype from = count > 2 ? qMax(0, sqlite3_value_int(values[2]) - 1) : 0;
    const qsizetype at = needle.isEmpty() ? -1 : foldForSearch(textOf(values[1])).indexOf(needle, from);
    sqlite3_result_int64(context, at + 1);
}

// Characters without trailing blanks.
void len(sqlite3_context *context, int, sqlite3_value **values) {
    if (isNull(values[0]))
        sqlite3_result_null(context);
    else
        sqlite3_result_int64(context, trimRight(textOf(values[0])).size());
}

// Dates are kept as text "yyyy/mm/dd hh:mm:ss.fff", the time as far as there is one.
QString dateInStyle(const QString &stored, int style) {
    const QDate date = dateFromDatabase(stored);
    if (!date.isValid())
        return stored;
    const QString time = stored.mid(11).leftJustified(8, u'0', true);
    switch (style) {
    case 23:
        return date.toString(u"yyyy-MM-dd"_s);
    case 111:
        return dateText(date);
    case 112:
        return date.toString(u"yyyyMMdd"_s);
    case 108:
        return stored.size() > 11 ? time : u"00:00:00"_s;
    case 120:
        return date.toString(u"yyyy-MM-dd "_s) + (stored.size() > 11 ? time : u"00:00:00"_s);
    default:
        return stored;
    }
}

void convertAs(sqlite3_context *context, int count, sqlite3_value **values) {
    if (isNull(values[1])) {
        sqlite3_result_null(context);
        return;
    }
    const QString type = textOf(values[0]).toUpper();
    if (type.contains(u"INT"_s))
        sqlite3_result_int64(context, sqlite3_value_int64(values[1]));
    else if (type.contains(u"CHAR"_s))
        give(context, dateInStyle(textOf(values[1]), count > 2 ? sqlite3_value_int(values[2]) : 0));
    else
        sqlite3_result_value(context, values[1]);
}

bool addCollation(sqlite3 *handle) {
    const auto compare = [](void *collator, int leftLength, const void *left, int rightLength,
                            const void *right) {
        return static_cast<const JapaneseCollator *>(collator)->compare(
            static_cast<const char *>(left), leftLength, static_cast<const char *>(right), rightLength);
    };
    auto *collator = new JapaneseCollator;
    const int result =
        sqlite3_create_collation_v2(handle, "Japanese_CI_AS", SQLITE_UTF8, collator, compare,
                                    [](void *old) { delete static_cast<JapaneseCollator *>(old); });
    // A refused collation is not taken over.
    if (result != SQLITE_OK)
        delete collator;
    return result == SQLITE_OK;
}

} // namespace

bool addServerFunctions(sqlite3 *handle) {
    struct Function {
        const char *name;
        int arguments;
        bool deterministic;
        void (*body)(sqlite3_context *, int, sqlite3_value **);
    };
    constexpr Function functions[] = {
        {"like", 2, true, like},           {"getdate", 0, false, getDate}, {"charindex", 2, true, charindex},
        {"charindex", 3, true, charindex}, {"len", 1, true, len},          {"convert_as", 2, true, convertAs},
        {"convert_as", 3, true, convertAs}};
    for (const Function &function : functions) {
        const int flags = SQLITE_UTF8 | (function.deterministic ? SQLITE_DETERMINISTIC : 0);
        if (sqlite3_create_function(handle, function.name, function.arguments, flags, nullptr, function.body,
                                    nullptr, nullptr) != SQLITE_OK)
            return false;
    }
    return addCollation(handle);
}
