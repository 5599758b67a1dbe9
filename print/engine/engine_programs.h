#pragma once

#include <QString>
#include <QStringList>

struct Environment;

/// The report engine's programs.
enum class EngineProgram { Viewer, ImageBuilder, ActiveXViewer };

/// The work folder with its closing separator, as command files and command lines name it.
QString engineWorkFolder(const Environment &environment);

/// Full path of a program of the engine; empty when it is not there.
/// @param reason then a sentence for the user that names program and program folder
QString findEngineProgram(const Environment &environment, EngineProgram which, QString *reason);

/// Starts a program of the engine in the program folder and does not wait for it.
/// @param reason a sentence for the user that names the program, when it fails
/// @param id takes the number by which Processes::runs() knows it
bool startEngineProgram(const Environment &environment, EngineProgram which, const QStringList &arguments,
                        QString *reason, qint64 *id = nullptr);
