#pragma once

#include "db/tables/keys.h"
#include "db/tables/patient_text.h"

#include <QDate>
#include <QString>
#include <optional>
#include <vector>

/// Stored as these numbers under "ソート順". A chosen order is that of ConsentFormOptions::rows or
/// ::patients; it is never stored.
enum class FormOrder { Number = 0, Kana = 1, Hospital = 2, Staff = 3, PeriodEnd = 4, AsChosen = 99 };

/// 出力様式: whether a first consent or a re-consent is asked for. ByPatient: as the patient's first
/// treatment and consent tell.
enum class FormStyle { ByPatient = 0, First = 1, Again = 2 };

/// 出力様式2: what a patient whose consent is given by word of mouth gets.
enum class OralForms {
    None = 0,      ///< no form
    OwnLayout = 1, ///< the patient's own layout for oral consents
    Saitama = 2,   ///< the fixed layouts of the oral-consent variant; never stored, a setting of the suite
};

/// Whose rows of the form master name the layouts.
enum class FormMaster {
    Branch,   ///< the patient's branch: single documents
    Practice, ///< branch 0: batches
};

/// A consent row whose form is asked for.
struct ConsentFormRow {
    ConsentRowKey key;
    FormStyle style = FormStyle::ByPatient; ///< of this form; a letter that continues a consent wants Again
};

/// A form of the form master that the user picked himself.
struct PickedForm {
    qint32 number = 0;
    QString file;
    bool patientNumber = false; ///< whether it shows the patient's number
};

/// Which consent forms are asked for and what is to stand on them. A plain value: a screen fills it.
struct ConsentFormOptions {
    Branch branch{};
    FormMaster master = FormMaster::Branch;

    /// @name Whose forms
    /// With rows given the forms of exactly these (of none where they are empty), which have to be newest
    /// rows of the branch; with patient numbers given exactly these patients by their newest massage consent,
    /// whatever their outcome; otherwise all of the branch under treatment (outcome not 1, 3 or 15, no expiry
    /// day) who match. 0, empty and invalid do not limit.
    ///@{
    std::optional<std::vector<ConsentFormRow>> rows{};
    std::vector<qint32> patients{};
    TreatmentKind kind = TreatmentKind::All;
    qint32 staff = 0;      ///< responsible staff (RIYOUSHA.nTantou)
    QString doctor{};      ///< code of the consenting doctor
    QDate periodEndFrom{}; ///< the newest consent's period ends on this day or later
    QDate periodEndTo{};   ///< and on this day or earlier
    ///@}

    FormOrder order = FormOrder::Number;
    FormStyle style = FormStyle::ByPatient; ///< where no rows are given
    OralForms oral = OralForms::None;

    /// Given, all get this form, whatever the settings and the procedure; what it shows is said here alone.
    std::optional<PickedForm> form{};
    bool treatmentContent = true;      ///< 施術内容出力
    bool doctorBlock = true;           ///< 同意医師欄出力
    bool ignoreLayoutSettings = false; ///< 同意書式設定を参照しない
    bool patientSettings = true;       ///< 利用者個別設定: the patient's own layout settings count
    bool doctorSettings = false;       ///< 医師個別設定: after them the consenting doctor's
    /// 印刷会社情報: position of the sender in the list of companies (iDataReadGrid); none: not printed. A
    /// position outside the list means the first company.
    std::optional<int> company = 0;
    QDate submitted{}; ///< 提出日付; invalid: left open
};
