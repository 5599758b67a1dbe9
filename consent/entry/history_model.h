#pragma once

#include "app/base/table_model.h"
#include "consent/entry/history.h"

/// The rows of a history as its grid shows them.
class HistoryModel : public TableModel {
public:
    explicit HistoryModel(const ConsentHistory &history, QObject *parent = nullptr);

    /// Shows what the history holds now.
    void show() {
        beginResetModel();
        endResetModel();
    }

    QVariant data(const QModelIndex &index, int role) const override;

private:
    int count() const override { return int(m_history.rows().size()); }

    const ConsentHistory &m_history;
};

/// A consent in words, for a tip: kind, consent date, period, doctor.
QString consentText(const ConsentDraft &row, bool acupuncture);
