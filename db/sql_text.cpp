#include "db/sql_text.h"

#include "app/base/codepage932.h"
#include "app/base/dates.h"
#include "app/base/name_variants.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

QString quoted(const QString &text) {
    QString doubled = text;
    doubled.remove(QChar::Null); // which would end the statement
    doubled.replace(u'\'', u"''"_s);
    // The server would turn a character that the code page lacks into '?' in a plain literal.
    const QString opened = fits932(text) ? u"'"_s : u"N'"_s;
    // A backslash at the end of a line continues the literal on one server, and is lost with the line's end.
    for (const QChar end : {u'\r', u'\n'})
        doubled.replace(u'\\' + QString(end), u"\\' + "_s + opened + end);
    return opened + doubled + u"'"_s;
}

} // namespace

QString sqlText(const QString &text) {
    return text.isNull() ? u"Null"_s : quoted(text);
}

QString sqlTextOrNull(const QString &text) {
    return text.isEmpty() ? u"Null"_s : quoted(text);
}

QString sqlDate(const QDate &date) {
    return date.isValid() ? u"'"_s + dateText(date) + u"'"_s : u"Null"_s;
}

QString sqlNumber(qint64 number) {
    return QString::number(number);
}

QString sqlSelectList(std::span<const QStringView> columns) {
    QStringList list;
    for (const QStringView column : columns)
        list += column.toString() + u" AS C"_s + QString::number(list.size());
    return list.join(u", "_s);
}

QString sqlContains(const QString &column, const QString &text) {
    QString pattern = withOrdinaryNames(text);
    // [ opens a set on one server, \ is an escape on another.
    const bool escaped = pattern.contains(u'[') || pattern.contains(u'\\');
    if (escaped)
        pattern.replace(u'!', u"!!"_s).replace(u'[', u"!["_s);
    return sqlOrdinary(column, text) + u" LIKE "_s + quoted(u'%' + pattern + u'%') +
           (escaped ? u" ESCAPE '!'"_s : QString());
}

QString sqlOrdinary(const QString &column, const QString &text) {
    const QString searched = withOrdinaryNames(text);
    QString sql = column;
    for (const auto &[variant, ordinary] : nameVariants())
        if (searched.contains(QChar(ordinary)))
            sql = u"replace("_s + sql + u", "_s + quoted(QString::fromUcs4(&variant, 1)) + u", "_s +
                  quoted(QString(QChar(ordinary))) + u')';
    return sql;
}
