#pragma once

#include "print/consent_form/form_gather.h"
#include "print/consent_form/print_settings.h"
#include "print/engine/wfd_print_exe.h"

#include <QDialog>
#include <memory>

class PickedList;
class QAction;
class cT_ADODB;
struct Environment;
namespace Ui {
class ConsentPrintForm;
}

/// Prints the consent form of one patient, or of all patients who match, a batch. Created, initialised by
/// iInit and shown modally by exec().
class frm同意書印刷 : public QDialog {
public:
    explicit frm同意書印刷(Environment &environment, QWidget *parent = nullptr);
    ~frm同意書印刷() override;

    /// Reads the last choices; what cannot be read is said and keeps its default, so that this gives 0. The
    /// texts and the number mean nothing to this screen; the launcher gives empty ones and 0.
    short iInit(cT_ADODB &db, const QString &text1, const QString &text2, const QString &text3, short number);
    /// Writes a form's data file into the work folder, for slot 1 of the engine. 0, or −1 with sErrMsg.
    short saveCSVdoui(const ConsentForm &form, cls_WfdPrintExe &engine);
    const QString &sErrMsg() const { return m_error; }

protected:
    /// Prints for patients who are picked one by one, in place of one patient or those who match.
    void pickPatients();
    void keyPressEvent(QKeyEvent *event) override;

private:
    struct Searches;

    void addMenu();
    void wire();
    void showSettings(const ConsentPrintSettings &settings);
    void showTarget();
    bool single() const;
    bool settle();
    ConsentPrintSettings chosen() const;
    ConsentFormOptions options(const ConsentPrintSettings &settings) const;

    void switchOralForms(bool on);
    void print(PrintWay way);
    bool maySkip(const GatheredForms &gathered);
    void printSingle(const GatheredForms &gathered, PrintWay way);
    void printBatch(const GatheredForms &gathered, PrintWay way);

    Environment &m_environment;
    cT_ADODB *m_db = nullptr;
    std::unique_ptr<Ui::ConsentPrintForm> m_ui;
    std::unique_ptr<Searches> m_searches; ///< made by iInit
    PatientManagementSettings m_practice;
    QAction *m_oralForms;
    QString m_error;
    PickedList *m_picked = nullptr; ///< of the variant that is driven from the master
};

/// The consent forms of patients picked from the master, whether they have a consent or not.
class frm同意書印刷_mst : public frm同意書印刷 {
public:
    explicit frm同意書印刷_mst(Environment &environment, QWidget *parent = nullptr);
};
