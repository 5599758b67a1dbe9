#pragma once

#include <QString>
#include <span>

/// The grid's columns, in their first order: what is looked at and entered every day comes before what is
/// rarely read.
enum class ListColumn {
    Target,
    Number,
    Name,
    Kind,
    ConsentEnd,
    Doctor,
    Received,
    Reconsent,
    NextStart,
    NextEnd,
    Requested,
    Contact,
    Sent,
    Remark,
    Method,
    OwnMethods,
    Letter,
    Hospital,
    Period,
    Procedure,
    FirstTreatment,
    HospitalNumber,
    PlaceZip,
    PlaceAddress,
    ReceiptZip,
    ReceiptAddress,
    ReceiptTel,
    ReceiptFax,
    ReceiptMobile,
    ReceiptAddressee,
    ContactZip,
    ContactAddress,
    ContactTel,
    ContactFax,
    ContactMobile,
    ContactAddressee,
    HospitalAddress,
    Diagnosis,
    Treatment,
    State,
    OnPaper,
    ToHospital,
    ToDoctor,
    HospitalMethod,
    OwnRequest,
    Count
};

/// What a cell holds and how it is edited.
enum class CellKind { Text, Number, Date, Tick, Choice, Button };

struct ListColumnInfo {
    ListColumn column;
    QString caption;
    CellKind kind;
    bool editable;
    int characters; ///< first width, in full-width characters
    QString hint;   ///< tool tip of the header; may be empty
};

/// One entry for each column, at the column's position.
std::span<const ListColumnInfo> listColumns();

/// Columns by the items of the display settings, in the settings' own order: first those that users know by
/// name, then the others.
std::span<const ListColumn> listItems();

/// The item's name there.
QString listItemName(ListColumn column);

inline const ListColumnInfo &listColumn(int column) {
    return listColumns()[size_t(column)];
}
