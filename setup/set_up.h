#pragma once

#include "app/base/result.h"
#include "setup/answers.h"

#include <functional>

namespace setup {

/// What lies where the answers point to.
struct Trial {
    bool isNew;   ///< no practice is there yet
    QString said; ///< the same for the user
};

/// Connects as the answers say and looks. Nothing is changed; a failure says what is wrong and what to do.
Result<Trial> tryConnection(const Answers &answers);

/// Makes the sample, whole or not at all, where a connection leads: in an embedded file that does not exist
/// yet, or in an empty database of a server.
using MakeSample = std::function<Result<>(const QString &connection)>;

/// Makes the installation: settings, pictures and layouts that are not there, tables and practice, and at the
/// very end adodb.ini, so that nothing half-made is taken for an installation and another run finishes it. An
/// embedded database gets its name when it is whole. A practice that is there, or that another PC makes
/// meanwhile, is joined.
/// @param programs folder of the program, from where the stand-ins of the suite's are placed
/// @return whether the practice is new
Result<bool> setUp(const Folders &folders, const Answers &answers, const QDate &today,
                   const QString &programs, const MakeSample &sample);

} // namespace setup
