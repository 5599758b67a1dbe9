#pragma once

#include "consent/rows/column_settings.h"

#include <QDialog>
#include <memory>
#include <optional>

class ColumnsModel;
namespace Ui {
class ColumnsForm;
}
struct Environment;

/// Asks which columns the list shows, in which order and width, and how many stay at the left.
class ColumnsForm : public QDialog {
public:
    /// @param now as the list shows them
    ColumnsForm(const Environment &environment, const ColumnSettings &now, QWidget *parent = nullptr);
    ~ColumnsForm() override;

    /// What was chosen; after exec() gave Accepted.
    const ColumnSettings &chosen() const;

    /// Confirms; at least one column must be shown.
    void accept() override;
    /// Leaves; a choice that was changed is asked about.
    void reject() override;

private:
    void wire();
    void load(const ColumnSettings &settings);
    void move(int by);
    void showState();

    const Environment &m_environment;
    const ColumnSettings m_before;
    std::unique_ptr<Ui::ColumnsForm> m_ui;
    ColumnsModel *m_model;
};

/// Asks, and stores what was chosen as the practice's.
/// @return what holds now; nothing when it was left or could not be stored, which has been said
std::optional<ColumnSettings> chooseColumns(const Environment &environment, const ColumnSettings &now,
                                            QWidget *parent);
