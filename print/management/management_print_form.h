#pragma once

#include "print/engine/wfd_print_exe.h"
#include "print/ledger/ledger_rows.h"
#include "print/management/management_query.h"
#include "print/management/management_settings.h"

#include <QDialog>
#include <memory>

class QRadioButton;
namespace Ui {
class ManagementPrintForm;
}

/// Puts out the request letters of the rows, over the form given, and marks those that left.
/// @return what came of it, for the user; empty where nothing was put out, which has been said
using PutOutLetters =
    std::function<QString(const std::vector<ManagementRow> &rows, PrintWay way, QWidget *parent)>;

/// Prints the documents of consent management: ledger, envelopes, request letters, renewal list. The forms
/// that derive from it differ in where the rows come from.
class ManagementPrintForm : public QDialog {
public:
    ManagementPrintForm(Environment &environment, cT_ADODB &db, QWidget *parent);
    ~ManagementPrintForm() override;

    /// Writes a document's data file into the work folder, for slot 1 of the engine. 0, or −1 with the
    /// engine's sErrMsg.
    short saveCSVdoui(const ManagementDocument &document, cls_WfdPrintExe &engine) const;

protected:
    void init(PutOutLetters letters);

    /// @name Where the rows come from
    ///@{
    virtual bool fromMasters() const = 0;
    /// What is chosen: consents; from masters patients (nDate 0) or, for envelopes, whoever they go to.
    virtual std::vector<ManagementRow> targets() const = 0;
    virtual Result<EnvelopeWishes> wishes(EnvelopeDestination destination) = 0;
    /// More to say about the targets; may be empty.
    virtual QString note() const { return {}; }
    /// What the targets were limited by, as ledgers print it.
    virtual QString searchName() const { return {}; }
    /// Practitioners who come first in documents that go by them.
    virtual std::vector<qint32> staff() const { return {}; }
    /// Takes what is still being typed; false when it cannot be used, which has been said.
    virtual bool settleTargets() { return true; }
    /// Another document or destination was chosen.
    virtual void modeChanged() {}
    ///@}

    ManagementMode mode() const;
    EnvelopeDestination destination() const;
    /// Says "対象 N 件" anew.
    void showState();
    /// Puts a choice of rows into their box, behind the ones before.
    void addChoice(QWidget *choice);
    Environment &environment() const { return m_environment; }
    cT_ADODB &db() const { return m_db; }

private:
    void wire();
    void showMode();
    bool settle();
    ManagementSettings chosen() const;
    void print(PrintWay way);
    void printDocument(PrintWay way);
    void printLetters(PrintWay way);
    void openRenewalList();
    std::optional<std::vector<ManagementRow>> letterRows();
    Result<ManagementDocument> ledger() const;
    Result<ManagementDocument> envelopes();
    bool mayPutOut(const ManagementDocument &document, PrintWay way);
    Result<> output(const ManagementDocument &document, PrintWay way, HandedDocuments *sent) const;

    Environment &m_environment;
    cT_ADODB &m_db;
    std::unique_ptr<Ui::ManagementPrintForm> m_ui;
    ManagementSettings m_settings; ///< the choices of all documents
    PutOutLetters m_letters;
    QWidget *m_lastChoice = nullptr; ///< in the order of tabs
};

/// The rows of the consent list, those ticked and all that are shown.
struct ManagementChoice {
    std::vector<ManagementRow> ticked;
    std::vector<ManagementRow> shown;
    int tickedOutOfSight = 0;
    QString searchName;          ///< what the list was limited by, as ledgers print it
    std::vector<qint32> staff{}; ///< who come first in documents that go by practitioners
};

/// Documents of consent management for the rows of the consent list: those ticked, else all that are shown.
/// Created, initialised by iInit and shown modally by exec().
class frm同意書管理印刷 : public ManagementPrintForm {
public:
    frm同意書管理印刷(Environment &environment, cT_ADODB &db, QWidget *parent = nullptr);

    /// @return 0, or −1 with sErrMsg where there are no rows
    short iInit(ManagementChoice choice, PutOutLetters letters);
    const QString &sErrMsg() const { return m_error; }

protected:
    bool fromMasters() const override { return false; }
    std::vector<ManagementRow> targets() const override;
    Result<EnvelopeWishes> wishes(EnvelopeDestination destination) override;
    QString note() const override;
    QString searchName() const override { return m_choice.searchName; }
    std::vector<qint32> staff() const override { return m_choice.staff; }

private:
    QRadioButton *m_ticked;
    QRadioButton *m_shown;
    ManagementChoice m_choice;
    QString m_error;
};
