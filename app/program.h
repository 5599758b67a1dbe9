#pragma once

class Messages;
class QTranslator;

/// The pieces of a run that follow the making of the QApplication.
///@{
/// Japanese for the toolkit's own texts, the locale and the characters that the desktop's font lacks.
void speakJapanese(QTranslator &translator);

/// Serves the screen that the command line names, from the program folder of this run.
/// @return the exit code
int runProgram(Messages &messages);
///@}
