#pragma once

#include "print/consent_screens/layout_controls.h"
#include "print/consent_screens/layout_sample.h"

#include <QDialog>
#include <array>
#include <memory>

class QShowEvent;
struct Environment;
namespace Ui {
class DoctorConsentForm;
}

/// Sets which layouts consent forms and request letters of a doctor, or of the company, are printed with, and
/// shows each filled with an invented patient. It writes nothing: the opener reads the settings where they
/// were registered. Created, initialised by iInit and shown modally by exec().
class frmDouiSubmainIshi : public QDialog {
public:
    enum Mode : short { Company = 1, Doctor = 6 };

    explicit frmDouiSubmainIshi(Environment &environment, QWidget *parent = nullptr);
    ~frmDouiSubmainIshi() override;

    /// @param settings to begin with; a layout that is gone shows the first of its list
    /// @param mode one of Mode
    /// @return 0, or −1 with sErrMsg, and the form must not be shown
    short iInit(cT_ADODB &db, const ConsentLayoutSettings &settings, short mode);
    const QString &sErrMsg() const { return m_error; }

    /// The twelve settings: as registered, else as they were given.
    const ConsentLayoutSettings &settings() const { return m_settings; }
    /// The user registered them.
    bool isRegistered() const { return m_registered; }

    /// Asks whether to register, then closes.
    void reject() override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    /// Combos count from the massage patient's first consent form to the acupuncture patient's letter.
    static constexpr size_t combos = 6;
    static ConsentDocument documentOf(size_t combo) { return ConsentDocument(combo % 3); }
    static bool isAcupuncture(size_t combo) { return combo >= 3; }

    void wire();
    void showSettings();
    void fill(size_t combo);
    const RegisteredForm *chosen(size_t combo) const;
    void showSample(size_t combo);
    void putOut(size_t combo, PrintWay way);
    void regist();
    void takeOver();

    Environment &m_environment;
    std::unique_ptr<Ui::DoctorConsentForm> m_ui;
    std::array<QComboBox *, combos> m_formats;
    std::array<LayoutList, combos> m_layouts;
    ContentsBoxes m_contents{};
    LayoutSample m_sample;
    size_t m_shown = 0; ///< combo whose sample is shown
    ConsentLayoutSettings m_settings;
    bool m_registered = false;
    QString m_error;
};
