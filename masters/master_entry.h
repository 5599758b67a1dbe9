#pragma once

#include "db/tables/consent_layout_settings.h"
#include "history/operation.h"
#include "masters/master_description.h"
#include "print/documents/lost_texts.h"

/// What became of a row that was to be written.
struct MasterOutcome {
    enum Kind {
        Done,
        Refused, ///< a colleague was first, or the database cannot hold a text; nothing was written
        Failed
    };
    Kind kind = Done;
    QString text = {};
};

/// Why a row cannot be saved as it is typed; no text: it can.
struct MasterObjection {
    QString text;
    QString column; ///< where to mend it
};

/// One row of a master while it is looked at, edited or deleted. What a colleague writes meanwhile is never
/// overwritten: under the row's lock it is compared with what was read.
class MasterEntry {
public:
    /// The connection must outlive the entry.
    MasterEntry(const MasterDescription &description, cT_ADODB &db);

    /// A new row with the number after the highest; saving it takes the next one where a colleague has taken
    /// that meanwhile.
    Result<> openNew();
    Result<> open(const QString &code);

    /// Reads the row again after work of the user's own has written it: what was not changed here follows it.
    /// What was changed here and there stays overtaken.
    Result<> reread();

    bool isNew() const { return m_isNew; }
    bool isChanged() const { return m_values != m_read; }
    /// Of a new row: nobody typed another number.
    bool isNumberProposed() const { return code() == m_read.value(m_description.codeColumn); }
    QString code() const { return value(m_description.codeColumn); }
    QString value(const QString &column) const { return m_values.value(column); }
    /// An empty text leaves a column Null that was Null.
    void setValue(const QString &column, const QString &text);

    /// @name The consent-form settings of a doctor
    ///@{
    ConsentLayoutSettings layouts() const;
    void setLayouts(const ConsentLayoutSettings &settings);
    ///@}

    /// What is missing or does not fit its column; columns that were not changed are not judged.
    MasterObjection whyWrong() const;
    /// Whether the number is taken, or a colleague has written the row since it was read. A failure is the
    /// database's.
    Result<MasterObjection> whyOvertaken();
    /// Texts with characters that data files lack, of those that were changed.
    std::vector<ReplacedText> lostTexts() const;

    /// Who names the row.
    Result<MasterUses> uses();
    /// Whether something was changed that others repeat.
    bool changesRepeated() const;

    /// Writes the row, in one transaction with the copies to those who repeat it.
    MasterOutcome save(bool copy);
    /// Deletes the row as it was read.
    /// @param told who was said to name it: where more do by now, nothing is deleted
    MasterOutcome remove(const MasterUses &told);

private:
    Result<> takeFreeNumber();
    QString storedOtherwise(const MasterValues &stored) const;
    template <class Work> MasterOutcome inTransaction(const QString &verb, const Work &work);
    template <class Work> MasterOutcome once(const Operation &operation, const Work &work);

    const MasterDescription &m_description;
    cT_ADODB &m_db;
    std::unique_ptr<MasterStore> m_store;
    bool m_isNew = false;
    MasterValues m_read;
    MasterValues m_values;
};
