#pragma once

#include "app/base/environment.h"
#include "consent/answers/answer_patients.h"
#include "consent/list/list_model.h"
#include "consent/merge/list_merge.h"
#include "consent/record/renewal.h"
#include "consent/rules/list_advisor.h"

class cT_ADODB;

/// An answer that was written, and what takes it back.
struct RecordedAnswer {
    AnswerPatient patient;
    QString kind; ///< "マッサ"; "マッサ・変形徒手" where the other row took the date too
    ReConsent answer;
    QString before; ///< what stood there
    /// The rows as they were written, over each what stood there before.
    std::vector<RowEdit> back;
    bool takenBack = false;
};

/// What came of writing an answer or of taking one back.
struct AnswerOutcome {
    enum Kind {
        Written,
        Refused,   ///< nothing to write, or an entry that cannot be written
        Overtaken, ///< a colleague was there meanwhile; nothing was written
        Failed     ///< the database refused; nothing was written
    };
    Kind kind = Written;
    QString text = {};
};

/// Answers of doctors in a pile: finds the consent, proposes the period, writes each answer as the list would
/// by 受領, 再同意日 and the period, keeps what was written and takes it back. Knows no window.
class AnswerDesk {
public:
    /// The arguments must outlive the desk.
    AnswerDesk(const Environment &environment, cT_ADODB &db);

    /// Reads the patients and the link options. Fails when the patients cannot be read.
    Result<> begin();
    /// Why the settings cannot be read, and no period is proposed; empty when they can.
    const QString &unreadSettings() const { return m_advisor.links.unread; }
    std::vector<const AnswerPatient *> find(const QString &typed, size_t most) const {
        return m_patients.find(typed, most);
    }

    /// @name The patient whose answer is entered
    ///@{
    /// Reads the consents as they stand now. Fails when they cannot be read.
    Result<> open(AnswerPatient patient);
    /// The consents that may be answered, massage first, a text each.
    const QStringList &consents() const { return m_consents; }
    const ConsentRowKey &key(int consent) const { return m_keys[size_t(consent)]; }
    /// The one that is likely meant: awaited, or at least without an answer; −1 when there is none at all.
    int likeliest() const;
    int consentOf(const ConsentRowKey &key) const;
    /// Whether more than one of them has no answer yet: the user says which is meant.
    bool needsChoice() const;
    /// What is to be known before an answer is entered; empty when all is as usual.
    QString notice(int consent) const;
    /// Invalid for none.
    QDate proposedDay(int consent);
    Period proposedPeriod(int consent, const QDate &date);
    /// Why the last proposal could not be made; empty when it could.
    QString trouble() const { return m_advisor.trouble(); }
    ///@}

    /// What should be asked before it is written, a sentence each: likely slips, and an answer that it takes
    /// the place of.
    QStringList questions(int consent, const ReConsent &answer);
    /// Writes an answer at once.
    AnswerOutcome record(int consent, const ReConsent &answer);
    /// @name An answer that was overtaken: its rows beside what stands there now
    ///@{
    /// Fails when they cannot be read.
    Result<std::vector<MergeRow>> overtakenRows();
    /// Writes the answer as it was decided.
    AnswerOutcome recordMerged(int consent, const std::vector<MergeRow> &merged);
    /// Leaves it: reads the consents as they stand now, and says so.
    AnswerOutcome leaveOvertaken();
    ///@}
    /// Takes an answer back, unless its rows were changed since.
    AnswerOutcome takeBack(size_t position);
    /// What was written, in the order in which it was.
    const std::vector<RecordedAnswer> &recorded() const { return m_recorded; }

private:
    int recordOf(int consent) const { return m_records[size_t(consent)]; }
    QString whatStands(int record) const;
    void enter(int record, const ReConsent &answer);
    AnswerOutcome write(int record);
    void keep(const std::vector<ChangedRow> &changed, int record);
    RowEdit wayBack(const ReadRow &written, const ConsentRowValues &before) const;

    const Environment &m_environment;
    cT_ADODB &m_db;
    AnswerPatients m_patients;
    ListAdvisor m_advisor;
    AnswerPatient m_patient;    ///< whose consents the model holds
    ConsentListModel m_model;   ///< of the patient alone
    std::vector<int> m_records; ///< of the model, by consent
    std::vector<ConsentRowKey> m_keys;
    QStringList m_consents;
    QDate m_lastDay; ///< of a pile from one doctor, most bear the same
    std::vector<RecordedAnswer> m_recorded;
    std::vector<TypedRow> m_overtaken;
    std::vector<StandingRow> m_standing; ///< in their places
};
