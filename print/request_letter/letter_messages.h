#pragma once

#include "app/base/messages.h"

#include <QStringList>

/// @name What is said after letters have left
///@{
Message letterMarksFailed(const QString &reason);
/// @param rows "IDNo. name" of the rows that colleagues wrote meanwhile
Message letterRowsOvertaken(const QStringList &rows);
///@}
