#pragma once

#include <QDialog>

class QLabel;
class QPlainTextEdit;
class QPushButton;
class cT_ADODB;
struct Environment;

/// 設定 → 変更履歴の準備: whether the database keeps the history of changes, why not, and the tables that it
/// takes: made here, or by the server's administrator with the statements shown. Created, initialised by
/// iInit and shown modally.
class HistoryPrepareForm : public QDialog {
public:
    HistoryPrepareForm(Environment &environment, cT_ADODB &db, QWidget *parent = nullptr);

    /// Looks. 0, or −1 with sErrMsg.
    short iInit();
    const QString &sErrMsg() const { return m_error; }

private:
    QPushButton *button(const QString &name, const QString &caption, const QString &key,
                        void (HistoryPrepareForm::*work)());
    void layOut();
    void lookAgain();
    void make();
    void copy();
    void save();
    void leave() { reject(); }

    Environment &m_environment;
    cT_ADODB &m_db;
    QString m_error;
    QLabel *m_state;
    QPlainTextEdit *m_statements;
    QPushButton *m_make = nullptr;
};
