#pragma once

#include "app/base/result.h"

#include <QDate>
#include <QString>

namespace sample {

/// Makes the database of the sample: the suite's tables, data of the given day, then the indexes.
/// The same day and number of patients give the same rows; a day later they have moved with it.
/// @param path full path of a file that does not exist yet
Result<> makeSampleDatabase(const QString &path, QDate day, int patients);

} // namespace sample
