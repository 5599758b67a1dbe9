#pragma once

#include "app/base/messages.h"

struct BatchResult;

/// @name Messages that all printing shares
///@{
Message nothingToPrint();
/// 「同意書（name）が存在しません。処理を中止します。」
Message layoutMissing(const QString &layout);
/// Asked before letters and sets of documents: consents given by word of mouth; OK or cancel.
Message oralNotPrinted();
Message printFailed(const QString &reason);
/// Texts with characters that code page 932 lacks were changed in the data.
Message textsTouched(const QStringList &texts);
/// What a batch printed and what it did not.
Message batchSummary(const BatchResult &result);
///@}

/// Adds a heading and the lines under it to a message, when there are any.
void addMessagePart(QString &text, const QString &heading, const QStringList &lines);
