#pragma once

#include "consent/batches/batches.h"

class Recordset;

/// Runs that did something and fit a condition, the last one first.
QString sqlBatches(const Branch &branch, const QString &condition, const QString &top = {});
std::vector<BatchInfo> batchesIn(const Recordset &rows);

/// @name Conditions
///@{
QString sqlOfDays(const QDate &from, const QDate &to);
QString sqlOfNumber(qint32 number);
QString sqlOfComputer(const QString &computer);
/// Rows were changed.
QString sqlChangedRows();
/// It took another run back.
QString sqlTookBack();
///@}
