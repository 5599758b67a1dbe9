#pragma once

#include "app/base/table_model.h"
#include "consent/requests/method_list.h"

/// The request method list as a grid shows it, with a tick for each text that is an individual method of one
/// consent row.
class MethodListModel : public TableModel {
    Q_OBJECT
public:
    enum Column { Number, Text, Uses, Own };

    explicit MethodListModel(QObject *parent = nullptr);

    /// @param mayOwn whether there is a row whose individual methods can be edited
    void load(const MethodList &list, const QStringList &ownMethods, bool mayOwn);

    const MethodList &list() const { return m_list; }
    /// The row's individual methods: those it had, in their order, then those ticked here. A text that the
    /// list does not have stays.
    const QStringList &ownMethods() const { return m_own; }
    void clearOwnMethods();

    /// @name As in MethodList: why not, or empty
    ///@{
    QString add(const QString &typed);
    void remove(int entry);
    QString move(int entry, int by);
    ///@}

    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

Q_SIGNALS:
    /// Entries or individual methods changed.
    void edited();
    /// A text typed into a cell, or a tick, was not taken, and why.
    void refused(const QString &why);

private:
    int count() const override { return int(m_list.texts().size()); }
    bool tickOwn(const QString &text, bool on);
    void refresh();

    MethodList m_list;
    QStringList m_own;
    bool m_mayOwn = false;
};
