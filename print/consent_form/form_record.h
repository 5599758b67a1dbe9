#pragma once

#include "db/field_rows.h"
#include "db/tables/keys.h"
#include "print/documents/addressee.h"

#include <QString>
#include <array>

/// What the query reads of one patient. `Patient…`, `Doctor…` and `Branch…` of the layout settings stand in
/// the order of LayoutSetting.
enum class F {
    // patient
    KyotenCd,
    KyotenEb,
    Number,
    Name,
    Address1,
    Address2,
    Birthday,
    Sex,
    Relation,
    Kind,
    FirstTreatment,
    Onset,
    VisitsNeeded,
    VisitReason1,
    VisitReason2,
    VisitReason3,
    VisitReasonOther,
    Walking,
    CareDegree,
    Staff,
    SummaryDiagnosis,
    ReacquireFrom,
    ReacquireTo,
    // consent
    ConsentKey,
    IsCorrection,
    CorrectionKey,
    Doctor,
    ConsentDay,
    PeriodStart,
    PeriodEnd,
    NextDay,
    NextStart,
    NextEnd,
    Oral,
    ReacquireMonths,
    DiagnosisMassage,
    DiagnosisAcupuncture,
    Diagnosis,
    RecordDoctor,
    RecordHospital,
    RecordHospitalAddress,
    Part1,
    Part2,
    Part3,
    Part4,
    Part5,
    Warmth,
    Electric,
    Needle,
    Moxa,
    NeedleElectric,
    Disease1,
    Disease2,
    Disease3,
    Disease4,
    Disease5,
    Disease6,
    Disease7,
    ParalysisTrunk,
    ParalysisRightArm,
    ParalysisLeftArm,
    ParalysisRightLeg,
    ParalysisLeftLeg,
    RightShoulder,
    RightElbow,
    RightWrist,
    RightHip,
    RightKnee,
    RightAnkle,
    LeftShoulder,
    LeftElbow,
    LeftWrist,
    LeftHip,
    LeftKnee,
    LeftAnkle,
    ContractureOther,
    ContractureOtherText,
    SymptomOther,
    CorrectionStart,
    CorrectionEnd,
    // doctor and hospital
    DoctorName,
    DoctorHospital,
    DoctorAddress1,
    DoctorAddress2,
    DoctorTelephone,
    HandWriting,
    HospitalNumber,
    HospitalName,
    HospitalAddress1,
    HospitalAddress2,
    HospitalTelephone,
    // where the patient is treated
    HomeNumber,
    HomeAddress1,
    HomeAddress2,
    // staff and branch
    StaffName,
    BranchName,
    BranchPostcode,
    BranchAddress1,
    BranchAddress2,
    BranchTelephone,
    // layouts
    FormNumber,
    FormFile,
    FormAgain,
    OralFormNumber,
    OralFormFile,
    PatientSettings,
    DoctorSettings = PatientSettings + 9,
    BranchSettings = DoctorSettings + 9,
    Count = BranchSettings + 9
};

/// The layout settings that the consent form needs, in the order in which a table's are read.
enum class LayoutSetting {
    FirstOn,
    FirstMassage,
    FirstAcupuncture,
    AgainOn,
    AgainMassage,
    AgainAcupuncture,
    ShowTreatment,
    ShowDoctor,
    ShowNumber
};

/// The rows of the query.
class FormRecords : public FieldRows<F> {
public:
    using FieldRows::FieldRows;

    PatientKey patient(int record) const {
        return {short(number(record, F::KyotenCd)), short(number(record, F::KyotenEb)),
                qint32(number(record, F::Number))};
    }
    /// The doctor whom the row names.
    KnownDoctor doctor(int record) const {
        const auto t = [&](F field) { return text(record, field); };
        return {.name = t(F::DoctorName),
                .own = {.name = t(F::DoctorHospital),
                        .zip = {},
                        .address1 = t(F::DoctorAddress1),
                        .address2 = t(F::DoctorAddress2),
                        .telephone = t(F::DoctorTelephone)},
                .institution = {.name = t(F::HospitalName),
                                .zip = {},
                                .address1 = t(F::HospitalAddress1),
                                .address2 = t(F::HospitalAddress2),
                                .telephone = t(F::HospitalTelephone)},
                .notedName = t(F::RecordDoctor),
                .notedInstitution = t(F::RecordHospital),
                .notedAddress = t(F::RecordHospitalAddress)};
    }
    bool isAcupuncture(int record) const { return flag(record, F::Kind); }
    /// The consent row; its nDate is 0 where the patient has none.
    ConsentRowKey consent(int record) const {
        return {patient(record), qint32(number(record, F::ConsentKey)),
                short(number(record, F::IsCorrection)), qint32(number(record, F::CorrectionKey))};
    }
};

/// A field of one of the three tables that hold layout settings.
constexpr F layoutField(F table, LayoutSetting setting) {
    return F(int(table) + int(setting));
}
