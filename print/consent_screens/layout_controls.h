#pragma once

#include "print/consent_screens/layout_lists.h"
#include "print/consent_screens/sample_document.h"

#include <QCheckBox>
#include <QComboBox>
#include <QScrollArea>
#include <QScrollBar>

/// @name Controls that both screens of consent-form settings have
///@{
/// A layout list in its combo box, the number as each item's data; the first item where none has the number.
inline void fillLayoutCombo(QComboBox &box, const LayoutList &layouts, qint32 number) {
    const QSignalBlocker quiet(box);
    box.clear();
    for (const RegisteredForm &layout : layouts)
        box.addItem(layout.name.isEmpty() ? layout.file : layout.name, layout.number);
    if (const int found = box.findData(number); found >= 0)
        box.setCurrentIndex(found);
}

/// The number chosen; 0 for none.
inline short chosenLayout(const QComboBox &box) {
    return short(box.currentData().toInt());
}

/// What is to stand on consent forms.
struct ContentsBoxes {
    QCheckBox *treatment, *doctor, *patientNumber;

    void show(const ConsentLayoutSettings &settings) const {
        const SampleContents contents = SampleContents::of(settings);
        treatment->setChecked(contents.treatment);
        doctor->setChecked(contents.doctor);
        patientNumber->setChecked(contents.patientNumber);
    }
    SampleContents chosen() const {
        return {treatment->isChecked(), doctor->isChecked(), patientNumber->isChecked()};
    }
    void takeOver(ConsentLayoutSettings &settings) const {
        settings.iDouiDispSejyutu = short(treatment->isChecked());
        settings.iDouiDispIshidata = short(doctor->isChecked());
        settings.iDouiDispRiyouNo = short(patientNumber->isChecked());
    }
    void onChange(QWidget *screen, const std::function<void()> &what) const {
        for (const QCheckBox *box : {treatment, doctor, patientNumber})
            QObject::connect(box, &QCheckBox::toggled, screen, what);
    }
};

/// The settings in the screen's left column are never cut at their side; by itself a scroll area asks for
/// less.
inline void showWholeWidth(QScrollArea &scroll) {
    scroll.setMinimumWidth(scroll.widget()->sizeHint().width() +
                           scroll.verticalScrollBar()->sizeHint().width());
}
///@}
