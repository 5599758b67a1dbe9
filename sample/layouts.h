#pragma once

class QDir;
class QString;

namespace sample {

/// Writes the layouts of the practice's documents into a folder, over those that an earlier run left there.
/// @param reason a sentence for the user that names the file, when one cannot be written
bool writeLayouts(const QDir &folder, QString *reason);

} // namespace sample
