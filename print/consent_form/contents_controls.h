#pragma once

#include "print/consent_form/print_settings.h"

#include <QCheckBox>
#include <QComboBox>

/// The controls of a screen for what stands on consent forms; the lists hold the choices in their order.
struct ContentsControls {
    QComboBox *style, *oral;
    QCheckBox *treatment, *doctor, *company, *patientSettings, *noSettings;

    void show(const FormContents &contents) const {
        style->setCurrentIndex(int(contents.style));
        oral->setCurrentIndex(int(contents.oral));
        treatment->setChecked(contents.treatmentContent);
        doctor->setChecked(contents.doctorBlock);
        company->setChecked(contents.company);
        patientSettings->setChecked(contents.patientSettings);
        noSettings->setChecked(contents.ignoreLayoutSettings);
    }
    FormContents chosen() const {
        return {.style = FormStyle(style->currentIndex()),
                .oral = OralForms(oral->currentIndex()),
                .treatmentContent = treatment->isChecked(),
                .doctorBlock = doctor->isChecked(),
                .ignoreLayoutSettings = noSettings->isChecked(),
                .company = company->isChecked(),
                .patientSettings = patientSettings->isChecked()};
    }
};

/// The controls by the names that they have on every such screen.
template <class Ui> ContentsControls contentsControls(const Ui &ui) {
    return {ui.cmbYoushiki, ui.cmbYoushiki2,      ui.chkNaiyou, ui.chkIsi,
            ui.chkKaisya,   ui.chkRiyousyaKobetu, ui.chkSansyou};
}
