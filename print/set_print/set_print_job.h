#pragma once

#include "print/batch/batch_print.h"
#include "print/consent_form/form_gather.h"
#include "print/documents/envelope.h"
#include "print/request_letter/letter_job.h"

#include <map>

/// What is printed in one job for the rows of a list.
struct SetPrintChoice {
    bool consentForms = true;
    bool requestLetters = false;
    bool envelopes = false;
    EnvelopeSize envelope = EnvelopeSize::Long3;
    ConsentFormOptions form; ///< what stands on the forms; whose they are is the job's business
    LetterOptions letter;

    bool any() const { return consentForms || requestLetters || envelopes; }
    /// Whether it matters whom the rows are sent to.
    bool needsAddressees() const { return requestLetters || envelopes; }
};

/// Documents of many rows in one job, arranged so that what goes into one envelope comes out together: for
/// every addressee the envelope, the letters, the consent forms.
class SetPrintJob {
public:
    /// The arguments must outlive the job.
    SetPrintJob(const Environment &environment, cT_ADODB &db)
        : m_environment(environment), m_db(db), m_letters(environment, db) {}

    /// Reads what the documents say.
    /// @param rows of each the key and for whose it is; with letters the whole order
    Result<> gather(const std::vector<LetterOrder> &rows, const SetPrintChoice &choice, const QDate &today);

    /// Why nothing may be printed, and what the user has to agree to before.
    LetterCheck check() const;
    /// Whose consents are given by word of mouth; where forms are printed, check() names those without one.
    QStringList oralRows() const { return m_choice.consentForms ? QStringList() : m_letters.oralRows(); }
    /// The documents; the job must outlive them.
    BatchDocument document();
    int count() const { return int(m_items.size()); }
    /// How much there is to put out.
    RunExtent extent() const;

    /// The rows whose letters a batch handed over.
    std::vector<LetterMark> lettersThatLeft(const BatchResult &result) const;
    /// "IDNo. name" of the rows whose letters did not leave.
    QStringList lettersThatStayed(const BatchResult &result) const;

private:
    enum class Kind { Envelope, Letter, Form };
    struct Item {
        size_t set;
        Kind kind;
        size_t index; ///< into envelopes, letters or forms
    };

    Result<> gatherForms(const QDate &today);
    size_t setOf(const LetterRow &row);
    void addLetters();
    void addEnvelopes();
    void addForms();
    QString replacedNote() const;
    BatchReport letterReport(const Letter &letter) const;
    BatchReport envelopeReport(const Envelope &envelope) const;
    Result<BatchReport> makeReport(int position, PrintFiles &files);
    Result<BatchReport> write(const DataFile &data, const QString &file, BatchReport report,
                              PrintFiles &files);

    const Environment &m_environment;
    cT_ADODB &m_db;
    std::vector<LetterOrder> m_rows;
    SetPrintChoice m_choice;
    LetterJob m_letters;
    std::vector<Envelope> m_envelopes;     ///< of the sets, by their number
    std::map<QString, size_t> m_sets;      ///< by addressee
    std::map<size_t, size_t> m_setsOfRows; ///< by position in the rows
    GatheredForms m_forms;
    std::vector<Item> m_items;
    QStringList m_withoutAddressee; ///< "IDNo. name"
};
