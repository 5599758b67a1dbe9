#pragma once

#include "app/base/result.h"

#include <QDate>
#include <QString>

namespace sample {

/// Puts the sample into the database of a server: makes the tables where there are none and copies all rows
/// of a sample database file, in one transaction. A database that holds branches already is refused.
/// @param path of the sample database file
Result<> copyToServer(const QString &path, const QString &connectionString);

/// Makes the sample where a connection string leads: in an embedded file that does not exist yet, or in the
/// empty database of a server.
Result<> makeSampleAt(const QString &connectionString, QDate day, int patients);

} // namespace sample
