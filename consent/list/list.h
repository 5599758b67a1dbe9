#pragma once

#include "app/base/environment.h"
#include "consent/list/list_model.h"
#include "consent/rows/list_filter.h"

#include <QString>

class cT_ADODB;

/// What came of saving the edits.
struct SaveOutcome {
    enum Kind {
        Saved,    ///< also when nothing had changed; `text`: the list could not be read again
        Wrong,    ///< an entry cannot be saved: `text` says why, `record` which
        Conflict, ///< colleagues changed `overtaken` since they were read; nothing was written
        Failed    ///< the database refused: `text`; nothing was written
    };
    Kind kind = Saved;
    int record = -1;
    QString text;
    std::vector<TypedRow> overtaken = {};
};

/// The consent list without its form: reads it, keeps its filter and writes its edits.
class ConsentList {
public:
    /// The arguments must outlive the list.
    ConsentList(const Environment &environment, cT_ADODB &db, ConsentListModel &model,
                PeriodAdvisor &advisor);

    ListFilter &filter() { return m_filter; }
    /// What the rows shown were read by.
    const ListFilter &readFilter() const { return m_read; }
    const QString &sErrMsg() const { return m_error; }
    void setMethods(const RequestMethods &methods) { m_methods = methods; }

    /// Reads the list by the filter, without edits. 0, or −1: then the list is what it was.
    short iSearch();
    /// Reads it again by the filter of the last search and keeps the edits. `dropped` takes what was
    /// typed into rows that a colleague's change has overtaken.
    short iReread(std::vector<TypedRow> *dropped);
    /// Reads it again in another order and keeps edits and ticks. 0, or −1: then all is as it was.
    short iReorder(ListOrder order, PatientOrder patientOrder, std::vector<TypedRow> *dropped);
    /// Reckons the kinds of the letters of the next rows, at most so many. 0, or −1.
    short iReadLetters(size_t most);
    /// Writes all edits in one transaction, then reads the list again.
    SaveOutcome save();

    /// Puts a patient into a filter and widens its range to the end of the patient's period.
    /// @param warning why the patient cannot be shown; the filter is unchanged then
    /// @return −1 on a database failure
    short iJumpTo(qint32 patient, ListFilter &filter, QString *warning);

private:
    short read(Recordset &rows);
    ListContext context() const;
    short failed(const QString &reason);

    const Environment &m_environment;
    cT_ADODB &m_db;
    ConsentListModel &m_model;
    PeriodAdvisor &m_advisor;
    RequestMethods m_methods;
    ListFilter m_filter;
    ListFilter m_read; ///< what the rows were read by
    QString m_error;
};
