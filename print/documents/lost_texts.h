#pragma once

#include "print/engine/data_file.h"

class Messages;
struct Environment;

/// A paragraph for the question before documents leave: whose texts are printed with other characters, and
/// with which. Empty where there are none, and where the viewer prints every character as it is.
QString replacedNote(const Environment &environment, std::span<const ReplacedText> texts);

/// Whether to go on though texts lose characters: what the paper will not say as it is written is told while
/// it can still be mended.
/// @param note from replacedNote(); empty needs no question
/// @param question what is to be asked besides, in the same message box; may be empty
bool mayLose(Messages &messages, const QString &note, const QString &title, const QString &question = {});
