#pragma once

#include "db/recordset.h"
#include "db/tables/nullable.h"

#include <QDate>
#include <QString>
#include <variant>

/// A member of record class R that holds a column's value. Plain numbers are for columns that are never
/// Null; a null QString and an invalid QDate are Null.
template <class R>
using Member = std::variant<short R::*, qint32 R::*, Nullable<short> R::*, Nullable<qint32> R::*,
                            Nullable<double> R::*, QString R::*, QDate R::*>;

/// @name A field's value as SQL literal
///@{
QString sqlLiteral(qint32 number);
QString sqlLiteral(const Nullable<short> &number);
QString sqlLiteral(const Nullable<qint32> &number);
QString sqlLiteral(const Nullable<double> &number);
QString sqlLiteral(const QString &text);
QString sqlLiteral(const QDate &date);
///@}

/// @name A cell's value into a field
///@{
void readField(const Recordset &rows, int row, int column, short &field);
void readField(const Recordset &rows, int row, int column, qint32 &field);
void readField(const Recordset &rows, int row, int column, Nullable<short> &field);
void readField(const Recordset &rows, int row, int column, Nullable<qint32> &field);
void readField(const Recordset &rows, int row, int column, Nullable<double> &field);
void readField(const Recordset &rows, int row, int column, QString &field);
void readField(const Recordset &rows, int row, int column, QDate &field);
///@}
