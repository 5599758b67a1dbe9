#pragma once

#include "consent/entry/draft_check.h"
#include "consent/entry/entry_period.h"
#include "consent/merge/draft_merge.h"
#include "consent/record/entry_save.h"

#include <optional>

class cT_ADODB;
struct Environment;

/// One consent being entered: the draft, what follows from what is typed, what is wrong with it, and its
/// registering. Knows no window.
class ConsentEntry {
public:
    /// @param db the connection of the run; must outlive the object
    ConsentEntry(const Environment &environment, cT_ADODB &db) : m_environment(environment), m_db(db) {}

    /// Begins the change of a stored consent, or a new one. 0, or −1 with sErrMsg.
    ///@{
    short iOpen(const ConsentRowKey &key);
    short iNew(const PatientKey &patient);
    ///@}
    const QString &sErrMsg() const { return m_error; }

    const EntryPatient &patient() const { return m_patient; }
    const ConsentDraft &draft() const { return m_draft; }
    bool isNew() const { return !m_stored; }
    /// The key under which the consent stands; nDate 0 while it does not.
    ConsentRowKey storedKey() const { return m_stored ? m_stored->key() : ConsentRowKey{m_patient.key}; }
    /// The draft began as a copy of the consent before it.
    bool isProposed() const { return isNew() && newest(0); }
    /// Why the practice's settings could not be read, and no period is proposed; empty when they could.
    const QString &unreadSettings() const { return m_unread; }
    /// Something was entered that is not registered.
    bool isChanged() const;

    /// Takes a value for a column, and what follows from it: the consent date and the months propose the
    /// period, the start its end; a treatment takes the consent's period; a doctor his data. What the user
    /// chose otherwise stays. 0, or −1 with sErrMsg when what follows cannot be looked up.
    short enter(QStringView column, const QVariant &value);

    /// How the rule reckons the period, and where the draft differs.
    QString explainPeriod() const;

    /// What hinders registering; nothing when it may be. Fails when the patient's other rows cannot be read.
    Result<std::optional<DraftProblem>> check();

    /// What of the dates entered may be a slip of the keys, a sentence each.
    QStringList doubts() const;

    /// Registers the draft. Afterwards it is the stored row.
    RowOutcome save();
    /// The draft of a row that a colleague wrote meanwhile, beside what stands there now. Fails when that
    /// cannot be read.
    Result<MergeRow> overtaken();
    /// The draft becomes what was decided, over the row as it stands.
    void take(const MergeRow &merged);
    /// The row's key after save.
    const ConsentRowKey &savedKey() const { return m_savedKey; }

private:
    short fail(const QString &reason);
    short iBegin(const PatientKey &patient);
    short iReadRows();
    short iReadBasis();
    short setDocData();

    std::vector<ConsentDraft> others() const;
    const ConsentDraft *newest(short iHenkeiFlg) const;

    void setKind(short iHenkeiFlg);
    void followPeriod(QStringView column, const ConsentDraft &before);
    void proposePeriod();
    void setPeriod(const Period &period);
    void followTick(QStringView column);
    void followDiagnosis(const ConsentDraft &before);

    const Environment &m_environment;
    cT_ADODB &m_db;
    QString m_error;
    EntryPatient m_patient;
    std::optional<PeriodBasisReader> m_reader;
    PeriodBasis m_basis; ///< its days off live in the reader
    QString m_unread;    ///< why the practice's settings could not be read: nothing is proposed then
    std::vector<ConsentDraft> m_rows; ///< the patient's, oldest first
    std::optional<ConsentDraft> m_stored;
    std::optional<ConsentDraft> m_standing; ///< in its place when it was overtaken
    ConsentDraft m_opened;                  ///< the draft as it was first shown
    ConsentDraft m_draft;
    ConsentRowKey m_savedKey;
};
