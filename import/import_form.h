#pragma once

#include "import/import_models.h"

#include <QDialog>

class Grid;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;
class cT_ADODB;
struct Environment;

/// データの取込: a file of patients, masters or consents; what its columns are; what an import would do, row
/// by row; and its writing. Created, initialised by iInit and shown modally.
class frmDataImport : public QDialog {
public:
    frmDataImport(Environment &environment, cT_ADODB &db, QWidget *parent = nullptr);

    /// 0.
    short iInit();
    /// Whether rows were written.
    bool written() const { return m_written; }

    /// Asks where a file would be left half-way.
    void reject() override;

private:
    void layOut();
    QWidget *inputs();
    QWidget *columnsPage();
    QWidget *trialPage();
    QWidget *buttons();
    QPushButton *button(const QString &name, const QString &caption, const QString &key,
                        void (frmDataImport::*work)());

    ImportKind kind() const;
    void chooseFile();
    void chooseKind();
    void readFile();
    void showColumns();
    void chooseType();
    void keepType();
    void assign();
    void setHeaded(bool headed);
    void tryOut();
    void showPlan(ImportPlan plan, const QString &done = {});
    void showRefusedOnly(bool only);
    void goToRefused();
    void writeAll() { write(ImportRows::All); }
    void writeRight() { write(ImportRows::RightOnes); }
    void write(ImportRows rows);
    void finish(const ImportOutcome &outcome);
    void writeTemplate();
    void leave();

    Environment &m_environment;
    cT_ADODB &m_db;
    ImportJob m_job;
    bool m_loaded = false; ///< the job holds a file
    bool m_open = false;   ///< a trial has something to write
    bool m_written = false;
    ImportColumnsModel *m_columnsModel;
    ImportTrialModel *m_trialModel;

    QComboBox *m_kind, *m_type, *m_field;
    QLineEdit *m_path;
    QCheckBox *m_headed, *m_leaveUnknown, *m_copy, *m_refusedOnly;
    QTabWidget *m_pages;
    Grid *m_columns, *m_trial;
    QLabel *m_summary;
    QPushButton *m_writeAll, *m_writeRight, *m_nextRefused;
};
