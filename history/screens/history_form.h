#pragma once

#include "history/screens/change_history.h"

#include <QDialog>
#include <memory>

class ChangeLinesModel;
class HistoryEntriesModel;
struct Environment;
namespace Ui {
class ChangeHistoryForm;
}

/// 変更履歴: what was done to a consent, to all that is its patient's, or to everything. Created, initialised
/// by iInit and shown modally.
class ChangeHistoryForm : public QDialog {
public:
    /// @param row the consent under the cursor; nDate 0: the patient alone; nothing: neither
    ChangeHistoryForm(Environment &environment, cT_ADODB &db, const std::optional<ConsentRowKey> &row,
                      QWidget *parent = nullptr);
    ~ChangeHistoryForm() override;

    /// Why there is nothing to be shown; empty where there is.
    QString whyNone() const { return m_history.whyNone(); }
    /// 0, or −1 with sErrMsg.
    short iInit();
    /// Asks for the changes of one run of any day; before iInit.
    void narrowTo(qint32 batch);
    const QString &sErrMsg() const { return m_error; }

private:
    void wire();
    void wireFilter();
    HistoryScope scope() const;
    LogQuestion question() const;
    void search();
    void readMore();
    void showRead(const Result<> &read);
    void offerWords();
    void showLines(int row);

    Environment &m_environment;
    std::unique_ptr<Ui::ChangeHistoryForm> m_ui;
    ChangeHistory m_history;
    HistoryEntriesModel *m_entries;
    ChangeLinesModel *m_lines;
    QString m_error;
};

/// Shows the history, or says why it cannot be shown.
void showChangeHistory(Environment &environment, cT_ADODB &db, const std::optional<ConsentRowKey> &row,
                       QWidget *parent);

/// Shows what a run changed, or says why it cannot be shown.
void showChangesOf(qint32 batch, Environment &environment, cT_ADODB &db, QWidget *parent);
