#pragma once

#include "app/base/time_limit.h"
#include "archive/archive.h"
#include "history/batch.h"
#include "print/engine/viewer_job.h"

#include <vector>

class Messages;
class cT_ADODB;
struct Environment;

/// One run that prints or mails: its batch in the database, what it sent in the archive. Where no history is
/// kept it does nothing. Neither database nor archive ever stops a run: what goes wrong is told at its end.
class SentRun final : public HandedDocuments {
public:
    /// @param kind what is done, in the user's words
    /// @param limit for the archive to have all documents of the run: paper leaves at once, whatever its
    /// drive does
    SentRun(const Environment &environment, cT_ADODB &db, QString kind,
            std::chrono::milliseconds limit = std::chrono::seconds(3));

    /// What writes of the run say of themselves. A batch begins with the first of them, or of its documents:
    /// a run that sends nothing leaves none.
    Operation operation();

    /// @name What leaves
    ///@{
    void read(const QString &commandFile) override;
    void handed() override;
    /// @param message as it went to the server
    void addMail(const QString &to, const QByteArray &message);
    ///@}

    /// Ends the batch, when the archive has what was sent; one that does not answer is given up soon.
    /// @return for the end of a line in a screen's foot: nothing, or why something is not kept
    QString finish(qint64 rows, qint64 documents);

private:
    /// What a document came to.
    struct Kept {
        QString title;
        int pages = 0;
        QString name = QStringLiteral(""); ///< in the archive; empty: `why` it is not there
        QString why{};
    };

    bool begin();
    void keep(const QString &title, const QByteArray &content);

    const Environment &m_environment;
    cT_ADODB &m_db;
    QString m_kind;
    std::chrono::milliseconds m_limit;
    Archive m_archive;
    bool m_begun = false;
    std::optional<Batch> m_batch;
    QString m_trouble; ///< why there is no batch
    std::vector<QByteArray> m_read;
    QStringList m_unread; ///< why a document could not be read
    std::vector<Apart<Kept>> m_kept;
};

/// Says in the window's foot what SentRun::finish gave, where there is anything.
void noteUnkept(Messages &messages, const QString &unkept);
