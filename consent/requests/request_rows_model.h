#pragma once

#include "app/base/table_model.h"
#include "consent/requests/request_rows.h"

/// The rows of the request screen with what is chosen for their letters.
class RequestRowsModel : public TableModel {
    Q_OBJECT
public:
    enum Column {
        Paper,
        Number,
        Name,
        Treatment,
        Procedure,
        Kind,
        ToHospital,
        Doctor,
        DoctorChanged,
        Hospital,
        End,
        Requested
    };

    explicit RequestRowsModel(QObject *parent = nullptr);

    void load(std::vector<RequestRow> rows);
    const std::vector<RequestRow> &rows() const { return m_rows; }
    void askDoctor(int row, const QString &code, const QString &name, const QString &hospital);
    /// Ticks Paper or ToHospital on all rows, or clears it when all are ticked.
    void tickAll(Column column);

    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

Q_SIGNALS:
    /// What is chosen changed.
    void chosen();

private:
    int count() const override { return int(m_rows.size()); }
    QString text(const RequestRow &row, Column column) const;
    static bool *tick(RequestRow &row, int column);

    std::vector<RequestRow> m_rows;
};
