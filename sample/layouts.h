#pragma once

#include "app/base/result.h"

class QDir;

namespace sample {

/// Writes the layouts of the practice's documents into a folder, over those that an earlier run left there.
/// A failure names the file.
Result<> writeLayouts(const QDir &folder);

} // namespace sample
