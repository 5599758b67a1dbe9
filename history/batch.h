#pragma once

#include "app/base/branch.h"
#include "app/base/result.h"
#include "history/operation.h"

#include <QString>
#include <optional>

class cT_ADODB;

/// One run that prints, mails, renews or takes another one back.
class Batch {
public:
    /// Begins a run: it has a number from now on, also when it never ends. Not inside a transaction.
    /// @param kind its operation, in the user's words
    /// @param takesBack number of the run that it takes back
    /// @return nothing where no history is kept
    static Result<std::optional<Batch>> begin(cT_ADODB &db, const Branch &branch, const QString &kind,
                                              std::optional<qint32> takesBack = {});

    qint32 number() const { return m_number; }
    /// What writes of the run say of themselves.
    Operation operation() const { return {m_kind, m_number}; }

    /// Says how many rows, documents and pages it came to. In the caller's transaction, or in none.
    Result<> finish(qint64 rows, qint64 documents = 0, qint64 pages = 0);
    /// A document that is kept.
    /// @param title cut to what its column holds
    /// @param content SHA-256 of its manifest in the archive, 64 characters
    Result<> addDocument(const QString &title, qint64 pages, const QString &content);

private:
    Batch(cT_ADODB &db, qint32 number, const QString &kind) : m_db(&db), m_number(number), m_kind(kind) {}
    Result<> execute(const QString &sql);

    cT_ADODB *m_db;
    qint32 m_number;
    QString m_kind;
    int m_documents = 0;
};

/// The operation of a run, also where no history is kept and it has no number.
Operation operationOf(const std::optional<Batch> &batch, const QString &kind);
