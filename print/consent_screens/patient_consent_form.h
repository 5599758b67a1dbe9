#pragma once

#include "print/consent_form/form_options.h"
#include "print/consent_screens/consent_screens_query.h"
#include "print/consent_screens/layout_controls.h"
#include "print/consent_screens/layout_sample.h"

#include <QDialog>
#include <array>
#include <memory>

class QShowEvent;
namespace Ui {
class PatientConsentForm;
}

/// Sets with which layouts and contents the documents of one patient are printed, shows each filled with an
/// invented patient, and prints them. It writes nothing of the patient's: the opener reads the settings when
/// the form is closed. Created, initialised by iInit and shown modally by exec().
class frmDouiSubmain : public QDialog {
public:
    explicit frmDouiSubmain(Environment &environment, QWidget *parent = nullptr);
    ~frmDouiSubmain() override;

    const QString &sErrMsg() const { return m_error; }
    /// @param doctor code of the consenting doctor; may be empty
    /// @param mode openers give 1; no other has a meaning
    /// @return 0, or −1 with sErrMsg, which has been said, and the form must not be shown
    short iInit(cT_ADODB &db, const PatientKey &patient, const QString &doctor, short mode);

    /// @name Writing a document's data for an engine's first slot
    /// Rows written, 0 when there is no patient to write, −1 with sErrMsg, −2 when the user would rather not
    /// print other characters than are written.
    ///@{
    int saveCSVdoui(const RegisteredForm &layout, cls_WfdPrintExe &engine);
    int saveCSVdouiIrai(const RegisteredForm &layout, cls_WfdPrintExe &engine);
    ///@}

    /// Stores the choices for the patient's kind of treatment in the doctor's row. 0, or −1 with sErrMsg,
    /// which has been said. No control of this screen does it.
    short updateIshiDoui();

    /// The twelve settings as chosen; once the form is closed, as they were then.
    const ConsentLayoutSettings &settings() const { return m_settings; }
    /// The user chose something else than was shown at first.
    bool isChanged() const { return !m_settings.same(m_shownFirst); }
    /// The patient's own settings when the form was opened.
    const ConsentLayoutSettings &seen() const { return m_patientConsent.ofPatient; }

    void done(int result) override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    static constexpr size_t documents = 3;

    void wire();
    short fail(const QString &text, const QString &title = {});
    short readSenders();
    short readLayouts();
    short chooseSender();
    void showConsent();
    void showSettings(const ConsentLayoutSettings &settings);
    void showSubmission();
    ConsentLayoutSettings chosenSettings() const;
    const RegisteredForm *chosen(ConsentDocument document) const;
    void showSample(ConsentDocument document);
    void print(ConsentDocument document);
    bool write(ConsentDocument document, const RegisteredForm &layout, cls_WfdPrintExe &engine);
    bool mayReplace(const QString &note);
    void keepSubmission();
    Result<QString> getDocTelNo() const;
    ConsentFormOptions formOptions(const RegisteredForm &layout) const;

    Environment &m_environment;
    cT_ADODB *m_db = nullptr;
    std::unique_ptr<Ui::PatientConsentForm> m_ui;
    std::array<QComboBox *, documents> m_formats;
    std::array<QCheckBox *, documents> m_own; ///< whether the patient has settings of his own for it
    std::array<LayoutList, documents> m_layouts;
    std::vector<cD_CORP> m_companies; ///< in the order of cmbCorp
    cD_CORP m_headOffice;
    ContentsBoxes m_contents{};
    LayoutSample m_sample;
    ConsentDocument m_shown = ConsentDocument::First;
    PatientKey m_patient;
    QString m_doctor;
    PatientConsent m_patientConsent;
    ConsentLayoutSettings m_settings, m_shownFirst;
    QString m_error;
};
