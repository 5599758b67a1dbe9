#include "consent/record/draft.h"

#include "app/base/dates.h"
#include "db/tables/patient/acupuncture_diseases.h"

#include <QStringList>
#include <algorithm>
#include <variant>

using namespace Qt::Literals::StringLiterals;

namespace {

using Row = ConsentDraft;

// What requests and renewals write; entry carries it from the old row to the new one.
constexpr QStringView keptColumns[] = {u"tSaiDouiDay",
                                       u"tSaiDouiKaryoS",
                                       u"tSaiDouiKaryoE",
                                       u"cKobetuDouiIrai",
                                       u"iDouiIraiType",
                                       u"iDouiHospOutFlg",
                                       u"iDouiIsiOutFlg",
                                       u"cItiranBikou",
                                       u"iDouishoSaishutokuKikan",
                                       u"iOutputFlg",
                                       u"iGetFlg",
                                       u"iOutputFlgHenkei",
                                       u"iGetFlgHenkei",
                                       u"tDouiDayTempHenkei",
                                       u"tDouiKaryoSTempHenkei",
                                       u"tDouiKaryoETempHenkei",
                                       u"iRenrakuFlg",
                                       u"iSendFlg",
                                       u"iNewestFlg"};

// Of a new consent's form, what is not taken from the one before.
constexpr QStringView ownColumns[] = {u"nDate",       u"iHenkeiFlg",  u"nHenkeiDouiDate", u"tDouiDay",
                                      u"tDouiKaryoS", u"tDouiKaryoE", u"tShinsatsuDay"};

bool isKept(QStringView column) {
    return std::ranges::find(keptColumns, column) != std::end(keptColumns);
}

bool isOwn(const TableColumn<Row> &column) {
    const bool treatmentDay = column.name.startsWith(u't') && column.name.endsWith(u"day");
    return treatmentDay || std::ranges::find(ownColumns, column.name) != std::end(ownColumns);
}

bool isAudit(const TableColumn<Row> &column) {
    return column.use == ColumnUse::PcName || column.use == ColumnUse::UpDateTime;
}

bool counts(const TableColumn<Row> &column, Compared columns) {
    switch (columns) {
    case Compared::Entered:
        return !isAudit(column) && !isKept(column.name);
    case Compared::Remark:
        return column.name == u"cItiranBikou";
    case Compared::All:
        break;
    }
    return !isAudit(column) && column.name != u"iNewestFlg";
}

const TableColumn<Row> *columnNamed(QStringView name) {
    const auto columns = Row::table().columns;
    const auto found = std::ranges::find(columns, name, &TableColumn<Row>::name);
    return found == columns.end() ? nullptr : &*found;
}

template <class Wanted> void copyColumns(Row &to, const Row &from, Wanted wanted) {
    for (const TableColumn<Row> &column : Row::table().columns)
        if (wanted(column))
            std::visit([&](auto member) { to.*member = from.*member; }, column.member);
}

// Readers and writers of the kinds of member.
QVariant variantOf(short value) {
    return value;
}
QVariant variantOf(qint32 value) {
    return value;
}
template <class T> QVariant variantOf(const Nullable<T> &value) {
    return value.isNull() ? QVariant() : QVariant(T(value));
}
QVariant variantOf(const QString &value) {
    return value.isNull() ? QVariant() : QVariant(value);
}
QVariant variantOf(const QDate &value) {
    return value.isValid() ? QVariant(value) : QVariant();
}

template <class T> void take(T &field, const QVariant &value) {
    field = value.value<T>();
}
template <class T> void take(Nullable<T> &field, const QVariant &value) {
    if (value.isValid())
        field = value.value<T>();
    else
        field.setNull();
}
void take(QString &field, const QVariant &value) {
    field = value.toString().isEmpty() ? QString() : value.toString();
}

} // namespace

