#pragma once

#include <QString>
#include <optional>

/// Which of the two screens a run serves.
enum class LaunchMode { ConsentPrinting = 0, ConsentList = 1 };

/// The mode on a command line that is not empty: its leading number, rounded down. A line that does not begin
/// with a number is mode 0, as the suite's menu program relies on. Nothing when the number is no mode.
std::optional<LaunchMode> modeFromCommandLine(const QString &commandLine);

/// The mode that a person typed, full-width digits allowed. Nothing when the answer as a whole is not a
/// number, or is no mode.
std::optional<LaunchMode> modeFromAnswer(const QString &answer);
