#pragma once

#include "app/base/table_model.h"
#include "print/mail/mail_run.h"

/// The counsellors to choose from, and who is ticked: at first who can get a mail and has not been told of
/// all patients before. Who has got one cannot be ticked again.
class MailChoice : public TableModel {
    Q_OBJECT
public:
    enum Column { Tick, Number, Name, Address, Patients, Note };

    explicit MailChoice(QObject *parent = nullptr);

    void load(std::vector<MailRecipient> recipients);
    /// Shows the counsellors of whose patients none is to be told of, too.
    void showAll(bool all);

    const MailRecipient &recipient(int row) const { return entry(row).recipient; }
    /// The ticked recipients, and their patients in all and those told of before.
    std::vector<MailRecipient> ticked() const;
    int tickedPatients() const;
    int tickedToldBefore() const;
    bool mayTick(int row) const { return entry(row).mayTick(); }
    /// The first row that can be ticked; 0 when none can.
    int firstRow() const;
    void toggle(int row);
    /// Ticks every recipient that can be, or none when all are.
    void tickAll();
    /// What became of the ticked recipients' mails, in their order.
    void takeResults(const std::vector<MailResult> &results);

    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

Q_SIGNALS:
    void ticksChanged();

private:
    int count() const override { return int(m_shown.size()); }
    struct Entry {
        MailRecipient recipient;
        bool ticked = false;
        bool sent = false; ///< in this window
        QString note;      ///< what became of its mail

        bool mayTick() const { return recipient.hindrance.isEmpty() && !sent; }
    };
    const Entry &entry(int row) const { return m_entries[size_t(m_shown[size_t(row)])]; }
    Entry &entry(int row) { return m_entries[size_t(m_shown[size_t(row)])]; }
    QString text(const Entry &entry, int column) const;

    std::vector<Entry> m_entries;
    std::vector<int> m_shown; ///< entries, in the order shown
    bool m_all = false;
};
