#pragma once

#include "print/request_letter/letter_merge.h"
#include "print/request_letter/letters.h"

#include <functional>
#include <memory>

class ErrorsSince;
class cT_ADODB;
struct Environment;

/// How letters are put out.
enum class LetterOutput { Preview, Print };

/// Shows the user, while it lives, that the image builder is at work.
class LetterWait {
public:
    virtual ~LetterWait() = default;
    /// Called many times a second; false gives the work up.
    virtual bool goOn() = 0;
};
using StartLetterWait = std::function<std::unique_ptr<LetterWait>()>;

/// One run of request letters: reads what they say, hands them to the report engine and marks their rows.
class LetterJob {
public:
    /// The arguments must outlive the job.
    LetterJob(const Environment &environment, cT_ADODB &db) : m_environment(environment), m_db(db) {}

    /// Reads what the letters say. 0, or −1 with sErrMsg.
    short iRead(std::vector<LetterOrder> orders);
    const LetterSource &source() const { return m_source; }
    /// Positions of the orders whose rows are gone: removed, or renewed by a colleague.
    std::vector<size_t> goneOrders() const;
    /// File name of the first layout that is missing; empty when all are there.
    QString missingLayout() const;

    /// Writes the data files and hands them to the engine. 0, or −1 with sErrMsg, which is empty when the
    /// user gave the work up.
    /// @param startWait called where several layouts have to become one document first
    short iOutput(const LetterOptions &options, LetterOutput way, const StartLetterWait &startWait);
    /// How many letters were handed over.
    int letters() const { return m_letters; }
    /// Texts in which a character was replaced that data files cannot hold.
    const QStringList &touched() const { return m_touched; }

    /// Marks the rows as output, in one transaction. 0, or −1 with sErrMsg: then no row is marked.
    /// @param overtaken takes the rows that a colleague wrote since iRead; they are marked all the same where
    /// they are still there, since their letters have left
    short iMark(QStringList *overtaken);

    const QString &sErrMsg() const { return m_error; }

private:
    short markRow(const LetterRow &row, const QString &computer, bool *overtaken);
    std::vector<LetterSheet> sheets(const LetterOptions &options) const;
    QString merge(const std::vector<LetterSheet> &sheets, const StartLetterWait &startWait,
                  QString *reason) const;
    QString layoutPath(const QString &layout) const;
    short fail(const QString &reason);
    short failDb(const ErrorsSince &errors);

    const Environment &m_environment;
    cT_ADODB &m_db;
    std::vector<LetterOrder> m_orders;
    LetterSource m_source;
    int m_letters = 0;
    QStringList m_touched;
    QString m_error;
};
