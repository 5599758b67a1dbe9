#pragma once

#include "app/base/table_model.h"
#include "check/database_check.h"

#include <QDialog>

class Grid;
class QCheckBox;
class QLabel;
struct Environment;

/// The findings as a grid shows them: all, or the troubles alone.
class FindingsModel : public TableModel {
public:
    enum Column { State, Table, Name, Text, Uses, Remedy };

    explicit FindingsModel(QObject *parent = nullptr);

    void load(const std::vector<Finding> &findings, bool all);
    /// nullptr outside the rows.
    const Finding *at(int row) const { return row >= 0 && row < count() ? &m_rows[size_t(row)] : nullptr; }
    QVariant data(const QModelIndex &index, int role) const override;

private:
    int count() const override { return int(m_rows.size()); }

    std::vector<Finding> m_rows;
};

/// 設定 → データベースの確認: whether the database has what the program uses, what a difference touches and
/// what to do. Created, initialised by iInit and shown modally.
class DatabaseCheckForm : public QDialog {
public:
    DatabaseCheckForm(Environment &environment, cT_ADODB &db, QWidget *parent = nullptr);

    /// Checks. 0, or −1 with sErrMsg.
    short iInit();
    const QString &sErrMsg() const { return m_error; }

private:
    void layOut();
    void checkAgain();
    void showRows();
    void showDetail(int row);
    void print();

    Environment &m_environment;
    cT_ADODB &m_db;
    std::vector<Finding> m_findings;
    QString m_error;
    FindingsModel m_model;
    QLabel *m_summary;
    QCheckBox *m_all;
    Grid *m_grid;
    QLabel *m_detail; ///< of the current row, whose columns may be cut off
};
