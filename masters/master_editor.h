#pragma once

#include "masters/master_store.h"
#include "masters/postal_codes.h"
#include "search/master_search_form.h"

struct Environment;

/// Opens the input forms of the masters from wherever a row of them is picked. Keeps the postal codes for all
/// of them.
class MasterEditor {
public:
    /// @param changed called after a row was saved; may be empty
    MasterEditor(Environment &environment, cT_ADODB &db, std::function<void()> changed = {});

    /// Shows a row, or without a code a new one. The code of what was saved.
    std::optional<QString> edit(MasterKind kind, const QString &code, QWidget *parent);

    /// Lets a pick list offer it, where this kind is kept here. The editor must outlive the search.
    void offer(SearchClass &search, MasterKind kind);
    bool mayEdit(MasterKind kind) const;

    Environment &environment() const { return m_environment; }
    cT_ADODB &db() const { return m_db; }
    PostalBook &postalBook() { return m_postalBook; }

private:
    Environment &m_environment;
    cT_ADODB &m_db;
    std::function<void()> m_changed;
    PostalBook m_postalBook;
};
