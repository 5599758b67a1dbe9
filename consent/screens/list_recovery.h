#pragma once

#include "app/base/environment.h"
#include "app/base/request_methods.h"
#include "consent/list/list_keeper.h"
#include "consent/list/list_model.h"
#include "consent/merge/list_merge.h"
#include "consent/merge/merge_form.h"
#include "consent/rows/list_filter.h"

/// Nothing that was typed into the list is lost: where somebody else wrote the row meanwhile, both are shown
/// side by side; what a crash left unsaved is offered at the next start.
class ListRecovery {
public:
    /// @param readFilter what the rows are read by; like the others it outlives this
    ListRecovery(Environment &environment, cT_ADODB &db, ConsentListModel &model, QWidget *window,
                 const ListFilter &readFilter);

    void setMethods(const RequestMethods &methods) { m_methods = methods; }

    /// Settles what was typed into rows that somebody else wrote: the user decides, the list holds it then as
    /// edits over what stands now. False when it was left, or the database refused; that has been told.
    bool settle(const std::vector<TypedRow> &typed, MergeForm::Use use);

    /// Offers what earlier runs left unsaved and takes it over into the list.
    /// @param show makes the list hold the rows as far as it can
    /// @return a row that was restored; nothing when none was
    std::optional<ConsentRowKey> restore(const std::function<void(const UnsavedRows &)> &show);

private:
    struct Left {
        std::unique_ptr<UnsavedFile> file;
        UnsavedRows unsaved;
    };
    UnsavedRows unsaved() const;
    void changed();
    std::vector<Left> wanted();
    std::optional<UnsavedRows> read(UnsavedFile &file);
    size_t takeBack(const Left &left);
    std::vector<StandingRow> shownRows(const std::vector<TypedRow> &typed) const;
    void setOpen(std::vector<TypedRow> rows);

    Environment &m_environment;
    cT_ADODB &m_db;
    ConsentListModel &m_model;
    QWidget *m_window;
    const ListFilter &m_read;
    RequestMethods m_methods;
    std::vector<TypedRow> m_open; ///< in no row of the list while the user decides about them
    ListKeeper m_keeper;
};
