#pragma once

#include <QString>

/// The screens and documents that are poorer, or fail, without a table.
QString usesOfTable(const QString &table);