std::span<const Treatment> treatments() {
    static constexpr Treatment all[] = {
        {u"iOnan", &Row::iOnan, &Row::tOnanSday, &Row::tOnanEday},
        {u"iDenki", &Row::iDenki, &Row::tDenkiSday, &Row::tDenkiEday},
        {u"", nullptr, &Row::tHenkeSday, &Row::tHenKeEday},
        {u"iHKHariUmu", &Row::iHKHariUmu, &Row::tHKHariSday, &Row::tHKHariEday},
        {u"iHKKyuUmu", &Row::iHKKyuUmu, &Row::tHKKyuSday, &Row::tHKKyuEday},
        {u"iHKDekiUmu", &Row::iHKDekiUmu, &Row::tHKDenkiSday, &Row::tHKDenkiEday}};
    return all;
}

QString diseaseNames(const ConsentDraft &draft) {
    QStringList names;
    for (size_t i = 0; i < acupunctureDiseaseNames.size(); ++i)
        if (draft.*acupunctureDiseases[i] != 0)
            names.append(acupunctureDiseaseNames[i].toString());
    if (draft.iHKSyobyou07Flg != 0)
        names.append(draft.cSyoujyouSonotaStr.isEmpty() ? u"その他"_s : draft.cSyoujyouSonotaStr);
    return names.join(u"、"_s);
}

bool isColumn(QStringView column) {
    return columnNamed(column) != nullptr;
}

QVariant columnValue(const ConsentDraft &draft, QStringView column) {
    const TableColumn<Row> *known = columnNamed(column);
    return known ? std::visit([&](auto member) { return variantOf(draft.*member); }, known->member)
                 : QVariant();
}

void setColumnValue(ConsentDraft &draft, QStringView column, const QVariant &value) {
    if (const TableColumn<Row> *known = columnNamed(column))
        std::visit([&](auto member) { take(draft.*member, value); }, known->member);
}

bool isCompared(QStringView column, Compared columns) {
    const TableColumn<Row> *known = columnNamed(column);
    return known && counts(*known, columns);
}

bool sameValues(const ConsentDraft &left, const ConsentDraft &right, Compared columns) {
    return std::ranges::all_of(Row::table().columns, [&](const TableColumn<Row> &column) {
        return !counts(column, columns) ||
               std::visit([&](auto member) { return left.*member == right.*member; }, column.member);
    });
}

ConsentDraft newDraft(const PatientKey &patient, const ConsentDraft *newest) {
    ConsentDraft draft;
    if (newest)
        copyColumns(draft, *newest, [](const TableColumn<Row> &column) {
            return !isKept(column.name) && !isOwn(column) && !isAudit(column);
        });
    static_cast<PatientKey &>(draft) = patient;
    return draft;
}

ConsentRowKey draftKey(const ConsentDraft &draft, const ConsentDraft *stored) {
    ConsentRowKey key = stored ? stored->key() : draft.key();
    key.iHenkeiFlg = draft.iHenkeiFlg;
    const bool moved =
        !stored || draft.tShinsatsuDay != stored->tShinsatsuDay || draft.tDouiDay != stored->tDouiDay;
    if (moved)
        key.nDate = dateKey(draft.tShinsatsuDay.isValid() ? draft.tShinsatsuDay : draft.tDouiDay);
    if (!isDeformity(draft))
        key.nHenkeiDouiDate = stored ? stored->nHenkeiDouiDate : 0;
    else if (!stored || draft.tDouiDay != stored->tDouiDay)
        key.nHenkeiDouiDate = dateKey(draft.tDouiDay);
    return key;
}

ConsentDraft registeredRow(const ConsentDraft &draft, const ConsentDraft *stored) {
    ConsentDraft row = draft;
    // The newest marks, among others, look for a flag of exactly 0.
    for (const TableColumn<Row> &column : Row::table().columns)
        if (auto *flag = std::get_if<Nullable<short> Row::*>(&column.member))
            row.**flag = short(row.**flag);
    if (stored)
        copyColumns(row, *stored, [](const TableColumn<Row> &column) { return isKept(column.name); });
    return row;
}

bool sameRecordDate(const ConsentRowKey &left, const ConsentRowKey &right) {
    return left.nDate == right.nDate && left.iHenkeiFlg == right.iHenkeiFlg &&
           (left.iHenkeiFlg == 0 || left.nHenkeiDouiDate == right.nHenkeiDouiDate);
}

QString recordDateTaken() {
    return u"診察日が以前の同意と同じ日付です。"_s;
}
