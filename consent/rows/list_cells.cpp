#include "consent/rows/list_cells.h"

#include "app/base/dates.h"
#include "app/base/text.h"
#include "consent/rules/period.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using F = ListField;

/// A column that shows one field of the query, or two with a blank between.
struct PlainCell {
    ListColumn column;
    F field;
    F second = F::Count;
};

const PlainCell *plainCell(ListColumn column) {
    using C = ListColumn;
    static constexpr PlainCell cells[] = {
        {C::Number, F::Number},
        {C::Name, F::Name},
        {C::HospitalNumber, F::HospitalNumber},
        {C::PlaceZip, F::Zip},
        {C::PlaceAddress, F::Address1, F::Address2},
        {C::ReceiptZip, F::ReceiptZip},
        {C::ReceiptAddress, F::ReceiptAddress1, F::ReceiptAddress2},
        {C::ReceiptTel, F::ReceiptTel},
        {C::ReceiptFax, F::ReceiptFax},
        {C::ReceiptMobile, F::ReceiptMobile},
        {C::ReceiptAddressee, F::ReceiptAddressee},
        {C::ContactZip, F::ContactZip},
        {C::ContactAddress, F::ContactAddress1, F::ContactAddress2},
        {C::ContactTel, F::ContactTel},
        {C::ContactFax, F::ContactFax},
        {C::ContactMobile, F::ContactMobile},
        {C::ContactAddressee, F::ContactAddressee},
        {C::HospitalAddress, F::DoctorAddress1, F::DoctorAddress2},
        {C::Diagnosis, F::Diagnosis},
        {C::HospitalMethod, F::HospitalMethod},
    };
    for (const PlainCell &cell : cells)
        if (cell.column == column)
            return &cell;
    return nullptr;
}

QString periodText(const Period &period) {
    if (!period.start.isValid() && !period.end.isValid())
        return {};
    return dateText(period.start) + u"～"_s + dateText(period.end);
}

QString endText(const ListContext &context, const QDate &end) {
    switch (urgencyIn(context, end)) {
    case Urgency::Ended:
        return u"■ "_s + dateText(end) + u" 期限切れ"_s;
    case Urgency::DueSoon:
        return u"▲ "_s + dateText(end) + u" あと%1日"_s.arg(context.today.daysTo(end));
    case Urgency::None:
        break;
    }
    return dateText(end);
}

// The remark's own editor takes line breaks; a cell is one line.
QString onOneLine(QString text) {
    return text.replace(u"\r\n"_s, u" "_s).replace(u'\n', u' ');
}

// The hospital's own way stands in brackets while the row has none.
QString methodText(const ListRow &row) {
    const int number = row.values.method;
    const QString text = row.context.methods.text(number);
    if (!text.isEmpty())
        return text;
    if (number != 0)
        return QString::number(number);
    const QString standard = row.records.text(row.record, F::HospitalMethod);
    return standard.isEmpty() ? QString() : u"（"_s + standard + u"）"_s;
}

QString treatmentText(const ListRecords &records, int record) {
    struct Item {
        F field;
        QString text;
    };
    static const std::array<Item, 10> items{{{F::Part1, u"躯幹"_s},
                                             {F::Part2, u"右上肢"_s},
                                             {F::Part3, u"左上肢"_s},
                                             {F::Part4, u"右下肢"_s},
                                             {F::Part5, u"左下肢"_s},
                                             {F::Warm, u"温罨法"_s},
                                             {F::Electric, u"電気"_s},
                                             {F::Needle, u"鍼"_s},
                                             {F::Moxa, u"灸"_s},
                                             {F::ElectricNeedle, u"電気鍼"_s}}};
    QString text;
    for (const Item &item : items)
        if (records.flag(record, item.field))
            text = joined(text, item.text, u"・");
    return text;
}

// The consent's own text stands in where the doctor is not in the master.
QString textOr(const ListRecords &records, int record, F first, F second) {
    const QString text = records.text(record, first);
    return text.isEmpty() ? records.text(record, second) : text;
}

} // namespace

Urgency urgencyOf(const QDate &periodEnd, const QDate &today) {
    constexpr int soon = 14; // days
    if (!periodEnd.isValid())
        return Urgency::None;
    const qint64 days = today.daysTo(periodEnd);
    return days < 0 ? Urgency::Ended : days <= soon ? Urgency::DueSoon : Urgency::None;
}

Urgency urgencyIn(const ListContext &context, const QDate &periodEnd) {
    return context.readOnly ? Urgency::None : urgencyOf(periodEnd, context.today);
}

