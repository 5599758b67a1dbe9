#pragma once

#include <QDate>
#include <QString>

namespace sample {

/// Makes the database of the sample: the suite's tables, data of the given day, then the indexes.
/// The same day and number of patients give the same rows; a day later they have moved with it.
/// @param path full path of a file that does not exist yet
/// @param reason a sentence for the user, when it fails
bool makeSampleDatabase(const QString &path, QDate day, int patients, QString *reason);

/// The statements of the schema, each without its semicolon.
QStringList schemaStatements();

} // namespace sample
