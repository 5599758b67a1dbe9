#include "consent/answers/answer_log_model.h"

#include "app/base/dates.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

AnswerLogModel::AnswerLogModel(const AnswerDesk &desk, QObject *parent)
    : TableModel({{u"利用者"_s},
                  {u"区分"_s},
                  {u"再同意日"_s},
                  {u"次回の要加療期間"_s},
                  {u"入力前の内容"_s},
                  {u"状態"_s}},
                 parent),
      m_desk(desk) {}

void AnswerLogModel::refresh() {
    beginResetModel();
    endResetModel();
}

int AnswerLogModel::lastStanding() const {
    for (int row = 0; row < rowCount(); ++row)
        if (!m_desk.recorded()[positionOf(row)].takenBack)
            return row;
    return -1;
}

QString AnswerLogModel::countsText() const {
    const auto &recorded = m_desk.recorded();
    const auto back = std::ranges::count(recorded, true, &RecordedAnswer::takenBack);
    const QString standing = u"登録 %L1 件"_s.arg(qsizetype(recorded.size()) - back);
    return back == 0 ? standing : standing + u"　取り消し %L1 件"_s.arg(back);
}

QVariant AnswerLogModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid() || role != Qt::DisplayRole)
        return {};
    const RecordedAnswer &recorded = m_desk.recorded()[positionOf(index.row())];
    const ReConsent &answer = recorded.answer;
    switch (index.column()) {
    case Patient:
        return recorded.patient.who();
    case Kind:
        return recorded.kind;
    case Date:
        return dateText(answer.date);
    case Next:
        return dateText(answer.period.start) + u"～"_s + dateText(answer.period.end);
    case Before:
        return recorded.before;
    case State:
        return recorded.takenBack ? u"取り消し済み"_s : u"登録済み"_s;
    default:
        return {};
    }
}
