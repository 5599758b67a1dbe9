#pragma once

#include "setup/ini_files.h"

#include "app/base/result.h"

class QDir;

namespace setup {

/// What becomes of a file that is there already.
enum class Existing { Keep, Replace };

/// Makes an installation's folders, as its Massage.ini names them, with settings, pictures and layouts. A
/// failure names the file.
Result<> writeInstallationFiles(const QDir &program, const QList<TextFile> &settings, Existing existing);

/// Puts the menu program and the report engine's stand-ins where the suite's would lie: links, so that a
/// rebuild is picked up, or copies where links are not to be had.
/// @param programs folder of the built programs
Result<> placePrograms(const QDir &program, const QString &programs, Existing existing);

} // namespace setup
