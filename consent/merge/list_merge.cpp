#include "consent/merge/list_merge.h"

#include "app/base/dates.h"
#include "consent/rows/list_cells.h"

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::array valueColumns{ListColumn::Received,   ListColumn::Reconsent, ListColumn::NextStart,
                                  ListColumn::NextEnd,    ListColumn::Requested, ListColumn::Contact,
                                  ListColumn::Remark,     ListColumn::Method,    ListColumn::OwnRequest,
                                  ListColumn::ToHospital, ListColumn::ToDoctor};

QString orNone(const QString &text) {
    return text.isEmpty() ? u"（なし）"_s : text;
}

QString valueText(ConsentRowValues values, ListColumn column, const RequestMethods &methods) {
    if (const Nullable<short> *tick = tickOf(values, column))
        return *tick != 0 ? u"チェックあり"_s : u"チェックなし"_s;
    const QVariant value = cellEditValue(values, column);
    if (value.typeId() == QMetaType::QDate)
        return orNone(dateText(value.toDate()));
    if (column != ListColumn::Method)
        return orNone(value.toString());
    const QString method = methods.text(value.toInt());
    return orNone(method.isEmpty() && value.toInt() != 0 ? value.toString() : method);
}

// What the user sees of it: Null and no tick are the same.
bool differs(const ConsentRowValues &a, const ConsentRowValues &b, ListColumn column) {
    ConsentRowValues left = a, right = b;
    if (const Nullable<short> *tick = tickOf(left, column))
        return (*tick != 0) != (*tickOf(right, column) != 0);
    return cellDiffers(a, b, column);
}

// What of the running consent the list shows and does not edit.
std::vector<MergeColumn> runningColumns(const RunningRow &read, const RunningRow &now) {
    const auto period = [](const Period &of) {
        return of == Period() ? QString() : dateText(of.start) + u"～"_s + dateText(of.end);
    };
    const auto procedure = [](const RunningRow &row) { return row.procedure == 1 ? u"口頭"_s : u"書面"_s; };
    const auto disabled = [](const RunningRow &row) {
        return row.claimsDisabled == 1 ? u"チェックあり"_s : u"チェックなし"_s;
    };
    const struct {
        QString caption, read, now;
    } texts[] = {{u"同意日"_s, dateText(read.consentDay), dateText(now.consentDay)},
                 {u"要加療期間"_s, period(read.period), period(now.period)},
                 {u"担当医師"_s, read.doctorName, now.doctorName},
                 {u"病院名"_s, read.institution, now.institution},
                 {u"傷病名"_s, read.diagnosis, now.diagnosis},
                 {u"手順"_s, procedure(read), procedure(now)},
                 {u"請求に使用しない"_s, disabled(read), disabled(now)}};
    std::vector<MergeColumn> columns;
    for (const auto &text : texts)
        if (text.read != text.now)
            columns.push_back(
                {-1, text.caption, orNone(text.read), orNone(text.now), orNone(text.read), true, false});
    return columns;
}

QString whyGone(const StandingRow &now) {
    if (!now.row)
        return u"削除されたか、日付が変更されました"_s;
    return now.newest ? QString() : u"更新され、新しい同意の行になりました"_s;
}

QString writtenText(const StandingRow &now) {
    const QString time = now.row ? now.row->updateTime.left(16) : QString(); // to the minute
    return now.computer.isEmpty() ? time : now.computer + u"　"_s + time;
}

// The values that a row is to hold, over those that stand.
ConsentRowValues mergedValues(const MergeRow &merged, const ConsentRowValues &typed,
                              const ConsentRowValues &now) {
    ConsentRowValues values = now;
    for (const MergeColumn &column : merged.columns) {
        if (column.taken != MergeColumn::Typed)
            continue;
        ConsentRowValues from = typed;
        if (const Nullable<short> *tick = tickOf(from, ListColumn(column.id)))
            *tickOf(values, ListColumn(column.id)) = *tick;
        else
            setCellValue(values, ListColumn(column.id), cellEditValue(typed, ListColumn(column.id)));
    }
    return values;
}

} // namespace

MergeRow mergeRow(const TypedRow &typed, const StandingRow &now, const RequestMethods &methods) {
    MergeRow merged{typed.who, writtenText(now), whyGone(now), {}};
    const ReadRow &stands = now.row ? *now.row : typed.read;
    for (const ListColumn column : valueColumns) {
        const auto text = [&](const ConsentRowValues &values) { return valueText(values, column, methods); };
        const bool isWritten = differs(stands.values, typed.read.values, column);
        const bool isTyped = differs(typed.now, typed.read.values, column) &&
                             (!merged.gone.isEmpty() || differs(typed.now, stands.values, column));
        if (isWritten || isTyped)
            merged.columns.push_back({int(column), listColumn(int(column)).caption, text(typed.read.values),
                                      merged.gone.isEmpty() ? text(stands.values) : u"－"_s, text(typed.now),
                                      isWritten, isTyped});
    }
    if (merged.gone.isEmpty())
        for (MergeColumn &column : runningColumns(typed.read.running, stands.running))
            merged.columns.push_back(std::move(column));
    merged.take(MergeRow::Both);
    return merged;
}

std::vector<RowEdit> mergedEdits(const std::vector<MergeRow> &merged, const std::vector<TypedRow> &typed,
                                 const std::vector<StandingRow> &now) {
    std::vector<RowEdit> rows;
    for (size_t i = 0; i < merged.size(); ++i) {
        const ReadRow &stands = merged[i].gone.isEmpty() ? *now[i].row : typed[i].read;
        rows.push_back({stands, mergedValues(merged[i], typed[i].now, stands.values)});
    }
    return rows;
}

Result<std::vector<StandingRow>> readStandingRows(cT_ADODB &db, const std::vector<TypedRow> &typed) {
    std::vector<ConsentRowKey> keys;
    for (const TypedRow &row : typed)
        keys.push_back(row.read.key);
    return readStandingRows(db, keys);
}
