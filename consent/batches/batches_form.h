#pragma once

#include "consent/batches/batches_model.h"

#include <QDialog>

class DateBox;
class Grid;
class QLabel;
class QPushButton;
class QHBoxLayout;
struct Environment;

/// 処理の一覧: the runs of some days, what each did, and 処理の取消.
class BatchesForm : public QDialog {
public:
    BatchesForm(Environment &environment, cT_ADODB &db, QWidget *parent = nullptr);

    /// Shows the runs of the last seven days. 0, or −1 with sErrMsg.
    short iInit();
    const QString &sErrMsg() const { return m_error; }
    /// Rows were written.
    bool written() const { return m_written; }

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void layOut();
    QPushButton *addButton(QHBoxLayout &row, const QString &name, const QString &caption, const QString &key,
                           const QString &hint);
    void wire();
    Result<> read();
    void refresh(qint32 current);
    const BatchInfo *current();
    void showRows();
    void showDocuments();
    void takeBack();

    Environment &m_environment;
    cT_ADODB &m_db;
    QString m_error;
    bool m_written = false;
    BatchesModel m_model;
    DateBox *m_from, *m_to;
    QLabel *m_counts, *m_kept;
    Grid *m_grid;
    QPushButton *m_rows, *m_back, *m_again, *m_documents, *m_close;
};
