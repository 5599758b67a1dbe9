#pragma once

#include "app/base/result.h"

#include <QStringList>

struct Environment;

/// The report engine's programs.
enum class EngineProgram { Viewer, ImageBuilder, ActiveXViewer };

/// The work folder with its closing separator, as command files and command lines name it.
QString engineWorkFolder(const Environment &environment);

/// Full path of a program of the engine. A failure names program and program folder.
Result<QString> findEngineProgram(const Environment &environment, EngineProgram which);

/// Whether the viewer is ours, which prints every character, and takes several finished documents for one.
/// Told by what stands in the program, wherever it was copied to.
bool isOwnViewer(const Environment &environment);

/// Starts a program of the engine in the program folder and does not wait for it. A failure names the
/// program.
/// @return the number by which Processes::runs() knows it
Result<qint64> startEngineProgram(const Environment &environment, EngineProgram which,
                                  const QStringList &arguments);
