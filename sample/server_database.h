#pragma once

#include "app/base/result.h"

#include <QString>

namespace sample {

/// Puts the sample into the database of a server: makes the tables where there are none and copies all rows
/// of a sample database file, in one transaction. A database that holds branches already is refused.
/// @param path of the sample database file
Result<> copyToServer(const QString &path, const QString &connectionString);

} // namespace sample
