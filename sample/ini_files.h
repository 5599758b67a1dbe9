#pragma once

#include "setup/ini_files.h"

namespace sample {

/// The settings files of the sample: a new installation's, its connection, and postal codes of made-up towns.
QList<setup::TextFile> settingsFiles(const QString &connection);

} // namespace sample
