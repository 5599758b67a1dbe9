#pragma once

#include "archive/sent_documents.h"

class QLabel;
class QWidget;

/// 何を送ったか: shows what a batch sent, as it went out. Pages of one document are shown at once, several
/// can be chosen from; why something cannot be shown is told.
/// @param title of the batch: what was done, and when
void showSent(QWidget *parent, Environment &environment, cT_ADODB &db, qint32 batch, const QString &title);

/// Says in a label how much room the archive takes, as soon as it is known:
/// 保管している文書：1,234件、56 MB（5年分まで）
void showArchiveSize(const Environment &environment, QLabel *label);
