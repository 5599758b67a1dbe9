#include "print/consent_form/form_choice.h"

#include <algorithm>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString saitamaMassage = u"埼玉口頭同意M.wfd"_s;
const QString saitamaAcupuncture = u"埼玉口頭同意H.wfd"_s;

/// One patient's part of the choice.
struct Patient {
    const FormRecords &rows;
    int record;
    FormStyle style;
    bool again;

    bool isAcupuncture() const { return rows.isAcupuncture(record); }
    qint64 setting(F table, LayoutSetting setting) const {
        return rows.number(record, layoutField(table, setting));
    }
    bool settingsCount(F table) const {
        return setting(table, again ? LayoutSetting::AgainOn : LayoutSetting::FirstOn) != 0;
    }
    qint64 layoutNumber(F table) const {
        using S = LayoutSetting;
        return setting(table, again ? (isAcupuncture() ? S::AgainAcupuncture : S::AgainMassage)
                                    : (isAcupuncture() ? S::FirstAcupuncture : S::FirstMassage));
    }
    /// A setting that is not stored leaves the screen's choice.
    bool shown(F table, LayoutSetting switched, bool otherwise) const {
        const F field = layoutField(table, switched);
        return rows.isNull(record, field) ? otherwise : rows.flag(record, field);
    }
};

std::optional<F> governingSettings(const Patient &patient, const ConsentFormOptions &options) {
    if (options.ignoreLayoutSettings)
        return {};
    if (options.patientSettings && patient.settingsCount(F::PatientSettings))
        return F::PatientSettings;
    if (options.doctorSettings && patient.settingsCount(F::DoctorSettings))
        return F::DoctorSettings;
    return {};
}

void chooseSwitches(FormChoice &choice, const Patient &patient, const ConsentFormOptions &options,
                    std::optional<F> settings) {
    choice.treatment = options.treatmentContent;
    choice.doctor = options.doctorBlock;
    if (!options.ignoreLayoutSettings)
        choice.patientNumber = patient.shown(F::BranchSettings, LayoutSetting::ShowNumber, false);
    if (!settings)
        return;
    choice.treatment = patient.shown(*settings, LayoutSetting::ShowTreatment, choice.treatment);
    choice.doctor = patient.shown(*settings, LayoutSetting::ShowDoctor, choice.doctor);
    choice.patientNumber = patient.shown(*settings, LayoutSetting::ShowNumber, choice.patientNumber);
}

void chooseOralLayout(FormChoice &choice, const Patient &patient, OralForms oral) {
    if (oral == OralForms::Saitama)
        choice.file = patient.isAcupuncture() ? saitamaAcupuncture : saitamaMassage;
    if (oral != OralForms::OwnLayout)
        return;
    choice.file = patient.rows.text(patient.record, F::OralFormFile).trimmed();
    choice.number = qint32(patient.rows.number(patient.record, F::OralFormNumber));
}

/// The patient's layout number counts as it stands, unless first or re-consent is asked for and it is the
/// other.
bool ownLayoutFits(const Patient &patient) {
    return !patient.rows.text(patient.record, F::FormFile).trimmed().isEmpty() &&
           (patient.style == FormStyle::ByPatient ||
            patient.rows.flag(patient.record, F::FormAgain) == patient.again);
}

using Forms = std::vector<RegisteredForm>;

const RegisteredForm *byNumber(const Forms &forms, qint64 number) {
    const auto found = std::find_if(forms.begin(), forms.end(),
                                    [number](const RegisteredForm &form) { return form.number == number; });
    return found == forms.end() ? nullptr : &*found;
}

/// The first form for the kind of treatment; where none asks for the same consent, any of the kind.
const RegisteredForm *firstOfKind(const Forms &forms, bool acupuncture, bool again) {
    const RegisteredForm *other = nullptr;
    for (const RegisteredForm &form : forms) {
        if (form.acupuncture != acupuncture || form.file == saitamaMassage || form.file == saitamaAcupuncture)
            continue;
        if (form.again == again)
            return &form;
        if (!other)
            other = &form;
    }
    return other;
}

void chooseWrittenLayout(FormChoice &choice, const Patient &patient, const ConsentFormOptions &options,
                         const Forms &forms, std::optional<F> settings) {
    const RegisteredForm *form = settings ? byNumber(forms, patient.layoutNumber(*settings)) : nullptr;
    if (!form && ownLayoutFits(patient)) {
        choice.file = patient.rows.text(patient.record, F::FormFile).trimmed();
        choice.number = qint32(patient.rows.number(patient.record, F::FormNumber));
        return;
    }
    if (!form && !options.ignoreLayoutSettings && patient.settingsCount(F::BranchSettings))
        form = byNumber(forms, patient.layoutNumber(F::BranchSettings));
    if (!form)
        form = firstOfKind(forms, patient.isAcupuncture(), patient.again);
    if (!form)
        return;
    choice.file = form->file;
    choice.number = form->number;
}

} // namespace

bool isAgain(const FormRecords &rows, int record, FormStyle style) {
    if (style != FormStyle::ByPatient)
        return style == FormStyle::Again;
    const QDate treated = rows.date(record, F::FirstTreatment);
    const QDate consented = rows.date(record, F::ConsentDay);
    return treated.isValid() && (!consented.isValid() || treated < consented);
}

FormChoice chooseForm(const FormRecords &rows, int record, FormStyle style, const ConsentFormOptions &options,
                      const std::vector<RegisteredForm> &registered) {
    const Patient patient{rows, record, style, isAgain(rows, record, style)};
    if (const std::optional<PickedForm> &form = options.form)
        return {form->file,          form->number,       patient.again, false, options.treatmentContent,
                options.doctorBlock, form->patientNumber};
    const std::optional<F> settings = governingSettings(patient, options);
    FormChoice choice;
    choice.again = patient.again;
    choice.oral = rows.flag(record, F::Oral);
    chooseSwitches(choice, patient, options, settings);
    if (choice.oral)
        chooseOralLayout(choice, patient, options.oral);
    else
        chooseWrittenLayout(choice, patient, options, registered, settings);
    return choice;
}
