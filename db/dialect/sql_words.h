#pragma once

#include "db/dialect/sql_tokens.h"

/// What is known of a value in a statement without asking the database.
enum class ValueType { Unknown, Text, Number };

/// Of operands that meet in one value; a number wins, as on the server.
ValueType combined(ValueType a, ValueType b);

/// By the system's name prefixes: cName and csName are texts, iFlag, nIDNo, mKingaku and dLen numbers.
ValueType typeOfColumn(std::string_view name);

ValueType typeOfFunction(const SqlToken &name);

/// Whether a function's value has the type of its arguments.
bool hasTypeOfArguments(const SqlToken &name);

/// Words that are no operand of an expression.
bool isKeyword(const SqlToken &token);

/// What CAST and CONVERT turn a value into.
enum class ConversionTarget { Text, Integer, Number, Date, DateTime };

/// @param type the word behind AS, or the first argument of CONVERT
ConversionTarget conversionTarget(const SqlToken &type);
