#pragma once

class Messages;

/// Serves the screen that the command line names, from the program folder of this run. Follows the making of
/// the QApplication.
/// @return the exit code
int runProgram(Messages &messages);
