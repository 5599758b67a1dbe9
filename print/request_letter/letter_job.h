#pragma once

#include "app/base/messages.h"
#include "app/base/result.h"
#include "print/batch/run_extent.h"
#include "print/request_letter/letter_merge.h"
#include "print/request_letter/letters.h"

#include <functional>
#include <memory>
#include <optional>

class HandedDocuments;
class cT_ADODB;
struct Environment;
struct Operation;

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

/// What is known of letters before one leaves.
struct LetterCheck {
    std::optional<Message> refusal; ///< why none may leave
    QStringList notes;              ///< paragraphs that the user has to agree to
};

/// A row whose letter was made: what marks it once the letter has left.
struct LetterMark {
    ConsentRowKey row;
    QString updateTime; ///< of the row when it was read, as the database gave it; empty: none
    bool toHospital = false;
    QString who; ///< "IDNo. name"
};
/// Marks rows whose letters have left.
/// @return what there is to say about it
using MarkLetters = std::function<std::optional<Message>(const std::vector<LetterMark> &, const Operation &)>;

/// One run of request letters, the one way to make them: reads what they say, tells what stands in their way
/// and hands them to the report engine. What has left is marked by the caller.
class LetterJob {
public:
    /// The arguments must outlive the job.
    LetterJob(const Environment &environment, cT_ADODB &db) : m_environment(environment), m_db(db) {}

    /// Reads what the letters say and arranges them.
    Result<> read(std::vector<LetterOrder> orders, const LetterOptions &options);
    const std::vector<LetterOrder> &orders() const { return m_orders; }
    const LetterSource &source() const { return m_source; }
    const std::vector<Letter> &letters() const { return m_letters; }
    /// Who the rows are that are not the newest of their patient: in the history, followed by a colleague's,
    /// or removed.
    QStringList goneRows() const;
    /// Whose consents are given by word of mouth.
    QStringList oralRows() const;
    LetterCheck check() const;

    /// @name A letter
    ///@{
    DataFile data(const Letter &letter) const;
    QString layoutPath(const Letter &letter) const;
    /// Its patients, for messages.
    QStringList patients(const Letter &letter) const;
    std::vector<LetterMark> marks(const Letter &letter) const;
    ///@}
    std::vector<LetterMark> marks() const;
    /// How much there is to put out.
    RunExtent extent() const;

    /// Writes the data files and hands all letters to the engine.
    /// @param startWait called where several layouts have to become one document first
    /// @param sent takes what is handed over; may be null
    /// @return false when the user gave the work up
    Result<bool> output(LetterOutput way, const StartLetterWait &startWait, HandedDocuments *sent);

private:
    const LetterOrder &orderOf(const Letter &letter) const;
    std::optional<Message> missingLayouts() const;
    std::vector<ReplacedText> replaced() const;
    std::vector<LetterSheet> sheets() const;

    const Environment &m_environment;
    cT_ADODB &m_db;
    std::vector<LetterOrder> m_orders;
    LetterOptions m_options;
    LetterSource m_source;
    std::vector<Letter> m_letters;
};
