#pragma once

#include "app/base/table_model.h"
#include "fees/fees_query.h"

/// An office's visit-fee bands while they are edited.
class BandsModel : public TableModel {
    Q_OBJECT
public:
    enum Column { InForce, Start, End, From, To, Fee, Treatment };

    explicit BandsModel(QObject *parent = nullptr);

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

    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

Q_SIGNALS:
    void edited();
    /// A text typed into a cell was not taken, and why.
    void refused(const QString &why);

private:
    int count() const override { return int(m_bands.size()); }
    QVariant shown(const cD_往療費区分 &band, int column) const;
    bool setNumber(cD_往療費区分 &band, int column, const QString &typed);

    Bands m_bands;
    QString m_month;
};

/// A number as people type it: full-width digits and thousands' commas allowed; nothing for what is no number
/// from 0 to 2,147,483,647.
std::optional<qint32> numberFromInput(const QString &typed);
