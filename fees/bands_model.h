#pragma once

#include "fees/fees_query.h"

#include <QAbstractTableModel>

/// An office's visit-fee bands while they are edited.
class BandsModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { InForce, Start, End, From, To, Fee, Treatment, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    void load(const Bands &bands);
    const Bands &bands() const { return m_bands; }
    /// The month (yyyymm) whose bands are marked.
    void setMonth(const QString &month);
    int inForce() const;
    /// Row of the first of them; −1 when there is none.
    int firstInForce() const;

    /// Puts a band behind another one (−1: first) that goes on where that ends, with its period.
    /// @return its row
    int add(int after);
    void remove(int row);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

Q_SIGNALS:
    void edited();
    /// A text typed into a cell was not taken, and why.
    void refused(const QString &why);

private:
    QVariant shown(const cD_往療費区分 &band, int column) const;
    bool setNumber(cD_往療費区分 &band, int column, const QString &typed);

    Bands m_bands;
    QString m_month;
};

/// A number as people type it: full-width digits and thousands' commas allowed; nothing for what is no number
/// from 0 to 2,147,483,647.
std::optional<qint32> numberFromInput(const QString &typed);