QString ListRow::text(ListColumn column) const {
    using C = ListColumn;
    if (const PlainCell *plain = plainCell(column))
        return joined(records.text(record, plain->field),
                      plain->second == F::Count ? QString() : records.text(record, plain->second));
    switch (column) {
    case C::Sent:
        return records.flag(record, F::Sent) ? u"送信済"_s : u"未送信"_s;
    case C::Procedure:
        return records.flag(record, F::Procedure) ? u"口頭"_s : u"書面"_s;
    case C::Kind:
        return treatmentText(records.kind(record), isDeformity());
    case C::FirstTreatment:
        return dateText(records.date(record, F::FirstTreatment));
    case C::ConsentEnd:
        return endText(context, records.date(record, F::PeriodEnd));
    case C::Period:
        return periodText(records.period(record));
    case C::State:
        return periodStateText(records.period(record), context.today);
    case C::Reconsent:
        return dateText(values.reconsent);
    case C::NextStart:
        return dateText(values.nextStart);
    case C::NextEnd:
        return dateText(values.nextEnd);
    case C::Hospital: {
        const QString hospital = textOr(records, record, F::HospitalName, F::DoctorHospital);
        return hospital.isEmpty() ? records.text(record, F::ConsentHospital) : hospital;
    }
    case C::Doctor:
        return textOr(records, record, F::DoctorName, F::ConsentDoctor);
    case C::Method:
        return methodText(*this);
    case C::OwnMethods:
        return !mayOwnMethods() ? QString() : values.ownRequest.isEmpty() ? u"登録"_s : values.ownRequest;
    case C::Remark:
        return onOneLine(values.remark);
    case C::Letter:
        return letter ? letterKindName(*letter) : QString();
    case C::Treatment:
        return treatmentText(records, record);
    case C::OnPaper:
        return values.hospitalOut == 1 || values.doctorOut == 1 ? u"○"_s : QString();
    case C::OwnRequest:
        return values.ownRequest;
    default:
        return {};
    }
}

QVariant cellSortKey(const ListRow &row, ListColumn column) {
    using C = ListColumn;
    switch (column) {
    case C::Number:
        return row.records.number(row.record, F::Number);
    case C::HospitalNumber:
        return row.records.number(row.record, F::HospitalNumber);
    case C::Name:
        return foldForSearch(row.records.text(row.record, F::NameKana));
    case C::ConsentEnd:
        return row.records.text(row.record, F::PeriodEnd);
    case C::Contact:
    case C::Received:
    case C::Requested:
    case C::ToHospital:
    case C::ToDoctor: {
        ConsentRowValues values = row.values;
        return qint64(*tickOf(values, column));
    }
    default:
        return foldForSearch(row.text(column));
    }
}

QVariant cellEditValue(const ConsentRowValues &values, ListColumn column) {
    switch (column) {
    case ListColumn::Reconsent:
        return values.reconsent;
    case ListColumn::NextStart:
        return values.nextStart;
    case ListColumn::NextEnd:
        return values.nextEnd;
    case ListColumn::Method:
        return int(values.method);
    case ListColumn::Remark:
        return values.remark;
    case ListColumn::OwnRequest:
        return values.ownRequest;
    default:
        return {};
    }
}

bool setCellValue(ConsentRowValues &values, ListColumn column, const QVariant &value) {
    switch (column) {
    case ListColumn::Reconsent:
        values.reconsent = value.toDate();
        return true;
    case ListColumn::NextStart:
        values.nextStart = value.toDate();
        return true;
    case ListColumn::NextEnd:
        values.nextEnd = value.toDate();
        return true;
    case ListColumn::Method:
        values.method = short(value.toInt());
        return true;
    case ListColumn::Remark:
        values.remark = value.toString();
        return true;
    case ListColumn::OwnRequest:
        values.ownRequest = value.toString();
        return true;
    default:
        return false;
    }
}

Nullable<short> *tickOf(ConsentRowValues &values, ListColumn column) {
    switch (column) {
    case ListColumn::Contact:
        return &values.contact;
    case ListColumn::Received:
        return &values.received;
    case ListColumn::Requested:
        return &values.requested;
    case ListColumn::ToHospital:
        return &values.hospitalOut;
    case ListColumn::ToDoctor:
        return &values.doctorOut;
    default:
        return nullptr;
    }
}

bool cellDiffers(const ConsentRowValues &a, const ConsentRowValues &b, ListColumn column) {
    ConsentRowValues left = a, right = b;
    if (const Nullable<short> *tick = tickOf(left, column))
        return !tick->same(*tickOf(right, column));
    return cellEditValue(a, column) != cellEditValue(b, column);
}
