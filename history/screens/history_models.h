#pragma once

#include "app/base/table_model.h"
#include "history/screens/change_text.h"

/// The history as its grid shows it: a row for each row that was written.
class HistoryEntriesModel : public TableModel {
public:
    explicit HistoryEntriesModel(QObject *parent = nullptr);

    void show(std::vector<ChangeText> texts);
    const std::vector<ChangeText> &texts() const { return m_texts; }
    QVariant data(const QModelIndex &index, int role) const override;

private:
    int count() const override { return int(m_texts.size()); }

    std::vector<ChangeText> m_texts;
};

/// The changed columns of one entry.
class ChangeLinesModel : public TableModel {
public:
    explicit ChangeLinesModel(QObject *parent = nullptr);

    void show(std::vector<ChangeLine> lines);
    QVariant data(const QModelIndex &index, int role) const override;

private:
    int count() const override { return int(m_lines.size()); }

    std::vector<ChangeLine> m_lines;
};
