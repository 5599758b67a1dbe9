#pragma once

#include "widgets/cell_delegate.h"

class Clock;

/// Edits a cell's date (a QDate under Qt::EditRole, invalid for empty) in a date box. Enter and Tab do not
/// leave a box that holds no date; a click elsewhere does, then the cell keeps its date and rejected() tells.
class DateDelegate : public CellDelegate {
    Q_OBJECT

public:
    using CellDelegate::CellDelegate;

    /// Tells the day where short dates are read and the step keys begin.
    void setClock(const Clock &clock) { m_clock = &clock; }

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;
    QString displayText(const QVariant &value, const QLocale &locale) const override;

Q_SIGNALS:
    void rejected(const QString &text) const;

protected:
    bool eventFilter(QObject *editor, QEvent *event) override;

private:
    const Clock *m_clock = nullptr;
};
