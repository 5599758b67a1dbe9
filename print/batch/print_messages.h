#pragma once

#include "app/base/messages.h"

struct BatchResult;
enum class PrintWay;

/// @name Messages that all printing shares
///@{
Message nothingToPrint();
/// 「同意書（name）が存在しません。処理を中止します。」
Message layoutMissing(const QString &layout);
/// Asked before letters and sets of documents: consents given by word of mouth; OK or cancel.
/// @param rows whose consents are given so, "IDNo. name"
Message oralNotPrinted(const QStringList &rows);
Message printFailed(const QString &reason);
/// What a batch printed and what it did not.
Message batchSummary(const BatchResult &result);
///@}

/// What was put out, for the line in a screen's foot.
QString putOutText(const QString &what, PrintWay way);

/// Adds a heading and the lines under it to a message, when there are any.
void addMessagePart(QString &text, const QString &heading, const QStringList &lines);
