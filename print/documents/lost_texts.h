#pragma once

#include <QStringList>

class Messages;

/// Those of the texts in which a character has no likeness in code page 932: it prints as 〓.
QStringList textsWithLoss(const QStringList &texts);

/// A paragraph that names them, for the question before printing.
QString lostTextsNote(QStringList texts);

/// Whether to print though these texts lose characters: what the paper will not say as it is written is told
/// while it can still be mended. No texts need no question.
/// @param question what is to be asked besides, in the same message box; may be empty
bool mayLose(Messages &messages, const QStringList &texts, const QString &title,
             const QString &question = {});

/// What was told before is not told again.
QStringList otherTexts(QStringList touched, const QStringList &told);
