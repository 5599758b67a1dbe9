#include "consent/entry/history_model.h"

#include "app/base/dates.h"
#include "db/tables/patient_text.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString kindText(const ConsentDraft &row, bool acupuncture) {
    return treatmentText(acupuncture ? TreatmentKind::Acupuncture : TreatmentKind::Massage, isDeformity(row));
}

// A row without the flag says neither.
QString claimText(const ConsentDraft &row) {
    if (row.iReceptDisabledFlg.isNull())
        return {};
    return row.iReceptDisabledFlg == 0 ? u"○"_s : row.iReceptDisabledFlg == 1 ? u"×"_s : QString();
}

struct Column {
    QString caption;
    QString (*text)(const ConsentDraft &row, bool acupuncture);
};

const QList<Column> &columns() {
    using R = const ConsentDraft &;
    static const QList<Column> all{
        {u"記録日"_s, [](R row, bool) { return dateText(dateFromKey(row.nDate)); }},
        {u"診察日"_s, [](R row, bool) { return dateText(row.tShinsatsuDay); }},
        {u"同意日"_s, [](R row, bool) { return dateText(row.tDouiDay); }},
        {u"加療期間 開始"_s, [](R row, bool) { return dateText(row.tDouiKaryoS); }},
        {u"加療期間 終了"_s, [](R row, bool) { return dateText(row.tDouiKaryoE); }},
        {u"区分"_s, kindText},
        {u"請求"_s, [](R row, bool) { return claimText(row); }},
        {u"傷病名"_s, [](R row, bool) { return row.cDouiByoumei; }},
        {u"同意医師"_s, [](R row, bool) { return row.cDouiIsiName; }},
        {u"医療機関"_s, [](R row, bool) { return row.cDouiIsiKikan; }}};
    return all;
}

QList<TableModel::Heading> headings() {
    QList<TableModel::Heading> headings;
    for (const Column &column : columns())
        headings.append({column.caption});
    return headings;
}

} // namespace

HistoryModel::HistoryModel(const ConsentHistory &history, QObject *parent)
    : TableModel(headings(), parent), m_history(history) {}

QVariant HistoryModel::data(const QModelIndex &index, int role) const {
    if (role != Qt::DisplayRole)
        return {};
    return columns()[index.column()].text(m_history.rows()[size_t(index.row())],
                                          m_history.patient().acupuncture);
}

QString consentText(const ConsentDraft &row, bool acupuncture) {
    QString text = u"%1　同意 %2\n%3～%4"_s.arg(kindText(row, acupuncture), dateText(row.tDouiDay),
                                                dateText(row.tDouiKaryoS), dateText(row.tDouiKaryoE));
    const QString doctor = (row.cDouiIsiKikan + u"　"_s + row.cDouiIsiName).trimmed();
    if (!doctor.isEmpty())
        text += u"\n"_s + doctor;
    return row.iReceptDisabledFlg == 1 ? text + u"\n請求に使用しません"_s : text;
}
