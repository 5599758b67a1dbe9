#pragma once

#include "export/csv_settings.h"

#include <QDialog>
#include <memory>

class QLineEdit;
namespace Ui {
class frmMakeCsv;
}
struct Environment;

/// Asks where and how a grid is saved. Created, initialised by iInit and shown modally; what it hands back
/// can be used as it is: the folder is there, the file name is one, and another file of that name may go. The
/// choices are kept in DataFile.ini.
class frmMakeCsv : public QDialog {
public:
    explicit frmMakeCsv(const Environment &environment, QWidget *parent = nullptr);
    ~frmMakeCsv() override;

    /// @param fileName what is proposed; empty: the name that was used last
    /// @param rows, columns what is to be saved, for the user
    void iInit(const QString &fileName, int rows, int columns);

    /// Full path.
    QString CsvFileName() const;
    /// 0 comma, 1 tab.
    int CsvFileSection() const { return m_settings.section(); }
    /// Sum of 1 (cells quoted only where they must be), 2 (no line of headings) and 4 (UTF-8).
    int CsvFileEtc() const { return m_settings.etc(); }
    /// 1: the folder is to be opened.
    int CsvFileOpn() const { return m_settings.openFolder ? 1 : 0; }
    /// Whether the file is to be written.
    bool OkCancel() const { return result() == Accepted; }
    const CsvFormat &format() const { return m_settings.format; }
    /// Overrules the encoding, for this file alone.
    void setEncoding(CsvEncoding encoding) { m_settings.format.encoding = encoding; }

    void accept() override;

private:
    void wire();
    void fill(const CsvSettings &settings);
    void take();
    void chooseFolder();
    void changeEnding();
    bool isSound();
    bool refuse(const QString &text, const QString &title, QLineEdit *where);

    const Environment &m_environment;
    std::unique_ptr<Ui::frmMakeCsv> m_ui;
    CsvSettings m_settings;
};
