#pragma once

#include "consent/answers/answers.h"

#include <QAbstractTableModel>

/// The answers that were written, the last one first.
class AnswerLogModel : public QAbstractTableModel {
public:
    enum Column { Patient, Kind, Date, Next, Before, State, ColumnCount };

    /// @param desk must outlive the model
    explicit AnswerLogModel(const AnswerDesk &desk, QObject *parent = nullptr)
        : QAbstractTableModel(parent), m_desk(desk) {}

    /// The answers changed.
    void refresh();
    /// Position in AnswerDesk::recorded().
    size_t positionOf(int row) const { return m_desk.recorded().size() - 1 - size_t(row); }
    /// The row of the last answer that has not been taken back; −1 for none.
    int lastStanding() const;
    /// "登録 3 件　取り消し 1 件".
    QString countsText() const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const AnswerDesk &m_desk;
};
