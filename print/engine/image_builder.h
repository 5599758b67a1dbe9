#pragma once

#include "app/base/processes.h"

#include <chrono>
#include <functional>

struct Environment;

/// What came of a run of the engine's image builder.
struct BuilderEnd {
    enum Kind {
        Built,
        SomeLeftOut, ///< the document is there, some reports are not in it
        Failed,
        TimedOut,
        GivenUp, ///< because `goOn` said so
        Missing  ///< there is no such program
    };
    Kind kind = Failed;
    QString reason; ///< what its error file says, or why it could not be started; may be empty
    int exitCode = 0;
};

/// Makes one finished document of the reports that a command file names, and waits for it. What an earlier
/// run left in the error file and under the document's name is removed first.
/// @param goOn called many times a second; false ends the builder
/// @param errors the builder's error file; empty: err.txt in the work folder, whose lock the caller holds
BuilderEnd runImageBuilder(const Environment &environment, const QString &document, const QString &commands,
                           std::chrono::milliseconds timeOut, const std::function<bool()> &goOn,
                           QString errors = {});
