#include "db/tables/base/field.h"

#include "db/sql_text.h"

#include <QLocale>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

template <class T> QString integerLiteral(const Nullable<T> &number) {
    return number.isNull() ? u"Null"_s : sqlNumber(T(number));
}

/// A number too large for the field becomes the nearest that fits: never one of another sign.
template <class T> T integerOf(const Recordset &rows, int row, int column) {
    const qint64 lowest = std::numeric_limits<T>::min();
    const qint64 highest = std::numeric_limits<T>::max();
    return static_cast<T>(qBound(lowest, rows.number(row, column), highest));
}

template <class T> void readInteger(const Recordset &rows, int row, int column, Nullable<T> &field) {
    if (rows.isNull(row, column))
        field.setNull();
    else
        field = integerOf<T>(rows, row, column);
}

} // namespace

QString sqlLiteral(qint32 number) {
    return sqlNumber(number);
}

QString sqlLiteral(const Nullable<short> &number) {
    return integerLiteral(number);
}

QString sqlLiteral(const Nullable<qint32> &number) {
    return integerLiteral(number);
}

QString sqlLiteral(const Nullable<double> &number) {
    return number.isNull() ? u"Null"_s : QString::number(double(number), 'g', QLocale::FloatingPointShortest);
}

QString sqlLiteral(const QString &text) {
    return sqlText(text);
}

QString sqlLiteral(const QDate &date) {
    return sqlDate(date);
}

void readField(const Recordset &rows, int row, int column, short &field) {
    field = integerOf<short>(rows, row, column);
}

void readField(const Recordset &rows, int row, int column, qint32 &field) {
    field = integerOf<qint32>(rows, row, column);
}

void readField(const Recordset &rows, int row, int column, Nullable<short> &field) {
    readInteger(rows, row, column, field);
}

void readField(const Recordset &rows, int row, int column, Nullable<qint32> &field) {
    readInteger(rows, row, column, field);
}

void readField(const Recordset &rows, int row, int column, Nullable<double> &field) {
    if (rows.isNull(row, column))
        field.setNull();
    else
        field = rows.real(row, column);
}

void readField(const Recordset &rows, int row, int column, QString &field) {
    field = rows.text(row, column);
}

void readField(const Recordset &rows, int row, int column, QDate &field) {
    field = rows.date(row, column);
}
