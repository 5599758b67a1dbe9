#pragma once

#include "app/base/branch.h"
#include "app/base/result.h"
#include "widgets/code_lookup.h"
#include "widgets/code_name_pair.h"
#include "widgets/pick_list_form.h"

#include <QByteArray>
#include <memory>

class cT_ADODB;
struct Environment;

/// What the search classes share: they show their pick list and hold what was taken. Columns' widths, order
/// and sort live as long as the object.
class SearchClass {
public:
    SearchClass(cT_ADODB &db, const Environment &environment) : m_db(db), m_environment(environment) {}
    virtual ~SearchClass() = default;
    SearchClass(const SearchClass &) = delete;
    SearchClass &operator=(const SearchClass &) = delete;

    /// Shows the form modally. 0, also when it was left without a choice; −1 with CsErrStr when it cannot
    /// be filled.
    short iDspStart(QWidget *parent = nullptr);

    /// The row of a typed code; a failing database is a reason too.
    virtual CodeLookup lookup(const QString &code) = 0;

    /// Lets the pick list offer to enter a row and to edit the current one.
    void setEditor(EditRow edit) { m_edit = std::move(edit); }

    const QString &CsErrStr() const { return m_error; }
    /// What was taken; an empty code when the form was left.
    const CodeName &seled() const { return m_seled; }

protected:
    virtual std::unique_ptr<PickListForm> makeForm(QWidget *parent) = 0;
    /// Called after the form closed, with or without a choice.
    virtual void taken(const PickListForm &) {}

    short fail(const QString &reason);
    cT_ADODB &db() const { return m_db; }
    const Environment &environment() const { return m_environment; }
    const Branch &office() const;
    const EditRow &editor() const { return m_edit; }

private:
    cT_ADODB &m_db;
    const Environment &m_environment;
    QString m_error;
    CodeName m_seled;
    QByteArray m_layout;
    EditRow m_edit;
};

/// A search as code boxes want it. The search has to outlive the boxes.
CodeSearch codeSearch(SearchClass &search, Messages &messages);

/// Makes sure that the run's connection stands, connecting again where it was lost. The failure is the text
/// of a search that cannot begin.
Result<> connectForSearch(cT_ADODB &db);

/// Reads the rows of one SELECT over the run's connection. The failure ends in the label of the routine, as
/// the search classes report it.
Result<Recordset> readForSearch(cT_ADODB &db, const QString &sql, QStringView label);
