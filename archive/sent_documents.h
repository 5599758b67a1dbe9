#pragma once

#include "app/base/result.h"

#include <QByteArray>
#include <QString>
#include <chrono>
#include <vector>

class Archive;
class cT_ADODB;
struct Environment;

/// A document of a batch.
struct SentDocument {
    QString title;
    int pages = 0;
    QString name; ///< in the archive; empty: it is not kept
};

/// In the order in which they left.
Result<std::vector<SentDocument>> readSentDocuments(cT_ADODB &db, qint32 batch);

/// How long the archive's drive may take to answer.
constexpr std::chrono::milliseconds answerLimit = std::chrono::seconds(10);

/// A document's content, as it went out. Gives up soon where the archive's drive does not answer.
Result<QByteArray> keptContent(const Archive &archive, const SentDocument &document,
                               std::chrono::milliseconds limit = answerLimit);

/// Whether a content is pages for the viewer; else it is a mail.
bool isPages(const QByteArray &content);

/// A mail as its reader sees it: from, to, subject, day and text.
QString readableMail(const QByteArray &message);

/// Shows pages in the viewer, all in one window. They come from the archive alone: layouts and data of today
/// have no part in them.
Result<> showPages(const Environment &environment, const std::vector<QByteArray> &contents,
                   const QString &title);
