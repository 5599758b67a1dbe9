#pragma once

#include "backup/backups.h"
#include "widgets/pick_list_form.h"

struct Environment;

/// Picks one of the embedded database's backups.
class RestoreForm : public PickListForm {
public:
    RestoreForm(Messages &messages, const Backups &backups, QWidget *parent = nullptr);

    Backup picked() const { return m_backups.at(seledRow()); }

protected:
    Result<Recordset> readList() override;
    QString emptyText() const override;
    QString summary() const override;

private:
    Backups m_folder;
    QList<Backup> m_backups;
};

/// Copies the backup that the user picks into a new file and asks whether the next start uses that.
void restoreBackup(Environment &environment, QWidget *parent);
