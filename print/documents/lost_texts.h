#pragma once

#include <QStringList>

/// Those of the texts in which a character has no likeness in code page 932: it prints as 〓.
QStringList textsWithLoss(const QStringList &texts);

/// A paragraph that names them, for the question before printing.
QString lostTextsNote(QStringList texts);
