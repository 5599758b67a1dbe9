#pragma once

#include <QDate>
#include <QString>

namespace sample {

/// What a sample installation is made from.
struct SampleOptions {
    QString folder;
    QDate day;
    int patients = 300;
    QString programs = {}; ///< folder of the built programs; empty: the installation gets no Main.exe
    QString server = {};   ///< connection string of a server's empty database; empty: embedded
    bool again = false;    ///< make an installation anew that is there already
};

enum class SampleOutcome { Made, LeftAsItIs, Refused, Failed };

struct SampleResult {
    SampleOutcome outcome;
    QString sentence; ///< what happened, for the user; names the folder
};

/// Days for which holidays and legal periods are known to the sample.
inline constexpr int firstSampleYear = 2022;
inline constexpr int lastSampleYear = 2096;

/// Makes an installation: settings, pictures, database and the menu program. A folder that holds anything
/// else is refused; one that an earlier run made whole is left as it is unless `again` is set, which replaces
/// the sample's own files and leaves others alone.
SampleResult makeInstallation(const SampleOptions &options);

} // namespace sample
