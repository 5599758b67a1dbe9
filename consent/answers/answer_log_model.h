#pragma once

#include "app/base/table_model.h"
#include "consent/answers/answers.h"

/// The answers that were written, the last one first.
class AnswerLogModel : public TableModel {
public:
    enum Column { Patient, Kind, Date, Next, Before, State };

    /// @param desk must outlive the model
    explicit AnswerLogModel(const AnswerDesk &desk, QObject *parent = nullptr);

    /// The answers changed.
    void refresh();
    /// Position in AnswerDesk::recorded().
    size_t positionOf(int row) const { return m_desk.recorded().size() - 1 - size_t(row); }
    /// The row of the last answer that has not been taken back; −1 for none.
    int lastStanding() const;
    /// "登録 3 件　取り消し 1 件".
    QString countsText() const;

    QVariant data(const QModelIndex &index, int role) const override;

private:
    int count() const override { return int(m_desk.recorded().size()); }

    const AnswerDesk &m_desk;
};
