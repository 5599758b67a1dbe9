#pragma once

#include "app/base/request_methods.h"
#include "consent/rows/letter_kind.h"
#include "consent/rows/list_columns.h"
#include "consent/rows/list_record.h"

#include <QVariant>
#include <optional>

/// How urgent a row is: its period ends within 14 days, or has ended.
enum class Urgency { None, DueSoon, Ended };
Urgency urgencyOf(const QDate &periodEnd, const QDate &today);

/// What the list was read for.
struct ListContext {
    QDate today;
    QDate from; ///< invalid: not limited by the end of periods
    QDate to;
    bool readOnly = false; ///< nothing but 対象 can be edited
    RequestMethods methods;
    PeriodAdvisor *advisor = nullptr; ///< outlives the list's rows
};

/// The urgency that a list shows: none in the history, whose rows have been followed by others.
Urgency urgencyIn(const ListContext &context, const QDate &periodEnd);

/// One row of the list, apart from any grid: what was read, and the values over it. Holds while the list is
/// not read anew.
struct ListRow {
    const ListRecords &records;
    int record;
    ConsentRowValues values;
    const ListContext &context;
    std::optional<LetterKind> letter; ///< that is proposed; nothing: none, or not reckoned yet

    ConsentRowKey key() const { return records.key(record); }
    bool isDeformity() const { return records.isDeformity(record); }
    bool flag(ListField field) const { return records.flag(record, field); }
    /// What the row's cell shows; empty for tick cells.
    QString text(ListColumn column) const;
    /// "IDNo. name".
    QString who() const { return records.who(record); }
    /// A deformity-correction row has no contact mark, method and remark of its own, and the history is not
    /// written.
    bool mayOwnMethods() const { return !isDeformity() && !context.readOnly; }
};

/// What a cell is sorted by: a number, or a text already folded for comparison.
QVariant cellSortKey(const ListRow &row, ListColumn column);

/// The value that an editor of the cell starts from: QDate, text, or the method's number.
QVariant cellEditValue(const ConsentRowValues &values, ListColumn column);

/// Takes what an editor gives back; false for a column that is not edited this way.
bool setCellValue(ConsentRowValues &values, ListColumn column, const QVariant &value);

/// The stored mark under a tick column; nullptr for 対象 and columns that hold no mark.
Nullable<short> *tickOf(ConsentRowValues &values, ListColumn column);

/// Whether two versions of a row differ in what a column shows.
bool cellDiffers(const ConsentRowValues &a, const ConsentRowValues &b, ListColumn column);
