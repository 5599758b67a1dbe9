#pragma once

#include "viewer/problem.h"

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

/// One line of a command file: a keyword and what follows it, separated by commas. Texts stand in double
/// quotes, a quote inside one is doubled; numbers and names stand bare.
struct CommandLine {
    QString keyword;
    QStringList arguments;
    std::vector<int> columns; ///< where each argument begins, from 1
};

/// @param problem its column and text are filled when a quote is wrong
std::optional<CommandLine> splitCommandLine(QStringView line, Problem *problem);
