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
};

/// Documents of many patients in one job, arranged so that what goes into one envelope comes out together:
/// for every addressee the envelope, the letters, the consent forms.
class SetPrintJob {
public:
    /// The arguments must outlive the job.
    SetPrintJob(const Environment &environment, cT_ADODB &db)
        : m_environment(environment), m_db(db), m_letters(environment, db) {}

    /// Reads what the documents say. 0, or −1 with sErrMsg.
    short iGather(const std::vector<LetterOrder> &rows, const SetPrintChoice &choice, const QDate &today);

    int count() const { return int(m_items.size()); }
    /// Patients who get no consent form.
    const std::vector<LeftOutPatient> &withoutForm() const { return m_forms.leftOut; }
    /// "number name" of the patients for whom no envelope is printed, since nowhere is an address.
    const QStringList &withoutAddress() const { return m_withoutAddress; }
    /// Rows that are gone: their letters and envelopes are not printed.
    qsizetype gone() const { return qsizetype(m_letters.goneOrders().size()); }

    /// What a batch prints; the job must outlive it.
    BatchDocument document();
    /// Texts in which a character that code page 932 lacks was replaced.
    const QStringList &touched() const { return m_touched; }

    /// Whether rows have to be marked once the job has been printed.
    bool hasLetters() const { return m_hasLetters; }
    /// Marks the rows of the letters as output. 0, or −1 with sErrMsg.
    /// @param overtaken takes the rows that a colleague wrote since iGather
    short iMark(QStringList *overtaken);

    const QString &sErrMsg() const { return m_error; }

private:
    enum class Kind { Envelope, Letter, Form };
    struct Item {
        size_t set;
        Kind kind;
        size_t index; ///< into envelopes, letters or forms
    };

    size_t setOf(const LetterRow &row);
    void addLetters();
    void addEnvelopes();
    void addForms();
    Result<BatchReport> makeReport(int position, PrintFiles &files);
    Result<BatchReport> write(const DataFile &data, const QString &file, BatchReport report,
                              PrintFiles &files);

    const Environment &m_environment;
    cT_ADODB &m_db;
    std::vector<LetterOrder> m_rows;
    SetPrintChoice m_choice;
    LetterJob m_letters;
    std::vector<Letter> m_arranged;
    std::vector<Envelope> m_envelopes; ///< of the sets, by their number
    std::map<QString, size_t> m_sets;  ///< by addressee
    GatheredForms m_forms;
    std::vector<Item> m_items;
    QStringList m_withoutAddress;
    QStringList m_touched;
    QString m_error;
    bool m_hasLetters = false;
};
