#pragma once

#include "app/base/table_model.h"
#include "consent/settings/period_types.h"

/// Patients and their types, in a grid; narrowed to those wanted. One row without a number holds the
/// practice's defaults.
class PeriodTypesModel : public TableModel {
    Q_OBJECT
public:
    enum Column { Tick, Number, Name, FirstType, SecondType, PeriodType };

    explicit PeriodTypesModel(QObject *parent = nullptr);

    void load(std::vector<PatientTypes> patients);
    const std::vector<PatientTypes> &patients() const { return m_patients; }
    int changedCount() const;

    /// Shows only patients whose number begins with the text or whose name contains it, and with `defaults`
    /// only those whose types differ from them.
    void narrow(const QString &text, const PeriodTypes *defaults);
    /// Ticks or clears all rows shown.
    void tickAll(bool on);
    bool allTicked() const;
    int tickedCount() const;
    /// Puts the types into the rows that are ticked and shown; gives their number.
    int setTicked(const PeriodTypes &types);
    /// The first cell that is wrong, among all rows; an invalid one when none is. Its row is shown again
    /// where it was narrowed away.
    QModelIndex firstWrong();

    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

Q_SIGNALS:
    void edited();

private:
    int count() const override { return int(m_shown.size()); }
    void showAll();
    void changedAll();
    bool isWrong(const QModelIndex &index) const;
    PatientTypes &at(int row) { return m_patients[m_shown[size_t(row)]]; }
    const PatientTypes &at(int row) const { return m_patients[m_shown[size_t(row)]]; }

    std::vector<PatientTypes> m_patients;
    std::vector<size_t> m_shown;
};
