#include "history/screens/history_models.h"

using namespace Qt::Literals::StringLiterals;

namespace {

template <class Row> using Member = QString Row::*;

constexpr Member<ChangeText> entryColumns[] = {
    &ChangeText::time,    &ChangeText::pc,   &ChangeText::operation, &ChangeText::batch,
    &ChangeText::subject, &ChangeText::kind, &ChangeText::summary};
constexpr Member<ChangeLine> lineColumns[] = {&ChangeLine::caption, &ChangeLine::before, &ChangeLine::after};

} // namespace

HistoryEntriesModel::HistoryEntriesModel(QObject *parent)
    : TableModel({{u"日時"_s, u"サーバーの時刻"_s},
                  {u"PC"_s},
                  {u"操作"_s},
                  {u"処理番号"_s, u"まとめて行った処理の番号"_s},
                  {u"対象"_s},
                  {u"種類"_s},
                  {u"変更内容"_s}},
                 parent) {}

void HistoryEntriesModel::show(std::vector<ChangeText> texts) {
    beginResetModel();
    m_texts = std::move(texts);
    endResetModel();
}

QVariant HistoryEntriesModel::data(const QModelIndex &index, int role) const {
    return role == Qt::DisplayRole ? QVariant(m_texts[size_t(index.row())].*entryColumns[index.column()])
                                   : QVariant();
}

ChangeLinesModel::ChangeLinesModel(QObject *parent)
    : TableModel({{u"項目"_s}, {u"変更前"_s}, {u"変更後"_s}}, parent) {}

void ChangeLinesModel::show(std::vector<ChangeLine> lines) {
    beginResetModel();
    m_lines = std::move(lines);
    endResetModel();
}

QVariant ChangeLinesModel::data(const QModelIndex &index, int role) const {
    return role == Qt::DisplayRole ? QVariant(m_lines[size_t(index.row())].*lineColumns[index.column()])
                                   : QVariant();
}
