#pragma once

#include "consent/entry/history.h"

#include <QAbstractTableModel>

/// The rows of a history as its grid shows them.
class HistoryModel : public QAbstractTableModel {
public:
    explicit HistoryModel(const ConsentHistory &history, QObject *parent = nullptr)
        : QAbstractTableModel(parent), m_history(history) {}

    /// Shows what the history holds now.
    void show() {
        beginResetModel();
        endResetModel();
    }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const ConsentHistory &m_history;
};

/// A consent in words, for a tip: kind, consent date, period, doctor.
QString consentText(const ConsentDraft &row, bool acupuncture);
