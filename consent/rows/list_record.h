#pragma once

#include "consent/record/list_row.h"
#include "consent/rules/period_advisor.h"
#include "db/field_rows.h"
#include "db/tables/keys.h"
#include "db/tables/patient_text.h"

/// The columns of the list query that the list looks at.
enum class ListField {
    KyotenCd,
    KyotenEb,
    Number,
    Name,
    NameKana,
    Kind,
    FirstTreatment,
    Zip,
    Address1,
    Address2,
    DateKey,
    Deformity,
    DeformityKey,
    ConsentDay,
    PeriodStart,
    PeriodEnd,
    Months,
    Diagnosis,
    Part1,
    Part2,
    Part3,
    Part4,
    Part5,
    Warm,
    Electric,
    Needle,
    Moxa,
    ElectricNeedle,
    Procedure,
    Sent,
    Contact,
    Requested,
    Received,
    RequestedDeformity,
    ReceivedDeformity,
    HospitalOut,
    DoctorOut,
    Reconsent,
    NextStart,
    NextEnd,
    ReconsentDeformity,
    NextStartDeformity,
    NextEndDeformity,
    Method,
    OwnRequest,
    Remark,
    UpdateTime,
    ConsentDoctorCode,
    ClaimsDisabled,
    ConsentDoctor,
    ConsentHospital,
    DoctorName,
    DoctorHospital,
    DoctorAddress1,
    DoctorAddress2,
    HospitalNumber,
    HospitalName,
    HospitalMethod,
    ReceiptZip,
    ReceiptAddress1,
    ReceiptAddress2,
    ReceiptTel,
    ReceiptFax,
    ReceiptMobile,
    ReceiptAddressee,
    ContactZip,
    ContactAddress1,
    ContactAddress2,
    ContactTel,
    ContactFax,
    ContactMobile,
    ContactAddressee,
    Count
};

/// What tells how far a row's request has come.
struct RowMarks {
    bool deformity, contact, requested, received;
};

/// The rows of one list query, read by meaning. Records count from 0 in the order of the query; a column
/// that the query lacks reads as Null.
class ListRecords : public FieldRows<ListField> {
public:
    ListRecords() = default;
    explicit ListRecords(Recordset rows);

    bool isDeformity(int record) const { return number(record, ListField::Deformity) == 1; }
    TreatmentKind kind(int record) const { return TreatmentKind(flag(record, ListField::Kind)); }
    /// "IDNo. name".
    QString who(int record) const;
    ConsentRowKey key(int record) const;
    Period period(int record) const;
    RunningConsent running(int record) const;
    /// The values as they were read.
    ConsentRowValues values(int record) const;
    RowMarks marks(int record) const;
    bool received(int record) const { return marks(record).received; }
    /// The row as saving compares it.
    ReadRow row(int record) const;

private:
    Nullable<short> nullable(int record, ListField field) const;
    /// A deformity-correction row whose answer stands where a massage row keeps it.
    bool answeredAsMassage(int record) const;
    ListField ofAnswer(int record, ListField massage, ListField deformity) const {
        return isDeformity(record) && !answeredAsMassage(record) ? deformity : massage;
    }
    /// A field of a massage row or its fellow of a deformity-correction row.
    ListField either(int record, ListField massage, ListField deformity) const {
        return isDeformity(record) ? deformity : massage;
    }
};
